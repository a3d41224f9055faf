// SPDX-License-Identifier: MIT
//
// Actions in the session, each in a process of its own: what troubles one troubles neither the agent nor
// another.
#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/communication/channel/ZDRUnixSocketPort.h"
#include "hosts/common/program/HostRootObject.h"
#include "integration/hosts/HostsFixture.h"
#include "support/SignalProcess.h"

#include <QDir>
#include <QRegularExpression>

#include <csignal>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using testing::HasSubstr;

class SessionActionsTest : public HostsTest
{
protected:
    SessionActionsTest()
    {
        // The first use by a process of root's takes away what others have there: before there are any.
        ZDRUnixSocketPort::initAsClientWithName("nobody");
        WDCommunicationCenter::sharedInstance()->setObserver(&m_root);
        startDaemon(); // which makes the folders
        startAgent();
    }
    ~SessionActionsTest() override
    {
        for (const auto &[process, supervisor] : processes()) {
            signalProcess(supervisor, SIGKILL);
            signalProcess(process, SIGKILL);
        }
    }
    NSNotification orderNamed(const char *name, const QDateTime &date, QVariantMap parameters,
                              const QString &bundle) const
    {
        return NSNotification(
            name, "com.dozely.UserAgent",
            {{"Schedule Date", date},
             {"Schedule Bundle Path", bundle.isEmpty() ? schedule("any").fullBundlePath() : bundle},
             {"Schedule Parameters", parameters},
             {"Schedule Name", QString("Backup")}});
    }
    /// Hands an occurrence over as the daemon does.
    void order(const QString &text, const QVariantMap &more = {}, const QString &bundle = {},
               quint32 user = agentUser())
    {
        QVariantMap parameters = more;
        parameters.insert("Text", text);
        ASSERT_TRUE(WDCommunicationCenter::sharedInstance()->postNotificationToAgentOfUser(
            orderNamed("UserAgentMustActEvent", QDateTime::currentDateTimeUtc(), parameters, bundle), user));
    }
    /// Hands over an occurrence of a schedule whose actions are not to overlap.
    void orderOfOneAtATime(const QString &text, const QVariantMap &more = {})
    {
        QVariantMap parameters = more;
        parameters.insert("Text", text);
        const auto plain =
            orderNamed("UserAgentMustActEvent", QDateTime::currentDateTimeUtc(), parameters, {});
        QVariantMap userInfo = plain.userInfo();
        userInfo.insert("Schedule Identifier", "a");
        userInfo.insert("Schedule Skips Overlap", true);
        ASSERT_TRUE(WDCommunicationCenter::sharedInstance()->postNotificationToAgentOfUser(
            NSNotification(plain.name(), plain.object(), userInfo), agentUser()));
    }
    /// Says that an occurrence will come, as the daemon does.
    void announce(const QString &text, const QDateTime &date)
    {
        ASSERT_TRUE(WDCommunicationCenter::sharedInstance()->postNotificationToAgentOfUser(
            orderNamed("UserAgentMustPrepareEvent", date, {{"Text", text}}, {}), agentUser()));
    }
    qsizetype performersMade() const { return countOf("User Agent): Probe initialised"); }
    void expectThatOthersAct()
    {
        order("another");
        EXPECT_TRUE(logs("Probe acts in the session: another"));
        EXPECT_EQ(agent->state(), QProcess::Running);
    }
    struct Pair {
        pid_t process;
        pid_t supervisor;
    };
    /// Those of the actions that have told.
    QList<Pair> processes() const
    {
        static const QRegularExpression told("Probe is process (\\d+), watched over by (\\d+)");
        QList<Pair> pairs;
        for (const QString &line : root.logLines()) {
            if (const auto match = told.match(line); match.hasMatch())
                pairs += {match.captured(1).toInt(), match.captured(2).toInt()};
        }
        return pairs;
    }
    static bool isThere(pid_t process) { return signalProcess(process, 0); }

    /// A bundle of the probe in the folder of plug-ins of that home; its full path.
    QString makeOwnBundle(const QString &home, quint32 user) const
    {
        const QString probe = root.join(makeBundle(
            "Own", {{"CFBundleIdentifier", "com.dozely.own"}, {"WDUserAgentModule", "ProbePlugIn.so"}}));
        QString folder = root.makeFolder(home);
        for (const char *part : {"Library", "Application Support", "Dozely", "PlugIns"})
            folder = root.makeFolder(folder.mid(root.path().size()) + '/' + part);
        EXPECT_TRUE(QDir().rename(probe, folder + "/Own.plugin"));
        EXPECT_EQ(QProcess::execute("chown", {"-R", QString::number(user), root.join(home)}), 0);
        return folder + "/Own.plugin";
    }
    /// A user with a home, who need not be the one of the other tests.
    static const passwd *userWithHome()
    {
        return ::geteuid() == 0 ? ::getpwnam("nobody") : ::getpwuid(::geteuid());
    }
    /// That of the file at which the agent listens.
    ino_t socketNumber() const
    {
        struct stat status {
        };
        EXPECT_EQ(::stat(qPrintable(agentSocket()), &status), 0);
        return status.st_ino;
    }
    QStringList filesOfPerformances() const
    {
        return QDir(root.join(runtimeFolder() + "/dozely/performing")).entryList(QDir::Files);
    }

private:
    HostRootObject m_root;
};

TEST_F(SessionActionsTest, OneThatCrashesIsOneLineAndTheAgentGoesOn)
{
    order("crashing", {{"Then", "crash"}});
    EXPECT_TRUE(logs("Probe.plugin of schedule \"Backup\" failed in the session: its process was ended by "
                     "signal 11"));
    expectThatOthersAct();
    EXPECT_EQ(countOf("failed in the session"), 1);
    EXPECT_EQ(countOf("acts in the session: crashing"), 1);
}

TEST_F(SessionActionsTest, OneThatExitsIsOneLineAndTheAgentGoesOn)
{
    order("leaving", {{"Then", "exit"}});
    EXPECT_TRUE(logs("failed in the session: its process ended by itself with status 0"));
    expectThatOthersAct();
}

TEST_F(SessionActionsTest, OneThatHangsHoldsUpNoOther)
{
    order("hanging", {{"Then", "hang"}});
    ASSERT_TRUE(logs("Probe is process"));
    expectThatOthersAct();
}

TEST_F(SessionActionsTest, OneThatWritesWithoutEndHoldsUpNoOther)
{
    order("writing", {{"Then", "print without end"}});
    ASSERT_TRUE(logs("Probe is process"));
    expectThatOthersAct();
}

TEST_F(SessionActionsTest, OneThatRaisesIsLoggedAsBefore)
{
    order("raising", {{"Then", "throw"}});
    EXPECT_TRUE(logs("Probe.plugin raised: the probe was told to"));
    expectThatOthersAct();
    EXPECT_EQ(countOf("failed in the session"), 0);
}

TEST_F(SessionActionsTest, TheStatusOfAProgramThatFailedIsToldByScheduleAndBundle)
{
    order("failing", {{"Exit Status", 3LL}});
    EXPECT_TRUE(logs("Probe.plugin of schedule \"Backup\" failed in the session: its program ended with "
                     "status 3"));
}

TEST_F(SessionActionsTest, ActInAnotherProcessThanTheAgentAndLeaveNothing)
{
    const ino_t socketBefore = socketNumber();
    order("going on", {{"Then", "go on"}});
    ASSERT_TRUE(logs("Probe is process"));
    const Pair pair = processes().value(0);
    EXPECT_NE(pair.process, agent->processId());
    EXPECT_EQ(filesOfPerformances().size(), 1);
    ASSERT_TRUE(signalProcess(pair.supervisor, SIGTERM));
    EXPECT_TRUE(logs("Probe was told to stop"));
    EXPECT_TRUE(logs("failed in the session: it was asked to end"));
    EXPECT_TRUE(waitUntil([&] { return !isThere(pair.process) && !isThere(pair.supervisor); }));
    EXPECT_EQ(countOf("Probe was told to stop"), 1);
    EXPECT_TRUE(waitUntil([&] { return filesOfPerformances().isEmpty(); }))
        << "once the daemon has been told";
    EXPECT_TRUE(isListening(agentSocket()));
    EXPECT_EQ(socketNumber(), socketBefore) << "the same one as before";
}

TEST_F(SessionActionsTest, AreMadeReadyBeforeTheyAreDue)
{
    const QDateTime date = soon().addSecs(2);
    writeStore({probeEntry("ready", inSession, date), probeEntry("gone", inSession, date)});
    ASSERT_TRUE(waitUntil([&] { return performersMade() == 2; }));
    EXPECT_EQ(countOf("acts in the session"), 0);
    writeStore({probeEntry("ready", inSession, date)});
    ASSERT_TRUE(logs("Probe acts in the session: ready"));
    EXPECT_EQ(performersMade(), 2) << "no other process was made for it";
    EXPECT_EQ(countOf("Probe acts in the session: gone"), 0);
}

TEST_F(SessionActionsTest, AreMadeReadyInSmallNumbersForTheNextSecondsAndNotForEver)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    announce("past", now.addSecs(-1));
    announce("far", now.addSecs(60));
    if (::geteuid() == 0) { // else everybody is the system
        ASSERT_TRUE(postAsAgentUser(
            QString::number(agentUser()),
            orderNamed("UserAgentMustPrepareEvent", now.addSecs(5), {{"Text", "forged"}}, {})));
        EXPECT_TRUE(logs("UserAgentMustPrepareEvent refused"));
    }
    for (int i = 0; i < 12; ++i)
        announce(QString::number(i), now.addSecs(5));
    announce("0", now.addSecs(5)); // again
    EXPECT_TRUE(waitUntil([this] { return performersMade() == 8; }));
    expectThatOthersAct();
    EXPECT_EQ(performersMade(), 9) << "for the one that came unannounced";
    EXPECT_TRUE(waitUntil([this] { return filesOfPerformances().isEmpty(); }));
    EXPECT_LT(now.secsTo(QDateTime::currentDateTimeUtc()), 40);
    EXPECT_EQ(countOf("acts in the session"), 2) << "by the performer and by the agent";
    EXPECT_EQ(countOf("failed"), 0);
    EXPECT_EQ(countOf("not performed"), 0);
}

TEST_F(SessionActionsTest, ThatWereMadeReadyAreForgottenWithTheAgent)
{
    announce("ready", QDateTime::currentDateTimeUtc().addSecs(8));
    ASSERT_TRUE(waitUntil([this] { return performersMade() == 1; }));
    kill(agent);
    startAgent();
    EXPECT_TRUE(waitUntil([this] { return filesOfPerformances().isEmpty(); }));
    EXPECT_EQ(countOf("failed"), 0);
    EXPECT_EQ(countOf("not performed"), 0);
}

TEST_F(SessionActionsTest, ThatCouldNotBeMadeReadyAreStartedWhenTheyCome)
{
    const QDateTime date = soon().addSecs(2);
    writeStore({probeEntry("ready", inSession, date)});
    ASSERT_TRUE(waitUntil([this] { return performersMade() == 1; }));
    kill(agent);
    startAgent();
    EXPECT_TRUE(logs("Probe acts in the session: ready"));
    EXPECT_EQ(performersMade(), 2);
}

TEST_F(SessionActionsTest, OfAScheduleThatWantsOneAtATimeAreSkippedWhileOneGoesOn)
{
    orderOfOneAtATime("first", {{"Then", "go on"}});
    ASSERT_TRUE(logs("Probe is process"));
    orderOfOneAtATime("second");
    EXPECT_TRUE(logs("Probe.plugin was skipped in the session: the action of the one before goes on"));
    expectThatOthersAct();
    signalProcess(processes().constFirst().supervisor, SIGTERM);
    EXPECT_TRUE(logs("Probe.plugin of schedule \"Backup\" failed in the session: "));
    orderOfOneAtATime("third");
    EXPECT_TRUE(logs("Probe acts in the session: third"));
    EXPECT_EQ(countOf("acts in the session: second"), 0);
}

TEST_F(SessionActionsTest, AreAskedToEndWhenTheAgentIs)
{
    order("going on", {{"Then", "go on"}});
    ASSERT_TRUE(logs("Probe is process"));
    EXPECT_EQ(endOf(agent), 0);
    EXPECT_TRUE(logs("Probe was told to stop"));
    EXPECT_TRUE(waitUntil([&] { return !isThere(processes().value(0).supervisor); }));
    EXPECT_EQ(countOf("Probe was told to stop"), 1);
    startAgent();
    EXPECT_TRUE(waitUntil([&] { return filesOfPerformances().isEmpty(); })) << "the next agent sweeps";
}

TEST_F(SessionActionsTest, GoOnWhenTheAgentIsKilledAndAreTakenUpByTheNext)
{
    order("going on", {{"Then", "go on"}});
    ASSERT_TRUE(logs("Probe is process"));
    kill(agent);
    startAgent();
    EXPECT_TRUE(isThere(processes().value(0).process));
    EXPECT_EQ(countOf("Probe was told to stop"), 0);
    EXPECT_EQ(endOf(agent), 0);
    EXPECT_TRUE(logs("Probe was told to stop"));
    EXPECT_TRUE(waitUntil([&] { return !isThere(processes().value(0).supervisor); }));
}

TEST_F(SessionActionsTest, ThatFailWhileNoAgentIsThereAreToldByTheNext)
{
    order("going on", {{"Then", "go on"}});
    ASSERT_TRUE(logs("Probe is process"));
    kill(agent);
    ASSERT_TRUE(signalProcess(processes().value(0).process, SIGKILL));
    ASSERT_TRUE(waitUntil([&] { return !isThere(processes().value(0).supervisor); }));
    startAgent();
    EXPECT_TRUE(logs("Probe.plugin of schedule \"Backup\" failed in the session: its process was ended by "
                     "signal 9"));
    EXPECT_TRUE(waitUntil([&] { return filesOfPerformances().isEmpty(); }));
}

TEST_F(SessionActionsTest, OfAUsersOwnBundleAreThatUsersAlone)
{
    const passwd *const user = userWithHome();
    ASSERT_TRUE(user);
    const quint32 userId = user->pw_uid;
    const QString own = makeOwnBundle(QFile::decodeName(user->pw_dir), userId);
    EXPECT_EQ(endOf(agent), 0);
    ASSERT_EQ(QProcess::execute("chown", {"-R", QString::number(userId), root.join(runtimeFolder())}), 0);
    startAgent(userId);
    order("own", {}, own, userId);
    EXPECT_TRUE(logs("Probe acts in the session: own"));
    ASSERT_EQ(::chmod(qPrintable(own + "/Contents/Linux/ProbePlugIn.so"), 0777), 0);
    order("open to all", {}, own, userId);
    EXPECT_TRUE(logs("may be written by others than its owner"));
    EXPECT_THAT(lineWith("may be written by others"), HasSubstr("The action was not performed: The bundle "));
    EXPECT_EQ(countOf("Probe acts in the session: open to all"), 0);
    if (::geteuid() == 0) { // who runs all this owns everything, else
        order("foreign", {}, makeOwnBundle("/home/other", userId + 1), userId);
        EXPECT_TRUE(logs(QString("belongs to user %1").arg(userId + 1)));
        EXPECT_EQ(countOf("Probe acts in the session: foreign"), 0);
    }
}

TEST_F(SessionActionsTest, AreNotPerformedWhereNoFolderIsTheUsersAlone)
{
    EXPECT_EQ(endOf(agent), 0);
    const QString folder = root.join(runtimeFolder() + "/dozely");
    ASSERT_EQ(::chmod(qPrintable(folder), 0777), 0);
    startAgent();
    order("unsafe");
    EXPECT_TRUE(logs("The action was not performed: there is no folder for it"));
    EXPECT_EQ(countOf("Probe acts"), 0);
}
