// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The commands that talk to other processes. All raise AdminError when they fail. The process is no longer
/// root afterwards, unless it ran a schedule that is root's own. BLOCKING: as a request of
/// WDCommunicationCenter.
namespace ChannelCommands
{
/// Asks whether a process is alive; one that is not fails.
void ping(const AdminOptions &options);

/// Asks the daemon to perform a schedule's action now.
void run(const AdminOptions &options);

/// Asks the daemon to leave an occurrence out.
void skip(const AdminOptions &options);

/// Asks the daemon to perform an occurrence so much later.
void postpone(const AdminOptions &options);
} // namespace ChannelCommands
