// SPDX-License-Identifier: MIT
#include "hosts/application/when/TimingRules.h"

#include <array>

using Frequency = RecurrenceRule::Frequency;
using Kind = Timing::Kind;
using Pattern = Timing::Pattern;

namespace
{
constexpr std::array<const char *, 7> weekdayNames{"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
constexpr unsigned long mondayToFriday = 0b11111;
const QTime lastSecond(23, 59, 59);

template<size_t Size>
QList<int> numbersIn(const std::bitset<Size> &set)
{
    QList<int> numbers;
    for (size_t i = 0; i < Size; ++i) {
        if (set[i])
            numbers += static_cast<int>(i);
    }
    return numbers;
}

/// A pattern of weeks.
Pattern weekly(const RecurrenceRule &rule, const QDate &start)
{
    Pattern pattern{.kind = Kind::Weekly, .interval = static_cast<int>(rule.interval)};
    pattern.weekdays = rule.weekdays;
    if (pattern.weekdays.none())
        pattern.weekdays.set(static_cast<size_t>(start.dayOfWeek() - 1));
    if (rule.interval == 1 && pattern.weekdays.to_ulong() == mondayToFriday)
        return {.kind = Kind::Weekdays};
    if (rule.interval > 1)
        pattern.weekStart = rule.weekStart;
    return pattern;
}

std::optional<Pattern> daily(const RecurrenceRule &rule, const QDate &start)
{
    if (rule.hasMonthDay() || rule.months.any())
        return {};
    if (rule.weekdays.none())
        return Pattern{.kind = Kind::Daily, .interval = static_cast<int>(rule.interval)};
    // Some days of every week; of every second day there is no such word.
    return rule.interval == 1 ? std::optional(weekly(rule, start)) : std::nullopt;
}

std::optional<Pattern> monthly(const RecurrenceRule &rule, const QDate &start)
{
    Pattern pattern{.kind = Kind::Monthly, .interval = static_cast<int>(rule.interval)};
    if (rule.weekdays.any() || rule.months.any())
        return {};
    if (!rule.ordinalWeekdays.empty()) {
        const auto [ordinal, weekday] = rule.ordinalWeekdays.front();
        if (rule.ordinalWeekdays.size() > 1 || rule.hasMonthDay() || ordinal < -1 || ordinal > 4)
            return {};
        pattern.ordinal = ordinal;
        pattern.weekday = weekday;
        return pattern;
    }
    pattern.monthDays = rule.monthDays;
    for (const int fromEnd : numbersIn(rule.monthDaysFromEnd)) {
        if (fromEnd != 1)
            return {};
        pattern.monthDays.set(0);
    }
    if (pattern.monthDays.none())
        pattern.monthDays.set(static_cast<size_t>(start.day()));
    return pattern;
}

std::optional<Pattern> yearly(const RecurrenceRule &rule, const QDate &start)
{
    const QList<int> months = numbersIn(rule.months);
    const QList<int> days = numbersIn(rule.monthDays);
    if (rule.hasWeekday() || months.size() > 1 || days.size() > 1 || rule.monthDaysFromEnd.any() ||
        months.isEmpty() != days.isEmpty())
        return {};
    return Pattern{.kind = Kind::Yearly,
                   .interval = static_cast<int>(rule.interval),
                   .month = months.isEmpty() ? start.month() : months.constFirst(),
                   .day = days.isEmpty() ? start.day() : days.constFirst()};
}

QString joined(const std::bitset<7> &weekdays)
{
    QStringList names;
    for (const int day : numbersIn(weekdays))
        names += weekdayNames.at(static_cast<size_t>(day));
    return names.join(',');
}

QString joined(const std::bitset<32> &monthDays)
{
    QStringList days;
    for (const int day : numbersIn(monthDays)) {
        if (day > 0)
            days += QString::number(day);
    }
    if (monthDays[0])
        days += "-1";
    return days.join(',');
}

QString frequencyOf(const Pattern &pattern)
{
    switch (pattern.kind) {
    case Kind::Daily:
        return "DAILY";
    case Kind::Monthly:
        return "MONTHLY";
    case Kind::Yearly:
        return "YEARLY";
    case Kind::Distance:
        return pattern.isHours ? "HOURLY" : "MINUTELY";
    default:
        return "WEEKLY";
    }
}

/// The parts that say on which days, as far as the pattern needs them.
void writeDays(const Pattern &pattern, RuleParts &parts)
{
    if (pattern.kind == Kind::Weekdays) {
        parts.set("BYDAY", joined(std::bitset<7>(mondayToFriday)));
    } else if (pattern.kind == Kind::Weekly) {
        parts.set("BYDAY", joined(pattern.weekdays));
    } else if (pattern.kind == Kind::Monthly && pattern.ordinal != 0) {
        const char *const name = weekdayNames.at(static_cast<size_t>(pattern.weekday));
        parts.set("BYDAY", QString("%1%2").arg(pattern.ordinal).arg(name));
    } else if (pattern.kind == Kind::Monthly) {
        parts.set("BYMONTHDAY", joined(pattern.monthDays));
    } else if (pattern.kind == Kind::Yearly) {
        parts.set("BYMONTH", QString::number(pattern.month));
        parts.set("BYMONTHDAY", QString::number(pattern.day));
    }
}
} // namespace

std::optional<Pattern> TimingRules::patternOf(const RecurrenceRule &rule, const QDate &start)
{
    if (rule.hasYearDay() || rule.hasWeek() || !rule.positions.empty() ||
        rule.interval > Timing::mostInterval)
        return {};
    switch (rule.frequency) {
    case Frequency::Daily:
        return daily(rule, start);
    case Frequency::Weekly:
        return rule.months.any() ? std::nullopt : std::optional(weekly(rule, start));
    case Frequency::Monthly:
        return monthly(rule, start);
    case Frequency::Yearly:
        return yearly(rule, start);
    case Frequency::Hourly:
    case Frequency::Minutely:
        if (rule.hasParts())
            return {};
        return Pattern{.kind = Kind::Distance,
                       .interval = static_cast<int>(rule.interval),
                       .isHours = rule.frequency == Frequency::Hourly};
    default:
        return {};
    }
}

std::optional<QList<QTime>> TimingRules::timesOf(const RecurrenceRule &rule, const QTime &start)
{
    const auto orStart = [](const QList<int> &numbers, int usual) {
        return numbers.isEmpty() ? QList<int>{usual} : numbers;
    };
    const QList<int> hours = orStart(numbersIn(rule.hours), start.hour());
    const QList<int> minutes = orStart(numbersIn(rule.minutes), start.minute());
    const QList<int> seconds = orStart(numbersIn(rule.seconds), start.second());
    if (hours.size() * minutes.size() * seconds.size() > Timing::mostTimes)
        return {};
    QList<QTime> times;
    for (const int hour : hours) {
        for (const int minute : minutes) {
            for (const int second : seconds)
                times += QTime(hour, minute, second);
        }
    }
    return times;
}

std::optional<Timing::Ending> TimingRules::endingOf(const RecurrenceRule &rule)
{
    if (rule.count) {
        if (*rule.count > Timing::mostCount)
            return {};
        return Timing::Ending{Timing::End::AfterTimes, {}, static_cast<int>(*rule.count)};
    }
    if (!rule.until)
        return Timing::Ending();
    const QDateTime until = QDateTime::fromSecsSinceEpoch(rule.until->seconds, Qt::UTC);
    if (rule.until->form != RecurrenceRule::UntilForm::WallTime || until.time() != lastSecond)
        return {};
    if (until.date().year() < Timing::firstYear)
        return {};
    return Timing::Ending{Timing::End::OnDay, until.date(), 0};
}

void TimingRules::write(const Pattern &pattern, RuleParts &parts)
{
    const QString frequency = frequencyOf(pattern);
    const bool isSameFrequency = parts.value("FREQ").compare(frequency, Qt::CaseInsensitive) == 0;
    if (!isSameFrequency) {
        parts = RuleParts(); // what it had beside would mean something else
        parts.set("FREQ", frequency);
    }
    RuleParts wanted;
    if (pattern.interval > 1)
        wanted.set("INTERVAL", QString::number(pattern.interval));
    writeDays(pattern, wanted);
    if (pattern.weekStart != 0)
        wanted.set("WKST", weekdayNames.at(static_cast<size_t>(pattern.weekStart)));
    else if (isSameFrequency && pattern.interval == 1 && parts.has("WKST")) // which means nothing then
        wanted.set("WKST", parts.value("WKST"));
    for (const char *part : {"INTERVAL", "BYDAY", "BYMONTH", "BYMONTHDAY", "WKST"}) {
        if (wanted.has(part))
            parts.set(part, wanted.value(part));
        else
            parts.remove(part);
    }
}

void TimingRules::write(const Timing::Ending &ending, RuleParts &parts)
{
    parts.remove("COUNT");
    parts.remove("UNTIL");
    if (ending.end == Timing::End::AfterTimes)
        parts.set("COUNT", QString::number(ending.count));
    if (ending.end == Timing::End::OnDay)
        parts.set("UNTIL", ending.until.toString("yyyyMMdd") + "T235959");
}
