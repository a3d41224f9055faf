// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "support/WaitUntil.h"
#include "unit/hosts/daemon/PerformingFixture.h"

using namespace dozely;

using namespace std::chrono_literals;

/// A daemon whose clock is right when it begins at noon and then set by nobody who knows the time. Its
/// schedule is for ten minutes later; the plug-in allows thirty seconds.
class WrongClockTest : public PerformingFixture
{
protected:
    WrongClockTest()
    {
        Port<PowerEventScheduler>::current() = machine;
        Port<KeyEventDriver>::current() = std::make_shared<NoKeys>();
        makeProbe();
        writeStore({a});
        ZDRPowerManager::sharedInstance();
        start();
        clock.synchronised = false;
    }
    void start()
    {
        daemon = std::make_unique<DaemonController>(
            clock, std::make_shared<PinnedConsoleUser>(std::make_shared<FakeConsoleUser>()));
        waitForAnswers(daemon->plugIns(), *Schedule::fromEntry(a));
    }
    void jump(std::chrono::seconds by)
    {
        clock.jumpTo(clock.currentDate().addDuration(by));
        clock.advance(0ms);
    }
    qsizetype actions() const { return messages().filter("\" acts in the daemon").size(); }
    qsizetype skips() const { return messages().filter("was skipped").size(); }

    const QVariantMap parameters{{"Acts In User Agent", 0LL}, {"Text", "hello"}, {"Time Out", -30LL}};
    const QVariantMap a = changed(entry("a", noon().addSecs(600)), "Parameters", parameters);
    std::shared_ptr<ScheduledEvents> machine = std::make_shared<ScheduledEvents>();
    FakeClock clock{noon()};
    std::unique_ptr<DaemonController> daemon;
};

TEST_F(WrongClockTest, AJumpOfAYearAndBackConsumesNothing)
{
    jump(24h * 365);
    clock.advance(59s);
    EXPECT_EQ(skips(), 0);
    jump(-24h * 365);
    clock.advance(8min);
    EXPECT_EQ(actions(), 0);
    clock.advance(1min + 1s);
    EXPECT_EQ(actions(), 1);
    EXPECT_EQ(skips(), 0);
}

TEST_F(WrongClockTest, WhatAJumpMakesDueIsDecidedWhenTheClockHasStoodForAMinute)
{
    jump(610s);
    EXPECT_EQ(actions(), 0) << "ten seconds late, by a clock that may be wrong";
    clock.advance(59s);
    EXPECT_EQ(actions(), 0);
    clock.advance(2s);
    EXPECT_EQ(actions(), 1) << "the minute of the doubt makes nothing late";
}

TEST_F(WrongClockTest, WhatAJumpMakesLateIsSkippedWhenTheClockHasStoodForAMinute)
{
    jump(24h);
    EXPECT_EQ(skips(), 0);
    clock.advance(61s);
    EXPECT_EQ(skips(), 1);
}

TEST_F(WrongClockTest, ASynchronisedClockIsBelievedAtOnce)
{
    clock.synchronised = true;
    jump(610s);
    EXPECT_EQ(actions(), 1);
}

TEST_F(WrongClockTest, WhatComesDueAfterTheJumpRunsAtItsTime)
{
    writeStore({changed(entry("a", noon().addSecs(24 * 3600 + 10)), "Parameters", parameters)});
    start();
    jump(24h);
    clock.advance(11s);
    EXPECT_EQ(actions(), 1);
}

TEST_F(WrongClockTest, AfterSleepNothingWaits)
{
    clock.sleep(610s);
    clock.advance(0ms);
    EXPECT_EQ(actions(), 1);
}

TEST_F(WrongClockTest, ADaemonThatStartsByAClockThatIsAYearAheadConsumesNothing)
{
    daemon.reset();
    clock.jumpTo(noon().addYears(1));
    start();
    clock.advance(30s);
    EXPECT_EQ(skips(), 0);
    jump(-24h * 365);
    clock.advance(11min);
    EXPECT_EQ(actions(), 1);
    EXPECT_EQ(skips(), 0);
}

TEST_F(WrongClockTest, ADaemonThatStartsByAClockThatIsYearsAheadForgetsNoHistory)
{
    clock.advance(601s);
    ASSERT_EQ(actions(), 1);
    ASSERT_TRUE(waitUntil([this] { return !messages().filter("Probe acts").isEmpty(); }))
        << "else it is taken back";
    writeStore({changed(entry("a", noon().addYears(3)), "Parameters", parameters)});
    daemon.reset();
    const auto isRemembered = [] {
        const auto outcomes = RecordedOutcomes::open();
        const auto outcome = outcomes ? outcomes->find("a", noon().addSecs(600)) : outcomes.error();
        return outcome && outcome->has_value();
    };
    ASSERT_TRUE(isRemembered());
    clock.jumpTo(noon().addYears(2));
    start();
    EXPECT_TRUE(isRemembered());
    clock.advance(61s); // it stands: it is believed
    daemon->rereadStore();
    EXPECT_FALSE(isRemembered());
}

TEST_F(WrongClockTest, NothingCountsAsLongOverWhileTheClockIsDoubted)
{
    clock.advance(601s);
    ASSERT_EQ(actions(), 1);
    ASSERT_TRUE(waitUntil([this] {
        clock.advance(100ms); // what became of it is saved a little later
        const auto outcomes = RecordedOutcomes::open();
        const auto outcome = outcomes ? outcomes->find("a", noon().addSecs(600)) : outcomes.error();
        return outcome && *outcome && (*outcome)->isOver();
    }));
    const auto isStored = [this] { return read(storePath).contains("Name of a"); };
    // The first removal is an hour after the start.
    clock.advance(1h - 30s - clock.steadyTime());
    jump(24h * 365);
    clock.advance(31s);
    EXPECT_TRUE(isStored());
    jump(-24h * 365);
    clock.advance(29 * 24h);
    EXPECT_TRUE(isStored());
    clock.advance(2 * 24h);
    EXPECT_FALSE(isStored());
}
