// SPDX-License-Identifier: MIT
#include "hosts/admin/OccurrenceOptions.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DateOptions.h"
#include "hosts/common/calendar/DateWords.h"
#include "hosts/common/calendar/OccurrenceSeries.h"

using namespace dozely;

namespace
{
/// The earliest occurrence after a date.
std::optional<QDateTime> after(const Schedule &schedule, const QDateTime &date)
{
    if (!schedule.recurrence)
        return schedule.date > date ? std::optional(schedule.date) : std::nullopt;
    const auto series = OccurrenceSeries::of(*schedule.recurrence, schedule.zone());
    return series ? series->after(date) : std::nullopt;
}

QDateTime onlyOneOn(const QDate &day, const QTimeZone &zone, const Schedule &schedule)
{
    const QDateTime begin = dateAtWallTime(day, QTime(0, 0), zone);
    const QDateTime end = dateAtWallTime(day.addDays(1), QTime(0, 0), zone);
    const auto first = after(schedule, begin.addSecs(-1));
    if (!first || *first >= end)
        refuse(AdminText::tr("\"%1\" does not take place on %2; \"next\" shows when it does.")
                   .arg(schedule.name, DateWords::of(day)));
    const auto second = after(schedule, *first);
    if (second && *second < end) {
        refuse(
            AdminText::tr("\"%1\" takes place at %2, at %3 and so on that day: say at which of these times.")
                .arg(schedule.name, DateWords::of(first->toTimeZone(zone).time()),
                     DateWords::of(second->toTimeZone(zone).time())));
    }
    return *first;
}
} // namespace

std::optional<QDateTime> OccurrenceOptions::read(const AdminOptions &options, const Schedule &schedule,
                                                 DateTerms::Towards towards)
{
    if (!options.isSet("date")) {
        if (options.isSet("time-zone"))
            refuse(AdminText::tr("--time-zone is that of a --date."));
        return {};
    }
    const QTimeZone zone = DateOptions::zone(options, QString::fromUtf8(schedule.zone().id()));
    const QString text = options.value("date");
    const FriendlyTerms::Date date = DateOptions::written(text, zone, towards);
    return date.time ? DateOptions::inZone(date, text, zone).date : onlyOneOn(date.day, zone, schedule);
}
