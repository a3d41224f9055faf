// SPDX-License-Identifier: MIT
#include "hosts/daemon/SoonDue.h"

#include "hosts/daemon/AgentWaits.h"
#include "hosts/daemon/DaemonActions.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/ScheduleKeeper.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "unit/hosts/daemon/PerformingFixture.h"
#include "unit/hosts/daemon/StartsByHand.h"

using namespace std::chrono_literals;

/// Ten seconds before noon, when schedules of the daemon come due.
class SoonDueTest : public PerformingFixture
{
protected:
    SoonDueTest() { makeProbe(); }

    static Schedule probe(const QString &identifier, const QDateTime &date = noon())
    {
        Schedule probe = schedule(identifier, date);
        probe.parameters = {{"Acts In User Agent", 0LL}};
        return probe;
    }
    void setSchedules(const QList<Schedule> &schedules)
    {
        keeper.scheduler().setSchedules(schedules);
        for (const Schedule &schedule : schedules)
            waitForAnswers(answers, schedule);
    }

    FakeClock clock{noon().addSecs(-10)};
    ScheduleKeeper keeper{clock};
    StartsByHand *starts = new StartsByHand;
    Performances performances{std::unique_ptr<PerformerStart>(starts), DaemonActions::folder(), clock};
    PlugInAnswers answers{Performances::programNamed("dozely-performer"), clock};
    DaemonActions actions{keeper, performances, answers};
    AgentWaits waits{clock, keeper.scheduler()};
    SoonDue soonDue{keeper.scheduler(),
                    answers,
                    actions,
                    waits,
                    std::make_shared<PinnedConsoleUser>(std::make_shared<FakeConsoleUser>()),
                    clock};
};

TEST_F(SoonDueTest, IsMadeReadyTwoSecondsBeforeItsDateAndOnce)
{
    setSchedules({probe("a"), probe("b", noon().addSecs(1))});
    soonDue.prepare();
    EXPECT_TRUE(starts->asked.empty());
    EXPECT_EQ(soonDue.next(), noon().addSecs(-2));
    clock.advance(8s);
    soonDue.prepare();
    ASSERT_EQ(starts->asked.size(), 1U);
    EXPECT_EQ(starts->asked[0].performer.schedule, "Name of a");
    EXPECT_EQ(soonDue.next(), noon().addSecs(-1));
    clock.advance(1s);
    soonDue.prepare();
    ASSERT_EQ(starts->asked.size(), 2U);
    EXPECT_EQ(starts->asked[1].performer.schedule, "Name of b");
    EXPECT_FALSE(soonDue.next());
    soonDue.prepare();
    EXPECT_EQ(starts->asked.size(), 2U);
    EXPECT_FALSE(starts->isCalledOff(0));
    EXPECT_FALSE(starts->isCalledOff(1));
}

TEST_F(SoonDueTest, IsCalledOffAndMadeReadyAnewWhenItsScheduleChanges)
{
    setSchedules({probe("a")});
    clock.advance(8s);
    soonDue.prepare();
    Schedule other = probe("a");
    other.parameters.insert("Text", "other");
    setSchedules({other});
    soonDue.prepare();
    ASSERT_EQ(starts->asked.size(), 2U);
    EXPECT_TRUE(starts->isCalledOff(0));
    EXPECT_FALSE(starts->isCalledOff(1));
    EXPECT_EQ(starts->forgotten, QStringList(starts->asked[0].performer.name));
}

TEST_F(SoonDueTest, IsCalledOffWhenItsScheduleIsGoneOrDisabledOrPutOff)
{
    const auto prepared = [this] {
        setSchedules({probe("a")});
        soonDue.prepare();
        return starts->asked.size() - 1;
    };
    clock.advance(8s);
    const auto removed = prepared();
    setSchedules({});
    soonDue.prepare();
    EXPECT_TRUE(starts->isCalledOff(removed));

    const auto disabled = prepared();
    ASSERT_NE(disabled, removed);
    Schedule off = probe("a");
    off.isEnabled = false;
    setSchedules({off});
    soonDue.prepare();
    EXPECT_TRUE(starts->isCalledOff(disabled));

    const auto later = prepared();
    ASSERT_NE(later, disabled);
    setSchedules({probe("a", noon().addSecs(60))});
    soonDue.prepare();
    EXPECT_TRUE(starts->isCalledOff(later));
    EXPECT_EQ(starts->asked.size(), later + 1);
}

TEST_F(SoonDueTest, WhatIsPerformedIsTheOneThatWasMadeReadyUnlessItChanged)
{
    setSchedules({probe("a")});
    clock.advance(8s);
    soonDue.prepare();
    clock.advance(2s);
    const Occurrence due = keeper.scheduler().due().first();
    Occurrence other = due;
    other.schedule.parameters.insert("Text", "other");
    keeper.noteBegun({{due, ActingPlace::Daemon}});
    actions.perform(due, {});
    EXPECT_EQ(starts->asked.size(), 1U);
    EXPECT_FALSE(starts->isCalledOff(0));

    setSchedules({probe("b", noon().addSecs(1))});
    soonDue.prepare();
    ASSERT_EQ(starts->asked.size(), 2U);
    clock.advance(1s);
    Occurrence changed = keeper.scheduler().due().first();
    changed.schedule.parameters.insert("Text", "other");
    keeper.noteBegun({{changed, ActingPlace::Daemon}});
    actions.perform(changed, {});
    EXPECT_EQ(starts->asked.size(), 3U);
    EXPECT_TRUE(starts->isCalledOff(1));
    EXPECT_FALSE(starts->isCalledOff(2));
}

TEST_F(SoonDueTest, IsPerformedByAnotherPerformerWhereTheOneThatWasReadyHasEnded)
{
    setSchedules({probe("a")});
    clock.advance(8s);
    soonDue.prepare();
    ASSERT_EQ(starts->asked.size(), 1U);
    starts->asked[0].input.reset(-1);
    clock.advance(2s);
    const Occurrence due = keeper.scheduler().due().first();
    keeper.noteBegun({{due, ActingPlace::Daemon}});
    actions.perform(due, {});
    ASSERT_EQ(starts->asked.size(), 2U);
    EXPECT_EQ(starts->forgotten, QStringList(starts->asked[0].performer.name));
    EXPECT_FALSE(starts->isCalledOff(1));
}

TEST_F(SoonDueTest, IsToldToTheAgentWhereItIsNotTheDaemons)
{
    Schedule inSession = probe("a");
    inSession.parameters = {{"Acts In User Agent", 1LL}};
    setSchedules({inSession});
    clock.advance(8s);
    soonDue.prepare();
    EXPECT_TRUE(starts->asked.empty());
}
