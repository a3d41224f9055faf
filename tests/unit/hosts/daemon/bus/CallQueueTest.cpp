// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/CallQueue.h"

#include "DozelyKit/core/dbus/BusObject.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <unistd.h>

using namespace dozely;
using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace
{
constexpr char name[] = "com.dozely.Test";
constexpr char path[] = "/com/dozely/Test";
constexpr char xml[] = R"(<node><interface name="com.dozely.Test">
    <method name="Do"><arg type="s" direction="in"/></method>
  </interface></node>)";

/// Callers on a real bus, all of this user; what is served, the test decides.
class CallQueueTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        object = std::make_unique<BusObject>(
            BusConnection::Bus::System, BusObject::Place{name, path, BusDescription::fromXml(xml).value()},
            BusObject::Handlers{.call = [this](const BusCall &call, const QVariantList &arguments) {
                ++arrived;
                queue.add(*object->bus(), call, arguments);
            }});
        object->keepThere(loopClock);
        client = BusConnection::open(BusConnection::Bus::System).value();
        ASSERT_TRUE(waitUntil([this] { return object->bus() && isOwned(*client); }));
    }
    static bool isOwned(BusConnection &asking)
    {
        return asking
            .call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetNameOwner"},
                  "s", {QString(name)}, QDeadlineTimer(10s))
            .ok();
    }

    void send(BusConnection &from, const QString &what)
    {
        from.callLater({name, path, name, "Do"}, "s", {what}, 30s,
                       [this, what](const BusConnection::Reply &reply) {
                           if (!reply)
                               refused += what;
                       });
    }
    void send(const QString &what) { send(*client, what); }
    bool serve(const BusCaller &caller, const BusCall &call, const QVariantList &arguments)
    {
        EXPECT_EQ(caller.user, ::geteuid());
        served += arguments.value(0).toString();
        clock.advance(work);
        if (isReady)
            object->answer(call);
        return isReady;
    }
    /// Waits until it has come so far; no time passes but that which serving takes.
    bool has(const QStringList &expected)
    {
        return waitUntil([&] {
            clock.advance(0ms);
            return served == expected;
        });
    }
    /// Waits until so many calls have come.
    bool arrive(int count)
    {
        return waitUntil([&] { return arrived == count; });
    }
    /// Of two calls of one who is known the first is served, which takes so long.
    void serveOneOfTwo(milliseconds duration)
    {
        send("first");
        ASSERT_TRUE(has({"first"})); // from now on it is known who this is
        work = duration;
        send("a");
        send("b");
        ASSERT_TRUE(arrive(3));
        clock.advance(0ms);
        EXPECT_EQ(served, QStringList({"first", "a"}));
    }

    ScratchRoot root; // has the log
    PrivateBus bus;
    FakeClock clock;
    std::shared_ptr<FakeClock> loopClock = std::make_shared<FakeClock>();
    CallQueue queue{clock, [this](const BusCaller &caller, const BusCall &call,
                                  const QVariantList &arguments) { return serve(caller, call, arguments); }};
    std::unique_ptr<BusObject> object;
    std::unique_ptr<BusConnection> client;
    milliseconds work{0};
    bool isReady = true;
    int arrived = 0;
    QStringList served;
    QStringList refused;
};
} // namespace

TEST_F(CallQueueTest, ServesWhatWasSentInItsOrder)
{
    for (const char *what : {"a", "b", "c"})
        send(what);
    EXPECT_TRUE(has({"a", "b", "c"}));
    const auto other = BusConnection::open(BusConnection::Bus::System).value();
    send(*other, "d");
    EXPECT_TRUE(has({"a", "b", "c", "d"}));
    EXPECT_EQ(refused, QStringList());
}

TEST_F(CallQueueTest, HasAUserWaitThreeTimesAsLongAsHisCallTook)
{
    serveOneOfTwo(100ms);
    clock.advance(299ms);
    EXPECT_EQ(served, QStringList({"first", "a"}));
    clock.advance(1ms);
    EXPECT_EQ(served, QStringList({"first", "a", "b"}));
    send("c");
    ASSERT_TRUE(arrive(4));
    clock.advance(299ms);
    EXPECT_EQ(served.size(), 3) << "also where nothing waited meanwhile";
    clock.advance(1ms);
    EXPECT_EQ(served.size(), 4);
}

TEST_F(CallQueueTest, HasNobodyWaitForLongerThanASecond)
{
    serveOneOfTwo(10s);
    clock.advance(999ms);
    EXPECT_EQ(served, QStringList({"first", "a"}));
    clock.advance(1ms);
    EXPECT_EQ(served, QStringList({"first", "a", "b"}));
}

TEST_F(CallQueueTest, ChargesAUserForWhatWentOnOutsideOfHisTurn)
{
    queue.charge(::geteuid(), 0ms);
    send("a");
    ASSERT_TRUE(has({"a"}));
    queue.charge(::geteuid(), 100ms);
    queue.charge(::geteuid(), 10s);
    send("b");
    ASSERT_TRUE(arrive(2));
    clock.advance(1299ms);
    EXPECT_EQ(served, QStringList("a"));
    clock.advance(1ms);
    EXPECT_EQ(served, QStringList({"a", "b"}));
}

TEST_F(CallQueueTest, KeepsWhatCannotBeAnsweredYetAndAllBehindItUntilThen)
{
    isReady = false;
    send("a");
    send("b");
    ASSERT_TRUE(has({"a"}));
    clock.advance(1h);
    EXPECT_EQ(served, QStringList("a"));
    queue.resume(::geteuid() + 1);
    clock.advance(0ms);
    EXPECT_EQ(served, QStringList("a"));
    isReady = true;
    queue.resume(::geteuid());
    queue.resume(::geteuid());
    EXPECT_TRUE(has({"a", "a", "b"}));
    queue.resume(::geteuid());
    clock.advance(1h);
    EXPECT_EQ(served.size(), 3);
}

TEST_F(CallQueueTest, RefusesAUsersCallWhenSixteenOfHisWait)
{
    isReady = false;
    send("first");
    ASSERT_TRUE(has({"first"}));
    for (int i = 0; i < 18; ++i)
        send(QString::number(i));
    ASSERT_TRUE(waitUntil([this] { return refused.size() == 3; }));
    EXPECT_EQ(refused, QStringList({"15", "16", "17"}));
    EXPECT_TRUE(root.logContent().contains("call on the bus refused: too many at a time"));
    isReady = true;
    queue.resume(::geteuid());
    ASSERT_TRUE(waitUntil([this] {
        clock.advance(0ms);
        return served.size() == 17;
    }));
    EXPECT_EQ(served.last(), "14");
    send("again");
    ASSERT_TRUE(waitUntil([this] {
        clock.advance(0ms);
        return served.last() == "again";
    }));
}

TEST_F(CallQueueTest, RefusesWhatIsTooMuchOfOneWhoIsNotKnownYet)
{
    for (int i = 0; i < 20; ++i)
        send(QString::number(i));
    ASSERT_TRUE(waitUntil([this] {
        clock.advance(0ms);
        return served.size() + refused.size() == 20;
    }));
    for (int i = 0; i < 16; ++i)
        EXPECT_TRUE(served.contains(QString::number(i))) << i;
}

TEST_F(CallQueueTest, ServesNobodyWhoHasGone)
{
    auto other = BusConnection::open(BusConnection::Bus::System).value();
    send(*other, "a");
    ASSERT_TRUE(waitUntil([&] {
        const bool isSent = arrived == 1;
        if (isSent)
            other.reset();
        return isSent;
    }));
    for (int round = 0; round < 3; ++round) {
        send(QString::number(round));
        const QString expected = QString::number(round);
        ASSERT_TRUE(waitUntil([&] {
            clock.advance(0ms);
            return served.contains(expected);
        }));
    }
}

TEST_F(CallQueueTest, ForgetsAllWhenTheBusIsGone)
{
    isReady = false;
    send("a");
    ASSERT_TRUE(has({"a"}));
    for (int i = 0; i < 15; ++i)
        send(QString::number(i));
    ASSERT_TRUE(arrive(16));
    queue.clear();
    isReady = true;
    queue.resume(::geteuid());
    clock.advance(1h);
    EXPECT_EQ(served, QStringList("a"));
    send("b");
    EXPECT_TRUE(has({"a", "b"})); // whose user is asked for anew
}
