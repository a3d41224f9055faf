// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/RuleMoments.h"

#include "hosts/common/calendar/RuleFault.h"

#include <algorithm>
#include <limits>

using namespace dozely;

namespace
{
constexpr qint64 millisecond = 1000;
constexpr qint64 longestWait = 36525 * CalendarDay::seconds; // 100 years
constexpr qint64 firstOfAll = CalendarDay::first * CalendarDay::seconds;
constexpr qint64 lastOfAll = (CalendarDay::last + 1) * CalendarDay::seconds - 1;
} // namespace

/// ZoneClock::Stretch in seconds.
struct RuleMoments::Stretch {
    qint64 begin, end, offset, offsetBefore;
    bool isFirst;

    qint64 gap() const { return std::max<qint64>(0, offset - offsetBefore); }
    qint64 firstSkipped() const { return begin + offsetBefore; } ///< As are the gap's seconds from it on.
    qint64 firstShown() const                                    ///< And not shown before.
    {
        return isFirst ? begin : begin + std::max(offset, offsetBefore);
    }
};

RuleMoments::Stretch RuleMoments::stretchAt(qint64 moment) const
{
    const ZoneClock::Stretch &stretch = m_clock.stretchAt(moment * millisecond);
    return {stretch.begin / millisecond, stretch.end / millisecond, stretch.offset / millisecond,
            stretch.offsetBefore / millisecond, stretch.begin == ZoneClock::noBegin};
}

Result<std::unique_ptr<RuleMoments>> RuleMoments::of(const RecurrenceRule &rule, qint64 localStart,
                                                     const ZoneClock &clock, std::vector<qint64> excluded)
{
    std::unique_ptr<RuleMoments> moments(new RuleMoments(clock));
    const qint64 start = moments->m_clock.momentOf(localStart * millisecond) / millisecond;
    if (rule.frequency >= RecurrenceRule::Frequency::Daily)
        moments->m_calendar.emplace(rule, localStart);
    else
        moments->m_elapsed.emplace(rule, start, moments->m_clock);
    if (const std::optional<Error> fault = moments->limitTo(rule))
        return *fault;
    StepBudget budget;
    const std::optional<qint64> first = moments->from(firstOfAll, budget);
    if (!first || *first - start > longestWait)
        return Error{"the rule gives no date within 100 years from its start", RuleFault::noDate};
    moments->m_excluded = std::move(excluded);
    return moments;
}

/// Looks for where COUNT and UNTIL end the rule.
std::optional<Error> RuleMoments::limitTo(const RecurrenceRule &rule)
{
    m_lastWallTime = lastOfAll;
    m_firstMoment = firstOfAll;
    m_lastMoment = lastOfAll;
    if (rule.until && rule.until->form == RecurrenceRule::UntilForm::Moment)
        m_lastMoment = std::min(rule.until->seconds, lastOfAll);
    else if (rule.until && m_calendar)
        m_lastWallTime = rule.until->seconds;
    else if (rule.until)
        m_lastMoment = m_clock.momentOf(rule.until->seconds * millisecond) / millisecond;
    if (!rule.count)
        return {};
    StepBudget budget;
    const std::optional<qint64> last =
        m_calendar ? m_calendar->nth(*rule.count, budget) : m_elapsed->nth(*rule.count, budget);
    if (last)
        (m_calendar ? m_lastWallTime : m_lastMoment) = *last;
    if (budget.isSpent())
        return Error{"the rule's COUNT is too large to be counted", RuleFault::tooLargeCount};
    return {};
}

bool RuleMoments::isExcluded(qint64 wallTime) const
{
    return std::binary_search(m_excluded.begin(), m_excluded.end(), wallTime);
}

/// The rule's earliest wall time not before one. Clocks show it `shownLater` seconds later, which may be
/// excluded, too.
std::optional<qint64> RuleMoments::wallTimeFrom(qint64 wallTime, qint64 shownLater, StepBudget &budget) const
{
    std::optional<qint64> found = m_calendar->from(wallTime, budget);
    while (found && (isExcluded(*found) || isExcluded(*found + shownLater)))
        found = m_calendar->from(*found + 1, budget);
    return found && *found <= m_lastWallTime ? found : std::nullopt;
}

std::optional<qint64> RuleMoments::wallTimeUpTo(qint64 wallTime, qint64 shownLater, StepBudget &budget) const
{
    std::optional<qint64> found = m_calendar->upTo(std::min(wallTime, m_lastWallTime), budget);
    while (found && (isExcluded(*found) || isExcluded(*found + shownLater)))
        found = m_calendar->upTo(*found - 1, budget);
    return found;
}

std::optional<qint64> RuleMoments::calendarFrom(qint64 moment, StepBudget &budget) const
{
    while (budget.take(StepBudget::ofAStretch)) {
        const Stretch stretch = stretchAt(moment);
        std::optional<qint64> earliest;
        if (stretch.gap() > 0) {
            const qint64 least = std::max(stretch.firstSkipped(), moment + stretch.offsetBefore);
            const auto skipped = wallTimeFrom(least, stretch.gap(), budget);
            if (skipped && *skipped < stretch.firstShown())
                earliest = *skipped - stretch.offsetBefore;
        }
        const auto shown = wallTimeFrom(std::max(stretch.firstShown(), moment + stretch.offset), 0, budget);
        if (shown && *shown - stretch.offset < stretch.end &&
            (!earliest || *shown - stretch.offset < *earliest))
            earliest = *shown - stretch.offset;
        if (earliest || !shown)
            return earliest;
        // It lies in another stretch, and nothing before that one has any.
        moment = std::max(stretch.end, stretchAt(m_clock.momentOf(*shown * millisecond) / millisecond).begin);
    }
    return {};
}

std::optional<qint64> RuleMoments::calendarUpTo(qint64 moment, StepBudget &budget) const
{
    while (budget.take(StepBudget::ofAStretch)) {
        const Stretch stretch = stretchAt(moment);
        std::optional<qint64> latest;
        if (stretch.gap() > 0) {
            const qint64 most = std::min(stretch.firstShown() - 1, moment + stretch.offsetBefore);
            const auto skipped = wallTimeUpTo(most, stretch.gap(), budget);
            if (skipped && *skipped >= stretch.firstSkipped())
                latest = *skipped - stretch.offsetBefore;
        }
        const auto shown = wallTimeUpTo(moment + stretch.offset, 0, budget);
        if (shown && *shown >= stretch.firstShown() && (!latest || *shown - stretch.offset > *latest))
            latest = *shown - stretch.offset;
        if (latest || stretch.isFirst)
            return latest;
        const auto before = wallTimeUpTo(stretch.firstSkipped() - 1, 0, budget);
        if (!before)
            return {};
        moment =
            std::min(stretch.begin, stretchAt(m_clock.momentOf(*before * millisecond) / millisecond).end) - 1;
    }
    return {};
}

std::optional<qint64> RuleMoments::elapsedFrom(qint64 moment, StepBudget &budget) const
{
    std::optional<qint64> found = m_elapsed->from(moment, budget);
    while (found && isExcluded(*found + stretchAt(*found).offset))
        found = m_elapsed->from(*found + 1, budget);
    return found;
}

std::optional<qint64> RuleMoments::elapsedUpTo(qint64 moment, StepBudget &budget) const
{
    std::optional<qint64> found = m_elapsed->upTo(moment, budget);
    while (found && isExcluded(*found + stretchAt(*found).offset))
        found = m_elapsed->upTo(*found - 1, budget);
    return found;
}

std::optional<qint64> RuleMoments::from(qint64 moment, StepBudget &budget) const
{
    const qint64 least = std::max(moment, m_firstMoment);
    if (least > m_lastMoment)
        return {};
    const auto found = m_calendar ? calendarFrom(least, budget) : elapsedFrom(least, budget);
    return found && *found <= m_lastMoment ? found : std::nullopt;
}

std::optional<qint64> RuleMoments::upTo(qint64 moment, StepBudget &budget) const
{
    const qint64 most = std::min(moment, m_lastMoment);
    if (most < m_firstMoment)
        return {};
    const auto found = m_calendar ? calendarUpTo(most, budget) : elapsedUpTo(most, budget);
    return found && *found >= m_firstMoment ? found : std::nullopt;
}
