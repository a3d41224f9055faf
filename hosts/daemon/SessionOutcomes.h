// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PerformanceOutcome.h"
#include "hosts/daemon/Occurrence.h"

namespace dozely
{
class Clock;
} // namespace dozely

class FailureReports;
class ScheduleKeeper;

/// Notes what agents say became of occurrences that they were handed, with at most one line of the log each.
///
/// THREADING: the main thread.
class SessionOutcomes
{
public:
    /// All must outlive the object.
    SessionOutcomes(ScheduleKeeper &keeper, FailureReports &failures, const dozely::Clock &clock);

    /// What the agent of `userId`, which was handed an occurrence, says became of it: that it was performed
    /// although the answer came too late, what it wrote, that it failed, or that it was not performed
    /// although it was answered.
    void note(const Occurrence &occurrence, quint32 userId, const PerformanceOutcome &outcome);

    /// What the agent of an occurrence that it was handed says: that it was not begun, since another action
    /// of the schedule goes on there.
    void noteOverlap(const Occurrence &occurrence);

private:
    void noteSuccess(const Occurrence &occurrence, quint32 userId, const PerformanceOutcome &end);

    ScheduleKeeper &m_keeper;
    FailureReports &m_failures;
    const dozely::Clock &m_clock;
};
