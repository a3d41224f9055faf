// SPDX-License-Identifier: MIT
#include "hosts/common/orders/GuardedPosting.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/NSLock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/common/faults/ThrownBy.h"

namespace
{
WDCommunicationCenter &center()
{
    return *WDCommunicationCenter::sharedInstance();
}

bool guarded(const QString &target, const std::function<bool()> &post, const std::function<void()> &unlock)
{
    bool received = false;
    const auto thrown = thrownBy([&] { received = post(); });
    if (!thrown)
        return received;
    unlock();
    ZDRLog("The request to %@ failed: %@", target, *thrown);
    return false;
}
} // namespace

void GuardedPosting::giveBackAllLocks()
{
    center().unlockDaemonAccess();
    for (const quint32 userId : center().agentsLocks().keys())
        center().unlockAgentAccessForUser(userId);
    for (const quint32 userId : center().prefPanesLocks().keys())
        center().unlockPrefPaneAccessForUser(userId);
}

std::optional<QString> GuardedPosting::guardPlugIn(const std::function<void()> &operation)
{
    auto thrown = thrownBy(operation);
    if (thrown)
        giveBackAllLocks();
    return thrown;
}

bool GuardedPosting::guardDaemon(const std::function<bool()> &post)
{
    return guarded("the daemon", post, [] { center().unlockDaemonAccess(); });
}

bool GuardedPosting::guardAgentOfUser(quint32 userId, const std::function<bool()> &post)
{
    return guarded(QString("the agent of user %1").arg(userId), post,
                   [userId] { center().unlockAgentAccessForUser(userId); });
}

bool GuardedPosting::postToDaemon(const NSNotification &notification)
{
    return guardDaemon([&] { return center().postNotificationToDaemon(notification); });
}

bool GuardedPosting::postToAgentOfUser(const NSNotification &notification, quint32 userId)
{
    return guardAgentOfUser(userId,
                            [&] { return center().postNotificationToAgentOfUser(notification, userId); });
}
