// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/CalendarDay.h"

#include <chrono>

using namespace std::chrono;

namespace
{
constexpr int daysInWeek = 7;

year_month_day dateOf(int year, int month, int day)
{
    return {std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
            std::chrono::day(static_cast<unsigned>(day))};
}

int weekdayOf(qint64 number)
{
    constexpr int weekdayOfDayNull = 3; // a Thursday
    return static_cast<int>(((number + weekdayOfDayNull) % daysInWeek + daysInWeek) % daysInWeek);
}

template<size_t Size>
bool has(const std::bitset<Size> &set, int number)
{
    return set[static_cast<size_t>(number)];
}
} // namespace

CalendarDay CalendarDay::of(qint64 number)
{
    const year_month_day date{sys_days(days(number))};
    const year_month_day_last monthEnd(date.year(), month_day_last(date.month()));
    CalendarDay result;
    result.number = number;
    result.year = static_cast<int>(date.year());
    result.month = static_cast<int>(static_cast<unsigned>(date.month()));
    result.day = static_cast<int>(static_cast<unsigned>(date.day()));
    result.weekday = weekdayOf(number);
    result.yearDay = static_cast<int>(number - numberOf(result.year, 1, 1)) + 1;
    result.daysInMonth = static_cast<int>(static_cast<unsigned>(monthEnd.day()));
    result.daysInYear = date.year().is_leap() ? 366 : 365;
    return result;
}

bool CalendarDay::exists(int year, int month, int day)
{
    return dateOf(year, month, day).ok();
}

qint64 CalendarDay::numberOf(int year, int month, int day)
{
    return sys_days(dateOf(year, month, day)).time_since_epoch().count();
}

qint64 CalendarDay::firstWeekOf(int year, int weekStart)
{
    // The week of the fourth of January has four days of the year or more.
    const qint64 fourth = numberOf(year, 1, 4);
    return fourth - (weekdayOf(fourth) - weekStart + daysInWeek) % daysInWeek;
}

int CalendarDay::weekYear(int weekStart) const
{
    if (number < firstWeekOf(year, weekStart))
        return year - 1;
    return number < firstWeekOf(year + 1, weekStart) ? year : year + 1;
}

CalendarDay CalendarDay::next() const
{
    if (day == daysInMonth)
        return of(number + 1);
    CalendarDay result = *this;
    ++result.number;
    ++result.day;
    ++result.yearDay;
    result.weekday = (weekday + 1) % daysInWeek;
    return result;
}

bool CalendarDay::matches(const RecurrenceRule &rule) const
{
    if (rule.months.any() && !has(rule.months, month))
        return false;
    if (rule.hasMonthDay() && !has(rule.monthDays, day) && !has(rule.monthDaysFromEnd, daysInMonth - day + 1))
        return false;
    if (rule.hasYearDay() && !has(rule.yearDays, yearDay) &&
        !has(rule.yearDaysFromEnd, daysInYear - yearDay + 1))
        return false;
    return (!rule.hasWeekday() || matchesWeekday(rule)) && (!rule.hasWeek() || matchesWeek(rule));
}

bool CalendarDay::matchesWeek(const RecurrenceRule &rule) const
{
    const int ofYear = weekYear(rule.weekStart);
    const qint64 firstWeek = firstWeekOf(ofYear, rule.weekStart);
    const qint64 weeks = (firstWeekOf(ofYear + 1, rule.weekStart) - firstWeek) / daysInWeek;
    const qint64 week = (number - firstWeek) / daysInWeek + 1;
    return has(rule.weeks, static_cast<int>(week)) ||
           has(rule.weeksFromEnd, static_cast<int>(weeks - week + 1));
}

bool CalendarDay::matchesWeekday(const RecurrenceRule &rule) const
{
    if (has(rule.weekdays, weekday))
        return true;
    // Ordinals count within the month where the rule is about months, otherwise within the year.
    const bool isInMonth = rule.frequency == RecurrenceRule::Frequency::Monthly || rule.months.any();
    const int place = isInMonth ? day : yearDay;
    const int length = isInMonth ? daysInMonth : daysInYear;
    for (const auto &[ordinal, ofWeek] : rule.ordinalWeekdays) {
        if (ofWeek == weekday &&
            ordinal == (ordinal > 0 ? (place - 1) / daysInWeek + 1 : -((length - place) / daysInWeek + 1)))
            return true;
    }
    return false;
}
