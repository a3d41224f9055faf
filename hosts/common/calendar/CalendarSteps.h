// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/CalendarDay.h"
#include "hosts/common/calendar/DayTimes.h"
#include "hosts/common/calendar/RecurrenceRule.h"
#include "hosts/common/calendar/StepBudget.h"

#include <optional>
#include <vector>

/// The wall times that a rule with a frequency of a day or longer gives, by the table of expansions of RFC
/// 5545. Wall times are seconds since 1970, written as if they were UTC. COUNT and UNTIL are not its
/// business.
///
/// A rule goes from period to period: days, weeks, months or years, every INTERVAL-th from that of the start.
/// In each it gives the days that all its BY parts let pass, and on each of them its times of day, or of all
/// these together those at the places that BYSETPOS names. The period of the start is taken whole before what
/// lies before the start is cut off. With BYWEEKNO a year is made of its weeks.
class CalendarSteps
{
public:
    /// What the rule leaves open is taken from the start.
    CalendarSteps(const RecurrenceRule &rule, qint64 start);

    /// The earliest not before `wallTime`, nor before the start.
    std::optional<qint64> from(qint64 wallTime, StepBudget &budget) const;

    /// The latest not after `wallTime`.
    std::optional<qint64> upTo(qint64 wallTime, StepBudget &budget) const;

    /// The one with so many from the start on, itself included; nothing when there are fewer, or the budget
    /// ends.
    std::optional<qint64> nth(qint64 count, StepBudget &budget) const;

private:
    struct Days {
        qint64 first, last;
    };

    qint64 periodOf(qint64 day) const;
    qint64 alignedFrom(qint64 period) const;
    qint64 alignedUpTo(qint64 period) const;
    Days daysOf(qint64 period) const;
    qint64 firstAllowedFrom(const CalendarDay &day) const;
    qint64 lastAllowedUpTo(const CalendarDay &day) const;
    std::vector<qint64> picked(qint64 period, StepBudget &budget) const;
    template<class Visit>
    bool visitFrom(qint64 day, StepBudget &budget, Visit visit) const;
    template<class Visit>
    bool visitUpTo(qint64 day, StepBudget &budget, Visit visit) const;
    template<class Visit>
    bool visitPickedFrom(qint64 day, StepBudget &budget, Visit visit) const;
    template<class Visit>
    bool visitPickedUpTo(qint64 day, StepBudget &budget, Visit visit) const;
    bool picks() const { return !m_rule.positions.empty(); }

    RecurrenceRule m_rule;
    DayTimes m_times;
    qint64 m_start;
    qint64 m_firstPeriod;
    qint64 m_lastPeriod;
    qint64 m_anchor; ///< The one from which every INTERVAL-th is counted.
};
