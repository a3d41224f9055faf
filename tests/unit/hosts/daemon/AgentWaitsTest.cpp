// SPDX-License-Identifier: MIT
#include "hosts/daemon/AgentWaits.h"

#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "hosts/common/program/HostRootObject.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/WaitUntil.h"
#include "unit/hosts/HostFixture.h"

#include <QFileSystemWatcher>

#include <unistd.h>

using namespace std::chrono_literals;

/// This process plays the agent, too. The clock starts at noon, when everything is due.
class AgentWaitsTest : public HostFixture
{
protected:
    AgentWaitsTest()
    {
        root.makeSocketFolder(); // a root process makes it itself, but once
        scheduler.setSchedules({schedule("a"), schedule("b"), schedule("c")});
    }
    ~AgentWaitsTest() override { center().setObserver(nullptr); }

    static WDCommunicationCenter &center() { return *WDCommunicationCenter::sharedInstance(); }
    static quint32 me() { return ::geteuid(); }
    void publishAgent()
    {
        NSProcessInfo::setProcessName("Dozely Agent");
        center().setObserver(&rootObject);
        center().createServerConnection();
        ASSERT_TRUE(center().connection());
    }
    void takeSocketAway()
    {
        const QString path = QString("/private/var/tmp/com.dozely/Dozely Agent.%1").arg(me());
        ASSERT_TRUE(QFile::remove(root.join(path)));
    }
    static Occurrence due(const QString &identifier) { return {schedule(identifier), noon()}; }
    QStringList dueNow() const
    {
        QStringList identifiers;
        for (const Occurrence &occurrence : scheduler.due())
            identifiers += occurrence.schedule.identifier;
        return identifiers;
    }
    /// How long an occurrence that came due now may wait.
    std::chrono::seconds longestWait(AgentWaits &waits, qint32 timeOut)
    {
        Occurrence occurrence = due("a");
        occurrence.date = clock.currentDate();
        scheduler.setSchedules({schedule("a", occurrence.date)});
        const auto allowed = MissedRule{MissedPolicy::PlugIn, {}, timeOut}.allowedLateness();
        std::chrono::seconds waited{0};
        while (waits.wait(occurrence, me(), allowed)) {
            clock.advance(1s);
            ++waited;
        }
        return waited;
    }

    FakeClock clock{noon()};
    Scheduler scheduler{clock};
    HostRootObject rootObject;
};

TEST_F(AgentWaitsTest, WaitsAsLongAsThePlugInAllows)
{
    AgentWaits waits(clock, scheduler);
    clock.advance(15s);
    EXPECT_FALSE(waits.isReachable(me()));
    EXPECT_EQ(longestWait(waits, -5), 5s);
    EXPECT_EQ(longestWait(waits, -180), 180s);
    EXPECT_EQ(longestWait(waits, 0), 1s);
}

TEST_F(AgentWaitsTest, WaitsLongerWhenTheDaemonHasJustStarted)
{
    AgentWaits waits(clock, scheduler);
    clock.advance(14s);
    EXPECT_EQ(longestWait(waits, -5), 15s);
    EXPECT_EQ(longestWait(waits, -5), 5s) << "it has run for a while now";
}

TEST_F(AgentWaitsTest, WaitsLongerForAnAgentWhoseSocketMayHaveBeenTakenAway)
{
    AgentWaits waits(clock, scheduler);
    publishAgent();
    EXPECT_TRUE(waits.isReachable(me()));
    clock.advance(1h);
    takeSocketAway();
    EXPECT_FALSE(waits.isReachable(me()));
    EXPECT_EQ(longestWait(waits, -5), 15s);
}

TEST_F(AgentWaitsTest, HasOneTryAndAllFollowOnceTheAgentAnswers)
{
    AgentWaits waits(clock, scheduler);
    int attempts = 0;
    QObject::connect(&waits, &AgentWaits::tryAgain, [&] { ++attempts; });
    for (const char *identifier : {"a", "b", "c"})
        EXPECT_TRUE(waits.wait(due(identifier), me(), 3min));
    EXPECT_TRUE(dueNow().isEmpty());
    EXPECT_EQ(waits.userOf(due("b")), me());
    clock.advance(250ms);
    EXPECT_EQ(attempts, 1);
    EXPECT_EQ(dueNow().size(), 1);
    publishAgent();
    EXPECT_TRUE(waits.isReachable(me()));
    EXPECT_EQ(dueNow(), QStringList({"a", "b", "c"}));
    for (const char *identifier : {"a", "b", "c"})
        waits.end(due(identifier));
    EXPECT_FALSE(waits.userOf(due("b")));
    clock.advance(1h);
    EXPECT_EQ(attempts, 1) << "nothing waits any more";
}

TEST_F(AgentWaitsTest, TriesLessAndLessOften)
{
    AgentWaits waits(clock, scheduler);
    int attempts = 0;
    QObject::connect(&waits, &AgentWaits::tryAgain, [&] {
        ++attempts;
        waits.wait(due("a"), me(), 3min);
    });
    waits.wait(due("a"), me(), 3min);
    clock.advance(4s);
    EXPECT_EQ(attempts, 5) << "after 250, 500, 1000, 2000 and 4000 ms";
    clock.advance(20s);
    EXPECT_EQ(attempts, 15);
}

TEST_F(AgentWaitsTest, LetsGoWhatIsNoLongerToBePerformed)
{
    AgentWaits waits(clock, scheduler);
    waits.wait(due("a"), me(), 3min);
    scheduler.setSchedules({schedule("b")});
    clock.advance(250ms);
    EXPECT_FALSE(waits.userOf(due("a")));
    EXPECT_TRUE(clock.pendingDelays().isEmpty());
}

TEST_F(AgentWaitsTest, WatchesTheSocketsNoLongerThanSomethingWaits)
{
    AgentWaits waits(clock, scheduler);
    ASSERT_TRUE(waits.wait(due("a"), me(), std::chrono::seconds(180)));
    waits.end(due("a"));
    clock.advance(1s);
    QFileSystemWatcher witness({ZDRUnixSocketPort::socketFolder()});
    bool hasSeen = false;
    QObject::connect(&witness, &QFileSystemWatcher::directoryChanged, [&] { hasSeen = true; });
    ASSERT_TRUE(QFile(ZDRUnixSocketPort::socketFolder() + "/something").open(QIODevice::WriteOnly));
    ASSERT_TRUE(waitUntil([&] { return hasSeen; }));
    EXPECT_TRUE(clock.pendingDelays().isEmpty());
}

TEST_F(AgentWaitsTest, TriesAtOnceWhenTheSocketsChange)
{
    AgentWaits waits(clock, scheduler);
    int attempts = 0;
    QObject::connect(&waits, &AgentWaits::tryAgain, [&] {
        ++attempts;
        waits.end(due("a"));
    });
    ASSERT_TRUE(waits.wait(due("a"), me(), std::chrono::seconds(180)));
    ASSERT_TRUE(QFile(ZDRUnixSocketPort::socketFolder() + "/something").open(QIODevice::WriteOnly));
    ASSERT_TRUE(waitUntil([&] { return clock.pendingDelays().size() > 1; })) << "the watch told nothing";
    clock.advance(100ms);
    EXPECT_EQ(attempts, 1);
    clock.advance(1h);
    EXPECT_EQ(attempts, 1) << "nothing waits any more";
}

/// Whoever asks for the time has to wait for a second.
class SlowClock : public FakeClock
{
public:
    using FakeClock::FakeClock;
    std::chrono::milliseconds steadyTime() const override { return FakeClock::steadyTime() + ++m_asked * 1s; }

private:
    mutable int m_asked = 0;
};

TEST_F(AgentWaitsTest, LetsAnAgentBeThatTookLongNotToAnswer)
{
    SlowClock slow(noon());
    Scheduler its(slow);
    AgentWaits waits(slow, its);
    EXPECT_FALSE(waits.isReachable(me()));
    publishAgent();
    EXPECT_FALSE(waits.isReachable(me())) << "it is not asked";
    slow.advance(10s);
    EXPECT_TRUE(waits.isReachable(me()));
}

TEST_F(AgentWaitsTest, HurriesForWhatHasALimitAlthoughSomethingElseHasWaitedForLong)
{
    AgentWaits waits(clock, scheduler);
    QList<std::chrono::milliseconds> attempts;
    QObject::connect(&waits, &AgentWaits::tryAgain, [&] {
        attempts += clock.steadyTime();
        waits.wait(due("a"), me(), {});
        if (waits.contains(due("b")))
            waits.wait(due("b"), me(), 30min);
    });
    waits.wait(due("a"), me(), {});
    clock.advance(10min);
    ASSERT_GT(attempts.size(), 1);
    attempts.clear();
    const auto begin = clock.steadyTime();
    waits.wait(due("b"), me(), 30min);
    clock.advance(2s);
    // After 250, 750 and 1750 ms, or sooner and more where the folder's own changes come in between.
    ASSERT_GE(attempts.size(), 3);
    EXPECT_LE(attempts[0] - begin, 250ms);
}
