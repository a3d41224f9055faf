// SPDX-License-Identifier: MIT
#include "hosts/admin/HistoryCommand.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/Door.h"
#include "hosts/admin/NumberOption.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/ScheduleAnswer.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/common/calendar/DateWords.h"
#include "hosts/common/record/RecordedOutcomes.h"

using namespace dozely;

namespace
{
constexpr qsizetype usualNumber = 20;

[[noreturn]] void fail(const Error &error)
{
    throw AdminError(error.name == RecordedOutcomes::notPermitted ? ExitStatus::NotPermitted
                                                                  : ExitStatus::Failed,
                     AdminText::tr("What became of it cannot be told: %1.").arg(AdminText::reason(error)));
}

/// One that is gone from the store has no name any more.
Schedule scheduleOf(const QString &identifier, const QList<Schedule> &schedules)
{
    for (const Schedule &schedule : schedules) {
        if (schedule.identifier == identifier)
            return schedule;
    }
    Schedule gone;
    gone.identifier = identifier;
    return gone;
}

bool isRun(const RecordedOccurrence &occurrence)
{
    return occurrence.first.isValid() && occurrence.first != occurrence.date;
}

QString dateText(const RecordedOccurrence &occurrence, const Schedule &schedule)
{
    const QString date = ScheduleAnswer::inWords(occurrence.date, schedule);
    return isRun(occurrence)
               ? AdminText::tr("%1 to %2").arg(ScheduleAnswer::inWords(occurrence.first, schedule), date)
               : date;
}

QString stateText(const RecordedOccurrence &occurrence, const Schedule &schedule)
{
    if (occurrence.postponedTo.isValid())
        return AdminText::tr("postponed to %1")
            .arg(ScheduleAnswer::inWords(occurrence.postponedTo, schedule));
    if (!isRun(occurrence) || !occurrence.count)
        return AdminText::state(occurrence.outcome.state);
    const int count = static_cast<int>(*occurrence.count);
    return (occurrence.isCountExact ? AdminText::tr("%1 %n time(s)", "missed; a number", count)
                                    : AdminText::tr("%1 at least %n time(s)", "missed; a number", count))
        .arg(AdminText::state(occurrence.outcome.state));
}

QString latenessText(const RecordedOutcome &outcome)
{
    constexpr qint64 second = 1000;
    if (!outcome.lateness)
        return "-";
    return *outcome.lateness < second ? AdminText::tr("on time")
                                      : AdminText::tr("%1 late", "a duration")
                                            .arg(DateWords::of(std::chrono::milliseconds(*outcome.lateness)));
}

QString reasonText(const RecordedOutcome &outcome)
{
    constexpr qsizetype longest = 80; // in a column of the table
    if (!outcome.failure.isEmpty())
        return logLabel(AdminText::reason(outcome.failure), longest);
    return outcome.exitStatus.value_or(0) != 0 ? AdminText::tr("exit %1").arg(*outcome.exitStatus)
                                               : QString("-");
}

QVariantMap describe(const RecordedOccurrence &occurrence, const Schedule &schedule)
{
    const auto date = [](const QDateTime &value) { return value.isValid() ? QVariant(value) : QVariant(); };
    const auto number = [](std::optional<qint64> value) { return value ? QVariant(*value) : QVariant(); };
    const RecordedOutcome &outcome = occurrence.outcome;
    return {{"identifier", occurrence.identifier},
            {"name", schedule.name.isEmpty() ? QVariant() : schedule.name},
            {"date", occurrence.date},
            {"state", outcome.state},
            {"first", date(occurrence.first)},
            {"count", number(occurrence.count)},
            {"isCountExact", occurrence.isCountExact},
            {"postponedTo", date(occurrence.postponedTo)},
            {"begun", date(outcome.begun)},
            {"ended", date(outcome.ended)},
            {"lateness", number(outcome.lateness)},
            {"exitStatus", number(outcome.exitStatus)},
            {"failure", outcome.failure.isEmpty() ? QVariant() : outcome.failure}};
}
/// From the record, or, for who may not read that, from the daemon.
QList<RecordedOccurrence> latestOf(const std::optional<QString> &identifier, qsizetype most)
{
    const auto outcomes = RecordedOutcomes::open();
    const auto latest =
        outcomes ? outcomes->latest(identifier, most) : Result<QList<RecordedOccurrence>>(outcomes.error());
    if (latest)
        return *latest;
    if (latest.error().name == RecordedOutcomes::notPermitted && Door::isThere())
        return Door::history(identifier, most);
    fail(latest.error());
}
} // namespace

void HistoryCommand::run(const AdminOptions &options)
{
    const qsizetype most = NumberOption::read(options, usualNumber);
    const QList<Schedule> schedules = StoreCommands::read().schedules;
    const QString wanted = options.argument(0);
    std::optional<QString> identifier;
    if (!wanted.isNull())
        identifier = StoreCommands::find(wanted).identifier;
    const auto latest = latestOf(identifier, most);
    QList<QStringList> rows;
    QVariantList described;
    for (const RecordedOccurrence &occurrence : latest) {
        const Schedule schedule = scheduleOf(occurrence.identifier, schedules);
        rows += {dateText(occurrence, schedule),  schedule.name.isEmpty() ? "-" : schedule.name,
                 stateText(occurrence, schedule), latenessText(occurrence.outcome),
                 reasonText(occurrence.outcome),  occurrence.identifier};
        described += describe(occurrence, schedule);
    }
    if (options.isSet("json"))
        Output::json({{"occurrences", described}});
    else if (rows.isEmpty())
        Output::line(AdminText::tr("Nothing became of it yet."));
    else
        Output::table({AdminText::tr("WHEN"), AdminText::tr("NAME"), AdminText::tr("STATE"),
                       AdminText::tr("BEGAN"), AdminText::tr("WHY"), AdminText::tr("IDENTIFIER")},
                      rows);
}
