// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/SocketFolderWatch_p.h"

#include "DozelyKit/communication/channel/SocketFolder_p.h"
#include "DozelyKit/communication/channel/WDCommunicationCenter_p.h"
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/communication/channel/linux/SlicedWork_p.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "DozelyKit/core/foundation/linux/FolderWatch_p.h"

#include <QFile>

#include <dirent.h>
#include <sys/stat.h>

namespace dozely
{

namespace
{
bool keepsTheFolder()
{
    return NSProcessInfo::effectiveUserID() == 0 &&
           zandorSoftwaresExtensions::contains(NSProcessInfo::processName(), ProcessName::daemon);
}

/// What has no business in the folder is cleared away; sockets of any name stay.
void keepClear(const QByteArray &folder, const QByteArray &name)
{
    const QByteArray path = folder + '/' + name;
    struct stat status {
    };
    const bool isUnwanted = SocketFolder::isMovedAside(name) ||
                            (ProcessName::isListeners(QFile::decodeName(name)) &&
                             ::lstat(path.constData(), &status) == 0 && !S_ISSOCK(status.st_mode));
    if (isUnwanted)
        SocketFolder::clearEntry(QFile::decodeName(path));
}

/// Looks through the folder, which may hold any number of entries.
class Sweep
{
public:
    explicit Sweep(const QByteArray &folder)
        : m_folder(folder), m_listing(::opendir(folder.constData()), [](DIR *listing) {
              if (listing)
                  ::closedir(listing);
          })
    {
    }

    bool work(SlicedWork::Moment until)
    {
        while (m_listing) {
            const dirent *const entry = ::readdir(m_listing.get());
            if (!entry)
                return false;
            keepClear(m_folder, entry->d_name);
            if (std::chrono::steady_clock::now() >= until)
                return true;
        }
        return false;
    }

private:
    QByteArray m_folder;
    std::shared_ptr<DIR> m_listing;
};

class KernelsWatch : public SocketFolderWatch
{
public:
    explicit KernelsWatch(std::function<void()> changed)
        : m_changed(std::move(changed)),
          m_watch(path(), [this](const FolderWatch::Change &change) { tell(change); })
    {
    }

    void renew() override { m_watch.renew(); }

private:
    static QByteArray path() { return QFile::encodeName(ZDRUnixSocketPort::socketFolder()); }

    void tell(const FolderWatch::Change &change)
    {
        if (keepsTheFolder())
            keep(change);
        const auto changed = m_changed; // which may end this object
        changed();
    }

    void keep(const FolderWatch::Change &change)
    {
        if (change.isAnother && !m_watch.isWatching()) {
            SocketFolder::create(SocketFolder::place);
            m_watch.renew();
        }
        for (const QByteArray &name : change.names)
            keepClear(path(), name);
        if (change.mayBeMore || change.isAnother)
            sweep();
    }

    /// One at a time; what comes after it has passed is told again, or swept after it.
    void sweep()
    {
        *m_sweepsAgain = true;
        if (std::exchange(*m_isSweeping, true))
            return;
        SlicedWork::add([sweep = std::shared_ptr<Sweep>(), folder = path(), isSweeping = m_isSweeping,
                         again = m_sweepsAgain](SlicedWork::Moment until) mutable {
            if (!sweep) {
                *again = false;
                sweep = std::make_shared<Sweep>(folder);
            }
            if (sweep->work(until))
                return true;
            sweep.reset();
            *isSweeping = *again;
            return *again;
        });
    }

    const std::function<void()> m_changed;
    const std::shared_ptr<bool> m_isSweeping = std::make_shared<bool>(false);
    const std::shared_ptr<bool> m_sweepsAgain = std::make_shared<bool>(false);
    FolderWatch m_watch;
};
} // namespace

std::unique_ptr<SocketFolderWatch> SocketFolderWatch::make(std::function<void()> changed)
{
    return std::make_unique<KernelsWatch>(std::move(changed));
}

} // namespace dozely
