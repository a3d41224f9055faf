// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/ConsoleUser.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "hosts/admin/DoctorCheck.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

#include <functional>
#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

namespace
{
using State = Finding::State;

/// Services as they are where all is well.
class FakeServices : public DoctorServices
{
public:
    bool bus = true;
    QStringList names{"com.dozely", "org.freedesktop.PolicyKit1"};
    std::optional<Unit> dozelyd = Unit{"enabled", "active"};

    bool hasBus() const override { return bus; }
    std::optional<bool> isNameOwned(const QByteArray &name) const override
    {
        return bus ? std::optional(names.contains(QString::fromLatin1(name))) : std::nullopt;
    }
    std::optional<Unit> unit(const QString &name) const override
    {
        return name == "dozelyd.service" ? dozelyd : std::nullopt;
    }
};

/// A clock of the machine that can wake it, with an event to come in an hour.
class FakePower : public PowerEventScheduler
{
public:
    std::optional<Alarm> theAlarm = Alarm{"rtc0", "rtc_cmos", QDateTime(), true};
    QList<Event> events;
    QString fault;

    qint32 schedule(const QDateTime &, const QString &, const QString &) override { return 0; }
    qint32 cancel(const QDateTime &, const QString &, const QString &) override { return 0; }
    QList<Event> scheduledEvents() override { return events; }
    qint32 arm(Phase) override { return 0; }
    void keepArmed() override {}
    std::optional<Alarm> alarm() override { return theAlarm; }
    Controller controller() override { return {}; }
    std::optional<QVariantMap> controllerProperties() override { return {}; }
    QString testAlarm(const QDateTime &) override { return fault; }
    qint32 putBackAlarm(const QDateTime &) override { return 0; }
};

class DoctorTest : public testing::Test
{
protected:
    DoctorTest()
    {
        Port<Clock>::current() = clock;
        Port<ConsoleUser>::current() = console;
        Port<PowerEventScheduler>::current() = power;
        ::setenv("TZ", "Europe/Berlin", 1);
        for (const char *folder :
             {"/Library", "/Library/Preferences", "/Library/Application Support",
              "/Library/Application Support/Dozely", "/Library/Application Support/Dozely/PlugIns",
              "/Library/Application Support/Dozely/PlugIns/Command.plugin", "/var/lib/dozely",
              "/usr/share/zoneinfo"})
            root.makeFolder(folder);
        root.makeFolder("/private/var/tmp/com.dozely", 0777);
        root.makeFolder("/private/var/tmp/com.dozely.events", 01777);
        ::chmod(file("/var/log/dozely.log", "").constData(), 0666);
        for (const char *path :
             {"/usr/share/dbus-1/system.d/com.dozely.Scheduler1.conf",
              "/usr/share/polkit-1/actions/com.dozely.policy", "/etc/xdg/autostart/dozely-agent.desktop"})
            file(path, "");
        file("/usr/share/zoneinfo/tzdata.zi", "# version 2025b\n");
        clock->synchronised = true;
    }

    /// Writes a file below the root; its path.
    QByteArray file(const QString &path, const QByteArray &content) const
    {
        root.makeFolder(path.left(path.lastIndexOf('/')));
        QFile file(root.join(path));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return QFile::encodeName(file.fileName());
    }

    void chmod(const char *path, mode_t mode) const
    {
        EXPECT_EQ(::chmod(QFile::encodeName(root.join(path)).constData(), mode), 0);
    }

    Finding look(const QString &name) const
    {
        for (const auto &check : DoctorChecks::all()) {
            if (check->name() == name)
                return check->look(services);
        }
        ADD_FAILURE() << "there is no check " << qPrintable(name);
        return {};
    }

    /// What a check that has found something says, and what helps.
    void expectWrong(const QString &name, const char *text, const char *remedy) const
    {
        const Finding finding = look(name);
        EXPECT_EQ(finding.state, State::Wrong) << qPrintable(name + ": " + finding.text);
        EXPECT_THAT(finding.text.toStdString(), testing::HasSubstr(text));
        EXPECT_THAT(finding.remedy.toStdString(), testing::HasSubstr(remedy));
    }

    void addSchedule(const QVariantMap &parameters, AfterAction after = AfterAction::Nothing)
    {
        Schedule schedule;
        schedule.identifier = "a";
        schedule.name = "Backup";
        schedule.bundlePath = "/Library/Application Support/Dozely/PlugIns/Command.plugin";
        schedule.parameters = parameters;
        schedule.afterAction = after;
        schedule.date = clock->currentDate().addDays(1);
        EXPECT_TRUE(ScheduleStore::edit([&](QList<Schedule> &schedules) {
            schedules = {schedule};
            return true;
        }));
    }

    ScratchRoot root;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<FakeConsoleUser> console = std::make_shared<FakeConsoleUser>();
    std::shared_ptr<FakePower> power = std::make_shared<FakePower>();
    FakeServices services;
};
} // namespace

TEST_F(DoctorTest, AWholeInstallationHasNothingWrongButTheDaemonThatIsNotThere)
{
    QStringList wrong;
    for (const auto &check : DoctorChecks::all()) {
        if (check->look(services).state == State::Wrong)
            wrong += check->name();
    }
    EXPECT_EQ(wrong, QStringList{"daemon"});
}

TEST_F(DoctorTest, EveryCheckHasANameOfItsOwn)
{
    QStringList names;
    for (const auto &check : DoctorChecks::all()) {
        EXPECT_FALSE(names.contains(check->name())) << qPrintable(check->name());
        names += check->name();
    }
}

TEST_F(DoctorTest, AFolderThatOthersMayWriteIsFound)
{
    chmod("/Library/Preferences", 0777);
    expectWrong("store-folder", "has the mode 777, which lets others write there", "chmod 755 ");
    chmod("/var/lib/dozely", 0770);
    expectWrong("record-folder", "lets others write there", "chmod 755 ");
}

TEST_F(DoctorTest, AFolderThatKeepsOthersOutIsFound)
{
    chmod("/private/var/tmp/com.dozely", 0755);
    expectWrong("socket-folder", "has the mode 755, which keeps others out", "chmod 777 ");
    chmod("/private/var/tmp/com.dozely.events", 0777);
    expectWrong("events-folder", "has the mode 777", "chmod 1777 ");
    chmod("/var/log/dozely.log", 0644);
    expectWrong("log-file", "keeps others out", "chmod 666 ");
}

TEST_F(DoctorTest, WhatIsMissingOrSomethingElseIsFound)
{
    EXPECT_EQ(::rmdir(QFile::encodeName(root.join("/private/var/tmp/com.dozely")).constData()), 0);
    expectWrong("socket-folder", "is not there", "systemctl restart dozelyd");
    file("/private/var/tmp/com.dozely", "");
    expectWrong("socket-folder", "is no folder", "rm ");
    EXPECT_TRUE(QFile::remove(root.join("/var/log/dozely.log")));
    EXPECT_EQ(::symlink("/etc/passwd", QFile::encodeName(root.join("/var/log/dozely.log")).constData()), 0);
    expectWrong("log-file", "is no regular file", "rm ");
}

TEST_F(DoctorTest, BundlesThatOthersMayWriteAreFound)
{
    chmod("/Library/Application Support/Dozely/PlugIns/Command.plugin", 0777);
    expectWrong("plug-ins", "No bundle is performed as root", "chmod -R go-w");
    EXPECT_TRUE(QDir(root.join("/Library/Application Support/Dozely/PlugIns")).rmdir("Command.plugin"));
    expectWrong("plug-ins", "There is no bundle", "reinstall");
}

TEST_F(DoctorTest, PoliciesThatAreMissingAreFound)
{
    EXPECT_TRUE(QFile::remove(root.join("/usr/share/dbus-1/system.d/com.dozely.Scheduler1.conf")));
    expectWrong("bus-policy", "The bus lets nobody be com.dozely", "systemctl reload dbus");
    EXPECT_TRUE(QFile::remove(root.join("/usr/share/polkit-1/actions/com.dozely.policy")));
    expectWrong("polkit-policy", "Root alone may change schedules", "reinstall");
    services.names.removeAll("org.freedesktop.PolicyKit1");
    expectWrong("polkit", "there is no polkit", "apt install polkitd");
    EXPECT_TRUE(QFile::remove(root.join("/etc/xdg/autostart/dozely-agent.desktop")));
    expectWrong("agent-start", "No agent is started", "reinstall");
}

TEST_F(DoctorTest, AServiceThatIsOffIsFound)
{
    services.dozelyd = DoctorServices::Unit{"disabled", "inactive"};
    expectWrong("service", "not started with the machine", "systemctl enable --now dozelyd");
    services.dozelyd = DoctorServices::Unit{"masked", "inactive"};
    expectWrong("service", "masked", "systemctl unmask");
    services.dozelyd = DoctorServices::Unit{"enabled", "failed"};
    expectWrong("service", "has failed", "journalctl -u dozelyd");
    services.dozelyd = DoctorServices::Unit{"", "inactive"};
    expectWrong("service", "does not know", "daemon-reload");
    services.dozelyd.reset();
    EXPECT_EQ(look("service").state, State::Unknown);
}

TEST_F(DoctorTest, ABusWithoutTheDaemonIsFound)
{
    services.names.clear();
    expectWrong("bus-name", "is not com.dozely", "systemctl restart dozelyd");
    services.bus = false;
    expectWrong("bus-name", "no system bus", "apt install dbus");
}

TEST_F(DoctorTest, AnAgentThatIsNotThereIsFoundOnlyWhereSomebodyIs)
{
    EXPECT_EQ(look("console-agent").state, State::Fine);
    console->user = ConsoleUser::User{"anna", 1000};
    expectWrong("console-agent", "anna is at the console",
                "systemctl --user --machine=anna@ start dozely-agent");
}

TEST_F(DoctorTest, ADamagedStoreIsFound)
{
    file("/Library/Preferences/com.dozely.plist", "no property list");
    expectWrong("store", "cannot be used", "mv ");
    EXPECT_EQ(look("schedules").state, State::Unknown);
}

TEST_F(DoctorTest, AStoreThatOthersMayWriteIsFound)
{
    addSchedule({{"Program", "/bin/true"}});
    EXPECT_EQ(look("store").state, State::Fine);
    chmod("/Library/Preferences/com.dozely.plist", 0666);
    expectWrong("store", "is not believed", "chmod 644");
}

TEST_F(DoctorTest, APlaceThatIsMissingOrOfAnotherKindIsFound)
{
    const QList<std::pair<const char *, const char *>> folders{
        {"record-folder", "/var/lib/dozely"},
        {"socket-folder", "/private/var/tmp/com.dozely"},
        {"events-folder", "/private/var/tmp/com.dozely.events"},
        {"store-folder", "/Library/Preferences"},
        {"library-folder", "/Library"}};
    for (const auto &[check, path] : folders) {
        ASSERT_TRUE(QDir(root.join(path)).removeRecursively()) << path;
        expectWrong(check, "is not there", "");
        file(path, "");
        expectWrong(check, "is no folder", "rm '");
    }
    EXPECT_TRUE(QFile::remove(root.join("/var/log/dozely.log")));
    expectWrong("log-file", "is not there", "systemd-tmpfiles");
    root.makeFolder("/var/log/dozely.log");
    expectWrong("log-file", "is no regular file", "rm '");
}

TEST_F(DoctorTest, AnEntryThatIsNoScheduleIsFound)
{
    file("/Library/Preferences/com.dozely.plist",
         "<plist><dict><key>Schedule "
         "Array</key><array><dict><key>Name</key><string>Odd</string></dict></array>"
         "</dict></plist>");
    expectWrong("store", "Odd", "Mend these entries");
}

TEST_F(DoctorTest, AScheduleOfWhichNothingCanComeIsFound)
{
    EXPECT_TRUE(QDir(root.join("/Library/Application Support/Dozely/PlugIns")).rmdir("Command.plugin"));
    addSchedule({});
    expectWrong("schedules", "Backup", "dozely-admin change");
    EXPECT_TRUE(ScheduleStore::edit([](QList<Schedule> &schedules) {
        schedules[0].isEnabled = false;
        return true;
    }));
    EXPECT_EQ(look("schedules").state, State::Fine);
}

TEST_F(DoctorTest, ARestThatCanNeverComeIsFound)
{
    file("/Library/Application Support/Dozely/PlugIns/Command.plugin/Contents/Info.plist",
         "<plist><dict><key>WDDaemonModule</key><string>x.so</string></dict></plist>");
    addSchedule({{"Program", "/bin/true"}}, AfterAction::Sleep);
    expectWrong("schedules", "is to put the machine to rest afterwards, and does not wake it", "");
    for (const char *wish : {"Needs Wake Up", "Needs Startup"}) {
        addSchedule({{"Program", "/bin/true"}, {wish, 1}}, AfterAction::Sleep);
        EXPECT_EQ(look("schedules").state, State::Fine) << wish;
        addSchedule({{"Program", "/bin/true"}, {wish, 2}}, AfterAction::Sleep);
        expectWrong("schedules", "does not wake it", "");
    }
}

TEST_F(DoctorTest, AClockThatIsNotSynchronisedIsFound)
{
    clock->synchronised = false;
    expectWrong("clock", "Nothing keeps the clock right", "timedatectl set-ntp true");
}

TEST_F(DoctorTest, OldZoneDataAreFound)
{
    EXPECT_EQ(look("zone-data").text, "The data of the time zones are those of 2025b.");
    file("/usr/share/zoneinfo/tzdata.zi", "# version 2024b\n");
    expectWrong("zone-data", "are those of 2024b", "apt install --only-upgrade tzdata");
    file("/usr/share/zoneinfo/tzdata.zi", "what?\n");
    EXPECT_EQ(look("zone-data").state, State::Unknown);
}

TEST_F(DoctorTest, AMachineThatNothingWakesIsFoundOnlyWhereItMatters)
{
    power->theAlarm.reset();
    EXPECT_EQ(look("wake-clock").state, State::Fine);
    addSchedule({{"Needs Wake Up", 1}});
    expectWrong("wake-clock", "as \"Backup\" asks for", "--no-wake");
}

TEST_F(DoctorTest, AnAlarmThatTheFirmwareDropsIsFound)
{
    EXPECT_EQ(look("alarm").state, State::Fine);
    power->fault = "The alarm of rtc0 was set and read back as nothing.";
    expectWrong("alarm", "read back as nothing", "firmware's settings");
    power->fault.clear();
    power->events = {{clock->currentDate().addSecs(3600), "com.dozely", "wake"}};
    expectWrong("alarm", "is not armed", "systemctl restart dozelyd");
    power->theAlarm->armedFor = power->events.constFirst().time;
    EXPECT_EQ(look("alarm").state, State::Fine);
}
