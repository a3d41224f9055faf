// SPDX-License-Identifier: MIT
#include "hosts/agent/AgentOrder.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/OrderReceiver.h"

using namespace dozely;

Result<AgentOrder> AgentOrder::in(const ReceivedOrder &received)
{
    if (!OrderPermissions::isSystem(received.peer, RootFolder::owner()))
        return Error{
            QString("it comes from %1, not from the daemon")
                .arg(received.peer ? QString("user %1").arg(*received.peer) : QString("an unknown user"))};
    const QVariant path = received.userInfo.value(OrderKey::bundlePath);
    const QVariant date = received.userInfo.value(OrderKey::date);
    const QVariant parameters = received.userInfo.value(OrderKey::parameters);
    if (date.typeId() != QMetaType::QDateTime || !date.toDateTime().isValid())
        return Error{"it names no date"};
    if (path.typeId() != QMetaType::QString)
        return Error{"it names no bundle"};
    // Without them the action would be another one than was meant.
    if (parameters.isValid() && parameters.typeId() != QMetaType::QVariantMap)
        return Error{"its parameters are no dictionary"};
    return AgentOrder{path.toString(),
                      date.toDateTime(),
                      parameters.toMap(),
                      received.userInfo.value(OrderKey::scheduleName).toString(),
                      received.userInfo.value(OrderKey::scheduleIdentifier).toString(),
                      received.userInfo.value(OrderKey::skipsOverlap).toBool()};
}
