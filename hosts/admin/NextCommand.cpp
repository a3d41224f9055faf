// SPDX-License-Identifier: MIT
#include "hosts/admin/NextCommand.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "DozelyKit/core/foundation/ZoneClock.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DateOptions.h"
#include "hosts/admin/NumberOption.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/ScheduleAnswer.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/common/record/UpcomingOccurrences.h"

using namespace dozely;

namespace
{
constexpr qsizetype usualNumber = 10;
constexpr qsizetype numberUntilDate = 1000; // without -n

/// Up to when, a day included; invalid for no end.
QDateTime end(const AdminOptions &options)
{
    if (!options.isSet("until"))
        return {};
    const QString text = options.value("until");
    const QTimeZone zone = machineTimeZone();
    const FriendlyTerms::Date date = DateOptions::written(text, zone);
    if (!date.time)
        return dateAtWallTime(date.day, QTime(23, 59, 59), zone);
    return DateOptions::inZone(date, text, zone).date;
}

/// What the record knows of it; nothing, and a remark, where it cannot be read.
QList<RecordedOccurrence> known(const QDateTime &now, bool &isKnown)
{
    const auto outcomes = RecordedOutcomes::open();
    const auto toCome =
        outcomes ? outcomes->toCome(now) : Result<QList<RecordedOccurrence>>(outcomes.error());
    isKnown = toCome.ok();
    if (toCome)
        return *toCome;
    Output::remark(AdminText::tr("What was skipped or postponed is not taken into account: %1.")
                       .arg(AdminText::reason(toCome.error())));
    return {};
}

bool has(const Schedule &schedule, QLatin1StringView parameter)
{
    return schedule.parameters.value(parameter).toInt() == 1;
}

QStringList tableRow(const UpcomingOccurrence &occurrence, const Schedule &schedule)
{
    const bool isSwitchedOn = has(schedule, ParameterKey::needsStartup);
    const bool isWoken = has(schedule, ParameterKey::needsWakeUp);
    const QString power = isSwitchedOn && isWoken ? AdminText::tr("woken, switched on")
                          : isSwitchedOn          ? AdminText::tr("switched on")
                          : isWoken               ? AdminText::tr("woken")
                                                  : "-";
    QString when = ScheduleAnswer::inWords(occurrence.moment, schedule);
    if (occurrence.isPostponed())
        when = AdminText::tr("%1, postponed from %2")
                   .arg(when, ScheduleAnswer::inWords(occurrence.date, schedule));
    return {when, schedule.name, power, schedule.identifier};
}

QVariantMap describe(const UpcomingOccurrence &occurrence, const Schedule &schedule)
{
    return {{"identifier", schedule.identifier},
            {"name", schedule.name},
            {"date", occurrence.date},
            {"moment", occurrence.moment},
            {"isPostponed", occurrence.isPostponed()},
            {"wakes", has(schedule, ParameterKey::needsWakeUp)},
            {"powersOn", has(schedule, ParameterKey::needsStartup)}};
}

void showNothing(const AdminOptions &options, const QList<Schedule> &schedules)
{
    const bool isDisabled = !options.argument(0).isNull() && !schedules.constFirst().isEnabled;
    Output::line(isDisabled
                     ? Output::escaped(AdminText::tr("\"%1\" is disabled.").arg(schedules.constFirst().name))
                     : AdminText::tr("Nothing comes."));
}
} // namespace

void NextCommand::run(const AdminOptions &options)
{
    const QDateTime last = end(options);
    const qsizetype most = NumberOption::read(options, last.isValid() ? numberUntilDate : usualNumber);
    const QString wanted = options.argument(0);
    const QList<Schedule> schedules =
        wanted.isNull() ? StoreCommands::read().schedules : QList<Schedule>{StoreCommands::find(wanted)};
    const QDateTime now = Port<Clock>::current()->currentDate();
    bool isKnown = false;
    UpcomingOccurrences upcoming(schedules, now, known(now, isKnown));
    QList<QStringList> rows;
    QVariantList described;
    while (described.size() < most) {
        const auto occurrence = upcoming.next();
        if (!occurrence || (last.isValid() && occurrence->moment > last))
            break;
        rows += tableRow(*occurrence, schedules.at(occurrence->schedule));
        described += describe(*occurrence, schedules.at(occurrence->schedule));
    }
    for (const QString &fault : upcoming.faults())
        Output::remark(fault);
    if (options.isSet("json"))
        Output::json({{"occurrences", described}, {"recordIsKnown", isKnown}});
    else if (rows.isEmpty())
        showNothing(options, schedules);
    else
        Output::table({AdminText::tr("WHEN"), AdminText::tr("NAME"), AdminText::tr("MACHINE IS"),
                       AdminText::tr("IDENTIFIER")},
                      rows);
}
