// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QObject>

#include <chrono>
#include <optional>

namespace dozely
{
class Clock;
} // namespace dozely

class NSNotification;

/// Knows whether the machine was woken, or switched on, by an alarm of ours, and for which moment. It counts
/// only what is sure: an event of ours was scheduled when the machine went to sleep, or off, nobody else had
/// one of about that time, and the machine was back within a short time of it. What switched it on is noted
/// on disk when it goes off, since nobody else is there to tell.
///
/// THREADING: the main thread. BLOCKING: for the disk.
class OwnWakes : public QObject
{
    Q_OBJECT
public:
    /// So late at most the machine is back after an alarm of ours: a machine that is switched on has its
    /// firmware to run first.
    /// @{
    static constexpr std::chrono::seconds longestWaking{30};
    static constexpr std::chrono::seconds longestStart{120};
    /// @}

    /// Make it after PowerPlanner, whose events it looks at when the machine goes. `clock` must outlive the
    /// object.
    explicit OwnWakes(const dozely::Clock &clock);

    /// When the machine came back for what is to be performed at `moment`; absent when it did not come back
    /// for that, or that is not known.
    std::optional<QDateTime> wokenFor(const QDateTime &moment) const;

private:
    struct Wake {
        QDateTime event;           ///< The time of the alarm.
        std::chrono::seconds lead; ///< By which that is ahead of what it is for.
        QDateTime back;            ///< When the machine was there.
    };
    Q_INVOKABLE void systemWillSleep(const NSNotification &notification);
    Q_INVOKABLE void systemDidWake(const NSNotification &notification);
    Q_INVOKABLE void systemWillPowerOff(const NSNotification &notification);
    void lookAtStart();

    const dozely::Clock &m_clock;
    QList<QDateTime> m_ours;   // events by which the machine that sleeps is to wake
    QList<QDateTime> m_others; // the same, of other owners
    std::optional<Wake> m_wake;
};
