// SPDX-License-Identifier: MIT
//
// Stands between a program and the machine, preloaded. It gives the program a clock that whoever started it
// moves, and counts the program's calls that can go wrong: those that open for writing, write, synchronise,
// rename, make processes and pipes, and send. At one of them it makes the machine refuse, or kills the
// program before or after the call.
//
// All that is shared is one page of memory, a file named by DOZELY_SHIM; controlled.py has the other end of
// it.
#include "FaultPage.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <sys/timex.h>
#include <sys/uio.h>
#include <unistd.h>

#define SHIM_CALL extern "C" __attribute__((visibility("default")))

namespace
{
constexpr int64_t second = 1'000'000'000; // nanoseconds

Page *page = nullptr;
int timers[timerCount] = {-1, -1, -1, -1}; // what the program has in the place of calendar timers
int timersMade = 0;

/// What comes next of that name: the machine's own.
template<typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

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

[[noreturn]] void die()
{
    for (;;)
        ::syscall(SYS_kill, ::getpid(), SIGKILL);
}

/// One call that is counted: says on its way in whether it is to be made, and on its way out whether that was
/// all.
class Call
{
public:
    Call(const char *name, const char *what, int error, bool isOnDisk = false) : m_error(error)
    {
        if (!page || page->counted != ::getpid())
            return;
        const int saved = errno;
        const int64_t number = ++page->calls;
        if (number <= tracedCalls)
            std::snprintf(page->trace[number - 1], traceLength, "%s %s", name, what);
        const int64_t way = page->way;
        const bool isItsTurn =
            way == DiskFullFromThere ? number >= page->target && isOnDisk : number == page->target;
        if (page->target > 0 && isItsTurn)
            m_way = way;
        if (m_way != None)
            page->fired = 1;
        if (m_way == DieBefore)
            die();
        errno = saved;
    }
    ~Call()
    {
        if (m_way == DieAfter && page->counted == ::getpid()) // a child of its own goes on
            die();
    }

    /// True with errno when the machine refuses.
    bool isRefused() const
    {
        if (m_way == Fail)
            errno = m_error;
        if (m_way == DiskFullFromThere)
            errno = ENOSPC;
        return m_way == Fail || m_way == DiskFullFromThere;
    }
    bool isCutShort() const { return m_way == CutShort; }

private:
    int m_error;
    int64_t m_way = None;
};

/// What a descriptor leads to, as long as the object is there.
struct Target {
    explicit Target(int descriptor)
    {
        char link[32];
        std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
        const ssize_t length = ::readlink(link, path, sizeof path - 1);
        path[length < 0 ? 0 : length] = '\0';
    }
    char path[256];
};

bool isRegular(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// Nothing but files: what goes to pipes and the like is never refused by a full disk.
template<typename Make>
ssize_t writing(const char *name, int file, size_t size, Make make)
{
    if (!page || page->counted != ::getpid() || !isRegular(file))
        return make(size);
    const Call call(name, Target(file).path, ENOSPC, true);
    return call.isRefused() ? -1 : make(call.isCutShort() && size > 1 ? size / 2 : size);
}

bool isForWriting(int flags)
{
    return (flags & O_ACCMODE) != O_RDONLY || (flags & O_CREAT) != 0;
}

/// `make` is the machine's own call.
template<typename Make>
int opening(const char *path, int flags, Make make)
{
    if (!isForWriting(flags) || (flags & O_PATH) != 0)
        return make();
    const Call call("open", path, EMFILE, true);
    return call.isRefused() ? -1 : make();
}

template<typename Make>
int calling(const char *name, const char *what, int error, Make make, bool isOnDisk = false)
{
    const Call call(name, what, error, isOnDisk);
    return call.isRefused() ? -1 : make();
}

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

// ---- the clock

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

// ---- what can go wrong

namespace
{
/// The mode that follows the flags of an open call, where one does.
mode_t modeAfter(int flags, va_list rest)
{
    const bool isMaking = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return isMaking ? va_arg(rest, mode_t) : 0;
}
} // namespace

#define SHIM_MODE(mode, flags)                                                                               \
    va_list rest;                                                                                            \
    va_start(rest, flags);                                                                                   \
    const mode_t mode = modeAfter(flags, rest);                                                              \
    va_end(rest);

using Open = int (*)(const char *, int, ...);
using OpenAt = int (*)(int, const char *, int, ...);

SHIM_CALL int open(const char *path, int flags, ...)
{
    SHIM_MODE(mode, flags)
    return opening(path, flags, [&] { return next<Open>("open")(path, flags, mode); });
}

SHIM_CALL int open64(const char *path, int flags, ...)
{
    SHIM_MODE(mode, flags)
    return opening(path, flags, [&] { return next<Open>("open64")(path, flags, mode); });
}

SHIM_CALL int openat(int folder, const char *path, int flags, ...)
{
    SHIM_MODE(mode, flags)
    return opening(path, flags, [&] { return next<OpenAt>("openat")(folder, path, flags, mode); });
}

SHIM_CALL int openat64(int folder, const char *path, int flags, ...)
{
    SHIM_MODE(mode, flags)
    return opening(path, flags, [&] { return next<OpenAt>("openat64")(folder, path, flags, mode); });
}

SHIM_CALL ssize_t write(int file, const void *bytes, size_t size)
{
    return writing("write", file, size, [&](size_t most) -> ssize_t {
        return next<ssize_t (*)(int, const void *, size_t)>("write")(file, bytes, most);
    });
}

SHIM_CALL ssize_t pwrite(int file, const void *bytes, size_t size, off_t place)
{
    return writing("pwrite", file, size, [&](size_t most) -> ssize_t {
        return next<ssize_t (*)(int, const void *, size_t, off_t)>("pwrite")(file, bytes, most, place);
    });
}

SHIM_CALL ssize_t pwrite64(int file, const void *bytes, size_t size, off64_t place)
{
    return writing("pwrite", file, size, [&](size_t most) -> ssize_t {
        return next<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64")(file, bytes, most, place);
    });
}

SHIM_CALL ssize_t writev(int file, const iovec *parts, int count)
{
    return writing("writev", file, 0, [&](size_t) -> ssize_t {
        return next<ssize_t (*)(int, const iovec *, int)>("writev")(file, parts, count);
    });
}

SHIM_CALL int fsync(int file)
{
    return calling(
        "fsync", Target(file).path, EIO, [&] { return next<int (*)(int)>("fsync")(file); }, true);
}

SHIM_CALL int fdatasync(int file)
{
    return calling(
        "fdatasync", Target(file).path, EIO, [&] { return next<int (*)(int)>("fdatasync")(file); }, true);
}

SHIM_CALL int rename(const char *from, const char *to)
{
    return calling("rename", to, EIO,
                   [&] { return next<int (*)(const char *, const char *)>("rename")(from, to); });
}

SHIM_CALL int renameat(int fromFolder, const char *from, int toFolder, const char *to)
{
    return calling("rename", to, EIO, [&] {
        return next<int (*)(int, const char *, int, const char *)>("renameat")(fromFolder, from, toFolder,
                                                                               to);
    });
}

SHIM_CALL int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags)
{
    return calling("rename", to, EIO, [&] {
        return next<int (*)(int, const char *, int, const char *, unsigned)>("renameat2")(
            fromFolder, from, toFolder, to, flags);
    });
}

SHIM_CALL pid_t fork()
{
    return calling("fork", "", EAGAIN, [] { return next<pid_t (*)()>("fork")(); });
}

/// A function that is called returns once: a process of its own will do.
SHIM_CALL pid_t vfork()
{
    return fork();
}

SHIM_CALL int pidfd_open(pid_t process, unsigned flags)
{
    return calling("pidfd_open", "", EMFILE,
                   [&] { return next<int (*)(pid_t, unsigned)>("pidfd_open")(process, flags); });
}

SHIM_CALL int pipe2(int *ends, int flags)
{
    return calling("pipe2", "", EMFILE, [&] { return next<int (*)(int *, int)>("pipe2")(ends, flags); });
}

SHIM_CALL int socket(int domain, int type, int protocol)
{
    return calling("socket", "", EMFILE,
                   [&] { return next<int (*)(int, int, int)>("socket")(domain, type, protocol); });
}

SHIM_CALL int connect(int socket, const sockaddr *address, socklen_t size)
{
    return calling("connect", "", ECONNREFUSED, [&] {
        return next<int (*)(int, const sockaddr *, socklen_t)>("connect")(socket, address, size);
    });
}

SHIM_CALL ssize_t send(int socket, const void *bytes, size_t size, int flags)
{
    const Call call("send", Target(socket).path, ECONNRESET);
    return call.isRefused()
               ? -1
               : next<ssize_t (*)(int, const void *, size_t, int)>("send")(socket, bytes, size, flags);
}

SHIM_CALL ssize_t sendmsg(int socket, const msghdr *message, int flags)
{
    const Call call("sendmsg", Target(socket).path, ECONNRESET);
    return call.isRefused() ? -1
                            : next<ssize_t (*)(int, const msghdr *, int)>("sendmsg")(socket, message, flags);
}
