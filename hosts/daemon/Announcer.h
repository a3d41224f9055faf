// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/AgentPosts.h"
#include "hosts/daemon/PlugInAnswers.h"

#include <QObject>

#include <memory>
#include <optional>

class PinnedConsoleUser;

/// Has occurrences announced to the user at the console before their dates.
///
/// THREADING: the main thread. BLOCKING: as AgentPosts.
class Announcer : public QObject
{
    Q_OBJECT
public:
    /// All must outlive the object.
    Announcer(Scheduler &scheduler, Performances &performances, PlugInAnswers &answers,
              std::shared_ptr<PinnedConsoleUser> console);

    /// What became of the wish to announce an occurrence.
    struct Announcement {
        bool isKnown = true;               ///< What the plug-in wants; else it is being asked.
        bool isWanted = true;              ///< The plug-in itself may not want it.
        std::optional<quint32> told = {};  ///< The user whose agent has it.
        std::optional<quint32> there = {}; ///< The user who was asked for.
    };

    /// Has the agent of the user at the console announce an occurrence. One line in the log, unless the
    /// plug-in does not want it announced. One whose plug-in has a way of its own to do that counts as told;
    /// `failed` comes when it was not.
    Announcement announce(const Occurrence &occurrence);

Q_SIGNALS:
    /// The agent of `userId` does not announce it after all.
    void failed(const Occurrence &occurrence, quint32 userId);

private:
    PlugInAnswers &m_answers;
    std::shared_ptr<PinnedConsoleUser> m_console;
    AgentPosts m_posts;
};
