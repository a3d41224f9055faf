// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/DescriptorLimit.h"

#include "DozelyKit/system/machine/linux/DescriptorLimit_p.h"

#include <atomic>
#include <sys/resource.h>

namespace dozely
{

namespace
{
/// What the limit was before it was raised; nothing while it was not.
constexpr rlim_t notRaised = RLIM_INFINITY;
std::atomic<rlim_t> formerLimit = notRaised;
static_assert(std::atomic<rlim_t>::is_always_lock_free, "it is read between fork and exec");
} // namespace

void DescriptorLimit::raise()
{
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= limit.rlim_max)
        return;
    const rlim_t former = limit.rlim_cur;
    limit.rlim_cur = limit.rlim_max;
    if (::setrlimit(RLIMIT_NOFILE, &limit) == 0)
        formerLimit = former;
}

void DescriptorLimit::giveBackInChild()
{
    const rlim_t former = formerLimit;
    rlimit limit{};
    if (former == notRaised || ::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return;
    limit.rlim_cur = former;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

} // namespace dozely
