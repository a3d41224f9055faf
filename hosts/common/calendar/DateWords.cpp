// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/DateWords.h"

#include <QLocale>

QString DateWords::of(QTime time)
{
    return time.toString(time.second() == 0 ? "HH:mm" : "HH:mm:ss");
}

QString DateWords::of(QDate day)
{
    return QLocale::c().toString(day, "d MMMM yyyy");
}

QString DateWords::of(const QDateTime &date)
{
    return QString("%1 %2 at %3")
        .arg(QLocale::c().toString(date.date(), "dddd"), of(date.date()), of(date.time()));
}

QString DateWords::of(std::chrono::milliseconds duration)
{
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    const qint64 seconds = std::chrono::duration_cast<std::chrono::seconds>(duration).count();
    const auto joined = [](const QString &larger, qint64 rest, const char *unit) {
        return rest == 0 ? larger : QString("%1 %2 %3").arg(larger).arg(rest).arg(unit);
    };
    if (seconds < minute)
        return QString("%1 s").arg(seconds);
    if (seconds < hour)
        return joined(QString("%1 min").arg(seconds / minute), seconds % minute, "s");
    if (seconds < day)
        return joined(QString("%1 h").arg(seconds / hour), seconds % hour / minute, "min");
    const qint64 days = seconds / day;
    return joined(days == 1 ? QString("1 day") : QString("%1 days").arg(days), seconds % day / hour, "h");
}
