// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/broadcast/NSDistributedNotificationCenter.h"

/// Posting to every login session at once. ANYBODY CAN POST, and everybody hears it: what is posted is no
/// secret, and what is heard is anybody's word (see NSDistributedNotificationCenter::currentSender).
namespace zandorSoftwaresExtensions
{
/// Posts the notification's name, object and user information to all sessions, to suspended observers, too.
DOZELYKIT_EXPORT void widePostNotification(NSDistributedNotificationCenter &center,
                                           const NSNotification &notification);

/// The same for a notification made of these parts. A centre that has no options posts it for immediate
/// delivery.
DOZELYKIT_EXPORT void widePostNotificationName(NSDistributedNotificationCenter &center, const QString &name,
                                               const QString &object, const QVariantMap &userInfo);
} // namespace zandorSoftwaresExtensions
