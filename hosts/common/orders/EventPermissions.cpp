// SPDX-License-Identifier: MIT
#include "hosts/common/orders/EventPermissions.h"

bool EventPermissions::isSystem(UserId peer, UserId rootOwner)
{
    return peer && (*peer == 0 || peer == rootOwner);
}

bool EventPermissions::mayRunNow(UserId peer, UserId rootOwner, UserId scheduleOwner)
{
    return peer && (isSystem(peer, rootOwner) || peer == scheduleOwner);
}

bool EventPermissions::mayHandBack(UserId peer, UserId handedTo)
{
    return peer && peer == handedTo;
}

bool EventPermissions::mayRemove(UserId peer, UserId rootOwner, UserId scheduleOwner, UserId alerted)
{
    return peer && (isSystem(peer, rootOwner) || peer == scheduleOwner || peer == alerted);
}
