// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/RecurrenceRule.h"
#include "hosts/common/calendar/StepBudget.h"

#include "DozelyKit/core/foundation/ZoneClock.h"

#include <optional>
#include <vector>

/// The moments that a rule with a frequency of an hour or shorter gives. Its periods, hours, minutes or
/// seconds, are elapsed time: every INTERVAL-th from that of the start, evenly through every change of the
/// clocks. What BY parts name is what clocks show. Moments are seconds since 1970 in UTC. COUNT and UNTIL are
/// not its business.
///
/// Nothing is walked second by second: what a BY part excludes is left in one jump to where that part allows
/// something again, the longest first.
class ElapsedSteps
{
public:
    /// `start` is the moment of the rule's start. The clock must outlive the steps.
    ElapsedSteps(const RecurrenceRule &rule, qint64 start, const dozely::ZoneClock &clock);

    /// The earliest not before `moment`, nor before the start.
    std::optional<qint64> from(qint64 moment, StepBudget &budget) const;

    /// The latest not after `moment`.
    std::optional<qint64> upTo(qint64 moment, StepBudget &budget) const;

    /// The one with so many from the start on, itself included; nothing when there are fewer, or the budget
    /// ends.
    std::optional<qint64> nth(qint64 count, StepBudget &budget) const;

private:
    /// What clocks show at a moment, and how long they go on as they do.
    struct Shown {
        qint64 moment, offset, begin, end; ///< The stretch has its last second at end - 1.
        qint64 day, second;                ///< The day's number, and the second of the day.
    };

    Shown shownAt(qint64 moment) const;
    qint64 periodOf(qint64 moment) const;
    std::optional<qint64> nextCandidate(const Shown &shown) const;
    std::optional<qint64> previousCandidate(const Shown &shown) const;
    std::optional<qint64> matchFrom(qint64 moment, StepBudget &budget) const;
    std::optional<qint64> matchUpTo(qint64 moment, StepBudget &budget) const;
    std::vector<qint64> picked(qint64 period, StepBudget &budget) const;

    RecurrenceRule m_rule;
    const dozely::ZoneClock *m_clock;
    qint64 m_unit; ///< The length of a period, in seconds.
    qint64 m_start;
    qint64 m_origin; ///< The moment at which the period of the start begins.
    qint64 m_startMinute =
        0; ///< Within its period, as is the second within its minute: where the rule leaves
    qint64 m_startSecond = 0; ///< them open.
    bool m_limitsDays;
};
