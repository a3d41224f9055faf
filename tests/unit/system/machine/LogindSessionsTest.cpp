// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/LogindSessions_p.h"

#include "support/PrivateBus.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
constexpr char logind[] = "org.freedesktop.login1";
constexpr char session[] = "org.freedesktop.login1.Session";

QDateTime at(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

/// As patient as a mock on a busy machine needs it.
LogindSessions asked()
{
    return LogindSessions(std::chrono::minutes(1));
}

/// A login manager on a private bus. It says of each session that it began 42 microseconds after 1970 began.
class LogindSessionsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        ASSERT_TRUE(bus.startMock("logind", logind));
    }
    using Properties = QList<std::pair<const char *, const char *>>;
    void add(const QString &name, const Properties &properties)
    {
        ASSERT_TRUE(bus.call(logind, "/org/freedesktop/login1", "org.freedesktop.DBus.Mock.AddSession",
                             {name, "seat0", "1001", "alice", "true"}));
        for (const auto &[property, value] : properties)
            ASSERT_TRUE(bus.call(logind, "/org/freedesktop/login1/session/" + name,
                                 "org.freedesktop.DBus.Properties.Set", {session, property, value}));
    }
    /// When the only session was used last, as it is told.
    std::optional<QDateTime> unusedSince()
    {
        const auto sessions = asked().current();
        EXPECT_TRUE(sessions && sessions->size() == 1);
        return sessions && sessions->size() == 1 ? sessions->first().unusedSince : std::nullopt;
    }

    PrivateBus bus;
};
} // namespace

TEST_F(LogindSessionsTest, AreNoneWhereNobodyIsLoggedIn)
{
    const auto sessions = asked().current();
    ASSERT_TRUE(sessions);
    EXPECT_TRUE(sessions->isEmpty());
}

TEST_F(LogindSessionsTest, HaveAUserAndABeginning)
{
    add("c1", {{"Timestamp", "<uint64 1000000000>"}});
    const auto sessions = asked().current();
    ASSERT_TRUE(sessions && sessions->size() == 1);
    EXPECT_EQ(sessions->first().user, "alice");
    EXPECT_EQ(sessions->first().began, at(1000));
}

TEST_F(LogindSessionsTest, OfADesktopAreUnusedSinceItSaysThatItIsIdle)
{
    add("c1", {{"Type", "<'wayland'>"}, {"IdleHint", "<true>"}, {"IdleSinceHint", "<uint64 2000000000>"}});
    EXPECT_EQ(unusedSince(), at(2000));
}

TEST_F(LogindSessionsTest, OfADesktopThatIsNotIdleOrNeverSaysSoAreInUse)
{
    add("c1", {{"Type", "<'x11'>"}, {"IdleHint", "<false>"}, {"IdleSinceHint", "<uint64 2000000000>"}});
    EXPECT_FALSE(unusedSince());
}

TEST_F(LogindSessionsTest, ThatAreIdleSinceNobodyKnowsWhenAreInUse)
{
    add("c1", {{"Type", "<'x11'>"}, {"IdleHint", "<true>"}});
    EXPECT_FALSE(unusedSince());
}

TEST_F(LogindSessionsTest, OfATerminalAreUnusedSinceItsLatestInput)
{
    add("c1", {{"Type", "<'tty'>"}, {"IdleHint", "<false>"}, {"IdleSinceHint", "<uint64 2000000000>"}});
    EXPECT_EQ(unusedSince(), at(2000));
}

TEST_F(LogindSessionsTest, OfATerminalWithoutAnInputTimeAreInUse)
{
    add("c1", {{"Type", "<'tty'>"}});
    EXPECT_FALSE(unusedSince());
}

TEST_F(LogindSessionsTest, ThatEndAreUnused)
{
    add("c1", {{"Type", "<'x11'>"}, {"State", "<'closing'>"}, {"Timestamp", "<uint64 1000000000>"}});
    EXPECT_EQ(unusedSince(), at(1000));
}

TEST_F(LogindSessionsTest, WithoutAPersonDoNotCount)
{
    int number = 0;
    for (const char *const kind : {"<'greeter'>", "<'lock-screen'>", "<'background'>", "<'manager'>"})
        add(QString("c%1").arg(++number), {{"Class", kind}});
    const auto sessions = asked().current();
    ASSERT_TRUE(sessions);
    EXPECT_TRUE(sessions->isEmpty());
}

TEST_F(LogindSessionsTest, AreUnknownWhenOneOfThemIs)
{
    add("c1", {});
    add("c2", {{"Timestamp", "<uint64 0>"}});
    EXPECT_FALSE(asked().current());
}

TEST(LogindSessions, AreUnknownWithoutALoginManager)
{
    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    EXPECT_FALSE(asked().current());
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    EXPECT_FALSE(asked().current());
}
