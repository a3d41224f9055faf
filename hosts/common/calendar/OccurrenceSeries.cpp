// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/OccurrenceSeries.h"

#include "hosts/common/calendar/RuleMoments.h"

#include <algorithm>

using namespace dozely;

using Moment = std::optional<qint64>; // seconds since 1970 in UTC

namespace
{
constexpr qint64 millisecond = 1000;
constexpr qint64 countedAtMost = 10'000;
constexpr int lastYear = 9999;

/// Written as if it were UTC.
qint64 secondsOf(const WallTime &wallTime)
{
    return QDateTime(wallTime.day, wallTime.time, Qt::UTC).toSecsSinceEpoch();
}

QDateTime dateOf(qint64 moment)
{
    return QDateTime::fromSecsSinceEpoch(moment, Qt::UTC);
}

std::optional<QDateTime> dateOf(Moment moment)
{
    return moment ? std::optional(dateOf(*moment)) : std::nullopt;
}

/// The last whole second that is not after the date.
qint64 wholeSecondUpTo(const QDateTime &date)
{
    const qint64 milliseconds = date.toMSecsSinceEpoch();
    return milliseconds / millisecond - (milliseconds % millisecond < 0 ? 1 : 0);
}

void sortOnce(std::vector<qint64> &list)
{
    std::sort(list.begin(), list.end());
    list.erase(std::unique(list.begin(), list.end()), list.end());
}
} // namespace

struct OccurrenceSeries::Content {
    std::unique_ptr<RuleMoments> rule;
    std::vector<qint64> extra; ///< Moments in order.

    Moment from(qint64 moment, StepBudget &budget) const
    {
        const Moment byRule = rule->from(moment, budget);
        const auto other = std::lower_bound(extra.begin(), extra.end(), moment);
        if (other == extra.end())
            return byRule;
        return byRule ? std::min(*byRule, *other) : *other;
    }

    Moment upTo(qint64 moment, StepBudget &budget) const
    {
        const Moment byRule = rule->upTo(moment, budget);
        const auto above = std::upper_bound(extra.begin(), extra.end(), moment);
        if (above == extra.begin())
            return byRule;
        return byRule ? std::max(*byRule, *std::prev(above)) : *std::prev(above);
    }
};

Result<OccurrenceSeries> OccurrenceSeries::of(const Recurrence &recurrence, const QTimeZone &zone)
{
    return of(recurrence, ZoneClock(zone));
}

Result<OccurrenceSeries> OccurrenceSeries::of(const Recurrence &recurrence, const ZoneClock &clock)
{
    const Result<RecurrenceRule> rule = RecurrenceRule::parse(recurrence.rule);
    if (!rule)
        return rule.error();
    if (!recurrence.localStart.isValid())
        return Error{"the rule has no start"};
    if (!clock.hasZone())
        return Error{"the time zone is not known"};
    std::vector<qint64> excluded;
    for (const WallTime &date : recurrence.excludedDates)
        excluded.push_back(secondsOf(date));
    sortOnce(excluded);

    auto content = std::make_shared<Content>();
    for (const WallTime &date : recurrence.extraDates) {
        const qint64 wallTime = secondsOf(date);
        const qint64 moment = clock.momentOf(wallTime * millisecond) / millisecond;
        const qint64 shown = clock.wallTimeAt(moment * millisecond) / millisecond;
        if (dateOf(moment).date().year() >= 1 && dateOf(moment).date().year() <= lastYear &&
            !std::binary_search(excluded.begin(), excluded.end(), wallTime) &&
            !std::binary_search(excluded.begin(), excluded.end(), shown))
            content->extra.push_back(moment);
    }
    sortOnce(content->extra);
    auto moments = RuleMoments::of(*rule, secondsOf(recurrence.localStart), clock, std::move(excluded));
    if (!moments)
        return moments.error();
    content->rule = std::move(*moments);
    return OccurrenceSeries(std::move(content));
}

std::optional<QDateTime> OccurrenceSeries::first() const
{
    StepBudget budget;
    return dateOf(m_content->from(std::numeric_limits<qint64>::min() / millisecond, budget));
}

std::optional<QDateTime> OccurrenceSeries::after(const QDateTime &date) const
{
    StepBudget budget;
    return dateOf(m_content->from(wholeSecondUpTo(date) + 1, budget));
}

std::optional<QDateTime> OccurrenceSeries::upTo(const QDateTime &date) const
{
    StepBudget budget;
    return dateOf(m_content->upTo(wholeSecondUpTo(date), budget));
}

OccurrenceSeries::Run OccurrenceSeries::between(const QDateTime &after, const QDateTime &upTo) const
{
    const qint64 end = wholeSecondUpTo(upTo);
    StepBudget forFirst, forLast;
    const Moment first = m_content->from(wholeSecondUpTo(after) + 1, forFirst);
    if (!first || *first > end)
        return {};
    const Moment found = m_content->upTo(end, forLast);
    const bool isLastKnown = found && !forLast.isSpent();
    // Where the search is given up, the last is what is found on the way to it.
    const qint64 last = isLastKnown ? *found : end;
    Run run{dateOf(*first), dateOf(isLastKnown ? last : *first), 1, isLastKnown};
    StepBudget budget;
    for (qint64 moment = *first; moment < last; ++run.count) {
        const Moment next = run.count < countedAtMost ? m_content->from(moment + 1, budget) : std::nullopt;
        if (!next || *next > last) {
            run.isCountExact = false;
            run.count += isLastKnown ? 1 : 0; // the last one itself
            break;
        }
        moment = *next;
        if (!isLastKnown)
            run.last = dateOf(moment);
    }
    return run;
}
