// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/SocketFolderWatch_p.h"

#include "DozelyKit/communication/channel/SocketFolder_p.h"
#include "DozelyKit/communication/channel/WDCommunicationCenter_p.h"
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/communication/channel/linux/BackgroundWork_p.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "DozelyKit/core/foundation/linux/FolderWatch_p.h"

#include <QFile>

#include <dirent.h>
#include <mutex>
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

    bool work(BackgroundWork::Moment until)
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
        {
            const std::lock_guard guard(m_sweeping->mutex);
            m_sweeping->isWantedAgain = true;
            if (std::exchange(m_sweeping->isGoingOn, true))
                return;
        }
        BackgroundWork::add([sweep = std::shared_ptr<Sweep>(), folder = path(),
                             state = m_sweeping](BackgroundWork::Moment until) mutable {
            if (!sweep) {
                const std::lock_guard guard(state->mutex);
                state->isWantedAgain = false;
                sweep = std::make_shared<Sweep>(folder);
            }
            if (sweep->work(until))
                return true;
            sweep.reset();
            const std::lock_guard guard(state->mutex);
            state->isGoingOn = state->isWantedAgain;
            return state->isGoingOn;
        });
    }

    struct Sweeping {
        std::mutex mutex;
        bool isGoingOn = false;
        bool isWantedAgain = false;
    };

    const std::function<void()> m_changed;
    const std::shared_ptr<Sweeping> m_sweeping = std::make_shared<Sweeping>();
    FolderWatch m_watch;
};
} // namespace

std::unique_ptr<SocketFolderWatch> SocketFolderWatch::make(std::function<void()> changed)
{
    return std::make_unique<KernelsWatch>(std::move(changed));
}

} // namespace dozely
