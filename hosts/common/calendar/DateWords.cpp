// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/DateWords.h"

#include "hosts/common/calendar/CalendarText.h"

QString DateWords::of(QTime time)
{
    return time.toString(time.second() == 0 ? "HH:mm" : "HH:mm:ss");
}

QString DateWords::of(QDate day)
{
    return CalendarText::locale().toString(day, CalendarText::tr("d MMMM yyyy", "form of a day"));
}

QString DateWords::of(const QDateTime &date)
{
    return CalendarText::tr("%1 %2 at %3", "day of the week, day, time")
        .arg(CalendarText::locale().dayName(date.date().dayOfWeek()), of(date.date()), of(date.time()));
}

QString DateWords::of(std::chrono::milliseconds duration)
{
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    const qint64 seconds = std::chrono::duration_cast<std::chrono::seconds>(duration).count();
    const auto inSeconds = [](qint64 number) { return CalendarText::tr("%1 s").arg(number); };
    const auto inMinutes = [](qint64 number) { return CalendarText::tr("%1 min").arg(number); };
    const auto inHours = [](qint64 number) { return CalendarText::tr("%1 h").arg(number); };
    const auto inDays = [](qint64 number) {
        return number == 1 ? CalendarText::tr("1 day")
                           : CalendarText::tr("%n days", nullptr, static_cast<int>(number));
    };
    const auto joined = [](const QString &larger, qint64 rest, const auto &smaller) {
        return rest == 0 ? larger : QString("%1 %2").arg(larger, smaller(rest));
    };
    if (seconds < minute)
        return inSeconds(seconds);
    if (seconds < hour)
        return joined(inMinutes(seconds / minute), seconds % minute, inSeconds);
    if (seconds < day)
        return joined(inHours(seconds / hour), seconds % hour / minute, inMinutes);
    return joined(inDays(seconds / day), seconds % day / hour, inHours);
}
