// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QList>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class NSDistantObject;
class NSSocketPort;

/// Marks an invokable that other processes may call: `NS_REMOTE Q_INVOKABLE bool pong();`. What is not
/// marked, the slots of QObject among them, cannot be reached through a connection.
#ifndef Q_MOC_RUN
#define NS_REMOTE
#endif

/// Posted to the default NSNotificationCenter with the connection (NSConnection *) as object.
DOZELYKIT_EXPORT extern const QString NSConnectionDidInitializeNotification;
DOZELYKIT_EXPORT extern const QString NSConnectionDidDieNotification;

namespace dozely
{

/// What the streams of a connection allow their peers; the defaults are what docs/wire-protocol.md promises.
struct StreamOptions {
    /// A peer that makes no request for so long is dropped; counted from its authentication or the end of its
    /// last request, so that pieces of a message do not prolong it.
    std::chrono::milliseconds idleLimit = std::chrono::minutes(5);

    /// Whether root's processes and our own user's may send more than strangers: they can harm this process
    /// without that.
    bool trustsOwnUser = true;
};

} // namespace dozely

/// One end of the channel between two processes, over NSSocketPort streams.
///
/// A server connection vends its root object to whoever connects to its receive port. A client connection
/// opens one stream to its send port at first use; its replies come back on that stream.
///
/// THREADING: a connection belongs to the thread that made it. Requests reach a server connection on that
/// thread, from its event loop or while the thread waits for a reply of its own; while it waits nothing else
/// runs, no timer and no interface event. BLOCKING: rootProxy and calls to proxies wait for the other
/// process, at most the request time-out plus the reply time-out. OWNERSHIP: root object and delegate are not
/// owned. Dropping a server connection without invalidating it stops the listening, and the streams that it
/// has are served until the last one closes.
///
/// EXAMPLE
///     auto connection = NSConnection::connectionWithReceivePortSendPort(nullptr, clientPort);
///     connection->setReplyTimeout(std::chrono::seconds(5));
///     if (auto root = connection->rootProxy())
///         bool alive = root->invoke("pong").toBool();
class DOZELYKIT_EXPORT NSConnection : public QObject, public std::enable_shared_from_this<NSConnection>
{
    Q_OBJECT
public:
    /// Who is at the other end of a stream, as the kernel told when it was opened.
    struct Peer {
        quint32 userId;
        qint32 processId;
    };

    /// A connection over these ports. Without a send port it is a server connection on `receivePort`; with
    /// one it is a client connection, whose receive port may be null. Null when a given port is not valid.
    static std::shared_ptr<NSConnection>
    initWithReceivePortSendPort(std::shared_ptr<NSSocketPort> receivePort,
                                std::shared_ptr<NSSocketPort> sendPort,
                                const dozely::StreamOptions &options = {});

    /// The same for a client; raises NSException when a given port is not valid.
    static std::shared_ptr<NSConnection>
    connectionWithReceivePortSendPort(std::shared_ptr<NSSocketPort> receivePort,
                                      std::shared_ptr<NSSocketPort> sendPort);

    ~NSConnection() override;

    /// The object whose NS_REMOTE invokables the other side may call. Not owned; forgotten when it is
    /// destroyed.
    void setRootObject(QObject *object);
    QObject *rootObject() const;

    /// A proxy to the other side's root object; connects first if need be. Null when the other side has no
    /// root object, or is served by nobody whom setTrustedPeers names. Raises NSException when it cannot be
    /// reached in time.
    std::shared_ptr<NSDistantObject> rootProxy();

    /// The same for a caller whose first request to it will be `selector`, without arguments: that travels
    /// along, and its answer is there when it is asked for.
    std::shared_ptr<NSDistantObject> rootProxyToAsk(const QByteArray &selector);

    /// How long a request may take to be handed over (connecting and identifying included), and how long its
    /// reply may take after that, before NSPortTimeoutException is raised. 60 s unless set.
    void setRequestTimeout(std::chrono::milliseconds limit);
    std::chrono::milliseconds requestTimeout() const;
    void setReplyTimeout(std::chrono::milliseconds limit);
    std::chrono::milliseconds replyTimeout() const;

    /// An object whose invokable `bool connectionShouldMakeNewConnection(NSConnection *parent, NSConnection
    /// *child)` is asked for each incoming stream; one that has none accepts all. Not owned.
    void setDelegate(QObject *delegate);
    QObject *delegate() const;

    /// Whether to take a stream from that peer.
    using PeerCheck = std::function<bool(const Peer &)>;

    /// Has a server connection ask for each incoming stream, before the delegate and before anything is read
    /// of it.
    void setPeerCheck(PeerCheck isWelcome);

    /// The users whose processes rootProxy accepts as servers; an empty list accepts any.
    void setTrustedPeers(const QList<quint32> &userIds);

    bool isValid() const;

    /// Closes streams and ports, and posts NSConnectionDidDieNotification. Calls that wait raise. Harmless
    /// when repeated.
    void invalidate();

    std::shared_ptr<NSSocketPort> receivePort() const;
    std::shared_ptr<NSSocketPort> sendPort() const;

    /// The server of a client connection's stream; absent before the first use and when it could not be read.
    std::optional<Peer> remotePeer() const;

    /// The caller of the request that this thread is serving now; absent when it serves none, or when the
    /// caller's identity could not be read. Authorise by user id, never by process id: those are used again.
    static std::optional<Peer> currentPeer();

private:
    friend class NSDistantObject;
    NSConnection();
    struct Private;
    std::unique_ptr<Private> d;
};
