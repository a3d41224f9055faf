// SPDX-License-Identifier: MIT
#include "unit/communication/channel/CenterFixture.h"

#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/Descriptor.h"

#include <QElapsedTimer>
#include <QSemaphore>

#include <sys/socket.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::IsEmpty;

using Receiving = CenterFixture;

namespace
{
const NSNotification event("UserAgentMustActEvent", "com.dozely.UserAgent",
                           {{"Schedule Bundle Path", "/Library/x.plugin"},
                            {"Schedule Parameters", QVariantMap()}});

std::shared_ptr<Listener> listenerOfTheEvent()
{
    return Listener::of(event.name(), event.object().toString());
}

/// The machine's clock; says when somebody has to wait for a lock.
class ObservedClock : public FakeClock
{
public:
    explicit ObservedClock(std::shared_ptr<Clock> real) : m_real(std::move(real)) {}
    bool acquire(QSemaphore &semaphore, std::chrono::milliseconds limit) override
    {
        if (semaphore.tryAcquire())
            return true;
        waiting.release();
        return m_real->acquire(semaphore, limit);
    }

    QSemaphore waiting;

private:
    std::shared_ptr<Clock> m_real;
};

class TwoThreads : public PortFixture
{
protected:
    TwoThreads()
    {
        clock = std::make_shared<ObservedClock>(Port<Clock>::current());
        Port<Clock>::current() = clock;
        NSProcessInfo::setProcessName("dozelyd");
        center = WDCommunicationCenter::sharedInstance();
        center->setObserver(&observer);
    }

    std::unique_ptr<QThread> posting(bool *answer)
    {
        std::unique_ptr<QThread> thread(
            QThread::create([=, this] { *answer = center->postNotificationToAgentOfUser(event, 501); }));
        thread->start();
        return thread;
    }

    std::shared_ptr<ObservedClock> clock;
    std::shared_ptr<WDCommunicationCenter> center;
    QObject observer;
};
} // namespace

TEST_F(Receiving, PostsACopyIntoTheDefaultCenterBeforeItAnswersYes)
{
    const auto listener = listenerOfTheEvent();
    EXPECT_TRUE(center->postNotification(event));
    EXPECT_EQ(listener->heard, 1);
    EXPECT_EQ(listener->last.name(), event.name());
    EXPECT_EQ(listener->last.object(), event.object());
    EXPECT_EQ(listener->last.userInfo(), event.userInfo());
}

TEST_F(Receiving, AnswersYesWhenNobodyListens)
{
    EXPECT_TRUE(center->postNotification(event));
    EXPECT_TRUE(center->postNotification(NSNotification("no sender")));
    EXPECT_TRUE(center->postNotificationOnMainThread(event));
}

TEST_F(Receiving, PostsOnTheMainThreadOnly)
{
    const auto listener = listenerOfTheEvent();
    EXPECT_TRUE(center->postNotificationOnMainThread(event));
    EXPECT_EQ(listener->heard, 1);
}

TEST_F(Receiving, OnAnotherThreadHasTheMainThreadPostAndWaitsForIt)
{
    const auto listener = listenerOfTheEvent();
    bool answer = false;
    int heardWhenItAnswered = 0;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        answer = center->postNotification(event);
        heardWhenItAnswered = listener->heard;
    }));
    thread->start();
    ASSERT_TRUE(waitUntil([&] { return thread->isFinished(); }));
    thread->wait();
    EXPECT_TRUE(answer);
    EXPECT_EQ(heardWhenItAnswered, 1);
    EXPECT_EQ(listener->thread, QThread::currentThread());
}

TEST_F(Receiving, OnAnotherThreadRaisesThereWhatAnObserverRaises)
{
    const auto listener = listenerOfTheEvent();
    listener->onHear = [] { throw NSException("Trouble", "in an observer"); };
    QString raised;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            center->postNotification(event);
        } catch (const NSException &exception) {
            raised = exception.name();
        }
    }));
    thread->start();
    ASSERT_TRUE(waitUntil([&] { return thread->isFinished(); }));
    thread->wait();
    EXPECT_EQ(raised, "Trouble");
}

TEST_F(Receiving, FromAnotherProcessReachesTheObserversOnTheMainThread)
{
    const auto listener = listenerOfTheEvent();
    center->createServerConnection();
    Peer sender("Dozely Agent.501");
    std::atomic<bool> done = false;
    bool answer = false;
    // The sender's thread must not be waited for by the thread that serves it.
    sender.root.onPong = [&] {
        const auto daemon = NSConnection::connectionWithReceivePortSendPort(
                                nullptr, ZDRUnixSocketPort::initAsClientWithName("dozelyd"))
                                ->rootProxy();
        const auto remote = NSDistantObject::asProxy(daemon->invoke("communicationCenter"));
        answer = remote->invoke("postNotification", {QVariant::fromValue(event)}).toBool();
        done = true;
        return true;
    };
    EXPECT_TRUE(center->pingAgentOfUser(501)) << "served while this thread waits for its own reply";
    EXPECT_TRUE(done);
    EXPECT_TRUE(answer);
    EXPECT_EQ(listener->heard, 1);
    EXPECT_EQ(listener->thread, QThread::currentThread());
    EXPECT_EQ(listener->last.userInfo(), event.userInfo());
}

TEST_F(Receiving, FromItselfWorksToo)
{
    const auto listener = listenerOfTheEvent();
    center->createServerConnection();
    EXPECT_TRUE(center->postNotificationToDaemon(event));
    EXPECT_EQ(listener->heard, 1);
}

TEST_F(Receiving, IsKnownAsNotSentToWhomNobodyReaches)
{
    EXPECT_FALSE(center->postNotificationToAgentOfUser(event, 501));
    EXPECT_EQ(WDCommunicationCenter::lastPostOutcome(), WDCommunicationCenter::PostOutcome::NotSent);
    center->createServerConnection();
    EXPECT_TRUE(center->postNotificationToDaemon(event));
    EXPECT_EQ(WDCommunicationCenter::lastPostOutcome(), WDCommunicationCenter::PostOutcome::Answered);
    EXPECT_FALSE(center->postNotificationToAgentOfUser(event, 501));
    EXPECT_EQ(WDCommunicationCenter::lastPostOutcome(), WDCommunicationCenter::PostOutcome::NotSent);
}

TEST_F(Receiving, IsOfUnknownOutcomeWhenTheTargetRaisedWhateverWasPostedFromWithin)
{
    const auto listener = listenerOfTheEvent();
    listener->onHear = [&] {
        center->postNotificationToAgentOfUser(event, 501); // is not sent
        throw NSException("Trouble", "the listener was told to");
    };
    center->createServerConnection();
    EXPECT_THROW(center->postNotificationToDaemon(event), NSException);
    EXPECT_EQ(WDCommunicationCenter::lastPostOutcome(), WDCommunicationCenter::PostOutcome::Unknown);
}

TEST_F(Receiving, FromWithinAPostToTheSameTargetWaitsFiveSecondsAndIsNo)
{
    const auto listener = listenerOfTheEvent();
    bool inner = true;
    listener->onHear = [&] { inner = center->postNotificationToDaemon(event); };
    center->createServerConnection();
    EXPECT_TRUE(center->postNotificationToDaemon(event));
    EXPECT_FALSE(inner);
    EXPECT_EQ(listener->heard, 1);
    EXPECT_EQ(clock->failedWaits, QList<std::chrono::milliseconds>{5s});
}

TEST_F(Receiving, FromWithinAPostToAnotherTargetWorks)
{
    const auto listener = listenerOfTheEvent();
    Peer agent("Dozely Agent.501");
    bool inner = false;
    listener->onHear = [&] { inner = center->postNotificationToAgentOfUser(event, 501); };
    center->createServerConnection();
    EXPECT_TRUE(center->postNotificationToDaemon(event));
    EXPECT_TRUE(inner);
    EXPECT_THAT(clock->failedWaits, IsEmpty());
}

TEST_F(Receiving, OfWhatNobodyWaitsForHappensWhileTheLoopRuns)
{
    Peer agent("Dozely Agent.501");
    ASSERT_TRUE(center->lockAgentAccessForUser(501)) << "which it does not need";
    center->tellAgentOfUser(event, 501);
    EXPECT_EQ(agent.center.posts, 0);
    ASSERT_TRUE(waitUntil([&] { return agent.center.posts == 1; }));
    agent.inThread([&] { EXPECT_EQ(agent.center.last.userInfo(), event.userInfo()); });
    for (int i = 2; i <= 40; ++i) {
        center->tellAgentOfUser(event, 501);
        ASSERT_TRUE(waitUntil([&] { return agent.center.posts == i; })) << "those that are over do not count";
    }
}

TEST_F(Receiving, OfWhatNobodyWaitsForDoesNotHappenWhereThereIsNoCenter)
{
    center->tellAgentOfUser(event, 501); // nor an agent
    Peer agent("Dozely Agent.501", Peer::Vends::NoCenter);
    Peer other("Dozely Agent.502", Peer::Vends::Nothing);
    center->tellAgentOfUser(event, 501);
    center->tellAgentOfUser(event, 502);
    EXPECT_TRUE(center->pingAgentOfUser(501)) << "served after what came before";
    EXPECT_FALSE(center->pingAgentOfUser(502));
    EXPECT_EQ(agent.center.posts + other.center.posts, 0);
}

TEST_F(Receiving, OfWhatNobodyWaitsForIsGivenUpByAnAgentThatDoesNotAnswer)
{
    const auto silent = ZDRUnixSocketPort::initAsServerWithName("Dozely Agent.501");
    ASSERT_TRUE(silent);
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 30; ++i)
        center->tellAgentOfUser(event, 501);
    EXPECT_LT(timer.elapsed(), 2000) << "an answer is waited for for 5 s";
    EXPECT_THAT(clock->failedWaits, IsEmpty());
    std::vector<Descriptor> connections;
    for (;;) {
        const int connection = ::accept(silent->listeningDescriptor(), nullptr, nullptr);
        if (connection < 0)
            break;
        connections.emplace_back(connection);
    }
    EXPECT_EQ(connections.size(), 16U);
    const auto isClosed = [](const Descriptor &connection) {
        char bytes[512];
        ssize_t size = 0;
        while ((size = ::recv(connection.get(), bytes, sizeof bytes, MSG_DONTWAIT)) > 0) {
        }
        return size == 0;
    };
    EXPECT_FALSE(isClosed(connections.front()));
    clock->advance(10s);
    for (const Descriptor &connection : connections)
        EXPECT_TRUE(waitUntil([&] { return isClosed(connection); }));
}

TEST_F(TwoThreads, PostingToOneAgentTakeTurns)
{
    Peer agent("Dozely Agent.501");
    QSemaphore entered;
    QSemaphore gate;
    agent.center.onPost = [&] {
        entered.release();
        return gate.tryAcquire(1, 20'000);
    };
    bool first = false;
    bool second = false;
    const auto firstThread = posting(&first);
    ASSERT_TRUE(entered.tryAcquire(1, 20'000));
    const auto secondThread = posting(&second);
    ASSERT_TRUE(clock->waiting.tryAcquire(1, 20'000)) << "the second one waits for the lock";
    EXPECT_EQ(agent.center.posts, 1);
    gate.release();
    ASSERT_TRUE(entered.tryAcquire(1, 20'000)) << "its turn comes when the first is done";
    EXPECT_TRUE(firstThread->wait(20'000));
    EXPECT_TRUE(first);
    gate.release();
    EXPECT_TRUE(secondThread->wait(20'000));
    EXPECT_TRUE(second);
    EXPECT_EQ(agent.center.posts, 2);
}

TEST_F(TwoThreads, PostingToDifferentTargetsDoNotWaitForEachOther)
{
    Peer agent("Dozely Agent.501");
    Peer other("Dozely Agent.502");
    QSemaphore entered;
    QSemaphore gate;
    agent.center.onPost = [&] {
        entered.release();
        return gate.tryAcquire(1, 20'000);
    };
    bool first = false;
    const auto firstThread = posting(&first);
    ASSERT_TRUE(entered.tryAcquire(1, 20'000));
    EXPECT_TRUE(center->postNotificationToAgentOfUser(event, 502));
    EXPECT_EQ(other.center.posts, 1);
    gate.release();
    EXPECT_TRUE(firstThread->wait(20'000));
    EXPECT_TRUE(first);
}
