// SPDX-License-Identifier: MIT
#include "hosts/daemon/ReturnToRest.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "support/FakeClock.h"
#include "support/FakeLoginSessions.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

using namespace dozely;

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::IsEmpty;

/// A machine that was woken a minute before noon for what was due at noon, with nobody logged in.
class ReturnToRestTest : public BundleFixture
{
protected:
    ReturnToRestTest()
    {
        Port<Clock>::current() = clock;
        Port<LoginSessions>::current() = logins;
        Port<KeyEventDriver>::current() = std::make_shared<NoKeys>();
        ZDRPowerManager::sharedInstance();
    }
    static Occurrence occurrence(std::optional<AfterAction> step, const QDateTime &date = noon())
    {
        Occurrence occurrence{schedule("backup", date), date};
        occurrence.schedule.name = "Backup";
        occurrence.schedule.afterAction = step;
        return occurrence;
    }
    /// The action is over, and the machine has had the time to rest.
    void end(AfterAction step, std::chrono::seconds time = 6s)
    {
        rest.noteEnd(occurrence(step));
        clock->advance(time);
    }
    void logIn(const QDateTime &began, std::optional<QDateTime> unusedSince)
    {
        logins->sessions->append({"alice", began, unusedSince});
    }
    void alertUser(quint32 user) { told = std::optional(user); }
    std::string log() const { return root.logContent().toStdString(); }
    std::pair<int, int> done() const { return {power->sleeps, power->powerOffs}; }

    const QDateTime woken = noon().addSecs(-58);
    const std::pair<int, int> nothing{0, 0};
    const std::pair<int, int> slept{1, 0};
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>(noon());
    std::shared_ptr<FakeLoginSessions> logins = std::make_shared<FakeLoginSessions>();
    QDateTime busyUntil;                      // an action goes on
    QDateTime next = noon().addDuration(24h); // the next one is due
    Result<std::optional<quint32>> told = std::optional<quint32>();
    QList<std::pair<AfterAction, QDateTime>> alerts;
    ReturnToRest rest{
        *clock,
        {.wokenFor =
             [this](const QDateTime &moment) {
                 return moment == noon() ? std::optional(woken) : std::nullopt;
             },
         .isBusy =
             [this](const QDateTime &until) { return clock->currentDate() < busyUntil || next <= until; },
         .alert =
             [this](AfterAction step, const QDateTime &date) {
                 alerts += {step, date};
                 return told;
             }}};
};

TEST_F(ReturnToRestTest, PutsTheMachineToSleepOnceTheActionIsOver)
{
    end(AfterAction::Sleep);
    EXPECT_EQ(done(), slept);
    EXPECT_THAT(log(), HasSubstr("Schedule \"Backup\": the machine goes to sleep again"));
    EXPECT_EQ(alerts.size(), 1) << "which tells nobody: nobody is there";
    clock->advance(1h);
    EXPECT_EQ(done(), slept) << "once";
}

TEST_F(ReturnToRestTest, SwitchesTheMachineOff)
{
    end(AfterAction::PowerOff);
    EXPECT_EQ(done(), std::pair(0, 1));
    EXPECT_THAT(log(), HasSubstr("Schedule \"Backup\": the machine is switched off again"));
}

TEST_F(ReturnToRestTest, SaysThatTheMachineDoesNotLetItselfBeSwitchedOff)
{
    power->refusesPowerOff = true;
    end(AfterAction::PowerOff);
    EXPECT_THAT(log(), HasSubstr("the machine does not let itself be switched off"));
}

TEST_F(ReturnToRestTest, DoesNothingUnlessTheScheduleWantsIt)
{
    rest.noteEnd(occurrence({}));
    rest.noteEnd(occurrence(AfterAction::Nothing));
    clock->advance(1h);
    EXPECT_EQ(done(), nothing);
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(ReturnToRestTest, AMachineThatDidNotComeBackForThatStaysAsItIs)
{
    rest.noteEnd(occurrence(AfterAction::Sleep, noon().addSecs(1)));
    clock->advance(1h);
    EXPECT_EQ(done(), nothing);
    EXPECT_THAT(log(), HasSubstr("does not go to sleep again: it did not come back for that"));
}

TEST_F(ReturnToRestTest, WhatWasAskedForByHandChangesNothing)
{
    Occurrence asked = occurrence(AfterAction::Sleep);
    asked.isAskedFor = true;
    rest.noteEnd(asked);
    clock->advance(1h);
    EXPECT_EQ(done(), nothing);
}

TEST_F(ReturnToRestTest, WhoHasLoggedInSinceKeepsIt)
{
    logIn(woken.addSecs(1), woken.addSecs(1));
    end(AfterAction::Sleep, 1h);
    EXPECT_EQ(done(), nothing);
    EXPECT_THAT(log(), HasSubstr("does not go to sleep again: alice has logged in since"));
}

TEST_F(ReturnToRestTest, WhoHasUsedItSinceKeepsIt)
{
    logIn(noon().addDuration(-8h), woken.addSecs(11));
    end(AfterAction::Sleep, 1h);
    EXPECT_EQ(done(), nothing);
    EXPECT_THAT(log(), HasSubstr("does not go to sleep again: alice may be using it"));
}

TEST_F(ReturnToRestTest, WhoIsUsingItOrWhereNobodyCanTellKeepsIt)
{
    logIn(noon().addDuration(-8h), {});
    end(AfterAction::PowerOff, 1h);
    EXPECT_EQ(done(), nothing);
    EXPECT_THAT(log(), HasSubstr("is not switched off again: alice may be using it"));
}

TEST_F(ReturnToRestTest, SessionsThatCannotBeAskedForKeepIt)
{
    logins->sessions.reset();
    end(AfterAction::Sleep, 1h);
    EXPECT_EQ(done(), nothing);
    EXPECT_THAT(log(), HasSubstr("nobody can tell whether it is in use"));
}

TEST_F(ReturnToRestTest, OneOfManySessionsThatIsInUseIsEnough)
{
    logIn(noon().addDuration(-8h), noon().addDuration(-7h));
    logIn(noon().addDuration(-8h), {});
    end(AfterAction::Sleep, 1h);
    EXPECT_EQ(done(), nothing);
}

TEST_F(ReturnToRestTest, WhoLeftItUnusedIsAlertedAMinuteAhead)
{
    logIn(noon().addDuration(-8h), woken.addSecs(10)); // by the key that is pressed at waking
    alertUser(501);
    end(AfterAction::Sleep, 5s);
    ASSERT_EQ(alerts.size(), 1);
    EXPECT_EQ(alerts.first(), std::pair(AfterAction::Sleep, noon().addSecs(65)));
    clock->advance(60s - 1ms);
    EXPECT_EQ(done(), nothing);
    clock->advance(1ms);
    EXPECT_EQ(done(), slept);
    EXPECT_EQ(alerts.size(), 1);
}

TEST_F(ReturnToRestTest, UseWhileItIsAnnouncedKeepsIt)
{
    alertUser(501);
    end(AfterAction::Sleep);
    logIn(noon().addDuration(-8h), {});
    clock->advance(1h);
    EXPECT_EQ(done(), nothing);
}

TEST_F(ReturnToRestTest, IsNotDoneWhereSomebodyCannotBeAlerted)
{
    told = Error{"user 501 could not be alerted"};
    end(AfterAction::PowerOff, 1h);
    EXPECT_EQ(done(), nothing);
    EXPECT_THAT(log(), HasSubstr("is not switched off again: user 501 could not be alerted"));
}

TEST_F(ReturnToRestTest, IsCancelledByWhoWasAlertedAndBySystemAlone)
{
    alertUser(501);
    end(AfterAction::Sleep);
    const QDateTime date = alerts.first().second;
    const QString bundle = RootFolder::join(QString(plugIns) + "/Sleep.plugin");
    const std::optional<quint32> system = RootFolder::owner();
    EXPECT_TRUE(rest.isMeant(501, bundle, date.toOffsetFromUtc(3600)));
    EXPECT_TRUE(rest.isMeant(system, bundle, date));
    EXPECT_FALSE(rest.isMeant(502, bundle, date));
    EXPECT_FALSE(rest.isMeant({}, bundle, date));
    EXPECT_FALSE(rest.isMeant(501, bundle, date.addSecs(1)));
    EXPECT_FALSE(rest.isMeant(501, RootFolder::join(QString(plugIns) + "/PowerOff.plugin"), date));
    rest.cancel("user 501");
    EXPECT_FALSE(rest.isMeant(501, bundle, date));
    clock->advance(1h);
    EXPECT_EQ(done(), nothing);
    EXPECT_THAT(log(), HasSubstr("does not go to sleep again: cancelled by user 501"));
}

TEST_F(ReturnToRestTest, IsPutOffByItsUserAndAnnouncedAnewWhateverTheUserDoesMeanwhile)
{
    alertUser(501);
    end(AfterAction::Sleep);
    const QDateTime date = alerts.first().second;
    logIn(noon().addDuration(-8h), {}); // choosing is a use
    rest.postpone(600s, "user 501");
    clock->advance(std::chrono::milliseconds(clock->currentDate().msecsTo(date.addSecs(540))) - 1ms);
    EXPECT_EQ(alerts.size(), 1);
    clock->advance(1ms);
    ASSERT_EQ(alerts.size(), 2);
    EXPECT_EQ(alerts.last().second, date.addSecs(600));
    EXPECT_EQ(done(), nothing);
    clock->advance(60s);
    EXPECT_EQ(done(), slept);
}

TEST_F(ReturnToRestTest, WaitsForAnActionThatGoesOnAndIsAnnouncedThen)
{
    busyUntil = noon().addSecs(100);
    end(AfterAction::Sleep, 95s);
    EXPECT_TRUE(alerts.isEmpty());
    EXPECT_EQ(done(), nothing);
    clock->advance(10s);
    EXPECT_EQ(done(), slept);
}

TEST_F(ReturnToRestTest, WaitsForAnActionOfAnAgent)
{
    power->keptAwakeElsewhere = true;
    end(AfterAction::Sleep, 1h);
    EXPECT_EQ(done(), nothing);
    power->keptAwakeElsewhere = false;
    clock->advance(10s);
    EXPECT_EQ(done(), slept);
}

TEST_F(ReturnToRestTest, WhatIsDueWithinFiveMinutesKeepsTheMachineOn)
{
    next = noon().addDuration(5min + 5s);
    end(AfterAction::Sleep, 5s);
    EXPECT_EQ(done(), nothing);
    next = noon().addDuration(5min + 15s + 1ms);
    clock->advance(10s);
    EXPECT_EQ(done(), slept);
}

TEST_F(ReturnToRestTest, AnActionThatBeginsWhileItIsAnnouncedHasItAnnouncedAnew)
{
    alertUser(501);
    end(AfterAction::Sleep);
    busyUntil = noon().addSecs(70);
    clock->advance(60s);
    EXPECT_EQ(done(), nothing);
    clock->advance(20s);
    ASSERT_EQ(alerts.size(), 2);
    EXPECT_EQ(done(), nothing);
    clock->advance(60s);
    EXPECT_EQ(done(), slept);
}

TEST_F(ReturnToRestTest, IsPutOffForTenMinutesByWhoForbidsIt)
{
    power->blocking = {"apt: Upgrades packages"};
    end(AfterAction::PowerOff);
    EXPECT_THAT(log(), HasSubstr("the machine is not switched off again yet: held up by apt: Upgrades "
                                 "packages; tried again in ten minutes"));
    power->blocking.clear();
    clock->advance(10min - 2s);
    EXPECT_EQ(done(), nothing) << "not before";
    clock->advance(2s);
    EXPECT_EQ(done(), std::pair(0, 1));
}

TEST_F(ReturnToRestTest, IsGivenUpWhenItIsForbiddenAFourthTime)
{
    power->blocking = {"apt: Upgrades\npackages"};
    end(AfterAction::Sleep, 30min + 4s);
    EXPECT_THAT(log(), Not(HasSubstr("given up")));
    clock->advance(1s);
    EXPECT_THAT(log(), HasSubstr("does not go to sleep again: given up, held up by apt: Upgrades"));
    EXPECT_EQ(root.logLines().filter("held up by").size(), 4);
    power->blocking.clear();
    clock->advance(24h);
    EXPECT_EQ(done(), nothing);
}

TEST_F(ReturnToRestTest, IsForbiddenAlsoAfterItWasAnnounced)
{
    alertUser(501);
    end(AfterAction::Sleep);
    power->blocking = {"apt: Upgrades packages"};
    clock->advance(60s);
    EXPECT_EQ(done(), nothing);
    power->blocking.clear();
    clock->advance(10min);
    EXPECT_EQ(alerts.size(), 2);
    clock->advance(60s);
    EXPECT_EQ(done(), slept);
}

TEST_F(ReturnToRestTest, AMachineThatSleepsMeanwhileWantsNothingAnyMore)
{
    alertUser(501);
    end(AfterAction::Sleep);
    power->send(kIOMessageSystemWillSleep);
    power->send(kIOMessageSystemHasPoweredOn);
    clock->advance(1h);
    EXPECT_EQ(done(), nothing);
}
