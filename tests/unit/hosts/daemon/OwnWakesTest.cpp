// SPDX-License-Identifier: MIT
#include "hosts/daemon/OwnWakes.h"

#include "DozelyKit/system/power/PowerMessages.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

using namespace dozely;

using namespace std::chrono_literals;

/// A machine at noon, on which something is due at one o'clock.
class OwnWakesTest : public BundleFixture
{
protected:
    OwnWakesTest()
    {
        Port<Clock>::current() = clock;
        Port<PowerEventScheduler>::current() = events;
        Port<KeyEventDriver>::current() = std::make_shared<NoKeys>();
        ZDRPowerManager::sharedInstance();
        root.makeFolder("/var/lib/dozely");
    }
    void schedule(std::chrono::seconds ahead, const char *type, const QString &owner = "com.dozely")
    {
        events->schedule(due.addDuration(-ahead), owner, type);
    }
    /// Sleeps until so long before the due date; positive times are ahead of it.
    void sleepUntil(std::chrono::seconds ahead)
    {
        power->send(kIOMessageSystemWillSleep);
        events->events.clear(); // what is past is forgotten
        clock->sleep(std::chrono::milliseconds(clock->currentDate().msecsTo(due.addDuration(-ahead))));
        power->send(kIOMessageSystemHasPoweredOn);
    }
    void goOff(bool isSure = true)
    {
        power->goesOff = isSure;
        power->send(kIOMessageSystemWillPowerOff);
        wakes.reset();
        events->events.clear();
    }
    /// The machine starts at that time, and the daemon half a minute later.
    void startAt(std::chrono::seconds ahead)
    {
        started = std::make_shared<FakeClock>(due.addDuration(-ahead));
        started->advance(30s);
        wakes = std::make_unique<OwnWakes>(*started);
    }

    const QDateTime due = noon().addDuration(1h);
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>(noon());
    std::shared_ptr<FakeClock> started;
    std::shared_ptr<ScheduledEvents> events = std::make_shared<ScheduledEvents>();
    std::unique_ptr<OwnWakes> wakes = std::make_unique<OwnWakes>(*clock);
};

TEST_F(OwnWakesTest, KnowsWhatAnAlarmOfOursWokeTheMachineFor)
{
    schedule(60s, "wake");
    sleepUntil(57s);
    EXPECT_EQ(wakes->wokenFor(due), due.addSecs(-57));
    EXPECT_FALSE(wakes->wokenFor(due.addSecs(1))) << "for that one alone";
    EXPECT_FALSE(wakes->wokenFor(due.addSecs(-1)));
}

TEST_F(OwnWakesTest, AMachineThatIsAwakeWasNotWoken)
{
    schedule(60s, "wake");
    clock->advance(59min);
    EXPECT_FALSE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, WhoWakesTheMachineEarlierOrLaterIsSomebodyElse)
{
    for (const auto &ahead : {40min, 2min}) {
        schedule(60s, "wake");
        sleepUntil(ahead);
        EXPECT_FALSE(wakes->wokenFor(due));
    }
    schedule(60s, "wake");
    sleepUntil(29s);
    EXPECT_FALSE(wakes->wokenFor(due)) << "31 s behind the alarm";
}

TEST_F(OwnWakesTest, WhatIsWithinTheTimeOfWakingCounts)
{
    schedule(60s, "wake");
    sleepUntil(30s);
    EXPECT_TRUE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, AnAlarmOfAnotherOwnerAtThatTimeMakesItUnsure)
{
    schedule(60s, "wake");
    schedule(50s, "wake", "pmset");
    sleepUntil(50s);
    EXPECT_FALSE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, AnEventThatSwitchesTheMachineOnDoesNotWakeIt)
{
    schedule(60s, "poweron");
    sleepUntil(58s);
    EXPECT_FALSE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, AnotherSleepEndsIt)
{
    schedule(60s, "wake");
    sleepUntil(58s);
    ASSERT_TRUE(wakes->wokenFor(due));
    power->send(kIOMessageSystemWillSleep);
    EXPECT_FALSE(wakes->wokenFor(due));
    power->send(kIOMessageSystemHasPoweredOn);
    EXPECT_FALSE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, KnowsWhatAnAlarmOfOursSwitchedTheMachineOnFor)
{
    schedule(180s, "poweron");
    schedule(60s, "wake");
    goOff();
    startAt(160s);
    EXPECT_EQ(wakes->wokenFor(due), due.addSecs(-160));
    EXPECT_FALSE(wakes->wokenFor(due.addSecs(120)));
    wakes = std::make_unique<OwnWakes>(*started);
    EXPECT_TRUE(wakes->wokenFor(due)) << "a daemon that is started again knows it, too";
}

TEST_F(OwnWakesTest, AMachineThatIsStartedAtAnotherTimeWasStartedBySomebodyElse)
{
    schedule(180s, "poweron");
    goOff();
    startAt(190s);
    EXPECT_FALSE(wakes->wokenFor(due));
    startAt(59s);
    EXPECT_FALSE(wakes->wokenFor(due)) << "two minutes behind the alarm";
    startAt(60s);
    EXPECT_TRUE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, AMachineThatHasSleptSinceItsStartDidNotComeBackByThat)
{
    schedule(180s, "poweron");
    goOff();
    startAt(160s);
    started->sleep(10s);
    wakes = std::make_unique<OwnWakes>(*started);
    EXPECT_FALSE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, ARestartOfTheServiceIsNoPowerOff)
{
    schedule(180s, "poweron");
    goOff(false);
    startAt(160s);
    EXPECT_FALSE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, AnEarlierEventOfAnotherOwnerHasTheAlarm)
{
    schedule(180s, "poweron");
    schedule(200s, "poweron", "pmset");
    goOff();
    startAt(160s);
    EXPECT_FALSE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, AnOldNoteIsTakenBackWhenNothingIsToSwitchTheMachineOn)
{
    schedule(180s, "poweron");
    power->goesOff = true;
    power->send(kIOMessageSystemWillPowerOff);
    events->events.clear();
    power->send(kIOMessageSystemWillPowerOff);
    startAt(160s);
    EXPECT_FALSE(wakes->wokenFor(due));
}

TEST_F(OwnWakesTest, ADamagedNoteTellsNothing)
{
    for (const QByteArray &content : {QByteArray("nonsense"), QByteArray(), storeOf({})}) {
        write("/var/lib/dozely/switch-on.plist", content);
        startAt(160s);
        EXPECT_FALSE(wakes->wokenFor(due));
    }
}
