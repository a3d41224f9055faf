// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/linux/DistributedMessage_p.h"

#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "support/PrintTo.h"

#include <QDateTime>
#include <QPoint>
#include <QTimeZone>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
std::optional<DistributedMessage> written(const NSNotification &notification, bool deliverImmediately = true)
{
    auto message = DistributedMessage::from(notification, deliverImmediately);
    if (message)
        return *message;
    EXPECT_FALSE(message.error().text.isEmpty());
    return std::nullopt;
}

/// The notification as it arrives, and the signature with which it travelled.
void expectArrives(const NSNotification &notification, const QByteArray &signature)
{
    const auto message = written(notification);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->signature, signature);
    const auto read = DistributedMessage::read(message->arguments);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->notification.name(), notification.name());
    EXPECT_EQ(read->notification.object(), notification.object());
    EXPECT_EQ(read->notification.userInfo(), notification.userInfo());
    EXPECT_TRUE(read->deliverImmediately);
    EXPECT_FALSE(read->sender);
}

QVariant nestedList(int levels)
{
    QVariant value = 1;
    for (int i = 0; i < levels; ++i)
        value = QVariantList{value};
    return value;
}

QVariant nested(int levels)
{
    QVariant value = 1;
    for (int i = 0; i < levels; ++i)
        value = QVariantMap{{"k", value}};
    return value;
}
} // namespace

TEST(DistributedMessage, CarriesEverydayValuesInTheOpen)
{
    expectArrives(NSNotification("Name", "sender",
                                 {{"b", true},
                                  {"i", -1},
                                  {"u", 1U},
                                  {"x", qlonglong(-5'000'000'000)},
                                  {"t", qulonglong(18'000'000'000'000'000'000U)},
                                  {"d", 0.5},
                                  {"s", "t\u00e9xt"},
                                  {"ay", QByteArray("\0\xff", 2)},
                                  {"av", QVariantList{1, "two", QVariantList{}}},
                                  {"a{sv}", QVariantMap{{"k", "v"}}}}),
                  "ssa{sv}u");
    expectArrives(NSNotification("Name", "", {}), "ssa{sv}u");
}

TEST(DistributedMessage, CarriesInABlockWhatTheBusCannot)
{
    expectArrives(NSNotification("Name", {}, {{"k", 1LL}}), "sayu"); // no sender
    expectArrives(NSNotification("Name", QString::fromLatin1("a\0b", 3), {}), "sayu");
    expectArrives(NSNotification("Name", "s", {{QString(QChar(0xFFFF)), "v"}}), "sayu");
    expectArrives(NSNotification("Name", "s", {{"k", QVariant()}}), "sayu");
    const QDateTime date({2026, 3, 14}, {19, 30}, QTimeZone("Europe/Vienna"));
    expectArrives(NSNotification("Name", "s", {{"Date", date}}), "sayu");
    for (const QVariant &deepest : {nested(9), nestedList(9)})
        expectArrives(NSNotification("Name", "s", {{"k", deepest}}), "ssa{sv}u");
    for (const QVariant &tooDeep : {nested(10), nestedList(10)})
        expectArrives(NSNotification("Name", "s", {{"k", tooDeep}}), "sayu");
    expectArrives(NSNotification("Name", "s", {{"k", QVariantList{nested(20), 1LL}}}), "sayu");
}

TEST(DistributedMessage, KeepsTheZoneOfADate)
{
    const QDateTime date({2026, 3, 14}, {19, 30}, QTimeZone("Europe/Vienna"));
    const auto message = written(NSNotification("Name", "s", {{"Date", date}}));
    ASSERT_TRUE(message);
    const auto read = DistributedMessage::read(message->arguments);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->notification.userInfo()["Date"].toDateTime().timeZone().id(), "Europe/Vienna");
}

TEST(DistributedMessage, TellsWhetherItIsForSuspendedObservers)
{
    for (const bool immediately : {true, false}) {
        for (const QVariant &object : {QVariant("s"), QVariant()}) {
            const auto message = written(NSNotification("Name", object), immediately);
            ASSERT_TRUE(message);
            const auto read = DistributedMessage::read(message->arguments);
            ASSERT_TRUE(read);
            EXPECT_EQ(read->deliverImmediately, immediately);
        }
    }
}

TEST(DistributedMessage, RefusesNamesThatCannotBeAskedFor)
{
    EXPECT_FALSE(written(NSNotification(QString())));
    EXPECT_FALSE(written(NSNotification("")));
    EXPECT_FALSE(written(NSNotification(QString::fromLatin1("a\0b", 3))));
}

TEST(DistributedMessage, RefusesValuesThatAreNoPropertyListValues)
{
    EXPECT_FALSE(written(NSNotification("Name", "s", {{"k", QVariant::fromValue(QPoint(1, 2))}})));
    EXPECT_FALSE(written(NSNotification("Name", QVariant::fromValue(QPoint(1, 2)))));
    EXPECT_FALSE(written(NSNotification("Name", "s", {{"k", nested(100)}})));
}

TEST(DistributedMessage, RefusesToWriteOrReadWhatIsTooLarge)
{
    const QVariantMap fits{{"k", QByteArray(60'000, 'x')}};
    const QVariantMap large{{"k", QByteArray(70'000, 'x')}};
    EXPECT_TRUE(written(NSNotification("Name", "s", fits)));
    EXPECT_FALSE(written(NSNotification("Name", "s", large)));
    EXPECT_FALSE(written(NSNotification("Name", {}, large)));
    EXPECT_TRUE(DistributedMessage::read({"Name", "s", fits, 1U}));
    EXPECT_FALSE(DistributedMessage::read({"Name", "s", large, 1U}));
    EXPECT_FALSE(DistributedMessage::read({"Name", CborBlock::encode(QVariantList{"s", large}).value(), 1U}));
    EXPECT_FALSE(DistributedMessage::read({"Name", QString(70'000, 'x'), QVariantMap(), 1U}));
    EXPECT_FALSE(DistributedMessage::read({QString(70'000, 'x'), "s", QVariantMap(), 1U}));
    QVariantList many;
    for (int i = 0; i < 10'000; ++i)
        many += true;
    EXPECT_FALSE(DistributedMessage::read({"Name", "s", QVariantMap{{"k", many}}, 1U}));
}

TEST(DistributedMessage, ReadsWhatAPersonPostsByHand)
{
    // gdbus without the options; small integers, which nobody here writes
    const auto read = DistributedMessage::read(
        {"Name", "s",
         QVariantMap{{"y", QVariant::fromValue(quint8(200))}, {"n", QVariant::fromValue(qint16(-2))}}});
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->deliverImmediately);
    EXPECT_EQ(read->notification.userInfo(), QVariantMap({{"y", 200U}, {"n", -2}}));
    EXPECT_EQ(read->notification.userInfo()["y"].typeId(), QMetaType::UInt);
    EXPECT_EQ(read->notification.userInfo()["n"].typeId(), QMetaType::Int);
}

TEST(DistributedMessage, ReadsNothingFromWhatIsNoNotification)
{
    const QVariantMap empty;
    const QByteArray block = CborBlock::encode(QVariantList{"s", empty}).value();
    ASSERT_TRUE(DistributedMessage::read({"Name", block, 0U}));
    const QList<QVariantList> wrong{
        {},
        {"Name"},
        {"Name", "s"},
        {1, "s", empty},
        {"", "s", empty},
        {"Name", 1, empty},
        {"Name", "s", "text"},
        {"Name", "s", QVariantList{}},
        {"Name", "s", empty, "1"},
        {"Name", "s", empty, 1U, 1U},
        {"Name", block, 0U, 0U},
        {"Name", QByteArray("rubbish"), 0U},
        {"Name", block.left(block.size() - 1), 0U},
        {"Name", block + 'x', 0U},
        {"Name", CborBlock::encode(QVariantList{"s"}).value(), 0U},
        {"Name", CborBlock::encode(QVariantList{1, empty}).value(), 0U},
        {"Name", CborBlock::encode(QVariantList{"s", "text"}).value(), 0U},
        {"Name", CborBlock::encode(empty).value(), 0U},
        {"Name", "s", QVariantMap{{"h", QVariant::fromValue(BusDescriptor())}}, 0U},
        {"Name", "s", QVariantMap{{"k", QVariantList{QVariant::fromValue(BusDescriptor())}}}, 0U},
    };
    for (qsizetype i = 0; i < wrong.size(); ++i)
        EXPECT_FALSE(DistributedMessage::read(wrong.at(i))) << i;
}
