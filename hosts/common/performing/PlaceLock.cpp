// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PlaceLock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

using namespace dozely;

namespace
{
Error failure(const QString &place)
{
    return Error{QString("%1: %2").arg(place, qt_error_string(errno))};
}

struct flock wholeFile()
{
    struct flock lock {
    };
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}
} // namespace

Result<void> PlaceLock::make(const QString &place)
{
    const Descriptor made(
        ::open(QFile::encodeName(place).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    return made.isValid() ? Result<void>() : failure(place);
}

Result<Descriptor> PlaceLock::take(const QString &place)
{
    Descriptor file(::open(QFile::encodeName(place).constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
    const struct flock lock = wholeFile();
    if (!file.isValid() || ::fcntl(file.get(), F_OFD_SETLK, &lock) != 0)
        return failure(place);
    struct stat status {
    };
    if (::fstat(file.get(), &status) != 0 || status.st_nlink == 0)
        return Error{QString("%1 was called off").arg(place)};
    return file;
}

bool PlaceLock::isHeld(const QString &place)
{
    const Descriptor file(::open(QFile::encodeName(place).constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
    struct flock lock = wholeFile();
    return file.isValid() && ::fcntl(file.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

bool PlaceLock::takeBack(const QString &place)
{
    const auto lock = take(place);
    if (lock)
        QFile::remove(place); // while it is held: who comes later finds no file
    return lock.ok() || !QFile::exists(place);
}
