// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/linux/EventProcessRecord_p.h"

#include "DozelyKit/communication/events/linux/EventProcessFolder_p.h"

#include <QRandomGenerator>
#include <QtEndian>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace dozely
{

namespace
{
// The content: these four bytes, the last of which is the version, and the signature.
constexpr std::array<char, 4> head = {'D', 'Z', 'E', 1};
constexpr size_t contentSize = head.size() + sizeof(OSType);
constexpr qsizetype randomDigits = 16;

// Classic record locks: they belong to the process alone, not to children that it forks, and the kernel tells
// whose they are. Their price: closing any descriptor of the file gives them up.
struct flock wholeFile()
{
    struct flock lock {
    };
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

/// Who holds the record's lock; 0 when nobody does.
pid_t holderOf(int record)
{
    struct flock lock = wholeFile();
    return ::fcntl(record, F_GETLK, &lock) == 0 && lock.l_type == F_WRLCK ? lock.l_pid : 0;
}

/// The record opened for reading, if it is a file at all; `status` tells of it.
Descriptor openRecord(int folder, const QByteArray &name, struct stat *status)
{
    Descriptor record(
        ::openat(folder, name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    const bool isFile = record.isValid() && ::fstat(record.get(), status) == 0 && S_ISREG(status->st_mode);
    return isFile ? std::move(record) : Descriptor();
}
} // namespace

bool EventProcessRecord::isGone(qint32 identifier)
{
    return ::kill(identifier, 0) != 0 && errno == ESRCH;
}

QByteArray EventProcessRecord::freshName(qint32 identifier)
{
    const QByteArray random = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    return QByteArray::number(identifier) + '-' + random.rightJustified(randomDigits, '0');
}

std::optional<qint32> EventProcessRecord::identifierIn(const QByteArray &name)
{
    const qsizetype dash = name.indexOf('-');
    if (dash <= 0 || name.size() != dash + 1 + randomDigits)
        return {};
    bool isNumber = false;
    const qint32 identifier = name.left(dash).toInt(&isNumber);
    const bool isCanonical = isNumber && identifier > 0 && QByteArray::number(identifier) == name.left(dash);
    return isCanonical ? std::optional<qint32>(identifier) : std::nullopt;
}

int EventProcessRecord::create(int folder, const QByteArray &name)
{
    // Closed to others until it is locked: a lock of theirs would keep ours away.
    Descriptor record(
        ::openat(folder, name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    struct flock lock = wholeFile();
    struct stat status {
    };
    if (!record.isValid() || ::fcntl(record.get(), F_SETLK, &lock) != 0 ||
        ::fstat(record.get(), &status) != 0 || status.st_nlink != 1) // swept before it was locked
        return -1;
    return record.release();
}

bool EventProcessRecord::complete(int record, OSType signature)
{
    std::array<char, contentSize> content{};
    std::memcpy(content.data(), head.data(), head.size());
    qToBigEndian(signature, content.data() + head.size());
    return ::pwrite(record, content.data(), content.size(), 0) == static_cast<ssize_t>(content.size()) &&
           ::fchmod(record, 0644) == 0;
}

bool EventProcessRecord::isInPlace(int record, const QByteArray &name)
{
    const Descriptor folder = openEventFolder();
    struct stat held {
    };
    struct stat found {
    };
    struct stat socket {
    };
    return folder.isValid() && ::fstat(record, &held) == 0 &&
           ::fstatat(folder.get(), name.constData(), &found, AT_SYMLINK_NOFOLLOW) == 0 &&
           held.st_dev == found.st_dev && held.st_ino == found.st_ino &&
           ::fstatat(folder.get(), socketOf(name).constData(), &socket, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISSOCK(socket.st_mode) && socket.st_uid == ::geteuid();
}

std::optional<AEProcesses::Process> EventProcessRecord::read(int folder, const QByteArray &name)
{
    const auto identifier = identifierIn(name);
    if (!identifier || *identifier == ::getpid() || isGone(*identifier))
        return {};
    struct stat status {
    };
    const Descriptor record = openRecord(folder, name, &status);
    std::array<char, contentSize> content{};
    if (!record.isValid() || holderOf(record.get()) != *identifier ||
        ::pread(record.get(), content.data(), content.size(), 0) != static_cast<ssize_t>(content.size()) ||
        std::memcmp(content.data(), head.data(), head.size()) != 0)
        return {};
    return AEProcesses::Process{*identifier, status.st_uid,
                                qFromBigEndian<OSType>(content.data() + head.size())};
}

void EventProcessRecord::sweep(int folder)
{
    forEachEntryOf(folder, [folder](const QByteArray &name) {
        const auto identifier = identifierIn(name);
        if (!identifier || *identifier == ::getpid())
            return;
        struct stat status {
        };
        const Descriptor record = openRecord(folder, name, &status);
        if (!record.isValid() || status.st_uid != ::geteuid() || holderOf(record.get()) != 0)
            return;
        ::unlinkat(folder, socketOf(name).constData(), 0);
        ::unlinkat(folder, name.constData(), 0);
    });
}

} // namespace dozely
