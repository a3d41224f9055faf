// SPDX-License-Identifier: MIT
//
// The calls that can go wrong.
#include "Shim.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace
{
[[noreturn]] void die()
{
    for (;;)
        ::syscall(SYS_kill, ::getpid(), SIGKILL);
}

constexpr int neverRefused = 0; // in the place of an error

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
        const bool isRefused = m_error != neverRefused && (m_way == Fail || m_way == DiskFullFromThere);
        if (isRefused)
            errno = m_way == Fail ? m_error : ENOSPC;
        return isRefused;
    }
    bool isCutShort() const { return m_error != neverRefused && m_way == CutShort; }

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

/// Whether a full disk matters to it.
bool isOnDisk(const char *path)
{
    return !std::strstr(path, "/memfd:") && !std::strstr(path, "/run/dozely/");
}

mode_t kindOf(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 ? status.st_mode & S_IFMT : 0;
}

/// Nothing but files and pipes.
template<typename Make>
ssize_t writing(const char *name, int file, size_t size, Make make)
{
    if (!page || page->counted != ::getpid())
        return make(size);
    const mode_t kind = kindOf(file);
    if (kind != S_IFREG && kind != S_IFIFO)
        return make(size);
    const Target target(file);
    const bool isFile = kind == S_IFREG;
    const Call call(isFile ? name : "tell", target.path, isFile ? ENOSPC : neverRefused,
                    isFile && isOnDisk(target.path));
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
    const Call call("open", path, EMFILE, isOnDisk(path));
    return call.isRefused() ? -1 : make();
}

template<typename Make>
int calling(const char *name, const char *what, int error, Make make, bool isOnDisk = false)
{
    const Call call(name, what, error, isOnDisk);
    return call.isRefused() ? -1 : make();
}
} // namespace

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
    return calling("fork", "", EAGAIN, [] {
        const pid_t child = next<pid_t (*)()>("fork")();
        int64_t forked = whoeverIsForked;
        if (child == 0 && page)
            page->counted.compare_exchange_strong(forked, ::getpid());
        return child;
    });
}

/// A function that is called returns once: a process of its own will do.
SHIM_CALL pid_t vfork()
{
    return fork();
}

/// What runs in the process on this one's memory is another one, whose calls are not counted.
SHIM_CALL int clone(int (*function)(void *), void *stack, int flags, void *argument, ...)
{
    va_list more;
    va_start(more, argument);
    auto *parent = va_arg(more, pid_t *);
    auto *storage = va_arg(more, void *);
    auto *child = va_arg(more, pid_t *);
    va_end(more);
    return calling("clone", "", EAGAIN, [&] {
        return next<int (*)(int (*)(void *), void *, int, void *, ...)>("clone")(
            function, stack, flags, argument, parent, storage, child);
    });
}

using Spawn = int (*)(pid_t *, const char *, const posix_spawn_file_actions_t *, const posix_spawnattr_t *,
                      char *const *, char *const *);

/// These give the error instead of setting it.
SHIM_CALL int posix_spawn(pid_t *process, const char *path, const posix_spawn_file_actions_t *actions,
                          const posix_spawnattr_t *attributes, char *const *arguments,
                          char *const *environment)
{
    const Call call("posix_spawn", path, EAGAIN);
    return call.isRefused()
               ? errno
               : next<Spawn>("posix_spawn")(process, path, actions, attributes, arguments, environment);
}

SHIM_CALL int posix_spawnp(pid_t *process, const char *file, const posix_spawn_file_actions_t *actions,
                           const posix_spawnattr_t *attributes, char *const *arguments,
                           char *const *environment)
{
    const Call call("posix_spawn", file, EAGAIN);
    return call.isRefused()
               ? errno
               : next<Spawn>("posix_spawnp")(process, file, actions, attributes, arguments, environment);
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
