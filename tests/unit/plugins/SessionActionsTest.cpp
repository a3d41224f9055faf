// SPDX-License-Identifier: MIT
// Open, Message, LockScreen and LogOut as built, on buses of the test's own.
#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/plugin/WDPlugInFactory.h"
#include "DozelyKit/system/alerts/WDUserNotificationCenterDelegate.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <csignal>
#include <gmock/gmock.h>

using namespace dozely;

using testing::HasSubstr;
using testing::UnorderedElementsAre;

namespace
{
constexpr char login[] = "org.freedesktop.login1";
constexpr char loginPath[] = "/org/freedesktop/login1";
constexpr char mock[] = "org.freedesktop.DBus.Mock";
} // namespace

class SessionActionsTest : public testing::Test
{
protected:
    SessionActionsTest()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8()); // one bus is both
        qunsetenv("XDG_SESSION_ID");
        qunsetenv("INVOCATION_ID");
        control = BusConnection::open(BusConnection::Bus::System).value();
    }
    void load(const QString &name)
    {
        const auto bundle = NSBundle::bundleWithPath(QString(PLUG_INS "/%1.plugin").arg(name));
        const auto module = bundle->loadModule(
            bundle->objectForInfoDictionaryKey("WDUserAgentModule").toString(), WDPlugInFactory_iid);
        ASSERT_TRUE(module) << qPrintable(module.error().text);
        const std::shared_ptr<WDPlugIn> made =
            qobject_cast<WDPlugInFactory *>(*module)->makeForRole("WDUserAgentModule");
        plugIn = std::dynamic_pointer_cast<WDUserAgentPlugIn>(made);
        ASSERT_TRUE(plugIn);
        plugIn->setBundle(bundle);
    }
    bool isActing() const
    {
        bool acting = false;
        EXPECT_TRUE(QMetaObject::invokeMethod(plugIn.get(), "isActing", Q_RETURN_ARG(bool, acting)));
        return acting;
    }
    QString failure() const
    {
        QString failure;
        EXPECT_TRUE(QMetaObject::invokeMethod(plugIn.get(), "failure", Q_RETURN_ARG(QString, failure)));
        int status = 0;
        EXPECT_TRUE(QMetaObject::invokeMethod(plugIn.get(), "exitStatus", Q_RETURN_ARG(int, status)));
        EXPECT_EQ(status, failure.isEmpty() ? 0 : -1);
        return failure;
    }
    /// Acts until it is over; why it failed, empty when it did not.
    QString act(const QVariantMap &parameters = {})
    {
        plugIn->setParameters(parameters);
        plugIn->actInUserAgent();
        EXPECT_TRUE(waitUntil([this] { return !isActing(); }));
        return failure();
    }
    /// A service that takes any call of `method`.
    void startService(const QString &name, const QString &path, const QString &interface,
                      const QString &method, const QString &in = {}, const QString &code = {})
    {
        ASSERT_TRUE(bus.startService("/usr/bin/python3",
                                     {"-m", "dbusmock", "--system", "-l", "/dev/null", name, path, interface},
                                     name));
        ASSERT_TRUE(bus.call(name, path, QString(mock) + ".AddMethod", {interface, method, in, "", code}));
    }
    void startLogin()
    {
        ASSERT_TRUE(bus.startMock("logind", login));
        ASSERT_TRUE(bus.call(login, loginPath, QString(mock) + ".AddSeat", {"seat0"}));
        ASSERT_TRUE(bus.call(login, loginPath, QString(mock) + ".AddSession",
                             {"c7", "seat0", QString::number(::getuid()), "anna", "true"}));
    }
    /// The login manager knows where this user's desktop is.
    void giveTheUserADesktop()
    {
        ASSERT_TRUE(bus.call(login, loginPath, QString(mock) + ".AddObject",
                             {"/desk", "org.freedesktop.login1.User",
                              QString("{'Display': <('c7', objectpath '%1')>}").arg(sessionPath), "[]"}));
        ASSERT_TRUE(bus.call(
            login, loginPath, QString(mock) + ".AddMethod",
            {"org.freedesktop.login1.Manager", "GetUser", "u", "o", "ret = dbus.ObjectPath('/desk')"}));
    }
    /// How often an object was called so.
    qsizetype calls(const QByteArray &service, const QByteArray &path, const QString &method)
    {
        return callsOf(service, path, method).size();
    }
    QVariantList callsOf(const QByteArray &service, const QByteArray &path, const QString &method)
    {
        const auto reply =
            control->call({service, path, mock, "GetMethodCalls"}, "s", {method}, QDeadlineTimer(20'000));
        EXPECT_TRUE(reply) << qPrintable(reply.error().text);
        return BusConnection::firstOf(reply).toList();
    }
    static constexpr char sessionPath[] = "/org/freedesktop/login1/session/c7";

    ScratchRoot root;
    PrivateBus bus;
    std::unique_ptr<BusConnection> control;
    std::shared_ptr<WDUserAgentPlugIn> plugIn;
};

TEST_F(SessionActionsTest, LocksTheSessionThatTheEnvironmentNames)
{
    startLogin();
    qputenv("XDG_SESSION_ID", "c7");
    load("LockScreen");
    EXPECT_EQ(act(), QString());
    EXPECT_EQ(calls(login, sessionPath, "Lock"), 1);
}

TEST_F(SessionActionsTest, LocksTheSessionWithTheUsersDesktopWhereNoneIsNamed)
{
    startLogin();
    giveTheUserADesktop();
    load("LockScreen");
    EXPECT_EQ(act(), QString());
    EXPECT_EQ(calls(login, sessionPath, "Lock"), 1);
}

TEST_F(SessionActionsTest, LocksTheSessionWithTheUsersDesktopWhereTheOneThatIsNamedIsGone)
{
    startLogin();
    giveTheUserADesktop();
    ASSERT_TRUE(bus.call(login, loginPath, QString(mock) + ".AddMethod",
                         {"org.freedesktop.login1.Manager", "GetSession", "s", "o",
                          "raise dbus.exceptions.DBusException('No session ' + args[0], "
                          "name='org.freedesktop.login1.NoSuchSession')"}));
    qputenv("XDG_SESSION_ID", "c9");
    load("LockScreen");
    EXPECT_EQ(act(), QString());
    EXPECT_EQ(calls(login, sessionPath, "Lock"), 1);
}

TEST_F(SessionActionsTest, AsksTheDesktopsOwnLockerToo)
{
    startService("org.mate.ScreenSaver", "/org/mate/ScreenSaver", "org.mate.ScreenSaver", "Lock");
    load("LockScreen");
    EXPECT_EQ(act(), QString()) << "though there is no login manager";
    EXPECT_EQ(calls("org.mate.ScreenSaver", "/org/mate/ScreenSaver", "Lock"), 1);
}

TEST_F(SessionActionsTest, AsksTheLockerThatTakesAMessageWithNone)
{
    startService("org.cinnamon.ScreenSaver", "/org/cinnamon/ScreenSaver", "org.cinnamon.ScreenSaver", "Lock",
                 "s");
    load("LockScreen");
    EXPECT_EQ(act(), QString());
    const QVariantList made = callsOf("org.cinnamon.ScreenSaver", "/org/cinnamon/ScreenSaver", "Lock");
    ASSERT_EQ(made.size(), 1);
    EXPECT_EQ(made[0].toList().value(1).toList(), QVariantList{""});
}

TEST_F(SessionActionsTest, SaysThatNobodyLocksTheScreen)
{
    load("LockScreen");
    const std::string why = act().toStdString();
    EXPECT_THAT(why, HasSubstr("the screen was not locked: "));
    EXPECT_THAT(why, HasSubstr("; no program of the desktop that does it runs here"));
    EXPECT_THAT(root.logContent().toStdString(), HasSubstr("LockScreen: the screen was not locked"));
}

TEST_F(SessionActionsTest, LogsOutByTheDesktopAndLeavesTheRestToIt)
{
    startLogin();
    qputenv("XDG_SESSION_ID", "c7");
    startService("org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager",
                 "Logout", "u");
    load("LogOut");
    EXPECT_EQ(act(), QString());
    const QVariantList made = callsOf("org.gnome.SessionManager", "/org/gnome/SessionManager", "Logout");
    ASSERT_EQ(made.size(), 1);
    EXPECT_EQ(made[0].toList().value(1).toList(), QVariantList{1U}) << "without a question of its own";
    EXPECT_EQ(calls(login, sessionPath, "Terminate"), 0);
}

TEST_F(SessionActionsTest, EndsTheSessionAfterAMinuteOfObjectionsWhereThatIsForced)
{
    const auto clock = std::make_shared<FakeClock>();
    startLogin();
    qputenv("XDG_SESSION_ID", "c7");
    startService("org.xfce.SessionManager", "/org/xfce/SessionManager", "org.xfce.Session.Manager", "Logout",
                 "bb");
    load("LogOut");
    Port<Clock>::current() = clock;
    plugIn->setParameters(QVariantMap{{"Force", 1}});
    plugIn->actInUserAgent();
    const auto isAsked = [&] {
        return calls("org.xfce.SessionManager", "/org/xfce/SessionManager", "Logout") == 1;
    };
    ASSERT_TRUE(waitUntil(isAsked));
    const QVariantList made =
        callsOf("org.xfce.SessionManager", "/org/xfce/SessionManager", "Logout")[0].toList();
    EXPECT_EQ(made.value(1).toList(), (QVariantList{false, true})) << "no question, and programs may save";
    // Its answer may still be on its way: the minute begins with it.
    ASSERT_TRUE(waitUntil([&] {
        clock->advance(std::chrono::seconds(59));
        clock->advance(std::chrono::seconds(1));
        return !isActing();
    }));
    EXPECT_EQ(failure(), QString());
    EXPECT_EQ(calls(login, sessionPath, "Terminate"), 1);
}

TEST_F(SessionActionsTest, EndsTheSessionByTheLoginManagerWhereNoDesktopCanBeAsked)
{
    startLogin();
    qputenv("XDG_SESSION_ID", "c7");
    load("LogOut");
    EXPECT_EQ(act(), QString());
    EXPECT_EQ(calls(login, sessionPath, "Terminate"), 1);
    EXPECT_THAT(root.logContent().toStdString(),
                HasSubstr("LogOut: the session is ended by the login manager: no program of the desktop"));
}

TEST_F(SessionActionsTest, SaysThatNobodyEndsTheSession)
{
    load("LogOut");
    EXPECT_THAT(act().toStdString(), testing::StartsWith("the session was not ended: "));
}

TEST_F(SessionActionsTest, SaysThatTheUserHasNoSessionWithADesktop)
{
    startLogin();
    ASSERT_TRUE(
        bus.call(login, loginPath, QString(mock) + ".AddObject",
                 {"/desk", "org.freedesktop.login1.User", "{'Display': <('', objectpath '/')>}", "[]"}));
    ASSERT_TRUE(
        bus.call(login, loginPath, QString(mock) + ".AddMethod",
                 {"org.freedesktop.login1.Manager", "GetUser", "u", "o", "ret = dbus.ObjectPath('/desk')"}));
    load("LockScreen");
    EXPECT_THAT(act().toStdString(),
                HasSubstr("the login manager knows no session of this user with a desktop; "));
}

TEST_F(SessionActionsTest, CancelTheirOccurrenceWhenTheAlertsButtonIsPressed)
{
    for (const QString name : {"Open", "Message", "LockScreen", "LogOut"}) {
        load(name);
        const auto multiplexer = WDUserNotificationCenterDelegate::sharedInstance();
        multiplexer->setDelegateForUserNotification(plugIn, plugIn->userNotification());
        const qsizetype before = root.logContent().count("cancelEvent impossible");
        multiplexer->userNotificationCenterDidActivateNotification(nullptr, plugIn->userNotification());
        EXPECT_EQ(root.logContent().count("cancelEvent impossible"), before + 1)
            << qPrintable(name) << " has no date to cancel here";
    }
}

TEST_F(SessionActionsTest, ShowsAMessageWithItsSound)
{
    ASSERT_TRUE(bus.startMock("notification_daemon", "org.freedesktop.Notifications"));
    load("Message");
    plugIn->setProperty("scheduleName", "Tea");
    EXPECT_EQ(act({{"Text", "It is ready."}, {"Sound", "complete"}}), QString());
    const QVariantList made =
        callsOf("org.freedesktop.Notifications", "/org/freedesktop/Notifications", "Notify");
    ASSERT_EQ(made.size(), 1);
    const QVariantList arguments = made[0].toList().value(1).toList();
    EXPECT_EQ(arguments.value(3), "Tea");
    EXPECT_EQ(arguments.value(4), "It is ready.");
    EXPECT_TRUE(arguments.value(5).toList().isEmpty()) << "no button";
    EXPECT_EQ(arguments.value(6).toMap().value("sound-name"), "complete");
    EXPECT_EQ(act({{"Text", "Again."}, {"Title", "Now"}}), QString());
    const QVariantList again =
        callsOf("org.freedesktop.Notifications", "/org/freedesktop/Notifications", "Notify")[1]
            .toList()
            .value(1)
            .toList();
    EXPECT_EQ(again.value(3), "Now");
    EXPECT_FALSE(again.value(6).toMap().contains("sound-name"));
}

TEST_F(SessionActionsTest, SaysThatAMessageWasNotShown)
{
    load("Message");
    EXPECT_EQ(act(), "nothing was shown, the parameter \"Text\" is missing");
    EXPECT_EQ(act({{"Text", "Hello"}}), "the text was not shown, nothing here shows notifications");
}

/// Open, with a stand-in for xdg-open that writes down what it is to open.
class OpenTest : public SessionActionsTest
{
protected:
    OpenTest()
    {
        QDir().mkpath(root.join("/bin"));
        writeProgram("xdg-open", "echo \"$1\" >>\"$OPENED\"\n"
                                 "case $1 in *missing*) exit 2;; *stays*) exec sleep 3600;; esac");
        qputenv("OPENED", root.join("/opened").toUtf8());
        qputenv("PATH", root.join("/bin").toUtf8() + ":/usr/bin:/bin");
        load("Open");
    }
    void writeProgram(const QString &name, const QByteArray &code) const
    {
        QFile file(root.join("/bin/" + name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + code + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString writeFile(const QString &name, const QByteArray &content = {}) const
    {
        QFile file(root.join(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    std::vector<std::string> opened() const
    {
        QFile file(root.join("/opened"));
        std::vector<std::string> lines;
        if (file.open(QIODevice::ReadOnly))
            for (const QByteArray &line : file.readAll().trimmed().split('\n'))
                lines.push_back(line.toStdString());
        return lines;
    }
};

TEST_F(OpenTest, OpensFilesFoldersAndAddressesByTheDesktop)
{
    const QString file = writeFile("/a song.ogg");
    EXPECT_EQ(act({{"Items", QVariantList{file, root.path(), "https://example.org/?a=1&b=$(id)"}}}),
              QString());
    EXPECT_THAT(opened(), UnorderedElementsAre(file.toStdString(), root.path().toStdString(),
                                               "https://example.org/?a=1&b=$(id)"));
}

TEST_F(OpenTest, StartsApplicationsByTheirEntries)
{
    writeProgram("player", "printf '%s\\n' \"$@\" >>\"$OPENED\"");
    const QString entry =
        writeFile("/player.desktop", "Terminal=true\n[Desktop Action New]\nExec=false\n[Desktop Entry]\n"
                                     "Type=Application\nName=Player\n"
                                     "Exec=\\splayer --now %U  \"two words\" \"\" 100%% \n");
    EXPECT_EQ(act({{"Items", QVariantList{entry}}}), QString());
    EXPECT_THAT(opened(), testing::ElementsAre("--now", "two words", "", "100%"));
    QFile::remove(root.join("/opened"));
    QDir().mkpath(root.join("/share/applications"));
    QFile::copy(entry, root.join("/share/applications/org.example.Player.desktop"));
    qputenv("XDG_DATA_DIRS", root.join("/share").toUtf8());
    EXPECT_EQ(act({{"Items", QVariantList{"org.example.Player.desktop"}}}), QString());
    EXPECT_EQ(opened().size(), 4U);
}

TEST_F(OpenTest, OpensWhatCanBeOpenedAndSaysWhatNot)
{
    const QString there = writeFile("/there");
    const QString bad = writeFile("/bad.desktop", "[Desktop Entry]\nType=Link\nURL=https://example.org\n");
    const QString absent = root.join("/absent");
    const std::string why =
        act({{"Items", QVariantList{absent, there, "--help", bad, "xy:missing"}}}).toStdString();
    EXPECT_THAT(why, HasSubstr(absent.toStdString() + " is not there"));
    EXPECT_THAT(why, HasSubstr("\"--help\" is neither an absolute path nor an address"));
    EXPECT_THAT(why, HasSubstr(bad.toStdString() + " describes no application"));
    EXPECT_THAT(why, HasSubstr("xy:missing was not opened: its program ended with status 2"));
    EXPECT_THAT(opened(), UnorderedElementsAre(there.toStdString(), "xy:missing"));
    EXPECT_EQ(act(), "nothing was opened, the parameter \"Items\" is missing or is no list of texts");
}

TEST_F(OpenTest, StartsAnApplicationInItsFolderAndInATerminalWhereItWantsOne)
{
    qputenv("NOTIFY_SOCKET", "the agent's");
    writeProgram("player", "pwd >>\"$OPENED\"; echo \"${NOTIFY_SOCKET-none}\" >>\"$OPENED\"");
    const QString folder = root.makeFolder("/songs");
    const QString entry = writeFile(
        "/player.desktop", "[Desktop Entry]\nType=Application\nExec=player\nPath=" + folder.toUtf8() + "\n");
    EXPECT_EQ(act({{"Items", QVariantList{entry}}}), QString());
    EXPECT_THAT(opened(), testing::ElementsAre(folder.toStdString(), "none"));
    QFile::remove(root.join("/opened"));
    writeProgram("x-terminal-emulator", "printf '%s\\n' \"$@\" >>\"$OPENED\"");
    const QString top =
        writeFile("/top.desktop", "[Desktop Entry]\nType=Application\nExec=top -d 1\nTerminal=true\n");
    EXPECT_EQ(act({{"Items", QVariantList{top}}}), QString());
    EXPECT_THAT(opened(), testing::ElementsAre("-e", "top", "-d", "1"));
    qunsetenv("NOTIFY_SOCKET");
}

TEST_F(OpenTest, SaysWhatIsNotThereAndWhatWasEnded)
{
    const QString entry =
        writeFile("/gone.desktop", "[Desktop Entry]\nType=Application\nExec=no-such-program\n");
    EXPECT_EQ(act({{"Items", QVariantList{entry}}}), "the program no-such-program is not there");
    EXPECT_EQ(act({{"Items", QVariantList{"org.example.None.desktop"}}}),
              "there is no application org.example.None.desktop");
    EXPECT_EQ(act({{"Items", QVariantList{QString("xy:a") + QChar(0)}}}), "an item holds a NUL character");
    writeProgram("xdg-open", "kill -KILL $$");
    EXPECT_EQ(act({{"Items", QVariantList{"xy:z"}}}),
              "xy:z was not opened: its program was ended by signal 9");
}

TEST_F(OpenTest, LetsAnApplicationStayThatGoesOn)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    writeProgram("xdg-open", "echo $$ >\"$OPENED\"; exec sleep 3600");
    plugIn->setParameters(QVariantMap{{"Items", QVariantList{"xy:stays"}}});
    plugIn->actInUserAgent();
    ASSERT_TRUE(waitUntil([this] { return !opened().empty() && !opened().front().empty(); }));
    EXPECT_TRUE(isActing());
    clock->advance(std::chrono::seconds(5));
    EXPECT_FALSE(isActing());
    EXPECT_EQ(failure(), QString());
    const pid_t process = std::stoi(opened().front());
    writeProgram("xdg-open", "exit 2");
    EXPECT_EQ(act({{"Items", QVariantList{"xy:z"}}}), "xy:z was not opened: its program ended with status 2")
        << "that is over as soon as its own programs have ended";
    plugIn.reset();
    EXPECT_EQ(::kill(process, 0), 0) << "it goes on";
    ::kill(process, SIGKILL);
}

TEST_F(OpenTest, PutsItIntoAUnitOfItsOwnWhereItRunsInOne)
{
    writeProgram("systemd-run", "while [ \"$1\" != -- ]; do echo \"$1\" >>\"$OPENED\"; shift; done; shift\n"
                                "exec \"$@\"");
    qputenv("INVOCATION_ID", "0");
    EXPECT_EQ(act({{"Items", QVariantList{"xy:z"}}}), QString());
    EXPECT_THAT(opened(), testing::Contains("--scope"));
    EXPECT_THAT(opened(), testing::Contains("xy:z"));
}
