// SPDX-License-Identifier: MIT
#include "hosts/daemon/OwnWakes.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "hosts/daemon/PowerPlanner.h"

#include <QFile>

#include <algorithm>

using namespace dozely;

namespace
{
const QString ourselves = "com.dozely";
const QString dateKey = "Date";

/// Clocks are set to whole seconds, and two of them are compared.
constexpr std::chrono::seconds slack{2};

/// A machine that slept since it was started did not come back by being started.
constexpr std::chrono::seconds noSleep{1};

QString notePath()
{
    return RootFolder::join("/var/lib/dozely/switch-on.plist");
}

enum class Whose { Ours, Others };

QList<QDateTime> events(const char *type, Whose whose)
{
    QList<QDateTime> dates;
    for (const auto &event : Port<PowerEventScheduler>::current()->scheduledEvents()) {
        if (event.type == type && (event.owner == ourselves) == (whose == Whose::Ours))
            dates += event.time;
    }
    std::sort(dates.begin(), dates.end());
    return dates;
}

bool isBackAfter(const QDateTime &event, const QDateTime &back, std::chrono::seconds longest)
{
    return event.addDuration(-slack) <= back && back <= event.addDuration(longest);
}
} // namespace

OwnWakes::OwnWakes(const Clock &clock) : m_clock(clock)
{
    auto &center = NSNotificationCenter::defaultCenter();
    center.addObserver(this, "systemWillSleep", ZDRPowerManagerSystemWillSleep);
    center.addObserver(this, "systemDidWake", ZDRPowerManagerSystemDidWake);
    center.addObserver(this, "systemWillPowerOff", ZDRPowerManagerSystemWillPowerOff);
    lookAtStart();
}

std::optional<QDateTime> OwnWakes::wokenFor(const QDateTime &moment) const
{
    const bool isForThat =
        m_wake && moment.addDuration(-m_wake->lead).toSecsSinceEpoch() == m_wake->event.toSecsSinceEpoch();
    return isForThat ? std::optional(m_wake->back) : std::nullopt;
}

void OwnWakes::systemWillSleep(const NSNotification &)
{
    m_wake.reset();
    m_ours = events(PowerEventScheduler::wake, Whose::Ours);
    m_others = events(PowerEventScheduler::wake, Whose::Others);
}

void OwnWakes::systemDidWake(const NSNotification &)
{
    const QDateTime now = m_clock.currentDate();
    const auto isIt = [&](const QDateTime &event) { return isBackAfter(event, now, longestWaking); };
    const auto ours = std::find_if(m_ours.cbegin(), m_ours.cend(), isIt);
    if (ours != m_ours.cend() && std::none_of(m_others.cbegin(), m_others.cend(), isIt))
        m_wake = Wake{*ours, PowerPlanner::wakeLead, now};
    m_ours.clear();
    m_others.clear();
}

/// The alarm is left for the earliest event. SIGTERM, which may be a restart of the service alone, is told in
/// the same way.
void OwnWakes::systemWillPowerOff(const NSNotification &)
{
    if (!Port<SystemPower>::current()->isGoingOff())
        return;
    const QList<QDateTime> ours = events(PowerEventScheduler::powerOn, Whose::Ours);
    const QList<QDateTime> others = events(PowerEventScheduler::powerOn, Whose::Others);
    const bool isOurs = !ours.isEmpty() && (others.isEmpty() || ours.first() < others.first());
    if (!isOurs) {
        QFile::remove(notePath());
        return;
    }
    const QVariantMap note{{dateKey, ours.first()}};
    const auto written =
        replaceFileAtomically(notePath(), PropertyList::toData(note, PropertyList::Format::Xml), 0644);
    if (!written)
        ZDRLog("For what the machine is to switch itself on could not be noted: %@",
               logLabel(written.error().text));
}

void OwnWakes::lookAtStart()
{
    const auto sinceStart = m_clock.bootTime();
    if (!QFile::exists(notePath()) || sinceStart - m_clock.steadyTime() > noSleep)
        return;
    const auto note = PropertyList::fromFile(notePath(), nullptr, false);
    const QDateTime event = note ? note->toMap().value(dateKey).toDateTime() : QDateTime();
    const QDateTime start = m_clock.currentDate().addDuration(-sinceStart);
    if (event.isValid() && isBackAfter(event, start, longestStart))
        m_wake = Wake{event, PowerPlanner::powerOnLead, start};
}
