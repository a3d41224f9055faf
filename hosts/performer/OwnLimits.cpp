// SPDX-License-Identifier: MIT
#include "hosts/performer/OwnLimits.h"

#include "DozelyKit/core/log/ZDRLog.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace dozely;

namespace
{
// Of <linux/ioprio.h>, which is not for C++.
constexpr int whoProcess = 1;
constexpr int bestEffort = 2 << 13;
constexpr long usualPriority = 4;
constexpr long lastPriority = 7;

void check(bool isTaken, const char *what)
{
    if (!isTaken)
        ZDRLog("The %@ of an action is not to be had: %@", QString(what), qt_error_string(errno));
}
} // namespace

int OwnLimits::ioPriorityOf(quint64 weight)
{
    const long steps = std::lround(std::log2(static_cast<double>(weight) / 100));
    return static_cast<int>(std::clamp(usualPriority - steps, 0L, lastPriority));
}

void OwnLimits::take(const ProgramLimits &limits)
{
    if (limits.nice)
        check(::setpriority(PRIO_PROCESS, 0, *limits.nice) == 0, "nice value");
    if (limits.ioWeight) {
        const int priority = bestEffort | ioPriorityOf(*limits.ioWeight);
        check(::syscall(SYS_ioprio_set, whoProcess, 0, priority) == 0, "I/O priority");
    }
    if (limits.memory) {
        const rlimit limit{*limits.memory, *limits.memory};
        check(::setrlimit(RLIMIT_DATA, &limit) == 0, "memory limit");
    }
}
