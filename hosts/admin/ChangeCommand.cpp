// SPDX-License-Identifier: MIT
#include "hosts/admin/ChangeCommand.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/ScheduleAnswer.h"
#include "hosts/admin/ScheduleOptions.h"
#include "hosts/admin/StoreCommands.h"

#include <algorithm>

using namespace dozely;

namespace
{
bool isAnythingNamed(const AdminOptions &options)
{
    const QStringList others{"name",  "disabled", "enabled", "stays", "no-stays",
                             "owner", "missed",   "overlap", "after"};
    return ScheduleOptions::nameAction(options) || ScheduleOptions::nameTime(options) ||
           std::any_of(others.cbegin(), others.cend(),
                       [&](const QString &name) { return options.isSet(name); });
}

/// What the options make of a schedule, and sentences for the person.
QStringList apply(const AdminOptions &options, Schedule &schedule)
{
    QStringList remarks;
    if (options.isSet("name"))
        schedule.name = ScheduleOptions::name(options.value("name"));
    if (ScheduleOptions::nameTime(options))
        remarks = ScheduleOptions::applyTime(options, schedule);
    if (ScheduleOptions::nameAction(options))
        ScheduleOptions::applyAction(options, schedule);
    ScheduleOptions::applyRest(options, schedule);
    return remarks;
}
} // namespace

void ChangeCommand::run(const AdminOptions &options)
{
    if (!isAnythingNamed(options))
        throw AdminError(ExitStatus::BadUsage,
                         AdminText::tr("Say what is to change; --help shows the options."));
    const QString identifier = StoreCommands::find(options.argument(0)).identifier;
    std::optional<Schedule> changed;
    QStringList remarks;
    const auto by = StoreCommands::change([&](QList<Schedule> &schedules) {
        for (Schedule &schedule : schedules) {
            if (schedule.identifier != identifier)
                continue;
            // As it is now, which somebody else may have changed a moment ago.
            changed = schedule;
            remarks = apply(options, *changed);
            schedule = *changed;
        }
    });
    if (!changed)
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("There is no schedule \"%1\" any more.").arg(options.argument(0)));
    if (by == StoreCommands::ChangedBy::ThisTool)
        ZDRLog("Schedule \"%@\" (%@) was changed by user %d.", logLabel(changed->name),
               logLabel(changed->identifier), Identity::caller());
    for (const QString &remark : remarks)
        Output::remark(remark);
    ScheduleAnswer::tell(options, *changed, AdminText::tr("\"%1\" is changed").arg(changed->name));
}
