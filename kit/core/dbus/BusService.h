// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <tuple>

namespace dozely
{

class Clock;
class FolderWatch;

/// A service of a message bus that comes and goes, as the bus itself may: opens the bus, follows who owns the
/// service's name there, and tells what changes.
///
/// One who keeps the bus open has it opened again when it is not there or was lost: after 1 s, then after 2,
/// 4, 8, ... and at most 60 s. Once the service has been there, the pauses begin at 1 s again. Where the
/// bus's socket is a file, the kernel tells when it is there again: then it is opened at once and, since it
/// may not listen yet, after 50, 100, 200 ms and so on. Nobody hears a word of attempts that fail, but
/// through `isAway`.
///
/// THREADING: one thread, which needs an event loop. BLOCKING: never.
class DOZELYKIT_EXPORT BusService
{
public:
    enum class Absence {
        NoBus,      ///< Nobody listens where the bus should be.
        BusLost,    ///< The bus has gone away, or was closed.
        NotRunning, ///< Nobody owned the name when the bus was opened; the bus may know how to start it.
        Ended,      ///< Its owner has gone, and nobody has followed it.
    };

    /// Called from the event loop; `opened` and `isAway` also from within `open`, `keepOpen` and `close`. A
    /// handler may call anything, but not destroy the service. Those that are not set are not called.
    struct Handlers {
        /// A bus was opened. What is heard there is subscribed to now, and calls may be made.
        std::function<void()> opened = {};
        /// The service is there, and `owner` is its unique name. Again for another owner, before which
        /// `isAway` is not called when the name passed directly from one to the other.
        std::function<void(const QByteArray &owner)> isThere = {};
        /// Of the reasons, NoBus alone has a text.
        std::function<void(Absence why, const QString &text)> isAway = {};
    };

    BusService(BusConnection::Bus bus, const QByteArray &name, Handlers handlers);
    ~BusService();
    BusService(const BusService &) = delete;
    BusService &operator=(const BusService &) = delete;

    /// Opens the bus unless it is open. On failure `isAway` has been called with the same text.
    Result<void> open();

    /// Opens the bus, and from now on opens it again; the pauses pass on `clock`.
    void keepOpen(const std::shared_ptr<Clock> &clock);

    /// A bus that is lost from now on stays so until `open`.
    void stopKeeping();

    /// Gives up a connection that has turned out to be of no use, as if it had been lost.
    void close();

    /// The connection; null when there is none.
    BusConnection *bus() const { return m_bus.get(); }

    /// The unique name of the owner, empty when there is none; absent until the bus has told it.
    const std::optional<QByteArray> &owner() const { return m_owner; }
    bool isThere() const { return m_owner && !m_owner->isEmpty(); }

    /// Hears signals of the service, whoever owns its name; empty fields stand for any. They end with the
    /// bus. Null when there is none.
    std::unique_ptr<BusConnection::Subscription> subscribe(const QByteArray &path,
                                                           const QByteArray &interface,
                                                           const QByteArray &signalName,
                                                           BusConnection::SignalHandler handler);

private:
    void ownerIs(const QByteArray &owner);
    void tellAbsence(Absence why, const QString &text = {});
    void retryLater();
    void retryAfter(std::chrono::milliseconds pause);
    void watchSocket();
    /// Which socket file there is now: device, inode and when it was made; absent when there is none.
    using SocketIdentity = std::tuple<quint64, quint64, qint64, qint64>;
    std::optional<SocketIdentity> socketFile() const;

    BusConnection::Bus m_kind;
    QByteArray m_name;
    Handlers m_handlers;
    std::shared_ptr<Clock> m_clock; ///< Null while nobody keeps the bus open.
    std::unique_ptr<BusConnection> m_bus;
    std::unique_ptr<BusConnection::Subscription> m_ownership;
    std::optional<QByteArray> m_owner;
    std::chrono::milliseconds m_pause;
    int m_attempts = 0; ///< That were planned; only the latest counts.
    bool m_isRetrying = false;
    QByteArray m_socket;                    ///< The path of the socket that is waited for.
    std::optional<SocketIdentity> m_opened; ///< The one that was opened.
    std::unique_ptr<FolderWatch> m_watch;   ///< Of its folder; null while nobody waits.
    QObject m_context;                      ///< Of the next attempt.
};

} // namespace dozely
