// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusService.h"

#include "DozelyKit/core/foundation/linux/FolderWatch_p.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <gtest/gtest.h>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
constexpr char addressVariable[] = "DBUS_SYSTEM_BUS_ADDRESS";
constexpr char nowhere[] = "unix:path=/nonexistent/bus";
constexpr char busService[] = "org.freedesktop.DBus";
constexpr char busPath[] = "/org/freedesktop/DBus";
constexpr char path[] = "/com/dozely/Test";
constexpr char interface[] = "com.dozely.Test";
constexpr char name[] = "com.dozely.Test.Service";

/// Does something with the name on the bus: RequestName, ReleaseName.
bool ask(BusConnection &connection, const QByteArray &operation, const QByteArray &signature,
         const QVariantList &arguments)
{
    return connection
        .call({busService, busPath, busService, operation}, signature, arguments, QDeadlineTimer(10s))
        .ok();
}

bool own(BusConnection &connection)
{
    constexpr quint32 takesAndGivesWithoutQueue = 7;
    return ask(connection, "RequestName", "su", {QString(name), takesAndGivesWithoutQueue});
}

class BusServiceTest : public testing::Test
{
protected:
    ~BusServiceTest() override { qunsetenv(addressVariable); }

    void startBus()
    {
        bus = std::make_unique<PrivateBus>();
        ASSERT_TRUE(bus->isRunning());
        address = bus->address().toUtf8();
    }

    /// Waits for so many words of the service, and takes them.
    QStringList told(qsizetype count)
    {
        EXPECT_TRUE(waitUntil([&] { return words.size() >= count; }));
        return std::exchange(words, {});
    }

    void isAway(BusService::Absence why, const QString &text)
    {
        switch (why) {
        case BusService::Absence::NoBus:
            words += text.isEmpty() ? "no bus, and no reason" : "no bus";
            break;
        case BusService::Absence::BusLost:
            words += "bus lost";
            break;
        case BusService::Absence::NotRunning:
            words += "not running";
            break;
        case BusService::Absence::Ended:
            words += "ended";
            break;
        }
    }

    std::unique_ptr<PrivateBus> bus;
    QByteArray address;
    QStringList words;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    BusService service{BusConnection::Bus::System,
                       name,
                       {.opened = [this] { words += "opened"; },
                        .isThere = [this](const QByteArray &owner) { words += "there " + owner; },
                        .isAway = [this](auto why, const QString &text) { isAway(why, text); }}};
};
} // namespace

TEST_F(BusServiceTest, TellsWhoseTheNameIs)
{
    startBus();
    ASSERT_TRUE(service.open().ok());
    EXPECT_FALSE(service.owner()) << "the bus has not told it yet";
    EXPECT_EQ(told(2), QStringList({"opened", "not running"}));
    EXPECT_EQ(service.owner(), QByteArray(""));

    auto first = BusConnection::open(BusConnection::Bus::System).value();
    ASSERT_TRUE(own(*first));
    EXPECT_EQ(told(1), QStringList("there " + first->uniqueName()));
    EXPECT_TRUE(service.isThere());
    const auto second = BusConnection::open(BusConnection::Bus::System).value();
    ASSERT_TRUE(own(*second));
    EXPECT_EQ(told(1), QStringList("there " + second->uniqueName())); // and not that the first has gone
    first.reset();
    ASSERT_TRUE(ask(*second, "ReleaseName", "s", {QString(name)}));
    EXPECT_EQ(told(1), QStringList("ended"));
    EXPECT_FALSE(service.isThere());
}

TEST_F(BusServiceTest, HearsItsOwnerAlone)
{
    startBus();
    EXPECT_FALSE(service.subscribe(path, interface, "Number", [](const auto &) {})) << "there is no bus";
    const auto owner = BusConnection::open(BusConnection::Bus::System).value();
    const auto stranger = BusConnection::open(BusConnection::Bus::System).value();
    ASSERT_TRUE(own(*owner));
    ASSERT_TRUE(service.open().ok());
    std::vector<int> numbers;
    const auto subscription =
        service.subscribe(path, interface, "Number", [&](const BusConnection::Signal &signal) {
            numbers.push_back(signal.arguments.value(0).toInt());
        });
    told(2);
    ASSERT_TRUE(ask(*service.bus(), "GetId", "", {})); // the bus has heard of the subscription
    ASSERT_TRUE(stranger->emitSignal(path, interface, "Number", "i", {1}));
    ASSERT_TRUE(ask(*stranger, "GetId", "", {}));
    ASSERT_TRUE(owner->emitSignal(path, interface, "Number", "i", {2}));
    ASSERT_TRUE(waitUntil([&] { return !numbers.empty(); }));
    EXPECT_EQ(numbers, std::vector{2});
}

TEST_F(BusServiceTest, TriesAgainAfterLongerAndLongerPausesWhenItIsKept)
{
    qputenv(addressVariable, nowhere);
    service.keepOpen(clock);
    QList<std::chrono::milliseconds> pauses;
    for (int i = 0; i < 8; ++i) {
        ASSERT_EQ(told(1), QStringList("no bus"));
        ASSERT_EQ(clock->pendingDelays().size(), 1);
        pauses += clock->pendingDelays().constFirst();
        clock->advance(pauses.constLast() - 1ms);
        ASSERT_TRUE(words.isEmpty());
        clock->advance(1ms);
    }
    EXPECT_EQ(pauses, (QList<std::chrono::milliseconds>{1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s}));
}

TEST_F(BusServiceTest, BeginsWithTheShortestPauseOnceTheServiceHasBeenThere)
{
    qputenv(addressVariable, nowhere);
    service.keepOpen(clock);
    clock->advance(1h);
    words.clear();
    startBus();
    auto owner = BusConnection::open(BusConnection::Bus::System).value();
    ASSERT_TRUE(own(*owner));
    clock->advance(60s);
    EXPECT_EQ(told(2), QStringList({"opened", "there " + owner->uniqueName()}));
    bus->stop();
    EXPECT_EQ(told(2), QStringList({"ended", "bus lost"}));
    EXPECT_FALSE(service.bus());
    EXPECT_FALSE(service.owner());
    EXPECT_EQ(clock->pendingDelays(), QList<std::chrono::milliseconds>{1s});
}

TEST_F(BusServiceTest, StaysAwayWhenNobodyKeepsItOpen)
{
    qputenv(addressVariable, nowhere);
    EXPECT_FALSE(service.open().ok());
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
    service.keepOpen(clock);
    service.stopKeeping();
    EXPECT_EQ(told(2), QStringList({"no bus", "no bus"}));
    clock->advance(1h);
    EXPECT_TRUE(words.isEmpty());
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
}

TEST_F(BusServiceTest, OpensAnotherConnectionAfterOneThatWasGivenUp)
{
    startBus();
    service.keepOpen(clock);
    EXPECT_EQ(told(2), QStringList({"opened", "not running"}));
    service.close();
    EXPECT_EQ(told(1), QStringList("bus lost"));
    EXPECT_FALSE(service.bus());
    ASSERT_TRUE(service.open().ok());
    clock->advance(1h); // the attempt that was put off finds it open
    EXPECT_EQ(told(2), QStringList({"opened", "not running"}));
}

TEST_F(BusServiceTest, IsOpenedAgainAsSoonAsTheSocketIsThereHoweverLongThePausesAre)
{
    startBus();
    service.keepOpen(clock);
    EXPECT_EQ(told(2), QStringList({"opened", "not running"}));
    bus->stop();
    EXPECT_EQ(told(1), QStringList("bus lost"));
    clock->advance(1h); // by now it waits for a minute
    words.clear();
    bus->restart();
    std::chrono::milliseconds passed{0};
    ASSERT_TRUE(waitUntil([&] {
        clock->advance(5ms);
        passed += 5ms;
        return words.contains("opened");
    }));
    EXPECT_LE(passed, 500ms);
    words.clear();
    clock->advance(1h); // an attempt that was put off before finds it open
    EXPECT_FALSE(words.contains("opened"));
}

TEST_F(BusServiceTest, IsOpenedAgainSoonWhenAnotherBusIsThereBeforeTheLossIsNoticed)
{
    startBus();
    service.keepOpen(clock);
    EXPECT_EQ(told(2), QStringList({"opened", "not running"}));
    bus->restart(); // no event loop runs meanwhile
    EXPECT_EQ(told(1), QStringList("bus lost"));
    EXPECT_EQ(clock->pendingDelays(), QList<std::chrono::milliseconds>{50ms});
    clock->advance(50ms);
    EXPECT_EQ(told(1).value(0), "opened");
}

TEST_F(BusServiceTest, IsOpenedAsSoonAsThereIsABusWhereThereWasNone)
{
    startBus();
    bus->stop();
    service.keepOpen(clock);
    EXPECT_EQ(told(1), QStringList("no bus"));
    bus->restart();
    ASSERT_TRUE(waitUntil([&] {
        clock->advance(5ms);
        return words.contains("opened");
    }));
}

TEST_F(BusServiceTest, DoesNotTryForTheSakeOfOtherFilesBesideTheSocket)
{
    startBus();
    bus->stop();
    service.keepOpen(clock);
    told(1);
    const QString folder =
        QFileInfo(QString::fromUtf8(BusConnection::socketPath(BusConnection::Bus::System))).path();
    int seen = 0;
    const FolderWatch watch(folder.toUtf8(), [&](const auto &) { ++seen; });
    QFile other(folder + "/other");
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    QFile::remove(folder + "/bus"); // the bus leaves it, or does not
    QFile noSocket(folder + "/bus");
    ASSERT_TRUE(noSocket.open(QIODevice::WriteOnly));
    ASSERT_TRUE(waitUntil([&] { return seen > 0; }));
    EXPECT_TRUE(words.isEmpty());
    EXPECT_EQ(clock->pendingDelays(), QList<std::chrono::milliseconds>{1s});
    noSocket.remove();
}

TEST(BusSocket, IsTheFirstFileOfTheAddress)
{
    const auto system = [](const QByteArray &address) {
        qputenv(addressVariable, address);
        return BusConnection::socketPath(BusConnection::Bus::System);
    };
    EXPECT_EQ(system("unix:path=/a/b"), "/a/b");
    EXPECT_EQ(system("unix:guid=1,path=/a%20b,x=y"), "/a b");
    EXPECT_EQ(system("tcp:host=a;unix:abstract=/x;unix:path=/c;unix:path=/d"), "/c");
    EXPECT_EQ(system("unix:abstract=/x"), "");
    EXPECT_EQ(system(""), "/run/dbus/system_bus_socket");
    qunsetenv(addressVariable);
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/run/user/1");
    EXPECT_EQ(BusConnection::socketPath(BusConnection::Bus::Session), "/run/user/1/bus");
    qunsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(BusConnection::socketPath(BusConnection::Bus::Session), "");
}
