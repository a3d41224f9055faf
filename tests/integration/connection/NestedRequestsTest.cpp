// SPDX-License-Identifier: MIT
//
// Requests that take their time: they run an event loop, as a dialog does, wait for others, or throw.
#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "RawPeer.h"
#include "support/SignalProcess.h"
#include "support/TestPort.h"
#include "support/WaitUntil.h"

#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <functional>
#include <sys/wait.h>
#include <thread>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
class Dialogs : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE bool pong()
    {
        ++pongs;
        return !onPong || onPong();
    }
    /// Runs an event loop until answer() is called; afterwards none.
    NS_REMOTE Q_INVOKABLE bool ask()
    {
        ++asked;
        deepest = std::max<int>(deepest, ++open);
        if (!isAnswered) {
            QEventLoop loop;
            connect(this, &Dialogs::answered, &loop, &QEventLoop::quit);
            loop.exec();
        }
        --open;
        return true;
    }
    NS_REMOTE Q_INVOKABLE bool compute()
    {
        const auto end = std::chrono::steady_clock::now() + 5ms; // more than one turn takes
        while (std::chrono::steady_clock::now() < end) {
        }
        return true;
    }
    /// More than a socket holds.
    NS_REMOTE Q_INVOKABLE QByteArray data()
    {
        ++pongs;
        return QByteArray(900'000, 'x');
    }
    NS_REMOTE Q_INVOKABLE bool throwNumber() { throw 42; }

    Q_INVOKABLE void answer()
    {
        isAnswered = true;
        Q_EMIT answered();
    }
    Q_SIGNAL void answered();

    std::function<bool()> onPong;
    std::atomic<int> pongs = 0;
    std::atomic<int> asked = 0;
    std::atomic<int> open = 0;
    int deepest = 0;
    bool isAnswered = false;
};

class Thrower : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE bool connectionShouldMakeNewConnection(NSConnection *, NSConnection *)
    {
        ++asked;
        throw 42;
    }
    Q_INVOKABLE void hear(const NSNotification &)
    {
        ++asked;
        throw 42;
    }
    int asked = 0;
};

class NestedRequests : public testing::Test
{
protected:
    NestedRequests() { serve({.trustsOwnUser = false}); }

    void serve(const StreamOptions &options)
    {
        server = NSConnection::initWithReceivePortSendPort(TestPort::server(path), nullptr, options);
        server->setRootObject(&root);
    }

    /// Peers act in a thread of their own while this thread serves, within event loops too.
    template<class Actions>
    void meanwhile(Actions actions)
    {
        std::atomic<bool> over = false;
        std::thread peers([&] {
            actions();
            over = true;
        });
        EXPECT_TRUE(waitUntil([&] { return over.load(); }, 60s));
        peers.join();
    }

    /// From another thread.
    void answerDialogs() { QMetaObject::invokeMethod(&root, "answer", Qt::QueuedConnection); }

    static bool holdsSoon(const std::function<bool()> &condition)
    {
        const auto end = std::chrono::steady_clock::now() + 20s;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            std::this_thread::yield();
        }
        return true;
    }

    QTemporaryDir folder{"/tmp/dz-XXXXXX"};
    QString path = folder.filePath("server");
    Dialogs root;
    std::shared_ptr<NSConnection> server;
};
} // namespace

TEST_F(NestedRequests, DeadlinesHoldAndOthersAreServedWhileARequestRunsAnEventLoop)
{
    serve({.idleLimit = 300ms, .trustsOwnUser = false});
    meanwhile([&] {
        RawPeer asking(path);
        asking.introduce();
        asking.send(RawPeer::call(0, "ask"));
        EXPECT_TRUE(holdsSoon([&] { return root.open == 1; }));
        RawPeer silent(path);
        RawPeer idle(path);
        idle.introduce();
        RawPeer other(path);
        other.introduce();
        other.send(RawPeer::call(0));
        EXPECT_TRUE(other.waitForReplies(1));
        idle.waitForClose();
        silent.waitForClose(); // both end only when the server closes
        EXPECT_EQ(root.open, 1);
        answerDialogs();
        EXPECT_TRUE(asking.waitForReplies(1)) << "nobody is idle whose request is being served";
    });
}

TEST_F(NestedRequests, OthersAreServedWhenTheRequestThatRunsAnEventLoopCameInTheNextTurn)
{
    meanwhile([&] {
        std::deque<RawPeer> peers;
        for (int i = 0; i < 3; ++i) {
            peers.emplace_back(path).introduce();
            peers.back().send(RawPeer::call(0));
            EXPECT_TRUE(peers.back().waitForReplies(1));
        }
        peers[0].send(RawPeer::call(0, "compute")); // the rest is left for the next turn
        peers[1].send(RawPeer::call(0, "ask"));
        EXPECT_TRUE(holdsSoon([&] { return root.open == 1; }));
        peers[2].send(RawPeer::call(0));
        EXPECT_TRUE(peers[2].waitForReplies(2));
        EXPECT_EQ(root.open, 1);
        answerDialogs();
        EXPECT_TRUE(peers[1].waitForReplies(2));
    });
}

TEST_F(NestedRequests, TheRequestBehindOneThatRunsAnEventLoopIsServedWithinIt)
{
    meanwhile([&] {
        RawPeer peer(path);
        peer.introduce();
        peer.send(RawPeer::call(0, "ask") + RawPeer::call(0));
        EXPECT_TRUE(peer.waitForReplies(1));
        EXPECT_EQ(root.open, 1);
        EXPECT_EQ(root.pongs, 1);
        answerDialogs();
        EXPECT_TRUE(peer.waitForReplies(2));
    });
}

TEST_F(NestedRequests, OfWhoHasGoneBeforeThereWasAnAnswerAreNotServed)
{
    {
        RawPeer impatient(path);
        impatient.introduce();
        impatient.send(RawPeer::call(0));
    }
    meanwhile([&] {
        RawPeer other(path);
        other.introduce();
        other.send(RawPeer::call(0));
        EXPECT_TRUE(other.waitForReplies(1));
    });
    EXPECT_EQ(root.pongs, 1);
}

TEST_F(NestedRequests, AReplyDoesNotWaitForTheRequestBehindIt)
{
    meanwhile([&] {
        RawPeer peer(path);
        peer.introduce();
        peer.send(RawPeer::call(0) + RawPeer::call(0, "ask"));
        EXPECT_TRUE(peer.waitForReplies(1));
        EXPECT_TRUE(holdsSoon([&] { return root.open == 1; }));
        EXPECT_EQ(peer.replies(), 1);
        answerDialogs();
        EXPECT_TRUE(peer.waitForReplies(2));
    });
}

TEST_F(NestedRequests, AStreamIsNotIdleWhileItsFirstRequestIsServedAndItsSecondHasBeen)
{
    serve({.idleLimit = 300ms, .trustsOwnUser = false});
    meanwhile([&] {
        RawPeer asking(path);
        asking.introduce();
        asking.send(RawPeer::call(0, "ask"));
        EXPECT_TRUE(holdsSoon([&] { return root.open == 1; }));
        asking.send(RawPeer::call(0));
        EXPECT_TRUE(asking.waitForReplies(1)); // within the other
        RawPeer idle(path);
        idle.introduce();
        idle.waitForClose();
        EXPECT_FALSE(asking.isClosed());
        answerDialogs();
        EXPECT_TRUE(asking.waitForReplies(2));
        asking.waitForClose();
    });
}

TEST_F(NestedRequests, AStreamIsNotIdleWhileItsRequestWaitsForOthersToEnd)
{
    serve({.idleLimit = 300ms, .trustsOwnUser = false});
    meanwhile([&] {
        std::deque<RawPeer> asking;
        for (int i = 0; i < 9; ++i) {
            asking.emplace_back(path).introduce();
            asking.back().send(RawPeer::call(0, "ask"));
        }
        EXPECT_TRUE(holdsSoon([&] { return root.open == 8; }));
        RawPeer idle(path);
        idle.introduce();
        idle.waitForClose();
        for (RawPeer &peer : asking) {
            EXPECT_EQ(peer.replies(), 0);
            EXPECT_FALSE(peer.isClosed());
        }
        answerDialogs();
        for (RawPeer &peer : asking)
            EXPECT_TRUE(peer.waitForReplies(1));
    });
    EXPECT_EQ(root.deepest, 8);
}

TEST_F(NestedRequests, WhoWaitsForOthersToEndStillGetsWhatHeIsOwed)
{
    serve({.idleLimit = 300ms, .trustsOwnUser = false});
    meanwhile([&] {
        std::deque<RawPeer> asking;
        const auto ask = [&](int open) {
            asking.emplace_back(path).introduce();
            asking.back().send(RawPeer::call(0, "ask"));
            EXPECT_TRUE(holdsSoon([&] { return root.open == open; }));
        };
        for (int i = 1; i <= 7; ++i)
            ask(i);
        RawPeer peer(path);
        peer.introduce();
        peer.send(RawPeer::call(0, "data"));
        EXPECT_TRUE(holdsSoon([&] { return root.pongs == 1; }));
        ask(8);
        peer.send(RawPeer::call(0));
        RawPeer idle(path); // meanwhile it is found that this request has to wait
        idle.introduce();
        idle.waitForClose();
        EXPECT_TRUE(peer.waitForReplies(1));
        EXPECT_EQ(root.open, 8);
        EXPECT_EQ(root.pongs, 1);
        answerDialogs();
        EXPECT_TRUE(peer.waitForReplies(2));
    });
}

TEST_F(NestedRequests, NestEightDeepHoweverManyThereAreAndAllAreAnsweredInTheEnd)
{
    constexpr int streams = 40;
    constexpr int requests = 500;
    serve({.idleLimit = 300ms, .trustsOwnUser = false});
    meanwhile([&] {
        std::deque<RawPeer> asking;
        for (int i = 0; i < streams; ++i) {
            asking.emplace_back(path).introduce();
            EXPECT_TRUE(asking.back().send(RawPeer::call(0, "ask").repeated(requests)));
        }
        EXPECT_TRUE(holdsSoon([&] { return root.open == 8; }));
        RawPeer idle(path); // for so long we wait for a ninth
        idle.introduce();
        idle.waitForClose();
        EXPECT_EQ(root.open, 8);
        EXPECT_EQ(root.asked, 8);
        answerDialogs();
        const auto end = std::chrono::steady_clock::now() + 30s;
        int replies = 0;
        while (replies < streams * requests && std::chrono::steady_clock::now() < end) {
            replies = 0;
            for (RawPeer &peer : asking)
                replies += peer.replies();
        }
        EXPECT_EQ(replies, streams * requests);
    });
    EXPECT_EQ(root.asked, streams * requests);
    EXPECT_EQ(root.deepest, 8);
}

TEST_F(NestedRequests, OfOneStreamAreAllAnsweredHoweverManyComeAtOnce)
{
    meanwhile([&] {
        RawPeer peer(path);
        peer.introduce();
        peer.send(RawPeer::call(0).repeated(300));
        EXPECT_TRUE(peer.waitForReplies(300));
    });
    EXPECT_EQ(root.pongs, 300);
}

TEST_F(NestedRequests, GoOnWhateverARequestThrows)
{
    serve({.idleLimit = 300ms, .trustsOwnUser = false});
    meanwhile([&] {
        for (int i = 0; i < 300; ++i) {
            RawPeer peer(path);
            peer.introduce();
            peer.send(RawPeer::call(0, "throwNumber"));
            EXPECT_TRUE(peer.waitForReplies(1));
            EXPECT_TRUE(peer.lastReply().contains("com.dozely.Error.Exception"));
            peer.send(RawPeer::call(0));
            EXPECT_TRUE(peer.waitForReplies(2));
        }
        RawPeer idle(path); // deadlines hold
        idle.introduce();
        idle.waitForClose();
    });
    EXPECT_EQ(root.pongs, 300);
}

TEST_F(NestedRequests, GoOnWhateverTheDelegateThrows)
{
    Thrower delegate;
    server->setDelegate(&delegate);
    meanwhile([&] {
        for (int i = 0; i < 100; ++i) {
            RawPeer peer(path);
            peer.introduce();
            peer.waitForClose();
        }
    });
    EXPECT_EQ(delegate.asked, 100);
    server->setDelegate(nullptr);
    meanwhile([&] {
        RawPeer peer(path);
        peer.introduce();
        peer.send(RawPeer::call(0));
        EXPECT_TRUE(peer.waitForReplies(1));
    });
}

TEST_F(NestedRequests, GoOnWhateverTheCheckOfPeersThrows)
{
    int asked = 0;
    server->setPeerCheck([&](const NSConnection::Peer &) -> bool {
        ++asked;
        throw 42;
    });
    meanwhile([&] {
        for (int i = 0; i < 100; ++i)
            RawPeer(path).waitForClose();
    });
    EXPECT_EQ(asked, 100);
    server->setPeerCheck({});
    meanwhile([&] {
        RawPeer peer(path);
        peer.introduce();
        peer.send(RawPeer::call(0));
        EXPECT_TRUE(peer.waitForReplies(1));
    });
}

TEST_F(NestedRequests, GoOnWhateverAnObserverOfNewConnectionsThrows)
{
    Thrower observer;
    NSNotificationCenter::defaultCenter().addObserver(&observer, "hear",
                                                      NSConnectionDidInitializeNotification, {});
    NSNotificationCenter::defaultCenter().addObserver(&observer, "hear", NSConnectionDidDieNotification, {});
    meanwhile([&] {
        for (int i = 0; i < 100; ++i) {
            RawPeer peer(path);
            peer.introduce();
            peer.send(RawPeer::call(0));
            EXPECT_TRUE(peer.waitForReplies(1));
        }
    });
    EXPECT_TRUE(waitUntil([&] { return observer.asked >= 200; })) << "each comes and goes";
    NSNotificationCenter::defaultCenter().removeObserver(&observer);
}

TEST_F(NestedRequests, AreServedWhileTheirOwnRequestIsWaitedFor)
{
    // Another process, which asks us whenever we ask it.
    const QString otherPath = folder.filePath("other");
    const int child = ::fork();
    if (child == 0) {
        // In a thread of its own: the main thread's connections are those of the process that it was.
        QThread *const thread = QThread::create([&] {
            const auto other =
                NSConnection::initWithReceivePortSendPort(TestPort::server(otherPath), nullptr);
            const auto back =
                NSConnection::connectionWithReceivePortSendPort(nullptr, TestPort::client(path));
            back->setReplyTimeout(500ms);
            Dialogs answering;
            answering.onPong = [&] { return back->rootProxy()->invoke("pong").toBool(); };
            other->setRootObject(&answering);
            QEventLoop().exec();
        });
        thread->start();
        thread->wait(std::chrono::milliseconds(60s).count());
        ::_exit(0);
    }
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(otherPath); }));
    const auto connection =
        NSConnection::connectionWithReceivePortSendPort(nullptr, TestPort::client(otherPath));
    const auto proxy = connection->rootProxy();
    int left = 0;
    int deepest = 0;
    int depth = 0;
    root.onPong = [&] {
        deepest = std::max(deepest, ++depth);
        const bool isPong = --left <= 0 || proxy->invoke("pong").toBool();
        --depth;
        return isPong;
    };
    left = 1;
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    EXPECT_EQ(deepest, 1);
    left = 5;
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    EXPECT_EQ(deepest, 5);
    left = 30; // deeper than any process serves: it ends, and leaves nothing behind
    EXPECT_THROW(proxy->invoke("pong"), NSException);
    EXPECT_LE(deepest, 9);
    left = 1;
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    signalProcess(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

#include "NestedRequestsTest.moc"
