// SPDX-License-Identifier: MIT
#include "hosts/admin/AddCommand.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/ScheduleAnswer.h"
#include "hosts/admin/ScheduleOptions.h"
#include "hosts/admin/Spread.h"
#include "hosts/admin/StoreCommands.h"

#include <QUuid>

using namespace dozely;

namespace
{
/// --spread.
void spread(const AdminOptions &options, Schedule &schedule)
{
    const auto spread = Spread::read(options);
    if (!spread)
        return;
    const auto delay = Spread::ofThisMachine(*spread);
    const auto moved = delay ? Spread::apply(*delay, *spread, schedule) : delay.error();
    if (!moved)
        throw AdminError(ExitStatus::Failed,
                         AdminText::tr("It cannot be spread: %1.").arg(AdminText::reason(moved.error())));
}
} // namespace

void AddCommand::run(const AdminOptions &options)
{
    Schedule schedule;
    schedule.identifier = QUuid::createUuid().toString(QUuid::WithoutBraces);
    schedule.name = ScheduleOptions::name(options.argument(0));
    schedule.owner = Identity::caller();
    const QStringList remarks = ScheduleOptions::applyTime(options, schedule);
    spread(options, schedule);
    ScheduleOptions::applyAction(options, schedule);
    ScheduleOptions::applyRest(options, schedule);

    if (StoreCommands::add(schedule) == StoreCommands::ChangedBy::ThisTool)
        ZDRLog("Schedule \"%@\" (%@) was added by user %d.", logLabel(schedule.name), schedule.identifier,
               Identity::caller());
    for (const QString &remark : remarks)
        Output::remark(remark);
    ScheduleAnswer::tell(options, schedule,
                         AdminText::tr("\"%1\" is added as %2").arg(schedule.name, schedule.identifier));
}
