// SPDX-License-Identifier: MIT
#include "hosts/daemon/Scheduler.h"
#include "hosts/daemon/HandOvers.h"
#include "hosts/daemon/SchedulerObserver.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

using namespace std::chrono_literals;

/// The clock starts at noon.
class SchedulerTest : public HostFixture
{
protected:
    QStringList due() const
    {
        QStringList identifiers;
        for (const Occurrence &occurrence : scheduler.due())
            identifiers += occurrence.schedule.identifier;
        return identifiers;
    }
    QString bundlePath() const { return schedule("a").fullBundlePath(); }
    static Occurrence occurrenceOf(const Schedule &schedule) { return {schedule, schedule.date}; }

    FakeClock clock{noon()};
    Scheduler scheduler{clock};
};

TEST_F(SchedulerTest, WithoutSchedulesWaitsForNothing)
{
    EXPECT_FALSE(scheduler.nextDate());
    EXPECT_TRUE(scheduler.due().isEmpty());
}

TEST_F(SchedulerTest, WaitsForTheEarliestOfMany)
{
    QList<Schedule> many;
    for (int i = 0; i < 1000; ++i)
        many += schedule(QString::number(i), noon().addSecs(1 + (i * 37) % 1000));
    scheduler.setSchedules(many);
    EXPECT_EQ(scheduler.nextDate(), noon().addSecs(1));
    EXPECT_TRUE(due().isEmpty());
    clock.advance(1s);
    EXPECT_EQ(due(), QStringList{"0"});
}

TEST_F(SchedulerTest, GivesWhatIsDueEarliestFirstAndEqualDatesInTheOrderOfTheStore)
{
    scheduler.setSchedules({schedule("c", noon().addSecs(2)), schedule("a", noon().addSecs(1)),
                            schedule("b", noon().addSecs(2)), schedule("d", noon().addSecs(9))});
    clock.advance(3s);
    EXPECT_EQ(due(), QStringList({"a", "c", "b"}));
}

TEST_F(SchedulerTest, GivesWhatIsAskedForWhenNothingIsDueByItsDate)
{
    scheduler.setSchedules({schedule("asked", noon().addDays(1)), schedule("due", noon().addSecs(1))});
    scheduler.noteAsked(scheduler.makeOccurrenceNow(*scheduler.schedule("asked")), 1000);
    clock.advance(1s);
    ASSERT_EQ(due(), QStringList{"due"});
    scheduler.note(scheduler.due().first(), OccurrenceState::Done);
    EXPECT_EQ(due(), QStringList{"asked"});
}

TEST_F(SchedulerTest, IsDueAtItsVeryDate)
{
    scheduler.setSchedules({schedule("a", noon().addSecs(1))});
    clock.advance(999ms);
    EXPECT_TRUE(due().isEmpty());
    clock.advance(1ms);
    EXPECT_EQ(due(), QStringList{"a"});
}

TEST_F(SchedulerTest, DoesNotGiveADisabledSchedule)
{
    Schedule disabled = schedule("a");
    disabled.isEnabled = false;
    scheduler.setSchedules({disabled});
    EXPECT_FALSE(scheduler.nextDate());
    EXPECT_TRUE(due().isEmpty());
}

TEST_F(SchedulerTest, DoesNotGiveARemovedSchedule)
{
    scheduler.setSchedules({schedule("a"), schedule("b")});
    scheduler.setSchedules({schedule("b")});
    EXPECT_EQ(due(), QStringList{"b"});
}

TEST_F(SchedulerTest, GivesAnOccurrenceNoMoreWhateverBecameOfIt)
{
    using enum OccurrenceState;
    for (const OccurrenceState state : {Begun, Done, Skipped, NotPerformed, Removed, Interrupted}) {
        scheduler.setSchedules({schedule("a")});
        scheduler.setRecord({});
        ASSERT_EQ(due(), QStringList{"a"});
        scheduler.note(occurrenceOf(schedule("a")), state);
        EXPECT_TRUE(due().isEmpty());
        EXPECT_FALSE(scheduler.nextDate());
    }
}

TEST_F(SchedulerTest, GivesAScheduleAgainOnceItHasANewDate)
{
    scheduler.setSchedules({schedule("a")});
    scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Done);
    scheduler.setSchedules({schedule("a", noon().addSecs(60))});
    EXPECT_EQ(scheduler.nextDate(), noon().addSecs(60));
    scheduler.pruneRecord([](const QString &) { return false; });
    scheduler.setSchedules({schedule("a")}); // the date that it had before
    EXPECT_FALSE(scheduler.nextDate());
}

TEST_F(SchedulerTest, ReadsLatenessAgainstThePlugInsTimeOut)
{
    const Occurrence occurrence = occurrenceOf(schedule("a"));
    clock.advance(5s);
    EXPECT_EQ(scheduler.lateness().of(occurrence), 5s);
    EXPECT_FALSE(scheduler.lateness().isTooLate(occurrence, -5));
    clock.advance(1ms);
    EXPECT_TRUE(scheduler.lateness().isTooLate(occurrence, -5));
    EXPECT_FALSE(scheduler.lateness().isTooLate(occurrence, -180));
    EXPECT_FALSE(scheduler.lateness().isTooLate(occurrence, std::numeric_limits<qint32>::min()));
}

TEST_F(SchedulerTest, LeavesASecondToAPlugInWithoutTimeOut)
{
    const Occurrence occurrence = occurrenceOf(schedule("a"));
    clock.advance(1s);
    EXPECT_FALSE(scheduler.lateness().isTooLate(occurrence, 0));
    EXPECT_FALSE(scheduler.lateness().isTooLate(occurrence, 60));
    clock.advance(1ms);
    EXPECT_TRUE(scheduler.lateness().isTooLate(occurrence, 0));
    EXPECT_TRUE(scheduler.lateness().isTooLate(occurrence, 60));
}

TEST_F(SchedulerTest, FindsWhatAForwardJumpOfTheClockPassedDueAndTooLate)
{
    scheduler.setSchedules({schedule("a", noon().addSecs(600))});
    clock.jumpTo(noon().addSecs(3600));
    ASSERT_EQ(due(), QStringList{"a"});
    EXPECT_TRUE(scheduler.lateness().isTooLate(scheduler.due().first(), -5));
}

TEST_F(SchedulerTest, WaitsAgainAfterTheClockIsSetBack)
{
    scheduler.setSchedules({schedule("a", noon().addSecs(60))});
    clock.jumpTo(noon().addSecs(60));
    ASSERT_EQ(due(), QStringList{"a"});
    clock.jumpTo(noon());
    EXPECT_TRUE(due().isEmpty());
    EXPECT_EQ(scheduler.nextDate(), noon().addSecs(60));
}

TEST_F(SchedulerTest, DoesNotRepeatWhatRanBeforeTheClockWasSetBack)
{
    scheduler.setSchedules({schedule("a")});
    scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Done);
    clock.jumpTo(noon().addDays(-1));
    EXPECT_FALSE(scheduler.nextDate());
    clock.advance(48h);
    EXPECT_TRUE(due().isEmpty());
}

TEST_F(SchedulerTest, NeitherRepeatsNorForgetsAcrossARestart)
{
    const QList<Schedule> schedules{schedule("ran"), schedule("missed"),
                                    schedule("later", noon().addSecs(60))};
    scheduler.setSchedules(schedules);
    scheduler.note(occurrenceOf(schedules[0]), OccurrenceState::Done);

    Scheduler restarted(clock, scheduler.record());
    restarted.setSchedules(schedules);
    ASSERT_EQ(restarted.due().size(), 1);
    EXPECT_EQ(restarted.due().first().schedule.identifier, "missed");
    restarted.note(restarted.due().first(), OccurrenceState::Done);
    EXPECT_EQ(restarted.nextDate(), noon().addSecs(60));
}

TEST_F(SchedulerTest, SaysWhatMayHaveRunInATimeOfWhichNothingIsKnown)
{
    scheduler.setNothingKnownBefore(noon());
    scheduler.setSchedules({schedule("before", noon().addSecs(-1)), schedule("after")});
    const QList<Occurrence> both = scheduler.due();
    ASSERT_EQ(both.size(), 2);
    EXPECT_TRUE(both[0].mayHaveRun);
    EXPECT_FALSE(both[1].mayHaveRun);
}

TEST_F(SchedulerTest, MakesOccurrencesForNowThatAreApartFromAllOthers)
{
    const Schedule dueNow = schedule("a");
    scheduler.setSchedules({dueNow});
    const Occurrence first = scheduler.makeOccurrenceNow(dueNow);
    EXPECT_EQ(first.date, noon().addSecs(1));
    scheduler.note(first, OccurrenceState::Done);
    EXPECT_EQ(scheduler.makeOccurrenceNow(dueNow).date, noon().addSecs(2));
    EXPECT_EQ(due(), QStringList{"a"}) << "the schedule's own occurrence is still to come";
}

TEST_F(SchedulerTest, GivesAnOccurrenceToTheUserWhoseAgentHasItAndToNobodyElse)
{
    scheduler.setSchedules({schedule("a")});
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()))
        << "not handed to anybody yet";
    scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Done, 501);
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(502, bundlePath(), noon()));
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(0, bundlePath(), noon()));
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon().addSecs(1)));
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath() + "x", noon()));
    const auto held =
        HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), schedule("a").calendarDate());
    ASSERT_TRUE(held);
    EXPECT_EQ(held->schedule.identifier, "a");
    EXPECT_EQ(held->date, noon());
}

TEST_F(SchedulerTest, KnowsToWhenWhatAnAgentHasWasPostponed)
{
    scheduler.setSchedules({schedule("a")});
    Occurrence postponed = occurrenceOf(schedule("a"));
    postponed.postponedTo = noon().addSecs(600);
    scheduler.notePostponed(occurrenceOf(schedule("a")), noon().addSecs(600));
    scheduler.note(postponed, OccurrenceState::Done, 501);
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()));
    const auto held = HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon().addSecs(600));
    ASSERT_TRUE(held);
    EXPECT_EQ(held->date, noon());
    EXPECT_EQ(held->postponedTo, noon().addSecs(600));
}

TEST_F(SchedulerTest, TakesBackWhatAnAgentMayHaveAndNothingThatFailedThere)
{
    scheduler.setSchedules({schedule("a")});
    scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Unknown, 501);
    EXPECT_TRUE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()))
        << "it was slow to answer, and has it all the same";
    for (const auto state :
         {OccurrenceState::Failed, OccurrenceState::NotPerformed, OccurrenceState::Skipped}) {
        scheduler.note(occurrenceOf(schedule("a")), state, 501);
        EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()));
    }
}

TEST_F(SchedulerTest, TakesAHandedOverOccurrenceBackOnlyOnce)
{
    scheduler.setSchedules({schedule("a")});
    for (const auto after : {OccurrenceState::Begun, OccurrenceState::Done, OccurrenceState::Removed}) {
        scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Done, 501);
        const auto held = HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon());
        ASSERT_TRUE(held);
        scheduler.note(*held, after);
        EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()));
    }
}

TEST_F(SchedulerTest, DoesNotTakeBackWhatWasRemovedDisabledOrMovedToAnotherBundle)
{
    scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Done, 501);
    scheduler.setSchedules({});
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()));
    Schedule disabled = schedule("a");
    disabled.isEnabled = false;
    scheduler.setSchedules({disabled});
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()));
    Schedule other = schedule("a");
    other.bundlePath = "/other.plugin";
    scheduler.setSchedules({other});
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()));
    scheduler.setSchedules({schedule("a")});
    EXPECT_TRUE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()));
}

TEST_F(SchedulerTest, TakesAnOccurrenceBackForAnHour)
{
    scheduler.setSchedules({schedule("a")});
    scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Done, 501);
    clock.advance(1h);
    EXPECT_TRUE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()));
    clock.advance(1ms);
    EXPECT_FALSE(HandOvers(clock, scheduler).heldByAgent(501, bundlePath(), noon()));
}

TEST_F(SchedulerTest, TellsOccurrencesOfOneBundleAndDateApartByTheirParameters)
{
    Schedule other = schedule("b");
    other.parameters = {{"Key", "other"}};
    scheduler.setSchedules({schedule("a"), other});
    scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Done, 501);
    scheduler.note(occurrenceOf(other), OccurrenceState::Done, 501);
    EXPECT_EQ(HandOvers(clock, scheduler)
                  .heldByAgent(501, bundlePath(), noon(), other.parameters)
                  ->schedule.identifier,
              "b");
    EXPECT_EQ(HandOvers(clock, scheduler)
                  .heldByAgent(501, bundlePath(), noon(), {{"Key", "made up"}})
                  ->schedule.identifier,
              "a");
    EXPECT_EQ(HandOvers(clock, scheduler)
                  .heldByAgent(501, bundlePath(), noon(), {{"Key", "made up"}})
                  ->schedule.parameters,
              schedule("a").parameters);
}

TEST_F(SchedulerTest, RemembersAHandOverAcrossARestart)
{
    scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Done, 501);
    Scheduler restarted(clock, scheduler.record());
    restarted.setSchedules({schedule("a")});
    EXPECT_TRUE(HandOvers(clock, restarted).heldByAgent(501, bundlePath(), noon()));
    EXPECT_FALSE(HandOvers(clock, restarted).heldByAgent(502, bundlePath(), noon()));
}

TEST_F(SchedulerTest, TellsWhatChangesByThePlaceInTheStore)
{
    struct Listener : SchedulerObserver {
        void schedulesReplaced() override { told += "all"; }
        void scheduleChanged(qint32 place) override { told += QString::number(place); }
        QStringList told;
    } listener;
    scheduler.setSchedules({schedule("z"), schedule("a")});
    scheduler.addObserver(&listener);
    scheduler.note(occurrenceOf(schedule("a")), OccurrenceState::Done);
    scheduler.note(occurrenceOf(schedule("gone")), OccurrenceState::Done);
    scheduler.takeBack(occurrenceOf(schedule("z")));
    scheduler.setSchedules({schedule("a")});
    EXPECT_EQ(listener.told, QStringList({"1", "0", "all"}));
    scheduler.removeObserver(&listener);
    scheduler.setSchedules({});
    EXPECT_EQ(listener.told.size(), 3);
}

TEST_F(SchedulerTest, FindsEachOfManyByItsIdentifier)
{
    QList<Schedule> many;
    for (int i = 0; i < 1000; ++i)
        many += schedule(QString::number((i * 37) % 1000), noon().addSecs(i));
    scheduler.setSchedules(many);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(scheduler.placeOf(many[i].identifier), i);
        EXPECT_EQ(scheduler.currentDate(many[i].identifier), noon().addSecs(i));
    }
    EXPECT_FALSE(scheduler.placeOf("1000"));
    EXPECT_FALSE(scheduler.placeOf(""));
}

TEST_F(SchedulerTest, WhatIsHeldBackDoesNotComeDueUntilItIsLetGo)
{
    scheduler.setSchedules({schedule("a"), schedule("b")});
    scheduler.holdBack({"a", noon()});
    EXPECT_EQ(due(), QStringList{"b"});
    EXPECT_TRUE(scheduler.isHeldBack({"a", noon()}));
    EXPECT_FALSE(scheduler.isHeldBack({"b", noon()}));
    scheduler.setSchedules({schedule("b"), schedule("a")});
    EXPECT_EQ(due(), QStringList{"b"}) << "also when the store was read anew";
    EXPECT_EQ(scheduler.pendingAt(noon()).size(), 2);
    scheduler.letGo({"a", noon()});
    EXPECT_EQ(due(), QStringList({"b", "a"}));
}

TEST_F(SchedulerTest, KnowsWhatIsStoredWhateverDateSomethingThatRepeatsHasReached)
{
    Schedule hourly = schedule("a", noon().addSecs(-7200));
    hourly.timeZone = "UTC";
    hourly.recurrence = Recurrence{"FREQ=HOURLY", WallTime::of(hourly.date), {}, {}, {}};
    const QList<Schedule> stored{hourly, schedule("b")};
    scheduler.setSchedules(stored);
    EXPECT_TRUE(scheduler.hasStored(stored));
    EXPECT_FALSE(scheduler.hasStored({hourly}));
    EXPECT_FALSE(scheduler.hasStored({schedule("b"), hourly}));
    for (int i = 0; i < stored.size(); ++i) {
        QList<Schedule> others = stored;
        others[i].date = others[i].date.addSecs(3600);
        EXPECT_FALSE(scheduler.hasStored(others)) << i;
    }
}
