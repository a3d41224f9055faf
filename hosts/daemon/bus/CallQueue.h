// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusCall.h"
#include "hosts/daemon/bus/BusCaller.h"

#include <QHash>
#include <QObject>

#include <chrono>
#include <deque>
#include <functional>

namespace dozely
{
class BusConnection;
class Clock;
} // namespace dozely

/// Calls until it is their turn. Finds out whose each is, by asking the bus, and hands them on one a turn of
/// the event loop: the users take turns, and a user whose call took a while waits three times as long before
/// his next one. So whoever floods the daemon keeps others waiting for one call of his, and the daemon busy
/// for a quarter of the time.
///
/// THREADING: the main thread.
class CallQueue : public QObject
{
    Q_OBJECT
public:
    /// Serves a call; false when it cannot be answered yet: then it, and whatever else that user wants, waits
    /// until `resume`.
    using Serve = std::function<bool(const BusCaller &caller, const dozely::BusCall &call,
                                     const QVariantList &arguments)>;

    /// So many calls of one user wait, and of all; one more is refused.
    /// @{
    static constexpr size_t mostOfAUser = 16;
    static constexpr size_t mostOfAll = 256;
    /// @}

    /// `clock` must outlive the object.
    CallQueue(dozely::Clock &clock, Serve serve);
    ~CallQueue() override;

    /// Takes a call that came by this connection.
    void add(dozely::BusConnection &bus, const dozely::BusCall &call, const QVariantList &arguments);

    /// What a user's call had to wait for is there.
    void resume(quint32 user);

    /// A user's call went on outside of its turn, and took so long.
    void charge(quint32 user, std::chrono::milliseconds duration);

    /// The bus is gone: so is everybody who called.
    void clear();

private:
    struct Waiting {
        dozely::BusCall call;
        QVariantList arguments;
    };
    struct User {
        std::deque<Waiting> calls;
        std::chrono::milliseconds notBefore{0}; // on the steady clock
        bool isSuspended = false;
    };
    void ask(dozely::BusConnection &bus, const QByteArray &sender);
    void answered(const QByteArray &sender, std::optional<quint32> user);
    void enqueue(quint32 user, const Waiting &waiting);
    void serveSoon();
    void serveOne();
    std::deque<quint32>::iterator nextUser();
    static void refuse(const dozely::BusCall &call);

    dozely::Clock &m_clock;
    Serve m_serve;
    QHash<QByteArray, quint32> m_users;               // of connections; a name is never given twice
    QHash<QByteArray, std::deque<Waiting>> m_unknown; // until the bus has said whose they are
    QHash<quint32, User> m_waiting;
    std::deque<quint32> m_turns; // users with calls, whose turn is next first
    size_t m_count = 0;          // of all calls here
    quint64 m_planned = 0;       // the latest plan to serve; earlier ones are void
};
