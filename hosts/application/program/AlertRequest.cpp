// SPDX-License-Identifier: MIT
#include "hosts/application/program/AlertRequest.h"

#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"

using namespace dozely;

AlertRequest::AlertRequest(quint32 user) : m_user(user) {}

AlertRequest::~AlertRequest()
{
    if (m_thread)
        m_thread->wait();
}

void AlertRequest::send(const std::function<void(bool)> &answer)
{
    if (m_thread)
        return;
    const auto isTaken = std::make_shared<bool>(false);
    m_thread.reset(QThread::create([isTaken, user = m_user] {
        const NSNotification order(OrderName::userAgentMustTestAlert, QString(OrderSender::application), {});
        *isTaken = GuardedPosting::postToAgentOfUser(order, user);
    }));
    connect(
        m_thread.get(), &QThread::finished, this,
        [this, isTaken, answer] {
            m_thread->wait();
            m_thread.release()->deleteLater();
            answer(*isTaken);
        },
        Qt::QueuedConnection);
    m_thread->start();
}
