// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/NSConnection.h"

#include "DozelyKit/communication/remoting/NSConnection_p.h"
#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/communication/remoting/RemoteCall_p.h"
#include "DozelyKit/core/dbus/ObjectPath_p.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"

#include <unordered_set>

using namespace dozely;

using std::chrono::milliseconds;
using Reply = MessageStream::Reply;

const QString NSConnectionDidInitializeNotification = QStringLiteral("NSConnectionDidInitializeNotification");
const QString NSConnectionDidDieNotification = QStringLiteral("NSConnectionDidDieNotification");

namespace
{
// The accepted connections of this thread, each as long as its stream is open.
std::unordered_set<std::shared_ptr<NSConnection>> &acceptedConnections()
{
    static thread_local std::unordered_set<std::shared_ptr<NSConnection>> connections;
    return connections;
}

thread_local const std::optional<NSConnection::Peer> *servedPeer = nullptr;

// Names the caller for as long as its request is served; requests nest.
class Serving
{
public:
    explicit Serving(const std::optional<NSConnection::Peer> &peer)
        : m_outer(std::exchange(servedPeer, &peer))
    {
    }
    ~Serving() { servedPeer = m_outer; }
    Serving(const Serving &) = delete;
    Serving &operator=(const Serving &) = delete;

private:
    const std::optional<NSConnection::Peer> *m_outer;
};

// Whatever an observer throws: streams come and go from event loops, which must not see it.
void post(const QString &name, NSConnection *connection)
{
    try {
        NSNotificationCenter::defaultCenter().postNotificationName(name, QVariant::fromValue(connection));
    } catch (...) {
    }
}

// Whatever the delegate throws: a stream is not taken in that nobody wanted.
bool isWelcome(QObject *judge, NSConnection *parent, NSConnection *child)
{
    bool welcome = true;
    try {
        QMetaObject::invokeMethod(judge, "connectionShouldMakeNewConnection", Qt::DirectConnection,
                                  Q_RETURN_ARG(bool, welcome), Q_ARG(NSConnection *, parent),
                                  Q_ARG(NSConnection *, child));
    } catch (...) {
        welcome = false;
    }
    return welcome;
}
} // namespace

// ---- vended objects

QByteArray Vended::pathOf(QObject *object)
{
    if (object == rootObject)
        return WireName::rootPath;
    for (auto it = m_objects.begin(); it != m_objects.end();) {
        if (it.value() == object)
            return it.key();
        it = it.value() ? std::next(it) : m_objects.erase(it);
    }
    QByteArray path = "/object/" + QByteArray::number(++m_last);
    m_objects.insert(path, object);
    return path;
}

QObject *Vended::objectAt(const QByteArray &path) const
{
    return path == WireName::rootPath ? rootObject.data() : m_objects.value(path).data();
}

QList<QByteArray> Vended::paths() const
{
    return m_objects.keys() << WireName::rootPath;
}

// ---- serving

Reply NSConnection::Private::serve(const MessageStream::Request &request)
{
    const auto keep = q->shared_from_this();
    const auto peer = stream->peer();
    const Serving serving(peer);
    const auto isFor = [&](const char *interface) {
        return request.interface.isEmpty() || request.interface == interface;
    };
    QObject *const object = vended->objectAt(request.path);
    if (request.member == "Introspect" && isFor(WireName::introspectableInterface))
        return {{}, {}, {RemoteCall::introspection(object, request.path, vended->paths())}};
    if (request.path == WireName::connectionPath && request.member == "rootObject" &&
        isFor(WireName::connectionInterface)) {
        if (!vended->rootObject)
            return Reply::error(WireName::noRootObject, QStringLiteral("nothing is vended here"));
        return {{}, {}, {QVariant::fromValue(ObjectPath{WireName::rootPath})}};
    }
    if (!object && request.path == WireName::connectionPath)
        return Reply::error(
            WireName::unknownMethod,
            QStringLiteral("the connection does not answer %1").arg(QString::fromUtf8(request.member)));
    if (!object)
        return Reply::error(WireName::unknownObject,
                            QStringLiteral("no object at %1").arg(QString::fromUtf8(request.path)));
    if (!isFor(WireName::objectInterface))
        return Reply::error(WireName::unknownMethod,
                            QStringLiteral("no interface %1").arg(QString::fromUtf8(request.interface)));
    return RemoteCall::invoke(object, request.member, request.arguments,
                              [this](QObject *returned) { return vended->pathOf(returned); });
}

void NSConnection::Private::streamClosed()
{
    q->invalidate();
}

void NSConnection::Private::listen()
{
    listener = std::make_unique<StreamListener>(
        *receivePort, [this](auto accepted) { adopt(std::move(accepted)); }, options);
    // Only the death of the listening port is the death of a server connection.
    receivePort->setInvalidationHandler([this] { q->invalidate(); });
}

void NSConnection::Private::adopt(std::shared_ptr<MessageStream> accepted)
{
    const std::shared_ptr<NSConnection> child(new NSConnection);
    child->d->vended = vended;
    child->d->stream = std::move(accepted);
    if (QObject *const judge = vended->delegate) {
        if (!isWelcome(judge, q, child.get()))
            return;
    }
    child->d->stream->setHandler(child->d.get());
    acceptedConnections().insert(child);
    post(NSConnectionDidInitializeNotification, child.get());
}

// ---- calling

MessageStream &NSConnection::Private::openStream()
{
    if (!valid || !sendPort)
        throw NSException(NSInvalidSendPortException, QStringLiteral("the connection is not valid"));
    if (!stream) {
        stream = MessageStream::open(*sendPort, requestTimeout, options);
        stream->setHandler(this);
    }
    return *stream;
}

QVariant NSConnection::Private::call(const QByteArray &path, const QByteArray &interface,
                                     const QByteArray &member, const QVariantList &arguments)
{
    const Reply reply = openStream().call({path, interface, member, arguments}, requestTimeout, replyTimeout);
    if (reply.errorName == WireName::exception) {
        // "name: reason", as the other side's exception said.
        const qsizetype colon = reply.errorText.indexOf(QLatin1StringView(": "));
        if (colon > 0)
            throw NSException(reply.errorText.left(colon), reply.errorText.mid(colon + 2));
    }
    if (!reply.errorName.isEmpty())
        throw NSException(reply.errorName == WireName::noRootObject
                              ? QString::fromLatin1(WireName::noRootObject)
                              : NSInvalidArgumentException,
                          reply.errorText);
    return reply.results.value(0);
}

// ---- the connection

NSConnection::NSConnection() : d(std::make_unique<Private>(this)) {}

NSConnection::~NSConnection()
{
    if (d->listener && d->valid)
        d->listener->acceptPending(); // they found the socket file while it was ours
    if (d->receivePort && d->listener)
        d->receivePort->setInvalidationHandler({});
    if (d->sendPort)
        d->sendPort->setInvalidationHandler({});
    if (d->stream)
        d->stream->setHandler(nullptr);
}

std::shared_ptr<NSConnection>
NSConnection::initWithReceivePortSendPort(std::shared_ptr<NSSocketPort> receivePort,
                                          std::shared_ptr<NSSocketPort> sendPort,
                                          const StreamOptions &options)
{
    if ((!receivePort && !sendPort) || (receivePort && !receivePort->isValid()) ||
        (sendPort && !sendPort->isValid()))
        return nullptr;
    std::shared_ptr<NSConnection> connection(new NSConnection);
    connection->d->options = options;
    connection->d->receivePort = std::move(receivePort);
    connection->d->sendPort = std::move(sendPort);
    if (connection->d->sendPort)
        connection->d->sendPort->setInvalidationHandler([c = connection.get()] { c->invalidate(); });
    else if (connection->d->receivePort->isServer())
        connection->d->listen();
    else
        return nullptr;
    post(NSConnectionDidInitializeNotification, connection.get());
    return connection;
}

std::shared_ptr<NSConnection>
NSConnection::connectionWithReceivePortSendPort(std::shared_ptr<NSSocketPort> receivePort,
                                                std::shared_ptr<NSSocketPort> sendPort)
{
    if (!sendPort || !sendPort->isValid())
        throw NSException(NSInvalidSendPortException, QStringLiteral("the send port is not valid"));
    if (receivePort && !receivePort->isValid())
        throw NSException(NSInvalidReceivePortException, QStringLiteral("the receive port is not valid"));
    return initWithReceivePortSendPort(std::move(receivePort), std::move(sendPort));
}

void NSConnection::setRootObject(QObject *object)
{
    d->vended->rootObject = object;
}

QObject *NSConnection::rootObject() const
{
    return d->vended->rootObject;
}

std::shared_ptr<NSDistantObject> NSConnection::rootProxy()
{
    return rootProxyToAsk({});
}

std::shared_ptr<NSDistantObject> NSConnection::rootProxyToAsk(const QByteArray &selector)
{
    if (!d->trustedPeers.isEmpty()) {
        const auto server = d->openStream().peer();
        if (!server || !d->trustedPeers.contains(server->userId))
            return nullptr;
    }
    try {
        if (!selector.isEmpty())
            d->openStream().anticipate({WireName::rootPath, WireName::objectInterface, selector, {}});
        const QVariant root =
            d->call(WireName::connectionPath, WireName::connectionInterface, "rootObject", {});
        if (!root.canConvert<ObjectPath>())
            return nullptr;
        return std::shared_ptr<NSDistantObject>(
            new NSDistantObject(shared_from_this(), root.value<ObjectPath>().path));
    } catch (const NSException &exception) {
        if (exception.name() == QLatin1StringView(WireName::noRootObject))
            return nullptr;
        throw;
    }
}

void NSConnection::setRequestTimeout(milliseconds limit)
{
    d->requestTimeout = limit;
}

milliseconds NSConnection::requestTimeout() const
{
    return d->requestTimeout;
}

void NSConnection::setReplyTimeout(milliseconds limit)
{
    d->replyTimeout = limit;
}

milliseconds NSConnection::replyTimeout() const
{
    return d->replyTimeout;
}

void NSConnection::setDelegate(QObject *delegate)
{
    d->vended->delegate = delegate;
}

QObject *NSConnection::delegate() const
{
    return d->vended->delegate;
}

void NSConnection::setPeerCheck(PeerCheck isWelcome)
{
    if (d->listener)
        d->listener->setPeerCheck(std::move(isWelcome));
}

void NSConnection::setTrustedPeers(const QList<quint32> &userIds)
{
    d->trustedPeers = userIds;
}

bool NSConnection::isValid() const
{
    return d->valid;
}

void NSConnection::invalidate()
{
    if (!d->valid)
        return;
    const auto keep = weak_from_this().lock();
    d->valid = false;
    if (d->listener) {
        d->listener.reset();
        d->receivePort->setInvalidationHandler({});
        d->receivePort->invalidate();
        for (const auto connections = acceptedConnections(); const auto &child : connections) {
            if (child->d->vended == d->vended)
                child->invalidate();
        }
    }
    if (d->stream) {
        d->stream->setHandler(nullptr);
        d->stream->close();
    }
    post(NSConnectionDidDieNotification, this);
    if (keep)
        acceptedConnections().erase(keep);
}

std::shared_ptr<NSSocketPort> NSConnection::receivePort() const
{
    return d->receivePort;
}

std::shared_ptr<NSSocketPort> NSConnection::sendPort() const
{
    return d->sendPort;
}

std::optional<NSConnection::Peer> NSConnection::remotePeer() const
{
    return d->stream ? d->stream->peer() : std::nullopt;
}

std::optional<NSConnection::Peer> NSConnection::currentPeer()
{
    return servedPeer ? *servedPeer : std::nullopt;
}
