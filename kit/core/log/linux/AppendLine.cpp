// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/AppendLine_p.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace dozely
{

namespace
{
constexpr mode_t openMode = 0666;
constexpr mode_t permissionBits = 07777;

// Since Linux 6.13, having told a file's times, the kernel gives the write that follows an exact time of its
// own, which makes a line a third dearer. Before that, statx on a descriptor looks up an empty path first,
// and takes twice as long as fstat.
bool isFstatDear()
{
    static const bool isDear = [] {
        utsname system = {};
        int major = 0;
        int minor = 0;
        return ::uname(&system) == 0 && std::sscanf(system.release, "%d.%d", &major, &minor) == 2 &&
               (major > 6 || (major == 6 && minor >= 13));
    }();
    return isDear;
}

struct FileState {
    mode_t mode = 0; // type and permissions; 0 when they cannot be told
    dev_t device = 0;
    ino_t number = 0;
    off_t size = 0;
};

// The file as this thread's last line left it, when that is whole. As long as it is no longer than that,
// nobody else has written, and there is no half line to look for.
thread_local FileState lastLeft;

FileState stateOf(int descriptor)
{
    if (!isFstatDear()) {
        struct stat status = {};
        return ::fstat(descriptor, &status) == 0
                   ? FileState{status.st_mode, status.st_dev, status.st_ino, status.st_size}
                   : FileState();
    }
    struct statx status = {};
    constexpr unsigned wanted = STATX_TYPE | STATX_MODE | STATX_INO | STATX_SIZE; // and no times
    return ::statx(descriptor, "", AT_EMPTY_PATH, wanted, &status) == 0
               ? FileState{status.stx_mode, ::makedev(status.stx_dev_major, status.stx_dev_minor),
                           static_cast<ino_t>(status.stx_ino), static_cast<off_t>(status.stx_size)}
               : FileState();
}

// O_NONBLOCK: a pipe put in the log's place must not hold up whoever logs. Readable, to see how the file
// ends; who may only write appends all the same.
int openForAppending(const char *path)
{
    constexpr int flags = O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    const int descriptor = ::open(path, O_RDWR | flags, openMode);
    return descriptor < 0 && errno == EACCES ? ::open(path, O_WRONLY | flags, openMode) : descriptor;
}

// Who rotates the log moves it aside and makes another. Where only root makes files, a user's process finds
// none for that moment, or one that is not open to all yet. A log that does not come is not waited for twice.
int openOnceRotated(const char *path)
{
    static std::atomic<bool> isWorthWaiting{true};
    constexpr int tries = 250;
    constexpr timespec between = {0, 1'000'000}; // nanoseconds
    int descriptor = openForAppending(path);
    for (int count = 0; descriptor < 0 && errno == EACCES && isWorthWaiting; ++count) {
        if (count == tries) {
            isWorthWaiting = false;
            break;
        }
        ::nanosleep(&between, nullptr);
        descriptor = openForAppending(path);
    }
    if (descriptor >= 0 && !isWorthWaiting.load(std::memory_order_relaxed))
        isWorthWaiting = true;
    return descriptor;
}

// Whether the last line has no end, as a disk that was full leaves it. False where that cannot be told.
bool endsInHalfALine(int descriptor, const FileState &file)
{
    if (file.size == lastLeft.size && file.number == lastLeft.number && file.device == lastLeft.device)
        return false;
    char last = '\n';
    return file.size > 0 && ::pread(descriptor, &last, 1, file.size - 1) == 1 && last != '\n';
}

// A file that did not open for writing may still take a new mode. The descriptor stands for the very file
// that was looked at; chmod by path would follow whatever link had been put there in between.
void openUnwritableFileToAll(const char *path)
{
    const int descriptor = ::open(path, O_PATH | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0)
        return;
    struct stat status = {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        char link[32];
        std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
        ::chmod(link, openMode);
    }
    ::close(descriptor);
}
} // namespace

AppendResult appendLine(const char *path, std::string_view line, bool openToAll, HalfLine last)
{
    AppendResult result;
    const int descriptor = openOnceRotated(path);
    if (descriptor < 0) {
        result.openError = errno;
        if (openToAll)
            openUnwritableFileToAll(path);
        return result;
    }
    const FileState file = stateOf(descriptor);
    if (!S_ISREG(file.mode)) {
        result.openError = EINVAL;
        ::close(descriptor);
        return result;
    }
    std::string closing;
    if (last == HalfLine::Close && endsInHalfALine(descriptor, file)) {
        closing = '\n';
        closing += line;
        line = closing;
    }
    const ssize_t written = ::write(descriptor, line.data(), line.size());
    if (written != static_cast<ssize_t>(line.size()))
        result.writeError = written < 0 ? errno : ENOSPC;
    const bool isWhole = result.writeError == 0 && line.ends_with('\n');
    lastLeft = isWhole ? file : FileState();
    lastLeft.size += isWhole ? written : 0;
    if (openToAll && (file.mode & permissionBits) != openMode)
        ::fchmod(descriptor, openMode);
    ::close(descriptor);
    return result;
}

} // namespace dozely
