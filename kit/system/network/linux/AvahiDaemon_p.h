// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusService.h"

#include <QObject>

#include <vector>

namespace dozely
{

/// The connection to the machine's Avahi daemon, which all publications and resolutions of this process
/// share: it tells them when the daemon is ready to serve them and when it no longer is. A daemon or a bus
/// that is away is waited for; each such time costs one line.
///
/// THREADING: the main thread.
class AvahiDaemon
{
public:
    /// Who wants the daemon. Both operations come from the event loop; they may add and remove users.
    class User
    {
    public:
        virtual ~User() = default;
        /// The daemon serves; nothing that it made before is left.
        virtual void daemonIsReady() = 0;
        /// What the daemon made is gone, or will be made anew. `isAway`: the daemon is not there, as `text`
        /// says.
        virtual void daemonIsNotReady(bool isAway, const QString &text) = 0;
    };

    AvahiDaemon();
    ~AvahiDaemon();
    AvahiDaemon(const AvahiDaemon &) = delete;
    AvahiDaemon &operator=(const AvahiDaemon &) = delete;

    /// From now on the user is told; what is so already, it is told soon. It must be removed before it is
    /// destroyed.
    void add(User &user);
    void remove(User &user);

    /// Calls an operation of an object of the daemon; see BusConnection::callLater. The handler is not called
    /// when there is no bus.
    void call(const QByteArray &path, const QByteArray &interface, const QByteArray &name,
              const QByteArray &signature, const QVariantList &arguments,
              BusConnection::ReplyHandler handler);

    /// Lets go of an object that the daemon made; the path may be empty.
    void free(const QByteArray &path, const QByteArray &interface);

    /// Hears what objects of that interface tell; null when there is no bus.
    std::unique_ptr<BusConnection::Subscription> subscribe(const QByteArray &interface,
                                                           BusConnection::SignalHandler handler);

private:
    enum class State { Unknown, Away, Starting, Ready };

    void busIsOpen();
    void isThere();
    void isAway(BusService::Absence why, const QString &text);
    void askForState();
    void stateChanged(int state);
    void become(State state, const QString &text = {});
    void tell(User &user);
    void tellNewUsers();

    std::vector<User *> m_users;
    std::vector<User *> m_newUsers; ///< Those of them that have not been told anything yet.
    BusService m_service;
    std::unique_ptr<BusConnection::Subscription> m_states;
    QObject m_context; ///< Of what is to happen later.
    bool m_isUsed = false;
    State m_state = State::Unknown;
    QString m_text;
};

} // namespace dozely
