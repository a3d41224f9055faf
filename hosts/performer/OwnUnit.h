// SPDX-License-Identifier: MIT
#pragma once

/// The unit in which a service manager runs this process.
namespace OwnUnit
{
/// Whether something in it was killed because all of it together took more memory than it may ("oom_kill" of
/// memory.events, the kernel's cgroup-v2). False where the machine does not say. BLOCKING: reads two files of
/// the kernel.
bool hasRunOutOfMemory();
} // namespace OwnUnit
