// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/agent/AgentOrder.h"
#include "hosts/common/performing/Performances.h"
#include "hosts/common/plugins/ActionInhibitor.h"
#include "hosts/common/plugins/PlugInLoader.h"

#include <QDateTime>
#include <QMultiHash>

#include <functional>
#include <memory>
#include <optional>

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

    /// Has a performer made ready for an action that is about to come, within ten seconds. Nothing comes of
    /// it where there can be none, when too many wait, and when the action does not come within 15 s of its
    /// date. BLOCKING: until the performer runs, some milliseconds.
    void prepare(const AgentOrder &order);

    /// Begins the action, and keeps the machine awake until it is over; or tells the daemon that it is
    /// skipped, where another action of its schedule goes on and the order says so. BLOCKING: until the
    /// performer runs, some milliseconds; when there can be none, as a request of WDCommunicationCenter.
    void perform(const AgentOrder &order);

private:
    using Awake = std::shared_ptr<const void>;

    struct Prepared {
        AgentOrder order;
        QString name;
        std::shared_ptr<Awake> awake; ///< Filled when the action begins.
    };

    void takeUp();
    dozely::Result<Prepared> start(const AgentOrder &order);
    dozely::Result<void> begin(const AgentOrder &order);
    std::optional<Prepared> takePrepared(const std::function<bool(const Prepared &)> &isIt);
    void noteBegun(const AgentOrder &order) const;
    void noteEnd(const AgentOrder &order, const PerformanceOutcome &outcome);
    Awake awakeFor(const QString &bundlePath);

    const PlugInLoader &m_loader;
    ActionInhibitor m_inhibitor;
    QMultiHash<QString, QDateTime> m_goingOn;     // dates, by the schedule's identifier
    std::unique_ptr<Performances> m_performances; // none where there is no folder for their files
    QString m_whyNone;
    QList<Prepared> m_prepared;
};
