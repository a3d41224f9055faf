// SPDX-License-Identifier: MIT
#include "hosts/daemon/PowerPlanner.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "hosts/daemon/PlugInAnswers.h"

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
const QString ourselves = "com.dozely";

/// Gathers the changes of one moment, and lets what is due go first.
constexpr std::chrono::milliseconds updateDelay(100);

/// An agent that has an occurrence begins it, and takes its own lock, within a moment.
constexpr std::chrono::seconds handOverTime(5);

QList<PowerEventScheduler::Event> ourEvents()
{
    QList<PowerEventScheduler::Event> events = Port<PowerEventScheduler>::current()->scheduledEvents();
    events.removeIf([](const PowerEventScheduler::Event &event) { return event.owner != ourselves; });
    return events;
}
} // namespace

PowerPlanner::PowerPlanner(Scheduler &scheduler, Clock &clock, PlugInAnswers &answers)
    : m_clock(clock), m_needs(scheduler, clock, answers), m_awakeTimer(clock.makeAbsoluteTimer())
{
    connect(m_awakeTimer.get(), &AbsoluteTimer::due, this, &PowerPlanner::keepAwake);
    auto &center = NSNotificationCenter::defaultCenter();
    center.addObserver(this, "systemWillChange", ZDRPowerManagerSystemWillSleep);
    center.addObserver(this, "systemWillChange", ZDRPowerManagerSystemWillPowerOff);
    center.addObserver(this, "systemDidWake", ZDRPowerManagerSystemDidWake);
    connect(&answers, &PlugInAnswers::answered, this, [this] {
        m_needs.noteAnswers();
        updateSoon();
    });
}

PowerPlanner::~PowerPlanner() = default;

void PowerPlanner::systemWillChange(const NSNotification &notification)
{
    m_isSystemChanging = true;
    update();
    // SIGTERM is told as a power-off, too. It may be a restart of this service alone; or the machine's end
    // that the login manager has not announced.
    if (notification.name() == ZDRPowerManagerSystemWillPowerOff &&
        Port<SystemPower>::current()->isGoingOff())
        Port<PowerEventScheduler>::current()->arm(PowerEventScheduler::Phase::PoweringOff);
}

void PowerPlanner::systemDidWake(const NSNotification &)
{
    m_isSystemChanging = false;
    renew();
    Q_EMIT systemWoke();
}

void PowerPlanner::updateSoon()
{
    if (m_isUpdateComing)
        return;
    m_isUpdateComing = true;
    m_clock.callAfter(updateDelay, this, [this] {
        m_isUpdateComing = false;
        update();
    });
}

void PowerPlanner::renew()
{
    m_asksRefusedAgain = true;
    update();
    m_asksRefusedAgain = false;
    if (!m_isSystemChanging)
        Port<PowerEventScheduler>::current()->arm(PowerEventScheduler::Phase::Running);
}

void PowerPlanner::update()
{
    const QList<Event> wanted = wantedEvents();
    const QList<Event> former = ourEvents();
    for (const Event &event : former) {
        // One whose time has passed leaves by itself; one may stand for a schedule whose plug-in still is
        // asked.
        if (!m_needs.isAsking() && !wanted.contains(event) && event.time > m_clock.currentDate())
            Port<PowerEventScheduler>::current()->cancel(event.time, event.owner, event.type);
    }
    QList<Event> missing;
    std::copy_if(wanted.cbegin(), wanted.cend(), std::back_inserter(missing), [&](const Event &event) {
        return !former.contains(event) && (m_asksRefusedAgain || !m_refused.contains(event));
    });
    take(missing);
    m_refused.removeIf([&](const Event &event) { return !wanted.contains(event); });
    keepAwake();
}

/// Takes the lock that holds for the schedules whose time it is, or gives it back, and waits for the next
/// moment at which that changes.
void PowerPlanner::keepAwake()
{
    std::shared_ptr<const void> awake;
    QDateTime next;
    for (const auto &[need, lead] :
         {std::pair(PowerNeeds::Need::Wake, wakeLead), std::pair(PowerNeeds::Need::PowerOn, powerOnLead)}) {
        const PowerNeeds::Hold hold = m_needs.holdNow(need, lead);
        if (hold.change.isValid() && (!next.isValid() || hold.change < next))
            next = hold.change;
        if (hold.bundleInfo && !awake)
            awake = m_inhibitor.hold(*hold.bundleInfo);
    }
    if (m_awake && !awake)
        m_clock.callAfter(handOverTime, this, [held = std::move(m_awake)] {});
    m_awake = std::move(awake);
    if (next.isValid())
        m_awakeTimer->start(next);
    else
        m_awakeTimer->stop();
}

void PowerPlanner::take(const QList<Event> &wanted)
{
    for (const Event &event : wanted) {
        if (event.type == PowerEventScheduler::wake)
            ZDRPowerManager::setWakeDate(event.time);
        else
            ZDRPowerManager::setStartupDate(event.time);
    }
    if (wanted.isEmpty())
        return;
    // The result of asking tells nothing, so look.
    const QList<Event> taken = ourEvents();
    for (const Event &event : wanted) {
        const bool isTaken = taken.contains(event);
        if (!isTaken && !m_refused.contains(event)) {
            ZDRLog("The machine does not take it that it should %@ at %@",
                   QString(event.type == PowerEventScheduler::wake ? "wake" : "switch itself on"),
                   event.time);
            m_refused += event;
        } else if (isTaken) {
            m_refused.removeAll(event);
        }
    }
}

QList<PowerPlanner::Event> PowerPlanner::wantedEvents()
{
    m_needs.update();
    const QDateTime now = m_clock.currentDate();
    QList<Event> events;
    for (const QDateTime &date : m_needs.next(PowerNeeds::Need::Wake, now.addDuration(wakeLead), mostEvents))
        events += {date.addDuration(-wakeLead), ourselves, PowerEventScheduler::wake};
    for (const QDateTime &date :
         m_needs.next(PowerNeeds::Need::PowerOn, now.addDuration(powerOnLead), mostEvents))
        events += {date.addDuration(-powerOnLead), ourselves, PowerEventScheduler::powerOn};
    return events;
}
