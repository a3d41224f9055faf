// SPDX-License-Identifier: MIT
#include "hosts/daemon/HandOvers.h"
#include "hosts/daemon/Scheduler.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/daemon/RecurringFixture.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using Missed = OccurrenceSeries::Run;

/// The clock starts at noon.
class RecurringSchedulesTest : public HostFixture
{
protected:
    static QDateTime after(std::chrono::seconds duration) { return noon().addDuration(duration); }

    /// The moments of what is to come of the first schedule, in seconds from noon.
    std::vector<qint64> toCome() const
    {
        std::vector<qint64> moments;
        for (const Occurrence &occurrence : scheduler.pendingOf(0))
            moments.push_back(noon().secsTo(occurrence.moment()));
        return moments;
    }
    Occurrence next() const { return scheduler.pendingOf(0).value(0); }
    void begin() { scheduler.noteBegun(next(), ActingPlace::Daemon); }
    void perform()
    {
        const Occurrence occurrence = next();
        scheduler.noteBegun(occurrence, ActingPlace::Daemon);
        scheduler.note(occurrence, OccurrenceState::Done);
    }
    QDateTime settled() const { return scheduler.record().calendar("a").value_or(CalendarEntry()).settled; }
    LatenessJudge::Verdict judge(MissedPolicy policy, qint32 timeOut = -5,
                                 std::optional<std::chrono::seconds> limit = {}) const
    {
        return scheduler.lateness().judge(next(), {policy, limit, timeOut});
    }

    FakeClock clock{noon()};
    Scheduler scheduler{clock};
};

TEST_F(RecurringSchedulesTest, HaveTheDateOfTheirCurrentOccurrence)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    EXPECT_THAT(toCome(), ElementsAre(0));
    perform();
    EXPECT_THAT(toCome(), ElementsAre(10));
    EXPECT_EQ(scheduler.schedules().first().date, after(10s));
    EXPECT_EQ(scheduler.stored(0), Recurring::every("a", 10s, noon()));
    EXPECT_EQ(scheduler.nextDate(), after(10s));
    EXPECT_TRUE(scheduler.due().isEmpty());
    clock.advance(10s);
    ASSERT_EQ(scheduler.due().size(), 1);
    EXPECT_EQ(scheduler.due().first().date, after(10s));
    EXPECT_EQ(scheduler.due().first().schedule.date, after(10s));
}

TEST_F(RecurringSchedulesTest, ComeOneAfterTheOtherHoweverLate)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    clock.advance(25s);
    std::vector<qint64> performed;
    while (!scheduler.due().isEmpty()) {
        performed.push_back(noon().secsTo(next().date));
        perform();
    }
    EXPECT_THAT(performed, ElementsAre(0, 10, 20));
    EXPECT_EQ(settled(), after(20s));
}

TEST_F(RecurringSchedulesTest, AreNotRepeatedWhenTheClockIsSetBack)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    clock.advance(10s);
    perform();
    perform();
    clock.jumpTo(noon().addSecs(-3600));
    EXPECT_THAT(toCome(), ElementsAre(20));
    EXPECT_TRUE(scheduler.due().isEmpty());
}

TEST_F(RecurringSchedulesTest, GoOnAfterARestartWhereTheyWere)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    perform();
    scheduler.note({next().schedule, after(10s)}, OccurrenceState::Removed); // in advance
    Scheduler restarted(clock, scheduler.record());
    restarted.setSchedules({Recurring::every("a", 10s, noon())});
    ASSERT_EQ(restarted.pendingOf(0).size(), 1);
    EXPECT_EQ(restarted.pendingOf(0).first().date, after(20s));
}

TEST_F(RecurringSchedulesTest, TakeWhatIsAskedForByHandForNoneOfTheirs)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    const Occurrence byHand = scheduler.makeOccurrenceNow(scheduler.schedules().first());
    EXPECT_EQ(byHand.date, after(1s)) << "noon is the rule's own";
    scheduler.noteAsked(byHand, 501);
    scheduler.noteBegun(byHand, ActingPlace::Daemon);
    scheduler.note(byHand, OccurrenceState::Done);
    EXPECT_THAT(toCome(), ElementsAre(0));
    EXPECT_LT(settled(), noon());
}

TEST_F(RecurringSchedulesTest, LeaveRoomForWhatIsAskedForAlsoWhenTheyHaveEverySecond)
{
    scheduler.setSchedules({Recurring::every("a", 1s, noon())});
    const Occurrence first = scheduler.makeOccurrenceNow(scheduler.schedules().first());
    scheduler.noteAsked(first, 501);
    const Occurrence second = scheduler.makeOccurrenceNow(scheduler.schedules().first());
    EXPECT_EQ(first.date, noon().addMSecs(500));
    EXPECT_EQ(second.date, noon().addMSecs(1500));
}

TEST_F(RecurringSchedulesTest, PassOverWhatIsRemovedInAdvance)
{
    scheduler.setSchedules({Recurring::every("a", 10s, after(10s))});
    EXPECT_TRUE(scheduler.gives(0, after(30s)));
    EXPECT_FALSE(scheduler.gives(0, after(31s)));
    EXPECT_FALSE(scheduler.gives(0, noon())) << "before the first";
    scheduler.note({next().schedule, after(20s)}, OccurrenceState::Removed);
    EXPECT_FALSE(scheduler.gives(0, after(20s))) << "it is decided upon";
    EXPECT_THAT(toCome(), ElementsAre(10));
    EXPECT_LT(settled(), after(10s)) << "nothing is settled before its time";
    clock.advance(10s);
    perform();
    EXPECT_THAT(toCome(), ElementsAre(30));
    clock.advance(20s);
    perform();
    EXPECT_EQ(settled(), after(30s));
}

TEST_F(RecurringSchedulesTest, ARemovedCurrentOccurrenceIsSettledAtItsTimeAlone)
{
    scheduler.setSchedules({Recurring::daily("a", after(1h))});
    scheduler.note(next(), OccurrenceState::Removed);
    EXPECT_EQ(next().date, after(25h));
    Schedule changed = Recurring::daily("a", after(30min));
    scheduler.setSchedules({changed});
    EXPECT_EQ(next().date, after(30min)) << "another rule may come before what was removed by the former";
}

TEST_F(RecurringSchedulesTest, TakeBackWhatCertainlyDidNotBegin)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    const Occurrence occurrence = next();
    begin();
    EXPECT_THAT(toCome(), ElementsAre(10));
    scheduler.takeBack(occurrence);
    EXPECT_THAT(toCome(), ElementsAre(0));
}

TEST_F(RecurringSchedulesTest, TakeBackOneAfterWhichOthersWereSettledAndRepeatNoneOfThose)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    const Occurrence first = next();
    begin();
    clock.advance(45s);
    scheduler.noteRun(first.schedule, scheduler.dueRun(next()));
    EXPECT_THAT(toCome(), ElementsAre(50));
    scheduler.takeBack(first);
    EXPECT_THAT(toCome(), ElementsAre(0, 50));
    ASSERT_EQ(scheduler.due().size(), 1);
    EXPECT_EQ(scheduler.due().first().date, noon());
    perform();
    EXPECT_THAT(toCome(), ElementsAre(50));
}

TEST_F(RecurringSchedulesTest, BeginNowWhenTheyWereDisabled)
{
    Schedule schedule = Recurring::every("a", 10s, noon());
    scheduler.setSchedules({schedule});
    schedule.isEnabled = false;
    scheduler.setSchedules({schedule});
    EXPECT_THAT(toCome(), IsEmpty());
    clock.advance(35s);
    schedule.isEnabled = true;
    Scheduler restarted(clock, scheduler.record()); // the daemon was away when it was enabled
    restarted.setSchedules({schedule});
    ASSERT_EQ(restarted.pendingOf(0).size(), 1);
    EXPECT_EQ(restarted.pendingOf(0).first().date, after(40s));
    scheduler.setSchedules({schedule});
    EXPECT_THAT(toCome(), ElementsAre(40));
}

TEST_F(RecurringSchedulesTest, BeginAgainNotByAClockThatIsDoubted)
{
    Schedule schedule = Recurring::every("a", 10s, noon());
    schedule.isEnabled = false;
    scheduler.setSchedules({schedule});
    clock.jumpTo(noon().addYears(1));
    scheduler.setDoubted(noon().addYears(1));
    schedule.isEnabled = true;
    scheduler.setSchedules({schedule});
    EXPECT_THAT(toCome(), IsEmpty());
    EXPECT_FALSE(scheduler.isOver(0));
    clock.jumpTo(after(35s));
    scheduler.setDoubted({});
    EXPECT_THAT(toCome(), ElementsAre(40));
}

TEST_F(RecurringSchedulesTest, BeginAnotherRuleAfterWhatIsSettled)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    perform();
    scheduler.setSchedules({Recurring::every("a", 3s, noon().addSecs(-60))});
    EXPECT_THAT(toCome(), ElementsAre(3));
    scheduler.setSchedules({Recurring::every("a", 3s, after(30s))});
    EXPECT_THAT(toCome(), ElementsAre(30)) << "not before the store's date";
}

TEST_F(RecurringSchedulesTest, BeginAfterTheMomentAtWhichTheRecordWasLost)
{
    scheduler.setNothingKnownBefore(after(15s));
    clock.advance(60s);
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    EXPECT_THAT(toCome(), ElementsAre(20));
    EXPECT_FALSE(next().mayHaveRun);
}

TEST_F(RecurringSchedulesTest, AreOverAfterTheirLastOccurrence)
{
    scheduler.setSchedules({Recurring::schedule("a", "FREQ=DAILY;COUNT=2", noon())});
    perform();
    EXPECT_FALSE(scheduler.isOver(0));
    clock.advance(24h);
    perform();
    EXPECT_TRUE(scheduler.isOver(0));
    EXPECT_THAT(toCome(), IsEmpty());
    EXPECT_EQ(scheduler.schedules().first().date, after(24h)) << "that of the last";
    Scheduler restarted(clock, scheduler.record());
    restarted.setSchedules({Recurring::schedule("a", "FREQ=DAILY;COUNT=2", noon())});
    EXPECT_TRUE(restarted.isOver(0));
    EXPECT_EQ(restarted.schedules().first().date, after(24h));
}

TEST_F(RecurringSchedulesTest, WithARuleWithoutSenseHaveNoOccurrences)
{
    scheduler.setSchedules({Recurring::schedule("a", "FREQ=NEVER", noon()), schedule("b")});
    EXPECT_THAT(toCome(), IsEmpty());
    EXPECT_EQ(scheduler.nextDate(), noon());
}

TEST_F(RecurringSchedulesTest, ArePostponedAndStayOneOccurrence)
{
    scheduler.setSchedules({Recurring::every("a", 100s, noon())});
    const Occurrence occurrence = next();
    scheduler.notePostponed(occurrence, after(30s));
    EXPECT_THAT(toCome(), ElementsAre(30, 100));
    EXPECT_EQ(next().date, noon()) << "the same one";
    EXPECT_EQ(next().calendarDate(), after(30s));
    EXPECT_EQ(scheduler.nextDate(), after(30s));
    scheduler.notePostponed(next(), after(150s));
    EXPECT_THAT(toCome(), ElementsAre(100, 150));
    EXPECT_TRUE(scheduler.pendingAt(after(150s)).size() == 1);
    Scheduler restarted(clock, scheduler.record());
    restarted.setSchedules({Recurring::every("a", 100s, noon())});
    EXPECT_EQ(restarted.pendingOf(0).size(), 2);
    clock.advance(150s);
    ASSERT_EQ(scheduler.due().size(), 2);
    perform();
    EXPECT_EQ(scheduler.lateness().of(next()), 0s) << "it counts from the moment to which it is postponed";
    perform();
    EXPECT_THAT(toCome(), ElementsAre(200));
    const auto entry = *scheduler.record().find("a", noon());
    EXPECT_EQ(entry.state, OccurrenceState::Done);
    EXPECT_EQ(entry.postponedTo, after(150s));
    EXPECT_EQ(entry.lateness, 0);
}

TEST_F(RecurringSchedulesTest, AreAsLateAsTheyBeginOrAreSkippedHoweverLongTheyTake)
{
    scheduler.setSchedules({Recurring::every("a", 100s, noon())});
    clock.advance(5s);
    const Occurrence occurrence = next();
    begin();
    clock.advance(60s);
    scheduler.note(occurrence, OccurrenceState::Done);
    EXPECT_EQ(scheduler.record().find("a", noon())->lateness, 5000);
    clock.advance(42s);
    scheduler.note(next(), OccurrenceState::Skipped);
    EXPECT_EQ(scheduler.record().find("a", after(100s))->lateness, 7000);
}

TEST_F(RecurringSchedulesTest, WhatIsPostponedIsTakenBackToWhereItWas)
{
    scheduler.setSchedules({schedule("a")});
    scheduler.notePostponed(next(), after(30s));
    clock.advance(30s);
    const Occurrence occurrence = next();
    begin();
    EXPECT_THAT(toCome(), IsEmpty());
    scheduler.takeBack(occurrence);
    EXPECT_THAT(toCome(), ElementsAre(30));
}

TEST_F(RecurringSchedulesTest, ThatAreDisabledHaveNothingPostponedToCome)
{
    Schedule schedule = Recurring::every("a", 100s, noon());
    scheduler.setSchedules({schedule});
    scheduler.notePostponed(next(), after(30s));
    schedule.isEnabled = false;
    scheduler.setSchedules({schedule});
    EXPECT_THAT(toCome(), IsEmpty());
}

TEST_F(RecurringSchedulesTest, ThatAreDisabledAreHandedBackByNoAgent)
{
    Schedule schedule = Recurring::every("a", 100s, noon());
    scheduler.setSchedules({schedule});
    scheduler.note(next(), OccurrenceState::Done, 501);
    clock.advance(100s);
    scheduler.note(next(), OccurrenceState::Done, 501);
    const HandOvers handOvers(clock, scheduler);
    EXPECT_TRUE(handOvers.heldByAgent(501, schedule.fullBundlePath(), after(100s), {}));
    schedule.isEnabled = false;
    scheduler.setSchedules({schedule});
    EXPECT_FALSE(handOvers.heldByAgent(501, schedule.fullBundlePath(), after(100s), {}));
}

TEST_F(RecurringSchedulesTest, ThatWereMissedForLongerThanTheTimeOutAreOneRunAndTheOthersComeInOrder)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    clock.advance(75s);
    const auto missed = judge(MissedPolicy::PlugIn, -20);
    EXPECT_FALSE(missed.performed);
    EXPECT_EQ(missed.missed, (Missed{noon(), after(50s), 6, true}));
    scheduler.noteRun(next().schedule, missed.missed);
    EXPECT_EQ(scheduler.record().dates("a"), QList{after(50s)}) << "one entry for all";
    const auto entry = *scheduler.record().find("a", after(50s));
    EXPECT_EQ(entry.state, OccurrenceState::Missed);
    EXPECT_EQ(entry.run->first, noon());
    EXPECT_EQ(entry.run->count, 6);
    EXPECT_EQ(entry.lateness, 25'000);
    EXPECT_EQ(judge(MissedPolicy::PlugIn, -20).performed->date, after(60s));
    perform();
    EXPECT_EQ(judge(MissedPolicy::PlugIn, -20).performed->date, after(70s));
}

TEST_F(RecurringSchedulesTest, ToBeSkippedAreTooLateAfterASecond)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    clock.advance(11s);
    const auto first = judge(MissedPolicy::Skip, -3600);
    EXPECT_EQ(first.missed, (Missed{noon(), noon(), 1, true}));
    scheduler.noteRun(next().schedule, first.missed);
    EXPECT_EQ(scheduler.record().find("a", noon())->state, OccurrenceState::Skipped) << "one alone";
    EXPECT_EQ(judge(MissedPolicy::Skip, -3600).performed->date, after(10s));
    clock.advance(1ms);
    EXPECT_FALSE(judge(MissedPolicy::Skip, -3600).performed);
}

TEST_F(RecurringSchedulesTest, ToBeRunOnceAreTheLatestHoweverLate)
{
    scheduler.setSchedules({Recurring::daily("a", noon())});
    clock.jumpTo(noon().addDays(5).addSecs(3600));
    const auto verdict = judge(MissedPolicy::RunOnce);
    EXPECT_EQ(verdict.missed, (Missed{noon(), noon().addDays(4), 5, true}));
    ASSERT_TRUE(verdict.performed);
    EXPECT_EQ(verdict.performed->date, noon().addDays(5));
    scheduler.noteRun(next().schedule, verdict.missed);
    scheduler.noteBegun(*verdict.performed, ActingPlace::Daemon);
    EXPECT_EQ(next().date, noon().addDays(6));
}

TEST_F(RecurringSchedulesTest, ToBeRunOnceMayBeAsLateAsTheirLimitSays)
{
    scheduler.setSchedules({Recurring::daily("a", noon())});
    clock.jumpTo(noon().addDays(2).addSecs(3600));
    EXPECT_TRUE(judge(MissedPolicy::RunOnce, -5, 1h).performed);
    clock.advance(1ms);
    const auto verdict = judge(MissedPolicy::RunOnce, -5, 1h);
    EXPECT_FALSE(verdict.performed);
    EXPECT_EQ(verdict.missed, (Missed{noon(), noon().addDays(2), 3, true}));
}

TEST_F(RecurringSchedulesTest, ToBeRunOnceCountWhatWasRemovedAmongThemForNothing)
{
    scheduler.setSchedules({Recurring::daily("a", noon())});
    scheduler.note({next().schedule, noon().addDays(1)}, OccurrenceState::Removed);
    scheduler.note({next().schedule, noon().addDays(3)}, OccurrenceState::Removed);
    clock.jumpTo(noon().addDays(3).addSecs(3600));
    const auto verdict = judge(MissedPolicy::RunOnce);
    EXPECT_EQ(verdict.performed->date, noon().addDays(2));
    EXPECT_EQ(verdict.missed, (Missed{noon(), noon(), 1, true}));
}

TEST_F(RecurringSchedulesTest, ToBeRunOnceRunTheLatestAlsoOfWhatIsPostponed)
{
    scheduler.setSchedules({Recurring::daily("a", noon())});
    scheduler.notePostponed(next(), noon().addDays(1).addSecs(1800));
    clock.jumpTo(noon().addDays(1).addSecs(3600));
    const auto run = scheduler.lateness().judge(scheduler.pendingOf(0)[0], {MissedPolicy::RunOnce, {}, -5});
    EXPECT_FALSE(run.performed) << "the postponed one came due after it";
    scheduler.noteRun(next().schedule, run.missed);
    EXPECT_EQ(next().date, noon());
    EXPECT_TRUE(judge(MissedPolicy::RunOnce).performed);
}

TEST_F(RecurringSchedulesTest, TheirPoliciesHoldForOneThatTakesPlaceOnceToo)
{
    scheduler.setSchedules({schedule("a")});
    clock.advance(1h);
    EXPECT_TRUE(judge(MissedPolicy::RunOnce).performed);
    EXPECT_FALSE(judge(MissedPolicy::RunOnce, -5, 3599s).performed);
    EXPECT_FALSE(judge(MissedPolicy::Skip, -3600).performed);
    EXPECT_TRUE(judge(MissedPolicy::PlugIn, -3600).performed);
}

TEST_F(RecurringSchedulesTest, FollowTheMachinesZoneWhereTheyNameNone)
{
    Schedule schedule = Recurring::daily("a", noon());
    schedule.timeZone.clear();
    schedule.date = QDateTime({2026, 3, 14}, {11, 0}, Qt::UTC); // noon in Paris
    qputenv("TZ", "Europe/Paris");
    scheduler.setSchedules({schedule});
    EXPECT_EQ(next().date, noon().addSecs(-3600));
    EXPECT_EQ(next().calendarDate().time(), QTime(12, 0));
    clock.jumpTo(noon().addSecs(-3600));
    perform();
    EXPECT_EQ(next().date, noon().addDays(1).addSecs(-3600));
    qputenv("TZ", "America/New_York"); // summer time since the eighth
    scheduler.readZonesAgain();
    EXPECT_EQ(next().date, noon().addSecs(4 * 3600)) << "that day's noon is still to come there";
    EXPECT_EQ(next().calendarDate().time(), QTime(12, 0));
}

TEST_F(RecurringSchedulesTest, KeepInMemoryWhatTheyNeedAndTheLatestFewOthers)
{
    scheduler.setSchedules({Recurring::every("a", 10s, noon())});
    scheduler.note({next().schedule, after(2000s)}, OccurrenceState::Removed); // in advance
    for (int i = 0; i < 100; ++i) {
        perform();
        scheduler.record().pruneChanged(
            [&](const QString &identifier, const QDateTime &date) {
                return scheduler.isNeeded(identifier, date);
            },
            clock.currentDate().addSecs(-3600));
        scheduler.record().forgetChanges();
        clock.advance(10s);
    }
    EXPECT_LE(scheduler.record().dates("a").size(), 4);
    EXPECT_TRUE(scheduler.record().find("a", after(2000s)));
}
