// SPDX-License-Identifier: MIT
#include "hosts/common/events/EventValue.h"

#include "support/PrintTo.h"

#include <QDateTime>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
AEDesc descriptorOf(const QVariant &value)
{
    const auto descriptor = EventValue::toDescriptor(value);
    EXPECT_TRUE(descriptor) << descriptor.error().text.toStdString();
    return descriptor ? *descriptor : AEDesc();
}
} // namespace

TEST(EventValue, ComesBackAsItWent)
{
    const QVariantList values{QVariant(),
                              true,
                              false,
                              qint64{-5},
                              qint64{9'000'000'000},
                              0.25,
                              "",
                              QString::fromUtf8("日本"),
                              QByteArray("\0\1", 2),
                              QVariantList{qint64{1}, "two", QVariantList{}},
                              QVariantMap{{"key1", "text"}, {"key2", QVariantMap{{"innr", qint64{1}}}}}};
    for (const QVariant &value : values)
        EXPECT_EQ(EventValue::fromDescriptor(descriptorOf(value)), value) << qPrintable(value.toString());
}

TEST(EventValue, HasTheTypeThatReceiversExpect)
{
    EXPECT_EQ(descriptorOf(1).descriptorType(), typeSInt32);
    EXPECT_EQ(descriptorOf(2147483647LL).descriptorType(), typeSInt32);
    EXPECT_EQ(descriptorOf(2147483648LL).descriptorType(), typeSInt64);
    EXPECT_EQ(descriptorOf(true).descriptorType(), typeBoolean);
    EXPECT_EQ(descriptorOf("a").descriptorType(), typeUnicodeText);
    EXPECT_EQ(EventValue::fromDescriptor(descriptorOf(QDateTime({2026, 3, 14}, {6, 55}, Qt::UTC))),
              "2026-03-14T06:55:00Z");
}

TEST(EventValue, ReadsWhatOthersSend)
{
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc(typeTrue)), true);
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc::of(typeSInt16, qint16{-1})), qint64{-1});
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc(typeText, "Zo\x91")), QString::fromUtf8("Zoë"));
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc::of(typeType, fourCharCode("psn "))), "psn ");
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc(fourCharCode("mine"), "x")), QByteArray("x"));
}

TEST(EventValue, ReadsTheBytesOfWhatIsDamaged)
{
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc(typeSInt32, "ab")), QByteArray("ab"));
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc(typeBoolean)), QByteArray());
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc(typeUTF8Text, "\xff")), QByteArray("\xff"));
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc(typeType, "ab")), QByteArray("ab"));
    EXPECT_EQ(EventValue::fromDescriptor(AEDesc(typeIEEE64BitFloatingPoint, "ab")), QByteArray("ab"));
}

TEST(EventValue, RefusesWhatHasNoFormInASentence)
{
    EXPECT_EQ(EventValue::toDescriptor(QVariantMap{{"long key", 1}}).error().text,
              "\"long key\" is no keyword: that has four characters");
    EXPECT_EQ(EventValue::toDescriptor(QVariant::fromValue(QChar('c'))).error().text,
              "A value of the type QChar cannot be sent");
    QVariant nested = qint64{1};
    for (int depth = 0; depth <= AEDesc::maximumDepth; ++depth)
        nested = QVariantList{nested};
    EXPECT_EQ(EventValue::toDescriptor(nested).error().text, "The value is nested too deep (-1719)");
}

TEST(EventValue, TakesCodesThatPrint)
{
    EXPECT_EQ(*EventValue::codeOf("psn ", "code"), fourCharCode("psn "));
    EXPECT_FALSE(EventValue::codeOf("ps\n ", "code"))
        << "it could steer a terminal or start a line of the log";
    EXPECT_FALSE(EventValue::codeOf("abcde", "code"));
    EXPECT_EQ(EventValue::textOfCode(0x0a0d4142), "??AB");
}
