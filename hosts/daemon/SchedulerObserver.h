// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Hears what changes in a Scheduler, so that nobody has to look at all schedules to find out. Told by the
/// schedule's place in Scheduler::schedules, once the scheduler is as it is to be; nothing may be noted in
/// the scheduler meanwhile.
class SchedulerObserver
{
public:
    virtual ~SchedulerObserver() = default;

    /// All schedules were replaced: a place means another one now.
    virtual void schedulesReplaced() = 0;

    /// What is to come of one schedule is another now, or may be.
    virtual void scheduleChanged(qint32 place) = 0;

protected:
    SchedulerObserver() = default;
    SchedulerObserver(const SchedulerObserver &) = default;
    SchedulerObserver &operator=(const SchedulerObserver &) = default;
};
