// SPDX-License-Identifier: MIT
#include "hosts/daemon/AnticipationPlan.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

using namespace std::chrono_literals;
using OrderPermissions::UserId;

/// The clock starts at noon; the schedules are alice's, bob sits at the console.
class AnticipationPlanTest : public HostFixture
{
protected:
    static constexpr quint32 alice = 501;
    static constexpr quint32 bob = 502;
    static constexpr quint32 stranger = 503;

    static Schedule alerting(const QString &identifier, const QDateTime &date, const QVariant &lead = 60LL)
    {
        Schedule schedule = HostFixture::schedule(identifier, date);
        schedule.parameters = {{"Alert", 1LL}, {"Delay before alert", lead}};
        return schedule;
    }
    static Occurrence occurrenceOf(const Schedule &schedule) { return {schedule, schedule.date}; }
    QString nextIdentifier()
    {
        const auto next = plan.next();
        return next ? next->schedule.identifier : QString();
    }
    QStringList removable(UserId peer, const QDateTime &date, const QString &bundlePath) const
    {
        QStringList identifiers;
        for (const Occurrence &occurrence :
             plan.removable(peer, UserId(0), bundlePath, date, [this] { return console; }))
            identifiers += occurrence.schedule.identifier;
        return identifiers;
    }
    QStringList removable(UserId peer, const QDateTime &date) const
    {
        return removable(peer, date, schedule("a").fullBundlePath());
    }

    const QDateTime later = noon().addSecs(600);
    UserId console = bob;
    FakeClock clock{noon()};
    Scheduler scheduler{clock};
    AnticipationPlan plan{clock, scheduler};
};

TEST_F(AnticipationPlanTest, AnnouncesNothingWithoutTheParameterAlert)
{
    Schedule off = alerting("off", later);
    off.parameters["Alert"] = 0LL;
    scheduler.setSchedules({schedule("plain", later), off});
    EXPECT_FALSE(plan.nextDate());
    clock.advance(600s);
    EXPECT_FALSE(plan.next());
}

TEST_F(AnticipationPlanTest, AnnouncesAtTheLeadTimeAndNotBefore)
{
    scheduler.setSchedules({alerting("a", later)});
    EXPECT_EQ(plan.nextDate(), later.addSecs(-60));
    clock.advance(540s - 1ms);
    EXPECT_FALSE(plan.next());
    clock.advance(1ms);
    EXPECT_EQ(nextIdentifier(), "a");
}

TEST_F(AnticipationPlanTest, TakesTheLeadTimeFromATextAsTheLibraryDoes)
{
    scheduler.setSchedules({alerting("a", later, "15")});
    EXPECT_EQ(plan.nextDate(), later.addSecs(-15));
}

TEST_F(AnticipationPlanTest, HasNothingToAnnounceWithoutATimeBeforeTheAction)
{
    for (const QVariant &lead : {QVariant(0LL), QVariant(-1LL), QVariant(-60LL), QVariant()}) {
        scheduler.setSchedules({alerting("a", later, lead)});
        EXPECT_FALSE(plan.nextDate()) << lead.toString().toStdString();
    }
}

TEST_F(AnticipationPlanTest, AnnouncesAtOnceWhatWasAddedWithinItsLeadTime)
{
    scheduler.setSchedules({alerting("a", noon().addSecs(10))});
    EXPECT_EQ(plan.nextDate(), noon().addSecs(-50));
    EXPECT_EQ(nextIdentifier(), "a");
}

TEST_F(AnticipationPlanTest, DoesNotAnnounceWhatIsDue)
{
    scheduler.setSchedules({alerting("a", noon().addSecs(10))});
    clock.advance(10s);
    EXPECT_FALSE(plan.next());
    EXPECT_FALSE(plan.nextDate());
}

TEST_F(AnticipationPlanTest, WaitsForTheEarliestOfMany)
{
    scheduler.setSchedules(
        {alerting("a", later, 10LL), alerting("b", later.addSecs(60), 300LL), alerting("c", later, 20LL)});
    EXPECT_EQ(plan.nextDate(), later.addSecs(60 - 300));
}

TEST_F(AnticipationPlanTest, AnnouncesTheEarliestOccurrenceFirst)
{
    scheduler.setSchedules({alerting("b", noon().addSecs(30)), alerting("a", noon().addSecs(20))});
    EXPECT_EQ(nextIdentifier(), "a");
    plan.noteTold(*plan.next(), bob);
    EXPECT_EQ(nextIdentifier(), "b");
}

TEST_F(AnticipationPlanTest, AnnouncesOnce)
{
    scheduler.setSchedules({alerting("a", noon().addSecs(30))});
    plan.noteTold(*plan.next(), bob);
    EXPECT_FALSE(plan.nextDate());
    clock.advance(29s);
    EXPECT_FALSE(plan.next());
}

TEST_F(AnticipationPlanTest, DoesNotAnnounceWhatIsDisabledOrOver)
{
    Schedule disabled = alerting("disabled", noon().addSecs(30));
    disabled.isEnabled = false;
    const Schedule removed = alerting("removed", noon().addSecs(30));
    scheduler.setSchedules({disabled, removed});
    scheduler.note(occurrenceOf(removed), OccurrenceState::Removed);
    EXPECT_FALSE(plan.nextDate());
}

TEST_F(AnticipationPlanTest, TriesOnceMoreAfterAFailureAndThenGivesUp)
{
    scheduler.setSchedules({alerting("a", noon().addSecs(60))});
    plan.noteFailed(*plan.next());
    EXPECT_EQ(plan.nextDate(), noon().addSecs(12));
    EXPECT_FALSE(plan.next());
    clock.advance(12s);
    ASSERT_EQ(nextIdentifier(), "a");
    plan.noteFailed(*plan.next());
    EXPECT_FALSE(plan.nextDate());
}

TEST_F(AnticipationPlanTest, AsksAPlugInThatDoesNotWantItNoMore)
{
    scheduler.setSchedules({alerting("a", noon().addSecs(60))});
    plan.noteUnwanted(*plan.next());
    plan.announceAgain();
    EXPECT_FALSE(plan.nextDate());
}

TEST_F(AnticipationPlanTest, AnnouncesAgainForAnAgentThatStartsButNotForEver)
{
    scheduler.setSchedules({alerting("a", noon().addSecs(60)), alerting("later", later)});
    int announcements = 0;
    for (int agent = 0; agent < 20; ++agent) {
        if (const auto next = plan.next()) {
            EXPECT_EQ(next->schedule.identifier, "a") << "the other one's lead time has not begun";
            plan.noteTold(*next, bob);
            ++announcements;
        }
        plan.announceAgain();
    }
    EXPECT_EQ(announcements, 5);
}

TEST_F(AnticipationPlanTest, AnnouncesAgainToWhoeverSwitchesIn)
{
    scheduler.setSchedules({alerting("a", noon().addSecs(60)), alerting("later", later)});
    EXPECT_FALSE(plan.nextLookAtConsole()) << "nothing was announced";
    plan.noteTold(*plan.next(), bob);
    EXPECT_EQ(plan.nextLookAtConsole(), 1200ms);
    plan.noteConsole(bob);
    EXPECT_FALSE(plan.next()) << "the same user is there";
    plan.noteConsole({});
    EXPECT_FALSE(plan.next()) << "nobody is there";
    plan.noteConsole(alice);
    ASSERT_EQ(nextIdentifier(), "a");
    plan.noteTold(*plan.next(), alice);
    plan.noteConsole(bob);
    EXPECT_FALSE(plan.next()) << "it shows there already";
    clock.advance(60s);
    EXPECT_FALSE(plan.nextLookAtConsole()) << "it is over";
}

TEST_F(AnticipationPlanTest, AnnouncesToWhoeverComesWhenNobodyWasThere)
{
    scheduler.setSchedules({alerting("a", noon().addSecs(60))});
    plan.noteFailed(*plan.next());
    plan.noteConsole({});
    EXPECT_FALSE(plan.next());
    plan.noteConsole(alice);
    ASSERT_EQ(nextIdentifier(), "a");
    plan.noteFailed(*plan.next(), alice);
    plan.noteConsole(alice);
    EXPECT_FALSE(plan.next()) << "an agent that is away is not asked at every look";
}

TEST_F(AnticipationPlanTest, LooksAtTheConsoleLessOftenWhileThereIsMuchTime)
{
    scheduler.setSchedules({alerting("a", noon().addDays(1), 100000LL)});
    plan.noteTold(*plan.next(), bob);
    EXPECT_EQ(plan.nextLookAtConsole(), 30s);
    clock.advance(24h - 10s);
    EXPECT_EQ(plan.nextLookAtConsole(), 1s);
}

TEST_F(AnticipationPlanTest, IsRemovedForEveryUserWhoWasTold)
{
    const QDateTime soon = noon().addSecs(30);
    scheduler.setSchedules({alerting("a", soon)});
    plan.noteTold(*plan.next(), bob);
    plan.noteConsole(stranger);
    plan.noteTold(*plan.next(), stranger);
    EXPECT_EQ(removable(bob, soon), QStringList{"a"});
    EXPECT_EQ(removable(stranger, soon), QStringList{"a"});
}

TEST_F(AnticipationPlanTest, AnnouncesTheSameDateAnewForAnotherBundle)
{
    Schedule schedule = alerting("a", noon().addSecs(60));
    scheduler.setSchedules({schedule});
    plan.noteTold(*plan.next(), bob);
    schedule.bundlePath = "/Other.plugin";
    scheduler.setSchedules({schedule});
    EXPECT_EQ(nextIdentifier(), "a");
}

TEST_F(AnticipationPlanTest, ForgetsWhatTheSchedulesDoNotHaveAnyMore)
{
    const QList<Schedule> schedules{alerting("a", noon().addSecs(60))};
    scheduler.setSchedules(schedules);
    plan.noteTold(*plan.next(), bob);
    plan.forgetGone();
    EXPECT_FALSE(plan.next()) << "nothing is gone yet";
    scheduler.setSchedules({});
    plan.forgetGone();
    (void)plan.takeNeedless();
    scheduler.setSchedules(schedules);
    EXPECT_EQ(nextIdentifier(), "a");
}

TEST_F(AnticipationPlanTest, AnAlertIsNeedlessOnceNothingOfWhatItAnnouncesIsToCome)
{
    Schedule first = alerting("first", noon().addSecs(60));
    const Schedule second = alerting("second", noon().addSecs(60));
    scheduler.setSchedules({first, second});
    plan.noteTold(occurrenceOf(first), bob);
    plan.noteTold(occurrenceOf(second), bob);
    EXPECT_TRUE(plan.takeNeedless().isEmpty());
    first.isEnabled = false;
    scheduler.setSchedules({first, second});
    EXPECT_TRUE(plan.takeNeedless().isEmpty()) << "it announces the second, too";
    plan.noteTold(occurrenceOf(second), alice);
    scheduler.notePostponed(occurrenceOf(second), noon().addSecs(90));
    const auto needless = plan.takeNeedless();
    ASSERT_EQ(needless.size(), 1);
    EXPECT_EQ(needless.first().bundlePath, first.fullBundlePath());
    EXPECT_EQ(needless.first().date, noon().addSecs(60));
    EXPECT_EQ(needless.first().told, (QSet<quint32>{alice, bob}));
    EXPECT_TRUE(plan.takeNeedless().isEmpty()) << "each is told once";
    EXPECT_EQ(plan.nextDate(), noon().addSecs(30)) << "the second, anew";
}

TEST_F(AnticipationPlanTest, AnAlertWhoseDateHasComeIsNotNeedless)
{
    const Schedule due = alerting("a", noon().addSecs(60));
    scheduler.setSchedules({due});
    plan.noteTold(occurrenceOf(due), bob);
    clock.advance(60s);
    scheduler.note(occurrenceOf(due), OccurrenceState::Done);
    EXPECT_TRUE(plan.takeNeedless().isEmpty()) << "it goes by itself";
}

TEST_F(AnticipationPlanTest, IsRemovedForTheUserWhoWasTold)
{
    const QDateTime soon = noon().addSecs(30);
    scheduler.setSchedules({alerting("a", soon)});
    plan.noteTold(*plan.next(), bob);
    console = stranger;
    EXPECT_EQ(removable(bob, soon), QStringList{"a"});
    EXPECT_TRUE(removable(stranger, soon).isEmpty()) << "the console changed hands after the alert";
    EXPECT_TRUE(removable({}, soon).isEmpty());
}

TEST_F(AnticipationPlanTest, IsRemovedForTheConsoleUserWhileItIsNotKnownWhoWasTold)
{
    const QDateTime soon = noon().addSecs(30);
    scheduler.setSchedules({alerting("a", soon)});
    EXPECT_EQ(removable(bob, soon), QStringList{"a"});
    EXPECT_TRUE(removable(stranger, soon).isEmpty());
    console = {};
    EXPECT_TRUE(removable(bob, soon).isEmpty());
    EXPECT_TRUE(removable({}, soon).isEmpty());
}

TEST_F(AnticipationPlanTest, IsRemovedBeforeItsLeadTimeForItsOwnerAndTheSystemAlone)
{
    scheduler.setSchedules({alerting("a", later)});
    EXPECT_TRUE(removable(bob, later).isEmpty());
    EXPECT_EQ(removable(alice, later), QStringList{"a"});
    EXPECT_EQ(removable(0, later), QStringList{"a"});
}

TEST_F(AnticipationPlanTest, AnOccurrenceWithoutAlertIsNotTheConsoleUsersToRemove)
{
    scheduler.setSchedules({schedule("a", later)});
    clock.advance(599s);
    EXPECT_TRUE(removable(bob, later).isEmpty());
    EXPECT_EQ(removable(alice, later), QStringList{"a"});
}

TEST_F(AnticipationPlanTest, RemovesTheVeryDateAndBundleAndNothingElse)
{
    const QDateTime soon = noon().addSecs(30);
    Schedule otherBundle = alerting("other bundle", soon);
    otherBundle.bundlePath = "/Other.plugin";
    scheduler.setSchedules({alerting("a", soon), alerting("other date", soon.addSecs(1)), otherBundle});
    EXPECT_EQ(removable(alice, soon), QStringList{"a"});
    EXPECT_EQ(removable(alice, soon, otherBundle.fullBundlePath()), QStringList{"other bundle"});
    EXPECT_TRUE(removable(alice, soon.addMSecs(1)).isEmpty());
    EXPECT_TRUE(removable(alice, soon, "/none").isEmpty());
}

TEST_F(AnticipationPlanTest, OneAlertStandsForAllThatAreAnnouncedOfOneBundleAndDate)
{
    const QDateTime soon = noon().addSecs(30);
    scheduler.setSchedules({alerting("a", soon), alerting("b", soon), alerting("not yet", soon, 10LL),
                            schedule("without", soon)});
    EXPECT_EQ(removable(bob, soon), QStringList({"a", "b"}));
    EXPECT_EQ(removable(alice, soon), QStringList({"a", "b"})) << "the owner pressed the same button";
}

TEST_F(AnticipationPlanTest, DoesNotRemoveWhatIsOver)
{
    const QDateTime soon = noon().addSecs(30);
    scheduler.setSchedules({alerting("a", soon)});
    scheduler.note(occurrenceOf(alerting("a", soon)), OccurrenceState::Begun);
    EXPECT_TRUE(removable(0, soon).isEmpty());
}
