// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PerformanceOrder.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QTimeZone>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
PerformanceOrder order()
{
    PerformanceOrder order{"Réveil", "/x/Command.plugin", {{"Program", "/bin/true"}}};
    order.date = QDateTime({2026, 3, 14}, {7, 30}, QTimeZone("Europe/Berlin"));
    order.place = "/x/place";
    order.placeMark = QByteArray("\0mark", 5);
    order.limits.timeToEnd = std::chrono::seconds(7);
    order.deed = PerformanceOrder::Deed::Announce;
    order.consoleUser = 1000;
    order.consoleUserName = "anna";
    order.role = PerformanceOrder::Role::Session;
    order.scheduleIdentifier = "f06c6ceb";
    return order;
}

/// What is said of an order in which one value is another; empty when it is taken.
QString refusalWith(const QString &key, const QVariant &value)
{
    QVariantMap map =
        PropertyList::fromData(order().toData(), nullptr, PropertyList::ofTheSystem).value().toMap();
    EXPECT_TRUE(map.contains(key)) << qPrintable(key);
    map.insert(key, value);
    const auto read = PerformanceOrder::fromData(
        PropertyList::toData(map, PropertyList::Format::Binary, PropertyList::ofTheSystem));
    return read ? QString() : read.error().text;
}
} // namespace

TEST(PerformanceOrder, ArrivesAsItWasSent)
{
    const auto read = PerformanceOrder::fromData(order().toData());
    ASSERT_TRUE(read) << read.error().text.toStdString();
    EXPECT_EQ(*read, order());
    EXPECT_EQ(read->date.timeZone().id(), "Europe/Berlin");

    PerformanceOrder least{"A", "/a"};
    least.date = QDateTime({2026, 3, 14}, {7, 30}, QTimeZone::utc());
    const auto readLeast = PerformanceOrder::fromData(least.toData());
    ASSERT_TRUE(readLeast) << readLeast.error().text.toStdString();
    EXPECT_EQ(*readLeast, least);
}

TEST(PerformanceOrder, IsRefusedWhereAPartIsNoneOfItsKind)
{
    EXPECT_FALSE(PerformanceOrder::fromData("no list"));
    for (const QString key : {"Schedule", "Bundle Path", "Time Zone", "Place", "Console User Name"})
        EXPECT_EQ(refusalWith(key, 7), QString("the order has no \"%1\"").arg(key));
    EXPECT_EQ(refusalWith("Date", "now"), "the order has no date or no parameters");
    EXPECT_EQ(refusalWith("Parameters", "none"), "the order has no date or no parameters");
    EXPECT_EQ(refusalWith("Place Mark", "text"), "the order has no mark of its place");
    EXPECT_EQ(refusalWith("Limits", "none"), "the order has no limits");
    EXPECT_EQ(refusalWith("Role", "somebody"), "the order does not say who is to act");
    EXPECT_EQ(refusalWith("Time Zone", "Nowhere/Atall"), "the order's time zone is not known");
    for (const QVariant &deed : {QVariant(-1), QVariant(3), QVariant("Act")})
        EXPECT_EQ(refusalWith("Deed", deed), "the order does not say what is to be done");
    EXPECT_EQ(refusalWith("Deed", 2), QString());
    EXPECT_EQ(refusalWith("Deed", 0), QString());
    EXPECT_EQ(refusalWith("Console User", "anna"), "the order does not say what is to be done");
}
