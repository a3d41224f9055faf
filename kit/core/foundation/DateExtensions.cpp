// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DateExtensions.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

using namespace dozely;

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

// Midnight of a day in milliseconds, written as if it were UTC.
qint64 midnightOf(QDate day)
{
    return QDateTime(day, QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
}
} // namespace

QDateTime zandorSoftwaresExtensions::dateFromHour(qint32 hour, qint32 mins, const QDateTime &date)
{
    if (!date.isValid())
        return {};
    QDateTime result = date; // for its zone
    result.setMSecsSinceEpoch(
        momentOf(midnightOf(date.date()) + hour * hourLength + mins * minuteLength, date));
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

bool dozely::isTimeZoneName(const QString &name)
{
    if (QTimeZone::isTimeZoneIdAvailable(name.toUtf8()))
        return true;
    static const QRegularExpression form("\\A[A-Za-z0-9_+-]+(/[A-Za-z0-9_+-]+)*\\z");
    return form.match(name).hasMatch() && QFileInfo("/usr/share/zoneinfo/" + name).isFile() &&
           QTimeZone(name.toUtf8()).isValid();
}

QDateTime dozely::calendarDate(const QDateTime &date, const QString &timeZone)
{
    return timeZone.isEmpty() ? date.toUTC() : date.toTimeZone(QTimeZone(timeZone.toUtf8()));
}

QDateTime dozely::dateAtWallTime(QDate day, QTime time, const QTimeZone &zone)
{
    if (!day.isValid() || !time.isValid() || !zone.isValid())
        return {};
    QDateTime result = QDateTime::fromMSecsSinceEpoch(0, zone);
    result.setMSecsSinceEpoch(momentOf(midnightOf(day) + time.msecsSinceStartOfDay(), result));
    return result;
}
