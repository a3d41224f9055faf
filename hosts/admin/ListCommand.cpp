// SPDX-License-Identifier: MIT
#include "hosts/admin/ListCommand.h"

#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
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

/// Where the action runs.
QString placeName(const QVariant &place)
{
    return place.isNull()                 ? QString("?")
           : place.toString() == "daemon" ? AdminText::tr("daemon")
                                          : AdminText::tr("session");
}

QStringList tableRow(const Schedule &schedule, const KnownOutcomes &outcomes)
{
    const QVariant place = StoreCommands::describe(schedule).value("actsIn");
    const bool goesWithMachine = schedule.recurrence && schedule.timeZone.isEmpty();
    return {schedule.name,
            schedule.isEnabled ? AdminText::tr("yes") : AdminText::tr("no"),
            shownDate(schedule, outcomes).toString("yyyy-MM-dd HH:mm:ss"),
            goesWithMachine               ? AdminText::tr("machine", "a time zone")
            : schedule.timeZone.isEmpty() ? "UTC"
                                          : schedule.timeZone,
            schedule.recurrence ? RuleWords::of(*schedule.recurrence) : "-",
            QFileInfo(schedule.bundlePath).completeBaseName(),
            placeName(place),
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
        Output::line(AdminText::tr("There are no schedules."));
    else
        Output::table({AdminText::tr("NAME"), AdminText::tr("ENABLED"), AdminText::tr("DATE"),
                       AdminText::tr("TIME ZONE"), AdminText::tr("REPEATS"), AdminText::tr("ACTION"),
                       AdminText::tr("RUNS IN"), AdminText::tr("STATE"), AdminText::tr("OWNER"),
                       AdminText::tr("IDENTIFIER")},
                      rows);
    for (const QString &fault : content.faults)
        Output::remark(AdminText::sentence(fault));
    if (!outcomes.fault().isEmpty())
        Output::remark(
            AdminText::tr("What became of the schedules cannot be told: %1.").arg(outcomes.fault()));
}
