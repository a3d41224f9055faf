// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that shows all schedules. Raises AdminError when the store cannot be read. THREADING: the main
/// thread. BLOCKING: for the disk.
namespace ListCommand
{
void run(const AdminOptions &options);
} // namespace ListCommand
