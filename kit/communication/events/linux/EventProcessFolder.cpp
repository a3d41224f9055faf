// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/linux/EventProcessFolder_p.h"

#include "DozelyKit/communication/events/linux/EventProcesses_p.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace dozely
{

namespace
{
constexpr mode_t folderMode = 01777; // everybody adds, nobody removes what is another's
constexpr int mostEntries = 100'000;

bool isWhoMayOwnIt(uid_t user)
{
    return user == 0 || user == ::geteuid() || RootFolder::owner() == user;
}
} // namespace

Descriptor openEventFolder()
{
    Descriptor folder(::open(QFile::encodeName(EventProcesses::folder()).constData(),
                             O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status {
    };
    const bool isOurs =
        folder.isValid() && ::fstat(folder.get(), &status) == 0 && isWhoMayOwnIt(status.st_uid);
    return isOurs ? std::move(folder) : Descriptor();
}

Descriptor makeEventFolder()
{
    const QByteArray path = QFile::encodeName(EventProcesses::folder());
    if (::mkdir(path.constData(), 0700) != 0 && errno == ENOENT) {
        QString parent;
        for (const QString &step : RootFolder::join("/private/var/tmp").split('/', Qt::SkipEmptyParts)) {
            parent += '/' + step;
            if (::mkdir(QFile::encodeName(parent).constData(), 0755) == 0)
                ::chmod(QFile::encodeName(parent).constData(), 0755); // whatever the umask
        }
        ::mkdir(path.constData(), 0700);
    }
    Descriptor folder = openEventFolder();
    struct stat status {
    };
    if (folder.isValid() && ::fstat(folder.get(), &status) == 0 && status.st_uid == ::geteuid() &&
        (status.st_mode & 07777) != folderMode)
        ::fchmod(folder.get(), folderMode);
    return folder;
}

void forEachEntryOf(int folder, const std::function<void(const QByteArray &)> &visit)
{
    // A description of its own: the position in the listing belongs to it.
    Descriptor listing(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    DIR *const stream = listing.isValid() ? ::fdopendir(listing.get()) : nullptr;
    if (!stream)
        return;
    listing.release(); // closedir closes it
    for (int i = 0; i < mostEntries; ++i) {
        const dirent *const entry = ::readdir(stream);
        if (!entry)
            break;
        visit(QByteArray(entry->d_name));
    }
    ::closedir(stream);
}

} // namespace dozely
