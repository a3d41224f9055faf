// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusService.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/linux/FolderWatch_p.h"

#include <algorithm>
#include <sys/stat.h>
#include <utility>

namespace dozely
{

namespace
{
constexpr std::chrono::seconds firstPause{1};
constexpr std::chrono::milliseconds longestPause{60'000};
constexpr std::chrono::milliseconds pauseForListening{50}; // between the socket file and its listener
} // namespace

BusService::BusService(BusConnection::Bus bus, const QByteArray &name, Handlers handlers)
    : m_kind(bus), m_name(name), m_handlers(std::move(handlers)), m_pause(firstPause)
{
}

BusService::~BusService() = default;

Result<void> BusService::open()
{
    if (m_bus)
        return {};
    m_socket = BusConnection::socketPath(m_kind);
    m_opened = socketFile();
    auto opened = BusConnection::open(m_kind);
    if (!opened) {
        retryLater();
        tellAbsence(Absence::NoBus, opened.error().text);
        return opened.error();
    }
    m_bus = *std::move(opened);
    m_watch.reset();
    m_bus->onDisconnected([this] { close(); });
    m_ownership = m_bus->watchOwner(m_name, [this](const QByteArray &owner) { ownerIs(owner); });
    if (m_handlers.opened)
        m_handlers.opened();
    return {};
}

void BusService::keepOpen(const std::shared_ptr<Clock> &clock)
{
    m_clock = clock;
    static_cast<void>(open()); // a failure has been told
}

void BusService::stopKeeping()
{
    m_clock.reset();
    m_watch.reset();
}

void BusService::close()
{
    if (!m_bus)
        return;
    m_ownership.reset();
    m_bus.reset();
    m_owner.reset();
    if (const auto now = socketFile(); now && now != m_opened)
        m_pause = pauseForListening; // another bus is in its place already
    retryLater();
    tellAbsence(Absence::BusLost);
}

std::unique_ptr<BusConnection::Subscription> BusService::subscribe(const QByteArray &path,
                                                                   const QByteArray &interface,
                                                                   const QByteArray &signalName,
                                                                   BusConnection::SignalHandler handler)
{
    return m_bus ? m_bus->subscribe({m_name, path, interface, signalName}, std::move(handler)) : nullptr;
}

void BusService::ownerIs(const QByteArray &owner)
{
    if (m_owner == owner)
        return;
    const bool wasThere = isThere();
    m_owner = owner;
    if (owner.isEmpty()) {
        tellAbsence(wasThere ? Absence::Ended : Absence::NotRunning);
        return;
    }
    m_pause = firstPause;
    if (m_handlers.isThere)
        m_handlers.isThere(owner);
}

void BusService::tellAbsence(Absence why, const QString &text)
{
    if (m_handlers.isAway)
        m_handlers.isAway(why, text);
}

void BusService::retryLater()
{
    if (!m_clock || std::exchange(m_isRetrying, true))
        return;
    watchSocket();
    retryAfter(m_pause);
    m_pause = std::min(m_pause * 2, longestPause);
}

void BusService::retryAfter(std::chrono::milliseconds pause)
{
    const int attempt = ++m_attempts;
    m_clock->callAfter(pause, &m_context, [this, attempt] {
        if (attempt != m_attempts)
            return;
        m_isRetrying = false;
        if (m_clock)
            keepOpen(m_clock);
    });
}

void BusService::watchSocket()
{
    if (m_watch)
        return m_watch->renew();
    const qsizetype slash = m_socket.lastIndexOf('/');
    if (slash <= 0)
        return;
    m_watch = std::make_unique<FolderWatch>(
        m_socket.left(slash), [this, name = m_socket.mid(slash + 1)](const FolderWatch::Change &change) {
            const bool mayBeBack = change.names.contains(name) || change.mayBeMore || change.isAnother;
            if (!mayBeBack || !m_clock || m_bus || !socketFile())
                return;
            m_pause = pauseForListening;
            retryAfter({}); // from there: what it calls may end the watch
        });
}

std::optional<BusService::SocketIdentity> BusService::socketFile() const
{
    struct stat status {
    };
    if (m_socket.isEmpty() || ::stat(m_socket.constData(), &status) != 0 || !S_ISSOCK(status.st_mode))
        return {};
    return SocketIdentity(status.st_dev, status.st_ino, status.st_ctim.tv_sec, status.st_ctim.tv_nsec);
}

} // namespace dozely
