// SPDX-License-Identifier: MIT
#include "unit/communication/channel/CenterFixture.h"

#include "DozelyKit/communication/remoting/NSDistantObject.h"

#include <array>
#include <atomic>
#include <thread>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
constexpr quint32 user = 501;

/// One of the three targets, with its operations.
struct Target {
    const char *name;
    QString portName;
    QString failureLine;
    bool usesReplyPort;
    bool (*ping)(WDCommunicationCenter &);
    bool (*post)(WDCommunicationCenter &, const NSNotification &);
    bool (*lock)(WDCommunicationCenter &);
    void (*unlock)(WDCommunicationCenter &);
    std::shared_ptr<NSDistantObject> (*object)(WDCommunicationCenter &);

    friend void PrintTo(const Target &target, std::ostream *out) { *out << target.name; }
};

const Target daemonTarget{
    "Daemon",
    "dozelyd",
    "Could NOT connect to Daemon",
    false,
    [](WDCommunicationCenter &c) { return c.pingDaemon(); },
    [](WDCommunicationCenter &c, const NSNotification &n) { return c.postNotificationToDaemon(n); },
    [](WDCommunicationCenter &c) { return c.lockDaemonAccess(); },
    [](WDCommunicationCenter &c) { c.unlockDaemonAccess(); },
    [](WDCommunicationCenter &c) { return c.daemonObject(); }};

const Target agentTarget{"Agent",
                         "Dozely Agent.501",
                         "Could NOT connect to Agent",
                         true,
                         [](WDCommunicationCenter &c) { return c.pingAgentOfUser(user); },
                         [](WDCommunicationCenter &c, const NSNotification &n) {
                             return c.postNotificationToAgentOfUser(n, user);
                         },
                         [](WDCommunicationCenter &c) { return c.lockAgentAccessForUser(user); },
                         [](WDCommunicationCenter &c) { c.unlockAgentAccessForUser(user); },
                         [](WDCommunicationCenter &c) { return c.agentObjectOfUser(user); }};

const Target prefPaneTarget{"PrefPane",
                            "Dozely.501",
                            "Could NOT connect to PrefPane",
                            false,
                            [](WDCommunicationCenter &c) { return c.pingPrefPaneOfUser(user); },
                            [](WDCommunicationCenter &c, const NSNotification &n) {
                                return c.postNotificationToPrefPaneOfUser(n, user);
                            },
                            [](WDCommunicationCenter &c) { return c.lockPrefPaneAccessForUser(user); },
                            [](WDCommunicationCenter &c) { c.unlockPrefPaneAccessForUser(user); },
                            [](WDCommunicationCenter &c) { return c.prefPaneObjectOfUser(user); }};

const NSNotification event("DaemonMustActEvent", "com.dozely.Daemon", {{"Schedule Bundle Path", "/p"}});

class Request : public CenterFixture, public testing::WithParamInterface<Target>
{
protected:
    bool ping() { return GetParam().ping(*center); }
    bool post() { return GetParam().post(*center, event); }
    bool takeLock() { return GetParam().lock(*center); }
    void giveLock() { GetParam().unlock(*center); }

    QStringList socketFiles() const
    {
        return QDir(ZDRUnixSocketPort::socketFolder()).entryList(QDir::System | QDir::Files);
    }
};
using UserLocks = CenterFixture;

/// Waits for no lock, and in any thread.
class HurriedClock : public FakeClock
{
public:
    bool acquire(QSemaphore &semaphore, std::chrono::milliseconds) override { return semaphore.tryAcquire(); }
};
} // namespace

TEST_P(Request, PingIsTheTargetsPong)
{
    Peer peer(GetParam().portName);
    EXPECT_TRUE(ping());
    peer.root.onPong = [] { return false; };
    EXPECT_FALSE(ping());
    EXPECT_EQ(peer.root.pongs, 2);
    EXPECT_TRUE(takeLock()) << "the lock was given back";
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_P(Request, PostReachesTheTargetsCenterWithNameObjectAndUserInfo)
{
    Peer peer(GetParam().portName);
    EXPECT_TRUE(post());
    EXPECT_EQ(peer.center.posts, 1);
    EXPECT_EQ(peer.center.last.name(), event.name());
    EXPECT_EQ(peer.center.last.object(), event.object());
    EXPECT_EQ(peer.center.last.userInfo(), event.userInfo());
    EXPECT_TRUE(takeLock()) << "the lock was given back";
}

TEST_P(Request, PostAnswersWhatTheTargetAnswers)
{
    Peer peer(GetParam().portName);
    peer.center.onPost = [] { return false; };
    EXPECT_FALSE(post());
    EXPECT_EQ(peer.center.posts, 1);
    EXPECT_TRUE(takeLock());
}

TEST_P(Request, WithoutASocketFileFailsAtOnceWithoutALogLineOrAConnection)
{
    ZDRUnixSocketPort::initAsClientWithName("first use of the class");
    EXPECT_FALSE(GetParam().object(*center));
    EXPECT_FALSE(ping());
    EXPECT_FALSE(post());
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_THAT(socketFiles(), IsEmpty()) << "not even the port for replies was made";
    EXPECT_THAT(clock->failedWaits, IsEmpty());
    EXPECT_TRUE(takeLock());
}

TEST_P(Request, OfAProcessThatHasDiedFailsWithoutALogLine)
{
    ASSERT_TRUE(ZDRUnixSocketPort::initAsServerWithName(GetParam().portName));
    EXPECT_FALSE(GetParam().object(*center));
    EXPECT_FALSE(ping());
    EXPECT_FALSE(post());
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_TRUE(takeLock());
}

TEST_P(Request, OfAProcessThatVendsNothingFailsWithALogLine)
{
    Peer peer(GetParam().portName, Peer::Vends::Nothing);
    EXPECT_FALSE(ping());
    EXPECT_THAT(logged(), ElementsAre(GetParam().failureLine));
    EXPECT_FALSE(post());
    EXPECT_THAT(logged(), ElementsAre(GetParam().failureLine, GetParam().failureLine));
    EXPECT_TRUE(takeLock());
}

TEST_P(Request, PostToAProcessWithoutACenterIsAnsweredNo)
{
    Peer peer(GetParam().portName, Peer::Vends::NoCenter);
    EXPECT_FALSE(post());
    EXPECT_TRUE(ping());
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_P(Request, WithoutAnObserverIsNotSentAndLeavesNoLogLine)
{
    Peer peer(GetParam().portName);
    center->setObserver(nullptr);
    EXPECT_FALSE(ping());
    EXPECT_FALSE(post());
    EXPECT_EQ(peer.root.pongs, 0);
    EXPECT_EQ(peer.center.posts, 0);
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_FALSE(center->daemonLock());
    EXPECT_TRUE(center->agentsLocks().isEmpty());
    EXPECT_TRUE(center->prefPanesLocks().isEmpty());
}

TEST_P(Request, WaitsFiveSecondsForABusyLockAndIsNotSent)
{
    Peer peer(GetParam().portName);
    ASSERT_TRUE(takeLock());
    EXPECT_FALSE(ping());
    EXPECT_EQ(clock->failedWaits, QList<std::chrono::milliseconds>{5s});
    EXPECT_FALSE(post());
    EXPECT_EQ(clock->failedWaits, (QList<std::chrono::milliseconds>{5s, 5s}));
    EXPECT_EQ(peer.root.pongs, 0);
    EXPECT_EQ(peer.center.posts, 0);
    EXPECT_THAT(logged(), IsEmpty());
    giveLock();
    EXPECT_TRUE(ping());
    EXPECT_TRUE(post());
}

TEST_P(Request, LockIsNotRecursive)
{
    EXPECT_TRUE(takeLock());
    EXPECT_FALSE(takeLock());
    EXPECT_EQ(clock->failedWaits, QList<std::chrono::milliseconds>{5s});
    giveLock();
    EXPECT_TRUE(takeLock());
}

TEST_P(Request, LockGivenBackTwiceIsFreeOnce)
{
    EXPECT_TRUE(takeLock());
    giveLock();
    giveLock();
    EXPECT_TRUE(takeLock());
    EXPECT_FALSE(takeLock());
}

TEST_P(Request, LockThatNobodyAskedForIsNotMadeByGivingItBack)
{
    giveLock();
    EXPECT_FALSE(center->daemonLock());
    EXPECT_TRUE(center->agentsLocks().isEmpty());
    EXPECT_TRUE(center->prefPanesLocks().isEmpty());
}

TEST_P(Request, PingOfATargetThatDiesInTheMiddleIsNoAndGivesTheLockBack)
{
    Peer peer(GetParam().portName);
    peer.root.onPong = [&] { return peer.die(); };
    EXPECT_FALSE(ping());
    EXPECT_EQ(peer.root.pongs, 1);
    EXPECT_THAT(logged(), IsEmpty());
    EXPECT_TRUE(takeLock());
}

TEST_P(Request, PingOfATargetThatRaisesIsNoAndGivesTheLockBack)
{
    Peer peer(GetParam().portName);
    peer.root.onPong = []() -> bool { throw NSException("Trouble", "in pong"); };
    EXPECT_FALSE(ping());
    EXPECT_TRUE(takeLock());
}

TEST_P(Request, PostToATargetThatDiesInTheMiddleRaisesAndLeavesTheLockTaken)
{
    auto dying = std::make_unique<Peer>(GetParam().portName);
    dying->center.onPost = [peer = dying.get()] { return peer->die(); };
    EXPECT_THROW(post(), NSException);
    EXPECT_EQ(dying->center.posts, 1);
    dying.reset();

    Peer returned(GetParam().portName);
    EXPECT_FALSE(post()) << "the lock is taken still";
    EXPECT_FALSE(ping());
    EXPECT_EQ(clock->failedWaits, (QList<std::chrono::milliseconds>{5s, 5s}));
    EXPECT_EQ(returned.center.posts, 0);
    giveLock();
    EXPECT_TRUE(post()) << "whoever caught it gave it back";
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_P(Request, PostThatTheTargetRefusesWithAnExceptionRaisesItHere)
{
    Peer peer(GetParam().portName);
    peer.center.onPost = []() -> bool { throw NSException("Trouble", "in post"); };
    try {
        post();
        ADD_FAILURE() << "nothing was raised";
    } catch (const NSException &exception) {
        EXPECT_EQ(exception.name(), "Trouble");
        EXPECT_EQ(exception.reason(), "in post");
    }
    EXPECT_FALSE(takeLock()) << "and the lock is taken still";
}

TEST_P(Request, ProxyIsTypedAndHasItsTimeOuts)
{
    Peer peer(GetParam().portName);
    const auto proxy = GetParam().object(*center);
    ASSERT_TRUE(proxy);
    EXPECT_THROW(proxy->invoke("deleteLater"), NSException) << "the protocol does not name it";
    EXPECT_TRUE(proxy->invoke("pong").toBool());
    EXPECT_EQ(proxy->connectionForProxy()->requestTimeout(), 5s);
    EXPECT_EQ(proxy->connectionForProxy()->replyTimeout(), 5s);
    EXPECT_EQ(proxy->connectionForProxy()->delegate(), center.get());
    EXPECT_EQ(proxy->connectionForProxy()->receivePort() != nullptr, GetParam().usesReplyPort);
    EXPECT_EQ(hasReplyPort(), GetParam().usesReplyPort);
}

TEST_P(Request, OpensAConnectionAfresh)
{
    Peer peer(GetParam().portName);
    const auto first = GetParam().object(*center);
    const auto second = GetParam().object(*center);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->connectionForProxy(), second->connectionForProxy());
}

TEST_P(Request, SucceedsAgainAsSoonAsTheTargetIsBack)
{
    {
        Peer peer(GetParam().portName);
        EXPECT_TRUE(post());
    }
    EXPECT_FALSE(post());
    Peer back(GetParam().portName);
    EXPECT_TRUE(post());
    EXPECT_EQ(back.center.posts, 1);
}

INSTANTIATE_TEST_SUITE_P(To, Request, testing::Values(daemonTarget, agentTarget, prefPaneTarget),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(UserLocks, OfDifferentTargetsAreIndependent)
{
    EXPECT_TRUE(center->lockDaemonAccess());
    EXPECT_TRUE(center->lockAgentAccessForUser(501));
    EXPECT_TRUE(center->lockAgentAccessForUser(502));
    EXPECT_TRUE(center->lockPrefPaneAccessForUser(501));
    EXPECT_TRUE(center->lockPrefPaneAccessForUser(4'294'967'295));
    EXPECT_THAT(clock->failedWaits, IsEmpty());
    EXPECT_EQ(center->agentsLocks().keys(), (QList<quint32>{501, 502}));
    EXPECT_EQ(center->prefPanesLocks().keys(), (QList<quint32>{501, 4'294'967'295}));
}

TEST_F(UserLocks, AreMadeAtFirstUseAndKept)
{
    ASSERT_TRUE(center->lockAgentAccessForUser(501));
    const auto lock = center->agentsLocks().value(501);
    ASSERT_TRUE(lock);
    center->unlockAgentAccessForUser(501);
    EXPECT_FALSE(center->pingAgentOfUser(501));
    EXPECT_EQ(center->agentsLocks().value(501), lock);

    ASSERT_TRUE(center->lockDaemonAccess());
    const auto daemonLock = center->daemonLock();
    center->unlockDaemonAccess();
    ASSERT_TRUE(center->lockDaemonAccess());
    EXPECT_EQ(center->daemonLock(), daemonLock);
}

TEST_F(UserLocks, AreOneEachHoweverManyThreadsAskForThemFirst)
{
    dozely::Port<dozely::Clock>::current() = std::make_shared<HurriedClock>();
    constexpr quint32 users = 20'000;
    std::array<int, 2> taken{};
    std::atomic<bool> mayBegin = false;
    // Who is behind catches up, since what is made already is found sooner: then both want the same to be
    // made.
    const auto takeAll = [&](size_t number) {
        while (!mayBegin)
            std::this_thread::yield();
        for (quint32 user = 0; user < users; ++user) {
            taken.at(number) += center->lockAgentAccessForUser(user) ? 1 : 0;
            taken.at(number) += center->lockPrefPaneAccessForUser(user) ? 1 : 0;
        }
    };
    std::thread other(takeAll, 1);
    mayBegin = true;
    takeAll(0);
    other.join();
    EXPECT_EQ(taken[0] + taken[1], 2 * static_cast<int>(users));
    EXPECT_EQ(center->agentsLocks().size(), static_cast<qsizetype>(users));
}

TEST_F(UserLocks, AreOneEachHoweverManyThreadsAskForTheDaemonFirst)
{
    dozely::Port<dozely::Clock>::current() = std::make_shared<HurriedClock>();
    constexpr size_t rounds = 10'000;
    std::array<int, 2> taken{};
    std::atomic<size_t> arrivals = 0;
    // Both leave at once: what wakes threads up is too slow for that.
    const auto meet = [&arrivals](size_t meeting) {
        ++arrivals;
        for (int looks = 0; arrivals < 2 * meeting; ++looks) {
            if (looks > 1000) // the other may lack a processor
                std::this_thread::yield();
        }
    };
    const auto takeEach = [&](size_t number) {
        size_t meetings = 0;
        for (size_t round = 0; round < rounds; ++round) {
            meet(++meetings);
            taken.at(number) += center->lockDaemonAccess() ? 1 : 0;
            meet(++meetings);
            if (number == 0)
                center->setDaemonLock({});
        }
    };
    std::thread other(takeEach, 1);
    takeEach(0);
    other.join();
    EXPECT_EQ(taken[0] + taken[1], static_cast<int>(rounds));
}

TEST_F(UserLocks, AreHeldDuringTheRequest)
{
    Peer agent("Dozely Agent.501");
    bool free = true;
    agent.center.onPost = [&] {
        free = center->agentsLocks().value(501)->lockBeforeDate(5s);
        return true;
    };
    EXPECT_TRUE(center->postNotificationToAgentOfUser(event, 501));
    EXPECT_FALSE(free);
}

TEST_F(UserLocks, BelongToTheUserWhoseNumberPrintsSigned)
{
    Peer agent("Dozely Agent.-2");
    EXPECT_TRUE(center->pingAgentOfUser(4'294'967'294));
    EXPECT_EQ(agent.root.pongs, 1);
}

TEST_F(UserLocks, DoNotStopAnAgentWhoseReplyPortCannotBeMadeFromFailingQuietly)
{
    Peer agent("Dozely Agent.501");
    // Its name no longer fits, so the reply port is nothing.
    NSProcessInfo::setProcessName("other " + QString(104, 'n'));
    EXPECT_FALSE(center->pingAgentOfUser(501));
    EXPECT_EQ(agent.root.pongs, 0);
}
