// SPDX-License-Identifier: MIT
#include "hosts/common/orders/Listeners.h"
#include "unit/hosts/admin/AdminTool.h"

#include <QDir>
#include <QJsonArray>

#include <gmock/gmock.h>

#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::Not;

namespace
{
/// Somebody who listens under a name in the socket folder.
class Listener
{
public:
    Listener(const AdminTool &tool, const QString &name)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        const QByteArray path =
            QFile::encodeName(tool.root.makeFolder("/private/var/tmp/com.dozely", 0777) + '/' + name);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
        EXPECT_EQ(::bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        EXPECT_EQ(::listen(m_socket, 5), 0);
        EXPECT_EQ(::chmod(path.constData(), 0666), 0);
    }
    ~Listener() { ::close(m_socket); }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

private:
    int m_socket;
};
} // namespace

TEST(AdminStatus, ShowsAMachineWithoutADaemonAndSaysSoByItsExitStatus)
{
    AdminTool tool;
    tool.add("Backup", {"--wake"});
    const auto status = tool.run({"status"});
    EXPECT_EQ(status.status, 1);
    EXPECT_EQ(status.errors, QByteArray());
    for (const char *text :
         {"Daemon:      is not there\n", "Wake clock:  none", "Schedules:   1, 1 of them enabled\n", "Next",
          "Backup  wakes the machine", "Nothing failed of late."})
        EXPECT_THAT(status.output.toStdString(), HasSubstr(text));
    EXPECT_THAT(status.output.toStdString(), Not(HasSubstr("\x1b")));
}

TEST(AdminStatus, ShowsDaemonAndAgentsThatListen)
{
    AdminTool tool;
    const quint32 user = ::geteuid();
    const Listener daemon(tool, "dozelyd");
    const Listener agent(tool, QString("Dozely Agent.%1").arg(user));
    const auto status = tool.run({"status", "--json"});
    EXPECT_EQ(status.status, 0);
    EXPECT_TRUE(status.json()["daemon"].toObject()["isAlive"].toBool());
    EXPECT_EQ(status.json()["agents"].toArray(), QJsonArray{static_cast<qint64>(user)});
}

TEST(AdminStatus, ShowsTheNextOccurrenceOfEachScheduleOnce)
{
    AdminTool tool;
    EXPECT_EQ(
        tool.run({"add", "Often", "--program", "/bin/true", "--rule", "FREQ=SECONDLY;INTERVAL=7"}).status, 0);
    tool.add("Tomorrow");
    const std::string shown = tool.run({"status"}).output.toStdString();
    const auto at = shown.find("Often");
    ASSERT_NE(at, std::string::npos) << shown;
    EXPECT_EQ(shown.find("Often", at + 1), std::string::npos) << shown;
    EXPECT_THAT(shown, HasSubstr("Tomorrow"));
}

TEST(AdminStatus, TakesNobodyForAnAgentWhoIsAnotherUser)
{
    AdminTool tool;
    const Listener impostor(tool, QString("Dozely Agent.%1").arg(::geteuid() + 1));
    EXPECT_EQ(tool.run({"status", "--json"}).json()["agents"].toArray(), QJsonArray());
}

TEST(AdminStatus, WorksForAnyUserAndWithADamagedStore)
{
    AdminTool tool;
    EXPECT_THAT(tool.run({"status"}, true).output.toStdString(), HasSubstr("Daemon:"));
    tool.writeStore("no property list");
    const auto status = tool.run({"status"}, true);
    EXPECT_EQ(status.status, 1);
    EXPECT_THAT(status.output.toStdString(), HasSubstr("Schedules:   "));
    EXPECT_FALSE(tool.run({"status", "--json"}).json()["schedules"].toObject()["failure"].isNull());
}

TEST(AdminStatus, ShowsTheClockThatWakesTheMachineAndItsAlarm)
{
    AdminTool tool;
    const QString device = tool.root.makeFolder("/sys/class/rtc/rtc0");
    const auto put = [&](const QString &name, const QByteArray &content) {
        QFile file(device + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
    };
    put("name", "rtc_fake\n");
    put("wakealarm", "");
    const auto clock = [&] {
        const QString output = tool.run({"status"}).output;
        return output.section("Wake clock:", 1).section('\n', 0, 0).trimmed();
    };
    EXPECT_EQ(clock(), "rtc0, not armed");
    put("wakealarm", "2847247200\n");
    EXPECT_EQ(clock(), "rtc0, armed for 2060-03-23 06:00:00 by another program");
    const QJsonObject told = tool.run({"status", "--json"}).json()["wakeClock"].toObject();
    EXPECT_EQ(told, (QJsonObject{{"isSupported", true},
                                 {"device", "rtc0"},
                                 {"alarm", "2060-03-23T06:00:00Z"},
                                 {"alarmIsOurs", false}}));
}

TEST(AdminStatus, CountsWhatTheStoreHoldsAndWhatIsNone)
{
    AdminTool tool;
    tool.add("Backup");
    tool.add("Music", {"--disabled"});
    const auto schedules = [&] {
        return QString(tool.run({"status"}).output).section("Schedules:", 1).section('\n', 0, 0).trimmed();
    };
    EXPECT_EQ(schedules(), "2, 1 of them enabled");
    QByteArray store = tool.store();
    tool.writeStore(store.replace("<key>Schedule Array</key>\n\t<array>",
                                  "<key>Schedule Array</key>\n\t<array>\n<string>odd</string>"));
    EXPECT_EQ(schedules(), "2, 1 of them enabled; 1 entry is none") << tool.store().constData();
}

TEST(AdminStatus, HasColoursOnATerminalUnlessSomebodySaysNo)
{
    AdminTool tool;
    QProcess process;
    tool.prepare(process, {});
    const auto onTerminal = [&](const QStringList &variables) {
        QProcessEnvironment environment = process.processEnvironment();
        environment.insert("TERM", "xterm");
        environment.remove("NO_COLOR");
        for (const QString &variable : variables)
            environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
        process.setProcessEnvironment(environment);
        process.setProgram("script");
        process.setArguments(
            {"-qec",
             QString("%1 --root %2 status").arg(tool.root.join("/usr/dozely-admin"), tool.root.path()),
             "/dev/null"});
        process.start();
        EXPECT_TRUE(process.waitForFinished());
        return process.readAllStandardOutput().toStdString();
    };
    EXPECT_THAT(onTerminal({}), HasSubstr("\x1b[31mis not there\x1b[0m"));
    EXPECT_THAT(onTerminal({"NO_COLOR=1"}), Not(HasSubstr("\x1b[")));
    EXPECT_THAT(onTerminal({"TERM=dumb"}), Not(HasSubstr("\x1b[")));
}

TEST(AdminDoctor, TellsFindingsAndRemediesAndEndsWithOneWhenSomethingIsWrong)
{
    AdminTool tool;
    const auto doctor = tool.run({"doctor"});
    EXPECT_EQ(doctor.status, 1);
    EXPECT_EQ(doctor.errors, QByteArray());
    EXPECT_THAT(doctor.output.toStdString(), HasSubstr("wrong    daemon: "));
    EXPECT_THAT(doctor.output.toStdString(), HasSubstr("-> systemctl start dozelyd"));
    EXPECT_THAT(doctor.output.toStdString(), HasSubstr("fine     plug-ins: "));
    const QJsonObject json = tool.run({"doctor", "--json"}, true).json();
    EXPECT_FALSE(json["isFine"].toBool(true));
    EXPECT_GT(json["checks"].toArray().size(), 20);
    for (const QJsonValue check : json["checks"].toArray()) {
        EXPECT_FALSE(check["name"].toString().isEmpty());
        EXPECT_EQ(check["remedy"].isNull(), check["state"].toString() != "wrong")
            << qPrintable(check["name"].toString());
    }
}
