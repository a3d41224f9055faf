// SPDX-License-Identifier: MIT
#include "hosts/common/orders/OrderPermissions.h"

bool OrderPermissions::isSystem(UserId peer, UserId rootOwner)
{
    return peer && (*peer == 0 || peer == rootOwner);
}

bool OrderPermissions::mayTestAlert(UserId peer, UserId rootOwner, UserId agentsUser)
{
    return peer && (isSystem(peer, rootOwner) || peer == agentsUser);
}

bool OrderPermissions::mayRunNow(UserId peer, UserId rootOwner, UserId scheduleOwner)
{
    return peer && (isSystem(peer, rootOwner) || peer == scheduleOwner);
}

bool OrderPermissions::mayHandBack(UserId peer, UserId handedTo)
{
    return peer && peer == handedTo;
}

bool OrderPermissions::mayRemove(UserId peer, UserId rootOwner, UserId scheduleOwner, UserId alerted)
{
    return peer && (isSystem(peer, rootOwner) || peer == scheduleOwner || peer == alerted);
}
