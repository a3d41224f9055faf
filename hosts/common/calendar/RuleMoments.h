// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/CalendarSteps.h"
#include "hosts/common/calendar/ElapsedSteps.h"
#include "hosts/common/calendar/RecurrenceRule.h"
#include "hosts/common/calendar/StepBudget.h"

#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/core/foundation/ZoneClock.h"

#include <QtGlobal>

#include <memory>
#include <optional>
#include <vector>

/// The moments that a rule gives in a zone up to its COUNT or UNTIL, without those whose wall times are
/// excluded. Moments are seconds since 1970 in UTC, wall times the same written as if they were UTC.
///
/// It goes from stretch to stretch of the zone's clocks. A stretch after a gap has, beside what its clocks
/// show, what they have skipped, as much later; one after the clocks were moved back has nothing of what they
/// show for a second time. So wall times that lie in order give moments in order, whatever was skipped
/// between them.
class RuleMoments
{
public:
    /// `excluded` are wall times in order. Errors as OccurrenceSeries::of says.
    static dozely::Result<std::unique_ptr<RuleMoments>> of(const RecurrenceRule &rule, qint64 localStart,
                                                           const dozely::ZoneClock &clock,
                                                           std::vector<qint64> excluded);

    /// The earliest not before `moment`.
    std::optional<qint64> from(qint64 moment, StepBudget &budget) const;

    /// The latest not after `moment`.
    std::optional<qint64> upTo(qint64 moment, StepBudget &budget) const;

private:
    struct Stretch;

    explicit RuleMoments(const dozely::ZoneClock &clock) : m_clock(clock) {}
    Q_DISABLE_COPY_MOVE(RuleMoments) // m_elapsed looks at m_clock
    Stretch stretchAt(qint64 moment) const;
    bool isExcluded(qint64 wallTime) const;
    std::optional<qint64> wallTimeFrom(qint64 wallTime, qint64 shownLater, StepBudget &budget) const;
    std::optional<qint64> wallTimeUpTo(qint64 wallTime, qint64 shownLater, StepBudget &budget) const;
    std::optional<qint64> calendarFrom(qint64 moment, StepBudget &budget) const;
    std::optional<qint64> calendarUpTo(qint64 moment, StepBudget &budget) const;
    std::optional<qint64> elapsedFrom(qint64 moment, StepBudget &budget) const;
    std::optional<qint64> elapsedUpTo(qint64 moment, StepBudget &budget) const;
    std::optional<dozely::Error> limitTo(const RecurrenceRule &rule);

    dozely::ZoneClock m_clock;
    std::optional<CalendarSteps> m_calendar; ///< One of the two.
    std::optional<ElapsedSteps> m_elapsed;
    std::vector<qint64> m_excluded;
    qint64 m_lastWallTime; ///< Of the calendar's.
    qint64 m_firstMoment;
    qint64 m_lastMoment;
};
