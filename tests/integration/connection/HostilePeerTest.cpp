// SPDX-License-Identifier: MIT
//
// Whatever a peer does, the others are served.
#include "RawPeer.h"

#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "support/TestPort.h"
#include "support/WaitUntil.h"

#include <QRandomGenerator>
#include <QSocketNotifier>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <sys/resource.h>
#include <thread>

using namespace dozely;

using namespace std::chrono_literals;

class PongingObject : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE bool pong() { return true; }
    /// More than a socket holds.
    NS_REMOTE Q_INVOKABLE QByteArray data()
    {
        ++fetched;
        return QByteArray(300'000, 'x');
    }
    std::atomic<int> fetched = 0;
};

/// Counts how often the event loop of this thread finds the descriptor readable.
class Readiness : public QObject
{
public:
    explicit Readiness(int descriptor) : m_descriptor(descriptor) { qApp->installEventFilter(this); }
    bool eventFilter(QObject *target, QEvent *event) override
    {
        const auto *const notifier = qobject_cast<QSocketNotifier *>(target);
        if (notifier && event->type() == QEvent::SockAct && notifier->socket() == m_descriptor)
            ++count;
        return false;
    }
    int count = 0;

private:
    const int m_descriptor;
};

class HostilePeer : public testing::Test
{
protected:
    HostilePeer() { serve(guarded); }

    void serve(const StreamOptions &options)
    {
        server = NSConnection::initWithReceivePortSendPort(TestPort::server(path), nullptr, options);
        server->setRootObject(&root);
    }

    // The attack runs in a thread of its own while this thread serves.
    template<class Attack>
    void attack(Attack run)
    {
        std::atomic<bool> over = false;
        std::thread attacker([&] {
            run();
            over = true;
        });
        EXPECT_TRUE(waitUntil([&] { return over.load(); }, 60s));
        attacker.join();
    }

    // A well-behaved client in another thread; how long it took is not looked at, only that it was served.
    bool othersAreServed() const
    {
        std::atomic<int> answer = -1;
        std::thread client([&] {
            try {
                const auto connection =
                    NSConnection::initWithReceivePortSendPort(nullptr, TestPort::client(path), guarded);
                connection->setRequestTimeout(20s);
                connection->setReplyTimeout(20s);
                answer = connection->rootProxy()->invoke("pong").toBool();
            } catch (const NSException &) {
                answer = 0;
            }
        });
        waitUntil([&] { return answer >= 0; });
        client.join();
        return answer == 1;
    }

    QTemporaryDir folder{"/tmp/dz-XXXXXX"};
    QString path = folder.filePath("server");
    /// As against another user, of whom a test need not have one.
    const StreamOptions guarded{.trustsOwnUser = false};
    PongingObject root;
    std::shared_ptr<NSConnection> server;
};

TEST_F(HostilePeer, GarbageInsteadOfAHandshakeIsDropped)
{
    QByteArray noise(4096, '\0');
    for (char &byte : noise)
        byte = static_cast<char>(QRandomGenerator::global()->bounded(256));
    const QList<QByteArray> garbage{"GET / HTTP/1.0\r\n\r\n",
                                    noise,
                                    QByteArray(4096, '\0'),
                                    QByteArray(65536, '\xff'),
                                    QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray(200'000, '3'),
                                    QByteArray(1, '\0') + "AUTH ANONYMOUS\r\nBEGIN\r\n",
                                    QByteArray(1, '\0') + "AUTH EXTERNAL " +
                                        QByteArray("4294967294").toHex() + "\r\nBEGIN\r\n"};
    attack([&] {
        std::deque<RawPeer> peers;
        for (const QByteArray &bytes : garbage)
            peers.emplace_back(path).send(bytes);
        for (RawPeer &peer : peers)
            peer.waitForClose(); // ends only when the server closes
    });
    EXPECT_TRUE(othersAreServed());
}

TEST_F(HostilePeer, SilentPeersAreDroppedAfterTheAuthenticationLimitAndHinderNobody)
{
    RawPeer silent(path);
    RawPeer halfway(path);
    halfway.send(QByteArray(1, '\0') + "AUTH EXTERNAL ");
    EXPECT_TRUE(othersAreServed());
    attack([&] { silent.waitForClose(); });
    attack([&] { halfway.waitForClose(); });
    EXPECT_TRUE(othersAreServed());
}

TEST_F(HostilePeer, ASilentPeerThatCameWhileThisThreadWaitedForAReplyIsDropped)
{
    RawPeer silent(path);
    const auto connection =
        NSConnection::initWithReceivePortSendPort(nullptr, TestPort::client(path), guarded);
    EXPECT_EQ(connection->rootProxy()->invoke("pong"), QVariant(true)); // both were taken in meanwhile
    attack([&] { silent.waitForClose(); });
}

TEST_F(HostilePeer, APeerThatCallsWithoutReadingRepliesIsDropped)
{
    attack([&] {
        RawPeer peer(path);
        peer.authenticate();
        const QByteArray calls = RawPeer::call(0).repeated(100);
        while (peer.send(calls)) {
        }
    });
    EXPECT_TRUE(othersAreServed());
}

TEST_F(HostilePeer, WhoReadsNothingIsOwedSixtyFourRepliesAtMost)
{
    serve({}); // who is trusted may be owed any number of bytes
    attack([&] {
        RawPeer peer(path);
        peer.authenticate();
        peer.send(RawPeer::call(0, "data").repeated(100));
        const auto end = std::chrono::steady_clock::now() + 50s;
        while (!peer.isHungUp() && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
        EXPECT_TRUE(peer.isHungUp());
    });
    EXPECT_GE(root.fetched, 64);
    EXPECT_LE(root.fetched, 66);
}

TEST_F(HostilePeer, AFloodOfCallsLeavesRoomForOthers)
{
    std::atomic<bool> enough = false;
    RawPeer peer(path);
    std::thread reader;
    std::thread flooder([&] {
        peer.authenticate();
        reader = std::thread([&] { peer.waitForClose(); });
        const QByteArray calls = RawPeer::call(0).repeated(200);
        while (!enough && peer.send(calls)) {
        }
    });
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(othersAreServed());
    enough = true;
    std::atomic<bool> stopped = false;
    std::thread([&] {
        flooder.join();
        stopped = true;
    }).detach();
    EXPECT_TRUE(waitUntil([&] { return stopped.load(); }));
    server->invalidate();
    reader.join();
}

TEST_F(HostilePeer, AMessageBeyondTheLimitDropsItsSender)
{
    attack([&] {
        RawPeer peer(path);
        peer.authenticate();
        constexpr quint32 bytes = 8u << 20;
        QByteArray body(4, '\0');
        constexpr quint32 length = bytes - 4;
        std::memcpy(body.data(), &length, 4);
        peer.send(RawPeer::call(bytes));
        peer.send(body + QByteArray(length, 'x'));
        peer.waitForClose();
    });
    EXPECT_TRUE(othersAreServed());
}

TEST_F(HostilePeer, WhoAnnouncesAMessageBeyondTheLimitIsDroppedBeforeItComes)
{
    attack([&] {
        RawPeer peer(path);
        peer.authenticate();
        peer.send(RawPeer::call((4u << 20) + (64u << 10)));
        peer.waitForClose();
    });
    EXPECT_TRUE(othersAreServed());
}

TEST_F(HostilePeer, AnnouncementsInPiecesAreFoundOutAsWell)
{
    attack([&] {
        RawPeer peer(path);
        peer.authenticate();
        for (const char byte : RawPeer::call(0) + RawPeer::call(100u << 20))
            peer.send(QByteArray(1, byte));
        peer.waitForClose();
    });
    attack([&] { // together with the handshake, and in one piece with it
        RawPeer peer(path);
        peer.send(QByteArray(1, '\0') + "AUTH EXTERNAL\r\nDATA\r\nBEGIN\r\n" + RawPeer::call(0) +
                  RawPeer::call(100u << 20));
        peer.waitForClose();
    });
    EXPECT_TRUE(othersAreServed());
}

TEST_F(HostilePeer, AMessageThatNeverEndsHindersNobody)
{
    RawPeer peer(path);
    attack([&] {
        peer.authenticate();
        peer.send(RawPeer::call(4u << 20));
        peer.send(QByteArray(1 << 20, 'x'));
    });
    EXPECT_TRUE(othersAreServed());
}

TEST_F(HostilePeer, AMessageThatNeverEndsIsNotAllowedTheIdleLimitWheneverItBegins)
{
    serve({.idleLimit = 1h, .trustsOwnUser = false});
    attack([&] {
        RawPeer peer(path);
        peer.authenticate();
        EXPECT_TRUE(peer.isAnswered());
        RawPeer silent(path);
        silent.waitForClose(); // so late nothing but the idle limit of the other is to come
        peer.send(RawPeer::call(100u << 10) + QByteArray(10 << 10, 'x'));
        peer.waitForClose();
    });
}

TEST_F(HostilePeer, PiecesOfAMessageDoNotProlongTheIdleLimitAndRequestsDo)
{
    serve({.idleLimit = 1s, .trustsOwnUser = false});
    attack([&] {
        RawPeer asking(path); // for longer than the other, which it outlives
        asking.authenticate();
        EXPECT_TRUE(asking.isAnswered());
        RawPeer dribbling(path);
        dribbling.authenticate();
        dribbling.send(RawPeer::call(4u << 20));
        constexpr int manyTimesTheLimit = 2000;
        int pieces = 0;
        while (pieces < manyTimesTheLimit && !dribbling.closesWithin(5ms)) {
            dribbling.send("x");
            ++pieces;
            EXPECT_TRUE(asking.isAnswered());
        }
        EXPECT_LT(pieces, manyTimesTheLimit);
        EXPECT_TRUE(asking.isAnswered());
        asking.waitForClose(); // ends only when the server closes
    });
}

TEST_F(HostilePeer, AClaimBeyondWhatDBusAllowsDropsItsSender)
{
    attack([&] {
        RawPeer peer(path);
        peer.authenticate();
        peer.send(RawPeer::call(0xfffffff0u));
        peer.waitForClose();
    });
    EXPECT_TRUE(othersAreServed());
}

TEST_F(HostilePeer, TenThousandConnectsOfOneUserLeaveHimAndOthersServed)
{
    std::deque<std::unique_ptr<RawPeer>> peers;
    std::atomic<int> connects = 0;
    std::atomic<bool> isDecided = false;
    std::atomic<bool> over = false;
    std::thread attacker([&] {
        while (connects < 10'000 || !isDecided) {
            peers.push_back(std::make_unique<RawPeer>(path));
            if (peers.size() > 200)
                peers.pop_front();
            ++connects;
        }
        over = true;
    });
    EXPECT_TRUE(waitUntil([&] { return connects > 1000; }));
    // In the midst of it a client may lose its place before it has authenticated, and asks again.
    bool isServed = false;
    for (int attempt = 0; attempt < 20 && !isServed; ++attempt)
        isServed = othersAreServed();
    EXPECT_TRUE(isServed);
    isDecided = true;
    EXPECT_TRUE(waitUntil([&] { return over.load(); }, 60s));
    attacker.join();
    EXPECT_TRUE(othersAreServed()) << "while 200 peers are connected";
}

TEST_F(HostilePeer, BeyondSixtyFourStreamsOfAUserTheOldestSilentOneMakesRoom)
{
    attack([&] {
        RawPeer known(path);
        known.authenticate();
        EXPECT_TRUE(known.isAnswered());
        std::deque<RawPeer> silent;
        for (int i = 0; i < 63; ++i)
            silent.emplace_back(path);
        RawPeer late(path);
        late.authenticate();
        EXPECT_TRUE(late.isAnswered());
        EXPECT_TRUE(silent.front().isClosed());
        EXPECT_FALSE(silent.at(1).isClosed());
        EXPECT_FALSE(silent.back().isClosed());
        EXPECT_TRUE(known.isAnswered());
    });
}

TEST_F(HostilePeer, BeyondSixtyFourAuthenticatedStreamsAUserIsRefused)
{
    attack([&] {
        std::deque<RawPeer> known;
        for (int i = 0; i < 64; ++i) {
            known.emplace_back(path).authenticate();
            EXPECT_TRUE(known.back().isAnswered());
        }
        {
            RawPeer late(path);
            late.authenticate();
            EXPECT_FALSE(late.isAnswered());
        }
        for (RawPeer &peer : known)
            EXPECT_TRUE(peer.isAnswered());
    });
    // The server may accept another before it has seen that these are gone.
    EXPECT_TRUE(waitUntil([&] { return othersAreServed(); }));
}

TEST_F(HostilePeer, RunningOutOfDescriptorsPausesTheAcceptingAndPasses)
{
    // Served once before: the sanitizers look at types that they meet for the first time with descriptors of
    // their own.
    Readiness queue(server->receivePort()->listeningDescriptor());
    EXPECT_TRUE(othersAreServed());
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    std::deque<std::unique_ptr<RawPeer>> peers;
    // The peers are connected first; then no descriptor is left for the server's side of them.
    for (int i = 0; i < 20; ++i)
        peers.push_back(std::make_unique<RawPeer>(path));
    const int lowest = ::dup(0);
    ::close(lowest);
    const rlimit tight{static_cast<rlim_t>(lowest), before.rlim_max};
    queue.count = 0;
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &tight), 0);
    // The server finds its queue full and no descriptor free, again and again, but with pauses in between.
    EXPECT_TRUE(waitUntil([&] { return queue.count == 3; }));
    const auto elapsed = std::chrono::steady_clock::now() - start;
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_GE(elapsed, 2 * 50ms);
    peers.clear();
    EXPECT_TRUE(othersAreServed());
}

#include "HostilePeerTest.moc"
