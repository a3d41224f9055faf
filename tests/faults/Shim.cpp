// SPDX-License-Identifier: MIT
//
// Stands between a program and the machine, preloaded. It gives the program a clock that whoever started it
// moves, and counts the program's calls that can go wrong: those that open for writing, write, synchronise,
// rename, make processes and pipes, and send. At one of them it makes the machine refuse, or kills the
// program before or after the call. What is written to a pipe that somebody reads is never refused.
//
// The clock is ShimClock.cpp, the calls are ShimCalls.cpp. All that is shared is one page of memory, a file
// named by DOZELY_SHIM; controlled.py has the other end of it.
#include "Shim.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

Page *page = nullptr;
int timers[timerCount] = {-1, -1, -1, -1};

namespace
{
__attribute__((constructor)) void begin()
{
    const char *const path = std::getenv("DOZELY_SHIM");
    const int file = path ? static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CLOEXEC)) : -1;
    if (file < 0)
        return;
    void *const memory = ::mmap(nullptr, pageSize, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    ::close(file);
    if (memory == MAP_FAILED)
        return;
    if (const char *const numbers = std::getenv("DOZELY_SHIM_TIMERS")) {
        std::sscanf(numbers, "%d,%d,%d,%d", timers, timers + 1, timers + 2, timers + 3);
        for (const int number : timers)
            ::fcntl(number, F_SETFD, FD_CLOEXEC);
    }
    // What the program starts is not counted.
    for (const char *const name : {"LD_PRELOAD", "DOZELY_SHIM", "DOZELY_SHIM_TIMERS"})
        ::unsetenv(name);
    page = static_cast<Page *>(memory);
    int64_t next = whoeverComes;
    page->counted.compare_exchange_strong(next, ::getpid());
}
} // namespace
