// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/StringFormat.h"

#include "Described.h"

#include <QDateTime>
#include <QTimeZone>
#include <QUrl>

#include <gtest/gtest.h>

#include <cmath>

using namespace dozely;

TEST(DescriptionOf, NothingIsNullInParentheses)
{
    EXPECT_EQ(descriptionOf(QVariant()), QString("(null)"));
    EXPECT_EQ(descriptionOf(QString()), QString("(null)"));
    EXPECT_EQ(descriptionOf(QByteArray()), QString("(null)"));
    EXPECT_EQ(descriptionOf(QDateTime()), QString("(null)"));
    EXPECT_EQ(descriptionOf(QVariant::fromValue<QObject *>(nullptr)), QString("(null)"));
    EXPECT_EQ(descriptionOf(QVariant::fromValue(nullptr)), QString("(null)"));
}

TEST(DescriptionOf, ATextIsTheTextItself)
{
    EXPECT_EQ(descriptionOf("Backup \"x\"\n"), QString("Backup \"x\"\n"));
    EXPECT_EQ(descriptionOf(""), QString(""));
}

TEST(DescriptionOf, ANumberIsDecimal)
{
    EXPECT_EQ(descriptionOf(-7), QString("-7"));
    EXPECT_EQ(descriptionOf(quint64(18446744073709551615U)), QString("18446744073709551615"));
    EXPECT_EQ(descriptionOf(true), QString("1"));
    EXPECT_EQ(descriptionOf(false), QString("0"));
    EXPECT_EQ(descriptionOf(0.1), QString("0.1"));
    EXPECT_EQ(descriptionOf(1000000.0), QString("1000000"));
    EXPECT_EQ(descriptionOf(1.0f), QString("1"));
    EXPECT_EQ(descriptionOf(0.1f), QString("0.1"));
    EXPECT_EQ(descriptionOf(std::nan("")), QString("nan"));
    EXPECT_EQ(descriptionOf(-INFINITY), QString("-inf"));
}

TEST(DescriptionOf, ACalendarDateIsWrittenInItsOwnZone)
{
    EXPECT_EQ(descriptionOf(QDateTime({2026, 3, 14}, QTime(6, 55), QTimeZone("Europe/Paris"))),
              QString("2026-03-14 06:55:00 +0100"));
    EXPECT_EQ(descriptionOf(QDateTime({2026, 3, 14}, QTime(6, 55), Qt::OffsetFromUTC, -12600)),
              QString("2026-03-14 06:55:00 -0330"));
}

TEST(DescriptionOf, ADateInUtcHasOffsetZero)
{
    EXPECT_EQ(descriptionOf(QDateTime({2026, 3, 14}, QTime(5, 5, 9, 999), Qt::UTC)),
              QString("2026-03-14 05:05:09 +0000"));
}

TEST(DescriptionOf, DataIsHexadecimalInGroupsOfFourBytes)
{
    EXPECT_EQ(descriptionOf(QByteArray("\x01\x02\x03\x04\xff")), QString("<01020304 ff>"));
    EXPECT_EQ(descriptionOf(QByteArray("")), QString("<>"));
}

TEST(DescriptionOf, AListIsInTheTextStyleOfPropertyLists)
{
    EXPECT_EQ(descriptionOf(QVariantList{"one", "two words", 3, 0.5}),
              QString("(\n    one,\n    \"two words\",\n    3,\n    \"0.5\"\n)"));
    EXPECT_EQ(descriptionOf(QStringList{"a", ""}), QString("(\n    a,\n    \"\"\n)"));
    EXPECT_EQ(descriptionOf(QVariantList{}), QString("(\n)"));
}

TEST(DescriptionOf, ADictionaryIsSortedByItsKeys)
{
    EXPECT_EQ(descriptionOf(QVariantMap{{"Name", "Backup"}, {"Due Date", 7}}),
              QString("{\n    \"Due Date\" = 7;\n    Name = Backup;\n}"));
    EXPECT_EQ(descriptionOf(QVariantMap{}), QString("{\n}"));
}

TEST(DescriptionOf, ContainersNestWithDeeperIndentation)
{
    const QVariantMap inner{{"list", QVariantList{1}}, {"data", QByteArray("\x0a")}};
    EXPECT_EQ(
        descriptionOf(QVariantList{inner}),
        QString("(\n    {\n        data = <0a>;\n        list = (\n            1\n        );\n    }\n)"));
}

TEST(DescriptionOf, TextsWithinContainersAreEscaped)
{
    EXPECT_EQ(descriptionOf(QVariantList{QString(u8"a\"b\\c\nd\té")}),
              QString("(\n    \"a\\\"b\\\\c\\nd\\t\\U00e9\"\n)"));
}

TEST(DescriptionOf, AnObjectIsItsOwnDescription)
{
    Described object;
    EXPECT_EQ(descriptionOf(QVariant::fromValue<QObject *>(&object)), QString("1 @ /private/x"));
    EXPECT_EQ(descriptionOf(QVariant::fromValue(&object)), QString("1 @ /private/x"));
}

TEST(DescriptionOf, AnObjectWithoutDescriptionIsItsClassAndAddress)
{
    Plain object;
    const QString expected =
        QString::asprintf("<%s: %p>", object.metaObject()->className(), static_cast<void *>(&object));
    EXPECT_EQ(descriptionOf(QVariant::fromValue<QObject *>(&object)), expected);
}

TEST(DescriptionOf, AnAddressIsItsText)
{
    EXPECT_EQ(descriptionOf(QUrl("https://example.org/x")), QString("https://example.org/x"));
}
