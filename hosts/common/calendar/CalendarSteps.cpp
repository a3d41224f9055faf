// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/CalendarSteps.h"

#include <algorithm>

using Frequency = RecurrenceRule::Frequency;

namespace
{
constexpr qint64 daysInWeek = 7;
constexpr qint64 monthsInYear = 12;

qint64 floored(qint64 value, qint64 unit)
{
    return value / unit - (value % unit < 0 ? 1 : 0);
}

qint64 dayOf(qint64 wallTime)
{
    return floored(wallTime, CalendarDay::seconds);
}

template<size_t Size>
void setIfNone(std::bitset<Size> &set, qint64 value)
{
    if (set.none())
        set.set(static_cast<size_t>(value));
}

/// The rule with what RFC 5545 has it take from the start.
RecurrenceRule completed(RecurrenceRule rule, qint64 start)
{
    const CalendarDay day = CalendarDay::of(dayOf(start));
    const qint64 second = start - day.number * CalendarDay::seconds;
    setIfNone(rule.hours, second / 3600);
    setIfNone(rule.minutes, second / 60 % 60);
    setIfNone(rule.seconds, second % 60);
    if (rule.hasWeekday() || rule.hasMonthDay() || rule.hasYearDay())
        return rule;
    if (rule.frequency == Frequency::Weekly || rule.hasWeek()) {
        rule.weekdays.set(static_cast<size_t>(day.weekday));
    } else if (rule.frequency >= Frequency::Monthly) {
        rule.monthDays.set(static_cast<size_t>(day.day));
        if (rule.frequency == Frequency::Yearly)
            setIfNone(rule.months, day.month);
    }
    return rule;
}
} // namespace

CalendarSteps::CalendarSteps(const RecurrenceRule &rule, qint64 start)
    : m_rule(completed(rule, start)),
      m_times(m_rule),
      m_start(start),
      m_firstPeriod(periodOf(dayOf(start))),
      m_lastPeriod(periodOf(CalendarDay::last)),
      m_anchor(m_firstPeriod)
{
    // The year in which the start lies, even where its week is one of another year.
    if (m_rule.frequency == Frequency::Yearly)
        m_anchor = CalendarDay::of(dayOf(start)).year;
}

qint64 CalendarSteps::periodOf(qint64 day) const
{
    constexpr qint64 mondayOfWeekNull = -3;
    switch (m_rule.frequency) {
    case Frequency::Weekly:
        return floored(day - mondayOfWeekNull - m_rule.weekStart, daysInWeek);
    case Frequency::Monthly: {
        const CalendarDay date = CalendarDay::of(day);
        return date.year * monthsInYear + date.month - 1;
    }
    case Frequency::Yearly: {
        const CalendarDay date = CalendarDay::of(day);
        return m_rule.hasWeek() ? date.weekYear(m_rule.weekStart) : date.year;
    }
    default:
        return day;
    }
}

CalendarSteps::Days CalendarSteps::daysOf(qint64 period) const
{
    constexpr qint64 mondayOfWeekNull = -3;
    switch (m_rule.frequency) {
    case Frequency::Weekly: {
        const qint64 first = period * daysInWeek + mondayOfWeekNull + m_rule.weekStart;
        return {first, first + daysInWeek - 1};
    }
    case Frequency::Monthly: {
        const auto year = static_cast<int>(period / monthsInYear);
        const auto month = static_cast<int>(period % monthsInYear) + 1;
        const qint64 first = CalendarDay::numberOf(year, month, 1);
        return {first, first + CalendarDay::of(first).daysInMonth - 1};
    }
    case Frequency::Yearly: {
        const auto year = static_cast<int>(period);
        if (m_rule.hasWeek())
            return {CalendarDay::firstWeekOf(year, m_rule.weekStart),
                    CalendarDay::firstWeekOf(year + 1, m_rule.weekStart) - 1};
        return {CalendarDay::numberOf(year, 1, 1), CalendarDay::numberOf(year + 1, 1, 1) - 1};
    }
    default:
        return {period, period};
    }
}

qint64 CalendarSteps::alignedFrom(qint64 period) const
{
    return m_anchor - floored(m_anchor - period, m_rule.interval) * m_rule.interval;
}

qint64 CalendarSteps::alignedUpTo(qint64 period) const
{
    return m_anchor + floored(period - m_anchor, m_rule.interval) * m_rule.interval;
}

/// The day itself where BYMONTH allows its month, otherwise the first day of the next month that it allows.
qint64 CalendarSteps::firstAllowedFrom(const CalendarDay &day) const
{
    if (m_rule.months.none() || m_rule.months[static_cast<size_t>(day.month)])
        return day.number;
    const int inYear = nextIn(m_rule.months, day.month);
    return inYear > 0 ? CalendarDay::numberOf(day.year, inYear, 1)
                      : CalendarDay::numberOf(day.year + 1, nextIn(m_rule.months, 1), 1);
}

/// The reverse: otherwise the last day of the month before it that BYMONTH allows.
qint64 CalendarSteps::lastAllowedUpTo(const CalendarDay &day) const
{
    if (m_rule.months.none() || m_rule.months[static_cast<size_t>(day.month)])
        return day.number;
    const int inYear = previousIn(m_rule.months, day.month);
    const int month = inYear > 0 ? inYear : previousIn(m_rule.months, static_cast<int>(monthsInYear));
    const int year = inYear > 0 ? day.year : day.year - 1;
    return CalendarDay::numberOf(year, month, 1) +
           CalendarDay::of(CalendarDay::numberOf(year, month, 1)).daysInMonth - 1;
}

/// Visits the days that the rule gives, from `from` on, until a visit says that it was enough. False when
/// that never came.
template<class Visit>
bool CalendarSteps::visitFrom(qint64 from, StepBudget &budget, Visit visit) const
{
    for (qint64 period = alignedFrom(periodOf(from)); period <= m_lastPeriod;) {
        const Days days = daysOf(period);
        CalendarDay day = CalendarDay::of(std::max(days.first, from));
        while (day.number <= std::min(days.last, CalendarDay::last)) {
            if (!budget.take())
                return false;
            if (const qint64 allowed = firstAllowedFrom(day); allowed != day.number) {
                day = CalendarDay::of(allowed);
                continue;
            }
            if (day.matches(m_rule) && visit(day.number))
                return true;
            day = day.next();
        }
        // Months that are not allowed may have led beyond the next period.
        period = alignedFrom(std::max(period + 1, periodOf(day.number)));
    }
    return false;
}

template<class Visit>
bool CalendarSteps::visitUpTo(qint64 upTo, StepBudget &budget, Visit visit) const
{
    const qint64 startDay = dayOf(m_start);
    for (qint64 period = alignedUpTo(periodOf(upTo)); period >= m_firstPeriod;) {
        const Days days = daysOf(period);
        qint64 number = std::min(days.last, upTo);
        while (number >= std::max(days.first, startDay)) {
            if (!budget.take())
                return false;
            const CalendarDay day = CalendarDay::of(number);
            if (const qint64 allowed = lastAllowedUpTo(day); allowed != number) {
                number = allowed;
                continue;
            }
            if (day.matches(m_rule) && visit(number))
                return true;
            --number;
        }
        if (number < startDay)
            return false;
        period = alignedUpTo(std::min(period - 1, periodOf(number)));
    }
    return false;
}

/// All wall times of a period that BYSETPOS picks, in order.
std::vector<qint64> CalendarSteps::picked(qint64 period, StepBudget &budget) const
{
    const Days days = daysOf(period);
    std::vector<qint64> matching;
    for (CalendarDay day = CalendarDay::of(days.first); day.number <= days.last; day = day.next()) {
        if (!budget.take())
            return {};
        if (day.matches(m_rule))
            matching.push_back(day.number);
    }
    const qint64 all = static_cast<qint64>(matching.size()) * m_times.count();
    std::vector<qint64> result;
    for (const int position : m_rule.positions) {
        const qint64 index = position > 0 ? position - 1 : all + position;
        if (!budget.take() || index < 0 || index >= all)
            continue;
        result.push_back(matching.at(static_cast<size_t>(index / m_times.count())) * CalendarDay::seconds +
                         m_times.at(index % m_times.count()));
    }
    std::sort(result.begin(), result.end());
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

/// Visits what BYSETPOS picks of each period, from the one of the day `from` on.
template<class Visit>
bool CalendarSteps::visitPickedFrom(qint64 from, StepBudget &budget, Visit visit) const
{
    for (qint64 period = alignedFrom(periodOf(from)); period <= m_lastPeriod; period += m_rule.interval) {
        const std::vector<qint64> wallTimes = picked(period, budget);
        if (budget.isSpent())
            return false;
        for (const qint64 wallTime : wallTimes) {
            if (wallTime >= m_start && dayOf(wallTime) <= CalendarDay::last && visit(wallTime))
                return true;
        }
    }
    return false;
}

template<class Visit>
bool CalendarSteps::visitPickedUpTo(qint64 upTo, StepBudget &budget, Visit visit) const
{
    for (qint64 period = alignedUpTo(periodOf(upTo)); period >= m_firstPeriod; period -= m_rule.interval) {
        const std::vector<qint64> wallTimes = picked(period, budget);
        if (budget.isSpent())
            return false;
        for (auto wallTime = wallTimes.rbegin(); wallTime != wallTimes.rend(); ++wallTime) {
            if (*wallTime >= m_start && visit(*wallTime))
                return true;
        }
    }
    return false;
}

std::optional<qint64> CalendarSteps::from(qint64 wallTime, StepBudget &budget) const
{
    const qint64 least = std::max(wallTime, m_start);
    const qint64 firstDay = dayOf(least);
    if (firstDay > CalendarDay::last)
        return {};
    std::optional<qint64> found;
    if (picks()) {
        visitPickedFrom(firstDay, budget, [&](qint64 picked) {
            found = picked >= least ? std::optional(picked) : std::nullopt;
            return found.has_value();
        });
        return found;
    }
    visitFrom(firstDay, budget, [&](qint64 day) {
        const qint64 midnight = day * CalendarDay::seconds;
        if (const auto time = m_times.from(day == firstDay ? least - midnight : 0))
            found = midnight + *time;
        return found.has_value();
    });
    return found;
}

std::optional<qint64> CalendarSteps::upTo(qint64 wallTime, StepBudget &budget) const
{
    const qint64 most = std::min(wallTime, (CalendarDay::last + 1) * CalendarDay::seconds - 1);
    if (most < m_start)
        return {};
    const qint64 lastDay = dayOf(most);
    std::optional<qint64> found;
    if (picks()) {
        visitPickedUpTo(lastDay, budget, [&](qint64 picked) {
            found = picked <= most ? std::optional(picked) : std::nullopt;
            return found.has_value();
        });
        return found;
    }
    visitUpTo(lastDay, budget, [&](qint64 day) {
        const qint64 midnight = day * CalendarDay::seconds;
        if (const auto time = m_times.upTo(day == lastDay ? most - midnight : CalendarDay::seconds - 1))
            found = midnight + *time;
        return found.has_value();
    });
    return found && *found >= m_start ? found : std::nullopt;
}

std::optional<qint64> CalendarSteps::nth(qint64 count, StepBudget &budget) const
{
    const qint64 firstDay = dayOf(m_start);
    std::optional<qint64> found;
    if (picks()) {
        visitPickedFrom(firstDay, budget, [&](qint64 picked) {
            found = picked;
            return --count == 0;
        });
        return count == 0 ? found : std::nullopt;
    }
    visitFrom(firstDay, budget, [&](qint64 day) {
        const qint64 midnight = day * CalendarDay::seconds;
        const qint64 cut = day == firstDay ? m_times.countBefore(m_start - midnight) : 0;
        if (count <= m_times.count() - cut)
            found = midnight + m_times.at(cut + count - 1);
        count -= m_times.count() - cut;
        return found.has_value();
    });
    return found;
}
