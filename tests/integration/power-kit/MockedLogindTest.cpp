// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "DozelyKit/system/power/linux/LogindPower_p.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <gmock/gmock.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
constexpr char service[] = "org.freedesktop.login1";
constexpr char path[] = "/org/freedesktop/login1";
} // namespace

/// The power manager with a login manager that somebody else wrote for tests, and that can be made to fail.
class MockedLogindTest : public testing::Test
{
protected:
    MockedLogindTest()
    {
        NSProcessInfo::setProcessName("dozelyd");
        Port<Clock>::current() = clock;
        Port<SystemPower>::current() = power;
    }
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        connection = BusConnection::open(BusConnection::Bus::System).value();
        ASSERT_TRUE(connection);
    }

    void startLogind() { ASSERT_TRUE(bus.startMock("logind", service)); }
    bool mock(const QString &method, const QStringList &arguments)
    {
        return bus.call(service, path, "org.freedesktop.DBus.Mock." + method, arguments);
    }
    bool announce(const QString &signal, bool begins)
    {
        return mock("EmitSignal", {"org.freedesktop.login1.Manager", signal, "b",
                                   QString("[<%1>]").arg(begins ? "true" : "false")});
    }
    /// Makes an operation raise an error, or, without one, return `code`'s value.
    bool replace(const QString &method, const QString &in, const QString &out, const QString &code)
    {
        return mock("AddMethod", {"org.freedesktop.login1.Manager", method, in, out, code});
    }
    int locks()
    {
        const auto list = connection->call(
            {service, path, "org.freedesktop.login1.Manager", "ListInhibitors"}, "", {}, QDeadlineTimer(10s));
        return list ? int(list->value(0).toList().size()) : -1;
    }
    QStringList log() const
    {
        QStringList lines = root.logLines();
        for (QString &line : lines)
            line = line.section(": ", 1);
        return lines;
    }

    ScratchRoot root;
    PrivateBus bus;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<LogindPower> power = std::make_shared<LogindPower>();
    std::unique_ptr<BusConnection> connection;
};

TEST_F(MockedLogindTest, HoldsItsLockUntilTheMachineMaySleepAndAgainWhenItWoke)
{
    startLogind();
    ZDRPowerManager::sharedInstance();
    ASSERT_TRUE(waitUntil([this] { return locks() == 1; }));
    ASSERT_TRUE(announce("PrepareForSleep", true));
    ASSERT_TRUE(waitUntil([this] { return locks() == 0; }));
    ASSERT_TRUE(announce("PrepareForSleep", false));
    ASSERT_TRUE(waitUntil([this] { return locks() == 1; }));
    ASSERT_TRUE(announce("PrepareForShutdown", true));
    ASSERT_TRUE(waitUntil([this] { return locks() == 0; }));
}

TEST_F(MockedLogindTest, ARefusedLockIsTakenWhenTheOperationIsOver)
{
    startLogind();
    ASSERT_TRUE(replace("Inhibit", "ssss", "h",
                        "raise dbus.exceptions.DBusException('busy', "
                        "name='org.freedesktop.login1.OperationInProgress')"));
    int asked = 0;
    const auto watch =
        connection->subscribe({service, path, "org.freedesktop.DBus.Mock", "MethodCalled", "Inhibit"},
                              [&](const BusConnection::Signal &) { ++asked; });
    ASSERT_EQ(locks(), 0); // the bus has heard of the subscription
    ZDRPowerManager::sharedInstance();
    ASSERT_TRUE(waitUntil([&] { return asked == 1; }));
    ASSERT_TRUE(announce("PrepareForSleep", false));
    ASSERT_TRUE(waitUntil([&] { return asked == 2; }));
    EXPECT_THAT(log().filter("refuses"), IsEmpty());
    EXPECT_FALSE(power->holdsDelayLock());
}

TEST_F(MockedLogindTest, ALockThatIsDeniedIsLogged)
{
    startLogind();
    ASSERT_TRUE(replace("Inhibit", "ssss", "h",
                        "raise dbus.exceptions.DBusException('not you', "
                        "name='org.freedesktop.DBus.Error.AccessDenied')"));
    ZDRPowerManager::sharedInstance();
    ASSERT_TRUE(waitUntil([this] { return !log().isEmpty(); }));
    EXPECT_THAT(log(), ElementsAre("The login manager refuses a lock (sleep:shutdown, \"delay\"): not you"));
}

TEST_F(MockedLogindTest, AnAnswerThatIsNoDescriptorIsNoLock)
{
    startLogind();
    ASSERT_TRUE(replace("Inhibit", "ssss", "s", "ret = 'yes'"));
    int asked = 0;
    const auto watch =
        connection->subscribe({service, path, "org.freedesktop.DBus.Mock", "MethodCalled", "Inhibit"},
                              [&](const BusConnection::Signal &) { ++asked; });
    ASSERT_EQ(locks(), 0); // the bus has heard of the subscription
    ZDRPowerManager::sharedInstance();
    ASSERT_TRUE(waitUntil([&] { return asked == 1; }));
    ASSERT_TRUE(announce("PrepareForSleep", true));
    ASSERT_TRUE(announce("PrepareForSleep", false));
    ASSERT_TRUE(waitUntil([&] { return asked == 2; }));
    EXPECT_FALSE(power->holdsDelayLock());
}

TEST_F(MockedLogindTest, ForcedSleepThatIsRefusedIsLogged)
{
    startLogind();
    ZDRPowerManager::forceSleep();
    EXPECT_THAT(log(), ElementsAre("Mise en veille forcee."));
    ASSERT_TRUE(replace("Suspend", "b", "",
                        "raise dbus.exceptions.DBusException('busy', "
                        "name='org.freedesktop.login1.OperationInProgress')"));
    ZDRPowerManager::forceSleep();
    EXPECT_THAT(log(), ElementsAre("Mise en veille forcee.", "Mise en veille forcee.",
                                   "Erreur lors de la mise en veille forcee"));
}

TEST_F(MockedLogindTest, WithoutALoginManagerForcedSleepLogsItsFirstLineOnly)
{
    ZDRPowerManager::forceSleep();
    EXPECT_THAT(log(), ElementsAre("Mise en veille forcee."));
}

TEST_F(MockedLogindTest, AnAbsentLoginManagerIsLoggedOnce)
{
    ZDRPowerManager::sharedInstance();
    QCoreApplication::processEvents();
    clock->advance(1h);
    EXPECT_THAT(log(),
                ElementsAre("The login manager cannot be reached: sleep and power-off of the machine are not "
                            "noticed until it is there."));
    startLogind();
    ASSERT_TRUE(waitUntil([this] { return locks() == 1; }));
    EXPECT_EQ(log().last(), "The login manager is there again.");
}
