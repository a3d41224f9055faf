// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/plugins/PlugInLoader.h"
#include "hosts/common/plugins/RunningActions.h"
#include "hosts/daemon/AgentWaits.h"

class PinnedConsoleUser;
class ScheduleKeeper;
class WDDaemonPlugIn;

/// Performs occurrences through the daemon-side class of their plug-ins, and notes what became of each. Every
/// one ends in exactly one line of the log that says so.
///
/// BLOCKING: handing an occurrence to an agent waits as a request of WDCommunicationCenter does.
class OccurrencePerformer : public QObject
{
    Q_OBJECT
public:
    /// `keeper` and `clock` must outlive the object.
    OccurrencePerformer(ScheduleKeeper &keeper, std::shared_ptr<PinnedConsoleUser> console,
                        dozely::Clock &clock);

    /// One that came due, or was asked for: skipped when it is later than its plug-in's time-out; held back
    /// in the scheduler while it is one for a session whose agent cannot be reached.
    void performDue(const Occurrence &occurrence);

    /// One that an agent hands back to be performed here.
    void performHandedBack(const Occurrence &occurrence);

    /// What became of the wish to announce an occurrence.
    struct Announcement {
        bool isWanted = true;             ///< The plug-in itself may not want it.
        std::optional<quint32> told = {}; ///< The user whose agent has it.
    };

    /// Has the agent of the user at the console announce an occurrence. One line in the log, unless the
    /// plug-in does not want it announced.
    Announcement anticipate(const Occurrence &occurrence);

    /// Makes the plug-in objects of the daemon.
    PlugInLoader &plugIns() { return m_loader; }

    /// Tells when something that was held back is due again.
    const AgentWaits &waits() const { return m_waits; }

private:
    enum class Place { AsConfigured, Daemon };
    void perform(const Occurrence &occurrence, Place place, bool mayBeTooLate);
    dozely::Result<std::shared_ptr<WDDaemonPlugIn>> makePlugIn(const Occurrence &occurrence);
    void actInUserAgent(const Occurrence &occurrence, WDDaemonPlugIn &plugIn);
    void actInDaemon(const Occurrence &occurrence, const std::shared_ptr<WDDaemonPlugIn> &plugIn);
    std::optional<quint32> reachableUser(const Occurrence &occurrence, const WDDaemonPlugIn &plugIn);
    bool postToAgent(quint32 userId, const std::function<bool()> &post);
    void notPerformed(const Occurrence &occurrence, const QString &why);

    ScheduleKeeper &m_keeper;
    std::shared_ptr<PinnedConsoleUser> m_console;
    PlugInLoader m_loader; // outlives the plug-in objects
    RunningActions m_running;
    AgentWaits m_waits;
};
