// SPDX-License-Identifier: MIT
//
// What agents and people order the daemon to do, and who may.
#include "hosts/daemon/OccurrenceDatabase.h"
#include "integration/hosts/HostsFixture.h"

#include <unistd.h>

using testing::HasSubstr;

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
    if (::geteuid() == 0) {
        ASSERT_TRUE(postAs(agentUser() + 1, "daemon", report(entry["Parameters"], "failed")));
    }
    ASSERT_TRUE(postAsAgentUser("daemon", report(QVariantMap{{"Text", "of another"}}, "failed")));
    ASSERT_TRUE(postAsAgentUser("daemon", report(entry["Parameters"], "made up")));
    ASSERT_TRUE(postAsAgentUser("daemon", report(entry["Parameters"], "done")));
    writeStore({entry, probeEntry("next", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(outcomeOf("hello", date), "done");
    EXPECT_EQ(countOf("was not performed"), 0);
    EXPECT_EQ(countOf("all the same"), 0);
}

TEST_F(HostsTest, AFailureInTheSessionIsRecordedAsItsAgentSays)
{
    startDaemon();
    startAgent();
    const QVariantMap crashing = probeEntry("crashing", with(inSession, "Then", "crash"));
    const QVariantMap failing = probeEntry("failing", with(inSession, "Exit Status", 3LL));
    const QVariantMap told = probeEntry("told", inSession);
    writeStore({crashing, failing, told});
    EXPECT_TRUE(logs("\"Name of crashing\" failed with the agent of user"));
    EXPECT_TRUE(logs("\"Name of failing\" failed with the agent of user"));
    EXPECT_TRUE(waitUntil([&] { return recorded(crashing).state == "failed"; }));
    EXPECT_THAT(recorded(crashing).failure.toStdString(), HasSubstr("ended by signal 11"));
    EXPECT_TRUE(recorded(crashing).ended.isValid());
    EXPECT_TRUE(waitUntil([&] { return recorded(failing).state == "failed"; }));
    EXPECT_EQ(recorded(failing).exitStatus, 3);
    EXPECT_EQ(recorded(failing).failure, "its program ended with status 3");
    ASSERT_TRUE(logs("\"Name of told\" was handed to the agent"));
    ASSERT_TRUE(waitUntil([&] { return recorded(told).state == "done"; }));
    const NSNotification report("DaemonMustNoteOutcomeEvent", "com.dozely.Daemon",
                                {{"Schedule Bundle Path", root.join(told["Bundle Path"].toString())},
                                 {"Schedule Date", told["Date"]},
                                 {"Schedule Parameters", told["Parameters"]},
                                 {"Schedule Outcome", "failed"},
                                 {"Schedule Failure", "a\nb" + QString(5000, 'x')},
                                 {"Schedule Output", QByteArray(100 << 10, 'o')},
                                 {"Schedule Exit Status", -7LL}});
    ASSERT_TRUE(postAsAgentUser("daemon", report));
    ASSERT_TRUE(postAsAgentUser("daemon", report)); // tells nothing new
    ASSERT_TRUE(waitUntil([&] { return recorded(told).state == "failed"; }));
    EXPECT_TRUE(recorded(told).failure.startsWith("a bxxx"));
    EXPECT_LE(recorded(told).failure.size(), 1003);
    EXPECT_FALSE(recorded(told).exitStatus);
    const auto outcomes = RecordedOutcomes::open();
    const auto written = outcomes->findOutput("told", {});
    ASSERT_TRUE(written && *written);
    EXPECT_EQ((*written)->output, QByteArray(64 << 10, 'o')) << "no more than of any action";
    writeStore({crashing, failing, told, probeEntry("next", inDaemon)});
    ASSERT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(countOf("\"Name of told\" failed"), 1);
}

TEST_F(HostsTest, AProgramThatCannotBeStartedIsRecordedWithItsReasonWhereverItWasToRun)
{
    const QString bundle = makeBundle(
        "Command", {{"WDDaemonModule", "Command.so"}, {"WDUserAgentModule", "Command.so"}}, {COMMAND_MODULE});
    startDaemon();
    startAgent();
    const auto entryFor = [&](const QString &identifier, const QVariantMap &place, const QVariant &program) {
        return changed(probeEntry(identifier, with(place, "Program", program)), "Bundle Path", bundle);
    };
    const QList<QVariantMap> gone{entryFor("gone daemon", inDaemon, "/no/program"),
                                  entryFor("gone session", inSession, "/no/program")};
    const QList<QVariantMap> bad{entryFor("bad daemon", inDaemon, "program"),
                                 entryFor("bad session", inSession, "program")};
    const QVariantMap failing = entryFor("failing", inSession, "/bin/false");
    writeStore({gone[0], gone[1], bad[0], bad[1], failing});
    for (const QVariantMap &entry : gone) {
        EXPECT_TRUE(waitUntil([&] { return recorded(entry).state == "not performed"; }));
        EXPECT_EQ(recorded(entry).failure, "/no/program could not be started: No such file or directory");
        EXPECT_FALSE(recorded(entry).exitStatus);
    }
    for (const QVariantMap &entry : bad) {
        EXPECT_TRUE(waitUntil([&] { return recorded(entry).state == "not performed"; }));
        EXPECT_EQ(recorded(entry).failure, "the parameter \"Program\" is not an absolute path");
    }
    EXPECT_TRUE(waitUntil([&] { return recorded(failing).state == "failed"; }));
    EXPECT_EQ(recorded(failing).exitStatus, 1);
    EXPECT_EQ(countOf("\" was not performed: "), 4);
}

TEST_F(HostsTest, TheUserAtTheConsoleIsToldOnceOfAFailureWhereTheScheduleAsksForIt)
{
    startDaemon();
    startAgent();
    const auto failing = [&](const QString &name, const QVariantMap &place, const QVariant &wish) {
        return probeEntry(name, with(with(place, "Exit Status", 3LL), "Tell Failure", wish));
    };
    QVariantMap missing = failing("missing", inDaemon, 1LL);
    missing["Bundle Path"] = QString(plugIns) + "/Missing.plugin";
    writeStore({failing("daemon", inDaemon, 1LL), failing("session", inSession, true), missing,
                failing("silent", inDaemon, 0LL), probeEntry("good", with(inDaemon, "Tell Failure", 1LL))});
    EXPECT_TRUE(logs("The user is told of schedule \"Name of daemon\": its program ended with status 3"));
    EXPECT_TRUE(logs("The user is told of schedule \"Name of session\": its program ended with status 3"));
    EXPECT_TRUE(logs("The user is told of schedule \"Name of missing\": "));
    EXPECT_TRUE(logs("\"Name of silent\" failed"));
    kill(daemon);
    startDaemon();
    writeStore({probeEntry("next", with(inDaemon, "Exit Status", 3LL)), failing("last", inDaemon, 1LL)});
    EXPECT_TRUE(logs("The user is told of schedule \"Name of last\""));
    EXPECT_EQ(countOf("The user is told of schedule"), 4);
    if (::geteuid() == 0) { // else everybody is the system
        ASSERT_TRUE(postAsAgentUser(QString::number(agentUser()),
                                    NSNotification("UserAgentMustTellFailureEvent", "com.dozely.UserAgent",
                                                   {{"Schedule Name", "forged"}})));
        EXPECT_TRUE(logs("UserAgentMustTellFailureEvent refused"));
        EXPECT_EQ(countOf("forged"), 0);
    }
}

TEST_F(HostsTest, AnAgentShowsATestAlertToItsOwnUserAlone)
{
    startDaemon();
    startAgent();
    const NSNotification order("UserAgentMustTestAlertEvent", "com.dozely.App", {});
    if (::geteuid() == 0) { // else everybody is the system
        ASSERT_TRUE(postAs(agentUser() + 1, QString::number(agentUser()), order));
        EXPECT_TRUE(logs("UserAgentMustTestAlertEvent refused: it comes from another user"));
        EXPECT_EQ(countOf("An alert is shown as a test"), 0);
    }
    ASSERT_TRUE(postAsAgentUser(QString::number(agentUser()), order));
    EXPECT_TRUE(logs("An alert is shown as a test"));
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
    const auto saved =
        database.write(record.changes(), [](const QString &) { return OccurrenceDatabase::Occurrences(); });
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
