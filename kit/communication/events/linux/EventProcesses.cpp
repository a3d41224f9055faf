// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/linux/EventProcesses_p.h"

#include "DozelyKit/communication/events/linux/EventProcessFolder_p.h"
#include "DozelyKit/communication/events/linux/EventProcessRecord_p.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/core/foundation/RootFolder.h"

#include <QFile>

#include <algorithm>
#include <atomic>
#include <cstring>

namespace dozely
{

namespace
{
// The address record of the base port.
constexpr int unixFamily = 1;
constexpr int streamType = 1;
constexpr qsizetype recordSize = 106;
constexpr qsizetype headerSize = 2;

QByteArray addressOf(const QByteArray &path)
{
    QByteArray record(recordSize, '\0');
    record[0] = static_cast<char>(path.size() + headerSize);
    record[1] = unixFamily;
    return record.replace(headerSize, path.size(), path);
}

QByteArray socketPath(const QByteArray &record)
{
    return QFile::encodeName(EventProcesses::folder()) + '/' + EventProcessRecord::socketOf(record);
}

bool fits(const QByteArray &path)
{
    return path.size() < recordSize - headerSize;
}

/// What this process itself has announced: it cannot read its own record without giving up the lock.
struct Own {
    std::mutex mutex;
    qint32 identifier = 0;
    OSType signature = 0;
    QByteArray record;
    Descriptor lock;
};

Own &own()
{
    static auto *const announced = new Own; // as long as the process
    return *announced;
}

/// The announced port: takes the files away with it.
class AnnouncedPort : public NSSocketPort
{
public:
    static std::shared_ptr<AnnouncedPort> make(const QByteArray &record)
    {
        std::shared_ptr<AnnouncedPort> port(new AnnouncedPort);
        const QByteArray path = socketPath(record);
        return fits(path) && port->initWithProtocolFamily(unixFamily, streamType, 0, addressOf(path))
                   ? port
                   : nullptr;
    }

    ~AnnouncedPort() override
    {
        if (!m_isAnnounced)
            return;
        const std::lock_guard guard(own().mutex);
        if (own().identifier != ::getpid())
            return; // a child that was forked; the files are its parent's
        if (const Descriptor folder = openEventFolder(); folder.isValid()) {
            ::unlinkat(folder.get(), EventProcessRecord::socketOf(own().record).constData(), 0);
            ::unlinkat(folder.get(), own().record.constData(), 0);
        }
        own().identifier = 0;
        own().lock = Descriptor();
    }

    void setAnnounced() { m_isAnnounced = true; }

private:
    bool m_isAnnounced = false;
};

class ReachingPort : public NSSocketPort
{
public:
    static std::shared_ptr<NSSocketPort> make(const QByteArray &record)
    {
        const std::shared_ptr<ReachingPort> port(new ReachingPort);
        const QByteArray path = socketPath(record);
        return fits(path) && port->initRemoteWithProtocolFamily(unixFamily, streamType, 0, addressOf(path))
                   ? port
                   : nullptr;
    }
};
} // namespace

QString EventProcesses::folder()
{
    return RootFolder::join("/private/var/tmp/com.dozely.events");
}

void EventProcesses::prepare()
{
    makeEventFolder();
    m_keepsFolder = true;
    watchFolder();
}

void EventProcesses::whenLost(std::function<void()> lost)
{
    m_lost = std::move(lost);
    if (m_lost)
        watchFolder();
    else if (!m_keepsFolder)
        m_watch.reset();
}

void EventProcesses::watchFolder()
{
    if (!m_watch)
        m_watch = std::make_unique<FolderWatch>(QFile::encodeName(folder()),
                                                [this](const auto &) { folderChanged(); });
}

void EventProcesses::folderChanged()
{
    if (m_keepsFolder && !m_watch->isWatching()) {
        makeEventFolder();
        m_watch->renew();
    }
    const auto isFound = [] {
        const std::lock_guard guard(own().mutex);
        return own().identifier == ::getpid() &&
               EventProcessRecord::isInPlace(own().lock.get(), own().record);
    };
    if (m_lost && !isFound()) {
        const auto lost = m_lost;
        lost();
    }
}

QList<EventProcesses::Known> EventProcesses::walk()
{
    QList<Known> found;
    const Descriptor folder = openEventFolder();
    if (!folder.isValid())
        return found;
    forEachEntryOf(folder.get(), [&](const QByteArray &name) {
        if (const auto process = EventProcessRecord::read(folder.get(), name))
            found.append({*process, name});
    });
    {
        const std::lock_guard guard(own().mutex);
        if (own().identifier == ::getpid())
            found.append({{own().identifier, ::geteuid(), own().signature}, own().record});
    }
    std::sort(found.begin(), found.end(),
              [](const Known &a, const Known &b) { return a.process.identifier < b.process.identifier; });
    const std::lock_guard guard(m_mutex);
    m_seen.clear();
    for (const Known &known : std::as_const(found))
        m_seen.insert(known.process.identifier, known);
    return found;
}

QList<AEProcesses::Process> EventProcesses::processes()
{
    QList<Process> running;
    for (const Known &known : walk())
        running.append(known.process);
    return running;
}

std::shared_ptr<NSSocketPort> EventProcesses::announce(OSType signature)
{
    const std::lock_guard guard(own().mutex);
    if (own().identifier == ::getpid())
        return nullptr;
    const Descriptor folder = makeEventFolder();
    if (!folder.isValid())
        return nullptr;
    EventProcessRecord::sweep(folder.get());
    const QByteArray name = EventProcessRecord::freshName(::getpid());
    Descriptor record(EventProcessRecord::create(folder.get(), name));
    const auto port = record.isValid() ? AnnouncedPort::make(name) : nullptr;
    if (!port || !EventProcessRecord::complete(record.get(), signature)) {
        ::unlinkat(folder.get(), EventProcessRecord::socketOf(name).constData(), 0);
        ::unlinkat(folder.get(), name.constData(), 0);
        return nullptr;
    }
    own().identifier = ::getpid();
    own().signature = signature;
    own().record = name;
    own().lock = std::move(record);
    port->setAnnounced();
    return port;
}

std::shared_ptr<NSSocketPort> EventProcesses::portOf(qint32 identifier, Process *found)
{
    const auto seen = [&]() -> std::optional<Known> {
        const std::lock_guard guard(m_mutex);
        const auto known = m_seen.constFind(identifier);
        return known == m_seen.cend() ? std::nullopt : std::optional<Known>(*known);
    };
    auto known = seen();
    const auto isStillThere = [&] {
        return known && !EventProcessRecord::isGone(identifier) &&
               QFile::exists(QFile::decodeName(socketPath(known->record)));
    };
    if (!isStillThere()) {
        walk();
        known = seen();
    }
    if (!known)
        return nullptr;
    *found = known->process;
    return ReachingPort::make(known->record);
}

template<>
std::shared_ptr<AEProcesses> &Port<AEProcesses>::current()
{
    static auto *const port = new std::shared_ptr<AEProcesses>(std::make_shared<EventProcesses>());
    return *port;
}

} // namespace dozely
