// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/RuleWords.h"

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
    if (items.size() < 2)
        return items.join("");
    return QStringList(items.mid(0, items.size() - 1)).join(", ") + " and " + items.constLast();
}

QString counted(qint64 number)
{
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
    return QLocale::c().dayName(day + 1);
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
QString every(qint64 interval, const QString &unit)
{
    return interval == 1 ? "every " + unit : QString("every %1 %2s").arg(interval).arg(unit);
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
    return texts.size() > most ? QString() : " at " + listed(texts);
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
        return "every day";
    if (rule.interval == 1)
        return "every " + (set == weekdays ? QString("weekday") : listed(names));
    return every(rule.interval, "week") + " on " + listed(names);
}

/// "the 1st and the last day"; null for what there are no words for.
QString daysOfMonth(const RecurrenceRule &rule, const QDate &start)
{
    QStringList names;
    for (const int day : numbersIn(rule.monthDays))
        names += "the " + counted(day);
    for (const int day : numbersIn(rule.monthDaysFromEnd)) {
        if (day != 1)
            return {};
        names += "the last day";
    }
    for (const auto &[ordinal, weekday] : rule.ordinalWeekdays) {
        static const QStringList words{"last", "", "first", "second", "third", "fourth"};
        if (ordinal < -1 || ordinal > 4)
            return {};
        names += QString("the %1 %2").arg(words.at(ordinal + 1), weekdayName(weekday));
    }
    if (names.isEmpty())
        names += "the " + counted(start.day());
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
    return QString("%1 %2")
        .arg(days.isEmpty() ? start.day() : days.constFirst())
        .arg(QLocale::c().monthName(month));
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
        return rule.weekdays.any() ? weeklyDays(rule, start) : every(rule.interval, "day");
    case Frequency::Weekly:
        return hasMonthParts || rule.months.any() ? QString() : weeklyDays(rule, start);
    case Frequency::Monthly: {
        const bool isMixed = rule.hasMonthDay() && !rule.ordinalWeekdays.empty();
        const QString which = daysOfMonth(rule, start);
        if (rule.weekdays.any() || rule.months.any() || isMixed || which.isNull())
            return {};
        return every(rule.interval, "month") + " on " + which;
    }
    case Frequency::Yearly: {
        const QString which = dayOfYear(rule, start);
        if (rule.hasWeekday() || which.isNull())
            return {};
        return every(rule.interval, "year") + " on " + which;
    }
    default:
        return {};
    }
}

QString ruleWithoutEnd(const RecurrenceRule &rule, const WallTime &start)
{
    const QString unit = rule.frequency == Frequency::Hourly     ? "hour"
                         : rule.frequency == Frequency::Minutely ? "minute"
                         : rule.frequency == Frequency::Secondly ? "second"
                                                                 : "";
    if (!unit.isEmpty())
        return rule.hasParts() || !rule.positions.empty() ? QString() : every(rule.interval, unit);
    const QString day = days(rule, start.day);
    const QString time = times(rule, start.time);
    return day.isNull() || time.isNull() ? QString() : day + time;
}

QString end(const RecurrenceRule &rule)
{
    if (rule.count)
        return *rule.count == 1 ? QString(", once") : QString(", %1 times").arg(*rule.count);
    if (!rule.until)
        return {};
    const QTime lastSecond(23, 59, 59);
    const QDateTime date = QDateTime::fromSecsSinceEpoch(rule.until->seconds, Qt::UTC);
    const bool isWallTime = rule.until->form == RecurrenceRule::UntilForm::WallTime;
    QString text = ", until " + DateWords::of(date.date());
    if (!isWallTime || date.time() != lastSecond)
        text += " at " + DateWords::of(date.time());
    return isWallTime ? text : text + " UTC";
}

/// The days of a list; times where they are not those of the rule.
QString dates(const char *introduction, const QList<WallTime> &dates)
{
    constexpr qsizetype most = 3;
    QStringList days;
    for (const WallTime &date : dates) {
        if (const QString day = DateWords::of(date.day); !days.contains(day))
            days += day;
    }
    if (days.isEmpty())
        return {};
    const qsizetype more = days.size() - most;
    if (more > 1)
        days = days.mid(0, most) + QStringList{QString("%1 other days").arg(more)};
    return introduction + listed(days);
}
} // namespace

QString RuleWords::of(const Recurrence &recurrence)
{
    const auto rule = RecurrenceRule::parse(recurrence.rule);
    const QString inWords = rule ? ruleWithoutEnd(*rule, recurrence.localStart) : QString();
    const QString text = inWords.isNull() ? "by the rule " + recurrence.rule : inWords + end(*rule);
    return text + dates(", and on ", recurrence.extraDates) + dates(", except on ", recurrence.excludedDates);
}
