// SPDX-License-Identifier: MIT
#include "hosts/daemon/PowerPlanner.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "hosts/daemon/PlugInAnswers.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/WaitUntil.h"
#include "unit/hosts/daemon/PerformingFixture.h"

using namespace dozely;

using namespace std::chrono_literals;
using testing::HasSubstr;

/// A machine at noon with the probe's bundle; schedules are for later.
class PowerPlannerTest : public PerformingFixture
{
protected:
    PowerPlannerTest()
    {
        Port<Clock>::current() = clock;
        Port<PowerEventScheduler>::current() = machine;
        Port<KeyEventDriver>::current() = std::make_shared<NoKeys>();
        makeProbe();
    }

    static Schedule wanting(const QString &identifier, std::chrono::seconds fromNoon,
                            const QVariantMap &parameters)
    {
        Schedule wanting = schedule(identifier, noon().addDuration(fromNoon));
        wanting.parameters = parameters;
        return wanting;
    }
    static Schedule wakeFor(const QString &identifier, std::chrono::seconds fromNoon)
    {
        return wanting(identifier, fromNoon, {{"Needs Wake Up", 1LL}});
    }
    static Schedule powerOnFor(const QString &identifier, std::chrono::seconds fromNoon)
    {
        return wanting(identifier, fromNoon, {{"Needs Startup", 1LL}});
    }
    void plan(const QList<Schedule> &schedules)
    {
        setSchedules(schedules);
        planner.update();
    }
    void setSchedules(const QList<Schedule> &schedules)
    {
        scheduler.setSchedules(schedules);
        for (const Schedule &schedule : schedules)
            waitForAnswers(answers, schedule);
    }
    /// The machine's events, as "wake 600": the type and seconds from noon, with the owner when it is not us.
    QStringList events() const { return texts(machine->events); }
    static QStringList texts(const QList<PowerEventScheduler::Event> &events)
    {
        QStringList texts;
        for (const auto &event : events) {
            texts += QString("%1 %2").arg(event.type).arg(noon().secsTo(event.time));
            if (event.owner != "com.dozely")
                texts.last() += " of " + event.owner;
        }
        texts.sort();
        return texts;
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>(noon());
    std::shared_ptr<ScheduledEvents> machine = std::make_shared<ScheduledEvents>();
    Scheduler scheduler{*clock};
    PlugInAnswers answers{Performances::programNamed("dozely-performer"), *clock};
    PowerPlanner planner{scheduler, *clock, answers};
};

TEST_F(PowerPlannerTest, WakesAMinuteAheadAndPowersOnThreeMinutesAhead)
{
    plan({wakeFor("a", 10min), powerOnFor("b", 20min), schedule("c", noon().addSecs(1800))});
    EXPECT_EQ(events(), QStringList({"poweron 1020", "wake 540"}));
}

TEST_F(PowerPlannerTest, AsksForBothWhenAScheduleNeedsBoth)
{
    plan({wanting("a", 10min, {{"Needs Wake Up", true}, {"Needs Startup", "1"}})});
    EXPECT_EQ(events(), QStringList({"poweron 420", "wake 540"}));
}

TEST_F(PowerPlannerTest, AsksForNothingWhereThePlugInNeedsNothing)
{
    plan({wanting("a", 10min, {{"Needs Wake Up", 2LL}, {"Needs Startup", "yes"}}),
          wanting("b", 10min, {{"Needs Wake Up", 0LL}})});
    EXPECT_TRUE(machine->asked.isEmpty());
}

TEST_F(PowerPlannerTest, ABundleWithoutAModuleForTheDaemonNeedsWhatItsParametersSay)
{
    Schedule schedule = wakeFor("a", 10min);
    schedule.bundlePath = makeBundle("Plain", {{"CFBundleIdentifier", "com.dozely.plain"}}, {});
    plan({schedule});
    EXPECT_EQ(events(), QStringList{"wake 540"});
}

TEST_F(PowerPlannerTest, ABundleThatCannotBeUsedNeedsNothing)
{
    Schedule missing = wakeFor("a", 10min);
    missing.bundlePath = "/Library/Application Support/Dozely/PlugIns/Missing.plugin";
    Schedule bad = wakeFor("b", 10min);
    bad.bundlePath = makeBundle("FactoryThrows", {{"WDDaemonModule", "FactoryThrows.so"}},
                                {KIT_MODULES "/FactoryThrows.so"});
    plan({missing, bad, wakeFor("c", 20min)});
    EXPECT_EQ(events(), QStringList{"wake 1140"});
}

TEST_F(PowerPlannerTest, ABundleThatIsPutThereLaterIsAskedThen)
{
    Schedule schedule = wakeFor("a", 10min);
    schedule.bundlePath = QString(plugIns) + "/Late.plugin";
    plan({schedule});
    EXPECT_TRUE(machine->asked.isEmpty());
    makeBundle("Late", {{"WDDaemonModule", "ProbePlugIn.so"}});
    EXPECT_TRUE(waitUntil([&] {
        const auto known = answers.of(schedule);
        return known && *known;
    }));
    plan({schedule});
    EXPECT_EQ(events(), QStringList{"wake 540"});
}

TEST_F(PowerPlannerTest, WhatAPlugInAnswersLaterIsActedUponByItself)
{
    scheduler.setSchedules({wakeFor("a", 10min)});
    planner.update();
    EXPECT_EQ(events(), QStringList());
    EXPECT_TRUE(waitUntil([&] {
        clock->advance(50ms);
        return events() == QStringList("wake 540");
    }));
}

TEST_F(PowerPlannerTest, AnEventThatIsThereIsNotAskedForAgain)
{
    plan({wakeFor("a", 10min)});
    plan({wakeFor("a", 10min)});
    planner.renew();
    EXPECT_EQ(machine->asked.size(), 1);
    EXPECT_TRUE(machine->cancelled.isEmpty());
}

TEST_F(PowerPlannerTest, SchedulesOfTheSameSecondShareOneEvent)
{
    plan({wakeFor("a", 10min), wakeFor("b", 10min)});
    EXPECT_EQ(machine->asked.size(), 1);
    plan({wakeFor("b", 10min)});
    EXPECT_EQ(events(), QStringList{"wake 540"});
}

TEST_F(PowerPlannerTest, WhatWasOverByAClockThatWasAheadIsAskedForWhenThatIsSetBack)
{
    clock->jumpTo(noon().addYears(1));
    plan({wakeFor("a", 2h), powerOnFor("b", 3h)});
    EXPECT_TRUE(events().isEmpty());
    clock->jumpTo(noon());
    planner.renew();
    EXPECT_EQ(events(), QStringList({"poweron 10620", "wake 7140"}));
}

TEST_F(PowerPlannerTest, AChangedDateMovesTheEvent)
{
    plan({wakeFor("a", 10min), wakeFor("b", 20min)});
    plan({wakeFor("a", 15min), wakeFor("b", 20min)});
    EXPECT_EQ(events(), QStringList({"wake 1140", "wake 840"}));
    EXPECT_EQ(texts(machine->cancelled), QStringList{"wake 540"});
}

TEST_F(PowerPlannerTest, ChangedParametersAreAskedAboutAgain)
{
    plan({wakeFor("a", 10min)});
    plan({powerOnFor("a", 10min)});
    EXPECT_EQ(events(), QStringList{"poweron 420"});
    plan({wanting("a", 10min, {})});
    EXPECT_EQ(events(), QStringList());
}

TEST_F(PowerPlannerTest, ARemovedScheduleLeavesNothing)
{
    plan({wakeFor("a", 10min), powerOnFor("b", 10min)});
    plan({powerOnFor("b", 10min)});
    EXPECT_EQ(events(), QStringList{"poweron 420"});
    plan({});
    EXPECT_EQ(events(), QStringList());
}

TEST_F(PowerPlannerTest, ADisabledScheduleAndOneThatIsDoneNeedNothing)
{
    Schedule disabled = wakeFor("a", 10min);
    plan({disabled, wakeFor("b", 20min)});
    disabled.isEnabled = false;
    scheduler.note({wakeFor("b", 20min), noon().addSecs(1200)}, OccurrenceState::Removed);
    plan({disabled, wakeFor("b", 20min)});
    EXPECT_EQ(events(), QStringList());
}

TEST_F(PowerPlannerTest, WhatAScheduleLeftWhileTheDaemonDidNotRunIsTakenBack)
{
    machine->events = {{noon().addSecs(700), "com.dozely", "wake"},
                       {noon().addSecs(800), "com.dozely", "poweron"}};
    plan({wakeFor("a", 10min)});
    EXPECT_EQ(events(), QStringList{"wake 540"});
}

TEST_F(PowerPlannerTest, EventsOfOthersAreLeftAlone)
{
    machine->events = {{noon().addSecs(700), "pmset", "wake"}, {noon().addSecs(540), "org.other", "wake"}};
    plan({wakeFor("a", 10min)});
    EXPECT_EQ(events(), QStringList({"wake 540", "wake 540 of org.other", "wake 700 of pmset"}));
    plan({});
    EXPECT_EQ(events(), QStringList({"wake 540 of org.other", "wake 700 of pmset"}));
}

TEST_F(PowerPlannerTest, WhatIsNearerThanTheLeadTimeIsNotAskedFor)
{
    plan({wakeFor("a", 60s), powerOnFor("b", 180s), wakeFor("c", 61s), powerOnFor("d", 181s)});
    EXPECT_EQ(events(), QStringList({"poweron 1", "wake 1"}));
}

TEST_F(PowerPlannerTest, AnEventWhoseTimeHasPassedIsNotCancelled)
{
    plan({wakeFor("a", 10min)});
    clock->advance(9min);
    planner.update();
    EXPECT_TRUE(machine->cancelled.isEmpty()) << "the machine's scheduler drops it by itself";
}

TEST_F(PowerPlannerTest, OfVeryManyOnlyTheEarliestAreAskedForAndTheOthersFollow)
{
    QList<Schedule> many;
    for (int i = 0; i < 200; ++i)
        many += wakeFor(QString::number(i), std::chrono::seconds(600 + (i * 7) % 200));
    plan(many);
    ASSERT_EQ(machine->events.size(), PowerPlanner::mostEvents);
    EXPECT_EQ(texts(machine->events).first(), "wake 540");
    EXPECT_FALSE(events().contains(QString("wake %1").arg(540 + PowerPlanner::mostEvents)));
    clock->advance(540s);
    machine->events.clear();
    planner.update();
    EXPECT_EQ(machine->events.size(), PowerPlanner::mostEvents);
    EXPECT_TRUE(events().contains(QString("wake %1").arg(540 + PowerPlanner::mostEvents)));
}

TEST_F(PowerPlannerTest, AnEventStaysWhileThePlugInThatMayNeedItIsAsked)
{
    machine->events = {{noon().addSecs(540), "com.dozely", PowerEventScheduler::wake},
                       {noon().addSecs(700), "com.dozely", PowerEventScheduler::wake}};
    scheduler.setSchedules({wakeFor("a", 10min)});
    planner.update();
    EXPECT_TRUE(machine->cancelled.isEmpty()) << "nobody knows yet whether it is still wanted";
    plan({wakeFor("a", 10min)});
    EXPECT_EQ(events(), QStringList{"wake 540"});
}

TEST_F(PowerPlannerTest, ManyWishesOfOneMomentAreOneUpdate)
{
    setSchedules({wakeFor("a", 10min)});
    planner.updateSoon();
    planner.updateSoon();
    EXPECT_TRUE(machine->asked.isEmpty());
    EXPECT_EQ(clock->pendingDelays().count(100ms), 1);
    clock->advance(100ms);
    EXPECT_EQ(events(), QStringList{"wake 540"});
}

TEST_F(PowerPlannerTest, ARefusalIsToldOnceAndAskedForAgainOnlyWhenItIsRenewed)
{
    machine->refuses = true;
    plan({wakeFor("a", 10min)});
    EXPECT_EQ(messages().filter("The machine does not take it that it should wake at").size(), 1);
    planner.update();
    EXPECT_EQ(machine->asked.size(), 1);
    planner.renew();
    EXPECT_EQ(machine->asked.size(), 2);
    EXPECT_EQ(messages().filter("does not take it").size(), 1);
    machine->refuses = false;
    planner.renew();
    EXPECT_EQ(events(), QStringList{"wake 540"});
}

TEST_F(PowerPlannerTest, ARefusalFallsBackToTheTool)
{
    write("/usr/bin/pmset", "#!/bin/sh\necho \"$*\" >" + root.join("/asked").toUtf8() + "\n");
    ASSERT_EQ(::chmod(qPrintable(root.join("/usr/bin/pmset")), 0755), 0);
    machine->refuses = true;
    plan({powerOnFor("a", 10min)});
    EXPECT_THAT(read("/asked").toStdString(), HasSubstr("schedule poweron 03/14/26 "));
}

TEST_F(PowerPlannerTest, TheEventsAreRightBeforeTheMachineSleepsAndBeforeItGoesOff)
{
    ZDRPowerManager::sharedInstance();
    setSchedules({wakeFor("a", 10min)});
    power->send(kIOMessageSystemWillSleep);
    EXPECT_EQ(events(), QStringList{"wake 540"});
    setSchedules({powerOnFor("a", 10min)});
    power->send(kIOMessageSystemWillPowerOff);
    EXPECT_EQ(events(), QStringList{"poweron 420"});
    EXPECT_EQ(power->consents, 2);
}

TEST_F(PowerPlannerTest, AfterSleepTheEventsAreRenewedAndTheAlarmIsSetAnew)
{
    ZDRPowerManager::sharedInstance();
    int woken = 0;
    QObject::connect(&planner, &PowerPlanner::systemWoke, &planner, [&] { ++woken; });
    machine->refuses = true;
    plan({wakeFor("a", 10min)});
    machine->refuses = false;
    power->send(kIOMessageSystemHasPoweredOn);
    EXPECT_EQ(events(), QStringList{"wake 540"});
    EXPECT_EQ(machine->phases, QList{PowerEventScheduler::Phase::Running});
    EXPECT_EQ(woken, 1);
}

TEST_F(PowerPlannerTest, FromItsWakeOnAScheduleKeepsTheMachineAwakeUntilItsActionHasItsOwnLock)
{
    plan({wakeFor("a", 10min)});
    clock->advance(9min - 1ms);
    EXPECT_EQ(power->inhibitions, 0);
    clock->advance(1ms);
    EXPECT_EQ(power->inhibitions, 1);
    EXPECT_EQ(power->reasons, QStringList{"A scheduled action is about to run"});
    clock->advance(1min);
    planner.update();
    EXPECT_EQ(power->inhibitions, 1) << "it is due, and did not begin yet";
    scheduler.note({wakeFor("a", 10min), noon().addSecs(600)}, OccurrenceState::Begun);
    planner.update();
    EXPECT_EQ(power->inhibitions, 1) << "the agent that has it takes a moment for its own lock";
    clock->advance(5s);
    EXPECT_EQ(power->inhibitions, 0);
}

TEST_F(PowerPlannerTest, AMachineThatSwitchedItselfOnIsKeptAwakeToo)
{
    plan({powerOnFor("a", 10min)});
    clock->advance(7min - 1ms);
    EXPECT_EQ(power->inhibitions, 0);
    clock->advance(1ms);
    EXPECT_EQ(power->inhibitions, 1);
}

TEST_F(PowerPlannerTest, AMachineThatWokeForAScheduleIsKeptAwakeAtOnce)
{
    ZDRPowerManager::sharedInstance();
    plan({wakeFor("a", 10min)});
    power->send(kIOMessageSystemWillSleep);
    clock->jumpTo(noon().addSecs(540));
    power->send(kIOMessageSystemHasPoweredOn);
    EXPECT_EQ(power->inhibitions, 1);
}

TEST_F(PowerPlannerTest, WhatIsNotPerformedKeepsTheMachineAwakeForFiveMinutesAtMost)
{
    plan({wakeFor("a", 1min)});
    EXPECT_EQ(power->inhibitions, 1);
    clock->advance(6min - 1s);
    EXPECT_EQ(power->inhibitions, 1);
    clock->advance(6s);
    EXPECT_EQ(power->inhibitions, 0);
}

TEST_F(PowerPlannerTest, ScheduleThatNeedsNoWakeOrIsGoneKeepsNothingAwake)
{
    plan({wanting("a", 30s, {})});
    EXPECT_EQ(power->inhibitions, 0);
    plan({wakeFor("b", 30s)});
    EXPECT_EQ(power->inhibitions, 1);
    plan({});
    clock->advance(5s);
    EXPECT_EQ(power->inhibitions, 0);
}

TEST_F(PowerPlannerTest, ABundleThatWantsTheMachineAsleepKeepsNothingAwake)
{
    Schedule sleep = wakeFor("a", 30s);
    sleep.bundlePath =
        makeBundle("Sleeper", {{"WDDaemonModule", "ProbePlugIn.so"}, {"WDInhibitsSleep", false}});
    plan({sleep});
    EXPECT_EQ(power->inhibitions, 0);
}

TEST_F(PowerPlannerTest, OnceSleepHasBegunTheAlarmIsNotSetForARunningMachine)
{
    ZDRPowerManager::sharedInstance();
    power->send(kIOMessageSystemWillSleep);
    planner.renew(); // the clock was set in that moment
    EXPECT_TRUE(machine->phases.isEmpty());
    power->send(kIOMessageSystemHasPoweredOn);
    EXPECT_EQ(machine->phases.size(), 1);
}
