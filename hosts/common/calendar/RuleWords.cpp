// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/RuleWords.h"

#include "hosts/common/calendar/CalendarText.h"
#include "hosts/common/calendar/DateWords.h"
#include "hosts/common/calendar/RecurrenceRule.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace
{
using Frequency = RecurrenceRule::Frequency;

/// "a, b and c".
QString listed(const QStringList &items)
{
    QString text = items.value(0);
    for (qsizetype i = 1; i + 1 < items.size(); ++i)
        text = CalendarText::tr("%1, %2", "a list").arg(text, items.at(i));
    return items.size() < 2 ? text
                            : CalendarText::tr("%1 and %2", "the end of a list").arg(text, items.constLast());
}

/// English alone has it with an ending.
QString counted(qint64 number)
{
    if (CalendarText::locale().language() != QLocale::C)
        return QString::number(number);
    const qint64 tens = number % 100;
    const char *ending = tens >= 11 && tens <= 13 ? "th"
                         : number % 10 == 1       ? "st"
                         : number % 10 == 2       ? "nd"
                         : number % 10 == 3       ? "rd"
                                                  : "th";
    return QString("%1%2").arg(number).arg(ending);
}

/// Of 0, Monday.
QString weekdayName(int day)
{
    return CalendarText::locale().dayName(day + 1);
}

template<size_t size>
QList<int> numbersIn(const std::bitset<size> &set)
{
    QList<int> numbers;
    for (size_t i = 0; i < size; ++i) {
        if (set.test(i))
            numbers += static_cast<int>(i);
    }
    return numbers;
}

/// "every day" or "every 3 days".
QString every(qint64 interval, Frequency frequency)
{
    const int number = static_cast<int>(interval);
    const bool isEach = interval == 1;
    switch (frequency) {
    case Frequency::Yearly:
        return isEach ? CalendarText::tr("every year") : CalendarText::tr("every %n years", nullptr, number);
    case Frequency::Monthly:
        return isEach ? CalendarText::tr("every month")
                      : CalendarText::tr("every %n months", nullptr, number);
    case Frequency::Weekly:
        return isEach ? CalendarText::tr("every week") : CalendarText::tr("every %n weeks", nullptr, number);
    case Frequency::Daily:
        return isEach ? CalendarText::tr("every day") : CalendarText::tr("every %n days", nullptr, number);
    case Frequency::Hourly:
        return isEach ? CalendarText::tr("every hour") : CalendarText::tr("every %n hours", nullptr, number);
    case Frequency::Minutely:
        return isEach ? CalendarText::tr("every minute")
                      : CalendarText::tr("every %n minutes", nullptr, number);
    case Frequency::Secondly:
        return isEach ? CalendarText::tr("every second")
                      : CalendarText::tr("every %n seconds", nullptr, number);
    }
    return {};
}

/// The times of day; null when they are too many to tell.
QString times(const RecurrenceRule &rule, QTime start)
{
    constexpr qsizetype most = 6;
    const auto orStart = [](const QList<int> &numbers, int usual) {
        return numbers.isEmpty() ? QList<int>{usual} : numbers;
    };
    QStringList texts;
    for (const int hour : orStart(numbersIn(rule.hours), start.hour())) {
        for (const int minute : orStart(numbersIn(rule.minutes), start.minute())) {
            for (const int second : orStart(numbersIn(rule.seconds), start.second()))
                texts += DateWords::of(QTime(hour, minute, second));
        }
    }
    return texts.size() > most ? QString() : listed(texts);
}

QString weeklyDays(const RecurrenceRule &rule, const QDate &start)
{
    constexpr unsigned long weekdays = 0b11111;
    constexpr unsigned long allDays = 0b1111111;
    const unsigned long set = rule.weekdays.to_ulong();
    QStringList names;
    for (const int day : numbersIn(rule.weekdays))
        names += weekdayName(day);
    if (names.isEmpty())
        names += weekdayName(start.dayOfWeek() - 1);
    if (rule.interval == 1 && set == allDays)
        return CalendarText::tr("every day");
    if (rule.interval == 1)
        return set == weekdays ? CalendarText::tr("every weekday")
                               : CalendarText::tr("every %1", "days of the week").arg(listed(names));
    return CalendarText::tr("%1 on %2", "every 3 weeks, days of the week")
        .arg(every(rule.interval, Frequency::Weekly), listed(names));
}

/// "the 1st and the last day"; null for what there are no words for.
QString daysOfMonth(const RecurrenceRule &rule, const QDate &start)
{
    QStringList names;
    for (const int day : numbersIn(rule.monthDays))
        names += CalendarText::tr("the %1", "a day of the month; only in English with an ending")
                     .arg(counted(day));
    for (const int day : numbersIn(rule.monthDaysFromEnd)) {
        if (day != 1)
            return {};
        names += CalendarText::tr("the last day");
    }
    for (const auto &[ordinal, weekday] : rule.ordinalWeekdays) {
        const QStringList forms{CalendarText::tr("the last %1", "day of the week"),
                                QString(),
                                CalendarText::tr("the first %1", "day of the week"),
                                CalendarText::tr("the second %1", "day of the week"),
                                CalendarText::tr("the third %1", "day of the week"),
                                CalendarText::tr("the fourth %1", "day of the week")};
        if (ordinal < -1 || ordinal > 4)
            return {};
        names += forms.at(ordinal + 1).arg(weekdayName(weekday));
    }
    if (names.isEmpty())
        names += CalendarText::tr("the %1", "a day of the month; only in English with an ending")
                     .arg(counted(start.day()));
    return listed(names);
}

/// A day of the year, "14 March"; null for what there are no words for.
QString dayOfYear(const RecurrenceRule &rule, const QDate &start)
{
    const QList<int> months = numbersIn(rule.months);
    const QList<int> days = numbersIn(rule.monthDays);
    if (months.size() > 1 || days.size() > 1 || rule.monthDaysFromEnd.any() ||
        months.isEmpty() != days.isEmpty())
        return {};
    const int month = months.isEmpty() ? start.month() : months.constFirst();
    return CalendarText::tr("%1 %2", "a day of the year: its number, the month")
        .arg(days.isEmpty() ? start.day() : days.constFirst())
        .arg(CalendarText::locale().monthName(month));
}

/// When it takes place, without its end; null for what there are no words for.
QString days(const RecurrenceRule &rule, const QDate &start)
{
    const bool hasRareParts = rule.hasYearDay() || rule.hasWeek() || !rule.positions.empty();
    const bool hasMonthParts = rule.hasMonthDay() || !rule.ordinalWeekdays.empty();
    if (hasRareParts)
        return {};
    switch (rule.frequency) {
    case Frequency::Daily:
        if (hasMonthParts || rule.months.any() || (rule.weekdays.any() && rule.interval != 1))
            return {};
        return rule.weekdays.any() ? weeklyDays(rule, start) : every(rule.interval, rule.frequency);
    case Frequency::Weekly:
        return hasMonthParts || rule.months.any() ? QString() : weeklyDays(rule, start);
    case Frequency::Monthly: {
        const bool isMixed = rule.hasMonthDay() && !rule.ordinalWeekdays.empty();
        const QString which = daysOfMonth(rule, start);
        if (rule.weekdays.any() || rule.months.any() || isMixed || which.isNull())
            return {};
        return CalendarText::tr("%1 on %2", "every 3 months, days of the month")
            .arg(every(rule.interval, rule.frequency), which);
    }
    case Frequency::Yearly: {
        const QString which = dayOfYear(rule, start);
        if (rule.hasWeekday() || which.isNull())
            return {};
        return CalendarText::tr("%1 on %2", "every 3 years, a day of the year")
            .arg(every(rule.interval, rule.frequency), which);
    }
    default:
        return {};
    }
}

QString ruleWithoutEnd(const RecurrenceRule &rule, const WallTime &start)
{
    if (rule.frequency == Frequency::Hourly || rule.frequency == Frequency::Minutely ||
        rule.frequency == Frequency::Secondly)
        return rule.hasParts() || !rule.positions.empty() ? QString() : every(rule.interval, rule.frequency);
    const QString day = days(rule, start.day);
    const QString time = times(rule, start.time);
    return day.isNull() || time.isNull() ? QString()
                                         : CalendarText::tr("%1 at %2", "days, times").arg(day, time);
}

/// `text` with the end of the rule.
QString withEnd(const QString &text, const RecurrenceRule &rule)
{
    if (rule.count)
        return *rule.count == 1
                   ? CalendarText::tr("%1, once").arg(text)
                   : CalendarText::tr("%1, %n times", nullptr, static_cast<int>(*rule.count)).arg(text);
    if (!rule.until)
        return text;
    const QTime lastSecond(23, 59, 59);
    const QDateTime date = QDateTime::fromSecsSinceEpoch(rule.until->seconds, Qt::UTC);
    const bool isWallTime = rule.until->form == RecurrenceRule::UntilForm::WallTime;
    const QString day = DateWords::of(date.date());
    const QString ended = isWallTime && date.time() == lastSecond
                              ? CalendarText::tr("%1, until %2", "a day").arg(text, day)
                              : CalendarText::tr("%1, until %2 at %3", "a day and a time")
                                    .arg(text, day, DateWords::of(date.time()));
    return isWallTime ? ended : ended + " UTC";
}

/// The days of a list; empty where there are none.
QString daysOf(const QList<WallTime> &dates)
{
    constexpr qsizetype most = 3;
    QStringList days;
    for (const WallTime &date : dates) {
        if (const QString day = DateWords::of(date.day); !days.contains(day))
            days += day;
    }
    const qsizetype more = days.size() - most;
    if (more > 1)
        days = days.mid(0, most) +
               QStringList{CalendarText::tr("%n other days", nullptr, static_cast<int>(more))};
    return listed(days);
}
} // namespace

QString RuleWords::of(const Recurrence &recurrence)
{
    const auto rule = RecurrenceRule::parse(recurrence.rule);
    const QString inWords = rule ? ruleWithoutEnd(*rule, recurrence.localStart) : QString();
    QString text =
        inWords.isNull() ? CalendarText::tr("by the rule %1").arg(recurrence.rule) : withEnd(inWords, *rule);
    if (const QString more = daysOf(recurrence.extraDates); !more.isEmpty())
        text = CalendarText::tr("%1, and on %2", "days").arg(text, more);
    if (const QString less = daysOf(recurrence.excludedDates); !less.isEmpty())
        text = CalendarText::tr("%1, except on %2", "days").arg(text, less);
    return text;
}
