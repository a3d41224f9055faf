// SPDX-License-Identifier: MIT
#include "hosts/admin/PowerCommand.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DisplayWidth.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"

#include <algorithm>
#include <unistd.h>

using namespace dozely;

namespace
{
/// Far enough not to come while the test runs, near enough for every clock.
constexpr std::chrono::minutes testDistance(10);

QString localText(const QDateTime &date)
{
    return date.toLocalTime().toString("yyyy-MM-dd HH:mm:ss");
}

/// The events still to come, earliest first.
QList<PowerEventScheduler::Event> events()
{
    auto events = Port<PowerEventScheduler>::current()->scheduledEvents();
    std::stable_sort(events.begin(), events.end(),
                     [](const auto &a, const auto &b) { return a.time < b.time; });
    return events;
}

QString clockText(const PowerEventScheduler::Alarm &alarm)
{
    return Output::escaped(alarm.clock.isEmpty() ? alarm.device
                                                 : QString("%1 (%2)").arg(alarm.device, alarm.clock));
}

QString alarmText(const PowerEventScheduler::Alarm &alarm)
{
    if (!alarm.armedFor.isValid())
        return AdminText::tr("not armed");
    return (alarm.isOurs ? AdminText::tr("%1, for an event below")
                         : AdminText::tr("%1, armed by another program"))
        .arg(localText(alarm.armedFor));
}

void showInJson(const std::optional<PowerEventScheduler::Alarm> &alarm)
{
    QVariantList list;
    for (const PowerEventScheduler::Event &event : events())
        list += QVariantMap{{"time", event.time}, {"owner", event.owner}, {"type", event.type}};
    QVariantMap answer{{"isSupported", alarm.has_value()}, {"events", list}};
    if (alarm) {
        answer.insert("device", alarm->device);
        answer.insert("clock", alarm->clock);
        answer.insert("alarm",
                      alarm->armedFor.isValid() ? QVariant(alarm->armedFor) : QVariant::fromValue(nullptr));
        answer.insert("alarmIsOurs", alarm->isOurs);
    }
    Output::json(answer);
}

void show(const AdminOptions &options)
{
    const auto alarm = Port<PowerEventScheduler>::current()->alarm();
    if (options.isSet("json")) {
        showInJson(alarm);
        return;
    }
    const QString titles[] = {AdminText::tr("Clock:"), AdminText::tr("Alarm:")};
    const qsizetype width = DisplayWidth::widest({titles[0], titles[1]}) + 2;
    Output::line(DisplayWidth::padded(titles[0], width) +
                 (alarm ? clockText(*alarm) : AdminText::tr("none that could wake this machine")));
    if (alarm)
        Output::line(DisplayWidth::padded(titles[1], width) + alarmText(*alarm));
    QList<QStringList> rows;
    for (const PowerEventScheduler::Event &event : events())
        rows += {localText(event.time), event.type, event.owner};
    if (rows.isEmpty())
        Output::line(AdminText::tr("No events are scheduled."));
    else
        Output::table({AdminText::tr("TIME"), AdminText::tr("TYPE"), AdminText::tr("OWNER")}, rows);
}

/// Whether this user is the one to whom the machine's files belong.
bool isSystem()
{
    return RootFolder::owner() == static_cast<quint32>(::geteuid());
}

void test(const AdminOptions &options)
{
    const auto alarm = Port<PowerEventScheduler>::current()->alarm();
    if (!alarm)
        throw AdminError(ExitStatus::Failed, AdminText::tr("This machine has no clock that could wake it."));
    if (!isSystem())
        throw AdminError(ExitStatus::NotPermitted,
                         AdminText::tr("You may not set the machine's clock; try it as root."));
    const QDateTime date = Port<Clock>::current()->currentDate().addDuration(testDistance);
    const QString fault = Port<PowerEventScheduler>::current()->testAlarm(date);
    if (!fault.isEmpty())
        throw AdminError(ExitStatus::Failed, fault);
    if (options.isSet("json"))
        Output::json({{"device", alarm->device}, {"clock", alarm->clock}, {"works", true}});
    else
        Output::line(AdminText::tr("The alarm of %1 was armed for %2, read back, and set as it was.")
                         .arg(clockText(*alarm), localText(date)));
}
} // namespace

void PowerCommand::run(const AdminOptions &options)
{
    const QString argument = options.argument(0);
    if (argument.isNull())
        show(options);
    else if (argument == "test")
        test(options);
    else
        throw AdminError(ExitStatus::BadUsage, AdminText::tr("\"%1\" is not test.").arg(argument));
}

void PowerCommand::sleep(const AdminOptions &options)
{
    SystemPower &power = *Port<SystemPower>::current();
    if (!power.canSleep())
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("There is no login manager that could put this machine to sleep."));
    if (!power.sleep()) {
        if (isSystem())
            throw AdminError(ExitStatus::Failed,
                             AdminText::tr("The machine does not let itself be put to sleep."));
        throw AdminError(ExitStatus::NotPermitted,
                         AdminText::tr("The machine does not let you put it to sleep; try it as root."));
    }
    ZDRLog("The machine is put to sleep by user %d.", Identity::caller());
    if (options.isSet("json"))
        Output::json({{"accepted", true}});
    else
        Output::line(AdminText::tr("The machine goes to sleep."));
}
