// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/broadcast/DistributedNotifications.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>

namespace dozely
{

/// A distributed notification as the signal that carries it (docs/wire-protocol.md).
struct DOZELYKIT_AUTOTEST_EXPORT DistributedMessage {
    static constexpr char path[] = "/com/dozely/Notifications";
    static constexpr char interface[] = "com.dozely.DistributedNotifications";
    static constexpr char signalName[] = "Posted";

    /// Bytes of text and data, and eight for every value. Every process of the machine that listens decodes
    /// and holds what anybody posts.
    static constexpr qsizetype largest = 64 << 10;

    QByteArray signature;
    QVariantList arguments;

    /// The message for a notification; fails for one that cannot travel.
    static Result<DistributedMessage> from(const NSNotification &notification, bool deliverImmediately);

    /// The notification in the arguments of a signal, its sender's id apart; absent for what is none, or is
    /// too large.
    static std::optional<DistributedNotifications::Posted> read(const QVariantList &arguments);

    /// What a notification counts against `largest`; more than that when it is more.
    static qsizetype sizeOf(const NSNotification &notification);
};

} // namespace dozely
