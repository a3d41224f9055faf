// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/NetServiceExtensions.h"

#include "AvahiStandIn.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "NetServiceRecorder.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

using namespace dozely;

using namespace std::chrono_literals;
using namespace zandorSoftwaresExtensions;

namespace
{
class AvahiDaemonTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        setProblemReport([this](const QString &line) { lines += line; });
        service.setDelegate(&recorder);
        followed.setDelegate(&recorder);
    }
    void TearDown() override { setProblemReport({}); }

    PrivateBus bus;
    QStringList lines;
    NetServiceRecorder recorder;
    NSNetService service{"", "_dozely._tcp", "X", 5111};
    NSNetService followed{"", "_dozely._tcp", "X"};
};
} // namespace

TEST_F(AvahiDaemonTest, IsWaitedForWhileItsOwnNameIsNotSettled)
{
    AvahiStandIn daemon({"state=1"});
    service.publish();
    ASSERT_TRUE(waitUntil([&] { return daemon.calls("GetState") > 0; }));
    daemon.tell("state 1");
    daemon.tell("state 2");
    ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 1; }));
    EXPECT_EQ(daemon.calls("EntryGroupNew"), 1);
    daemon.tell("state 3"); // its host name is taken
    daemon.tell("state 1");
    daemon.tell("state 2");
    ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 2; }));
    EXPECT_EQ(daemon.calls("EntryGroupNew"), 2);
    EXPECT_EQ(daemon.calls("Free group"), 1);
    EXPECT_TRUE(recorder.problems.isEmpty());
    EXPECT_TRUE(lines.isEmpty());
}

TEST_F(AvahiDaemonTest, ThatFailsIsAwayUntilItRuns)
{
    AvahiStandIn daemon;
    service.publish();
    ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 1; }));
    daemon.tell("state 4");
    ASSERT_TRUE(waitUntil([&] { return recorder.problems.size() == 1; }));
    EXPECT_EQ(recorder.problems[0], NetServices::Problem::Unavailable);
    EXPECT_EQ(lines.size(), 1);
    daemon.tell("state 2");
    EXPECT_TRUE(waitUntil([&] { return recorder.published.size() == 2; }));
}

TEST_F(AvahiDaemonTest, IsAskedForAnotherNameAtEachCollision)
{
    AvahiStandIn daemon({"collide=3"});
    service.publish();
    ASSERT_TRUE(waitUntil([&] { return !recorder.published.isEmpty(); }));
    EXPECT_EQ(recorder.published, QStringList("X+++"));
    EXPECT_EQ(daemon.calls("Reset"), 3);
    EXPECT_EQ(daemon.live().size(), 1);
}

TEST_F(AvahiDaemonTest, IsLeftAloneAfterFifteenNamesThatSomebodyClaimed)
{
    AvahiStandIn daemon({"collide=always"});
    service.publish();
    ASSERT_TRUE(waitUntil([&] { return !recorder.problems.isEmpty(); }));
    EXPECT_EQ(recorder.problems, QList({NetServices::Problem::Collision}));
    EXPECT_EQ(daemon.calls("GetAlternativeServiceName"), 15);
    EXPECT_TRUE(waitUntil([&] { return daemon.live().isEmpty(); }));
}

TEST_F(AvahiDaemonTest, ThatRefusesEndsThePublication)
{
    for (const QString operation : {"EntryGroupNew", "AddService", "Commit"}) {
        recorder.problems.clear();
        AvahiStandIn daemon({"refuse=" + operation});
        NSNetService another("", "_dozely._tcp", "X", 5111);
        another.setDelegate(&recorder);
        another.publish();
        ASSERT_TRUE(waitUntil([&] { return recorder.problems.contains(NetServices::Problem::BadArgument); }))
            << qPrintable(operation);
        EXPECT_TRUE(waitUntil([&] { return daemon.live().isEmpty(); })) << qPrintable(operation);
    }
}

TEST_F(AvahiDaemonTest, ThatRefusesAnotherRecordEndsThePublication)
{
    AvahiStandIn daemon({"refuse=UpdateServiceTxt"});
    service.publish();
    ASSERT_TRUE(waitUntil([&] { return !recorder.published.isEmpty(); }));
    setProtocolSpecificInformationDictionary(service, {{"k", "2"}});
    EXPECT_TRUE(waitUntil([&] { return recorder.problems == QList({NetServices::Problem::BadArgument}); }));
}

TEST_F(AvahiDaemonTest, IsAskedAgainWhenNobodyAnswered)
{
    AvahiStandIn daemon({"silent=3"});
    followed.resolveWithTimeout(0s);
    ASSERT_TRUE(waitUntil([&] { return recorder.resolved > 0; }));
    EXPECT_EQ(daemon.calls("ServiceResolverNew"), 4);
    EXPECT_EQ(daemon.calls("Free resolver"), 3);
    EXPECT_TRUE(recorder.problems.isEmpty());
}

TEST_F(AvahiDaemonTest, ThatRefusesEndsTheResolution)
{
    AvahiStandIn daemon({"refuse=ServiceResolverNew"});
    followed.resolveWithTimeout(0s);
    EXPECT_TRUE(waitUntil([&] { return recorder.problems == QList({NetServices::Problem::BadArgument}); }));
}

TEST_F(AvahiDaemonTest, MayTellAnAddressTwiceAndTakeItAway)
{
    AvahiStandIn daemon({"addresses=3"});
    followed.resolveWithTimeout(0s);
    ASSERT_TRUE(waitUntil([&] { return followed.addresses().size() == 3; }));
    EXPECT_EQ(ipAddress(followed), "10.0.0.2");
    daemon.tell("remove 2");
    ASSERT_TRUE(waitUntil([&] { return followed.addresses().size() == 2; }));
    EXPECT_EQ(ipAddress(followed), "10.0.0.1");
}

TEST_F(AvahiDaemonTest, MayTellAddressesWithoutEnd)
{
    AvahiStandIn daemon({"addresses=500"});
    followed.resolveWithTimeout(0s);
    ASSERT_TRUE(waitUntil([&] { return followed.addresses().size() == 64; }));
    daemon.tell("remove 0"); // after all of them
    ASSERT_TRUE(waitUntil([&] { return followed.addresses().size() == 63; }));
}

TEST_F(AvahiDaemonTest, MayMoveAServiceToAnotherHost)
{
    AvahiStandIn daemon;
    followed.resolveWithTimeout(0s);
    ASSERT_TRUE(waitUntil([&] { return followed.hostName() == "host.local"; }));
    daemon.tell("move");
    ASSERT_TRUE(waitUntil([&] { return followed.hostName() == "other.local"; }));
    EXPECT_EQ(daemon.calls("Free browser"), 2); // those of the former host
    EXPECT_EQ(followed.addresses().size(), 1);
}

TEST_F(AvahiDaemonTest, IsBelievedAndNobodyElseOnTheBus)
{
    AvahiStandIn daemon;
    followed.resolveWithTimeout(0s);
    ASSERT_TRUE(waitUntil([&] { return recorder.resolved > 0; }));
    daemon.tell("foreign");
    daemon.tell("remove 0"); // heard after that
    daemon.tell("move");
    ASSERT_TRUE(waitUntil([&] { return followed.hostName() == "other.local"; }));
    EXPECT_EQ(daemon.calls("RecordBrowserNew"), 4); // two for each true host
}

TEST_F(AvahiDaemonTest, KeepsNothingOfWhatWasStopped)
{
    AvahiStandIn daemon;
    service.publish();
    followed.resolveWithTimeout(0s);
    ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 1 && recorder.resolved > 0; }));
    EXPECT_EQ(daemon.live().size(), 4); // group, resolver, two browsers
    service.stop();
    followed.stop();
    EXPECT_TRUE(waitUntil([&] { return daemon.live().isEmpty(); }));
}

TEST_F(AvahiDaemonTest, KeepsNothingOfWhatWasStoppedBeforeItAnswered)
{
    AvahiStandIn daemon;
    NSNetService first("", "_dozely._tcp", "first", 1);
    first.setDelegate(&recorder);
    first.publish();
    ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 1; })); // the daemon is ready
    for (int i = 0; i < 20; ++i) {
        // Each gets a little further before it ends.
        const auto passing = std::make_unique<NSNetService>("", "_dozely._tcp", "passing", 1);
        const auto another = std::make_unique<NSNetService>("", "_dozely._tcp", "passing");
        passing->publish();
        another->resolveWithTimeout(0s);
        for (int turn = 0; turn < i; ++turn)
            QCoreApplication::processEvents();
    }
    // What was asked for comes, and goes: all that is left is the group of the first.
    EXPECT_TRUE(waitUntil([&] {
        return daemon.calls("EntryGroupNew") > 1 && daemon.calls("ServiceResolverNew") > 0 &&
               daemon.live().size() == 1;
    }));
    EXPECT_GT(daemon.calls("Free group"), 0);
}
