// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/foundation/Result.h"

/// That a daemon is the only one of its root folder: two would perform everything twice. It is the kernel's
/// lock on "/var/lib/dozely/dozelyd.lock" below the root folder, which goes with the process, however it
/// ends; the file itself stays and means nothing.
namespace InstanceLock
{
/// Takes the lock, for as long as the result lives. An error named GuardedFile::busy when another daemon has
/// it; another error when the lock cannot be made. BLOCKING: up to a second for the other one to end.
dozely::Result<dozely::GuardedFile::Lock> take();
} // namespace InstanceLock
