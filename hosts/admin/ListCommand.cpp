// SPDX-License-Identifier: MIT
#include "hosts/admin/ListCommand.h"

#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/Identity.h"
#include "hosts/admin/KnownOutcomes.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/common/calendar/RuleWords.h"

#include <QFileInfo>

using namespace dozely;

namespace
{
/// When it takes place, in its zone: of what repeats the next time, or, at its end, the first.
QDateTime shownDate(const Schedule &schedule, const KnownOutcomes &outcomes)
{
    const auto next = schedule.recurrence ? outcomes.next(schedule) : std::nullopt;
    return next ? next->toTimeZone(schedule.zone()) : schedule.calendarDate();
}

QStringList tableRow(const Schedule &schedule, const KnownOutcomes &outcomes)
{
    const QVariant place = StoreCommands::describe(schedule).value("actsIn");
    const bool goesWithMachine = schedule.recurrence && schedule.timeZone.isEmpty();
    return {schedule.name,
            schedule.isEnabled ? "yes" : "no",
            shownDate(schedule, outcomes).toString("yyyy-MM-dd HH:mm:ss"),
            goesWithMachine               ? "machine"
            : schedule.timeZone.isEmpty() ? "UTC"
                                          : schedule.timeZone,
            schedule.recurrence ? RuleWords::of(*schedule.recurrence) : "-",
            QFileInfo(schedule.bundlePath).completeBaseName(),
            place.isNull() ? "?" : place.toString(),
            outcomes.nameFor(schedule),
            schedule.owner ? Identity::nameOf(*schedule.owner) : "-",
            schedule.identifier};
}

void showInJson(const ScheduleStore::Content &content, const KnownOutcomes &outcomes)
{
    QVariantList schedules;
    for (const Schedule &schedule : content.schedules) {
        QVariantMap described = StoreCommands::describe(schedule);
        const auto next = outcomes.next(schedule);
        described.insert("next", next ? QVariant(*next) : QVariant());
        described.insert("occurrence", outcomes.describe(schedule));
        schedules += described;
    }
    Output::json(
        {{"schedules", schedules}, {"faults", content.faults}, {"outcomesAreKnown", outcomes.areKnown()}});
}
} // namespace

void ListCommand::run(const AdminOptions &options)
{
    const ScheduleStore::Content content = StoreCommands::read();
    const KnownOutcomes outcomes;
    if (options.isSet("json")) {
        showInJson(content, outcomes);
        return;
    }
    QList<QStringList> rows;
    for (const Schedule &schedule : content.schedules)
        rows += tableRow(schedule, outcomes);
    if (rows.isEmpty())
        Output::line("There are no schedules.");
    else
        Output::table({"NAME", "ENABLED", "DATE", "TIME ZONE", "REPEATS", "ACTION", "RUNS IN", "STATE",
                       "OWNER", "IDENTIFIER"},
                      rows);
    for (const QString &fault : content.faults)
        Output::remark(fault + ".");
    if (!outcomes.fault().isEmpty())
        Output::remark(QString("What became of the schedules cannot be told: %1.").arg(outcomes.fault()));
}
