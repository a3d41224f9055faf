// SPDX-License-Identifier: MIT
//
// The clock that whoever started the program moves.
#include "Shim.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/timerfd.h>
#include <sys/timex.h>
#include <unistd.h>

namespace
{
int timersMade = 0;

constexpr int64_t second = 1'000'000'000; // nanoseconds

int64_t inNanoseconds(const timespec &time)
{
    return time.tv_sec * second + time.tv_nsec;
}

timespec asTime(int64_t nanoseconds)
{
    return {nanoseconds / second, nanoseconds % second};
}

int timerWith(int descriptor)
{
    struct stat status = {};
    for (int i = 0; page && i < timersMade; ++i) {
        if (descriptor == timers[i] && ::fstat(descriptor, &status) == 0)
            return i;
    }
    return -1;
}
} // namespace

SHIM_CALL int clock_gettime(clockid_t clock, timespec *time)
{
    const bool isCalendar = clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
    if (!page || (!isCalendar && clock != CLOCK_BOOTTIME))
        return next<int (*)(clockid_t, timespec *)>("clock_gettime")(clock, time);
    *time = asTime(isCalendar ? page->now.load() : page->now - page->start);
    return 0;
}

SHIM_CALL int gettimeofday(timeval *time, void *zone)
{
    if (!page)
        return next<int (*)(timeval *, void *)>("gettimeofday")(time, zone);
    const timespec now = asTime(page->now);
    *time = {now.tv_sec, now.tv_nsec / 1000};
    return 0;
}

SHIM_CALL time_t time(time_t *result)
{
    if (!page)
        return next<time_t (*)(time_t *)>("time")(result);
    const time_t now = page->now / second;
    if (result)
        *result = now;
    return now;
}

/// The clock is sure.
SHIM_CALL int adjtimex(timex *state)
{
    if (!page)
        return next<int (*)(timex *)>("adjtimex")(state);
    *state = {};
    return TIME_OK;
}

/// A timer of the calendar clock is an event descriptor that whoever moves the clock has, too: both are read
/// alike.
SHIM_CALL int timerfd_create(int clock, int flags)
{
    if (!page || clock != CLOCK_REALTIME || timersMade == timerCount || timers[timersMade] < 0)
        return next<int (*)(int, int)>("timerfd_create")(clock, flags);
    return timers[timersMade++];
}

SHIM_CALL int timerfd_settime(int descriptor, int flags, const itimerspec *setting, itimerspec *former)
{
    const int timer = timerWith(descriptor);
    if (timer < 0)
        return next<int (*)(int, int, const itimerspec *, itimerspec *)>("timerfd_settime")(descriptor, flags,
                                                                                            setting, former);
    int64_t expired = 0;
    [[maybe_unused]] const ssize_t taken = ::read(descriptor, &expired, sizeof expired);
    const int64_t due = inNanoseconds(setting->it_value);
    page->due[timer] = due;
    expired = 1;
    // Whoever moves the clock looks at "due" after that: one of the two sees what the other did.
    if (due != 0 && due <= page->now)
        ::syscall(SYS_write, descriptor, &expired, sizeof expired);
    return 0;
}
