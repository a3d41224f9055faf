// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QFileSystemWatcher>
#include <QObject>

/// Whether a user wants the agent's status icon: kept in $XDG_STATE_HOME/dozely/agent.plist, else
/// ~/.local/state/dozely/agent.plist, below the root folder, under "Status Icon" (a boolean). A missing file
/// and one that makes no sense count as yes.
///
/// THREADING: the main thread. BLOCKING: for the disk.
class StatusIconPreference : public QObject
{
    Q_OBJECT
public:
    /// Tells from now on what another program changes.
    StatusIconPreference();

    static bool isWanted();
    static dozely::Result<void> setWanted(bool isWanted);

Q_SIGNALS:
    /// It may be another one now.
    void changed();

private:
    QFileSystemWatcher m_watcher; // of the folder, since the file is replaced
};
