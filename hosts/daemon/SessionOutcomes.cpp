// SPDX-License-Identifier: MIT
#include "hosts/daemon/SessionOutcomes.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/daemon/FailureReports.h"
#include "hosts/daemon/ScheduleKeeper.h"

using namespace dozely;

SessionOutcomes::SessionOutcomes(ScheduleKeeper &keeper, FailureReports &failures, const Clock &clock)
    : m_keeper(keeper), m_failures(failures), m_clock(clock)
{
}

void SessionOutcomes::note(const Occurrence &occurrence, quint32 userId, const PerformanceOutcome &outcome)
{
    PerformanceOutcome end = outcome;
    end.ended = m_clock.currentDate();
    if (outcome.isSuccess()) {
        noteSuccess(occurrence, userId, end);
        return;
    }
    m_keeper.noteEnd(occurrence, end);
    QString why = end.reason();
    if (end.isPerformed()) {
        ZDRLog("%@ failed with the agent of user %u: %@", occurrence.label(), userId, why);
    } else {
        why = QString("the agent of user %1 could not begin it").arg(userId) +
              (why.isEmpty() ? QString() : ": " + why);
        ZDRLog("%@ was not performed: %@", occurrence.label(), why);
    }
    m_failures.tellSoon(occurrence, why);
}

void SessionOutcomes::noteOverlap(const Occurrence &occurrence)
{
    m_keeper.note(occurrence, OccurrenceState::Skipped);
    ZDRLog("%@ was skipped: the action of the one before goes on", occurrence.label());
}

/// That it is over is noted once, whatever its agent says afterwards: each time is a write on the disk.
void SessionOutcomes::noteSuccess(const Occurrence &occurrence, quint32 userId, const PerformanceOutcome &end)
{
    const auto entry = m_keeper.scheduler().record().find(occurrence.schedule.identifier, occurrence.date);
    const bool wasUnknown = entry && entry->state == OccurrenceState::Unknown;
    if (end.output.isEmpty())
        m_keeper.note(occurrence, OccurrenceState::Done, userId); // it may go on
    else if (!entry || !entry->ended.isValid())
        m_keeper.noteEnd(occurrence, end, userId);
    if (wasUnknown)
        ZDRLog("%@ was performed all the same by the agent of user %u", occurrence.label(), userId);
}
