// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <ctime>

/// The processor time that this thread has used: what else runs on the machine does not count.
inline std::chrono::duration<double> processorTime()
{
    timespec used{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

/// The seconds of it that the action takes.
template<class Action>
double processorSeconds(const Action &action)
{
    const auto start = processorTime();
    action();
    return (processorTime() - start).count();
}
