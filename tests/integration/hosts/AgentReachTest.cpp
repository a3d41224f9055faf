// SPDX-License-Identifier: MIT
//
// Whether an agent can be reached, and what becomes of the actions for its session.
#include "integration/hosts/HostsFixture.h"

#include "support/SignalProcess.h"

#include <QElapsedTimer>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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
    EXPECT_TRUE(logs("Probe.plugin acts in the session"));
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

TEST_F(HostsTest, AnActionInTheDaemonDoesNotWaitForAnAgentThatDoesNotAnswer)
{
    startDaemon();
    startAgent();
    ASSERT_TRUE(signalProcess(agent->processId(), SIGSTOP));
    const QDateTime date = soon();
    writeStore({probeEntry("first", inSession, date), probeEntry("second", inSession, date),
                probeEntry("daemon", inDaemon, date)});
    EXPECT_TRUE(logs("Probe acts in the daemon: daemon"));
    EXPECT_TRUE(logs("\"Name of first\" waits for the agent"));
    EXPECT_TRUE(logs("\"Name of second\" waits for the agent"));
    EXPECT_TRUE(
        logsInOrder({"\"Name of daemon\" acts in the daemon", "\"Name of first\" waits for the agent"}));
    EXPECT_TRUE(signalProcess(agent->processId(), SIGCONT));
    EXPECT_EQ(countOf("Probe acts in the session"), 0);
}

TEST_F(HostsTest, AnActionInTheDaemonDoesNotWaitForAnAgentThatIsToldOfTheNext)
{
    startDaemon();
    startAgent();
    ASSERT_TRUE(signalProcess(agent->processId(), SIGSTOP));
    const QDateTime date = soon().addSecs(1);
    writeStore({probeEntry("session", inSession, date.addSecs(1)), probeEntry("daemon", inDaemon, date)});
    ASSERT_TRUE(logs("Probe acts in the daemon: daemon"));
    EXPECT_LT(date.msecsTo(QDateTime::currentDateTimeUtc()), 2000) << "an agent is waited for for 5 s";
    EXPECT_TRUE(signalProcess(agent->processId(), SIGCONT));
    EXPECT_TRUE(logs("Probe acts in the session: session"));
    EXPECT_EQ(countOf("acts in the session: session"), 1);
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
    const QDateTime date = soon().addSecs(2);
    QVariantMap heldUp = with(inSession, "Holds Up Next", QString(pipe)); // by its alert
    heldUp = with(with(heldUp, "Alert", 1LL), "Delay before alert", 2LL);
    writeStore({probeEntry("late", heldUp, date)});
    ASSERT_TRUE(logs("Probe announces: late"));
    ASSERT_TRUE(logs("\"Name of late\" was sent to the agent"));
    EXPECT_TRUE(waitUntil([&] { return outcomeOf("late", date) == "unknown"; }));
    const int writer = ::open(pipe.constData(), O_WRONLY); // waits for the agent, which reads
    ASSERT_GE(writer, 0);
    ::close(writer);
    ASSERT_TRUE(logs("Probe acts in the session: late"));
    EXPECT_TRUE(logs("\"Name of late\" was performed all the same by the agent of user"));
    EXPECT_TRUE(waitUntil([&] { return outcomeOf("late", date) == "done"; }));
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

TEST_F(HostsTest, WhatComesDueWhileAnAgentThatDoesNotAnswerIsWaitedForIsNotLate)
{
    startDaemon();
    startAgent();
    const QDateTime date = soon();
    writeStore({probeEntry("session", inSession, date), probeEntry("later", inDaemon, date.addSecs(1))});
    ASSERT_TRUE(logs("Schedules: 2"));
    ASSERT_TRUE(signalProcess(agent->processId(), SIGSTOP));
    // Added while the daemon waits, and due in the very second in which it began to.
    ASSERT_TRUE(waitUntil([&] { return QDateTime::currentDateTimeUtc() >= date.addMSecs(100); }));
    writeStore({probeEntry("session", inSession, date), probeEntry("later", inDaemon, date.addSecs(1)),
                probeEntry("same", inDaemon, date)});
    EXPECT_TRUE(logs("Probe acts in the daemon: later"));
    EXPECT_TRUE(logs("Probe acts in the daemon: same"));
    EXPECT_GT(date.msecsTo(QDateTime::currentDateTimeUtc()), 3000) << "nothing was waited for";
    EXPECT_EQ(countOf("was skipped"), 0);
    EXPECT_TRUE(signalProcess(agent->processId(), SIGCONT));
}
