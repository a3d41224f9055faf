// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/FriendlyTerms.h"

#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/common/calendar/CalendarText.h"

#include <QRegularExpression>
#include <QStringList>
#include <QTimeZone>

#include <algorithm>
#include <array>

using namespace dozely;

namespace
{
constexpr int noonHour = 12;

QString textOf(QTime time)
{
    return time.toString(time.second() == 0 ? "HH:mm" : "HH:mm:ss");
}

Error readings(const QString &text, const QStringList &readings)
{
    QString either;
    for (const QString &reading : readings)
        either = either.isEmpty() ? reading : CalendarText::tr("%1 or %2").arg(either, reading);
    return Error{CalendarText::tr("\"%1\" can be %2").arg(text, either)};
}

constexpr std::array<const char *, 7> weekdays{"monday", "tuesday",  "wednesday", "thursday",
                                               "friday", "saturday", "sunday"};

/// The days of the week that begin so.
QStringList weekdaysIn(const QString &beginning)
{
    QStringList found;
    for (const char *day : weekdays) {
        if (!beginning.isEmpty() && QString(day).startsWith(beginning))
            found += day;
    }
    return found;
}

/// A list of days of the week as BYDAY has it.
Result<QString> daysOfTheWeek(const QString &text)
{
    constexpr qsizetype shortest = 2;
    QStringList names;
    for (const QString &word : text.split(',')) {
        const QStringList days = weekdaysIn(word.trimmed());
        if (days.size() > 1)
            return readings(word.trimmed(), days);
        if (days.isEmpty() || word.trimmed().size() < shortest)
            return Error{
                CalendarText::tr("\"%1\" is none of day, weekday, week, month and year, of days such as "
                                 "monday,thursday and of distances such as 15m and 2h")
                    .arg(text)};
        names += days.constFirst().left(2).toUpper();
    }
    QStringList sorted;
    for (const char *day : weekdays) {
        const QString name = QString(day).left(2).toUpper();
        if (names.contains(name))
            sorted += name;
    }
    return sorted.join(',');
}
} // namespace

QList<QTime> FriendlyTerms::timesIn(const QString &text)
{
    static const QRegularExpression form(R"(\A(\d{1,2})(?::(\d\d)(?::(\d\d))?)?(?: ?([AaPp])[Mm])?\z)");
    const auto match = form.match(text);
    if (!match.hasMatch())
        return {};
    const int hour = match.captured(1).toInt();
    const QString half = match.captured(4).toLower();
    const auto at = [&](int wanted) {
        return QTime(wanted, match.captured(2).toInt(), match.captured(3).toInt());
    };
    const bool isOnHalfADial = hour >= 1 && hour <= noonHour;
    QList<QTime> times;
    if (!half.isEmpty()) {
        if (hour == noonHour) // noon and midnight are neither
            times = {at(0), at(noonHour)};
        else if (isOnHalfADial)
            times = {at(half == "p" ? hour + noonHour : hour)};
    } else if (!match.captured(2).isEmpty()) { // with minutes the clock has 24 hours
        times = {at(hour)};
    } else if (isOnHalfADial) {
        times = {at(hour % noonHour), at(hour % noonHour + noonHour)};
    }
    const bool areValid =
        std::all_of(times.cbegin(), times.cend(), [](QTime time) { return time.isValid(); });
    return areValid ? times : QList<QTime>();
}

Result<QTime> FriendlyTerms::time(const QString &text)
{
    const QList<QTime> times = timesIn(text);
    if (times.isEmpty())
        return Error{CalendarText::tr("\"%1\" is not a time such as 22:00").arg(text)};
    if (times.size() > 1)
        return readings(text, {textOf(times.constFirst()), textOf(times.constLast())});
    return times.constFirst();
}

Result<std::chrono::seconds> FriendlyTerms::duration(const QString &text)
{
    static const QRegularExpression form(R"(\A(\d{1,10})([smhd]?)\z)");
    constexpr std::chrono::seconds longest = std::chrono::hours(24) * 366 * 100;
    const auto match = form.match(text);
    const qint64 count = match.captured(1).toLongLong();
    const QString unit = match.captured(2);
    const std::chrono::seconds one = unit == "d"   ? std::chrono::hours(24)
                                     : unit == "h" ? std::chrono::hours(1)
                                     : unit == "m" ? std::chrono::minutes(1)
                                                   : std::chrono::seconds(1);
    if (!match.hasMatch() || count > longest / one)
        return Error{CalendarText::tr("\"%1\" is not a number of seconds, nor a time such as 10m, 6h or 2d")
                         .arg(text)};
    return std::chrono::seconds(count * one.count());
}

Result<QString> FriendlyTerms::repetition(const QString &text)
{
    static const QHash<QString, QString> words{{"day", "FREQ=DAILY"},
                                               {"weekday", "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR"},
                                               {"week", "FREQ=WEEKLY"},
                                               {"month", "FREQ=MONTHLY"},
                                               {"year", "FREQ=YEARLY"}};
    static const QHash<QString, QString> units{{"s", "SECONDLY"}, {"m", "MINUTELY"}, {"h", "HOURLY"}};
    static const QRegularExpression distance(R"(\A([1-9]\d{0,5})([smh]?)\z)");
    const QString term = text.toLower();
    if (const auto word = words.constFind(term); word != words.cend())
        return *word;
    if (const auto match = distance.match(term); match.hasMatch()) {
        if (match.captured(2).isEmpty())
            return readings(text, {CalendarText::tr("%1 (minutes)").arg(term + 'm'),
                                   CalendarText::tr("%1 (hours)").arg(term + 'h')});
        const QString frequency = "FREQ=" + units.value(match.captured(2));
        return match.captured(1) == "1" ? frequency : frequency + ";INTERVAL=" + match.captured(1);
    }
    const auto days = daysOfTheWeek(term);
    if (!days)
        return days.error();
    return "FREQ=WEEKLY;BYDAY=" + *days;
}

Result<QList<int>> FriendlyTerms::monthDays(const QString &text)
{
    static const QRegularExpression form(R"(\A([1-9]|[12]\d|3[01])\z)");
    QList<int> days;
    bool hasLast = false;
    for (const QString &word : text.split(',')) {
        const QString day = word.trimmed().toLower();
        if (day == "last")
            hasLast = true;
        else if (form.match(day).hasMatch())
            days += days.contains(day.toInt()) ? QList<int>() : QList<int>{day.toInt()};
        else
            return Error{
                CalendarText::tr("\"%1\" is no day of a month, which is 1 to 31, or last").arg(word)};
    }
    std::sort(days.begin(), days.end());
    if (hasLast)
        days += -1;
    return days;
}

QList<QDateTime> FriendlyTerms::momentsOf(const QDate &day, const QTime &time, const QTimeZone &zone)
{
    constexpr qint64 dayLength = 24 * 3600; // no change of clocks takes longer
    const QDateTime first = dateAtWallTime(day, time, zone);
    if (!first.isValid() || first.date() != day || first.time() != time)
        return {};
    QList<QDateTime> moments{first.toUTC()};
    const QDateTime later = first.addSecs(dayLength);
    const QDateTime second = first.addSecs(first.offsetFromUtc() - later.offsetFromUtc());
    if (second > first && second.date() == day && second.time() == time)
        moments += second.toUTC();
    return moments;
}
