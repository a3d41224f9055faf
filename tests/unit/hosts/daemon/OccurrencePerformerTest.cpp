// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrencePerformer.h"
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "hosts/common/program/HostRootObject.h"
#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/ScheduleKeeper.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "support/WaitUntil.h"
#include "unit/hosts/daemon/PerformingFixture.h"
#include "unit/hosts/daemon/RecurringFixture.h"

#include <unistd.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// Acts in the daemon, at noon by the clock.
class OccurrencePerformerTest : public PerformingFixture
{
protected:
    Occurrence probe(QVariantMap parameters) const
    {
        parameters.insert("Acts In User Agent", parameters.value("Acts In User Agent", 0LL));
        parameters.insert("Text", "hello");
        Schedule schedule = BundleFixture::schedule("a");
        schedule.parameters = parameters;
        return {schedule, schedule.date};
    }
    void performDue(const Occurrence &occurrence)
    {
        decide({occurrence});
        while (performer.hasMore())
            performer.startNext();
    }
    void decide(const QList<Occurrence> &due)
    {
        for (const Occurrence &occurrence : due) {
            if (!occurrence.mayHaveRun)
                waitForAnswers(answers, occurrence.schedule);
        }
        performer.decide(due);
    }
    void letTimePass(std::chrono::seconds duration)
    {
        for (int i = 0; i < 4 * duration.count(); ++i) {
            clock.advance(250ms);
            for (const Occurrence &due : keeper.scheduler().due())
                performDue(due);
        }
    }
    std::optional<OccurrenceState> state() const
    {
        const auto entry = keeper.scheduler().record().find("a", noon());
        return entry ? std::optional(entry->state) : std::nullopt;
    }
    std::string lastMessage() const { return lastAboutSchedules().toStdString(); }

    /// Has a schedule every ten seconds from noon on in force.
    void repeat(const QVariantMap &parameters, std::optional<MissedPolicy> policy = {})
    {
        Schedule schedule = Recurring::every("a", 10s, noon());
        schedule.missedPolicy = policy;
        schedule.parameters = probe(parameters).schedule.parameters;
        keeper.scheduler().setSchedules({schedule});
    }
    void performAllDue()
    {
        while (!keeper.scheduler().due().isEmpty())
            performDue(keeper.scheduler().due().first());
    }
    std::optional<OccurrenceState> stateAt(std::chrono::seconds fromNoon) const
    {
        const auto entry = keeper.scheduler().record().find("a", noon().addDuration(fromNoon));
        return entry ? std::optional(entry->state) : std::nullopt;
    }

    FakeClock clock{noon()};
    ScheduleKeeper keeper{clock};
    std::shared_ptr<FakeConsoleUser> console = std::make_shared<FakeConsoleUser>();
    Performances performances{performers(), DaemonActions::folder(), clock};
    PlugInAnswers answers{Performances::programNamed("dozely-performer"), clock};
    OccurrencePerformer performer{keeper, performances, answers, std::make_shared<PinnedConsoleUser>(console),
                                  clock};
};

TEST_F(OccurrencePerformerTest, PerformsInTheDaemonWithParametersAndDate)
{
    makeProbe();
    performDue(probe({}));
    EXPECT_EQ(state(), OccurrenceState::Begun);
    EXPECT_TRUE(waitUntil([&] { return state() == OccurrenceState::Done; }));
    EXPECT_EQ(messages().filter("Probe initialised").size(), 2)
        << "once where it was asked, once where it acts";
    // Where the one that was asked ends, and says so, is nobody's business.
    const QStringList lines = messages();
    const auto told = lines.indexOf("Schedule \"Name of a\" acts in the daemon");
    const auto acted = lines.indexOf("Probe acts in the daemon: hello, 2026-03-14 13:00:00 +0100");
    EXPECT_NE(told, -1);
    EXPECT_LT(told, acted);
    EXPECT_LT(acted, lines.lastIndexOf("Probe terminated"));
}

TEST_F(OccurrencePerformerTest, RecordsAllAsBegunBeforeAnyIsStarted)
{
    makeProbe();
    QList<Occurrence> due;
    for (int i = 0; i < 3; ++i) {
        due += probe({{"Goes On", "for ever"}});
        due.last().schedule.identifier = QString::number(i);
    }
    decide(due);
    ASSERT_TRUE(performer.hasMore());
    OccurrenceDatabase another;
    EXPECT_EQ(another.open(noon()).record.dates("2").size(), 1) << "on disk";
    EXPECT_TRUE(messages().filter("acts").isEmpty());
    performer.startNext();
    ASSERT_TRUE(waitUntil([&] { return !messages().filter("Probe acts").isEmpty(); }))
        << "else it is taken back";
    performer.takeBack();
    EXPECT_FALSE(performer.hasMore());
    keeper.flush();
    const OccurrenceRecord record = another.open(noon()).record;
    EXPECT_EQ(record.dates("0").size(), 1);
    EXPECT_TRUE(record.dates("1").isEmpty()) << "it has certainly not begun";
}

TEST_F(OccurrencePerformerTest, StartsWhatIsDueByItsDateBeforeWhatWasAskedFor)
{
    makeProbe();
    Occurrence asked = probe({});
    asked.schedule.identifier = "asked";
    asked.schedule.name = "asked for";
    asked.isAskedFor = true;
    decide({asked});
    EXPECT_TRUE(performer.isNextAskedFor());
    decide({probe({})});
    EXPECT_FALSE(performer.isNextAskedFor());
    performer.startNext();
    EXPECT_THAT(messages(), testing::Contains(QString("Schedule \"Name of a\" acts in the daemon")));
    EXPECT_THAT(messages(), Not(testing::Contains(QString("Schedule \"asked for\" acts in the daemon"))));
    EXPECT_TRUE(performer.isNextAskedFor());
    performer.startNext();
    EXPECT_FALSE(performer.hasMore());
}

TEST_F(OccurrencePerformerTest, KeepsAPlugInWhoseActionGoesOnUntilItIsFinished)
{
    makeProbe();
    performDue(probe({{"Goes On", "for a while"}}));
    EXPECT_TRUE(waitUntil([&] { return state() == OccurrenceState::Done; }));
    EXPECT_THAT(messages(), testing::Contains(QString("Probe finished")));
}

TEST_F(OccurrencePerformerTest, RecordsWhereAndHowLateAnActionBeganAndHowItsProgramEnded)
{
    makeProbe();
    clock.advance(1500ms);
    performDue(probe({{"Goes On", "for a while"}, {"Exit Status", 3LL}}));
    ASSERT_TRUE(waitUntil([&] { return state() == OccurrenceState::Failed; }));
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" failed: its program ended with status 3");
    const auto entry = *keeper.scheduler().record().find("a", noon());
    EXPECT_EQ(entry.place, ActingPlace::Daemon);
    EXPECT_EQ(entry.begun, noon().addMSecs(1500));
    EXPECT_EQ(entry.lateness, 1500);
    EXPECT_EQ(entry.exitStatus, 3);
}

TEST_F(OccurrencePerformerTest, RecordsNothingAsDoneWhoseProgramCouldNotBeStarted)
{
    makeProbe();
    performDue(probe({{"Goes On", "for a while"}, {"Exit Status", -1LL}}));
    ASSERT_TRUE(waitUntil([&] { return state() == OccurrenceState::NotPerformed; }));
    const auto entry = *keeper.scheduler().record().find("a", noon());
    EXPECT_FALSE(entry.exitStatus);
    EXPECT_EQ(entry.failure, "its program could not be started");
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" was not performed: its program could not be started");
}

TEST_F(OccurrencePerformerTest, CallsInterruptedWhatNobodyCouldWriteDownTheEndOf)
{
    makeProbe();
    const QString outcome = PerformanceOutcome::unfinishedPathBeside(DaemonActions::folder() + '/' +
                                                                     DaemonActions::nameOf({"a", noon()}));
    ASSERT_TRUE(QDir().mkpath(outcome)); // no file can be there
    performDue(probe({}));
    ASSERT_TRUE(waitUntil([&] { return state() != OccurrenceState::Begun; }));
    EXPECT_EQ(state(), OccurrenceState::Interrupted);
    EXPECT_EQ(keeper.scheduler().record().find("a", noon())->failure, "its performer ended without a word");
    EXPECT_THAT(lastMessage(),
                HasSubstr("\"Name of a\" was interrupted, or nobody can say how it ended: its performer"));
}

TEST_F(OccurrencePerformerTest, RecordsOnceWhatAnActionInTheSessionWrote)
{
    const Occurrence occurrence = probe({{"Acts In User Agent", 1LL}});
    keeper.noteBegun({{occurrence, ActingPlace::Session}});
    keeper.note(occurrence, OccurrenceState::Done, 4242);
    clock.advance(90s);
    performer.sessionOutcomes().note(occurrence, 4242,
                                     {.hasBegun = true, .exitStatus = 0, .output = "first"});
    clock.advance(90s);
    performer.sessionOutcomes().note(occurrence, 4242,
                                     {.hasBegun = true, .exitStatus = 0, .output = "second"});
    keeper.flush();
    const auto entry = *keeper.scheduler().record().find("a", noon());
    EXPECT_EQ(entry.state, OccurrenceState::Done);
    EXPECT_EQ(entry.exitStatus, 0);
    EXPECT_EQ(entry.ended, noon().addSecs(90));
    EXPECT_EQ(entry.handedTo, 4242U) << "it may be handed back";
    EXPECT_EQ(entry.begun, noon());
    const auto outcomes = RecordedOutcomes::open();
    ASSERT_TRUE(outcomes);
    const auto found = outcomes->findOutput("a", noon());
    ASSERT_TRUE(found && *found);
    EXPECT_EQ((*found)->output, "first");
}

TEST_F(OccurrencePerformerTest, RecordsWhyAnActionInTheSessionCouldNotBegin)
{
    const Occurrence occurrence = probe({{"Acts In User Agent", 1LL}});
    keeper.noteBegun({{occurrence, ActingPlace::Session}});
    keeper.note(occurrence, OccurrenceState::Done, 4242);
    performer.sessionOutcomes().note(occurrence, 4242, {false, "its bundle is gone"});
    EXPECT_EQ(lastMessage(),
              "Schedule \"Name of a\" was not performed: the agent of user 4242 could not begin "
              "it: its bundle is gone");
    const auto entry = *keeper.scheduler().record().find("a", noon());
    EXPECT_EQ(entry.state, OccurrenceState::NotPerformed);
    EXPECT_EQ(entry.failure, "its bundle is gone");
    EXPECT_FALSE(entry.handedTo) << "it is not handed back";
}

TEST_F(OccurrencePerformerTest, RecordsWhyAnActionInTheSessionFailedAndThatNobodyHasItAnyMore)
{
    const Occurrence occurrence = probe({{"Acts In User Agent", 1LL}});
    keeper.noteBegun({{occurrence, ActingPlace::Session}});
    keeper.note(occurrence, OccurrenceState::Done, 4242);
    clock.advance(90s);
    performer.sessionOutcomes().note(occurrence, 4242, {true, "it took longer than 60 s", 143});
    EXPECT_EQ(lastMessage(),
              "Schedule \"Name of a\" failed with the agent of user 4242: it took longer than 60 s");
    const auto entry = *keeper.scheduler().record().find("a", noon());
    EXPECT_EQ(entry.state, OccurrenceState::Failed);
    EXPECT_EQ(entry.failure, "it took longer than 60 s");
    EXPECT_EQ(entry.exitStatus, 143);
    EXPECT_EQ(entry.ended, noon().addSecs(90));
    EXPECT_EQ(entry.begun, noon());
    EXPECT_EQ(entry.place, ActingPlace::Session);
    EXPECT_FALSE(entry.handedTo) << "it is not handed back";
}

TEST_F(OccurrencePerformerTest, KeepsTheMachineAwakeWhileAnActionGoesOn)
{
    makeProbe();
    performDue(probe({{"Goes On", "for a while"}}));
    EXPECT_EQ(power->inhibitions, 1);
    EXPECT_TRUE(waitUntil([&] { return state() == OccurrenceState::Done; }));
    EXPECT_EQ(power->inhibitions, 0);
}

TEST_F(OccurrencePerformerTest, KeepsTheMachineAwakeForWhatAnEarlierDaemonBegan)
{
    for (const bool inhibits : {true, false}) {
        const QString name = inhibits ? "Waker" : "Sleeper";
        Occurrence occurrence = probe({{"Goes On Until There Is", root.join("/" + name)}});
        occurrence.schedule.identifier = name;
        occurrence.schedule.bundlePath =
            makeBundle(name, {{"WDDaemonModule", "ProbePlugIn.so"}, {"WDInhibitsSleep", inhibits}});
        const auto begun = messages().filter("Probe acts").size();
        clock.jumpTo(noon()); // the more the first one's end was waited for, the later would the second be
        performDue(occurrence);
        ASSERT_TRUE(waitUntil([&] { return messages().filter("Probe acts").size() > begun; }));
        ASSERT_EQ(power->inhibitions, inhibits ? 1 : 0);
        Performances performances(performers(), DaemonActions::folder(), clock);
        DaemonActions next(keeper, performances, answers);
        next.takeUp();
        EXPECT_EQ(power->inhibitions, inhibits ? 2 : 0) << "one more, its own";
        write("/" + name, "");
        EXPECT_TRUE(waitUntil([&] {
            clock.advance(1s);
            return power->inhibitions == 0 &&
                   keeper.scheduler().record().find(name, noon())->state != OccurrenceState::Begun;
        }));
    }
}

TEST_F(OccurrencePerformerTest, LetsAnActionThatPutsTheMachineToSleepDoSo)
{
    Occurrence sleep = probe({{"Goes On", "for ever"}});
    sleep.schedule.bundlePath =
        makeBundle("Sleeper", {{"WDDaemonModule", "ProbePlugIn.so"}, {"WDInhibitsSleep", false}});
    performDue(sleep);
    EXPECT_EQ(state(), OccurrenceState::Begun);
    EXPECT_TRUE(power->reasons.isEmpty());
}

TEST_F(OccurrencePerformerTest, SkipsWhatIsLaterThanItsPlugInsTimeOut)
{
    makeProbe();
    clock.advance(31s);
    performDue(probe({{"Time Out", -30LL}}));
    EXPECT_EQ(state(), OccurrenceState::Skipped);
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" was skipped: it is 31 s late");
}

TEST_F(OccurrencePerformerTest, PerformsWhatIsLateWithinItsPlugInsTimeOut)
{
    makeProbe();
    clock.advance(30s);
    performDue(probe({{"Time Out", -30LL}}));
    EXPECT_TRUE(waitUntil([&] { return state() == OccurrenceState::Done; }));
}

TEST_F(OccurrencePerformerTest, PerformsWhatIsAskedForNowUpToFiveMinutesLater)
{
    makeProbe();
    clock.advance(5min);
    Occurrence asked = probe({{"Time Out", -1LL}});
    asked.isAskedFor = true;
    performDue(asked);
    EXPECT_TRUE(waitUntil([&] { return state() == OccurrenceState::Done; }));
    keeper.scheduler().record() = {};
    clock.advance(1ms);
    performDue(asked);
    EXPECT_EQ(state(), OccurrenceState::Skipped);
}

TEST_F(OccurrencePerformerTest, SkipsWhatMayHaveRun)
{
    makeProbe();
    Occurrence unsure = probe({});
    unsure.mayHaveRun = true;
    performDue(unsure);
    EXPECT_EQ(state(), OccurrenceState::Skipped);
    EXPECT_EQ(messages().size(), 1);
    EXPECT_THAT(lastMessage(), HasSubstr("may have run"));
}

TEST_F(OccurrencePerformerTest, SaysInOneLineThatABundleIsMissing)
{
    performDue(probe({}));
    EXPECT_EQ(state(), OccurrenceState::NotPerformed);
    EXPECT_EQ(messages().size(), 1);
    EXPECT_THAT(lastMessage(), HasSubstr("was not performed: There is no bundle"));
}

TEST_F(OccurrencePerformerTest, DoesNotCallDoneWhatABundleWithoutTheModuleForItsPlaceCannotDo)
{
    const auto refusal = [this](const QVariantMap &info, qint64 inSession) {
        const qsizetype before = messages().size();
        Occurrence occurrence = probe({{"Acts In User Agent", inSession}});
        occurrence.schedule.bundlePath = makeBundle(QString("Bare%1").arg(before), info);
        performDue(occurrence);
        EXPECT_EQ(state(), OccurrenceState::NotPerformed);
        EXPECT_EQ(messages().size(), before + 1);
        keeper.scheduler().record() = {};
        return lastMessage();
    };
    EXPECT_THAT(refusal({{"WDUserAgentModule", "ProbePlugIn.so"}}, 0),
                HasSubstr("Bare0.plugin cannot act in the daemon: it names no \"WDDaemonModule\""));
    console->user = ConsoleUser::User{"alice", 4711};
    EXPECT_THAT(refusal({{"CFBundleIdentifier", "bare"}}, 1),
                HasSubstr("cannot act in the session: it names no \"WDUserAgentModule\""));
    EXPECT_THAT(refusal({{"WDUserAgentModule", "ProbePlugIn.so"}, {"WDActsInUserAgent", QVariantList{}}}, 1),
                HasSubstr("its \"WDActsInUserAgent\" is neither true nor false"));
}

TEST_F(OccurrencePerformerTest, DoesNotCallDoneWhatABundleWithoutAReadableInfoDictionaryCannotDo)
{
    Occurrence occurrence = probe({});
    occurrence.schedule.parameters.remove("Acts In User Agent");
    occurrence.schedule.bundlePath = makeBundle("Broken", {});
    write(occurrence.schedule.bundlePath + "/Contents/Info.plist", "<plist><dict><key>");
    performDue(occurrence);
    EXPECT_EQ(state(), OccurrenceState::NotPerformed);
    EXPECT_EQ(messages().size(), 1);
}

TEST_F(OccurrencePerformerTest, SaysInOneLineWhatIsWrongWithAModuleAndGoesOn)
{
    const auto performBad = [this](const QString &name, const QStringList &modules) {
        const qsizetype before = messages().size();
        Occurrence occurrence = probe({});
        occurrence.schedule.bundlePath = makeBundle(name, {{"WDDaemonModule", name + ".so"}}, modules);
        performDue(occurrence);
        EXPECT_EQ(state(), OccurrenceState::NotPerformed);
        EXPECT_EQ(messages().size(), before + 1) << name.toStdString();
        EXPECT_THAT(lastMessage(), HasSubstr("was not performed")) << name.toStdString();
        keeper.scheduler().record() = {};
    };
    performBad("NoModule", {});
    for (const QString name : {"WrongInterface", "FactoryThrows", "ConstructorThrows"})
        performBad(name, {QString(KIT_MODULES "/%1.so").arg(name)});
    makeProbe();
    performDue(probe({}));
    EXPECT_TRUE(waitUntil([&] { return state() == OccurrenceState::Done; }));
}

TEST_F(OccurrencePerformerTest, SaysThatAnActionRaised)
{
    makeProbe();
    performDue(probe({{"Throws", true}}));
    ASSERT_TRUE(waitUntil([&] { return state() == OccurrenceState::Failed; }));
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" failed: the probe was told to");
    EXPECT_EQ(keeper.scheduler().record().find("a", noon())->failure, "the probe was told to");
}

TEST_F(OccurrencePerformerTest, SaysThatNobodyIsLoggedIn)
{
    makeProbe();
    performDue(probe({{"Acts In User Agent", 1LL}}));
    EXPECT_EQ(state(), OccurrenceState::NotPerformed);
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" was not performed: nobody is logged in");
}

TEST_F(OccurrencePerformerTest, SaysThatTheAgentCouldNotBeReached)
{
    makeProbe();
    console->user = ConsoleUser::User{"alice", 4242};
    Occurrence lost = probe({{"Acts In User Agent", 1LL}});
    lost.schedule.owner = 4242;
    keeper.scheduler().setSchedules({lost.schedule});
    clock.advance(1s); // that much of the time that a daemon that has just started gives it
    performDue(lost);
    EXPECT_FALSE(state()) << "nothing was begun";
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" waits for the agent of user 4242");
    EXPECT_TRUE(keeper.scheduler().due().isEmpty());
    letTimePass(14s);
    EXPECT_FALSE(state());
    letTimePass(3s);
    EXPECT_EQ(state(), OccurrenceState::NotPerformed);
    EXPECT_EQ(lastMessage(),
              "Schedule \"Name of a\" was not performed: the agent of user 4242 could not be reached");
}

TEST_F(OccurrencePerformerTest, WhatBelongsToAUserWaitsWhileAnotherIsAtTheConsole)
{
    makeProbe();
    console->user = ConsoleUser::User{"bob", 4242};
    Occurrence alices = probe({{"Acts In User Agent", 1LL}, {"Time Out", -30LL}});
    alices.schedule.owner = 501;
    keeper.scheduler().setSchedules({alices.schedule});
    performDue(alices);
    EXPECT_FALSE(state());
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" waits for user 501, who is not at the console");
    letTimePass(28s);
    EXPECT_FALSE(state());
    console->user = ConsoleUser::User{"alice", 501};
    letTimePass(4s);
    EXPECT_EQ(state(), OccurrenceState::NotPerformed);
    EXPECT_EQ(lastMessage(),
              "Schedule \"Name of a\" was not performed: the agent of user 501 could not be reached");
}

TEST_F(OccurrencePerformerTest, WhatBelongsToAUserIsMissedWhenAnotherStaysAtTheConsole)
{
    makeProbe();
    console->user = ConsoleUser::User{"bob", 4242};
    clock.advance(20s);
    Occurrence alices = probe({{"Acts In User Agent", 1LL}, {"Time Out", -30LL}});
    alices.schedule.owner = 501;
    keeper.scheduler().setSchedules({alices.schedule});
    performDue(alices);
    EXPECT_FALSE(state());
    letTimePass(12s);
    EXPECT_EQ(state(), OccurrenceState::NotPerformed);
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" was not performed: user 501 is not at the console");
}

TEST_F(OccurrencePerformerTest, WhatIsRootsIsForWhoeverIsAtTheConsole)
{
    makeProbe();
    console->user = ConsoleUser::User{"bob", 4242};
    for (const std::optional<quint32> owner : {std::optional<quint32>(), std::optional<quint32>(0)}) {
        Occurrence roots = probe({{"Acts In User Agent", 1LL}});
        roots.schedule.owner = owner;
        roots.schedule.identifier = owner ? "zero" : "none";
        keeper.scheduler().setSchedules({roots.schedule});
        performDue(roots);
        EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" waits for the agent of user 4242");
    }
}

TEST_F(OccurrencePerformerTest, WhatWasNotSentIsTakenBackWhenTheConsoleChangesHands)
{
    makeProbe();
    root.makeSocketFolder();
    // This process plays the agent of its own user.
    HostRootObject rootObject;
    NSProcessInfo::setProcessName("Dozely Agent");
    auto &center = *WDCommunicationCenter::sharedInstance();
    center.setObserver(&rootObject);
    center.createServerConnection();
    console->user = ConsoleUser::User{"me", ::geteuid()};
    Occurrence due = probe({{"Acts In User Agent", 1LL}});
    due.schedule.owner.reset();
    keeper.scheduler().setSchedules({due.schedule});
    decide({due});
    ASSERT_TRUE(performer.hasMore());
    console->user = ConsoleUser::User{"bob", 4242};
    performer.startNext();
    EXPECT_FALSE(state()) << "nothing was sent";
    EXPECT_EQ(keeper.scheduler().due().size(), 1);
    center.setObserver(nullptr);
}

TEST_F(OccurrencePerformerTest, PerformsAnOccurrenceThatIsHandedBackInTheDaemon)
{
    makeProbe();
    performer.performHandedBack(probe({{"Acts In User Agent", 1LL}}));
    EXPECT_TRUE(waitUntil([&] { return state() == OccurrenceState::Done; }));
    EXPECT_EQ(messages().filter("Probe acts in the daemon").size(), 1);
}

TEST(PinnedConsoleUser, HoldsTheUserStillUntilItIsReleased)
{
    const auto real = std::make_shared<FakeConsoleUser>();
    PinnedConsoleUser pinned(real);
    EXPECT_FALSE(pinned.pin());
    real->user = ConsoleUser::User{"alice", 1000};
    EXPECT_EQ(pinned.pin()->userId, 1000u);
    real->user = ConsoleUser::User{"bob", 1001};
    EXPECT_EQ(pinned.current()->userId, 1000u);
    pinned.release();
    EXPECT_EQ(pinned.current()->userId, 1001u);
}

TEST_F(OccurrencePerformerTest, TellsOfARunOfMissedOccurrencesInOneLineThatTheDiskHasFirst)
{
    makeProbe();
    repeat({{"Time Out", -15LL}});
    clock.advance(75s);
    decide({keeper.scheduler().due().first()});
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\": 6 occurrences from 2026-03-14T12:00:00Z to "
                             "2026-03-14T12:00:50Z were missed");
    OccurrenceDatabase another;
    const auto opened = another.open(noon());
    EXPECT_EQ(opened.record.calendar("a")->settled, noon().addSecs(50));
    const auto entry = another.find({"a", noon().addSecs(50)});
    ASSERT_TRUE(entry && *entry);
    EXPECT_EQ((*entry)->run->count, 6);
    performDue(keeper.scheduler().due().first());
    EXPECT_TRUE(waitUntil([&] { return stateAt(60s) == OccurrenceState::Done; }));
}

TEST_F(OccurrencePerformerTest, RunsTheLatestOfAllThatWereMissedOnce)
{
    makeProbe();
    repeat({{"Time Out", -1LL}}, MissedPolicy::RunOnce);
    clock.advance(1h);
    performAllDue();
    EXPECT_TRUE(waitUntil([&] { return stateAt(1h) == OccurrenceState::Done; }));
    EXPECT_EQ(messages()
                  .filter("360 occurrences from 2026-03-14T12:00:00Z to 2026-03-14T12:59:50Z were missed")
                  .size(),
              1);
    EXPECT_EQ(messages().filter("Probe acts in the daemon").size(), 1);
}

TEST_F(OccurrencePerformerTest, SkipsWhatComesDueWhileTheActionOfTheOneBeforeGoesOn)
{
    makeProbe();
    const QString end = root.join("/end");
    repeat({{"Goes On Until There Is", end}, {"Time Out", -3600LL}});
    performDue(keeper.scheduler().due().first());
    clock.advance(10s);
    performDue(keeper.scheduler().due().first());
    EXPECT_EQ(stateAt(10s), OccurrenceState::Skipped);
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" was skipped: the action of the one before goes on");
    clock.advance(30s);
    performDue(keeper.scheduler().due().first());
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\": 3 occurrences from 2026-03-14T12:00:20Z to "
                             "2026-03-14T12:00:40Z were missed: the action of the one before goes on");
    QFile(end).open(QIODevice::WriteOnly);
    EXPECT_TRUE(waitUntil([&] { return stateAt(0s) == OccurrenceState::Done; }));
    clock.advance(10s);
    performDue(keeper.scheduler().due().first());
    EXPECT_TRUE(waitUntil([&] { return stateAt(50s) == OccurrenceState::Done; }));
}

TEST_F(OccurrencePerformerTest, LetsActionsRunBesideEachOtherWhereTheScheduleSaysSoAndWhenTheyAreAskedFor)
{
    makeProbe();
    const QString end = root.join("/end");
    repeat({{"Goes On Until There Is", end}, {"Time Out", -3600LL}});
    performDue(keeper.scheduler().due().first());
    const Occurrence asked = keeper.scheduler().makeOccurrenceNow(keeper.scheduler().schedules().first());
    keeper.scheduler().noteAsked(asked, 501);
    performDue(asked);
    Schedule beside = keeper.scheduler().stored(0);
    beside.overlapPolicy = OverlapPolicy::Run;
    keeper.scheduler().setSchedules({beside});
    clock.advance(10s);
    performDue(keeper.scheduler().due().first());
    QFile(end).open(QIODevice::WriteOnly);
    EXPECT_TRUE(waitUntil([&] { return stateAt(10s) == OccurrenceState::Done; }));
    EXPECT_TRUE(waitUntil([&] { return stateAt(1s) == OccurrenceState::Done; }));
}

TEST_F(OccurrencePerformerTest, WhatIsToBeRunOnceWaitsForSomebodyAtTheConsoleHoweverLong)
{
    makeProbe();
    repeat({{"Acts In User Agent", 1LL}, {"Time Out", -1LL}}, MissedPolicy::RunOnce);
    Schedule roots = keeper.scheduler().stored(0);
    roots.owner.reset();
    keeper.scheduler().setSchedules({roots});
    performAllDue();
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" waits for somebody at the console");
    letTimePass(60s);
    EXPECT_EQ(messages().filter("Schedule \"").size(), 1) << "which is told once, and nothing was missed yet";
    EXPECT_FALSE(stateAt(0s));
    const auto delays = clock.pendingDelays();
    EXPECT_EQ(std::count(delays.cbegin(), delays.cend(), 30s), 1) << "it is looked for seldom";
    console->user = ConsoleUser::User{"bob", 4242};
    letTimePass(31s);
    EXPECT_FALSE(stateAt(0s)) << "that user's agent is not there";
    EXPECT_EQ(keeper.scheduler().pendingOf(0).first().date, noon());
    EXPECT_EQ(messages().filter("Schedule \"").size(), 1);
}

TEST_F(OccurrencePerformerTest, RecordsAsSkippedWhatAnAgentSkippedSinceTheOneBeforeGoesOn)
{
    makeProbe();
    const Occurrence occurrence = probe({{"Acts In User Agent", 1LL}});
    keeper.scheduler().setSchedules({occurrence.schedule});
    keeper.note(occurrence, OccurrenceState::Done, 501);
    performer.sessionOutcomes().noteOverlap(occurrence);
    EXPECT_EQ(state(), OccurrenceState::Skipped);
    EXPECT_EQ(lastMessage(), "Schedule \"Name of a\" was skipped: the action of the one before goes on");
}
