// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/agent/AgentOrder.h"
#include "hosts/common/performing/Performances.h"
#include "hosts/common/plugins/ActionInhibitor.h"
#include "hosts/common/plugins/PlugInLoader.h"

#include <memory>

/// Performs what the daemon hands over, each action in a performer of the session, a process of its own, and
/// tells the daemon what it cannot know from the answer to its order. Actions that an agent before this one
/// has begun, which was cut short, go on and are taken up.
///
/// THREADING: the main thread.
class SessionActions
{
public:
    /// Takes up those that go on. `loader`, which says whose bundles are trusted here, must outlive the
    /// object. BLOCKING: for the disk.
    explicit SessionActions(const PlugInLoader &loader);

    /// Asks the actions that go on to end: they are of a session that is over. Does not wait for it.
    ~SessionActions();
    SessionActions(const SessionActions &) = delete;
    SessionActions &operator=(const SessionActions &) = delete;

    /// Begins the action, and keeps the machine awake until it is over. BLOCKING: until the performer runs,
    /// some milliseconds; when there can be none, as a request of WDCommunicationCenter.
    void perform(const AgentOrder &order);

private:
    using Awake = std::shared_ptr<const void>;

    void takeUp();
    dozely::Result<void> begin(const AgentOrder &order);
    void noteBegun(const AgentOrder &order) const;
    void noteEnd(const AgentOrder &order, const PerformanceOutcome &outcome) const;
    Awake awakeFor(const QString &bundlePath);

    const PlugInLoader &m_loader;
    ActionInhibitor m_inhibitor;
    std::unique_ptr<Performances> m_performances; // none where there is no folder for their files
    QString m_whyNone;
};
