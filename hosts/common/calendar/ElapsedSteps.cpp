// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/ElapsedSteps.h"

#include "hosts/common/calendar/CalendarDay.h"
#include "hosts/common/calendar/DayTimes.h"

#include <algorithm>

using namespace dozely;

using Frequency = RecurrenceRule::Frequency;

namespace
{
constexpr qint64 minuteLength = 60; // seconds
constexpr qint64 hourLength = 60 * minuteLength;
constexpr qint64 millisecond = 1000;
constexpr qint64 lastMoment = (CalendarDay::last + 1) * CalendarDay::seconds - 1;

qint64 floored(qint64 value, qint64 unit)
{
    return value / unit - (value % unit < 0 ? 1 : 0);
}

qint64 remainder(qint64 value, qint64 unit)
{
    return value - floored(value, unit) * unit;
}

qint64 unitOf(Frequency frequency)
{
    return frequency == Frequency::Hourly ? hourLength : frequency == Frequency::Minutely ? minuteLength : 1;
}
} // namespace

ElapsedSteps::ElapsedSteps(const RecurrenceRule &rule, qint64 start, const ZoneClock &clock)
    : m_rule(rule),
      m_clock(&clock),
      m_unit(unitOf(rule.frequency)),
      m_start(start),
      m_origin(start),
      m_limitsDays(rule.months.any() || rule.hasMonthDay() || rule.hasYearDay() || rule.hasWeekday())
{
    const Shown shown = shownAt(start);
    m_origin -= shown.second % m_unit;
    m_startMinute = (start - m_origin) / minuteLength;
    m_startSecond = (start - m_origin) % minuteLength;
}

ElapsedSteps::Shown ElapsedSteps::shownAt(qint64 moment) const
{
    const ZoneClock::Stretch &stretch = m_clock->stretchAt(moment * millisecond);
    const qint64 offset = stretch.offset / millisecond;
    const qint64 wallTime = moment + offset;
    const qint64 day = floored(wallTime, CalendarDay::seconds);
    return {moment,
            offset,
            floored(stretch.begin, millisecond),
            stretch.end / millisecond,
            day,
            wallTime - day * CalendarDay::seconds};
}

qint64 ElapsedSteps::periodOf(qint64 moment) const
{
    return floored(moment - m_origin, m_unit);
}

/// What is shown matches: nothing. Otherwise the next moment at which it might, always later.
std::optional<qint64> ElapsedSteps::nextCandidate(const Shown &shown) const
{
    const qint64 period = periodOf(shown.moment);
    if (const qint64 over = remainder(period, m_rule.interval); over != 0)
        return m_origin + (period - over + m_rule.interval) * m_unit;
    // Up to the next change of the clocks they show what they would without one.
    const auto atWallTime = [&](qint64 day, qint64 second) {
        return std::min(day * CalendarDay::seconds + second - shown.offset, shown.end);
    };
    if (m_limitsDays) {
        const CalendarDay day = CalendarDay::of(shown.day);
        if (!day.matches(m_rule)) {
            const bool isMonthWrong = m_rule.months.any() && !m_rule.months[static_cast<size_t>(day.month)];
            return atWallTime(shown.day + (isMonthWrong ? day.daysInMonth - day.day + 1 : 1), 0);
        }
    }
    const int hour = static_cast<int>(shown.second / hourLength);
    if (m_rule.hours.any() && !m_rule.hours[static_cast<size_t>(hour)]) {
        const int next = nextIn(m_rule.hours, hour);
        return next < 0 ? atWallTime(shown.day + 1, 0) : atWallTime(shown.day, next * hourLength);
    }
    const int minute = static_cast<int>(shown.second / minuteLength % 60);
    const qint64 sincePeriod = shown.moment - m_origin - period * m_unit;
    if (m_rule.minutes.any()) {
        if (!m_rule.minutes[static_cast<size_t>(minute)]) {
            const int next = nextIn(m_rule.minutes, minute);
            return atWallTime(shown.day,
                              next < 0 ? (hour + 1) * hourLength : hour * hourLength + next * minuteLength);
        }
    } else if (m_unit == hourLength && sincePeriod / minuteLength != m_startMinute) {
        const qint64 begin = shown.moment - sincePeriod;
        return sincePeriod / minuteLength < m_startMinute ? begin + m_startMinute * minuteLength
                                                          : begin + m_unit;
    }
    const int second = static_cast<int>(shown.second % minuteLength);
    if (m_rule.seconds.any()) {
        if (!m_rule.seconds[static_cast<size_t>(second)]) {
            const int next = nextIn(m_rule.seconds, second);
            return atWallTime(shown.day, shown.second - second + (next < 0 ? minuteLength : next));
        }
    } else if (const qint64 since = sincePeriod % minuteLength; m_unit > 1 && since != m_startSecond) {
        return shown.moment - since + (since < m_startSecond ? m_startSecond : minuteLength);
    }
    return {};
}

/// The mirror image: the last moment before it at which it might match.
std::optional<qint64> ElapsedSteps::previousCandidate(const Shown &shown) const
{
    const qint64 period = periodOf(shown.moment);
    if (const qint64 over = remainder(period, m_rule.interval); over != 0)
        return m_origin + (period - over + 1) * m_unit - 1;
    const auto beforeWallTime = [&](qint64 day, qint64 second) {
        return std::max(day * CalendarDay::seconds + second - shown.offset, shown.begin) - 1;
    };
    if (m_limitsDays) {
        const CalendarDay day = CalendarDay::of(shown.day);
        if (!day.matches(m_rule)) {
            const bool isMonthWrong = m_rule.months.any() && !m_rule.months[static_cast<size_t>(day.month)];
            return beforeWallTime(shown.day - (isMonthWrong ? day.day - 1 : 0), 0);
        }
    }
    const int hour = static_cast<int>(shown.second / hourLength);
    if (m_rule.hours.any() && !m_rule.hours[static_cast<size_t>(hour)])
        return beforeWallTime(shown.day, (previousIn(m_rule.hours, hour) + 1) * hourLength);
    const int minute = static_cast<int>(shown.second / minuteLength % 60);
    const qint64 sincePeriod = shown.moment - m_origin - period * m_unit;
    if (m_rule.minutes.any()) {
        if (!m_rule.minutes[static_cast<size_t>(minute)])
            return beforeWallTime(shown.day, hour * hourLength +
                                                 (previousIn(m_rule.minutes, minute) + 1) * minuteLength);
    } else if (m_unit == hourLength && sincePeriod / minuteLength != m_startMinute) {
        const qint64 begin = shown.moment - sincePeriod;
        return (sincePeriod / minuteLength > m_startMinute ? begin + (m_startMinute + 1) * minuteLength
                                                           : begin) -
               1;
    }
    const int second = static_cast<int>(shown.second % minuteLength);
    if (m_rule.seconds.any()) {
        if (!m_rule.seconds[static_cast<size_t>(second)])
            return beforeWallTime(shown.day, shown.second - second + previousIn(m_rule.seconds, second) + 1);
    } else if (const qint64 since = sincePeriod % minuteLength; m_unit > 1 && since != m_startSecond) {
        return shown.moment - since + (since > m_startSecond ? m_startSecond : -1);
    }
    return {};
}

/// The first moment that the rule's BY parts let pass, BYSETPOS not considered, even one before the start.
std::optional<qint64> ElapsedSteps::matchFrom(qint64 moment, StepBudget &budget) const
{
    Shown shown = shownAt(moment);
    while (moment <= lastMoment && budget.take()) {
        const std::optional<qint64> next = nextCandidate(shown);
        if (!next)
            return moment;
        moment = *next;
        if (moment >= shown.end)
            budget.take(StepBudget::ofAStretch);
        shown = shownAt(moment);
    }
    return {};
}

std::optional<qint64> ElapsedSteps::matchUpTo(qint64 moment, StepBudget &budget) const
{
    Shown shown = shownAt(moment);
    while (moment >= m_origin && budget.take()) {
        const std::optional<qint64> previous = previousCandidate(shown);
        if (!previous)
            return moment;
        moment = *previous;
        if (moment < shown.begin)
            budget.take(StepBudget::ofAStretch);
        shown = shownAt(moment);
    }
    return {};
}

/// All moments of a period that BYSETPOS picks, in order.
std::vector<qint64> ElapsedSteps::picked(qint64 period, StepBudget &budget) const
{
    const qint64 begin = m_origin + period * m_unit;
    std::vector<qint64> all;
    for (auto moment = matchFrom(begin, budget); moment && *moment < begin + m_unit;
         moment = matchFrom(*moment + 1, budget))
        all.push_back(*moment);
    const auto size = static_cast<qint64>(all.size());
    std::vector<qint64> result;
    for (const int position : m_rule.positions) {
        const qint64 index = position > 0 ? position - 1 : size + position;
        if (budget.take() && index >= 0 && index < size)
            result.push_back(all.at(static_cast<size_t>(index)));
    }
    std::sort(result.begin(), result.end());
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

std::optional<qint64> ElapsedSteps::from(qint64 moment, StepBudget &budget) const
{
    const qint64 least = std::max(moment, m_start);
    if (m_rule.positions.empty())
        return matchFrom(least, budget);
    qint64 from = m_origin + periodOf(least) * m_unit;
    while (const auto match = matchFrom(from, budget)) {
        const qint64 period = periodOf(*match);
        const std::vector<qint64> moments = picked(period, budget);
        const auto found = std::lower_bound(moments.begin(), moments.end(), least);
        if (found != moments.end() && !budget.isSpent())
            return *found;
        from = m_origin + (period + 1) * m_unit;
    }
    return {};
}

std::optional<qint64> ElapsedSteps::upTo(qint64 moment, StepBudget &budget) const
{
    const qint64 most = std::min(moment, lastMoment);
    std::optional<qint64> found;
    if (m_rule.positions.empty()) {
        found = matchUpTo(most, budget);
    } else {
        qint64 upTo = m_origin + (periodOf(most) + 1) * m_unit - 1;
        while (const auto match = matchUpTo(upTo, budget)) {
            const qint64 period = periodOf(*match);
            const std::vector<qint64> moments = picked(period, budget);
            const auto above = std::upper_bound(moments.begin(), moments.end(), most);
            if (above != moments.begin()) {
                found = *std::prev(above);
                break;
            }
            upTo = m_origin + period * m_unit - 1;
        }
    }
    return found && *found >= m_start && !budget.isSpent() ? found : std::nullopt;
}

std::optional<qint64> ElapsedSteps::nth(qint64 count, StepBudget &budget) const
{
    if (!m_rule.hasParts()) {
        const qint64 moment = m_start + (count - 1) * m_rule.interval * m_unit;
        return moment <= lastMoment ? std::optional(moment) : std::nullopt;
    }
    std::optional<qint64> found = from(m_start, budget);
    while (found && --count > 0)
        found = from(*found + 1, budget);
    return found;
}
