// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that shows what became of occurrences. Raises AdminError when the record cannot be read.
/// THREADING: the main thread. BLOCKING: for the disk.
namespace HistoryCommand
{
void run(const AdminOptions &options);
} // namespace HistoryCommand
