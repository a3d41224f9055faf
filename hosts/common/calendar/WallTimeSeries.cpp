// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/WallTimeSeries.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/common/calendar/RuleParts.h"

#include <algorithm>

using namespace dozely;

namespace
{
/// A wall time as if it were UTC.
QDateTime asUtc(const WallTime &wallTime)
{
    return QDateTime(wallTime.day, wallTime.time, Qt::UTC);
}
} // namespace

Result<WallTimeSeries> WallTimeSeries::of(const Recurrence &recurrence, const QTimeZone &zone)
{
    const bool isElapsed = !RuleParts(recurrence.rule).isOfDays();
    auto series = OccurrenceSeries::of(recurrence, isElapsed ? zone : QTimeZone::utc());
    if (!series)
        return series.error();
    return WallTimeSeries(*std::move(series), zone, isElapsed);
}

QDateTime WallTimeSeries::momentOf(const WallTime &wallTime) const
{
    return dateAtWallTime(wallTime.day, wallTime.time, m_zone).toUTC();
}

std::optional<WallTime> WallTimeSeries::from(const WallTime &wallTime) const
{
    if (!m_isElapsed) {
        const auto found = m_series.after(asUtc(wallTime).addSecs(-1));
        return found ? std::optional(WallTime::of(*found)) : std::nullopt;
    }
    auto found = m_series.after(momentOf(wallTime).addSecs(-1));
    // A time that occurs twice is the first of them.
    while (found && momentOf(WallTime::of(found->toTimeZone(m_zone))) != *found)
        found = m_series.after(*found);
    return found ? std::optional(WallTime::of(found->toTimeZone(m_zone))) : std::nullopt;
}

std::optional<WallTime> WallTimeSeries::from(const QDateTime &date) const
{
    constexpr qint64 longestGap = 24 * 3600; // seconds that a change of clocks may skip
    const QDateTime local = date.toTimeZone(m_zone);
    auto found = from(WallTime::of(m_isElapsed ? local : local.addSecs(-longestGap)));
    while (found && momentOf(*found) < date)
        found = after(*found);
    return found;
}

std::optional<WallTime> WallTimeSeries::after(const WallTime &occurrence) const
{
    return from(WallTime::of(asUtc(occurrence).addSecs(1)));
}

Result<Recurrence> begunAnew(const Recurrence &recurrence, const QTimeZone &zone, const QDateTime &notBefore)
{
    const Error nothingComes{"nothing comes of it any more"};
    Recurrence result = recurrence;
    RuleParts parts(recurrence.rule);
    if (parts.has("COUNT")) { // what is past does not count
        parts.remove("COUNT");
        result.rule = parts.toString();
    }
    const auto series = WallTimeSeries::of(result, zone);
    if (!series)
        return series.error();
    const auto first = series->from(notBefore);
    if (!first)
        return nothingComes;
    result.rule = recurrence.rule;
    result.localStart = *first;
    const WallTime begin = std::min(*first, WallTime::of(notBefore.toTimeZone(zone)));
    const auto isPast = [&](const WallTime &date) { return date < begin; };
    result.extraDates.removeIf(isPast);
    result.excludedDates.removeIf(isPast);
    if (const auto whole = OccurrenceSeries::of(result, zone); !whole)
        return whole.error();
    return result;
}
