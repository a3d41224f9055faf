// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that removes the schedules that are over, but for those that are to stay.
namespace CleanCommand
{
/// Raises AdminError when it fails, also when the caller may not read the record, which says what is over.
/// THREADING: the main thread. BLOCKING: at most 5 s for the store's lock.
void run(const AdminOptions &options);
} // namespace CleanCommand
