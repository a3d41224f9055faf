// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/ExcludedDates.h"

ExcludedDates::Kept ExcludedDates::keptOf(const QList<WallTime> &former, const Recurrence &recurrence,
                                          const QTimeZone &zone)
{
    Kept result;
    const auto series = WallTimeSeries::of(recurrence, zone);
    for (const WallTime &date : former) {
        if (!(date < recurrence.localStart))
            (series && series->from(date) == date ? result.kept : result.gone) += date;
    }
    return result;
}

QList<WallTime> ExcludedDates::between(const WallTimeSeries &series, const WallTime &first,
                                       const WallTime &last, qsizetype most)
{
    QList<WallTime> dates;
    for (auto next = series.from(first); next && !(last < *next) && dates.size() < most;
         next = series.after(*next))
        dates += *next;
    return dates;
}
