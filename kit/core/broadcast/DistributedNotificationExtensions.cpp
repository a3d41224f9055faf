// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/DistributedNotificationExtensions.h"

void zandorSoftwaresExtensions::widePostNotification(NSDistributedNotificationCenter &center,
                                                     const NSNotification &notification)
{
    widePostNotificationName(center, notification.name(), notification.object().toString(),
                             notification.userInfo());
}

void zandorSoftwaresExtensions::widePostNotificationName(NSDistributedNotificationCenter &center,
                                                         const QString &name, const QString &object,
                                                         const QVariantMap &userInfo)
{
    if (center.respondsToSelector("postNotificationName"))
        center.postNotificationName(name, object, userInfo,
                                    NSDistributedNotificationDeliverImmediately |
                                        NSDistributedNotificationPostToAllSessions);
    else
        center.postNotificationNameDeliverImmediately(name, object, userInfo, true);
}
