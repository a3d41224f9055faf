// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The commands about the machine's power. They raise AdminError when they fail. BLOCKING: some seconds at
/// most.
namespace PowerCommand
{
/// Without argument: shows the clock that can wake the machine, its alarm, and the scheduled events. `test`:
/// arms the alarm, reads it back and sets it as it was.
void run(const AdminOptions &options);

/// Puts the machine to sleep.
void sleep(const AdminOptions &options);
} // namespace PowerCommand
