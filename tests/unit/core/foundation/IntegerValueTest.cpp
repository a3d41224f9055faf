// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/IntegerValue.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace dozely;

namespace
{
constexpr qint32 lowest = std::numeric_limits<qint32>::min();
constexpr qint32 highest = std::numeric_limits<qint32>::max();
} // namespace

TEST(IntegerValue, OfATextIsTheIntegerAtItsHead)
{
    EXPECT_EQ(integerValue(QString("15")), 15);
    EXPECT_EQ(integerValue(QString("1.2")), 1);
    EXPECT_EQ(integerValue(QString("12 minutes")), 12);
    EXPECT_EQ(integerValue(QString("007")), 7);
}

TEST(IntegerValue, OfATextWithoutIntegerIsZero)
{
    for (const QString text : {"", "abc", "-", "+", "--1", "+-1", "- 1", "x1", ".5"})
        EXPECT_EQ(integerValue(text), 0) << qPrintable(text);
    EXPECT_EQ(integerValue(QString()), 0);
    EXPECT_EQ(integerValue(QString(u8"٣")), 0); // a digit, but not one of ours
}

TEST(IntegerValue, SkipsLeadingBlanksAndTakesASign)
{
    EXPECT_EQ(integerValue(QString(" \t\n-15")), -15);
    EXPECT_EQ(integerValue(QString("+15")), 15);
}

TEST(IntegerValue, OfATextSaturates)
{
    EXPECT_EQ(integerValue(QString("2147483647")), highest);
    EXPECT_EQ(integerValue(QString("2147483648")), highest);
    EXPECT_EQ(integerValue(QString("-2147483648")), lowest);
    EXPECT_EQ(integerValue(QString("-2147483649")), lowest);
    EXPECT_EQ(integerValue(QString(1000, '9')), highest);
    EXPECT_EQ(integerValue('-' + QString(1000, '9')), lowest);
}

TEST(IntegerValue, OfATextOfSixtyFourBitsIsExactUpToBothEnds)
{
    constexpr qint64 largest = std::numeric_limits<qint64>::max();
    constexpr qint64 smallest = std::numeric_limits<qint64>::min();
    EXPECT_EQ(longIntegerValue(QVariant("9223372036854775806")), largest - 1);
    EXPECT_EQ(longIntegerValue(QVariant("9223372036854775807")), largest);
    EXPECT_EQ(longIntegerValue(QVariant("9223372036854775808")), largest);
    EXPECT_EQ(longIntegerValue(QVariant("9223372036854775810")), largest);
    EXPECT_EQ(longIntegerValue(QVariant("-9223372036854775807")), smallest + 1);
    EXPECT_EQ(longIntegerValue(QVariant("-9223372036854775808")), smallest);
    EXPECT_EQ(longIntegerValue(QVariant("-9223372036854775809")), smallest);
    EXPECT_EQ(longIntegerValue(QVariant("-9223372036854775810")), smallest);
}

TEST(IntegerValue, OfAStringInAVariantFollowsTheSameRule)
{
    EXPECT_EQ(integerValue(QVariant(" 42x")), 42);
    EXPECT_EQ(integerValue(QVariant("99999999999")), highest);
}

TEST(IntegerValue, OfANumberIsCutToThirtyTwoBits)
{
    EXPECT_EQ(integerValue(QVariant(-7)), -7);
    EXPECT_EQ(integerValue(QVariant(true)), 1);
    EXPECT_EQ(integerValue(QVariant(false)), 0);
    EXPECT_EQ(integerValue(QVariant(quint32(4294967295))), -1);
    EXPECT_EQ(integerValue(QVariant(qint64(1) << 32)), 0);
    EXPECT_EQ(integerValue(QVariant((qint64(1) << 32) + 5)), 5);
    EXPECT_EQ(integerValue(QVariant::fromValue<short>(-3)), -3);
    EXPECT_EQ(integerValue(QVariant::fromValue<long>(-3)), -3);
}

TEST(IntegerValue, OfAFractionCutsTheFractionFirst)
{
    EXPECT_EQ(integerValue(QVariant(1.9)), 1);
    EXPECT_EQ(integerValue(QVariant(-1.9)), -1);
    EXPECT_EQ(integerValue(QVariant(1.5f)), 1);
    EXPECT_EQ(integerValue(QVariant(4294967301.7)), 5);
}

TEST(IntegerValue, OfANumberThatNoIntegerHoldsIsDefined)
{
    EXPECT_EQ(integerValue(QVariant(std::nan(""))), 0);
    EXPECT_EQ(integerValue(QVariant(1e300)), -1);
    EXPECT_EQ(integerValue(QVariant(-1e300)), 0);
}

TEST(IntegerValue, OfAnythingElseIsZero)
{
    EXPECT_EQ(integerValue(QVariant()), 0);
    EXPECT_EQ(integerValue(QVariant(QByteArray("15"))), 0);
    EXPECT_EQ(integerValue(QVariant(QVariantList{15})), 0);
    EXPECT_EQ(integerValue(QVariant(QDateTime::currentDateTimeUtc())), 0);
}

TEST(LongIntegerValue, OfATextIsTheIntegerAtItsHead)
{
    EXPECT_EQ(longIntegerValue("1.2"), 1);
    EXPECT_EQ(longIntegerValue(" -20260314065500 build"), -20'260'314'065'500);
    EXPECT_EQ(longIntegerValue("build 7"), 0);
}

TEST(LongIntegerValue, OfATextSaturatesAtTheEndsOf64Bits)
{
    constexpr auto longHighest = std::numeric_limits<qint64>::max();
    constexpr auto longLowest = std::numeric_limits<qint64>::min();
    EXPECT_EQ(longIntegerValue("9223372036854775807"), longHighest);
    EXPECT_EQ(longIntegerValue("9223372036854775808"), longHighest);
    EXPECT_EQ(longIntegerValue("99999999999999999999"), longHighest);
    EXPECT_EQ(longIntegerValue("-9223372036854775808"), longLowest);
    EXPECT_EQ(longIntegerValue("-9223372036854775809"), longLowest);
}

TEST(LongIntegerValue, OfANumberIsItsWholePartAndOfAnythingElseZero)
{
    EXPECT_EQ(longIntegerValue(Q_INT64_C(4294967338)), 4294967338);
    EXPECT_EQ(longIntegerValue(-1.9), -1);
    EXPECT_EQ(longIntegerValue(1e300), std::numeric_limits<qint64>::max());
    EXPECT_EQ(longIntegerValue(true), 1);
    EXPECT_EQ(longIntegerValue(QVariant()), 0);
    EXPECT_EQ(longIntegerValue(QByteArray("41")), 0);
}
