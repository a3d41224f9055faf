// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusService.h"

#include <QStringList>

namespace dozely
{

/// The desktop's notification server: whoever owns org.freedesktop.Notifications on the session bus.
///
/// Everything is addressed to one server, by its unique name, and heard from that one alone. When the name
/// passes to another, or to nobody, the ids of the old one mean nothing any more: `lost` says so, and answers
/// and signals of the old one are not heard.
///
/// Nothing happens until `need` is called: a process that never shows an alert opens no connection.
/// THREADING: the main thread. BLOCKING: never.
class UserNotificationServer
{
public:
    struct Content {
        QString title;
        QString text;        ///< Plain.
        QString actionLabel; ///< Of the action "cancel", the only one ever offered; without a label none is.
        QString soundName = {}; ///< Of the desktop's sound theme; empty for what the server does by itself.
    };

    /// Called from the event loop, `absent` from within `need` too. A handler may call anything.
    struct Handlers {
        std::function<void()> ready;                    ///< After `need`: notify may be called.
        std::function<void(const QString &why)> absent; ///< Instead of `ready`.
        std::function<void()> lost; ///< A server that was there has ended or been replaced.
        std::function<void(quint32 id)> closed;
        std::function<void(quint32 id)> cancelled; ///< The action was invoked.
    };
    /// The id that the server gave.
    using NotifyHandler = std::function<void(const Result<quint32> &id)>;

    explicit UserNotificationServer(Handlers handlers);
    ~UserNotificationServer();
    UserNotificationServer(const UserNotificationServer &) = delete;
    UserNotificationServer &operator=(const UserNotificationServer &) = delete;

    bool isReady() const { return m_isReady; }

    /// Finds the server, lets the bus start it when it does not run, and reads what it can do. For a server
    /// that is not ready; harmless while it is on its way.
    void need();

    /// Shows an alert, instead of that with the id `replaced` unless this is 0. `handler` is not called when
    /// the server is lost before it answers.
    void notify(const Content &content, quint32 replaced, NotifyHandler handler);

    enum class Failures { Told, Ignored };
    /// Takes the alert away.
    void close(quint32 id, Failures failures);

private:
    void isThere();
    void isAway(BusService::Absence why, const QString &text);
    void forgetServer();
    void serverIsLost();
    void start();
    void readCapabilities();
    void capabilitiesHaveCome(const BusConnection::Reply &reply);
    void fail(const QString &why);
    void signalHasCome(const BusConnection::Signal &signal);
    void call(const QByteArray &method, const QByteArray &signature, const QVariantList &arguments,
              BusConnection::ReplyHandler handler);

    Handlers m_handlers;
    BusService m_service;
    std::unique_ptr<BusConnection::Subscription> m_signals; // of the present owner
    quint64 m_epoch = 0;                                    // counts owners
    QStringList m_capabilities;
    bool m_hasServer = false;
    bool m_isNeeded = false;
    bool m_isStarting = false;
    bool m_isAsked = false; // for its capabilities
    bool m_isReady = false;
    bool m_hasToldMissingActions = false;
};

} // namespace dozely
