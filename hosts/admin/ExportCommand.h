// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that writes the schedules for other programs and machines. Raises AdminError when the store
/// cannot be read. THREADING: the main thread. BLOCKING: for the disk.
namespace ExportCommand
{
void run(const AdminOptions &options);
} // namespace ExportCommand
