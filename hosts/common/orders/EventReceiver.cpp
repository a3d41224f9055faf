// SPDX-License-Identifier: MIT
#include "hosts/common/orders/EventReceiver.h"

#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"

EventReceiver::EventReceiver(QObject *context, Handler handler)
    : m_context(context), m_handler(std::move(handler))
{
}

void EventReceiver::receive(const QString &name, const QString &sender, QObject *context, Handler handler)
{
    const std::shared_ptr<EventReceiver> receiver(new EventReceiver(context, std::move(handler)));
    WDNotificationCenter::defaultCenter()->addObserver(receiver, "receiveNotification", name, sender);
}

void EventReceiver::receiveNotification(const NSNotification &notification)
{
    if (!m_context)
        return;
    ReceivedEvent event{notification.name(), notification.userInfo(), {}};
    if (const auto peer = NSConnection::currentPeer())
        event.peer = peer->userId;
    QMetaObject::invokeMethod(
        m_context, [this, event] { m_handler(event); }, Qt::QueuedConnection);
}
