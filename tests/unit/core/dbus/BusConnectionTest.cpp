// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusConnection.h"

#include "support/PrivateBus.h"

#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace dozely;

namespace
{
constexpr char logind[] = "org.freedesktop.login1";
constexpr char manager[] = "/org/freedesktop/login1";
constexpr char mock[] = "org.freedesktop.DBus.Mock";

QDeadlineTimer soon()
{
    return QDeadlineTimer(std::chrono::seconds(10));
}

class BusConnectionTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        ASSERT_TRUE(bus.startMock("logind", logind));
        connection = BusConnection::open(BusConnection::Bus::System).value();
        ASSERT_TRUE(connection);
    }

    /// Makes an operation of the mock that answers with what it was given.
    void addEcho(const QString &name, const QString &signature)
    {
        ASSERT_TRUE(bus.call(logind, manager, "org.freedesktop.DBus.Mock.AddMethod",
                             {"com.dozely.Test", name, signature, signature, "ret = args[0]"}));
    }

    QVariant echoOf(const QByteArray &name, const QByteArray &signature, const QVariant &value)
    {
        const auto reply =
            connection->call({logind, manager, "com.dozely.Test", name}, signature, {value}, soon());
        return BusConnection::firstOf(reply);
    }

    PrivateBus bus;
    std::unique_ptr<BusConnection> connection;
};
} // namespace

TEST_F(BusConnectionTest, CarriesEachBasicTypeThereAndBack)
{
    const struct {
        const char *signature;
        QVariant value;
    } cases[] = {{"b", true},
                 {"y", QVariant::fromValue<quint8>(200)},
                 {"n", QVariant::fromValue<qint16>(-3)},
                 {"q", QVariant::fromValue<quint16>(65535)},
                 {"i", -70'000},
                 {"u", 4'000'000'000U},
                 {"x", qint64(-5'000'000'000)},
                 {"t", quint64(18'000'000'000'000'000'000ULL)},
                 {"d", 0.1},
                 {"s", QString("zu spät")},
                 {"o", "/com/dozely"},
                 {"g", "a{sv}"}};
    for (const auto &test : cases) {
        addEcho(QString("Echo_") + test.signature, test.signature);
        const QVariant echo = echoOf(QByteArray("Echo_") + test.signature, test.signature, test.value);
        EXPECT_EQ(echo, test.value) << test.signature;
        EXPECT_EQ(echo.metaType(), test.value.metaType()) << test.signature;
    }
}

TEST_F(BusConnectionTest, ReadsDictionariesStructuresListsAndBytes)
{
    ASSERT_TRUE(bus.call(
        logind, manager, "org.freedesktop.DBus.Mock.AddMethod",
        {"com.dozely.Test", "Mixed", "", "(a{sv}a(su)ayas)",
         "ret = ({'deep': dbus.Array([1, 2], signature='i', variant_level=2), 'on': True}, "
         "[('one', dbus.UInt32(1))], dbus.ByteArray(bytes([0, 255])), dbus.Array([], signature='s'))"}));
    const auto reply = connection->call({logind, manager, "com.dozely.Test", "Mixed"}, "", {}, soon());
    ASSERT_TRUE(reply);
    const QVariantList parts = reply->value(0).toList();
    ASSERT_EQ(parts.size(), 4);
    EXPECT_EQ(parts[0].toMap(), (QVariantMap{{"deep", QVariantList{1, 2}}, {"on", true}}));
    EXPECT_EQ(parts[1].toList(), (QVariantList{QVariantList{"one", 1U}}));
    EXPECT_EQ(parts[2].toByteArray(), QByteArray("\x00\xff", 2));
    EXPECT_EQ(parts[3].typeId(), QMetaType::QVariantList);
    EXPECT_TRUE(parts[3].toList().isEmpty());
}

TEST_F(BusConnectionTest, WritesAVariantOfTheTypeThatIsAskedFor)
{
    ASSERT_TRUE(bus.call(logind, manager, "org.freedesktop.DBus.Mock.AddMethod",
                         {"com.dozely.Test", "Type", "v", "s", "ret = args[0].signature"}));
    ASSERT_TRUE(bus.call(logind, manager, "org.freedesktop.DBus.Mock.AddMethod",
                         {"com.dozely.Test", "Echo", "v", "v", "ret = args[0]"}));
    const QVariant command = QVariantList{"/bin/true", QStringList{"true", "a"}, false};
    const auto typed = [](const char *signature, const QVariant &value) {
        return QVariant::fromValue(BusVariant{signature, value});
    };
    const QVariant commands = typed("a(sasb)", QVariantList{command});
    EXPECT_EQ(echoOf("Type", "v", commands), "(sasb)");
    EXPECT_EQ(echoOf("Echo", "v", commands),
              QVariant(QVariantList{QVariant(QVariantList{"/bin/true", QVariantList{"true", "a"}, false})}));
    EXPECT_EQ(echoOf("Echo", "v", typed("t", 5)), QVariant(quint64(5)));
    // No type, two, and one into which the value does not fit.
    const BusConnection::Member echo{logind, manager, "com.dozely.Test", "Echo"};
    for (const QVariant &bad : {typed("", 5), typed("ii", 5), typed("as", 5), typed("a{sv", QVariantMap())})
        EXPECT_FALSE(connection->call(echo, "v", {bad}, soon()));
}

TEST_F(BusConnectionTest, WritesAVariantOfTheTypeThatItsValueHas)
{
    ASSERT_TRUE(
        bus.call(logind, manager, "org.freedesktop.DBus.Mock.AddMethod",
                 {"com.dozely.Test", "Type", "av", "s",
                  "ret = args[0].signature if len(args[0]) != 1 else {dbus.Boolean: 'b', dbus.Byte: 'y', "
                  "dbus.Int16: 'n', dbus.UInt16: 'q', dbus.Int32: 'i', dbus.UInt32: 'u', dbus.Int64: 'x', "
                  "dbus.UInt64: 't', dbus.Double: 'd', dbus.String: 's'}.get(type(args[0][0])) or "
                  "('a{' if type(args[0][0]) is dbus.Dictionary else 'a') + args[0][0].signature"}));
    const auto typeOf = [&](const QVariant &value) {
        return echoOf("Type", "av", QVariantList{value}).toString().toStdString();
    };
    EXPECT_EQ(typeOf(true), "b");
    EXPECT_EQ(typeOf(QVariant::fromValue<quint8>(1)), "y");
    EXPECT_EQ(typeOf(QVariant::fromValue<short>(1)), "n");
    EXPECT_EQ(typeOf(QVariant::fromValue<ushort>(1)), "q");
    EXPECT_EQ(typeOf(1), "i");
    EXPECT_EQ(typeOf(1U), "u");
    EXPECT_EQ(typeOf(1LL), "x");
    EXPECT_EQ(typeOf(QVariant::fromValue<long>(1)), "x");
    EXPECT_EQ(typeOf(1ULL), "t");
    EXPECT_EQ(typeOf(QVariant::fromValue<ulong>(1)), "t");
    EXPECT_EQ(typeOf(0.5F), "d");
    EXPECT_EQ(typeOf(0.5), "d");
    EXPECT_EQ(typeOf("a"), "s");
    EXPECT_EQ(typeOf(QByteArray("a")), "ay");
    EXPECT_EQ(typeOf(QStringList("a")), "as");
    EXPECT_EQ(typeOf(QVariantList{1}), "av");
    EXPECT_EQ(typeOf(QVariantMap{{"a", 1}}), "a{sv");
    EXPECT_EQ(typeOf(QVariant::fromValue(QVariant(1U))), "u") << "one in another is that one";
    const BusConnection::Member type{logind, manager, "com.dozely.Test", "Type"};
    const auto refused = connection->call(type, "av", {QVariant(QVariantList{QDate(2026, 3, 14)})}, soon());
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.error().text.contains("a value of type QDate cannot travel"))
        << qPrintable(refused.error().text);
}

TEST_F(BusConnectionTest, SendsADescriptor)
{
    ASSERT_TRUE(bus.call(logind, manager, "org.freedesktop.DBus.Mock.AddMethod",
                         {"com.dozely.Test", "Inode", "vh", "t",
                          "import os\nret = dbus.UInt64(os.fstat(args[1].take()).st_ino)"}));
    const BusDescriptor file(::open("/etc/hostname", O_RDONLY | O_CLOEXEC));
    struct stat status {
    };
    ASSERT_EQ(::fstat(file.get(), &status), 0);
    const BusConnection::Member inode{logind, manager, "com.dozely.Test", "Inode"};
    const auto held = QVariant::fromValue(file);
    const auto reply =
        connection->call(inode, "vh", {QVariant::fromValue(BusVariant{"h", held}), held}, soon());
    EXPECT_EQ(BusConnection::firstOf(reply), QVariant(quint64(status.st_ino)));
    EXPECT_FALSE(connection->call(inode, "vh", {true, QVariant::fromValue(BusDescriptor())}, soon()));
}

TEST_F(BusConnectionTest, TellsTheNameAndTextOfAnErrorReply)
{
    ASSERT_TRUE(bus.call(logind, manager, "org.freedesktop.DBus.Mock.AddMethod",
                         {"com.dozely.Test", "Refuse", "", "",
                          "raise dbus.exceptions.DBusException('not now', name='com.dozely.Refused')"}));
    const auto reply = connection->call({logind, manager, "com.dozely.Test", "Refuse"}, "", {}, soon());
    ASSERT_FALSE(reply);
    EXPECT_EQ(reply.error().name, "com.dozely.Refused");
    EXPECT_EQ(reply.error().text, "not now");
}

TEST_F(BusConnectionTest, RefusesArgumentsThatDoNotFitTheirTypes)
{
    const BusConnection::Member add{logind, manager, mock, "AddSeat"};
    EXPECT_FALSE(connection->call(add, "s", {42}, soon()));
    EXPECT_FALSE(connection->call(add, "s", {}, soon()));
    EXPECT_FALSE(connection->call(add, "s", {QString::fromLatin1("cut\0off", 7)}, soon()));
    EXPECT_FALSE(connection->call(add, "h", {1}, soon()));
    EXPECT_TRUE(connection->call(add, "s", {"seat7"}, soon())); // the connection is still good
}

TEST_F(BusConnectionTest, ReadsAProperty)
{
    ASSERT_TRUE(connection->call({logind, manager, mock, "AddSeat"}, "s", {"seat0"}, soon()));
    const BusConnection::Member id{logind, "/org/freedesktop/login1/seat/seat0",
                                   "org.freedesktop.login1.Seat", "Id"};
    EXPECT_EQ(connection->property(id, soon()).value(), QVariant("seat0"));
    const auto nothing = connection->property({id.destination, id.path, id.interface, "Nothing"}, soon());
    ASSERT_FALSE(nothing);
    EXPECT_FALSE(nothing.error().name.isEmpty());
}

TEST_F(BusConnectionTest, GivesUpAtTheDeadlineAndGoesOnAfterwards)
{
    ASSERT_TRUE(connection->call({logind, manager, mock, "AddSeat"}, "s", {"seat0"}, soon()));
    const BusConnection::Member id{logind, "/org/freedesktop/login1/seat/seat0",
                                   "org.freedesktop.login1.Seat", "Id"};
    const auto late = connection->property(id, QDeadlineTimer(0));
    ASSERT_FALSE(late);
    EXPECT_EQ(late.error().name, "org.freedesktop.DBus.Error.Timeout");
    EXPECT_EQ(connection->property(id, soon()).value(), QVariant("seat0")); // the late reply is dropped
}

TEST_F(BusConnectionTest, FailsWhenTheBusGoesAway)
{
    bus.stop();
    const auto reply = connection->call({logind, manager, mock, "AddSeat"}, "s", {"seat0"}, soon());
    ASSERT_FALSE(reply);
    EXPECT_NE(reply.error().name, "org.freedesktop.DBus.Error.Timeout");
    EXPECT_FALSE(reply.error().text.isEmpty());
}

TEST_F(BusConnectionTest, ReceivesADescriptor)
{
    const auto reply =
        connection->call({logind, manager, "org.freedesktop.login1.Manager", "Inhibit"}, "ssss",
                         {"sleep", "com.dozely", "to write things down", "delay"}, soon());
    ASSERT_TRUE(reply);
    const auto descriptor = reply->value(0).value<BusDescriptor>();
    EXPECT_GE(descriptor.get(), 3);
    EXPECT_EQ(::fcntl(descriptor.get(), F_GETFD), FD_CLOEXEC);
}
