// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that has exactly those schedules that a file says, and changes nothing where nothing differs.
/// Raises AdminError, without a sentence and with its own status, when it has changed something, or would
/// have. THREADING: the main thread. BLOCKING: as StoreCommands.
namespace ApplyCommand
{
void run(const AdminOptions &options);
} // namespace ApplyCommand
