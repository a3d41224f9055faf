// SPDX-License-Identifier: MIT
#include "hosts/common/orders/OrderReceiver.h"

#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"

OrderReceiver::OrderReceiver(QObject *context, Handler handler, Moment moment)
    : m_context(context), m_handler(std::move(handler)), m_moment(moment)
{
}

void OrderReceiver::receive(const QString &name, const QString &sender, QObject *context, Handler handler)
{
    receive(name, sender, context, std::move(handler), Moment::FromEventLoop);
}

void OrderReceiver::receiveBeforeAnswer(const QString &name, const QString &sender, QObject *context,
                                        Handler handler)
{
    receive(name, sender, context, std::move(handler), Moment::BeforeAnswer);
}

void OrderReceiver::receive(const QString &name, const QString &sender, QObject *context, Handler handler,
                            Moment moment)
{
    const std::shared_ptr<OrderReceiver> receiver(new OrderReceiver(context, std::move(handler), moment));
    WDNotificationCenter::defaultCenter()->addObserver(receiver, "receiveNotification", name, sender);
}

void OrderReceiver::receiveNotification(const NSNotification &notification)
{
    if (!m_context)
        return;
    ReceivedOrder order{notification.name(), notification.userInfo(), {}};
    if (const auto peer = NSConnection::currentPeer())
        order.peer = peer->userId;
    if (m_moment == Moment::BeforeAnswer) {
        m_handler(order);
        return;
    }
    QMetaObject::invokeMethod(
        m_context, [this, order] { m_handler(order); }, Qt::QueuedConnection);
}
