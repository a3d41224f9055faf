// SPDX-License-Identifier: MIT
#include "PerformancesFixture.h"
#include "hosts/common/performing/PlaceLock.h"

#include <QJsonDocument>
#include <QRegularExpression>
#include <QScopeGuard>

#include <map>

using namespace dozely;

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// What one way to start a performer alone has.
/// @{
class ForkedTest : public PerformancesFixture
{
};

class UnitsTest : public PerformancesFixture
{
protected:
    /// The names of the units that were started for a schedule whose name begins like that.
    QStringList unitsOf(const QString &schedule) const
    {
        const QStringList files =
            QDir(root.join("/units")).entryList({"dozely-action-" + schedule + "-*.service.json"});
        return QStringList(files).replaceInStrings(".json", "");
    }
    QVariantMap propertiesOf(const QString &schedule) const
    {
        const QStringList units = unitsOf(schedule);
        EXPECT_EQ(units.size(), 1);
        return QJsonDocument::fromJson(content("/units/" + units.value(0) + ".json")).toVariant().toMap();
    }
    /// Whether the manager still knows the unit.
    bool isLoaded(const QString &unit) const
    {
        return QProcess::execute("busctl", {"--address=" + bus->address(), "--quiet", "call",
                                            "org.freedesktop.systemd1", "/org/freedesktop/systemd1",
                                            "org.freedesktop.systemd1.Manager", "GetUnit", "s", unit}) == 0;
    }
};
/// @}

TEST_F(ForkedTest, SayInTheLogThatTheyBelongToTheirHost)
{
    start();
    EXPECT_EQ(linesAbout("Actions run").size(), 1);
    EXPECT_EQ(linesAbout("belong to this one: no systemd has started this machine").size(), 1);
}

TEST_F(ForkedTest, AreWhatThereIsWithoutAManagerOnTheBus)
{
    root.makeFolder("/run/systemd/system");
    bus = std::make_unique<PrivateBus>();
    start();
    ASSERT_TRUE(prepare("one")) << "before anybody knows the way";
    ASSERT_TRUE(performances->go("one"));
    EXPECT_EQ(failure("one"), "");
    EXPECT_EQ(marks(), "acted\n");
    EXPECT_EQ(linesAbout("Actions run").size(), 1);
    EXPECT_EQ(linesAbout("the service manager cannot be reached: nobody has its name on the bus").size(), 1);
}

TEST_F(ForkedTest, AreWhatThereIsWithoutABus)
{
    root.makeFolder("/run/systemd/system");
    bus = std::make_unique<PrivateBus>();
    bus->stop();
    start();
    ASSERT_TRUE(prepare("one"));
    ASSERT_TRUE(performances->go("one"));
    EXPECT_EQ(failure("one"), "");
    EXPECT_EQ(linesAbout("the service manager cannot be reached: ").size(), 1);
}

TEST_F(ForkedTest, AreServedByTheDiskAsTheirWeightSays)
{
    start();
    const QList<std::pair<quint64, int>> priorities{{1, 7},   {17, 7},  {18, 6},  {71, 4},    {100, 4},
                                                    {141, 4}, {142, 3}, {566, 1}, {10'000, 0}};
    for (const auto &[weight, priority] : priorities) {
        QFile::remove(root.join("/marks"));
        outcomes.clear();
        order.limits.program.ioWeight = weight;
        ASSERT_TRUE(prepare("one", "tell limits"));
        ASSERT_TRUE(performances->go("one"));
        EXPECT_EQ(failure("one"), "");
        EXPECT_TRUE(marks().contains(QString(" io 2/%1 ").arg(priority).toUtf8()))
            << weight << ": " << marks().constData();
    }
}

TEST_F(UnitsTest, AreNamedAfterTheSchedule)
{
    startManager();
    start();
    order.schedule = "Back\nup: $HOME";
    order.limits.timeToEnd = 30s;
    ASSERT_TRUE(prepare("a1"));
    ASSERT_TRUE(performances->go("a1"));
    EXPECT_EQ(failure("a1"), "");
    EXPECT_EQ(QStringList{performances->unitOf("a1")}, unitsOf("back-up-home")) << "for who tells of its end";
    const QVariantMap unit = propertiesOf("back-up-home");
    EXPECT_EQ(unit["Description"], "Dozely action of schedule \"Back up: $HOME\"");
    EXPECT_EQ(unit["SyslogIdentifier"], "dozely-action");
    EXPECT_EQ(unit["TimeoutStopUSec"].toLongLong(), 40'000'000) << "the performer kills first";
    EXPECT_EQ(unit["IgnoreSIGPIPE"], false);
    EXPECT_EQ(unit["AddRef"], true);
    for (const QString key : {"Nice", "CPUWeight", "IOWeight", "MemoryMax"})
        EXPECT_FALSE(unit.contains(key)) << "nobody asked for it: " << key.toStdString();
    EXPECT_EQ(linesAbout("Actions run in units of the service manager, one each").size(), 1);
}

TEST_F(UnitsTest, HaveTheLimitsOfTheAction)
{
    startManager();
    start();
    order.limits.program = {-5, 200, 50, 64 << 20};
    ASSERT_TRUE(prepare("a1"));
    ASSERT_TRUE(performances->go("a1"));
    EXPECT_EQ(failure("a1"), "");
    const QVariantMap unit = propertiesOf("backup");
    EXPECT_EQ(unit["Nice"], -5);
    EXPECT_EQ(unit["CPUWeight"], 200);
    EXPECT_EQ(unit["IOWeight"], 50);
    EXPECT_EQ(unit["MemoryMax"], 64 << 20);
}

TEST_F(UnitsTest, OfAUserHaveNoNiceValueThatHisManagerCannotGive)
{
    startManager();
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus->address().toUtf8());
    performances = make(PERFORMER_PROGRAM, ServiceManager::Whose::User);
    for (const auto &[name, nice] : {std::pair("a1", -1), std::pair("a2", 0)}) {
        order.limits.program.nice = nice;
        order.schedule = name;
        ASSERT_TRUE(prepare(name));
        ASSERT_TRUE(performances->go(name));
        EXPECT_EQ(failure(name), "");
    }
    EXPECT_FALSE(propertiesOf("a1").contains("Nice"));
    EXPECT_EQ(propertiesOf("a2")["Nice"], 0);
    EXPECT_EQ(linesAbout("Schedule \"a1\": a user's action cannot have the nice value -1").size(), 1);
}

TEST_F(UnitsTest, OfAUserHaveTheEnvironmentOfTheSession)
{
    startManager();
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus->address().toUtf8());
    const std::map<const char *, QByteArray> session{{"DISPLAY", ":7"},
                                                     {"TWO_LINES", "one\ntwo"},
                                                     {"JOURNAL_STREAM", "8:9"},
                                                     {"BASH_FUNC_x%%", "() { :; }"},
                                                     {"BELL", "\a"},
                                                     {"NO_TEXT", "\xff"}};
    for (const auto &[name, value] : session)
        qputenv(name, value);
    const auto restored = qScopeGuard([&] {
        for (const auto &each : session)
            qunsetenv(each.first);
    });
    for (const auto &[name, whose] : {std::pair("a1", Whose::User), std::pair("a2", Whose::Machine)}) {
        performances = make(PERFORMER_PROGRAM, whose);
        order.schedule = name;
        ASSERT_TRUE(prepare(name));
        ASSERT_TRUE(performances->go(name));
        EXPECT_EQ(failure(name), "");
    }
    const QStringList entries = propertiesOf("a1")["Environment"].toStringList();
    EXPECT_TRUE(entries.contains("DISPLAY=:7"));
    EXPECT_TRUE(entries.contains("TWO_LINES=one\ntwo"));
    EXPECT_EQ(entries.filter("JOURNAL_STREAM="), QStringList()) << "the manager gives each unit its own";
    EXPECT_EQ(entries.filter(QRegularExpression("^(BASH_FUNC|BELL|NO_TEXT)")), QStringList())
        << "the manager would refuse them all";
    EXPECT_FALSE(propertiesOf("a2").contains("Environment"));
}

TEST_F(UnitsTest, OutOfWhichTheKernelKilledForItsMemorySaySo)
{
    const auto kernelSays = [this](const char *file, const QByteArray &content) {
        root.makeFolder(QString(file).section('/', 0, -2));
        QFile written(root.join(file));
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(content);
    };
    startManager();
    start();
    const auto failureWith = [&](const char *name, const QByteArray &events) {
        kernelSays("/sys/fs/cgroup/system.slice/one.service/memory.events", events);
        EXPECT_TRUE(prepare(name, "crash"));
        EXPECT_TRUE(performances->go(name));
        return failure(name);
    };
    kernelSays("/proc/self/cgroup", "12:cpu:/other\n0::/system.slice/one.service\n");
    EXPECT_EQ(failureWith("a1", "low 0\nhigh 0\nmax 9\noom 1\noom_kill 1\n"),
              "it took more memory than it may");
    EXPECT_THAT(failureWith("a2", "low 0\nmax 9\noom 1\noom_kill 0\n"), HasSubstr("was ended by signal"));
    kernelSays("/proc/self/cgroup", "1:name=systemd:/system.slice/one.service\n");
    EXPECT_THAT(failureWith("a3", "oom_kill 1\n"), HasSubstr("was ended by signal"));
}

TEST_F(UnitsTest, HaveTheOutputOfTheAction)
{
    startManager();
    start();
    ASSERT_TRUE(prepare("a1", "print"));
    ASSERT_TRUE(performances->go("a1"));
    const QByteArray kept = outcome("a1").output;
    EXPECT_TRUE(content("/units/" + unitsOf("backup").value(0) + ".log").endsWith(kept));
}

TEST_F(UnitsTest, ThatTheManagerRefusesAreToldWithItsReason)
{
    startManager({"--refuse", "Not while it rains."});
    start();
    ASSERT_TRUE(prepare("a1"));
    performances->go("a1");
    EXPECT_EQ(failure("a1"), "the service manager did not start its performer: Not while it rains.");
    EXPECT_EQ(marks(), "") << "nobody forks it instead";
    EXPECT_EQ(files(), QStringList());
}

TEST_F(UnitsTest, OfAManagerThatEndsInsteadOfAnsweringAreTold)
{
    startManager({"--vanish"});
    start();
    ASSERT_TRUE(prepare("a1"));
    EXPECT_THAT(failure("a1"), StartsWith("the service manager did not start its performer: "));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(UnitsTest, WaitForAManagerThatBeginsAnew)
{
    startManager({"--vanish"});
    start();
    ASSERT_TRUE(prepare("a1"));
    failure("a1"); // it is gone
    ASSERT_TRUE(prepare("a2"));
    ASSERT_TRUE(performances->go("a2"));
    ASSERT_TRUE(bus->startService(SERVICE_MANAGER, {root.join("/units")}, "org.freedesktop.systemd1"));
    EXPECT_EQ(failure("a2"), "");
    EXPECT_EQ(marks(), "acted\n");
}

TEST_F(UnitsTest, ThatAreCalledOffWhileTheManagerIsAwayAreNotStartedAndOthersAre)
{
    startManager({"--vanish"});
    start();
    ASSERT_TRUE(prepare("a1"));
    failure("a1"); // it is gone
    for (const char *name : {"first", "second", "third"}) {
        order.schedule = name;
        ASSERT_TRUE(prepare(name));
        ASSERT_TRUE(performances->go(name));
    }
    performances->callOff("second");
    ASSERT_TRUE(bus->startService(SERVICE_MANAGER, {root.join("/units")}, "org.freedesktop.systemd1"));
    EXPECT_EQ(failure("first"), "");
    EXPECT_EQ(failure("third"), "");
    EXPECT_EQ(marks(), "acted\nacted\n");
    EXPECT_EQ(unitsOf("second"), QStringList());
}

TEST_F(UnitsTest, AreForgottenOnceTheirEndIsTold)
{
    startManager();
    start();
    for (const char *wish : {"nothing", "throw when asked", "crash"}) {
        ASSERT_TRUE(prepare(QString(wish).section(' ', 0, 0), wish));
        performances->go(QString(wish).section(' ', 0, 0));
        failure(QString(wish).section(' ', 0, 0));
    }
    ASSERT_EQ(unitsOf("backup").size(), 3);
    for (const QString &unit : unitsOf("backup"))
        EXPECT_TRUE(waitUntil([&] { return !isLoaded(unit); }));
}

TEST_F(UnitsTest, ThatAreCalledOffAreForgottenAndStartedAnewUnderTheSameName)
{
    startManager();
    start();
    ASSERT_TRUE(prepare("a1"));
    ASSERT_TRUE(waitUntil([&] { return PlaceLock::isHeld(folder + "/a1"); }));
    performances->callOff("a1");
    ASSERT_TRUE(prepare("a1"));
    ASSERT_TRUE(performances->go("a1"));
    EXPECT_EQ(failure("a1"), "");
    EXPECT_EQ(marks(), "acted\n");
    ASSERT_EQ(unitsOf("backup").size(), 2);
    for (const QString &unit : unitsOf("backup"))
        EXPECT_TRUE(waitUntil([&] { return !isLoaded(unit); }));
}

TEST_F(UnitsTest, ThatAreCalledOffBeforeAnybodyKnowsTheWayAreNotStarted)
{
    startManager();
    start();
    ASSERT_TRUE(prepare("a1"));
    performances->callOff("a1");
    ASSERT_TRUE(prepare("a2"));
    ASSERT_TRUE(performances->go("a2"));
    EXPECT_EQ(failure("a2"), "");
    EXPECT_EQ(unitsOf("backup").size(), 1);
}
