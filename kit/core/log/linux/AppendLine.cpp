// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/AppendLine_p.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
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

// Type and permissions of the open file; 0 when they cannot be told.
mode_t modeOf(int descriptor)
{
    if (!isFstatDear()) {
        struct stat status = {};
        return ::fstat(descriptor, &status) == 0 ? status.st_mode : 0;
    }
    struct statx status = {};
    constexpr unsigned wanted = STATX_TYPE | STATX_MODE; // and no times
    return ::statx(descriptor, "", AT_EMPTY_PATH, wanted, &status) == 0 ? status.stx_mode : 0;
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

AppendResult appendLine(const char *path, std::string_view line, bool openToAll)
{
    AppendResult result;
    // O_NONBLOCK: a pipe put in the log's place must not hold up whoever logs.
    const int descriptor = ::open(
        path, O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, openMode);
    if (descriptor < 0) {
        result.openError = errno;
        if (openToAll)
            openUnwritableFileToAll(path);
        return result;
    }
    const mode_t mode = modeOf(descriptor);
    if (!S_ISREG(mode)) {
        result.openError = EINVAL;
        ::close(descriptor);
        return result;
    }
    const ssize_t written = ::write(descriptor, line.data(), line.size());
    if (written != static_cast<ssize_t>(line.size()))
        result.writeError = written < 0 ? errno : ENOSPC;
    if (openToAll && (mode & permissionBits) != openMode)
        ::fchmod(descriptor, openMode);
    ::close(descriptor);
    return result;
}

} // namespace dozely
