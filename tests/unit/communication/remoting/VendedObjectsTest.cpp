// SPDX-License-Identifier: MIT
//
// What a server answers for its objects, and what is left of streams and objects when they go.
#include "ConnectionFixture.h"

#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <vector>

using namespace dozely;

using namespace std::chrono_literals;

/// A root object whose child is another one each time that it is asked for.
class Parent : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE QObject *newChild()
    {
        child = std::make_unique<Child>();
        return child.get();
    }
    NS_REMOTE Q_INVOKABLE int generation() { return 1; }

    std::unique_ptr<Child> child;
};

class GrandParent : public Parent
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE int generation() { return 2; }
};

/// Remembers the streams that came in.
class Doorkeeper : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE bool connectionShouldMakeNewConnection(NSConnection *, NSConnection *newcomer)
    {
        newcomers += newcomer->weak_from_this();
        return true;
    }
    QList<std::weak_ptr<NSConnection>> newcomers;
};

class VendedObjects : public ConnectionTest
{
protected:
    std::shared_ptr<MessageStream> openStream() const
    {
        return MessageStream::open(*TestPort::client(path), 20s);
    }
    static MessageStream::Reply call(MessageStream &stream, const QByteArray &at, const QByteArray &interface,
                                     const QByteArray &member)
    {
        return stream.call({at, interface, member, {}}, 20s, 20s);
    }
};

TEST_F(VendedObjects, AnswerWhoeverLeavesTheInterfaceOut)
{
    const auto stream = openStream();
    EXPECT_EQ(call(*stream, "/root", "", "pong").results, QVariantList{true});
    EXPECT_EQ(call(*stream, "/root", "", "Introspect").errorName, QByteArray());
    EXPECT_EQ(call(*stream, "/", "", "rootObject").errorName, QByteArray());
}

TEST_F(VendedObjects, AnswerInTheirOwnInterfaceAlone)
{
    const auto stream = openStream();
    const QByteArray unknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";
    EXPECT_EQ(call(*stream, "/root", "com.example.Other", "pong").errorName, unknownMethod);
    EXPECT_EQ(call(*stream, "/root", "com.dozely.Object", "Introspect").errorName, unknownMethod);
    EXPECT_EQ(call(*stream, "/root", "com.dozely.Connection", "rootObject").errorName, unknownMethod);
    EXPECT_EQ(call(*stream, "/", "com.dozely.Object", "rootObject").errorName, unknownMethod);
    EXPECT_EQ(call(*stream, "/", "com.dozely.Connection", "pong").errorName, unknownMethod);
    EXPECT_EQ(call(*stream, "/nowhere", "com.dozely.Object", "pong").errorName,
              QByteArray("org.freedesktop.DBus.Error.UnknownObject"));
    EXPECT_EQ(root->calls, 0);
}

TEST_F(VendedObjects, AreCalledByTheirMostDerivedClass)
{
    GrandParent derived;
    server->setRootObject(&derived);
    EXPECT_EQ(client()->rootProxy()->invoke("generation"), QVariant(2));
}

TEST_F(VendedObjects, ThatAreGoneAreNotReachedAndTheirPathsAreNobodysAfterwards)
{
    Parent parent;
    server->setRootObject(&parent);
    const auto proxy = client()->rootProxy();
    const auto first = NSDistantObject::asProxy(proxy->invoke("newChild"));
    EXPECT_EQ(first->invoke("answer"), QVariant(42));
    parent.child.reset();
    EXPECT_EQ(nameRaisedBy([&] { first->invoke("answer"); }), NSInvalidArgumentException);
    const auto second = NSDistantObject::asProxy(proxy->invoke("newChild"));
    EXPECT_NE(second->path(), first->path());
    EXPECT_EQ(second->invoke("answer"), QVariant(42));
    EXPECT_EQ(nameRaisedBy([&] { first->invoke("answer"); }), NSInvalidArgumentException);
    const auto stream = openStream();
    const QString text = call(*stream, "/object", "", "Introspect").results.value(0).toString();
    EXPECT_EQ(text.count("<node name="), 1) << qPrintable(text);
}

TEST_F(VendedObjects, KnowTheirCallerAgainAfterARequestWithinTheirs)
{
    const auto outer = client()->rootProxy();
    const auto inner = client()->rootProxy();
    root->onPong = [&] {
        EXPECT_EQ(inner->invoke("depth"), QVariant(1));
        return NSConnection::currentPeer().has_value();
    };
    EXPECT_EQ(outer->invoke("pong"), QVariant(true));
    EXPECT_FALSE(NSConnection::currentPeer());
}

TEST_F(VendedObjects, AreServedToWhoeverConnectedBeforeTheServerWent)
{
    const auto stream = openStream(); // and nobody has looked yet
    server.reset();
    EXPECT_EQ(call(*stream, "/root", "com.dozely.Object", "pong").results, QVariantList{true});
}

TEST_F(VendedObjects, AreWaitedForWhileTheQueueOfTheirServerIsFull)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray busy = folder.filePath("busy").toUtf8();
    std::memcpy(address.sun_path, busy.constData(), static_cast<size_t>(busy.size()));
    const auto *const place = reinterpret_cast<const sockaddr *>(&address);
    const auto makeSocket = [] { return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0)); };
    const Descriptor listening = makeSocket();
    ASSERT_EQ(::bind(listening.get(), place, sizeof address), 0);
    ASSERT_EQ(::listen(listening.get(), 1), 0);
    std::vector<Descriptor> waiting;
    do
        waiting.push_back(makeSocket());
    while (::connect(waiting.back().get(), place, sizeof address) == 0);
    ASSERT_EQ(errno, EAGAIN);
    const auto connection =
        NSConnection::connectionWithReceivePortSendPort(nullptr, TestPort::client(QFile::decodeName(busy)));
    connection->setRequestTimeout(20ms);
    EXPECT_EQ(nameRaisedBy([&] { connection->rootProxy(); }), NSPortTimeoutException);
}

TEST_F(VendedObjects, AreLeftByConnectionsThatGoWithTheirClients)
{
    Doorkeeper doorkeeper;
    server->setDelegate(&doorkeeper);
    EXPECT_EQ(client()->rootProxy()->invoke("pong"), QVariant(true));
    auto staying = client()->rootProxy();
    EXPECT_EQ(staying->invoke("pong"), QVariant(true));
    ASSERT_EQ(doorkeeper.newcomers.size(), 2);
    EXPECT_TRUE(waitUntil([&] { return doorkeeper.newcomers[0].expired(); }));
    EXPECT_FALSE(doorkeeper.newcomers[1].expired());
    server->invalidate();
    EXPECT_TRUE(waitUntil([&] { return doorkeeper.newcomers[1].expired(); }));
}

TEST_F(VendedObjects, AreToldOfAPortsEndOnceAndWhileItsDescriptorIsStillItsOwn)
{
    const auto port = TestPort::server(folder.filePath("dying"));
    const int descriptor = port->listeningDescriptor();
    int told = 0;
    port->setInvalidationHandler([&] {
        ++told;
        EXPECT_FALSE(port->isValid());
        EXPECT_EQ(port->listeningDescriptor(), descriptor);
        EXPECT_NE(::fcntl(descriptor, F_GETFD), -1);
    });
    port->invalidate();
    port->invalidate();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(::fcntl(descriptor, F_GETFD), -1);
}

TEST_F(VendedObjects, AreNoneOfAPortThatOutlivesItsConnection)
{
    const auto port = TestPort::client(path);
    NSConnection::connectionWithReceivePortSendPort(nullptr, port)->rootProxy();
    port->invalidate();
    EXPECT_FALSE(port->isValid());
    const auto listening = server->receivePort();
    server.reset();
    listening->invalidate();
    EXPECT_FALSE(listening->isValid());
}

#include "VendedObjectsTest.moc"
