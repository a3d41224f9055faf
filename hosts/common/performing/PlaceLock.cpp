// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PlaceLock.h"

#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

extern "C" {
#include <sys/pidfd.h> // says nothing about C++ in glibc 2.36
}

using namespace dozely;

namespace
{
Error failure(const QString &place)
{
    return Error{QString("%1: %2").arg(place, qt_error_string(errno))};
}

/// The lock that a performance is told by: the processes of a performer share it.
constexpr off_t sharedByte = 0;
/// A lock of the process that takes the other one, of which the kernel says whose it is.
constexpr off_t ownersByte = 1;

/// The sign that a performer was there, which needs no room on a disk that is full.
constexpr mode_t touched = S_IXUSR;

struct flock lockOf(off_t byte)
{
    struct flock lock {
    };
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    return lock;
}

Descriptor openPlace(const QString &place)
{
    return Descriptor(::open(QFile::encodeName(place).constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
}

std::optional<pid_t> ownerOf(const QString &place)
{
    const Descriptor file = openPlace(place);
    struct flock lock = lockOf(ownersByte);
    if (!file.isValid() || ::fcntl(file.get(), F_GETLK, &lock) != 0 || lock.l_type == F_UNLCK)
        return {};
    return lock.l_pid;
}

bool holdsAnother(const Descriptor &file, const QByteArray &mark)
{
    QByteArray content(mark.size(), '\0');
    const ssize_t size = ::pread(file.get(), content.data(), static_cast<size_t>(content.size()), 0);
    return size > 0 && mark != QByteArrayView(content.constData(), size);
}

Error calledOff(const QString &place)
{
    return Error{QString("%1 was called off").arg(place)};
}

Result<Descriptor> lock(const QString &place, Descriptor file)
{
    const struct flock lock = lockOf(sharedByte);
    if (!file.isValid() || ::fcntl(file.get(), F_OFD_SETLK, &lock) != 0)
        return failure(place);
    struct stat status {
    };
    if (::fstat(file.get(), &status) != 0 || status.st_nlink == 0)
        return calledOff(place);
    return file;
}
} // namespace

Result<void> PlaceLock::make(const QString &place, const QByteArray &content)
{
    // Under a name of its own first: whoever finds the file finds what it holds.
    const QByteArray unfinished = QFile::encodeName(unfinishedPathBeside(place));
    ::unlink(unfinished.constData()); // of a host that was cut short
    const Descriptor made(::open(unfinished.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!made.isValid())
        return failure(place);
    // A full disk keeps nothing from being performed: then the file is empty, and anybody's.
    [[maybe_unused]] const ssize_t written =
        ::write(made.get(), content.constData(), static_cast<size_t>(content.size()));
    if (::renameat2(AT_FDCWD, unfinished.constData(), AT_FDCWD, QFile::encodeName(place).constData(),
                    RENAME_NOREPLACE) == 0)
        return {};
    const Error because = failure(place);
    ::unlink(unfinished.constData());
    return because;
}

QString PlaceLock::unfinishedPathBeside(const QString &place)
{
    return place + ".making";
}

Result<Descriptor> PlaceLock::take(const QString &place, const QByteArray &mark)
{
    Descriptor file = openPlace(place);
    if (file.isValid() && holdsAnother(file, mark))
        return calledOff(place);
    // First, so that whoever has the lock can be asked to end.
    const struct flock owners = lockOf(ownersByte);
    if (!file.isValid() || ::fcntl(file.get(), F_SETLK, &owners) != 0)
        return failure(place);
    auto locked = lock(place, std::move(file));
    if (locked && ::fchmod(locked->get(), S_IRUSR | S_IWUSR | touched) != 0)
        return failure(place);
    return locked;
}

bool PlaceLock::isHeld(const QString &place)
{
    const Descriptor file = openPlace(place);
    struct stat status {
    };
    if (!file.isValid())
        return ::lstat(QFile::encodeName(place).constData(), &status) == 0; // which needs no descriptor
    struct flock lock = lockOf(sharedByte);
    return ::fcntl(file.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

bool PlaceLock::askToEnd(const QString &place)
{
    const auto owner = ownerOf(place);
    const Descriptor process(owner ? ::pidfd_open(*owner, 0) : -1);
    // Who has it still is who had it when the process was opened, and no other one of the same number.
    return process.isValid() && ownerOf(place) == owner &&
           ::pidfd_send_signal(process.get(), SIGTERM, nullptr, 0) == 0;
}

bool PlaceLock::takeBack(const QString &place)
{
    const auto locked = lock(place, openPlace(place));
    if (locked)
        QFile::remove(place); // while it is held: who comes later finds no file
    return locked.ok() || !QFile::exists(place);
}

bool PlaceLock::takeBackUntouched(const QString &place)
{
    const auto locked = lock(place, openPlace(place));
    struct stat status {
    };
    if (!locked || ::fstat(locked->get(), &status) != 0 || (status.st_mode & touched) != 0)
        return false;
    return QFile::remove(place);
}
