// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DateExtensions.h"

#include "DozelyKit/core/foundation/ZoneClock.h"

#include <QFileInfo>
#include <QRegularExpression>

using namespace dozely;

namespace
{
constexpr qint64 minuteLength = 60'000; // milliseconds
constexpr qint64 hourLength = 60 * minuteLength;

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
        ZoneClock::of(date).momentOf(midnightOf(date.date()) + hour * hourLength + mins * minuteLength));
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
    result.setMSecsSinceEpoch(ZoneClock(zone).momentOf(midnightOf(day) + time.msecsSinceStartOfDay()));
    return result;
}
