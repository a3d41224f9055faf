// SPDX-License-Identifier: MIT
#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/daemon/OccurrenceDatabase.h"
#include "integration/hosts/HostSystem.h"
#include "support/PrintTo.h"

#include <QElapsedTimer>
#include <QTimeZone>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using testing::ContainsRegex;
using testing::HasSubstr;

namespace
{
const QVariantMap inSession{{"Acts In User Agent", 1LL}};
const QVariantMap inDaemon{{"Acts In User Agent", 0LL}};
} // namespace

class HostsTest : public HostSystem
{
protected:
    static QVariantMap with(QVariantMap parameters, const QString &key, const QVariant &value)
    {
        parameters.insert(key, value);
        return parameters;
    }
    /// The one line of the log that contains `part`.
    std::string lineWith(const QString &part) const
    {
        const QStringList lines = root.logLines().filter(part);
        EXPECT_EQ(lines.size(), 1) << part.toStdString();
        return lines.value(0).toStdString();
    }
    NSNotification handBack(const QString &name, const QDateTime &date) const
    {
        return NSNotification(name, "com.dozely.Daemon",
                              {{"Schedule Date", date},
                               {"Schedule Bundle Path", schedule("any").fullBundlePath()},
                               {"Schedule Parameters", QVariantMap{{"Text", "made up"}}}});
    }
    /// What the record says of an occurrence; no text when it says nothing.
    static QString outcomeOf(const QString &identifier, const QDateTime &date)
    {
        const auto outcomes = RecordedOutcomes::open();
        const auto outcome = outcomes ? outcomes->find(identifier, date) : outcomes.error();
        return outcome && *outcome ? (*outcome)->state : QString();
    }
    static NSNotification runNow(const QString &identifier)
    {
        return NSNotification("DaemonMustRunNowEvent", "com.dozely.Admin",
                              {{"Schedule Identifier", identifier}});
    }
};

TEST_F(HostsTest, AnOccurrenceForTheSessionRunsInTheAgentOfTheConsoleUser)
{
    startDaemon();
    startAgent();
    const QDateTime date = soon();
    writeStore({probeEntry("hello", inSession, date)});
    ASSERT_TRUE(logs("Probe acts in the session: hello"));
    const QString local = date.toTimeZone(QTimeZone("Europe/Paris")).toString("yyyy-MM-dd HH:mm:ss");
    EXPECT_THAT(lineWith("Probe acts in the session"),
                ContainsRegex("- " + std::to_string(agentUser()) + " - User Agent\\): .*hello, " +
                              local.toStdString()));
    EXPECT_TRUE(logs(QString("was handed to the agent of user %1").arg(agentUser())));
    EXPECT_GE(QDateTime::currentDateTimeUtc(), date);
    EXPECT_EQ(countOf("acts in the daemon"), 0);
}

TEST_F(HostsTest, AnOccurrenceForTheDaemonRunsThereWithoutAnyAgent)
{
    startDaemon();
    writeStore({probeEntry("hello", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: hello"));
    EXPECT_THAT(lineWith("Probe acts in the daemon"),
                ContainsRegex("- " + std::to_string(::geteuid()) + " - Daemon\\): "));
}

TEST_F(HostsTest, AnOccurrenceOfAnotherUserNeverRunsInTheAgentOfWhoeverIsThere)
{
    startDaemon();
    startAgent();
    writeStore({changed(probeEntry("foreign", with(inSession, "Time Out", -3LL)), "Owner",
                        static_cast<qint64>(agentUser() + 1))});
    EXPECT_TRUE(logs(QString("waits for user %1, who is not at the console").arg(agentUser() + 1)));
    EXPECT_TRUE(logs(QString("was not performed: user %1 is not at the console").arg(agentUser() + 1)));
    EXPECT_EQ(countOf("Probe acts"), 0);
}

TEST_F(HostsTest, AnOccurrenceOfAUserWaitsUntilThatUserSwitchesIn)
{
    const quint32 other = agentUser() + 1;
    switchTo(other);
    startDaemon();
    startAgent();
    // Whoever owns the root folder stands for root, whose schedules are for whoever is there.
    const bool isRoots = ::geteuid() != 0;
    writeStore({probeEntry("mine", with(inSession, "Time Out", -60LL))});
    EXPECT_TRUE(logs(isRoots ? QString("waits for the agent of user %1").arg(other)
                             : QString("waits for user %1, who is not at the console").arg(agentUser())));
    EXPECT_EQ(countOf("Probe acts"), 0);
    switchTo(agentUser());
    if (!isRoots) {
        EXPECT_TRUE(logs("Probe acts in the session: mine"));
    }
}

TEST_F(HostsTest, MayHaveAsManyDescriptorsAsTheMachineLetsThem)
{
    startDaemon();
    startAgent();
    for (const auto *process : {&daemon, &agent}) {
        QFile limits(QString("/proc/%1/limits").arg((*process)->processId()));
        ASSERT_TRUE(limits.open(QIODevice::ReadOnly));
        const QString text = limits.readAll();
        const QStringList line = text.split('\n').filter("Max open files").value(0).simplified().split(' ');
        ASSERT_EQ(line.size(), 6) << text.toStdString();
        EXPECT_EQ(line[3], line[4]) << "the soft and the hard one";
    }
}

TEST_F(HostsTest, HaveNoLibraryInMemoryThatOnlyServersOrKeysNeed)
{
    startDaemon();
    startAgent();
    for (const auto *process : {&daemon, &agent}) {
        QFile maps(QString("/proc/%1/maps").arg((*process)->processId()));
        ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
        const QByteArray text = maps.readAll();
        EXPECT_TRUE(text.contains("libDozelyKit")) << "these are the right ones";
        for (const char *library : {"libcurl", "libevdev", "libssl"})
            EXPECT_FALSE(text.contains(library)) << library;
    }
}

TEST_F(HostsTest, AScriptInTheAgentSendsAnAppleEvent)
{
    // The agent has its signature from there.
    ASSERT_TRUE(QFile::copy(
        QString(AGENT_BUNDLE) + "/Contents/Info.plist",
        root.join("/Applications/Dozely.app/Contents/Helpers/Dozely Agent.app/Contents/Info.plist")));
    startDaemon();
    startAgent();
    const char *const source = R"(
        local reply = dozely.sendEvent("DzAg", "aevt", "oapp")
        return "the agent's reply is a " .. type(reply))";
    writeStore({probeEntry("script", with(inSession, "Script", source))});
    EXPECT_TRUE(logs("Resultat de l'execution du script AS: the agent's reply is a table"));
}

TEST_F(HostsTest, AScriptInTheDaemonMaySendAnAppleEvent)
{
    startDaemon();
    const char *const source = R"(
        local isSent, error = pcall(dozely.sendEvent, "None", "aevt", "oapp")
        return error)";
    writeStore({probeEntry("script", with(inDaemon, "Script", source))});
    EXPECT_TRUE(logs("No such process runs. (-600)"));
}

TEST_F(HostsTest, ASessionActionWithoutAgentIsNotPerformedAndTheDaemonGoesOn)
{
    startDaemon();
    const QDateTime date = soon();
    writeStore({probeEntry("lost", inSession, date), probeEntry("next", inDaemon, date)});
    EXPECT_TRUE(logs(QString("\"Name of lost\" was not performed: the agent of user %1 could not be reached")
                         .arg(agentUser())));
    EXPECT_TRUE(logs("Probe acts in the daemon: next"));
}

TEST_F(HostsTest, ARestartOfTheDaemonLosesNoSessionAction)
{
    startDaemon();
    startAgent();
    const QDateTime date = soon();
    writeStore({probeEntry("due", inSession, date)});
    ASSERT_TRUE(logs("Schedules: 1"));
    kill(daemon);
    startDaemon(); // which takes every socket away; the agent notices within ten seconds
    EXPECT_TRUE(logs("Probe acts in the session: due"));
    EXPECT_TRUE(logs(QString("was handed to the agent of user %1").arg(agentUser())));
    EXPECT_EQ(countOf("Probe acts in the session: due"), 1);
    EXPECT_EQ(countOf("was not performed"), 0);
}

TEST_F(HostsTest, ASessionActionWaitsForItsAgentAsLongAsItsTimeOutAllows)
{
    startDaemon();
    const QVariantMap patient = with(inSession, "Time Out", -3600LL);
    writeStore({probeEntry("first", patient), probeEntry("second", patient)});
    ASSERT_TRUE(logs("\"Name of first\" waits for the agent"));
    ASSERT_TRUE(logs("\"Name of second\" waits for the agent"));
    startAgent();
    EXPECT_TRUE(logs("Probe acts in the session: first"));
    EXPECT_TRUE(logs("Probe acts in the session: second"));
    EXPECT_EQ(countOf("waits for the agent"), 2);
    EXPECT_EQ(countOf("Probe acts"), 2);
}

TEST_F(HostsTest, ASessionActionThatWaitsSurvivesTheEndOfTheDaemon)
{
    startDaemon();
    writeStore({probeEntry("waiting", with(inSession, "Time Out", -3600LL))});
    ASSERT_TRUE(logs("waits for the agent"));
    kill(daemon);
    startDaemon();
    startAgent();
    EXPECT_TRUE(logs("Probe acts in the session: waiting"));
    EXPECT_EQ(countOf("was interrupted"), 0);
}

TEST_F(HostsTest, AScheduleThatIsDisabledWhileItWaitsIsNotPerformed)
{
    startDaemon();
    const QVariantMap waiting = probeEntry("waiting", with(inSession, "Time Out", -3600LL));
    writeStore({waiting});
    ASSERT_TRUE(logs("waits for the agent"));
    writeStore({changed(waiting, "Is Enabled", false), probeEntry("next", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: next"));
    startAgent();
    writeStore({changed(waiting, "Is Enabled", false), probeEntry("last", inSession)});
    EXPECT_TRUE(logs("Probe acts in the session: last"));
    EXPECT_EQ(countOf("Probe acts in the session: waiting"), 0);
}

TEST_F(HostsTest, BothProgramsEndWith0OnSigterm)
{
    startDaemon();
    startAgent();
    writeStore({probeEntry("long", with(inSession, "Then", "go on"))});
    ASSERT_TRUE(logs("Probe acts in the session: long"));
    EXPECT_EQ(endOf(agent), 0);
    EXPECT_EQ(countOf("Probe was told to stop"), 1);
    EXPECT_EQ(countOf("Dozely Agent ended"), 1);
    EXPECT_EQ(endOf(daemon), 0);
    EXPECT_EQ(countOf("dozelyd ended"), 1);
}

TEST_F(HostsTest, ADaemonReadsItsSchedulesAgainOnSighup)
{
    startDaemon();
    ASSERT_EQ(::kill(static_cast<pid_t>(daemon->processId()), SIGHUP), 0);
    EXPECT_TRUE(logs("dozelyd reads its schedules again"));
    writeStore({probeEntry("hello", inDaemon)});
    EXPECT_TRUE(logs("Probe acts in the daemon: hello")) << "it did not end";
    EXPECT_EQ(endOf(daemon), 0);
}

TEST_F(HostsTest, ADaemonThatIsKilledAndStartedAgainNeitherRepeatsNorForgets)
{
    startDaemon();
    // Late enough would be a repetition, were it not remembered.
    const QVariantMap patient = with(inDaemon, "Time Out", -3600LL);
    const QVariantMap first = probeEntry("first", patient);
    writeStore({first});
    ASSERT_TRUE(logs("Probe acts in the daemon: first"));
    kill(daemon);
    const QVariantMap missed = probeEntry("missed", patient, soon().addSecs(-60));
    writeStore({first, missed});
    startDaemon();
    ASSERT_TRUE(logs("Probe acts in the daemon: missed"));
    const QVariantMap third = probeEntry("third", patient);
    writeStore({first, missed, third});
    ASSERT_TRUE(logs("Probe acts in the daemon: third"));
    EXPECT_EQ(countOf("Probe acts in the daemon: first"), 1);
    EXPECT_EQ(countOf("Probe acts in the daemon: missed"), 1);
}

TEST_F(HostsTest, AnActionThatIsCutShortIsLoggedAsInterruptedAndNotRepeated)
{
    startDaemon();
    const QVariantMap endless =
        probeEntry("endless", with(with(inDaemon, "Goes On", "for ever"), "Time Out", -3600LL));
    writeStore({endless});
    ASSERT_TRUE(logs("Probe acts in the daemon: endless"));
    kill(daemon);
    startDaemon();
    ASSERT_TRUE(logs("was interrupted and is not repeated"));
    writeStore({endless, probeEntry("next", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(countOf("Probe acts in the daemon: endless"), 1);
}

TEST_F(HostsTest, OfManyThatBeginTogetherNoneRunsTwiceWhenTheDaemonIsKilled)
{
    constexpr int many = 400;
    startDaemon();
    const QDateTime date = soon();
    QVariantList schedules;
    for (int i = 0; i < many; ++i)
        schedules += probeEntry(QString("m%1.").arg(i), with(inDaemon, "Time Out", -3600LL), date);
    writeStore(schedules);
    // Soon: on a busy machine the rest run while this process waits for its turn.
    ASSERT_TRUE(waitUntil([this] { return countOf("Probe acts in the daemon: ") > 10; }));
    kill(daemon);
    startDaemon();
    writeStore(schedules + QVariantList{probeEntry("next", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: next"));
    // What was not started was lost, and is told before anything else is begun.
    for (int i = 0; i < many; ++i) {
        const QString identifier = QString("m%1.").arg(i);
        const qsizetype acted = countOf(QString("Probe acts in the daemon: %1,").arg(identifier));
        EXPECT_LE(acted, 1) << i;
        EXPECT_GE(acted + countOf(QString("Schedule \"Name of %1\" at ").arg(identifier)), 1) << i;
    }
    EXPECT_LT(countOf("Probe acts in the daemon: m"), many) << "it was killed too late to show anything";
}

TEST_F(HostsTest, OfManyThatBeginTogetherThoseThatWereNotStartedRunAfterAnOrderlyRestart)
{
    constexpr int many = 200;
    startDaemon();
    const QDateTime date = soon();
    QVariantList schedules;
    for (int i = 0; i < many; ++i)
        schedules += probeEntry(QString("m%1.").arg(i), with(inDaemon, "Time Out", -3600LL), date);
    writeStore(schedules);
    ASSERT_TRUE(waitUntil([this] { return countOf("Probe acts in the daemon: ") > many / 4; }));
    EXPECT_EQ(endOf(daemon), 0);
    startDaemon();
    EXPECT_TRUE(waitUntil([this] { return countOf("Probe acts in the daemon: ") >= many; }));
    for (int i = 0; i < many; ++i)
        EXPECT_EQ(countOf(QString("Probe acts in the daemon: m%1.,").arg(i)), 1) << i;
}

TEST_F(HostsTest, AnActionInTheDaemonDoesNotWaitForAnAgentThatDoesNotAnswer)
{
    startDaemon();
    startAgent();
    ::kill(static_cast<pid_t>(agent->processId()), SIGSTOP);
    const QDateTime date = soon();
    writeStore({probeEntry("first", inSession, date), probeEntry("second", inSession, date),
                probeEntry("daemon", inDaemon, date)});
    ASSERT_TRUE(logs("Probe acts in the daemon: daemon"));
    EXPECT_LT(date.msecsTo(QDateTime::currentDateTimeUtc()), 3000) << "an agent is waited for for 5 s";
    EXPECT_TRUE(logs("\"Name of first\" waits for the agent"));
    EXPECT_TRUE(logs("\"Name of second\" waits for the agent"));
    EXPECT_EQ(::kill(static_cast<pid_t>(agent->processId()), SIGCONT), 0);
    EXPECT_EQ(countOf("Probe acts in the session"), 0);
}

TEST_F(HostsTest, ADamagedRecordRepeatsNothingAlthoughTheDaemonIsKilledBeforeItSaves)
{
    startDaemon();
    const QVariantMap ran = probeEntry("ran", with(inDaemon, "Time Out", -3600LL));
    writeStore({ran});
    ASSERT_TRUE(logs("Probe acts in the daemon: ran"));
    kill(daemon);
    for (const char *companion : {"", "-wal", "-shm"})
        QFile::remove(root.join(recordPath) + companion);
    write(recordPath, "damaged");
    startDaemon();
    kill(daemon);
    startDaemon();
    EXPECT_TRUE(logs("was skipped: it may have run before the record was lost"));
    writeStore({ran, probeEntry("next", inDaemon)});
    EXPECT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(countOf("Probe acts in the daemon: ran"), 1);
}

TEST_F(HostsTest, AnAgentIsReachableAgainSoonAfterTheDaemonWasKilledAndCameBack)
{
    startDaemon();
    startAgent();
    kill(daemon);
    startDaemon();
    QElapsedTimer sinceReturn;
    sinceReturn.start();
    ASSERT_TRUE(waitUntil([this] { return isListening(agentSocket()); }));
    // 10.0 s until the agent looks, 0.1 s until it publishes, and a loaded machine.
    EXPECT_LT(sinceReturn.elapsed(), 19'000);
    writeStore({probeEntry("hello", inSession)});
    EXPECT_TRUE(logs("Probe acts in the session: hello"));
}

TEST_F(HostsTest, TheNextRequestAfterAnAgentWasKilledAndCameBackSucceeds)
{
    startDaemon();
    startAgent();
    kill(agent);
    startAgent();
    writeStore({probeEntry("hello", inSession)});
    EXPECT_TRUE(logs("Probe acts in the session: hello"));
}

TEST_F(HostsTest, AnActionWaitsForAnAgentThatEndedSinceItLastAnswered)
{
    startDaemon();
    startAgent();
    writeStore({probeEntry("first", inSession)});
    ASSERT_TRUE(logs("Probe acts in the session: first"));
    kill(agent);
    writeStore({probeEntry("second", with(inSession, "Time Out", -3600LL))});
    ASSERT_TRUE(logs("\"Name of second\" waits for the agent"));
    startAgent();
    EXPECT_TRUE(logs("Probe acts in the session: second"));
    EXPECT_EQ(countOf("Probe acts in the session"), 2);
    EXPECT_EQ(countOf("was not performed"), 0);
}

TEST_F(HostsTest, TheLockOfAnAgentThatDiesInTheMiddleIsGivenBack)
{
    startDaemon();
    startDyingAgent();
    const QVariantMap patient = with(inSession, "Time Out", -3600LL);
    const QDateTime date = soon();
    const QVariantMap lost = probeEntry("lost", patient, date);
    const QVariantMap unsent = probeEntry("unsent", patient, date);
    writeStore({lost, unsent});
    ASSERT_TRUE(logs(QString("The request to the agent of user %1 failed: ").arg(agentUser())));
    ASSERT_TRUE(logs("\"Name of lost\" was sent to the agent"));
    agent.reset();
    startAgent();
    EXPECT_TRUE(logs("Probe acts in the session: unsent")) << "it began with the other, and was not sent";
    writeStore({lost, unsent, probeEntry("next", inSession)});
    ASSERT_TRUE(logs("Probe acts in the session: next"));
    EXPECT_EQ(countOf("it is not known whether it was performed"), 1) << "only the one that was lost";
    EXPECT_EQ(countOf("was not performed"), 0) << "nobody knows that";
    EXPECT_EQ(countOf("Probe acts in the session: lost"), 0) << "who knows how far the first agent came";
}

TEST_F(HostsTest, WhatAnAgentPerformsAlthoughItAnsweredTooLateIsRecordedAsPerformed)
{
    startDaemon();
    startAgent();
    const QByteArray pipe = root.join("/pipe").toUtf8();
    ASSERT_EQ(::mkfifo(pipe.constData(), 0644), 0);
    const QDateTime date = soon();
    writeStore({probeEntry("first", with(inSession, "Holds Up Next", QString(pipe)), date),
                probeEntry("late", inSession, date.addSecs(2))});
    ASSERT_TRUE(logs("\"Name of late\" was sent to the agent"));
    EXPECT_TRUE(waitUntil([&] { return outcomeOf("late", date.addSecs(2)) == "unknown"; }));
    const int writer = ::open(pipe.constData(), O_WRONLY); // waits for the agent, which reads
    ASSERT_GE(writer, 0);
    ::close(writer);
    ASSERT_TRUE(logs("Probe acts in the session: late"));
    EXPECT_TRUE(logs("\"Name of late\" was performed all the same by the agent of user"));
    EXPECT_TRUE(waitUntil([&] { return outcomeOf("late", date.addSecs(2)) == "done"; }));
    EXPECT_EQ(countOf("all the same"), 1);
    EXPECT_EQ(countOf("Probe acts in the session: late"), 1);
    EXPECT_EQ(countOf("was not performed"), 0);
}

TEST_F(HostsTest, WhatAnAgentThatHasItCannotPerformIsRecordedAsNotPerformed)
{
    startDaemon();
    startAgent();
    makeBundle("Halved", {{"CFBundleIdentifier", "com.dozely.halved"},
                          {"WDDaemonModule", "ProbePlugIn.so"},
                          {"WDUserAgentModule", "Missing.so"}});
    QVariantMap halved = probeEntry("halved", inSession);
    const QDateTime date = halved["Date"].toDateTime();
    halved["Bundle Path"] = QString(plugIns) + "/Halved.plugin";
    writeStore({halved});
    ASSERT_TRUE(logs("\"Name of halved\" was handed to the agent"));
    EXPECT_TRUE(logs("\"Name of halved\" was not performed: the agent of user"));
    EXPECT_TRUE(waitUntil([&] { return outcomeOf("halved", date) == "not performed"; }));
}

TEST_F(HostsTest, AnOutcomeIsBelievedFromTheAgentThatHasTheOccurrenceAlone)
{
    startDaemon();
    startAgent();
    const QVariantMap entry = probeEntry("hello", inSession);
    const QDateTime date = entry["Date"].toDateTime();
    writeStore({entry});
    ASSERT_TRUE(logs("\"Name of hello\" was handed to the agent"));
    const auto report = [&](const QVariant &parameters, const QString &outcome) {
        return NSNotification("DaemonMustNoteOutcomeEvent", "com.dozely.Daemon",
                              {{"Schedule Bundle Path", root.join(entry["Bundle Path"].toString())},
                               {"Schedule Date", date},
                               {"Schedule Parameters", parameters},
                               {"Schedule Outcome", outcome}});
    };
    if (::geteuid() == 0) { // anybody else can be nobody else
        ASSERT_TRUE(postAs(agentUser() + 1, "daemon", report(entry["Parameters"], "not performed")));
    }
    ASSERT_TRUE(postAsAgentUser("daemon", report(QVariantMap{{"Text", "of another"}}, "not performed")));
    ASSERT_TRUE(postAsAgentUser("daemon", report(entry["Parameters"], "made up")));
    ASSERT_TRUE(postAsAgentUser("daemon", report(entry["Parameters"], "done")));
    writeStore({entry, probeEntry("next", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(outcomeOf("hello", date), "done");
    EXPECT_EQ(countOf("was not performed"), 0);
    EXPECT_EQ(countOf("all the same"), 0);
}

TEST_F(HostsTest, AnAgentHandsItsOccurrenceBackAndTheDaemonUsesItsOwnParameters)
{
    startDaemon();
    startAgent();
    writeStore({probeEntry("stored", with(inSession, "Then", "act in the daemon"))});
    ASSERT_TRUE(logs("Probe acts in the session: stored"));
    EXPECT_TRUE(logs("Probe acts in the daemon: stored"));
    EXPECT_EQ(countOf("made up"), 0);
    EXPECT_EQ(countOf("refused"), 0);
}

TEST_F(HostsTest, AnAgentHasItsOccurrenceRemovedAndCannotHandItBackAfterwards)
{
    startDaemon();
    startAgent();
    writeStore({probeEntry("stored", with(inSession, "Then", "remove, then act in the daemon"))});
    ASSERT_TRUE(logs("the occurrence was removed by user"));
    EXPECT_TRUE(logs("DaemonMustActEvent from user"));
    EXPECT_THAT(lineWith("DaemonMustActEvent from user"), HasSubstr("refused"));
    EXPECT_EQ(countOf("acts in the daemon"), 0);
}

TEST_F(HostsTest, AnOccurrenceThatAnotherUsersAgentHasIsRefused)
{
    const QDateTime date = soon().addSecs(-60);
    writeStore({probeEntry("other", inSession, date)});
    OccurrenceRecord record;
    record.set("other", date, {OccurrenceState::Done, agentUser() + 1, QDateTime::currentDateTimeUtc()});
    OccurrenceDatabase database;
    (void)database.open(QDateTime::currentDateTimeUtc());
    const auto saved = database.write(record.changes(), [](const QString &) { return QDateTime(); });
    ASSERT_TRUE(saved) << saved.error().text.toStdString();
    startDaemon();
    ASSERT_TRUE(logs("Schedules: 1"));
    for (const char *name : {"DaemonMustActEvent", "DaemonMustRemoveEvent"}) {
        EXPECT_TRUE(postAsAgentUser("daemon", handBack(name, date)))
            << "an event is answered before it is judged";
        EXPECT_TRUE(logs(QString("%1 from user %2 refused").arg(name).arg(agentUser())));
    }
    EXPECT_EQ(countOf("acts in the daemon"), 0);
}

TEST_F(HostsTest, AnOccurrenceThatNobodysAgentHasIsRefused)
{
    const QDateTime later = soon().addSecs(3600);
    writeStore({probeEntry("later", inDaemon, later)});
    startDaemon();
    ASSERT_TRUE(logs("Schedules: 1"));
    EXPECT_TRUE(postAsAgentUser("daemon", handBack("DaemonMustActEvent", later)));
    EXPECT_TRUE(logs("DaemonMustActEvent from user"));
    EXPECT_EQ(countOf("acts in the daemon"), 0);
}

TEST_F(HostsTest, AScheduleRunsNowForItsOwnerAndStillAtItsDate)
{
    const QDateTime date = soon().addSecs(1);
    writeStore({probeEntry("mine", inDaemon, date)});
    startDaemon();
    ASSERT_TRUE(logs("Schedules: 1"));
    EXPECT_TRUE(postAsAgentUser("daemon", runNow("mine")));
    EXPECT_TRUE(waitUntil([this] { return countOf("Probe acts in the daemon: mine") == 2; }));
}

TEST_F(HostsTest, RunNowIsRefusedForAScheduleThatDoesNotExist)
{
    startDaemon();
    EXPECT_FALSE(postAsAgentUser("daemon", runNow("none\nsuch"))) << "the sender is told";
    EXPECT_TRUE(logs("DaemonMustRunNowEvent from user"));
    EXPECT_THAT(lineWith("DaemonMustRunNowEvent from user"),
                HasSubstr("refused: there is no schedule none such"));
}

TEST_F(HostsTest, AScheduleThatWasAddedAMomentAgoRunsNow)
{
    startDaemon();
    ASSERT_TRUE(logs("Schedules: 0"));
    const auto poster = startPostAs(agentUser(), "daemon", runNow("new"), [this] {
        writeStore({probeEntry("new", inDaemon, soon().addSecs(3600))});
    });
    ASSERT_TRUE(waitUntil([&] { return poster->state() == QProcess::NotRunning; }));
    EXPECT_EQ(poster->exitCode(), 0);
    EXPECT_TRUE(logs("Probe acts in the daemon: new"));
    EXPECT_EQ(countOf("refused"), 0);
}

TEST_F(HostsTest, AUserMayRunSixtyThingsAMinute)
{
    writeStore({probeEntry("mine", inDaemon, soon().addSecs(3600))});
    startDaemon();
    ASSERT_TRUE(logs("Schedules: 1"));
    // Orders that are refused count as well.
    EXPECT_FALSE(postAsAgentUser("daemon", runNow("none")));
    QElapsedTimer sinceFirst;
    sinceFirst.start();
    for (int i = 0; i < 59; ++i)
        ASSERT_TRUE(postAsAgentUser("daemon", runNow("mine"))) << i;
    const bool isTaken = postAsAgentUser("daemon", runNow("mine"));
    ASSERT_LT(sinceFirst.elapsed(), 60'000) << "the machine is too slow for this test";
    EXPECT_EQ(isTaken, ::geteuid() != 0) << "whom the system belongs to has no limit";
    if (!isTaken) {
        EXPECT_FALSE(postAsAgentUser("daemon", runNow("mine")));
        EXPECT_TRUE(logs("order to run something now refused: too many a minute"));
        EXPECT_EQ(countOf("too many a minute"), 1) << "not one line for each";
    }
}

TEST_F(HostsTest, WhatWasAcknowledgedRunsOnceAlthoughTheDaemonIsKilled)
{
    constexpr int rounds = 20;
    constexpr int ordersARound = 5;
    QVariantList schedules;
    for (int i = 0; i < rounds * ordersARound; ++i)
        schedules += probeEntry(QString("s%1.").arg(i), inDaemon, soon().addSecs(3600));
    writeStore(schedules);
    QStringList acknowledged;
    for (int round = 0; round < rounds; ++round) {
        startDaemon();
        QHash<QString, std::shared_ptr<QProcess>> posters;
        for (int i = 0; i < ordersARound; ++i) {
            const QString identifier = QString("s%1.").arg(round * ordersARound + i);
            posters.insert(identifier, startPostAs(agentUser(), "daemon", runNow(identifier)));
        }
        const auto ended = [&] {
            return std::count_if(posters.begin(), posters.end(),
                                 [](const auto &poster) { return poster->state() == QProcess::NotRunning; });
        };
        // Killed when some of them have their answers.
        EXPECT_TRUE(waitUntil([&] { return ended() > round % ordersARound; }));
        kill(daemon);
        EXPECT_TRUE(waitUntil([&] { return ended() == ordersARound; }));
        for (auto poster = posters.cbegin(); poster != posters.cend(); ++poster) {
            if ((*poster)->exitStatus() == QProcess::NormalExit && (*poster)->exitCode() == 0)
                acknowledged += poster.key();
        }
    }
    startDaemon();
    EXPECT_GE(acknowledged.size(), rounds);
    const auto isLost = [this](const QString &identifier) {
        return countOf("Probe acts in the daemon: " + identifier) == 0 &&
               countOf(QString("Schedule \"Name of %1\" at ").arg(identifier)) == 0; // it was interrupted
    };
    QStringList lost = acknowledged;
    EXPECT_TRUE(waitUntil([&] {
        lost.removeIf([&](const QString &identifier) { return !isLost(identifier); });
        return lost.isEmpty();
    })) << lost.join(' ').toStdString();
    for (int i = 0; i < rounds * ordersARound; ++i)
        EXPECT_LE(countOf(QString("Probe acts in the daemon: s%1.,").arg(i)), 1) << i;
}

TEST_F(HostsTest, StrangersGiveNoOrders)
{
    writeStore({changed(probeEntry("foreign", inDaemon, soon().addSecs(3600)), "Owner",
                        static_cast<qint64>(agentUser() + 1))});
    startDaemon();
    startAgent();
    const NSNotification act("UserAgentMustActEvent", "com.dozely.UserAgent",
                             {{"Schedule Date", soon()},
                              {"Schedule Bundle Path", schedule("any").fullBundlePath()},
                              {"Schedule Parameters", QVariantMap{{"Text", "made up"}}}});
    EXPECT_TRUE(postAsAgentUser(QString::number(agentUser()), act));
    EXPECT_EQ(postAsAgentUser("daemon", runNow("foreign")), ::geteuid() != 0);
    if (::geteuid() == 0) {
        EXPECT_TRUE(logs("UserAgentMustActEvent refused"));
        EXPECT_TRUE(logs("DaemonMustRunNowEvent from user"));
        EXPECT_EQ(countOf("Probe acts"), 0);
    } else {
        // Who owns the root folder is no stranger.
        EXPECT_TRUE(logs("Probe acts in the session: made up"));
        EXPECT_TRUE(logs("Probe acts in the daemon: foreign"));
    }
}

TEST_F(HostsTest, ABadStoreLeavesTheSchedulesAsTheyWereAndUntouchedItself)
{
    startDaemon();
    ASSERT_TRUE(logs("Schedules: 0"));
    const QDateTime date = soon().addSecs(1);
    const QByteArray good = storeOf({probeEntry("good", inDaemon, date)});
    write(storePath, good);
    ASSERT_TRUE(logs("Schedules: 1"));
    write(storePath, good.left(good.size() / 2));
    EXPECT_TRUE(logs("its schedules stay as they were"));
    EXPECT_TRUE(logs("Probe acts in the daemon: good"));
    EXPECT_EQ(read(storePath), good.left(good.size() / 2));
}

TEST_F(HostsTest, AnExceptionThatLeavesAPlugInsSlotIsOneLineAndTheDaemonGoesOn)
{
    startDaemon();
    const QDateTime date = soon();
    writeStore({probeEntry("bad", with(with(inDaemon, "Throws Later", true), "Goes On", "for ever"), date),
                probeEntry("next", inDaemon, date.addSecs(1))});
    EXPECT_TRUE(logs("was stopped: the probe was told to, later"));
    EXPECT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(endOf(daemon), 0);
}

TEST_F(HostsTest, ASecondDaemonOfARootFolderEndsAndDisturbsNothing)
{
    startDaemon();
    startAgent();
    const Ended second = run("/usr/sbin/dozelyd", {"--root", root.path()});
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.errors.toStdString(), HasSubstr("another dozelyd"));
    EXPECT_EQ(countOf("another dozelyd"), 1);
    EXPECT_EQ(countOf("dozelyd started"), 1);
    EXPECT_TRUE(isListening(agentSocket())) << "the folder of sockets was not cleared";
    writeStore({probeEntry("hello", inDaemon)});
    EXPECT_TRUE(logs("Probe acts in the daemon: hello"));
    EXPECT_EQ(countOf("Probe acts in the daemon: hello"), 1);
    kill(daemon);
    startDaemon();
    EXPECT_EQ(countOf("dozelyd started"), 2) << "the kernel gave the lock back";
}

TEST_F(HostsTest, ADaemonThatCannotWaitForDatesEndsInsteadOfPerformingNothing)
{
    const Ended ended = run("/usr/sbin/dozelyd", {"--root", root.path()}, NO_TIMERS);
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(logs("dozelyd cannot wait for dates and ends"));
    EXPECT_EQ(countOf("dozelyd ended"), 1);
}

TEST_F(HostsTest, WhatComesDueWhileAnAgentThatDoesNotAnswerIsWaitedForIsNotLate)
{
    startDaemon();
    startAgent();
    const QDateTime date = soon();
    writeStore({probeEntry("session", inSession, date), probeEntry("later", inDaemon, date.addSecs(1))});
    ASSERT_TRUE(logs("Schedules: 2"));
    ::kill(static_cast<pid_t>(agent->processId()), SIGSTOP);
    // Added while the daemon waits, and due in the very second in which it began to.
    ASSERT_TRUE(waitUntil([&] { return QDateTime::currentDateTimeUtc() >= date.addMSecs(100); }));
    writeStore({probeEntry("session", inSession, date), probeEntry("later", inDaemon, date.addSecs(1)),
                probeEntry("same", inDaemon, date)});
    EXPECT_TRUE(logs("Probe acts in the daemon: later"));
    EXPECT_TRUE(logs("Probe acts in the daemon: same"));
    EXPECT_GT(date.msecsTo(QDateTime::currentDateTimeUtc()), 3000) << "nothing was waited for";
    EXPECT_EQ(countOf("was skipped"), 0);
    EXPECT_EQ(::kill(static_cast<pid_t>(agent->processId()), SIGCONT), 0);
}

TEST_F(HostsTest, WhatIsOverIsCleanedAwayBesideTheDaemon)
{
    copyProgram(ADMIN_PROGRAM, "/usr/bin/dozely-admin");
    startDaemon();
    writeStore({probeEntry("over", inDaemon), probeEntry("later", inDaemon, soon().addSecs(3600))});
    ASSERT_TRUE(logs("Probe acts in the daemon: over"));
    const auto clean = [this] {
        const Ended ended = run("/usr/bin/dozely-admin", {"--root", root.path(), "clean"});
        EXPECT_EQ(ended.status, 0) << ended.errors.constData();
        return !read(storePath).contains("Name of over");
    };
    EXPECT_TRUE(waitUntil(clean)) << "the end of an action is on disk a little later";
    EXPECT_TRUE(read(storePath).contains("Name of later"));
    EXPECT_TRUE(logs("Schedules: 1"));
    EXPECT_EQ(countOf("which is over, was removed"), 1);
}

TEST_F(HostsTest, ADaemonThatIsToKeepNoOccurrencesRefuses)
{
    for (const QString number : {"0", "-1", "many"}) {
        const Ended ended = run("/usr/sbin/dozelyd", {"--root", root.path(), "--keep=" + number});
        EXPECT_EQ(ended.status, 2) << number.toStdString();
        EXPECT_THAT(ended.errors.toStdString(), HasSubstr("--keep takes a number from 1 on"));
    }
}

TEST_F(HostsTest, RefuseARootFolderThatIsTooLongForASocketPath)
{
    const QString longFolder = root.makeFolder("/" + QString(80, 'x'));
    for (const QString program :
         {"/usr/sbin/dozelyd",
          "/Applications/Dozely.app/Contents/Helpers/Dozely Agent.app/Contents/Linux/Dozely Agent"}) {
        const Ended ended = run(program, {"--root", longFolder});
        EXPECT_EQ(ended.status, 2);
        EXPECT_THAT(ended.errors.toStdString(), HasSubstr("too long"));
    }
}
