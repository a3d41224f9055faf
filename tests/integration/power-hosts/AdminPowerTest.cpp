// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "support/PrivateBus.h"
#include "unit/hosts/admin/AdminTool.h"

#include <QFile>
#include <QJsonArray>
#include <QProcess>
#include <QTimeZone>

#include <gmock/gmock.h>

#include <unistd.h>

using namespace dozely;

using testing::HasSubstr;
using testing::Not;

namespace
{
const QString logind = "org.freedesktop.login1";
} // namespace

/// The administration tool on a machine whose clock is a folder of files.
class AdminPowerTest : public testing::Test
{
protected:
    void makeClock(const QByteArray &alarm = "\n") const
    {
        const QString folder = tool.root.makeFolder("/sys/class/rtc/rtc0");
        write(folder + "/name", "rtc_test\n");
        write(folder + "/wakealarm", alarm);
    }
    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    QByteArray alarm() const
    {
        QFile file(tool.root.join("/sys/class/rtc/rtc0/wakealarm"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
    }
    void schedule(const QDateTime &date, const char *type, const QString &owner = "com.dozely") const
    {
        ASSERT_EQ(Port<PowerEventScheduler>::current()->schedule(date, owner, type), 0);
    }
    static QDateTime inSeconds(qint64 seconds)
    {
        return QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch() + seconds, Qt::UTC);
    }
    static std::string text(const QDateTime &date)
    {
        return date.toLocalTime().toString("yyyy-MM-dd HH:mm:ss").toStdString();
    }

    AdminTool tool;
};

TEST_F(AdminPowerTest, PowerSaysThatThereIsNoClock)
{
    const auto power = tool.run({"power"});
    EXPECT_EQ(power.status, 0);
    EXPECT_EQ(power.output, "Clock:  none that could wake this machine\nNo events are scheduled.\n");
    const auto json = tool.run({"power", "--json"}).json();
    EXPECT_EQ(json["isSupported"], false);
    EXPECT_TRUE(json["events"].toArray().isEmpty());
    EXPECT_FALSE(json.contains("alarm"));
}

TEST_F(AdminPowerTest, PowerSaysThatNothingIsArmed)
{
    makeClock();
    EXPECT_EQ(tool.run({"power"}).output,
              "Clock:  rtc0 (rtc_test)\nAlarm:  not armed\nNo events are scheduled.\n");
    const auto json = tool.run({"power", "--json"}).json();
    EXPECT_EQ(json["isSupported"], true);
    EXPECT_TRUE(json["alarm"].isNull());
}

TEST_F(AdminPowerTest, PowerShowsTheAlarmAndTheEventsEarliestFirstWithTheirOwners)
{
    makeClock();
    const QDateTime later = inSeconds(7200);
    const QDateTime earlier = inSeconds(3600);
    schedule(later, PowerEventScheduler::powerOn, "pmset");
    schedule(earlier, PowerEventScheduler::wake);
    const std::string output = tool.run({"power"}, true).output.toStdString();
    EXPECT_THAT(output, HasSubstr("Alarm:  " + text(earlier) + ", for an event below\n"));
    EXPECT_THAT(output, testing::ContainsRegex(text(earlier) + " +wake +com.dozely\n" + text(later) +
                                               " +poweron +pmset\n"));
    const auto json = tool.run({"power", "--json"}).json();
    EXPECT_EQ(json["alarm"], earlier.toString(Qt::ISODate));
    EXPECT_EQ(json["alarmIsOurs"], true);
    EXPECT_EQ(json["device"], "rtc0");
    EXPECT_EQ(json["clock"], "rtc_test");
    const auto events = json["events"].toArray();
    ASSERT_EQ(events.size(), 2);
    EXPECT_EQ(
        events[0].toObject(),
        QJsonObject({{"time", earlier.toString(Qt::ISODate)}, {"owner", "com.dozely"}, {"type", "wake"}}));
    EXPECT_EQ(events[1].toObject()["owner"], "pmset");
}

TEST_F(AdminPowerTest, PowerShowsAnAlarmOfAnotherProgram)
{
    const QDateTime date = inSeconds(3600);
    makeClock(QByteArray::number(date.toSecsSinceEpoch()) + '\n');
    EXPECT_THAT(tool.run({"power"}).output.toStdString(),
                HasSubstr("Alarm:  " + text(date) + ", armed by another program\n"));
}

TEST_F(AdminPowerTest, TestArmsTheAlarmAndSetsItAsItWas)
{
    makeClock();
    const auto test = tool.run({"power", "test"});
    EXPECT_EQ(test.status, 0) << test.errors.constData();
    EXPECT_THAT(test.output.toStdString(), HasSubstr("The alarm of rtc0 (rtc_test) was armed for"));
    EXPECT_TRUE(alarm().isEmpty() || alarm() == "0");
    const QByteArray armed = QByteArray::number(inSeconds(86400).toSecsSinceEpoch());
    makeClock(armed + '\n');
    EXPECT_EQ(tool.run({"power", "test", "--json"}).json()["works"], true);
    EXPECT_EQ(alarm(), armed);
}

TEST_F(AdminPowerTest, TestNeedsAClockAndTheRightToSetIt)
{
    const auto without = tool.run({"power", "test"});
    EXPECT_EQ(without.status, 1);
    EXPECT_EQ(without.errors, "Dozely Admin: This machine has no clock that could wake it.\n");
    EXPECT_EQ(without.output, QByteArray());
    makeClock();
    ASSERT_TRUE(QFile(tool.root.join("/sys/class/rtc/rtc0/wakealarm")).setPermissions(QFile::ReadOwner));
    // Not run by root, there is nobody else whom the tool could be run as; the file's mode is what refuses
    // then.
    const auto stranger = tool.run({"power", "test"}, true);
    EXPECT_EQ(stranger.status, ::geteuid() == 0 ? 3 : 1);
    EXPECT_NE(stranger.errors, QByteArray());
    EXPECT_EQ(stranger.output, QByteArray());
}

TEST_F(AdminPowerTest, TestSaysThatTheClockDoesNotTakeTheAlarm)
{
    makeClock();
    const QString file = tool.root.join("/sys/class/rtc/rtc0/wakealarm");
    ASSERT_TRUE(QFile::remove(file));
    // What is written there is gone.
    ASSERT_TRUE(QFile::link("/dev/null", file));
    const auto test = tool.run({"power", "test"});
    EXPECT_EQ(test.status, 1);
    EXPECT_NE(test.errors, QByteArray());
}

TEST_F(AdminPowerTest, SleepAsksTheLoginManager)
{
    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    ASSERT_TRUE(bus.startMock("logind", logind));
    const auto sleep = tool.run({"sleep"});
    EXPECT_EQ(sleep.status, 0) << sleep.errors.constData();
    EXPECT_EQ(sleep.output, "The machine goes to sleep.\n");
    EXPECT_THAT(tool.root.logContent().toStdString(), HasSubstr("The machine is put to sleep by user"));
    EXPECT_EQ(tool.run({"sleep", "--json"}).json()["accepted"], true);
    QProcess calls;
    calls.start("gdbus", {"call", "--system", "-d", logind, "-o", "/org/freedesktop/login1", "-m",
                          "org.freedesktop.DBus.Mock.GetMethodCalls", "Suspend"});
    ASSERT_TRUE(calls.waitForFinished());
    EXPECT_EQ(calls.readAllStandardOutput().count("[<"), 2);
}

TEST_F(AdminPowerTest, SleepSaysThatThereIsNoLoginManager)
{
    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    const auto sleep = tool.run({"sleep"});
    EXPECT_EQ(sleep.status, 1);
    EXPECT_EQ(sleep.errors,
              "Dozely Admin: There is no login manager that could put this machine to sleep.\n");
    EXPECT_EQ(sleep.output, QByteArray());
}

TEST_F(AdminPowerTest, SleepSaysThatItWasRefused)
{
    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    ASSERT_TRUE(bus.startMock("logind", logind));
    ASSERT_TRUE(bus.call(
        logind, "/org/freedesktop/login1", "org.freedesktop.DBus.Mock.AddMethod",
        {"org.freedesktop.login1.Manager", "Suspend", "b", "",
         "raise dbus.exceptions.DBusException('no', name='org.freedesktop.DBus.Error.AccessDenied')"}));
    const auto sleep = tool.run({"sleep"});
    EXPECT_EQ(sleep.status, 1);
    EXPECT_EQ(sleep.errors, "Dozely Admin: The machine does not let itself be put to sleep.\n");
    EXPECT_THAT(tool.root.logContent().toStdString(), Not(HasSubstr("put to sleep")));
}

TEST_F(AdminPowerTest, AddHasTheMachineWokenOrSwitchedOn)
{
    const auto parameters = [this](const QStringList &options) {
        const auto added =
            tool.run(QStringList{"add", "A", "--program", "/bin/true", "--in", "3600", "--json"} + options);
        return added.json()["schedule"].toObject()["parameters"].toObject();
    };
    EXPECT_EQ(parameters({"--wake"})["Needs Wake Up"], 1);
    EXPECT_EQ(parameters({"--power-on"})["Needs Startup"], 1);
    EXPECT_FALSE(parameters({"--wake"}).contains("Needs Startup"));
    EXPECT_FALSE(parameters({}).contains("Needs Wake Up"));
}

TEST_F(AdminPowerTest, AWrongCommandLineEndsWithTwo)
{
    for (const QStringList &arguments : {QStringList{"power", "off"}, QStringList{"power", "test", "x"},
                                         QStringList{"sleep", "now"}, QStringList{"list", "--wake"}}) {
        const auto result = tool.run(arguments);
        EXPECT_EQ(result.status, 2) << qPrintable(arguments.join(' '));
        EXPECT_NE(result.errors, QByteArray());
    }
}
