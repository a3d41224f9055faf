// SPDX-License-Identifier: MIT
#include "hosts/daemon/WakeTrial.h"

#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

using namespace dozely;

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::IsEmpty;

using Outcome = WakeTrial::Outcome;

/// A machine with a clock that could wake it, and with an alarm of somebody's schedule.
class WakeTrialTest : public BundleFixture
{
protected:
    WakeTrialTest()
    {
        Port<Clock>::current() = clock;
        Port<PowerEventScheduler>::current() = scheduler;
        Port<KeyEventDriver>::current() = std::make_shared<NoKeys>();
        ZDRPowerManager::sharedInstance();
        scheduler->clock = PowerEventScheduler::Alarm{"rtc0", "rtc_cmos", noon().addDuration(8h), true};
        scheduler->events = {evening};
    }
    void sleep(std::chrono::seconds duration = 60s)
    {
        wakeTrial.sleep(duration, [this](const auto &told) { findings += told; });
    }
    /// The machine falls asleep, and is back after that time.
    void sleepFor(std::chrono::seconds duration)
    {
        power->send(kIOMessageSystemWillSleep);
        clock->advance(duration);
        power->send(kIOMessageSystemHasPoweredOn);
    }
    Outcome outcome() const { return findings.constLast()->outcome; }
    QString refusal() const { return findings.constLast().error().text; }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>(noon());
    std::shared_ptr<ScheduledEvents> scheduler = std::make_shared<ScheduledEvents>();
    const PowerEventScheduler::Event evening{noon().addDuration(8h), "com.dozely", "wake"};
    const QList<PowerEventScheduler::Event> asBefore{evening};
    QDateTime nextAction = noon().addDuration(8h);
    QList<Result<WakeTrial::Finding>> findings;
    WakeTrial wakeTrial{*clock, [this](const QDateTime &until) { return nextAction <= until; }};
};

TEST_F(WakeTrialTest, ReadsTheAlarmBack)
{
    EXPECT_EQ(wakeTrial.tryAlarm().outcome, Outcome::Kept);
    EXPECT_THAT(wakeTrial.tryAlarm().sentence.toStdString(), HasSubstr("rtc0"));
    EXPECT_THAT(scheduler->tested, testing::Each(testing::Gt(noon())));
    EXPECT_EQ(scheduler->events, asBefore);
    EXPECT_EQ(power->sleeps, 0);
}

TEST_F(WakeTrialTest, SaysThatAnAlarmIsDropped)
{
    scheduler->alarmFault = "Invalid argument.";
    EXPECT_EQ(wakeTrial.tryAlarm().outcome, Outcome::Dropped);
    EXPECT_THAT(wakeTrial.tryAlarm().sentence.toStdString(), HasSubstr("Invalid argument."));
    sleep();
    EXPECT_EQ(outcome(), Outcome::Dropped);
    EXPECT_EQ(power->sleeps, 0) << "which nothing would wake";
}

TEST_F(WakeTrialTest, SaysThatThereIsNoClock)
{
    scheduler->clock.reset();
    EXPECT_EQ(wakeTrial.tryAlarm().outcome, Outcome::NoClock);
    sleep();
    EXPECT_EQ(outcome(), Outcome::NoClock);
    EXPECT_EQ(power->sleeps, 0);
}

TEST_F(WakeTrialTest, HasTheMachineSleepAndSaysThatItWasWoken)
{
    sleep();
    EXPECT_EQ(power->sleeps, 1);
    ASSERT_EQ(scheduler->events.size(), 2);
    EXPECT_EQ(scheduler->events.last().time, noon().addSecs(60));
    EXPECT_NE(scheduler->events.last().owner, evening.owner);
    EXPECT_THAT(findings, IsEmpty()) << "while it sleeps";
    sleepFor(62s);
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(outcome(), Outcome::Woken);
    EXPECT_EQ(findings[0]->planned, noon().addSecs(60));
    EXPECT_EQ(findings[0]->back, noon().addSecs(62));
    EXPECT_EQ(scheduler->events, asBefore) << "what was planned stays planned";
    EXPECT_THAT(scheduler->putBack, IsEmpty()) << "the scheduler has its own alarms";
}

TEST_F(WakeTrialTest, PutsTheAlarmOfAnotherProgramBack)
{
    scheduler->clock->isOurs = false;
    sleep();
    sleepFor(62s);
    EXPECT_THAT(scheduler->putBack, testing::ElementsAre(noon().addDuration(8h)));
}

TEST_F(WakeTrialTest, TellsWhatElseWokeTheMachineFromTheClock)
{
    sleep();
    sleepFor(20s);
    EXPECT_EQ(outcome(), Outcome::TooEarly);
    sleep();
    sleepFor(600s);
    EXPECT_EQ(outcome(), Outcome::TooLate);
    EXPECT_EQ(findings.size(), 2);
    EXPECT_EQ(scheduler->events, asBefore);
}

TEST_F(WakeTrialTest, IsOverWhenTheMachineDoesNotFallAsleep)
{
    sleep();
    clock->advance(WakeTrial::longestFallingAsleep);
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(refusal(), "the machine did not fall asleep");
    EXPECT_EQ(scheduler->events, asBefore);
    sleepFor(60s); // by its user, later
    EXPECT_EQ(findings.size(), 1);
}

TEST_F(WakeTrialTest, SaysThatTheMachineDoesNotLetItselfBePutToSleep)
{
    power->refusesSleep = true;
    sleep();
    EXPECT_EQ(refusal(), "the machine does not let itself be put to sleep");
    EXPECT_EQ(scheduler->events, asBefore);
}

TEST_F(WakeTrialTest, IsNotTriedWhereNothingCanPutTheMachineToSleep)
{
    power->isSleepless = true;
    sleep();
    EXPECT_EQ(refusal(), "this machine cannot be put to sleep");
    EXPECT_EQ(scheduler->events, asBefore);
}

TEST_F(WakeTrialTest, NeverSleepsOverAnAction)
{
    nextAction = noon().addSecs(119);
    sleep();
    EXPECT_THAT(refusal().toStdString(), HasSubstr("an action goes on, or is due too soon"));
    nextAction = noon().addSecs(121);
    power->keptAwakeElsewhere = true;
    sleep();
    EXPECT_THAT(refusal().toStdString(), HasSubstr("an action goes on"));
    EXPECT_EQ(power->sleeps, 0);
}

TEST_F(WakeTrialTest, RespectsWhoKeepsTheMachineAwake)
{
    power->blocking = {"apt: Upgrades packages"};
    sleep();
    EXPECT_THAT(refusal().toStdString(), HasSubstr("apt: Upgrades packages"));
    EXPECT_EQ(power->sleeps, 0);
}

TEST_F(WakeTrialTest, IsOneAtATimeAndNotForTooLong)
{
    sleep(WakeTrial::shortestSleep - 1s);
    EXPECT_THAT(refusal().toStdString(), HasSubstr("20 to 600 seconds"));
    sleep(WakeTrial::longestSleep + 1s);
    EXPECT_THAT(refusal().toStdString(), HasSubstr("20 to 600 seconds"));
    sleep();
    sleep();
    EXPECT_EQ(refusal(), "it is being tried already");
    EXPECT_EQ(power->sleeps, 1);
}

TEST_F(WakeTrialTest, TakesItsEventBackWhenTheDaemonEnds)
{
    {
        WakeTrial another{*clock, [](const QDateTime &) { return false; }};
        another.sleep(60s, [this](const auto &told) { findings += told; });
        EXPECT_EQ(scheduler->events.size(), 2);
    }
    EXPECT_EQ(scheduler->events, asBefore);
    EXPECT_THAT(findings, IsEmpty());
}
