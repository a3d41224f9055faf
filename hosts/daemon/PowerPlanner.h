// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "hosts/common/plugins/ActionInhibitor.h"
#include "hosts/daemon/PowerNeeds.h"

#include <QObject>

#include <memory>

namespace dozely
{
class AbsoluteTimer;
class Clock;
} // namespace dozely

class NSNotification;
class PlugInAnswers;

/// Has the machine woken, or switched on, in time for the schedules whose plug-ins need that: an event of our
/// own a little ahead of each one's next occurrence, and none that no schedule stands for.
///
/// The events are compared with what the machine has, so an event that is there already costs nothing and
/// what a changed, disabled or removed schedule left is taken back, also when that happened while the daemon
/// did not run. Dates of the same second are one event. Before the machine sleeps or goes off, and when it
/// has woken, this happens without being asked for.
///
/// From that moment until its action has begun a schedule keeps the machine awake: a laptop that was woken
/// with its lid closed would fall asleep again.
///
/// THREADING: the main thread. BLOCKING: for the disk when something changes; where the machine's scheduler
/// refuses, for the fallback that ZDRPowerManager tries.
class PowerPlanner : public QObject
{
    Q_OBJECT
public:
    /// How long before its occurrence a schedule has the machine woken, and switched on.
    /// @{
    static constexpr std::chrono::seconds wakeLead{60};
    static constexpr std::chrono::seconds powerOnLead{180};
    /// @}

    /// So long an occurrence that was not begun keeps the machine awake after its date.
    static constexpr std::chrono::minutes longestHold = PowerNeeds::longestHold;

    /// So many events of a type are asked for at a time, the earliest ones. The others follow as these pass;
    /// the machine can hold only one in its clock, and each costs a write to the disk.
    static constexpr qsizetype mostEvents = 64;

    /// All must outlive the object.
    PowerPlanner(Scheduler &scheduler, dozely::Clock &clock, PlugInAnswers &answers);
    ~PowerPlanner() override;

    /// Brings the events in line with the schedules, now.
    void update();

    /// The same a moment later; many wishes for it are one.
    void updateSoon();

    /// After a time in which anything may have happened to the machine's clock: the same as update, what the
    /// machine refused is asked for again, and its alarm is set anew unless sleep or power-off has begun.
    void renew();

Q_SIGNALS:
    /// The machine has slept; the events are right again.
    void systemWoke();

private:
    using Event = dozely::PowerEventScheduler::Event;
    Q_INVOKABLE void systemWillChange(const NSNotification &notification);
    Q_INVOKABLE void systemDidWake(const NSNotification &notification);
    QList<Event> wantedEvents();
    void take(const QList<Event> &wanted);
    void keepAwake();

    dozely::Clock &m_clock;
    PowerNeeds m_needs;
    ActionInhibitor m_inhibitor{"A scheduled action is about to run"};
    std::shared_ptr<const void> m_awake; // while the machine is to stay awake for what is to come
    std::unique_ptr<dozely::AbsoluteTimer> m_awakeTimer;
    QList<Event> m_refused; // told in the log; not asked for again before renew
    bool m_asksRefusedAgain = false;
    bool m_isSystemChanging = false; // from the announcement of sleep or power-off to waking
    bool m_isUpdateComing = false;
};
