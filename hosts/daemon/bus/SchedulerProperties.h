// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/bus/SchedulerAnswers.h"

#include <QVariantMap>

#include <chrono>

namespace dozely
{
class Clock;
} // namespace dozely

class PinnedConsoleUser;
class Scheduler;

/// The values of the object's properties on the bus, as docs/bus.md has them.
///
/// THREADING: the main thread. BLOCKING: for the machine's answers, two seconds for who sits at the console.
class SchedulerProperties
{
public:
    /// All must outlive the object.
    SchedulerProperties(const Scheduler &scheduler, const SchedulerAnswers &answers,
                        PinnedConsoleUser &console, const dozely::Clock &clock);

    /// What follows from the schedules: the next occurrence, the clock's alarm; and the version.
    QVariantMap ofSchedules() const;

    /// Who is at the console, and whether his agent lives; empty when that was asked a moment ago.
    QVariantMap ofConsole(bool isNews);

private:
    const Scheduler &m_scheduler;
    const SchedulerAnswers &m_answers;
    PinnedConsoleUser &m_console;
    const dozely::Clock &m_clock;
    std::chrono::milliseconds m_asked{-1}; // on the steady clock; below 0 for never
};
