// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/daemon/MissedRule.h"
#include "hosts/daemon/Occurrence.h"

#include <chrono>
#include <optional>

namespace dozely
{
class Clock;
} // namespace dozely

class Scheduler;

/// How late an occurrence is, what of that is excused, and what is to become of it. Part of a Scheduler,
/// whose occurrences it judges.
class LatenessJudge
{
public:
    /// Both must outlive the object.
    LatenessJudge(const dozely::Clock &clock, const Scheduler &scheduler);

    /// How late an occurrence is now, in whole seconds; negative before its date.
    std::chrono::seconds of(const Occurrence &occurrence) const;

    /// What has a date up to `until` was held up for `duration`, which is no lateness of its own.
    void excuse(const QDateTime &until, std::chrono::milliseconds duration);

    /// Between the two everything else waits: for the daemon's own work, or for an agent, which may take its
    /// time on purpose. Nothing is too late by that. What comes due in the same second or meanwhile is judged
    /// from the end of the wait, and what is judged meanwhile as if it were its beginning. Waits within
    /// waits, and those that follow one another closely, are one. A wait of more than a minute, in which the
    /// machine may have slept, excuses nothing.
    /// @{
    void beginWait();
    void endWait();
    /// @}

    /// What is to become of one that is due: of several that a schedule has missed, all at once.
    struct Verdict {
        std::optional<Occurrence> performed = {}; ///< Absent when none is.
        OccurrenceSeries::Run missed = {};        ///< Too late; a count of 0 for none.
    };
    /// `heldUp` is the time for which `due` was held up.
    Verdict judge(const Occurrence &due, const MissedRule &rule,
                  std::chrono::milliseconds heldUp = std::chrono::milliseconds(0)) const;

    /// Whether that is more than a plug-in's time-out (seconds, negative) allows. One that was asked for may
    /// also be five minutes late: its daemon may have had to be started again, but nobody who said "now"
    /// means the next day.
    /// Nor is anything too late by the time for which it was held up.
    bool isTooLate(const Occurrence &occurrence, qint32 timeOut,
                   std::chrono::milliseconds heldUp = std::chrono::milliseconds(0)) const;

    /// How late it may be; absent for however late.
    static std::optional<std::chrono::milliseconds> allowed(const Occurrence &occurrence,
                                                            const MissedRule &rule);

private:
    bool isSuperseded(const Occurrence &due, const QDateTime &moment) const;
    bool isLaterThan(std::optional<std::chrono::milliseconds> allowed, const Occurrence &occurrence,
                     std::chrono::milliseconds heldUp) const;
    QDateTime latestTooLate(const Occurrence &first, std::chrono::milliseconds allowed) const;

    const dozely::Clock &m_clock;
    const Scheduler &m_scheduler;
    QDateTime m_excusedUntil;
    std::chrono::milliseconds m_excusedFor{0};
    struct Wait {
        QDateTime start;
        QDateTime end;
    };
    Wait m_wait;             // the last that ended
    QDateTime m_presentWait; // the start of the one that goes on
    int m_waits = 0;         // within one another, that go on
};
