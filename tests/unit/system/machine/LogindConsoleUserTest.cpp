// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/LogindConsoleUser_p.h"

#include "support/PrivateBus.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <thread>

using namespace dozely;

namespace
{
constexpr char logind[] = "org.freedesktop.login1";
constexpr char session[] = "/org/freedesktop/login1/session/";
constexpr char seat0[] = "/org/freedesktop/login1/seat/seat0";

/// A login manager on a private bus.
class LogindConsoleUserTest : public testing::Test
{
protected:
    void startLogind()
    {
        ASSERT_TRUE(bus.isRunning());
        ASSERT_TRUE(bus.startMock("logind", logind));
    }

    void addSession(const QString &name, const QString &seat, quint32 userId, const QString &user)
    {
        ASSERT_TRUE(bus.call(logind, "/org/freedesktop/login1", "org.freedesktop.DBus.Mock.AddSession",
                             {name, seat, QString::number(userId), user, "true"}));
    }

    void setProperty(const QString &path, const QString &interface, const QString &name, const QString &value)
    {
        ASSERT_TRUE(bus.call(logind, path, "org.freedesktop.DBus.Properties.Set", {interface, name, value}));
    }

    PrivateBus bus;
    LogindConsoleUser console{std::chrono::minutes(1)}; // a mock on a busy machine is slow
};

/// A socket that accepts connections, as far as its queue goes, and never says anything.
class MuteSocket
{
public:
    MuteSocket() : m_descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray path = m_folder.filePath("bus").toUtf8();
        qstrncpy(address.sun_path, path.constData(), sizeof address.sun_path);
        m_listens = ::bind(m_descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0 &&
                    ::listen(m_descriptor, 8) == 0;
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path);
    }
    ~MuteSocket() { ::close(m_descriptor); }
    MuteSocket(const MuteSocket &) = delete;
    MuteSocket &operator=(const MuteSocket &) = delete;
    bool listens() const { return m_listens; }

private:
    QTemporaryDir m_folder;
    int m_descriptor;
    bool m_listens = false;
};
} // namespace

TEST_F(LogindConsoleUserTest, IsTheUserOfTheActiveSessionOnTheMachinesOwnSeat)
{
    startLogind();
    addSession("c1", "seat0", 1001, "alice");
    const auto user = console.current();
    ASSERT_TRUE(user);
    EXPECT_EQ(user->name, "alice");
    EXPECT_EQ(user->userId, 1001U);
}

TEST_F(LogindConsoleUserTest, FollowsASwitchToAnotherUsersSession)
{
    startLogind();
    addSession("c1", "seat0", 1001, "alice");
    ASSERT_EQ(console.current().value_or(ConsoleUser::User{}).name, "alice");
    addSession("c2", "seat0", 1002, "bob");
    EXPECT_EQ(console.current().value_or(ConsoleUser::User{}).userId, 1002U);
    setProperty(seat0, "org.freedesktop.login1.Seat", "ActiveSession",
                QString("<('c1', objectpath '%1c1')>").arg(session));
    EXPECT_EQ(console.current().value_or(ConsoleUser::User{}).userId, 1001U);
}

TEST_F(LogindConsoleUserTest, KnowsTheSuperuserFromNobody)
{
    startLogind();
    addSession("c1", "seat0", 0, "root");
    const auto user = console.current();
    ASSERT_TRUE(user);
    EXPECT_EQ(user->userId, 0U);
    EXPECT_EQ(user->name, "root");
}

TEST_F(LogindConsoleUserTest, IsNobodyWhileAGreeterShows)
{
    startLogind();
    addSession("c1", "seat0", 110, "greeter");
    ASSERT_TRUE(console.current());
    setProperty(QString(session) + "c1", "org.freedesktop.login1.Session", "Class", "<'greeter'>");
    EXPECT_FALSE(console.current());
}

TEST_F(LogindConsoleUserTest, IsNobodyWhileALockScreenOfItsOwnSessionShows)
{
    startLogind();
    addSession("c1", "seat0", 1001, "alice");
    ASSERT_TRUE(console.current());
    setProperty(QString(session) + "c1", "org.freedesktop.login1.Session", "Class", "<'lock-screen'>");
    EXPECT_FALSE(console.current());
}

TEST_F(LogindConsoleUserTest, IsNobodyWhenTheSeatHasNoActiveSession)
{
    startLogind();
    addSession("c1", "seat0", 1001, "alice");
    ASSERT_TRUE(console.current());
    setProperty(seat0, "org.freedesktop.login1.Seat", "ActiveSession", "<('', objectpath '/')>");
    EXPECT_FALSE(console.current());
}

TEST_F(LogindConsoleUserTest, IsNobodyWhenSessionsAreOnOtherSeatsOnly)
{
    startLogind();
    addSession("c1", "seat1", 1001, "alice");
    EXPECT_FALSE(console.current());
}

TEST_F(LogindConsoleUserTest, IsNobodyWhenTheActiveSessionEndsWhileItIsAsked)
{
    startLogind();
    addSession("c1", "seat0", 1001, "alice");
    ASSERT_TRUE(bus.call(logind, "/org/freedesktop/login1", "org.freedesktop.DBus.Mock.RemoveObject",
                         {QString(session) + "c1"}));
    EXPECT_FALSE(console.current());
}

TEST_F(LogindConsoleUserTest, IsNobodyWhenTheUserIdIsOfAnotherType)
{
    startLogind();
    addSession("c1", "seat0", 1001, "alice");
    setProperty(QString(session) + "c1", "org.freedesktop.login1.Session", "User", "<'1001'>");
    EXPECT_FALSE(console.current());
}

TEST_F(LogindConsoleUserTest, IsNobodyWithoutALoginManagerOnTheBus)
{
    ASSERT_TRUE(bus.isRunning());
    EXPECT_FALSE(console.current());
}

TEST_F(LogindConsoleUserTest, IsNobodyWithoutABus)
{
    ASSERT_TRUE(bus.isRunning());
    bus.stop();
    EXPECT_FALSE(console.current());
}

TEST_F(LogindConsoleUserTest, IsFoundAgainOnABusThatWasRestarted)
{
    startLogind();
    addSession("c1", "seat0", 1001, "alice");
    ASSERT_EQ(console.current().value_or(ConsoleUser::User{}).name, "alice");
    bus.stop();
    EXPECT_FALSE(console.current());
    bus.restart();
    startLogind();
    addSession("c1", "seat0", 1002, "bob");
    EXPECT_EQ(console.current().value_or(ConsoleUser::User{}).name, "bob");
}

TEST_F(LogindConsoleUserTest, IsFoundOnABusThatWasRestartedBetweenTwoQuestions)
{
    startLogind();
    addSession("c1", "seat0", 1001, "alice");
    ASSERT_EQ(console.current().value_or(ConsoleUser::User{}).name, "alice");
    bus.stop();
    bus.restart();
    startLogind();
    addSession("c1", "seat0", 1002, "bob");
    EXPECT_EQ(console.current().value_or(ConsoleUser::User{}).name, "bob");
}

TEST_F(LogindConsoleUserTest, MayBeAskedFromOneThreadAfterAnother)
{
    startLogind();
    addSession("c1", "seat0", 1001, "alice");
    ASSERT_TRUE(console.current());
    QString name;
    std::thread([&] { name = console.current().value_or(ConsoleUser::User{}).name; }).join();
    EXPECT_EQ(name, "alice");
    EXPECT_EQ(console.current().value_or(ConsoleUser::User{}).name, "alice");
}

TEST_F(LogindConsoleUserTest, IsNobodyWithinTwoSecondsWhenTheBusStaysMute)
{
    const MuteSocket mute;
    ASSERT_TRUE(mute.listens());
    QElapsedTimer time;
    time.start();
    EXPECT_FALSE(LogindConsoleUser().current());
    EXPECT_GE(time.elapsed(), 1'900);  // it did wait for an answer
    EXPECT_LT(time.elapsed(), 20'000); // and the time-out of authentication, 90 s, did not apply
}
