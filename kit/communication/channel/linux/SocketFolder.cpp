// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/SocketFolder_p.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/linux/Descriptor_p.h"

#include <QFile>
#include <QRandomGenerator>
#include <QStringList>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace dozely
{

namespace
{

constexpr mode_t closedMode = 0700; // of a folder while it is emptied
constexpr mode_t parentMode = 0755;
constexpr mode_t folderMode = 0777;
constexpr mode_t socketMode = 0666;

Descriptor openFolder(int parent, const char *name)
{
    return Descriptor(::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// Removes one entry that may be a tree.
///
/// A walk that goes down needs a descriptor or a stack frame a level. This one never goes down: every folder
/// found within a folder is moved up into the top one under a name of its own, and the top folder's children
/// are emptied one after the other. Each folder moves once, so the work grows with the number of entries
/// alone.
class TreeRemover
{
public:
    bool remove(int parent, const char *name)
    {
        if (unlinkFile(parent, name))
            return true;
        m_top = openFolder(parent, name);
        if (!m_top.isValid())
            return errno == ENOENT;
        takeOver(m_top.get());
        forEachEntry(m_top.get(), [this](const char *entry) {
            if (!unlinkFile(m_top.get(), entry))
                removeFolder(entry);
        });
        for (quint64 moved = 0; moved < m_moved; ++moved)
            removeFolder(nameOfMoved(moved).constData());
        return removeEmptyFolder(parent, name);
    }

private:
    static bool unlinkFile(int parent, const char *name)
    {
        return ::unlinkat(parent, name, 0) == 0 || errno == ENOENT;
    }

    static bool removeEmptyFolder(int parent, const char *name)
    {
        return ::unlinkat(parent, name, AT_REMOVEDIR) == 0 || errno == ENOENT;
    }

    /// Shuts others out, so that nobody refills the folder faster than it is emptied. Fails, harmlessly, on
    /// the folder of somebody else when this process is not root.
    static void takeOver(int folder)
    {
        if (::fchown(folder, ::geteuid(), static_cast<gid_t>(-1)) == 0)
            ::fchmod(folder, closedMode);
    }

    template<class Visitor>
    static void forEachEntry(int folder, Visitor visit)
    {
        // A description of its own: the position in the listing belongs to it.
        Descriptor listing = openFolder(folder, ".");
        DIR *stream = listing.isValid() ? ::fdopendir(listing.get()) : nullptr;
        if (!stream)
            return;
        listing.release(); // closedir closes it
        while (const dirent *entry = ::readdir(stream)) {
            if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
                visit(entry->d_name);
        }
        ::closedir(stream);
    }

    /// Removes a child of the top folder, after moving the folders in it up beside it.
    void removeFolder(const char *name)
    {
        if (removeEmptyFolder(m_top.get(), name))
            return;
        const Descriptor folder = openFolder(m_top.get(), name);
        if (!folder.isValid())
            return;
        takeOver(folder.get());
        forEachEntry(folder.get(), [this, &folder](const char *entry) {
            if (unlinkFile(folder.get(), entry) || removeEmptyFolder(folder.get(), entry))
                return;
            if (::renameat(folder.get(), entry, m_top.get(), nameOfMoved(m_moved).constData()) == 0)
                ++m_moved;
        });
        removeEmptyFolder(m_top.get(), name);
    }

    /// Random, so that nobody can have taken the name before.
    QByteArray nameOfMoved(quint64 index) const { return m_prefix + QByteArray::number(index); }

    Descriptor m_top;
    quint64 m_moved = 0;
    const QByteArray m_prefix =
        "removed-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16) + '-';
};

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
    const Descriptor parent = openParent(fixedPath, false, &name);
    if (!parent.isValid())
        return errno == ENOENT;
    return TreeRemover().remove(parent.get(), name.constData());
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

bool SocketFolder::hasEntry(const QString &path)
{
    struct stat status;
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0;
}

bool SocketFolder::removeEntry(const QString &path)
{
    const QByteArray encoded = QFile::encodeName(path);
    const qsizetype slash = encoded.lastIndexOf('/');
    const Descriptor parent(::open(encoded.left(slash + 1).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return parent.isValid() && TreeRemover().remove(parent.get(), encoded.mid(slash + 1).constData());
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

} // namespace dozely
