// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QDateTime>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace dozely
{
class Clock;
} // namespace dozely

class NSNotification;

/// Tries whether the machine's clock wakes it: sets its alarm and reads it back, and, where that is wanted,
/// has the machine sleep until a date of its own, and looks when it is back. An alarm that is set for
/// something else stays, or is set again.
///
/// THREADING: the main thread. BLOCKING: as PowerEventScheduler and SystemPower.
class WakeTrial : public QObject
{
    Q_OBJECT
public:
    /// What a test has shown.
    enum class Outcome {
        NoClock,  ///< There is none that could wake this machine.
        Dropped,  ///< The alarm was refused, or not read back as it was set.
        Kept,     ///< It was read back as it was set.
        Woken,    ///< The machine slept, and was back with the alarm.
        TooEarly, ///< Something else woke it before, or it did not stay asleep.
        TooLate,  ///< It was back so long after the alarm that somebody else must have woken it.
    };
    struct Finding {
        Outcome outcome;
        QString sentence;       ///< For a person.
        QDateTime planned = {}; ///< When the alarm was to wake it; invalid where it was not to sleep.
        QDateTime back = {};    ///< When it was back.
    };

    /// What cannot be tried is an error, a clause.
    using Done = std::function<void(const dozely::Result<Finding> &)>;

    /// How long the machine may be asked to sleep.
    /// @{
    static constexpr std::chrono::seconds shortestSleep{20};
    static constexpr std::chrono::seconds longestSleep{600};
    /// @}

    /// A machine that is not asleep by then does not fall asleep.
    static constexpr std::chrono::seconds longestFallingAsleep{15};

    /// So late at most it is back by an alarm.
    static constexpr std::chrono::seconds longestWaking{30};

    /// What is due that soon after the test forbids it.
    static constexpr std::chrono::seconds quietTime{60};

    /// `isBusy` says whether an action goes on, or is due up to that date. `clock` must outlive the object.
    WakeTrial(dozely::Clock &clock, std::function<bool(const QDateTime &until)> isBusy);
    ~WakeTrial() override;

    /// Sets the alarm, reads it back, and sets it as it was.
    Finding tryAlarm() const;

    /// The same, and has the machine sleep for that time, at most and at least as said above. `done` is
    /// called once it is back, or when it cannot sleep; never once this object is destroyed.
    void sleep(std::chrono::seconds duration, const Done &done);

private:
    Q_INVOKABLE void systemWillSleep(const NSNotification &notification);
    Q_INVOKABLE void systemDidWake(const NSNotification &notification);
    std::optional<QString> reasonAgainst(std::chrono::seconds duration) const;
    void takeAlarmBack();
    void end(const dozely::Result<Finding> &finding);

    dozely::Clock &m_clock;
    std::function<bool(const QDateTime &)> m_isBusy;
    Done m_done;                         // empty while nothing is tried
    QDateTime m_planned;                 // the alarm of the test that goes on
    QDateTime m_former;                  // that of another program, whose place it has taken
    bool m_isAsleep = false;             // or about to be
    std::unique_ptr<QObject> m_patience; // until it must be asleep
};
