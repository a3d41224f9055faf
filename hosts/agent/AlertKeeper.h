// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"

#include <QMap>

#include <memory>
#include <optional>
#include <utility>

namespace dozely
{
class AbsoluteTimer;
class Clock;
} // namespace dozely

/// The plug-ins whose alerts precede an action, each told by the full path of its bundle and the date of the
/// occurrence. Withdraws an alert when that date has come, or earlier when it is told to. One timer serves
/// all.
///
/// THREADING: the main thread.
class AlertKeeper : public QObject
{
    Q_OBJECT
public:
    /// `clock` must outlive the object.
    explicit AlertKeeper(dozely::Clock &clock);

    /// Withdraws all alerts.
    ~AlertKeeper() override;

    /// Whether there is anything to announce before `date`.
    bool isAhead(const QDateTime &date) const;

    /// The plug-in that announces this occurrence already; null when none does.
    std::shared_ptr<WDUserAgentPlugIn> plugIn(const QString &bundlePath, const QDateTime &date) const;

    /// Withdraws the plug-in's alert at that date, the occurrence's. `schedule` is whose occurrence it is,
    /// for people; several may share one alert.
    void keep(const QString &bundlePath, const std::shared_ptr<WDUserAgentPlugIn> &plugIn,
              const QDateTime &date, const QString &schedule = {});

    /// Forgets the plug-in of this occurrence, which is told nothing.
    void forget(const QString &bundlePath, const QDateTime &date);

    /// Bundle and date of an occurrence.
    struct Announced {
        QString bundlePath;
        QDateTime date;        ///< In the zone in which the plug-in has it.
        QStringList schedules; ///< Their names, in the order in which they came; none from who does not tell.
    };

    /// What this alert announces, where it is the alert that the classes of plug-ins come along with, and
    /// the date is still to come; absent for any other, such as one that a plug-in made on its own.
    std::optional<Announced> announcedBy(const std::shared_ptr<NSUserNotification> &alert) const;

    /// Withdraws the alert of this occurrence now; nothing when there is none.
    void withdraw(const QString &bundlePath, const QDateTime &date);

private:
    using Key = std::pair<qint64, QString>; // milliseconds since 1970, so that the first is the next due
    static Key keyOf(const QString &bundlePath, const QDateTime &date);
    void withdraw(const Key &key);
    void withdrawDue();
    void waitForNext();

    dozely::Clock &m_clock;
    std::unique_ptr<dozely::AbsoluteTimer> m_timer;
    QMap<Key, std::shared_ptr<WDUserAgentPlugIn>> m_plugIns;
    QMap<Key, QStringList> m_schedules;
};
