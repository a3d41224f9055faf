// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/SchedulerObserver.h"
#include "hosts/daemon/bus/SchedulerAnswers.h"

#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace dozely
{
class BusObject;
class Clock;
} // namespace dozely

class DaemonController;
class SchedulerProperties;

/// Tells everybody on the bus what changes: signals and properties. In an uproar, when more happens than
/// anybody wants to be told one by one, it says that everything may have changed.
///
/// THREADING: the main thread.
class SchedulerNews : public QObject, private SchedulerObserver
{
    Q_OBJECT
public:
    /// So many occurrences are told of within a tenth of a second.
    static constexpr int mostAtOnce = 64;

    /// All must outlive the object.
    SchedulerNews(DaemonController &controller, dozely::BusObject &object, const SchedulerAnswers &answers,
                  SchedulerProperties &properties, dozely::Clock &clock);
    ~SchedulerNews() override;

    /// Runs what reads the store again after a change of our own, of that schedule.
    void noteEdit(const QString &identifier, const std::function<void()> &reread);

    /// A schedule is another now, or what is to come of it.
    void noteChange(const QString &identifier);

    /// Any schedule may be another.
    void noteAnyChange();

    /// Properties are about to be read.
    void refresh();

    /// The bus is there again.
    void begin();

private:
    void schedulesReplaced() override;
    void scheduleChanged(qint32 place) override;
    void refreshSoon();
    void tellChangesSoon();
    void tellOccurrence(const char *signal, const OccurrenceRecord::Key &key, const QVariantMap &dictionary);

    DaemonController &m_controller;
    dozely::BusObject &m_object;
    const SchedulerAnswers &m_answers;
    SchedulerProperties &m_properties;
    dozely::Clock &m_clock;
    QStringList m_changed;
    bool m_isAnyChanged = false;
    bool m_isOwnEdit = false;
    bool m_isTellComing = false;
    bool m_isRefreshComing = false;
    int m_told = 0; // occurrences, in this tenth of a second
};
