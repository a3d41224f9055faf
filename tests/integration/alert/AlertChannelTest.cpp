// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceDatabase.h"
#include "integration/hosts/HostSystem.h"
#include "support/Identity.h"
#include "support/PrintTo.h"
#include "support/SignalProcess.h"

#include <csignal>
#include <unistd.h>

using testing::HasSubstr;

namespace
{
const QVariantMap inSession{{"Acts In User Agent", 1LL}};
const QVariantMap inDaemon{{"Acts In User Agent", 0LL}};
} // namespace

/// Alerts between real processes, without anything that shows them: the probe writes into the log instead.
class AlertChannelTest : public HostSystem
{
protected:
    static QVariantMap alerting(QVariantMap parameters, int lead, const QString &announcing = {})
    {
        parameters.insert("Alert", 1LL);
        parameters.insert("Delay before alert", lead);
        parameters.insert("Announcing", announcing);
        return parameters;
    }
    static QVariantMap patient(QVariantMap parameters)
    {
        parameters.insert("Time Out", -3600LL);
        return parameters;
    }
    static QVariantMap ownedBy(const QVariantMap &entry, quint32 user)
    {
        return changed(entry, "Owner", static_cast<qint64>(user));
    }
    static QDateTime inSeconds(int seconds) { return soon().addSecs(seconds - 2); }
    QVariantMap remove(const QDateTime &date) const
    {
        return {{"Schedule Date", date}, {"Schedule Bundle Path", schedule("any").fullBundlePath()}};
    }
    NSNotification cancel(const QDateTime &date) const
    {
        return NSNotification("DaemonMustRemoveEvent", "com.dozely.Daemon", remove(date));
    }
    /// The record on disk, as a daemon that starts finds it.
    static std::optional<OccurrenceState> recorded(const QString &identifier, const QDateTime &date)
    {
        OccurrenceDatabase database;
        const auto entry = database.find({identifier, date});
        return entry && *entry ? std::optional((*entry)->state) : std::nullopt;
    }
};

TEST_F(AlertChannelTest, AnOccurrenceIsAnnouncedAtItsLeadTimeAndWithdrawnWhenItActs)
{
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(4);
    writeStore({probeEntry("hello", alerting(inSession, 1), date)});
    ASSERT_TRUE(logs("Probe announces: hello"));
    EXPECT_GE(QDateTime::currentDateTimeUtc(), date.addSecs(-1));
    EXPECT_EQ(countOf("Probe acts"), 0);
    ASSERT_TRUE(logs("Probe acts in the session: hello"));
    EXPECT_GE(QDateTime::currentDateTimeUtc(), date);
    EXPECT_TRUE(logs(QString("is announced by the agent of user %1").arg(agentUser())));
    EXPECT_TRUE(logsInOrder(
        {"Probe announces: hello", "Probe withdraws: hello", "Probe acts in the session: hello"}));
    EXPECT_EQ(countOf("Probe announces"), 1);
    EXPECT_EQ(countOf("Probe withdraws"), 1);
}

TEST_F(AlertChannelTest, TheAlertOfAnActionInTheDaemonIsWithdrawnByTheAgentsOwnClock)
{
    startDaemon();
    startAgent();
    writeStore({probeEntry("hello", alerting(inDaemon, 60), inSeconds(3))});
    ASSERT_TRUE(logs("Probe announces: hello")) << "at once: it was added within its lead time";
    ASSERT_TRUE(logs("Probe withdraws: hello"));
    EXPECT_TRUE(logs("Probe acts in the daemon: hello"));
}

TEST_F(AlertChannelTest, CancelDropsThatOccurrenceAndNoOther)
{
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(4);
    const QString other =
        makeBundle("Other", {{"WDDaemonModule", "ProbePlugIn.so"}, {"WDUserAgentModule", "ProbePlugIn.so"}});
    writeStore({probeEntry("cancelled", alerting(inDaemon, 60), date),
                changed(probeEntry("other bundle", alerting(inDaemon, 60), date), "Bundle Path", other),
                probeEntry("other date", alerting(inDaemon, 60), date.addSecs(1)),
                probeEntry("without alert", inDaemon, date)});
    for (const QString name : {"cancelled", "other bundle", "other date"})
        ASSERT_TRUE(logs("Probe announces: " + name));
    EXPECT_TRUE(postAsAgentUser("daemon", cancel(date)));
    ASSERT_TRUE(logs(
        QString("Schedule \"Name of cancelled\": the occurrence was removed by user %1").arg(agentUser())));
    EXPECT_EQ(recorded("cancelled", date), OccurrenceState::Removed)
        << "on disk before anything else happens";
    for (const QString name : {"other bundle", "without alert", "other date"})
        EXPECT_TRUE(logs("Probe acts in the daemon: " + name));
    EXPECT_EQ(countOf("Probe acts in the daemon: cancelled"), 0);
    EXPECT_EQ(countOf("was removed by"), 1);
}

TEST_F(AlertChannelTest, OneAlertStandsForAllSchedulesOfOneBundleAndDateThatWantOne)
{
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(4);
    writeStore({probeEntry("first", alerting(inDaemon, 60), date),
                probeEntry("second", alerting(inDaemon, 60), date), probeEntry("third", inDaemon, date)});
    ASSERT_TRUE(logs("Probe announces: second"));
    EXPECT_TRUE(postAsAgentUser("daemon", cancel(date)));
    EXPECT_TRUE(logs("Schedule \"Name of first\": the occurrence was removed"));
    EXPECT_TRUE(logs("Schedule \"Name of second\": the occurrence was removed"));
    EXPECT_TRUE(logs("Probe acts in the daemon: third"));
    EXPECT_TRUE(logs("Probe withdraws"));
    EXPECT_EQ(countOf("Probe acts"), 1);
    EXPECT_EQ(countOf("Probe withdraws"), 1) << "it is one alert";
}

TEST_F(AlertChannelTest, AnAlertGoesAtOnceWithWhatItAnnounces)
{
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(600);
    const auto alerted = [&](const QString &name, int later) {
        return probeEntry(name, alerting(inDaemon, 3600), date.addSecs(later));
    };
    const QVariantMap stays = alerted("stays", 5);
    writeStore({alerted("skipped", 0), alerted("postponed", 1), alerted("disabled", 2), alerted("removed", 3),
                alerted("moved", 4), stays, alerted("twin of stays", 5)});
    for (const QString name : {"skipped", "postponed", "disabled", "removed", "moved", "twin of stays"})
        ASSERT_TRUE(logs("Probe announces: " + name));
    const auto wish = [&](const QString &order, const QString &name, QVariantMap more = {}) {
        more.insert("Schedule Identifier", name);
        return postAsAgentUser("daemon", NSNotification(order, "com.dozely.Admin", more));
    };
    EXPECT_TRUE(wish("DaemonMustSkipEvent", "skipped"));
    EXPECT_TRUE(logs("Probe withdraws: skipped"));
    EXPECT_TRUE(wish("DaemonMustPostponeEvent", "postponed", {{"Schedule Delay", 60LL}}));
    EXPECT_TRUE(logs("Probe withdraws: postponed"));
    EXPECT_TRUE(waitUntil([&] { return countOf("Probe announces: postponed") == 2; }));
    writeStore({alerted("skipped", 0), alerted("postponed", 1),
                changed(alerted("disabled", 2), "Is Enabled", false), alerted("moved", 9), stays});
    for (const QString name : {"disabled", "removed", "moved"})
        EXPECT_TRUE(logs("Probe withdraws: " + name));
    EXPECT_TRUE(waitUntil([&] { return countOf("Probe announces: moved") == 2; }));
    EXPECT_EQ(countOf("Probe withdraws"), 5) << "one alert stands for both, of which one is left";
}

TEST_F(AlertChannelTest, ThePlugInThatAnnouncesCancelsItsOccurrenceItself)
{
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(3);
    writeStore({probeEntry("cancelled", alerting(inSession, 60, "cancels"), date),
                probeEntry("next", inSession, date.addSecs(1))});
    EXPECT_TRUE(logs("Schedule \"Name of cancelled\": the occurrence was removed"));
    EXPECT_TRUE(logs("Probe acts in the session: next"));
    EXPECT_EQ(countOf("Probe acts in the session: cancelled"), 0);
}

TEST_F(AlertChannelTest, WithoutAnAgentADaemonActionStillRunsAndASessionActionIsReported)
{
    startDaemon();
    const QDateTime date = inSeconds(3);
    writeStore({probeEntry("daemon", alerting(inDaemon, 60), date),
                probeEntry("session", alerting(inSession, 60), date)});
    const QString unreachable = QString("the agent of user %1 could not be reached").arg(agentUser());
    for (const QString name : {"daemon", "session"})
        EXPECT_TRUE(logs(QString("\"Name of %1\" was not announced: %2").arg(name, unreachable)));
    EXPECT_TRUE(logs("Probe acts in the daemon: daemon"));
    EXPECT_TRUE(logs(QString("\"Name of session\" was not performed: %1").arg(unreachable)));
    EXPECT_EQ(countOf("anticipateInUserAgentNow impossible"), 2);
}

TEST_F(AlertChannelTest, WithNobodyLoggedInADaemonActionStillRunsAndASessionActionIsReported)
{
    ASSERT_TRUE(bus.call("org.freedesktop.login1", "/org/freedesktop/login1/seat/seat0",
                         "org.freedesktop.DBus.Properties.Set",
                         {"org.freedesktop.login1.Seat", "ActiveSession", "<('', objectpath '/')>"}));
    startDaemon();
    const QDateTime date = inSeconds(3);
    writeStore({probeEntry("daemon", alerting(inDaemon, 60), date),
                probeEntry("session", alerting(inSession, 60), date)});
    for (const QString name : {"daemon", "session"})
        EXPECT_TRUE(logs(QString("\"Name of %1\" was not announced: nobody is logged in").arg(name)));
    EXPECT_TRUE(logs("Probe acts in the daemon: daemon"));
    EXPECT_TRUE(logs("\"Name of session\" was not performed: nobody is logged in"));
}

TEST_F(AlertChannelTest, AnAgentThatDoesNotAnswerDelaysADaemonActionButDoesNotPreventIt)
{
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(3);
    QVariantMap impatient = alerting(inDaemon, 2);
    impatient.insert("Time Out", -1LL); // the daemon waits longer than that for the agent
    ASSERT_TRUE(signalProcess(agent->processId(), SIGSTOP));
    writeStore({probeEntry("daemon", impatient, date), probeEntry("another", impatient, date)});
    EXPECT_TRUE(logs("Probe acts in the daemon: daemon"));
    EXPECT_TRUE(logs("Probe acts in the daemon: another"));
    EXPECT_GE(QDateTime::currentDateTimeUtc(), date.addSecs(2)) << "nothing was waited for";
    EXPECT_EQ(countOf("was skipped"), 0);
}

TEST_F(AlertChannelTest, ACancelIsRememberedByADaemonThatIsKilledAndStartedAgain)
{
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(4);
    const QVariantList schedules{probeEntry("cancelled", patient(alerting(inDaemon, 60)), date),
                                 probeEntry("next", patient(inDaemon), date.addSecs(1))};
    writeStore(schedules);
    ASSERT_TRUE(logs("Probe announces: cancelled"));
    EXPECT_TRUE(postAsAgentUser("daemon", cancel(date)));
    ASSERT_TRUE(logs("Schedule \"Name of cancelled\": the occurrence was removed"));
    kill(daemon);
    startDaemon();
    EXPECT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(countOf("Probe acts in the daemon: cancelled"), 0);
    EXPECT_EQ(countOf("Probe announces"), 1) << "what was cancelled is not announced again";
}

TEST_F(AlertChannelTest, ACancelReachesADaemonThatWasStartedAgainAfterTheAlert)
{
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(8);
    writeStore({probeEntry("cancelled", alerting(inDaemon, 60), date),
                probeEntry("next", inDaemon, date.addSecs(1))});
    ASSERT_TRUE(logs("Probe announces: cancelled"));
    kill(daemon);
    startDaemon();
    ASSERT_TRUE(waitUntil([this] { return countOf("Schedules: 2") == 2; }));
    EXPECT_TRUE(postAsAgentUser("daemon", cancel(date)));
    EXPECT_TRUE(logs("Schedule \"Name of cancelled\": the occurrence was removed"));
    EXPECT_TRUE(logs("Probe acts in the daemon: next"));
    EXPECT_EQ(countOf("Probe acts in the daemon: cancelled"), 0);
}

TEST_F(AlertChannelTest, ADaemonThatWasStartedAgainAnnouncesAgainOnceTheAgentIsBack)
{
    startDaemon();
    startAgent();
    writeStore({probeEntry("hello", alerting(inDaemon, 3600), inSeconds(3600))});
    ASSERT_TRUE(logs("Probe announces: hello"));
    kill(daemon);
    startDaemon();
    // A root daemon takes the agent's socket away, and the agent needs 10 s to notice.
    EXPECT_TRUE(
        waitUntil([this] { return countOf("Probe announces: hello") == 2; }, std::chrono::seconds(30)));
    kill(agent);
    EXPECT_EQ(countOf("Probe withdraws"), 0);
}

TEST_F(AlertChannelTest, AnAgentThatStartsLateOrAgainIsToldAtOnce)
{
    startDaemon();
    writeStore({probeEntry("hello", alerting(inDaemon, 3600), inSeconds(3600))});
    ASSERT_TRUE(logs("was not announced"));
    startAgent();
    ASSERT_TRUE(logs("Probe announces: hello", std::chrono::seconds(8)))
        << "sooner than the daemon tries again by itself";
    kill(agent);
    startAgent();
    EXPECT_TRUE(
        waitUntil([this] { return countOf("Probe announces: hello") == 2; }, std::chrono::seconds(8)));
    EXPECT_EQ(endOf(agent), 0);
    EXPECT_EQ(countOf("Probe withdraws: hello"), 1) << "an agent that ends in order leaves nothing behind";
}

TEST_F(AlertChannelTest, WhoeverSwitchesInBeforeTheTimeIsToldToo)
{
    const quint32 other = agentUser() + 1;
    switchTo(other);
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(20);
    writeStore({probeEntry("hello", alerting(inDaemon, 60), date)});
    ASSERT_TRUE(logs(QString("the agent of user %1 could not be reached").arg(other)));
    EXPECT_EQ(countOf("Probe announces"), 0);
    switchTo(agentUser());
    EXPECT_TRUE(logs("Probe announces: hello", std::chrono::seconds(10)));
    EXPECT_LT(QDateTime::currentDateTimeUtc(), date);
}

TEST_F(AlertChannelTest, ACancelFromSomebodyElseIsRefused)
{
    startDaemon();
    startAgent();
    const QDateTime date = inSeconds(4);
    writeStore({ownedBy(probeEntry("hello", alerting(inDaemon, 60), date), agentUser() + 1)});
    ASSERT_TRUE(logs("Probe announces: hello"));
    if (::geteuid() == 0) {
        const quint32 stranger = agentUser() + 2;
        EXPECT_TRUE(postAs(stranger, "daemon", cancel(date))) << "an event is answered before it is judged";
        EXPECT_TRUE(logs(QString("DaemonMustRemoveEvent from user %1 refused").arg(stranger)));
    } else {
        // Everybody here is the system's owner; an occurrence that does not exist is refused to that one too.
        EXPECT_TRUE(postAsAgentUser("daemon", cancel(date.addSecs(1))));
        EXPECT_TRUE(logs(QString("DaemonMustRemoveEvent from user %1 refused").arg(agentUser())));
    }
    EXPECT_TRUE(logs("Probe acts in the daemon: hello"));
    EXPECT_EQ(countOf("was removed by"), 0);
}

TEST_F(AlertChannelTest, ACancelOfWhatWasNotAnnouncedIsForTheOwnerAlone)
{
    startDaemon();
    const QDateTime date = inSeconds(4);
    writeStore(
        {ownedBy(probeEntry("foreign", inDaemon, date), agentUser() + 1), probeEntry("own", inDaemon, date)});
    ASSERT_TRUE(logs("Schedules: 2"));
    EXPECT_TRUE(postAsAgentUser("daemon", cancel(date)));
    EXPECT_TRUE(logs("Schedule \"Name of own\": the occurrence was removed"));
    if (::geteuid() == 0)
        EXPECT_TRUE(logs("Probe acts in the daemon: foreign"));
    else
        EXPECT_TRUE(logs("Schedule \"Name of foreign\": the occurrence was removed"));
    EXPECT_EQ(countOf("Probe acts in the daemon: own"), 0);
}

TEST_F(AlertChannelTest, AnAgentAnnouncesForTheSystemAlone)
{
    startDaemon();
    startAgent();
    QVariantMap userInfo = remove(inSeconds(3600));
    userInfo.insert("Schedule Parameters", QVariantMap{{"Text", "made up"}, {"Alert", 1LL}});
    EXPECT_TRUE(
        postAsAgentUser(QString::number(agentUser()),
                        NSNotification("UserAgentMustAnticipateEvent", "com.dozely.UserAgent", userInfo)));
    if (::geteuid() == 0) {
        EXPECT_TRUE(logs("UserAgentMustAnticipateEvent refused"));
        EXPECT_EQ(countOf("Probe announces"), 0);
    } else {
        EXPECT_TRUE(logs("Probe announces: made up")); // who owns the root folder is no stranger
    }
}

TEST_F(AlertChannelTest, APlugInThatRaisesWhileItAnnouncesIsOneLineAndItsActionRuns)
{
    startDaemon();
    startAgent();
    writeStore({probeEntry("hello", alerting(inSession, 60, "throws"), inSeconds(3))});
    EXPECT_TRUE(logs("Probe.plugin raised: the probe was told to"));
    EXPECT_TRUE(logs("Probe acts in the session: hello"));
}
