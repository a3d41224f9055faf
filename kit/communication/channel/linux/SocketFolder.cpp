// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/SocketFolder_p.h"

#include "DozelyKit/communication/channel/linux/BackgroundWork_p.h"
#include "DozelyKit/communication/channel/linux/TreeRemover_p.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/AbuseLog.h"

#include <QFile>
#include <QRandomGenerator>
#include <QStringList>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <mutex>
#include <utility>

namespace dozely
{

namespace
{

constexpr mode_t closedMode = 0700; // of a folder that nobody else is to enter
constexpr mode_t parentMode = 0755;
constexpr mode_t folderMode = 0777;
constexpr mode_t socketMode = 0666;

constexpr char removedName[] = "com.dozely.removed";
constexpr char movedAsidePrefix[] = "moved-aside-";

Descriptor duplicate(const Descriptor &descriptor)
{
    return Descriptor(::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, 0));
}

Descriptor openFolder(int parent, const char *name)
{
    return Descriptor(::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

QByteArray randomName(const char *prefix)
{
    return prefix + QByteArray::number(QRandomGenerator::system()->generate64(), 16);
}

/// The folder of what is moved aside, which only its owner can enter, as a subfolder of `parent`; not valid
/// where that cannot be had.
Descriptor makeRemovedFolder(int parent)
{
    ::mkdirat(parent, removedName, closedMode);
    Descriptor folder = openFolder(parent, removedName);
    struct stat status {
    };
    const bool isOurs = folder.isValid() && ::fstat(folder.get(), &status) == 0 &&
                        status.st_uid == ::geteuid() && ::fchmod(folder.get(), closedMode) == 0;
    return isOurs ? std::move(folder) : Descriptor();
}

/// The one removal that goes on. What is moved aside while it does is removed after it, so that any number of
/// entries costs a handful of descriptors.
struct Removal {
    std::mutex mutex;
    bool isRunning = false;
    Descriptor next; ///< The parent of what is to be removed once more; not valid for nothing.
};

Removal &removal()
{
    static auto *const only = new Removal; // may be needed while the process ends
    return *only;
}

/// Removes what is in the folder of what was moved aside, and that folder, behind all else.
void removeWhatWasMovedAside(Descriptor parent)
{
    {
        const std::lock_guard guard(removal().mutex);
        if (removal().isRunning) {
            removal().next = std::move(parent);
            return;
        }
        removal().isRunning = true;
    }
    auto remover = std::make_shared<TreeRemover>(std::move(parent), removedName);
    BackgroundWork::add([remover = std::move(remover)](BackgroundWork::Moment until) mutable {
        if (remover->work(until) == TreeRemover::State::Working)
            return true;
        const std::lock_guard guard(removal().mutex);
        removal().isRunning = removal().next.isValid();
        if (removal().isRunning)
            remover = std::make_shared<TreeRemover>(std::exchange(removal().next, Descriptor()), removedName);
        return removal().isRunning;
    });
}

/// Moves the entry of `folder` to where it is removed from, a subfolder of `parent`.
bool moveAside(Descriptor parent, int folder, const QByteArray &name)
{
    // Twice: the folder may have been removed as empty in between.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const Descriptor removed = makeRemovedFolder(parent.get());
        if (removed.isValid() &&
            ::renameat(folder, name.constData(), removed.get(), randomName("").constData()) == 0) {
            removeWhatWasMovedAside(std::move(parent));
            return true;
        }
    }
    return false;
}

/// Tells of an entry that neither this user nor the system's has put there.
void tellOfStranger(uid_t owner)
{
    if (owner != ::geteuid() && owner != 0 && RootFolder::owner() != owner)
        AbuseLog::note(owner, "entry in a socket's place cleared away");
}

/// The folder that holds the entry at `fixedPath` below the root folder, reached step by step without
/// following a link; `name` receives the entry's own name.
Descriptor openParent(const QString &fixedPath, bool create, QByteArray *name)
{
    QStringList steps = fixedPath.split('/', Qt::SkipEmptyParts);
    *name = QFile::encodeName(steps.takeLast());
    const QByteArray root = QFile::encodeName(RootFolder::path() + '/');
    Descriptor folder(::open(root.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (const QString &step : std::as_const(steps)) {
        if (!folder.isValid())
            break;
        const QByteArray stepName = QFile::encodeName(step);
        const bool made = create && ::mkdirat(folder.get(), stepName.constData(), parentMode) == 0;
        folder = openFolder(folder.get(), stepName.constData());
        if (made && folder.isValid())
            ::fchmod(folder.get(), parentMode);
    }
    return folder;
}

} // namespace

bool SocketFolder::wipe(const QString &fixedPath)
{
    QByteArray name;
    Descriptor parent = openParent(fixedPath, false, &name);
    if (!parent.isValid())
        return errno == ENOENT;
    // What an earlier process has left over goes with it.
    const bool isEmpty = TreeRemover::removeSingle(parent.get(), name.constData());
    if (isEmpty) {
        removeWhatWasMovedAside(std::move(parent));
        return true;
    }
    return moveAside(duplicate(parent), parent.get(), name) || TreeRemover(std::move(parent), name).finish();
}

bool SocketFolder::create(const QString &fixedPath)
{
    QByteArray name;
    const Descriptor parent = openParent(fixedPath, true, &name);
    if (!parent.isValid())
        return false;
    if (::mkdirat(parent.get(), name.constData(), closedMode) != 0 && errno != EEXIST)
        return false;
    const Descriptor folder = openFolder(parent.get(), name.constData());
    struct stat status;
    return folder.isValid() && ::fstat(folder.get(), &status) == 0 && status.st_uid == ::geteuid() &&
           ::fchmod(folder.get(), folderMode) == 0;
}

bool SocketFolder::hasFile(const QString &path)
{
    struct stat status {
    };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0;
}

bool SocketFolder::clearEntry(const QString &path)
{
    const QByteArray encoded = QFile::encodeName(path);
    const qsizetype slash = encoded.lastIndexOf('/');
    const QByteArray name = encoded.mid(slash + 1);
    const Descriptor folder(::open(encoded.left(slash + 1).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct stat status {
    };
    if (!folder.isValid() || ::fstatat(folder.get(), name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return true;
    const auto isCleared = [&] {
        if (TreeRemover::removeSingle(folder.get(), name.constData()))
            return true;
        Descriptor parent(::openat(folder.get(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
        return moveAside(std::move(parent), folder.get(), name) ||
               (!isMovedAside(name) && ::renameat(folder.get(), name.constData(), folder.get(),
                                                  randomName(movedAsidePrefix).constData()) == 0);
    };
    if (!isCleared())
        return false;
    tellOfStranger(status.st_uid);
    return true;
}

bool SocketFolder::isMovedAside(const QByteArray &name)
{
    return name.startsWith(movedAsidePrefix);
}

bool SocketFolder::openSocketToEverybody(const QString &path)
{
    // A plain chmod of the path can be made to hit any file of the machine, by a link put there in time.
    const Descriptor socket(::open(QFile::encodeName(path).constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    struct stat status;
    if (!socket.isValid() || ::fstat(socket.get(), &status) != 0 || !S_ISSOCK(status.st_mode) ||
        status.st_uid != ::geteuid() || status.st_nlink != 1)
        return false;
    const QByteArray handle = "/proc/self/fd/" + QByteArray::number(socket.get());
    return ::chmod(handle.constData(), socketMode) == 0;
}

std::optional<SocketFolder::SocketIdentity> SocketFolder::socketAt(const QString &path)
{
    struct stat status {
    };
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISSOCK(status.st_mode) ||
        status.st_uid != ::geteuid())
        return {};
    return SocketIdentity(status.st_dev, status.st_ino);
}

} // namespace dozely
