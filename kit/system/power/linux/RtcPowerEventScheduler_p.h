// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ClockDoubt.h"
#include "DozelyKit/system/power/linux/PowerEventStore_p.h"
#include "DozelyKit/system/power/linux/RtcAlarm_p.h"

#include <functional>
#include <memory>

namespace dozely
{

/// Power events in a file of their own, and the wake alarm of a real-time clock.
///
/// An event that has passed is forgotten, but not by a clock that is doubted: set back, it has the event
/// again, which nobody but its owner could ask for anew.
///
/// Codes are errno values: EINVAL (date, type or owner), ENODEV (no clock with an alarm), ENOENT (no such
/// event), EACCES and the like.
class DOZELYKIT_AUTOTEST_EXPORT RtcPowerEventScheduler : public PowerEventScheduler
{
public:
    explicit RtcPowerEventScheduler(RtcAlarm::Writer writer = RtcAlarm::writeKernelFile);
    ~RtcPowerEventScheduler() override;

    /// The one that the ports of this process use, whatever a test puts in their place.
    static const std::shared_ptr<RtcPowerEventScheduler> &ofThisProcess();

    qint32 schedule(const QDateTime &time, const QString &owner, const QString &type) override;
    qint32 cancel(const QDateTime &time, const QString &owner, const QString &type) override;
    QList<Event> scheduledEvents() override;
    qint32 arm(Phase phase) override;
    void keepArmed() override;
    std::optional<Alarm> alarm() override;
    Controller controller() override;
    std::optional<QVariantMap> controllerProperties() override;
    QString testAlarm(const QDateTime &time) override;
    qint32 putBackAlarm(const QDateTime &time) override;

    /// The machine goes to sleep or off, or has woken: a power message's type, after the observers of one
    /// that begins. Does nothing in a process that does not keep the alarm.
    void powerChanges(quint32 messageType);

private:
    /// What becomes of a change when the alarm cannot be set for it.
    enum class WithoutAlarm { Undone, Stands };
    struct Outcome {
        int failure = 0;      ///< Of the change, which then was not made.
        int alarmFailure = 0; ///< Of setting the alarm for a change that stands.
    };
    Outcome change(WithoutAlarm withoutAlarm, const std::function<int(PowerEventStore::Content &)> &change);
    int setAlarm(PowerEventStore::Content &content) const;
    bool isClockSure();
    void rearm(Phase phase);

    RtcAlarm::Writer m_writer;
    Phase m_phase = Phase::Running;
    std::shared_ptr<Clock> m_clock;         // that is looked at
    std::optional<ClockDoubt> m_doubt;      // since the first change
    std::unique_ptr<AbsoluteTimer> m_timer; // present while this process keeps the alarm
    bool m_isFailureReported = false;
};

} // namespace dozely
