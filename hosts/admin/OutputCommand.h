// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that shows what an action wrote last. Raises AdminError when it fails. THREADING: the main
/// thread. BLOCKING: for the disk.
namespace OutputCommand
{
void run(const AdminOptions &options);
}
