// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/PlugInAnswers.h"
#include "hosts/daemon/Scheduler.h"

#include <chrono>
#include <memory>
#include <optional>

class AgentWaits;
class DaemonActions;
class PinnedConsoleUser;

/// Has what comes due soon made ready: its performer is started here, or its agent told to start one.
///
/// THREADING: the main thread.
class SoonDue
{
public:
    /// So long before its date an action is made ready.
    static constexpr std::chrono::seconds leadTime{2};

    /// All must outlive the object.
    SoonDue(Scheduler &scheduler, PlugInAnswers &answers, DaemonActions &actions, const AgentWaits &waits,
            std::shared_ptr<PinnedConsoleUser> console, const dozely::Clock &clock);

    /// Makes ready what comes due soon in the daemon, and calls off what does not any more. Tells the agent
    /// at the console of what it will have, so that it can do the same; for no agent anything waits.
    void prepare();

    /// When there is next something to make ready; absent when there is nothing.
    std::optional<QDateTime> next() const;

private:
    void tellAgent(QList<Occurrence> occurrences);

    Scheduler &m_scheduler;
    PlugInAnswers &m_answers;
    DaemonActions &m_actions;
    const AgentWaits &m_waits;
    std::shared_ptr<PinnedConsoleUser> m_console;
    const dozely::Clock &m_clock;
    QSet<OccurrenceRecord::Key> m_told; // to agents, as coming soon
};
