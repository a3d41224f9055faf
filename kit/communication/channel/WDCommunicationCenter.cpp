// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter_p.h"
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "DozelyKit/core/log/ZDRLog.h"

#include <QCoreApplication>

using namespace dozely;

namespace
{
constexpr std::chrono::milliseconds portRetryDelay = std::chrono::seconds(1);
constexpr std::chrono::milliseconds selfCheckInterval = std::chrono::seconds(10);
constexpr std::chrono::milliseconds republishDelay = std::chrono::milliseconds(100);

// The shared centre. One that sharedInstance makes belongs to the class and is never destroyed: other
// objects may still use it while the process ends. One that init makes belongs to the caller.
struct Shared {
    std::recursive_mutex creation;
    std::weak_ptr<WDCommunicationCenter> centre;
    std::shared_ptr<WDCommunicationCenter> owned;
};

Shared &shared()
{
    static auto &state = *new Shared;
    return state;
}

// What is looked after when something else was found where this process has just published.
constexpr SocketFolder::SocketIdentity noSocket;

QString socketPath(const QString &name)
{
    return ZDRUnixSocketPort::socketFolder() + '/' + name;
}

// A connection that listens on the port; null when there is no port, or nothing left to watch it with.
std::shared_ptr<NSConnection> serverConnection(const std::shared_ptr<NSSocketPort> &port)
{
    try {
        return port ? NSConnection::initWithReceivePortSendPort(port, nullptr) : nullptr;
    } catch (const NSException &) {
        return nullptr;
    }
}
} // namespace

WDCommunicationProtocol::~WDCommunicationProtocol() = default;

// ---- the shared centre

WDCommunicationCenter::WDCommunicationCenter() : d(std::make_unique<Private>())
{
    // Whatever thread asked first: timers and received notifications belong to the main one.
    if (const auto *application = QCoreApplication::instance())
        moveToThread(application->thread());
}

std::shared_ptr<WDCommunicationCenter> WDCommunicationCenter::sharedInstance()
{
    const std::lock_guard guard(shared().creation);
    if (auto existing = shared().centre.lock())
        return existing;
    shared().owned = init();
    return shared().owned;
}

std::shared_ptr<WDCommunicationCenter> WDCommunicationCenter::init()
{
    const std::lock_guard guard(shared().creation);
    if (!shared().centre.expired())
        return nullptr;
    std::shared_ptr<WDCommunicationCenter> centre(new WDCommunicationCenter);
    shared().centre = centre;
    return centre;
}

WDCommunicationCenter::~WDCommunicationCenter()
{
    // The last owner has gone, so there is no shared centre any more. Its own end is not a death to recover
    // from.
    NSNotificationCenter::defaultCenter().removeObserver(this);
    if (d->connection)
        d->connection->invalidate();
    NSLogText(QStringLiteral("-[WDCommunicationCenter dealloc]"));
}

// ---- fields

QObject *WDCommunicationCenter::observer() const
{
    return d->observer;
}

void WDCommunicationCenter::setObserver(QObject *observer)
{
    d->observer = observer;
}

std::shared_ptr<NSSocketPort> WDCommunicationCenter::socketPort() const
{
    return d->socketPort;
}

void WDCommunicationCenter::setSocketPort(std::shared_ptr<NSSocketPort> port)
{
    d->socketPort = std::move(port);
}

std::shared_ptr<NSConnection> WDCommunicationCenter::connection() const
{
    return d->connection;
}

void WDCommunicationCenter::setConnection(std::shared_ptr<NSConnection> connection)
{
    d->connection = std::move(connection);
}

std::shared_ptr<NSLock> WDCommunicationCenter::daemonLock() const
{
    const std::lock_guard guard(d->lockCreation);
    return d->daemonLock;
}

void WDCommunicationCenter::setDaemonLock(std::shared_ptr<NSLock> lock)
{
    d->daemonLock = std::move(lock);
}

QMap<quint32, std::shared_ptr<NSLock>> &WDCommunicationCenter::agentsLocks()
{
    return d->agentsLocks;
}

void WDCommunicationCenter::setAgentsLocks(const QMap<quint32, std::shared_ptr<NSLock>> &locks)
{
    d->agentsLocks = locks;
}

QMap<quint32, std::shared_ptr<NSLock>> &WDCommunicationCenter::prefPanesLocks()
{
    return d->prefPanesLocks;
}

void WDCommunicationCenter::setPrefPanesLocks(const QMap<quint32, std::shared_ptr<NSLock>> &locks)
{
    d->prefPanesLocks = locks;
}

// ---- publishing

QString WDCommunicationCenter::portName() const
{
    const QString processName = NSProcessInfo::processName();
    if (zandorSoftwaresExtensions::contains(processName, ProcessName::daemon))
        return ProcessName::daemon;
    return ProcessName::ofUser(processName, NSProcessInfo::effectiveUserID());
}

std::shared_ptr<NSSocketPort> WDCommunicationCenter::serverUnixSocketPortWithName(const QString &name) const
{
    return name.isEmpty() ? nullptr : ZDRUnixSocketPort::initAsServerWithName(name);
}

std::shared_ptr<NSSocketPort> WDCommunicationCenter::clientUnixSocketPortWithName(const QString &name) const
{
    return name.isEmpty() ? nullptr : ZDRUnixSocketPort::initAsClientWithName(name);
}

void WDCommunicationCenter::createServerConnection()
{
    if (!d->observer)
        return;
    d->ownSocket.reset();
    d->watchSocketFolder(this);
    d->socketPort = serverUnixSocketPortWithName(portName());
    d->watchSocketFolder(this); // again: the port may have been the first use, which makes the folder
    auto connection = serverConnection(d->socketPort);
    if (!connection) {
        d->plan(this, portRetryDelay, &WDCommunicationCenter::createServerConnection);
        return;
    }
    d->connection = std::move(connection);
    d->connection->setRootObject(d->observer);
    d->connection->setDelegate(this);
    d->connection->setRequestTimeout(requestTimeout);
    d->connection->setReplyTimeout(replyTimeout);

    auto &center = NSNotificationCenter::defaultCenter();
    const auto object = QVariant::fromValue(d->connection.get());
    center.addObserver(this, "clientHasConnected", NSConnectionDidInitializeNotification, object);
    center.addObserver(this, "connectionHasDied", NSConnectionDidDieNotification, object);
    // A superseded connection keeps its observations while it lives; later its address may be another one's.
    connect(d->connection.get(), &QObject::destroyed, this,
            [this, object] { NSNotificationCenter::defaultCenter().removeObserver(this, {}, object); });

    d->ownSocket = SocketFolder::socketAt(socketPath(portName())).value_or(noSocket);
    d->plan(this, selfCheckInterval, &WDCommunicationCenter::checkServerConnection);
}

// Who takes the socket file away a thousand times a second has it looked at ten times: the watch calls no
// more often, and until it is published anew there is none to look at.
void WDCommunicationCenter::Private::watchSocketFolder(WDCommunicationCenter *center)
{
    if (folderWatch)
        return folderWatch->renew();
    folderWatch = SocketFolderWatch::make([this, center] {
        if (ownSocket && SocketFolder::socketAt(socketPath(center->portName())) != ownSocket)
            center->checkServerConnection();
    });
}

void WDCommunicationCenter::Private::plan(WDCommunicationCenter *center, std::chrono::milliseconds delay,
                                          void (WDCommunicationCenter::*step)())
{
    const int number = ++nextStep;
    Port<Clock>::current()->callAfter(delay, center, [this, center, step, number] {
        if (number == nextStep)
            (center->*step)();
    });
}

void WDCommunicationCenter::checkServerConnection()
{
    d->watchSocketFolder(this);
    const QString processName = NSProcessInfo::processName();
    bool reachable = false;
    if (processName == ProcessName::agent)
        reachable = pingAgentOfUser(NSProcessInfo::effectiveUserID());
    else if (processName == ProcessName::prefPane)
        reachable = pingPrefPaneOfUser(NSProcessInfo::effectiveUserID());
    else
        reachable = pingDaemon();

    if (reachable) {
        d->plan(this, selfCheckInterval, &WDCommunicationCenter::checkServerConnection);
    } else {
        d->ownSocket.reset(); // it is being replaced: what happens to it is of no interest any more
        d->plan(this, republishDelay, &WDCommunicationCenter::createServerConnection);
    }
}

void WDCommunicationCenter::clientHasConnected(const NSNotification &) {}

void WDCommunicationCenter::connectionHasDied(const NSNotification &notification)
{
    const auto *dead = notification.object().value<QObject *>();
    if (!dead || dead != d->connection.get())
        return;
    ZDRLog("-[WDCommunicationCenter connectionHasDied:]");
    auto &center = NSNotificationCenter::defaultCenter();
    center.removeObserver(this, NSConnectionDidInitializeNotification, notification.object());
    center.removeObserver(this, NSConnectionDidDieNotification, notification.object());
    d->connection->invalidate();
    d->connection.reset();
    d->socketPort.reset();
    QMetaObject::invokeMethod(this, &WDCommunicationCenter::createServerConnection, Qt::QueuedConnection);
}

bool WDCommunicationCenter::connectionShouldMakeNewConnection(NSConnection *, NSConnection *)
{
    return true;
}
