// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DateExtensions.h"

#include <algorithm>

namespace
{
constexpr qint64 minuteLength = 60'000; // milliseconds
constexpr qint64 hourLength = 60 * minuteLength;
constexpr qint64 dayLength = 24 * hourLength;

// The zone's distance from UTC, in milliseconds, at a moment. From a moment to the wall time Qt computes
// right; it is the other direction that it guesses when the clocks change, so that direction is computed
// below.
qint64 offsetAt(qint64 moment, QDateTime zone)
{
    zone.setMSecsSinceEpoch(moment);
    return qint64(zone.offsetFromUtc()) * 1000;
}

// The moment at which clocks of the zone show `wallTime`, written in milliseconds as if it were UTC.
qint64 momentOf(qint64 wallTime, const QDateTime &zone)
{
    // No zone is as far as a day from UTC, so these lie on either side of a change that is near.
    const qint64 before = offsetAt(wallTime - dayLength, zone);
    const qint64 after = offsetAt(wallTime + dayLength, zone);
    // The larger offset gives the earlier moment: the first of a time that occurs twice.
    for (const qint64 offset : {std::max(before, after), std::min(before, after)}) {
        if (offsetAt(wallTime - offset, zone) == offset)
            return wallTime - offset;
    }
    // Skipped. Counting on from before the change moves it forward by as much as the clocks were.
    return wallTime - before;
}
} // namespace

QDateTime zandorSoftwaresExtensions::dateFromHour(qint32 hour, qint32 mins, const QDateTime &date)
{
    if (!date.isValid())
        return {};
    const qint64 midnight = QDateTime(date.date(), QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    QDateTime result = date; // for its zone
    result.setMSecsSinceEpoch(momentOf(midnight + hour * hourLength + mins * minuteLength, date));
    return result;
}

qint32 zandorSoftwaresExtensions::hour(const QDateTime &date)
{
    return date.isValid() ? date.toLocalTime().time().hour() : 0;
}

qint32 zandorSoftwaresExtensions::minute(const QDateTime &date)
{
    return date.isValid() ? date.toLocalTime().time().minute() : 0;
}
