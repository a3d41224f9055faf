// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/broadcast/DistributedNotifications.h"
#include "DozelyKit/core/broadcast/linux/DistributedMessage_p.h"
#include "DozelyKit/core/dbus/BusService.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <deque>
#include <map>

namespace dozely
{

/// Distributed notifications on one message bus: posts them, hears those of the wanted names, and asks the
/// bus who posted each. A bus that goes away is opened again.
class DistributedBus
{
public:
    using Handler = std::function<void(const DistributedNotifications::Posted &)>;

    /// `handler` gets what is heard, in the order in which the bus told it.
    DistributedBus(BusConnection::Bus bus, Handler handler);
    DistributedBus(const DistributedBus &) = delete;
    DistributedBus &operator=(const DistributedBus &) = delete;

    /// Hands the message to the bus and waits until the bus has it.
    Result<void> post(const DistributedMessage &message);

    /// Hears notifications of these names from now on, or of every name.
    void setNames(const QSet<QString> &names, bool everyName);

private:
    /// A notification whose poster is asked for, or comes after one.
    struct Waiting {
        QByteArray sender; ///< Its unique name on the bus.
        DistributedNotifications::Posted posted;
        qsizetype size;
        bool isKnown;
    };

    bool isWanted() const { return m_everyName || !m_names.isEmpty(); }
    Result<void> handOver(const DistributedMessage &message, const QDeadlineTimer &deadline);
    void busIsLost();
    void busIsThere();
    QString busName() const;
    void subscribe();
    std::unique_ptr<BusConnection::Subscription> hear(const QString &name, bool everything);
    void heard(const BusConnection::Signal &signal);
    void ask(const QByteArray &sender);
    void learn(const QByteArray &sender, const std::optional<quint32> &user);
    void deliver();

    Handler m_handler;
    const BusConnection::Bus m_kind;
    bool m_isDeaf = false; ///< It heard once, and wants to.
    BusService m_bus;      ///< The bus itself is the service.
    std::map<QString, std::unique_ptr<BusConnection::Subscription>> m_ofNames;
    std::unique_ptr<BusConnection::Subscription> m_ofEverything;
    bool m_hearsEverything = false; ///< Through that one; else through those of the names.
    QSet<QString> m_names;
    bool m_everyName = false;

    std::deque<Waiting> m_waiting;
    qsizetype m_waitingSize = 0;
    QHash<QByteArray, int> m_waitingOf; ///< How many of each sender.
    QSet<QByteArray> m_asked;
    QHash<QByteArray, quint32> m_users; ///< Of senders. The bus uses no unique name twice.
    std::deque<QByteArray> m_usersInOrder;
    QObject m_context; ///< Of what is to happen later.
};

} // namespace dozely
