// SPDX-License-Identifier: MIT
#include "integration/hosts/HostSystem.h"
#include "support/PrintTo.h"
#include "support/SignalProcess.h"

#include <QDirIterator>

#include <csignal>

using testing::HasSubstr;

namespace
{
const QString logind = "org.freedesktop.login1";
const QString logindPath = "/org/freedesktop/login1";
const QVariantMap wake{{"Acts In User Agent", 0LL}, {"Needs Wake Up", 1LL}};
const QVariantMap powerOn{{"Acts In User Agent", 0LL}, {"Needs Startup", 1LL}};
constexpr qint64 wakeLead = 60;     // seconds
constexpr qint64 powerOnLead = 180; // seconds
} // namespace

/// A real daemon with a login manager that says what the test wants, on a machine whose clock is a folder of
/// files.
class PowerHostsTest : public HostSystem
{
protected:
    PowerHostsTest()
    {
        write(alarmPath, "");
        write("/sys/class/rtc/rtc0/name", "rtc_test\n");
    }

    static constexpr char alarmPath[] = "/sys/class/rtc/rtc0/wakealarm";

    static QDateTime inSeconds(qint64 seconds)
    {
        return QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch() + seconds, Qt::UTC);
    }
    QByteArray alarm() const { return read(alarmPath).trimmed(); }
    /// Waits until the clock's alarm is armed for `lead` seconds before `date`.
    testing::AssertionResult isArmedFor(const QDateTime &date, qint64 lead) const
    {
        const QByteArray wanted = QByteArray::number(date.toSecsSinceEpoch() - lead);
        if (waitUntil([&] { return alarm() == wanted; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "the alarm is \"" << alarm().constData() << "\", not " << wanted.constData();
    }
    testing::AssertionResult isNotArmed() const
    {
        if (waitUntil([&] { return alarm().isEmpty() || alarm() == "0"; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the alarm is \"" << alarm().constData() << '"';
    }

    /// The login manager tells everybody what it is about to do, or that it is over.
    void tell(const char *signal, bool begins)
    {
        ASSERT_TRUE(
            bus.call(logind, logindPath, "org.freedesktop.DBus.Mock.EmitSignal",
                     {"org.freedesktop.login1.Manager", signal, "b", begins ? "[<true>]" : "[<false>]"}));
    }
    /// What an operation of the login manager answers, as text.
    static QString ask(const QString &method, const QStringList &arguments = {})
    {
        QProcess process;
        process.start("gdbus", QStringList{"call", "--system", "-d", logind, "-o", logindPath, "-m", method} +
                                   arguments);
        EXPECT_TRUE(process.waitForFinished());
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    static QString inhibitors() { return ask("org.freedesktop.login1.Manager.ListInhibitors"); }
    /// How often the login manager was asked to do something.
    static qsizetype countOfCalls(const QString &method)
    {
        return ask("org.freedesktop.DBus.Mock.GetMethodCalls", {method})
            .count("[<") /* the arguments of each */;
    }
    /// Waits until the daemon listens to the login manager, which it does as soon as it holds its delay lock.
    testing::AssertionResult listens() const
    {
        return waitUntil([] { return inhibitors().contains("'sleep:shutdown', 'com.dozely'"); })
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << inhibitors().toStdString();
    }
    /// The only session was used last long ago.
    void leaveUnused()
    {
        for (const auto &[name, value] :
             {std::pair("IdleHint", "<true>"), std::pair("IdleSinceHint", "<uint64 1000000000>")})
            ASSERT_TRUE(bus.call(logind, logindPath + "/session/c1", "org.freedesktop.DBus.Properties.Set",
                                 {"org.freedesktop.login1.Session", name, value}));
    }
    /// The machine sleeps until the alarm for that date goes off.
    void wakeFor(const QDateTime &date)
    {
        ASSERT_TRUE(isArmedFor(date, wakeLead));
        tell("PrepareForSleep", true);
        ASSERT_TRUE(waitUntil([] { return !inhibitors().contains("com.dozely"); }));
        ASSERT_TRUE(waitUntil([&] { return inSeconds(wakeLead) >= date; }));
        tell("PrepareForSleep", false);
    }
    static QVariantMap with(QVariantMap parameters, const QString &key, const QVariant &value)
    {
        parameters.insert(key, value);
        return parameters;
    }
    /// Puts a bundle that comes with the system where the daemon looks.
    void install(const QString &name) const
    {
        const QString from = QString(PLUG_INS "/%1.plugin").arg(name);
        for (QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
            const QString file = files.next();
            const QString copy = QString("%1/%2.plugin%3").arg(plugIns, name, file.mid(from.size()));
            root.makeFolder(QFileInfo(copy).path());
            EXPECT_TRUE(QFile::copy(file, root.join(copy))) << copy.toStdString();
        }
    }
};

TEST_F(PowerHostsTest, AScheduleThatNeedsItArmsTheAlarmAMinuteAhead)
{
    startDaemon();
    EXPECT_TRUE(alarm().isEmpty());
    const QDateTime date = inSeconds(3600);
    writeStore({probeEntry("a", wake, date)});
    EXPECT_TRUE(isArmedFor(date, wakeLead));
    EXPECT_TRUE(logs("Trying Panther method..."));
    EXPECT_TRUE(logs("...OK: "));
}

TEST_F(PowerHostsTest, AScheduleThatDoesNotNeedItLeavesTheAlarmAlone)
{
    startDaemon();
    const QDateTime date = inSeconds(3600);
    writeStore({probeEntry("a", {}, date.addSecs(-1800)), probeEntry("b", wake, date)});
    EXPECT_TRUE(isArmedFor(date, wakeLead));
    EXPECT_TRUE(logs("...OK: "));
    EXPECT_EQ(countOf("Trying Panther method..."), 1);
}

TEST_F(PowerHostsTest, TheAlarmFollowsItsScheduleAndGoesWithIt)
{
    startDaemon();
    const QDateTime date = inSeconds(3600);
    const QVariantMap schedule = probeEntry("a", powerOn, date);
    writeStore({schedule});
    ASSERT_TRUE(isArmedFor(date, powerOnLead));
    writeStore({changed(schedule, "Date", date.addSecs(-1000))});
    EXPECT_TRUE(isArmedFor(date.addSecs(-1000), powerOnLead)) << "it was moved";
    writeStore({changed(schedule, "Is Enabled", false)});
    EXPECT_TRUE(isNotArmed()) << "it was disabled";
    writeStore({schedule});
    ASSERT_TRUE(isArmedFor(date, powerOnLead));
    writeStore({});
    EXPECT_TRUE(isNotArmed()) << "it was removed";
}

TEST_F(PowerHostsTest, OfTwoSchedulesTheEarlierOneHasTheAlarmAndTheOtherIsNext)
{
    startDaemon();
    const QDateTime date = inSeconds(3600);
    const QVariantMap later = probeEntry("later", wake, date.addSecs(600));
    writeStore({later, probeEntry("earlier", powerOn, date)});
    EXPECT_TRUE(isArmedFor(date, powerOnLead));
    writeStore({later});
    EXPECT_TRUE(isArmedFor(date.addSecs(600), wakeLead));
}

TEST_F(PowerHostsTest, ADaemonThatStartsTakesBackWhatNoScheduleStandsForAnyMore)
{
    const QDateTime date = inSeconds(3600);
    writeStore({probeEntry("a", wake, date)});
    startDaemon();
    ASSERT_TRUE(isArmedFor(date, wakeLead));
    EXPECT_EQ(endOf(daemon), 0);
    EXPECT_TRUE(isArmedFor(date, wakeLead)) << "the machine still wakes when the daemon has ended";
    writeStore({});
    startDaemon();
    EXPECT_TRUE(isNotArmed());
}

TEST_F(PowerHostsTest, BeforeSleepTheAlarmIsForWakingAndAfterwardsForWhateverComesFirst)
{
    startDaemon();
    ASSERT_TRUE(listens());
    const QDateTime date = inSeconds(3600);
    writeStore({probeEntry("a", powerOn, date), probeEntry("b", wake, date.addSecs(600))});
    ASSERT_TRUE(isArmedFor(date, powerOnLead));
    tell("PrepareForSleep", true);
    EXPECT_TRUE(isArmedFor(date.addSecs(600), wakeLead));
    EXPECT_TRUE(waitUntil([] { return !inhibitors().contains("com.dozely"); })) << "consent was given";
    tell("PrepareForSleep", false);
    EXPECT_TRUE(isArmedFor(date, powerOnLead));
    EXPECT_TRUE(listens()) << "the lock was taken again";
}

TEST_F(PowerHostsTest, WakingArmsTheAlarmAgainThatWasLostMeanwhile)
{
    startDaemon();
    ASSERT_TRUE(listens());
    const QDateTime date = inSeconds(3600);
    writeStore({probeEntry("a", wake, date)});
    ASSERT_TRUE(isArmedFor(date, wakeLead));
    tell("PrepareForSleep", true);
    ASSERT_TRUE(waitUntil([] { return !inhibitors().contains("com.dozely"); }));
    write(alarmPath, ""); // it went off, or somebody else took it
    tell("PrepareForSleep", false);
    EXPECT_TRUE(isArmedFor(date, wakeLead));
}

TEST_F(PowerHostsTest, BeforePowerOffTheAlarmIsForSwitchingOnAndTheDaemonEnds)
{
    startDaemon();
    ASSERT_TRUE(listens());
    const QDateTime date = inSeconds(3600);
    writeStore({probeEntry("a", wake, date), probeEntry("b", powerOn, date.addSecs(600))});
    ASSERT_TRUE(isArmedFor(date, wakeLead));
    tell("PrepareForShutdown", true);
    EXPECT_TRUE(isArmedFor(date.addSecs(600), powerOnLead));
    ASSERT_TRUE(waitUntil([this] { return daemon->state() == QProcess::NotRunning; }));
    EXPECT_EQ(daemon->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(daemon->exitCode(), 0);
    EXPECT_EQ(countOf("dozelyd ended"), 1);
    EXPECT_EQ(countOf("SIG 15 recu."), 0);
    EXPECT_TRUE(isArmedFor(date.addSecs(600), powerOnLead));
    daemon.reset();
}

TEST_F(PowerHostsTest, SigtermWhileTheMachineGoesOffLeavesTheAlarmForSwitchingOn)
{
    for (const bool goesOff : {false, true}) {
        startDaemon();
        ASSERT_TRUE(listens());
        const QDateTime date = inSeconds(3600);
        writeStore({probeEntry("a", wake, date), probeEntry("b", powerOn, date.addSecs(600))});
        ASSERT_TRUE(isArmedFor(date, wakeLead));
        // It has begun, and its announcement did not come.
        ASSERT_TRUE(bus.call(
            logind, logindPath, "org.freedesktop.DBus.Properties.Set",
            {"org.freedesktop.login1.Manager", "PreparingForShutdown", goesOff ? "<true>" : "<false>"}));
        EXPECT_EQ(endOf(daemon), 0);
        EXPECT_TRUE(goesOff ? isArmedFor(date.addSecs(600), powerOnLead) : isArmedFor(date, wakeLead));
    }
}

TEST_F(PowerHostsTest, ADaemonThatIsStartedWhileTheMachineGoesOffBeginsNothing)
{
    const auto goOff = [&](bool goesOff) {
        return bus.call(
            logind, logindPath, "org.freedesktop.DBus.Properties.Set",
            {"org.freedesktop.login1.Manager", "PreparingForShutdown", goesOff ? "<true>" : "<false>"});
    };
    writeStore({probeEntry("a", with({{"Acts In User Agent", 0LL}}, "Time Out", -3600LL))});
    ASSERT_TRUE(goOff(true));
    EXPECT_EQ(run("/usr/sbin/dozelyd", {"--root", root.path()}).status, 0);
    EXPECT_EQ(countOf("dozelyd does not begin: the machine goes off"), 1);
    EXPECT_EQ(countOf("dozelyd started"), 0);
    ASSERT_TRUE(goOff(false));
    startDaemon();
    EXPECT_TRUE(logs("Probe acts in the daemon: a"));
}

TEST_F(PowerHostsTest, SigtermIsAPowerOffInTheLogAndACleanEnd)
{
    startDaemon();
    EXPECT_EQ(endOf(daemon), 0);
    EXPECT_EQ(countOf("SIG 15 recu."), 1);
    EXPECT_EQ(countOf("dozelyd ended"), 1);
}

TEST_F(PowerHostsTest, AnInterruptEndsTheDaemonCleanlyToo)
{
    startDaemon();
    ASSERT_TRUE(signalProcess(daemon->processId(), SIGINT));
    ASSERT_TRUE(waitUntil([this] { return daemon->state() == QProcess::NotRunning; }));
    EXPECT_EQ(daemon->exitCode(), 0);
    EXPECT_EQ(countOf("recu."), 0);
    EXPECT_EQ(countOf("dozelyd ended"), 1);
    daemon.reset();
}

TEST_F(PowerHostsTest, TheMachineIsKeptAwakeWhileAnActionGoesOn)
{
    startDaemon();
    ASSERT_TRUE(listens());
    writeStore({probeEntry("long", with(with(wake, "Goes On", "for ever"), "Needs Wake Up", 0LL))});
    ASSERT_TRUE(logs("Probe acts in the daemon: long"));
    EXPECT_TRUE(waitUntil([] { return inhibitors().contains("A scheduled action is running"); }));
    EXPECT_THAT(inhibitors().toStdString(), HasSubstr("'block'"));
    kill(daemon);
    EXPECT_TRUE(waitUntil([] { return !inhibitors().contains("A scheduled action"); }));
}

TEST_F(PowerHostsTest, AClosedLidIsHeldOffFromTheWakeOnUntilTheActionIsOver)
{
    startDaemon();
    ASSERT_TRUE(listens());
    writeStore({probeEntry("woken", with(wake, "Goes On", "for a while"), inSeconds(8))});
    EXPECT_TRUE(waitUntil([] {
        return inhibitors().contains("'sleep:idle:handle-lid-switch', 'com.dozely', "
                                     "'A scheduled action is about to run', 'block'");
    }));
    EXPECT_EQ(countOf("Probe acts"), 0);
    ASSERT_TRUE(logs("Probe acts in the daemon: woken"));
    EXPECT_TRUE(waitUntil([] { return !inhibitors().contains("A scheduled action"); }));
    EXPECT_EQ(countOf("Probe finished"), 1);
}

TEST_F(PowerHostsTest, TheMachineMaySleepAgainOnceTheActionIsOver)
{
    startDaemon();
    ASSERT_TRUE(listens());
    install("Command");
    // The program goes on until somebody opens the other end.
    const QString pipe = root.join("/pipe");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0666), 0);
    QVariantMap schedule = probeEntry(
        "program", {{"Program", "/bin/cat"}, {"Arguments", QVariantList{pipe}}, {"Acts In User Agent", 0LL}});
    schedule.insert("Bundle Path", QString(plugIns) + "/Command.plugin");
    writeStore({schedule});
    EXPECT_TRUE(waitUntil([] { return inhibitors().contains("A scheduled action is running"); }));
    QFile writer(pipe);
    ASSERT_TRUE(writer.open(QIODevice::WriteOnly));
    writer.close();
    EXPECT_TRUE(logs("/bin/cat ended with status 0"));
    EXPECT_TRUE(waitUntil([] { return !inhibitors().contains("A scheduled action"); }));
}

TEST_F(PowerHostsTest, AScheduleOfTheSleepPlugInPutsTheMachineToSleep)
{
    install("Sleep");
    startDaemon();
    ASSERT_TRUE(listens());
    writeStore({changed(probeEntry("sleep", {}), "Bundle Path", QString(plugIns) + "/Sleep.plugin")});
    EXPECT_TRUE(waitUntil([] { return countOfCalls("Suspend") == 1; }));
    EXPECT_EQ(countOf("Mise en veille forcee."), 1);
    EXPECT_EQ(countOfCalls("Inhibit"), 1)
        << "the delay lock alone: nothing keeps the machine from that sleep";
}

TEST_F(PowerHostsTest, AScheduleOfThePowerOffPlugInSwitchesTheMachineOff)
{
    install("PowerOff");
    startDaemon();
    ASSERT_TRUE(listens());
    writeStore({changed(probeEntry("off", {}), "Bundle Path", QString(plugIns) + "/PowerOff.plugin")});
    EXPECT_TRUE(waitUntil([] { return countOfCalls("PowerOff") == 1; }));
    EXPECT_EQ(countOfCalls("Inhibit"), 1);
}

/// The minute is the time by which the machine is woken ahead.
TEST_F(PowerHostsTest, AMachineThatWasWokenForAnActionSleepsAgainAfterItAndOneThatWasNotStaysOn)
{
    ASSERT_TRUE(bus.call(logind, "/org/freedesktop/login1/seat/seat0", "org.freedesktop.DBus.Properties.Set",
                         {"org.freedesktop.login1.Seat", "ActiveSession", "<('', objectpath '/')>"}));
    leaveUnused();
    startDaemon();
    ASSERT_TRUE(listens());
    const QDateTime date = inSeconds(wakeLead + 3);
    const QVariantMap other = probeEntry("other", {{"Acts In User Agent", 0LL}}, date.addSecs(-50));
    writeStore({changed(probeEntry("backup", wake, date), "After Action", "sleep"),
                changed(other, "After Action", "power off")});
    wakeFor(date);
    EXPECT_TRUE(logs("\"Name of other\": the machine is not switched off again: it did not come back for "
                     "that"));
    ASSERT_TRUE(logs("Probe acts in the daemon: backup", std::chrono::seconds(100)));
    EXPECT_EQ(countOfCalls("Suspend"), 0);
    EXPECT_TRUE(waitUntil([] { return countOfCalls("Suspend") == 1; }));
    EXPECT_TRUE(logs("\"Name of backup\": the machine goes to sleep again"));
    EXPECT_EQ(countOfCalls("PowerOff"), 0);
}

TEST_F(PowerHostsTest, WhoeverIsAtTheConsoleIsAlertedBeforeTheMachineSleepsAgainAndMayCancel)
{
    install("Sleep");
    leaveUnused();
    startDaemon();
    startAgent();
    ASSERT_TRUE(listens());
    const QDateTime date = inSeconds(wakeLead + 3);
    writeStore({changed(probeEntry("backup", wake, date), "After Action", "sleep")});
    wakeFor(date);
    ASSERT_TRUE(logs("Probe acts in the daemon: backup", std::chrono::seconds(100)));
    const QString announces = "Sleep.plugin announces an action of ";
    ASSERT_TRUE(logs(announces));
    const QString when = root.logLines().filter(announces).first().section(announces, 1);
    const QDateTime announced = QDateTime::fromString(when.left(19), "yyyy-MM-dd HH:mm:ss");
    ASSERT_TRUE(announced.isValid()) << when.toStdString();
    const QString bundle = root.join(QString(plugIns) + "/Sleep.plugin");
    EXPECT_TRUE(postAsAgentUser(
        "daemon", NSNotification("DaemonMustRemoveEvent", "com.dozely.Daemon",
                                 {{"Schedule Bundle Path", bundle}, {"Schedule Date", announced.toUTC()}})));
    EXPECT_TRUE(
        logs(QString("\"Name of backup\": the machine does not go to sleep again: cancelled by user %1")
                 .arg(agentUser())));
    EXPECT_EQ(countOfCalls("Suspend"), 0);
}

TEST_F(PowerHostsTest, WithoutAClockThatWakesTheLogSaysOnceWhatWillNotHappenAndTheActionRuns)
{
    ASSERT_TRUE(QFile::remove(root.join(alarmPath)));
    startDaemon();
    const QVariantMap later = probeEntry("later", wake, inSeconds(3600));
    writeStore({later});
    EXPECT_TRUE(logs("The machine does not take it that it should wake"));
    writeStore({later, probeEntry("now", wake)});
    EXPECT_TRUE(logs("Probe acts in the daemon: now"));
    EXPECT_EQ(countOf("does not take it"), 1);
    EXPECT_EQ(countOf("Trying pmset method..."), 1);
}
