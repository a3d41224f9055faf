// SPDX-License-Identifier: MIT
#include "hosts/daemon/Announcer.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/ScheduleKeeper.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "unit/hosts/daemon/PerformingFixture.h"

using namespace dozely;

/// A probe that is to be announced a minute before.
class AnticipationTest : public PerformingFixture
{
protected:
    Occurrence probe(const QString &announcing = {}) const
    {
        Schedule schedule = BundleFixture::schedule("a", noon().addSecs(60));
        schedule.parameters = {{"Alert", 1LL}, {"Delay before alert", 60LL}, {"Announcing", announcing}};
        return {schedule, schedule.date};
    }

    Announcer::Announcement anticipate(const Occurrence &occurrence)
    {
        waitForAnswers(answers, occurrence.schedule);
        return announcer.announce(occurrence);
    }

    FakeClock clock{noon()};
    ScheduleKeeper keeper{clock};
    std::shared_ptr<FakeConsoleUser> console = std::make_shared<FakeConsoleUser>();
    Performances performances{performers(), DaemonActions::folder(), clock};
    PlugInAnswers answers{Performances::programNamed("dozely-performer"), clock};
    Announcer announcer{keeper.scheduler(), performances, answers,
                        std::make_shared<PinnedConsoleUser>(console)};
};

TEST_F(AnticipationTest, SaysThatNobodyIsLoggedIn)
{
    makeProbe();
    const auto announcement = anticipate(probe());
    EXPECT_TRUE(announcement.isWanted);
    EXPECT_FALSE(announcement.told);
    EXPECT_EQ(lastAboutSchedules(), "Schedule \"Name of a\" was not announced: nobody is logged in");
}

TEST_F(AnticipationTest, SaysThatTheAgentCouldNotBeReached)
{
    makeProbe();
    console->user = ConsoleUser::User{"alice", 4242};
    const auto announcement = anticipate(probe());
    EXPECT_TRUE(announcement.isWanted);
    EXPECT_FALSE(announcement.told);
    EXPECT_EQ(messages().filter("impossible"), QStringList{"anticipateInUserAgentNow impossible"});
    EXPECT_EQ(lastAboutSchedules(),
              "Schedule \"Name of a\" was not announced: the agent of user 4242 could not be reached");
}

TEST_F(AnticipationTest, LeavesTheOccurrenceOpen)
{
    makeProbe();
    anticipate(probe());
    EXPECT_TRUE(keeper.scheduler().record().dates("a").isEmpty());
}

TEST_F(AnticipationTest, AsksThePlugInItselfWhetherItWantsToBeAnnounced)
{
    makeProbe();
    console->user = ConsoleUser::User{"alice", 4242};
    EXPECT_FALSE(anticipate(probe("unwanted")).isWanted);
    EXPECT_EQ(lastAboutSchedules(), "");
}

TEST_F(AnticipationTest, SaysWhatThePlugInRaised)
{
    makeProbe();
    EXPECT_FALSE(anticipate(probe("throws in the daemon")).isWanted);
    EXPECT_EQ(lastAboutSchedules(), "Schedule \"Name of a\" was not announced: the probe was told to");
}

TEST_F(AnticipationTest, SaysThatTheBundleIsMissing)
{
    EXPECT_FALSE(anticipate(probe()).isWanted);
    EXPECT_EQ(messages().size(), 1);
    EXPECT_THAT(lastAboutSchedules().toStdString(),
                testing::HasSubstr("\"Name of a\" was not announced: There is no bundle"));
}
