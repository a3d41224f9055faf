// SPDX-License-Identifier: MIT
#include "hosts/admin/CleanCommand.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/record/RecordedOutcomes.h"

using namespace dozely;

namespace
{
[[noreturn]] void fail(const Error &error)
{
    throw AdminError(error.name == RecordedOutcomes::notPermitted ? ExitStatus::NotPermitted
                                                                  : ExitStatus::Failed,
                     AdminText::tr("What is over cannot be told: %1.").arg(AdminText::reason(error)));
}

/// The date of the only occurrence, or of the last one of what repeats and is at its end; nothing while
/// there is more to come.
std::optional<QDateTime> lastDate(const Schedule &schedule)
{
    if (!schedule.recurrence)
        return schedule.date;
    const QDateTime now = Port<Clock>::current()->currentDate();
    const auto series = OccurrenceSeries::of(*schedule.recurrence, schedule.zone());
    return !series || series->after(now) ? std::nullopt : series->upTo(now);
}

bool isOver(const Schedule &schedule, const RecordedOutcomes &outcomes)
{
    const auto date = lastDate(schedule);
    if (!date)
        return false;
    const auto outcome = outcomes.find(schedule.identifier, *date);
    if (!outcome)
        fail(outcome.error());
    if (!*outcome || !(*outcome)->isOver())
        return false;
    const auto isInUse = outcomes.isInUse(schedule.identifier); // it was asked for once more
    if (!isInUse)
        fail(isInUse.error());
    return !*isInUse;
}
} // namespace

void CleanCommand::run(const AdminOptions &options)
{
    const auto outcomes = RecordedOutcomes::open();
    if (!outcomes)
        fail(outcomes.error());
    QList<Schedule> removed;
    const auto by = StoreCommands::change([&](QList<Schedule> &schedules) {
        schedules.removeIf([&](const Schedule &schedule) {
            const bool goes = !schedule.staysWhenOver && isOver(schedule, *outcomes);
            if (goes)
                removed += schedule;
            return goes;
        });
    });
    QVariantList described;
    for (const Schedule &schedule : std::as_const(removed)) {
        if (by == StoreCommands::ChangedBy::ThisTool)
            ZDRLog("Schedule \"%@\" (%@), which is over, was removed by user %d.", logLabel(schedule.name),
                   logLabel(schedule.identifier), Identity::caller());
        described += StoreCommands::describe(schedule);
    }
    if (options.isSet("json")) {
        Output::json({{"schedules", described}});
        return;
    }
    for (const Schedule &schedule : std::as_const(removed))
        Output::line(Output::escaped(AdminText::tr("\"%1\" is over and removed.").arg(schedule.name)));
    if (removed.isEmpty())
        Output::line(AdminText::tr("No schedule is over."));
}
