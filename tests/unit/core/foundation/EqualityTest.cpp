// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Equality.h"

#include <QDateTime>
#include <QUrl>

#include <gtest/gtest.h>

#include <limits>

using namespace dozely;

TEST(IsEqual, HoldsForNumbersOfOneValueHoweverWideTheyAre)
{
    EXPECT_TRUE(isEqual(5, qlonglong(5)));
    EXPECT_TRUE(isEqual(5U, 5.0));
    for (const QVariant &zero : {QVariant(0), QVariant(0U), QVariant(0.0), QVariant(-0.0), QVariant(false)}) {
        EXPECT_TRUE(isEqual(zero, 0.0));
        EXPECT_TRUE(isEqual(0LL, zero));
    }
    EXPECT_TRUE(isEqual(true, 1));
    for (const double other : {5.25, 5.5, 6.0}) {
        EXPECT_FALSE(isEqual(5, other)) << other;
        EXPECT_FALSE(isEqual(other, 5)) << other;
        EXPECT_FALSE(isEqual(5U, other)) << other;
        EXPECT_FALSE(isEqual(other, 5U)) << other;
        EXPECT_FALSE(isEqual(-5, -other)) << other;
    }
    EXPECT_FALSE(isEqual(qlonglong(-1), std::numeric_limits<qulonglong>::max()));
    EXPECT_FALSE(isEqual((qlonglong(1) << 53) + 1, 9007199254740992.0)) << "a double cannot tell them apart";
    EXPECT_FALSE(isEqual(std::numeric_limits<qulonglong>::max(), 18446744073709551616.0));
    EXPECT_TRUE(isEqual(std::numeric_limits<qlonglong>::min(), -9223372036854775808.0));
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(isEqual(none, none)) << "or it could never be found again";
    EXPECT_FALSE(isEqual(none, 0));
    EXPECT_FALSE(isEqual(0, none));
}

TEST(IsEqual, DoesNotHoldBetweenTypes)
{
    EXPECT_FALSE(isEqual(5, "5"));
    EXPECT_FALSE(isEqual("true", true));
    EXPECT_FALSE(isEqual(QByteArray("x"), "x"));
    EXPECT_FALSE(isEqual(QUrl("file:/x"), "file:/x"));
    const QDateTime date = QDateTime::fromSecsSinceEpoch(0);
    EXPECT_FALSE(isEqual(date, date.toString(Qt::ISODate)));
    EXPECT_FALSE(isEqual(QVariant(), ""));
    EXPECT_FALSE(isEqual(QVariant(), 0));
    EXPECT_TRUE(isEqual(QVariant(), QVariant()));
}

TEST(IsEqual, ComparesTextsDatesAndBytesByTheirValue)
{
    EXPECT_TRUE(isEqual("a", QString("a")));
    EXPECT_FALSE(isEqual("a", "A"));
    EXPECT_TRUE(isEqual(QByteArray("x"), QByteArray("x")));
    EXPECT_TRUE(isEqual(QDateTime::fromSecsSinceEpoch(7), QDateTime::fromSecsSinceEpoch(7, Qt::UTC)));
    EXPECT_FALSE(isEqual(QDateTime::fromSecsSinceEpoch(7), QDateTime::fromSecsSinceEpoch(8)));
}

TEST(IsEqual, LooksIntoListsAndDictionaries)
{
    EXPECT_TRUE(isEqual(QVariantList({1, "a"}), QVariantList({qlonglong(1), "a"})));
    EXPECT_FALSE(isEqual(QVariantList({1}), QVariantList({"1"})));
    EXPECT_FALSE(isEqual(QVariantList({1}), QVariantList({1, 1})));
    EXPECT_TRUE(isEqual(QStringList({"a", "b"}), QVariantList({"a", "b"})));
    EXPECT_TRUE(isEqual(QVariantMap({{"k", 1}}), QVariantMap({{"k", 1.0}})));
    EXPECT_TRUE(isEqual(QVariantMap({{"k", 1}}), QVariantHash({{"k", 1}})));
    EXPECT_FALSE(isEqual(QVariantMap({{"k", 1}}), QVariantMap({{"k", "1"}})));
    EXPECT_FALSE(isEqual(QVariantMap({{"k", 1}}), QVariantMap({{"l", 1}})));
    EXPECT_FALSE(isEqual(QVariantMap({{"k", QVariant()}}), QVariantMap({{"l", QVariant()}})));
    EXPECT_FALSE(isEqual(QVariantMap(), QVariantList()));
}

TEST(IsEqual, TellsObjectsApartByTheirAddress)
{
    QObject one;
    QObject other;
    EXPECT_TRUE(isEqual(QVariant::fromValue(&one), QVariant::fromValue(&one)));
    EXPECT_FALSE(isEqual(QVariant::fromValue(&one), QVariant::fromValue(&other)));
}
