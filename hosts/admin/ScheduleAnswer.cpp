// SPDX-License-Identifier: MIT
#include "hosts/admin/ScheduleAnswer.h"

#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DisplayWidth.h"
#include "hosts/admin/Output.h"
#include "hosts/admin/StoreCommands.h"
#include "hosts/common/calendar/DateWords.h"
#include "hosts/common/calendar/RuleWords.h"
#include "hosts/common/record/UpcomingOccurrences.h"

using namespace dozely;

namespace
{
QList<QDateTime> nextDates(const Schedule &schedule)
{
    constexpr qsizetype told = 3;
    auto upcoming = UpcomingOccurrences::ofOne(schedule);
    QList<QDateTime> dates;
    while (dates.size() < told) {
        const auto next = upcoming.next();
        if (!next)
            break;
        dates += next->date;
    }
    return dates;
}
} // namespace

QString ScheduleAnswer::inWords(const QDateTime &date, const Schedule &schedule)
{
    const QDateTime here = date.toTimeZone(machineTimeZone());
    const QString text = DateWords::of(here);
    const QDateTime there = date.toTimeZone(schedule.zone());
    const bool hasZone = !schedule.timeZone.isEmpty();
    if (!hasZone || (there.date() == here.date() && there.time() == here.time()))
        return text;
    return AdminText::tr("%1 (%2 in %3)").arg(text, DateWords::of(there), schedule.timeZone);
}

void ScheduleAnswer::tell(const AdminOptions &options, const Schedule &schedule, const QString &what)
{
    const QList<QDateTime> dates = nextDates(schedule);
    if (options.isSet("json")) {
        QVariantList next;
        for (const QDateTime &date : dates)
            next += date;
        Output::json({{"schedule", StoreCommands::describe(schedule)}, {"next", next}});
        return;
    }
    if (!schedule.recurrence) {
        Output::line(Output::escaped(AdminText::tr("%1, for %2 (%3).")
                                         .arg(what, schedule.calendarDate().toString("yyyy-MM-dd HH:mm:ss"),
                                              schedule.timeZone.isEmpty() ? "UTC" : schedule.timeZone)));
        return;
    }
    const QString zone = schedule.timeZone.isEmpty() ? QString() : QString(" (%1)").arg(schedule.timeZone);
    Output::line(Output::escaped(AdminText::tr("%1: %2%3.", "what was done, a rule in words, its time zone")
                                     .arg(what, RuleWords::of(*schedule.recurrence), zone)));
    const QString title = AdminText::tr("Next:") + ' ';
    for (qsizetype i = 0; i < dates.size(); ++i)
        Output::line(Output::escaped((i == 0 ? title : QString(DisplayWidth::of(title), ' ')) +
                                     inWords(dates.at(i), schedule)));
    if (!schedule.isEnabled)
        Output::line(AdminText::tr("It is disabled: it does not come due before it is enabled."));
}
