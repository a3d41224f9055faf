// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter_p.h"
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "DozelyKit/core/log/ZDRLog.h"

#include <QCoreApplication>
#include <QThread>

#include <exception>

using namespace dozely;

// What the centre asks of other processes, and what it does for them.

namespace
{
constexpr std::chrono::milliseconds lockLimit = std::chrono::seconds(5);
constexpr quint32 rootUser = 0;

// What a root object is asked.
constexpr const char *pong = "pong";
constexpr const char *centre = "communicationCenter";

// What a root object answers.
NSProtocol rootObjectProtocol()
{
    return {"WDCommunicationProtocol", {{pong, "b"}, {centre, "o"}}};
}

// What another process's centre answers.
NSProtocol centerProtocol()
{
    return {"WDCommunicationCenter", {{"postNotification", "b"}}};
}

// Who may serve any name: root, and whom the relocated system belongs to.
QList<quint32> systemUsers()
{
    QList<quint32> users{rootUser};
    if (const auto owner = RootFolder::owner(); owner && *owner != rootUser)
        users += *owner;
    return users;
}

QList<quint32> systemUsersAnd(quint32 userId)
{
    return systemUsers() << userId;
}

// A typed proxy to the root object behind the port, whose replies come to `receivePort`; null, with the line
// in the log, when there is none. Raises NSException when the other side cannot be reached.
std::shared_ptr<NSDistantObject> rootProxyOf(WDCommunicationCenter *center,
                                             const std::shared_ptr<NSSocketPort> &receivePort,
                                             const std::shared_ptr<NSSocketPort> &clientPort,
                                             const QList<quint32> &trusted, const QByteArray &firstSelector,
                                             const char *failure)
{
    const auto connection = NSConnection::connectionWithReceivePortSendPort(receivePort, clientPort);
    connection->setRequestTimeout(requestTimeout);
    connection->setReplyTimeout(replyTimeout);
    connection->setDelegate(center);
    connection->setTrustedPeers(trusted);
    auto proxy = connection->rootProxyToAsk(firstSelector);
    if (!proxy)
        ZDRLog(failure);
    else
        proxy->setProtocolForProxy(rootObjectProtocol());
    return proxy;
}

bool answerToPing(const std::shared_ptr<NSDistantObject> &proxy)
{
    try {
        return proxy && proxy->invoke(pong).toBool();
    } catch (const NSException &) {
        return false;
    }
}

thread_local auto latestOutcome = WDCommunicationCenter::PostOutcome::NotSent;

// What becomes of a post, told when it is over: others may be made from within it.
class Outcome
{
public:
    Outcome() = default;
    ~Outcome() { latestOutcome = value; }
    Outcome(const Outcome &) = delete;
    Outcome &operator=(const Outcome &) = delete;

    WDCommunicationCenter::PostOutcome value = WDCommunicationCenter::PostOutcome::NotSent;
};

// Lets what the target raises pass.
bool answerToPost(const std::shared_ptr<NSDistantObject> &proxy, const NSNotification &notification,
                  Outcome &outcome)
{
    using enum WDCommunicationCenter::PostOutcome;
    if (!proxy)
        return false;
    const auto center = NSDistantObject::asProxy(proxy->invoke(centre));
    if (!center)
        return false;
    center->setProtocolForProxy(centerProtocol());
    outcome.value = Unknown;
    try {
        const bool answer = center->invoke("postNotification", {QVariant::fromValue(notification)}).toBool();
        outcome.value = Answered;
        return answer;
    } catch (const MessageStream::NotHandedOver &) {
        outcome.value = NotSent; // what is left of it goes with the connection
        throw;
    }
}
} // namespace

QString ProcessName::ofUser(const QString &name, quint32 userId)
{
    return stringWithFormat(QStringLiteral("%@.%d"), {name, userId});
}

bool ProcessName::isListeners(const QString &name)
{
    const qsizetype dot = name.lastIndexOf('.');
    const QString process = name.left(dot);
    bool isNumber = false;
    const int user = QStringView(name).mid(dot + 1).toInt(&isNumber);
    return name == daemon || ((process == agent || process == prefPane) && isNumber &&
                              name == ofUser(process, static_cast<quint32>(user)));
}

// ---- locks

std::shared_ptr<NSLock> WDCommunicationCenter::Private::theDaemonLock()
{
    const std::lock_guard guard(lockCreation);
    if (!daemonLock)
        daemonLock = std::make_shared<NSLock>();
    return daemonLock;
}

std::shared_ptr<NSLock> WDCommunicationCenter::Private::lockOfUser(UserLocks &locks, quint32 userId)
{
    const std::lock_guard guard(lockCreation);
    auto &lock = locks[userId];
    if (!lock)
        lock = std::make_shared<NSLock>();
    return lock;
}

void WDCommunicationCenter::Private::unlock(const UserLocks &locks, quint32 userId)
{
    const std::lock_guard guard(lockCreation);
    if (const auto lock = locks.value(userId))
        lock->unlock();
}

bool WDCommunicationCenter::lockDaemonAccess()
{
    return d->theDaemonLock()->lockBeforeDate(lockLimit);
}

void WDCommunicationCenter::unlockDaemonAccess()
{
    if (const auto lock = daemonLock())
        lock->unlock();
}

bool WDCommunicationCenter::lockAgentAccessForUser(quint32 userId)
{
    return d->lockOfUser(d->agentsLocks, userId)->lockBeforeDate(lockLimit);
}

void WDCommunicationCenter::unlockAgentAccessForUser(quint32 userId)
{
    d->unlock(d->agentsLocks, userId);
}

bool WDCommunicationCenter::lockPrefPaneAccessForUser(quint32 userId)
{
    return d->lockOfUser(d->prefPanesLocks, userId)->lockBeforeDate(lockLimit);
}

void WDCommunicationCenter::unlockPrefPaneAccessForUser(quint32 userId)
{
    d->unlock(d->prefPanesLocks, userId);
}

// ---- proxies

std::shared_ptr<NSDistantObject> WDCommunicationCenter::daemonObject(const QByteArray &firstSelector)
{
    try {
        const auto clientPort = clientUnixSocketPortWithName(ProcessName::daemon);
        if (!clientPort)
            return nullptr;
        return rootProxyOf(this, nullptr, clientPort, systemUsers(), firstSelector,
                           "Could NOT connect to Daemon");
    } catch (const NSException &) {
        return nullptr;
    }
}

std::shared_ptr<NSDistantObject> WDCommunicationCenter::agentObjectOfUser(quint32 userId,
                                                                          const QByteArray &firstSelector)
{
    try {
        const auto clientPort = clientUnixSocketPortWithName(ProcessName::ofUser(ProcessName::agent, userId));
        if (!clientPort)
            return nullptr;
        const auto replyPort = ZDRUnixSocketPort::port();
        if (!replyPort)
            return nullptr;
        return rootProxyOf(this, replyPort, clientPort, systemUsersAnd(userId), firstSelector,
                           "Could NOT connect to Agent");
    } catch (const NSException &) {
        return nullptr;
    }
}

std::shared_ptr<NSDistantObject> WDCommunicationCenter::prefPaneObjectOfUser(quint32 userId,
                                                                             const QByteArray &firstSelector)
{
    try {
        const auto clientPort =
            clientUnixSocketPortWithName(ProcessName::ofUser(ProcessName::prefPane, userId));
        if (!clientPort)
            return nullptr;
        return rootProxyOf(this, nullptr, clientPort, systemUsersAnd(userId), firstSelector,
                           "Could NOT connect to PrefPane");
    } catch (const NSException &) {
        return nullptr;
    }
}

// ---- requests

bool WDCommunicationCenter::pingDaemon()
{
    if (!d->observer || !lockDaemonAccess())
        return false;
    const bool answer = answerToPing(daemonObject(pong));
    unlockDaemonAccess();
    return answer;
}

bool WDCommunicationCenter::pingAgentOfUser(quint32 userId)
{
    if (!d->observer || !lockAgentAccessForUser(userId))
        return false;
    const bool answer = answerToPing(agentObjectOfUser(userId, pong));
    unlockAgentAccessForUser(userId);
    return answer;
}

bool WDCommunicationCenter::pingPrefPaneOfUser(quint32 userId)
{
    if (!d->observer || !lockPrefPaneAccessForUser(userId))
        return false;
    const bool answer = answerToPing(prefPaneObjectOfUser(userId, pong));
    unlockPrefPaneAccessForUser(userId);
    return answer;
}

// What a post raises passes, and the lock stays taken: hence no guard object that would release it.

WDCommunicationCenter::PostOutcome WDCommunicationCenter::lastPostOutcome()
{
    return latestOutcome;
}

bool WDCommunicationCenter::postNotificationToDaemon(const NSNotification &notification)
{
    Outcome outcome;
    if (!d->observer || !lockDaemonAccess())
        return false;
    const bool answer = answerToPost(daemonObject(centre), notification, outcome);
    unlockDaemonAccess();
    return answer;
}

bool WDCommunicationCenter::postNotificationToAgentOfUser(const NSNotification &notification, quint32 userId)
{
    Outcome outcome;
    if (!d->observer || !lockAgentAccessForUser(userId))
        return false;
    const bool answer = answerToPost(agentObjectOfUser(userId, centre), notification, outcome);
    unlockAgentAccessForUser(userId);
    return answer;
}

bool WDCommunicationCenter::postNotificationToPrefPaneOfUser(const NSNotification &notification,
                                                             quint32 userId)
{
    Outcome outcome;
    if (!d->observer || !lockPrefPaneAccessForUser(userId))
        return false;
    const bool answer = answerToPost(prefPaneObjectOfUser(userId, centre), notification, outcome);
    unlockPrefPaneAccessForUser(userId);
    return answer;
}

void WDCommunicationCenter::tellAgentOfUser(const NSNotification &notification, quint32 userId)
{
    auto &posts = d->unanswered;
    std::erase_if(posts, [](const auto &post) { return post->isOver(); });
    const auto port = d->observer && posts.size() < mostUnanswered
                          ? clientUnixSocketPortWithName(ProcessName::ofUser(ProcessName::agent, userId))
                          : nullptr;
    const auto post = port ? UnansweredPost::begin(*port, systemUsersAnd(userId), notification) : nullptr;
    if (!post)
        return;
    posts.push_back(post);
    Port<Clock>::current()->callAfter(unansweredLimit, this, [this, weak = std::weak_ptr(post)] {
        std::erase(d->unanswered, weak.lock());
    });
}

// ---- receiving

bool WDCommunicationCenter::postNotification(const NSNotification &notification)
{
    const NSNotification copy(notification.name(), notification.object(), notification.userInfo());
    if (thread() == QThread::currentThread()) {
        postNotificationOnMainThread(copy);
        return true;
    }
    // What an observer raises goes back to the sender, not into the main thread's event loop.
    std::exception_ptr raised;
    QMetaObject::invokeMethod(
        this,
        [this, &copy, &raised] {
            try {
                postNotificationOnMainThread(copy);
            } catch (...) {
                raised = std::current_exception();
            }
        },
        Qt::BlockingQueuedConnection);
    if (raised)
        std::rethrow_exception(raised);
    return true;
}

bool WDCommunicationCenter::postNotificationOnMainThread(const NSNotification &notification)
{
    WDNotificationCenter::defaultCenter()->postNotification(notification);
    return true;
}
