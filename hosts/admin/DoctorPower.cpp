// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DoctorCheck.h"
#include "hosts/common/plugins/Feasibility.h"
#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/common/schedules/ScheduleStore.h"

#include <algorithm>
#include <unistd.h>

using namespace dozely;

namespace
{
QString firmware()
{
    return AdminText::tr(
        "Look for an alarm, \"RTC wake\" or \"power on by alarm\" in the firmware's settings; "
        "docs/power.md says more");
}

/// A command, and what to look for besides.
QString firmwareAfter(const char *command)
{
    return QString("%1. %2").arg(command, firmware());
}

/// The enabled schedules that have the machine woken or switched on.
QList<Schedule> wakingSchedules()
{
    QList<Schedule> waking;
    const auto content = ScheduleStore::read();
    for (const Schedule &schedule : content ? content->schedules : QList<Schedule>()) {
        if (schedule.isEnabled && Feasibility::wakesMachine(schedule))
            waking += schedule;
    }
    return waking;
}

Finding wakeClock(const DoctorServices & /*services*/)
{
    const auto alarm = Port<PowerEventScheduler>::current()->alarm();
    if (alarm)
        return Finding::fine(AdminText::tr("%1 can wake the machine.").arg(alarm->device));
    if (wakingSchedules().isEmpty())
        return Finding::fine(AdminText::tr("No clock can wake this machine, and no schedule asks for that."));
    return Finding::wrong(
        AdminText::tr("No clock can wake this machine, as \"%1\" asks for.")
            .arg(logLabel(wakingSchedules().constFirst().name)),
        AdminText::tr("%1, or %2")
            .arg("modprobe rtc_cmos", "dozely-admin change SCHEDULE --no-wake --no-power-on"));
}

/// The alarm that should be armed now, and is not: something else has dropped it.
Finding heldAlarm(const DoctorServices & /*services*/)
{
    const auto scheduler = Port<PowerEventScheduler>::current();
    const auto alarm = scheduler->alarm();
    if (!alarm)
        return Finding::unknown(
            AdminText::tr("There is no alarm without a clock that could wake the machine."));
    const QDateTime now = Port<Clock>::current()->currentDate();
    const auto events = scheduler->scheduledEvents();
    const bool isAnyToCome =
        std::any_of(events.cbegin(), events.cend(), [&](const auto &event) { return event.time > now; });
    if (isAnyToCome && !alarm->armedFor.isValid())
        return Finding::wrong(
            AdminText::tr("The machine is to be woken, and the alarm of %1 is not armed: the firmware or "
                          "another program has dropped it, or the daemon does not run.")
                .arg(alarm->device),
            firmwareAfter("systemctl restart dozelyd; dozely-admin power test"));
    constexpr std::chrono::minutes distance(10);
    if (RootFolder::owner() != static_cast<quint32>(::geteuid()))
        return Finding::fine(isAnyToCome ? AdminText::tr("The alarm is armed.")
                                         : AdminText::tr("No alarm is needed."));
    // Armed, read back, and set as it was: what a firmware drops at once is found by that alone.
    const QString fault = scheduler->testAlarm(now.addDuration(distance));
    if (!fault.isEmpty())
        return Finding::wrong(fault, firmware());
    return Finding::fine(AdminText::tr("The alarm holds what it is set to."));
}

/// What was to wake the machine and was missed all the same tells more than any alarm that reads back well.
Finding wakes(const DoctorServices & /*services*/)
{
    constexpr qsizetype searched = 500;
    const auto outcomes = RecordedOutcomes::open();
    const auto latest =
        outcomes ? outcomes->latest({}, searched) : Result<QList<RecordedOccurrence>>(outcomes.error());
    if (!latest)
        return Finding::unknown(
            AdminText::tr("Only root can see whether the machine was woken when it should have been."));
    for (const Schedule &schedule : wakingSchedules()) {
        const auto last = std::find_if(latest->cbegin(), latest->cend(), [&](const RecordedOccurrence &each) {
            return each.identifier == schedule.identifier && each.outcome.isOver();
        });
        if (last != latest->cend() && (last->outcome.state == "skipped" || last->outcome.state == "missed"))
            return Finding::wrong(
                AdminText::tr("The last time of \"%1\", which wakes the machine, was missed.")
                    .arg(logLabel(schedule.name)),
                firmwareAfter("dozely-admin power test"));
    }
    return Finding::fine(AdminText::tr("Nothing that wakes the machine was missed the last time."));
}
} // namespace

void DoctorChecks::addPower(List &checks)
{
    checks.push_back(std::make_unique<SimpleCheck>("wake-clock", wakeClock));
    checks.push_back(std::make_unique<SimpleCheck>("alarm", heldAlarm));
    checks.push_back(std::make_unique<SimpleCheck>("wakes", wakes));
}
