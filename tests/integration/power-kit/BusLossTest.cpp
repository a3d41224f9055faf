// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "integration/power-kit/PowerRecorder.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <gmock/gmock.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
constexpr char addressVariable[] = "DBUS_SYSTEM_BUS_ADDRESS";
}

/// A machine whose bus comes, goes and comes again.
class BusLossTest : public testing::Test
{
protected:
    BusLossTest()
    {
        Port<Clock>::current() = clock;
        setProblemReport([this](const QString &sentence) { problems += sentence; });
        qputenv(addressVariable, "unix:path=/nonexistent/bus");
    }
    ~BusLossTest() override
    {
        setProblemReport({});
        qunsetenv(addressVariable);
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    QStringList problems;
    LogindPower power;
    PowerRecorder recorder{power};
};

TEST_F(BusLossTest, WaitsForABusThatIsNotThereYet)
{
    recorder.listen();
    clock->advance(9s);
    EXPECT_THAT(problems, IsEmpty());
    clock->advance(1s);
    EXPECT_THAT(problems, SizeIs(1));
    clock->advance(1h);
    EXPECT_THAT(problems, SizeIs(1));
    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    FakeLogind logind;
    logind.appear();
    clock->advance(60s); // the longest pause between two attempts
    ASSERT_TRUE(waitUntil([this] { return power.holdsDelayLock(); }));
    EXPECT_THAT(problems, SizeIs(2));
}

TEST_F(BusLossTest, ConnectsAgainToABusThatWasLost)
{
    auto bus = std::make_unique<PrivateBus>();
    auto logind = std::make_unique<FakeLogind>();
    logind->appear();
    recorder.listen();
    const auto inhibition = power.inhibitSleep("A backup runs");
    ASSERT_TRUE(waitUntil([&] { return power.holdsDelayLock() && logind->held("block").size() == 1; }));
    logind->prepareForSleep(true);
    ASSERT_TRUE(waitUntil([this] { return recorder.messages.size() == 1; }));
    logind->prepareForSleep(false);
    ASSERT_TRUE(waitUntil([this] { return power.holdsDelayLock(); }));

    bus->stop();
    ASSERT_TRUE(waitUntil([this] { return !power.holdsDelayLock(); })) << "a lock that is none any more";
    logind.reset();
    bus.reset();

    bus = std::make_unique<PrivateBus>();
    logind = std::make_unique<FakeLogind>();
    logind->appear();
    clock->advance(1s);
    ASSERT_TRUE(waitUntil([&] { return power.holdsDelayLock() && logind->held("block").size() == 1; }));
    EXPECT_THAT(problems, IsEmpty());
    logind->prepareForSleep(true);
    ASSERT_TRUE(waitUntil([this] { return recorder.messages.size() == 3; }));
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "wake", "sleep"));
    logind->settle();
    EXPECT_EQ(logind->mostHeld, 1);
}

TEST_F(BusLossTest, AWakeDuringTheLossIsFoundOut)
{
    auto bus = std::make_unique<PrivateBus>();
    auto logind = std::make_unique<FakeLogind>();
    logind->appear();
    recorder.listen();
    ASSERT_TRUE(waitUntil([this] { return power.holdsDelayLock(); }));
    logind->prepareForSleep(true);
    ASSERT_TRUE(waitUntil([this] { return recorder.messages.size() == 1; }));
    bus->stop();
    logind.reset();
    bus.reset();
    bus = std::make_unique<PrivateBus>();
    logind = std::make_unique<FakeLogind>();
    logind->appear();
    ASSERT_TRUE(waitUntil([&] {
        clock->advance(1s);
        return recorder.messages.size() == 2;
    }));
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "wake"));
}
