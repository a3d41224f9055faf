// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"
#include "hosts/daemon/bus/CallQueue.h"
#include "hosts/daemon/bus/PolkitAuthority.h"
#include "hosts/daemon/bus/ScheduleEdits.h"
#include "hosts/daemon/bus/SchedulerAnswers.h"
#include "hosts/daemon/bus/SchedulerNews.h"
#include "hosts/daemon/bus/SchedulerProperties.h"

#include <QObject>
#include <QSet>

#include <functional>
#include <memory>

namespace dozely
{
class BusObject;
} // namespace dozely

class DaemonController;

/// com.dozely.Scheduler1 on the system bus: the desktop's way to the schedules, for whoever may
/// (docs/bus.md). Reads what a call says, has its rights looked after, and answers it; what it means is done
/// elsewhere.
///
/// A machine without a bus has the daemon without this; when the bus comes, so does this.
///
/// THREADING: the main thread. BLOCKING: for the disk.
class SchedulerBus : public QObject
{
    Q_OBJECT
public:
    /// The controller must outlive the object.
    SchedulerBus(DaemonController &controller, const std::shared_ptr<dozely::Clock> &clock);
    ~SchedulerBus() override;

private:
    /// A call with what it takes to answer it.
    struct Request {
        BusCaller caller;
        dozely::BusCall call;
        QVariantList arguments;
        PolkitAuthority::Standing standing; ///< Where the answer depends on it.

        QString text(qsizetype place) const { return arguments.value(place).toString(); }
    };
    using Method = void (SchedulerBus::*)(const Request &request);

    bool serve(Request request);
    bool learnStanding(Request &request);
    void list(const Request &request);
    void get(const Request &request);
    void add(const Request &request);
    void change(const Request &request);
    void remove(const Request &request);
    void setEnabled(const Request &request);
    void runNow(const Request &request);
    void skip(const Request &request);
    void postpone(const Request &request);
    void next(const Request &request);
    void history(const Request &request);
    void testWaking(const Request &request);

    std::optional<qint32> placeOf(const QString &identifier);
    void edit(const Request &request, ScheduleEdits::Wish wish, const QVariantList &answer,
              const QString &verb);
    void alterOne(const Request &request, const QString &verb, bool mustBeFeasible,
                  const std::function<dozely::Result<std::optional<Schedule>>(const Schedule &)> &alter);
    void withRight(const Request &request, const QSet<QByteArray> &granted,
                   const std::function<void()> &then);
    QList<QByteArray> neededFor(const Request &request, const Schedule &schedule) const;
    std::optional<std::optional<QDateTime>> dateIn(const Request &request, qsizetype place) const;
    void answer(const Request &request, const QVariantList &values = {}) const;

    DaemonController &m_controller;
    std::shared_ptr<dozely::Clock> m_clock;
    PolkitAuthority m_authority;
    ScheduleEdits m_edits;
    SchedulerAnswers m_answers;
    SchedulerProperties m_properties;
    CallQueue m_queue;
    std::chrono::milliseconds m_reread{-1}; // on the steady clock: when it was last looked for a schedule
    std::unique_ptr<SchedulerNews> m_news;
    QString m_refusal;                           // of the name, as last logged
    std::unique_ptr<dozely::BusObject> m_object; // goes first: nothing comes after it
};
