// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/channel/SocketFolderWatch_p.h"
#include "DozelyKit/communication/channel/SocketFolder_p.h"
#include "DozelyKit/communication/channel/UnansweredPost_p.h"
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/NSLock.h"

#include <QPointer>

#include <mutex>
#include <vector>

/// The names of the processes that take part.
namespace ProcessName
{
inline const QString daemon = QStringLiteral("dozelyd");
inline const QString agent = QStringLiteral("Dozely Agent");
inline const QString prefPane = QStringLiteral("Dozely");

/// The name under which a user's process listens: "Dozely Agent.501". The number prints signed.
QString ofUser(const QString &name, quint32 userId);

/// Whether the daemon, or the agent or application of any user, listens under this name.
DOZELYKIT_AUTOTEST_EXPORT bool isListeners(const QString &name);
} // namespace ProcessName

/// How long a request may take to be handed over, and its reply after that.
constexpr std::chrono::milliseconds requestTimeout = std::chrono::seconds(5);
constexpr std::chrono::milliseconds replyTimeout = std::chrono::seconds(5);

/// How long one that nobody waits for may take, and how many of them may be under way.
/// @{
constexpr std::chrono::milliseconds unansweredLimit = std::chrono::seconds(10);
constexpr size_t mostUnanswered = 16;
/// @}

struct WDCommunicationCenter::Private {
    using UserLocks = QMap<quint32, std::shared_ptr<NSLock>>;

    QPointer<QObject> observer;
    std::shared_ptr<NSSocketPort> socketPort;
    std::shared_ptr<NSConnection> connection;
    std::shared_ptr<NSLock> daemonLock;
    UserLocks agentsLocks;
    UserLocks prefPanesLocks;
    std::unique_ptr<dozely::SocketFolderWatch> folderWatch;
    std::optional<dozely::SocketFolder::SocketIdentity> ownSocket; // absent while none is to be looked after
    int nextStep = 0;                                              // counts the steps that were planned
    std::vector<std::shared_ptr<dozely::UnansweredPost>> unanswered;
    std::mutex lockCreation; // held while a lock is looked up or made, never while one is waited for

    /// Has the centre check itself as soon as another thing is where it has published.
    void watchSocketFolder(WDCommunicationCenter *center);

    /// Has the centre do this after the delay, instead of what was planned before.
    void plan(WDCommunicationCenter *center, std::chrono::milliseconds delay,
              void (WDCommunicationCenter::*step)());

    /// The lock, made at its first use.
    std::shared_ptr<NSLock> theDaemonLock();
    std::shared_ptr<NSLock> lockOfUser(UserLocks &locks, quint32 userId);

    /// Releases the user's lock when there is one.
    void unlock(const UserLocks &locks, quint32 userId);
};
