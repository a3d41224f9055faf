// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ProcessPriority.h"

#include "DozelyKit/system/machine/linux/ProcessPriority_p.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <sys/resource.h>

namespace dozely
{

namespace
{
constexpr int notRaised = INT_MIN;
std::atomic<int> formerValue = notRaised;
static_assert(std::atomic<int>::is_always_lock_free, "it is read between fork and exec");
} // namespace

void ProcessPriority::raiseTo(int niceValue)
{
    errno = 0;
    const int former = ::getpriority(PRIO_PROCESS, 0);
    if (errno == 0 && former > niceValue && ::setpriority(PRIO_PROCESS, 0, niceValue) == 0)
        formerValue = former;
}

void ProcessPriority::giveBackInChild()
{
    if (const int former = formerValue; former != notRaised)
        ::setpriority(PRIO_PROCESS, 0, former);
}

} // namespace dozely
