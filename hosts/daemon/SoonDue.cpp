// SPDX-License-Identifier: MIT
#include "hosts/daemon/SoonDue.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/common/plugins/ActionPlace.h"
#include "hosts/daemon/AgentPosts.h"
#include "hosts/daemon/AgentWaits.h"
#include "hosts/daemon/DaemonActions.h"
#include "hosts/daemon/PinnedConsoleUser.h"

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
/// An agent makes no more ready.
constexpr qsizetype mostTold = 8;
} // namespace

SoonDue::SoonDue(Scheduler &scheduler, PlugInAnswers &answers, DaemonActions &actions,
                 const AgentWaits &waits, std::shared_ptr<PinnedConsoleUser> console, const Clock &clock)
    : m_scheduler(scheduler),
      m_answers(answers),
      m_actions(actions),
      m_waits(waits),
      m_console(std::move(console)),
      m_clock(clock)
{
}

void SoonDue::prepare()
{
    m_actions.callOffUnless([&](const Occurrence &occurrence) {
        const auto pending = m_scheduler.pending(occurrence.key());
        return pending && pending->schedule == occurrence.schedule &&
               pending->moment() == occurrence.moment();
    });
    const QDateTime now = m_clock.currentDate();
    QList<Occurrence> forSessions;
    for (const Occurrence &occurrence : m_scheduler.pendingBetween(now, now.addDuration(leadTime))) {
        const Schedule &schedule = occurrence.schedule;
        if (m_scheduler.isHeldBack(occurrence.key()) || m_told.contains(occurrence.key()))
            continue;
        const auto known = m_answers.of(schedule);
        if (!known || !*known)
            continue;
        const PlugInAnswers::Answers &answers = **known;
        if (ActionPlace::actsInUserAgent(schedule.parameters, answers.bundleInfo)) {
            if (!answers.handsOverItself)
                forSessions += occurrence;
        } else if (!answers.bundleInfo.isEmpty() && !ActionPlace::reasonAgainst(false, answers.bundleInfo)) {
            m_actions.prepare(occurrence, answers.bundleInfo);
        }
    }
    m_told.removeIf([&](const OccurrenceRecord::Key &key) {
        const auto pending = m_scheduler.pending(key);
        return !pending || pending->moment() <= now;
    });
    tellAgent(forSessions);
}

/// Tells the agent at the console, each once, which of these it will have.
void SoonDue::tellAgent(QList<Occurrence> occurrences)
{
    occurrences = occurrences.mid(0, std::max<qsizetype>(mostTold - m_told.size(), 0));
    if (occurrences.isEmpty())
        return;
    m_scheduler.lateness().beginWait();
    const auto user = m_console->current();
    m_scheduler.lateness().endWait();
    for (const Occurrence &occurrence : std::as_const(occurrences)) {
        m_told += occurrence.key();
        const auto owner = occurrence.onlyUser();
        if (user && (!owner || *owner == user->userId) && !m_waits.isLetBe(user->userId))
            AgentPosts::tellSoonDue(occurrence, user->userId);
    }
}

std::optional<QDateTime> SoonDue::next() const
{
    const auto next = m_scheduler.nextAfter(m_clock.currentDate().addDuration(leadTime));
    return next ? std::optional(next->addDuration(-leadTime)) : std::nullopt;
}
