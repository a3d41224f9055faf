// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that shows on one screen how the system is. It works for any user, whether a daemon runs or
/// not. THREADING: the main thread. BLOCKING: for the disk, at most two seconds for the console's user, and
/// for the daemon where the caller may not read the record.
namespace StatusCommand
{
/// Raises AdminError, without a sentence, when no daemon runs.
void run(const AdminOptions &options);
} // namespace StatusCommand
