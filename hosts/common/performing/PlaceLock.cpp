// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PlaceLock.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

namespace
{
constexpr qsizetype longestMark = 64; // bytes

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

Descriptor openPlace(const QString &place)
{
    return Descriptor(::open(QFile::encodeName(place).constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
}

bool holdsAnother(const Descriptor &file, const QByteArray &mark)
{
    char content[longestMark + 1];
    const ssize_t size = ::pread(file.get(), content, sizeof content, 0);
    return size > 0 && mark != QByteArrayView(content, size);
}

Error calledOff(const QString &place)
{
    return Error{QString("%1 was called off").arg(place)};
}

Result<Descriptor> lock(const QString &place, Descriptor file)
{
    const struct flock lock = wholeFile();
    if (!file.isValid() || ::fcntl(file.get(), F_OFD_SETLK, &lock) != 0)
        return failure(place);
    struct stat status {
    };
    if (::fstat(file.get(), &status) != 0 || status.st_nlink == 0)
        return calledOff(place);
    return file;
}
} // namespace

Result<void> PlaceLock::make(const QString &place, const QByteArray &mark)
{
    const Descriptor made(
        ::open(QFile::encodeName(place).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!made.isValid())
        return failure(place);
    // A full disk keeps nothing from being performed: then the file is empty, and anybody's.
    [[maybe_unused]] const ssize_t written =
        ::write(made.get(), mark.constData(), static_cast<size_t>(mark.size()));
    return {};
}

Result<Descriptor> PlaceLock::take(const QString &place, const QByteArray &mark)
{
    Descriptor file = openPlace(place);
    if (file.isValid() && holdsAnother(file, mark))
        return calledOff(place);
    return lock(place, std::move(file));
}

bool PlaceLock::isHeld(const QString &place)
{
    const Descriptor file = openPlace(place);
    struct stat status {
    };
    if (!file.isValid())
        return ::lstat(QFile::encodeName(place).constData(), &status) == 0; // which needs no descriptor
    struct flock lock = wholeFile();
    return ::fcntl(file.get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

bool PlaceLock::takeBack(const QString &place)
{
    const auto locked = lock(place, openPlace(place));
    if (locked)
        QFile::remove(place); // while it is held: who comes later finds no file
    return locked.ok() || !QFile::exists(place);
}
