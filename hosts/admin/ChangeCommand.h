// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that changes a schedule.
namespace ChangeCommand
{
/// Gives the schedule what the options name; all else, its identifier among it, stays. Raises AdminError, and
/// changes nothing, when something is wrong with them or the store cannot be changed. THREADING: the main
/// thread. BLOCKING: as StoreCommands.
void run(const AdminOptions &options);
} // namespace ChangeCommand
