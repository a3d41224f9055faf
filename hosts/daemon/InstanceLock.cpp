// SPDX-License-Identifier: MIT
#include "hosts/daemon/InstanceLock.h"

#include "DozelyKit/core/foundation/RootFolder.h"

using namespace dozely;

namespace
{
/// A program that a daemon was about to start when it was killed has the lock until it is that program.
constexpr std::chrono::seconds patience(1);
} // namespace

Result<GuardedFile::Lock> InstanceLock::take()
{
    const GuardedFile instance({RootFolder::join("/var/lib/dozely/dozelyd"), 0});
    auto lock = instance.lock(patience);
    if (!lock && lock.error().name == GuardedFile::busy)
        return Error{"another dozelyd runs already for this root folder", GuardedFile::busy};
    return lock;
}
