// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that shows what comes. Raises AdminError when the store cannot be read. THREADING: the main
/// thread. BLOCKING: for the disk.
namespace NextCommand
{
void run(const AdminOptions &options);
} // namespace NextCommand
