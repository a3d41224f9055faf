// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/WireValues_p.h"
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "DozelyKit/core/dbus/ObjectPath_p.h"
#include "WireEncoder.h"
#include "support/PrintTo.h"

#include <QDateTime>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace dozely;

namespace
{
Result<QVariantList> read(const QByteArray &signature, const WireEncoder &body, bool isLittleEndian = true)
{
    WireMessage message;
    message.signature = signature;
    message.body = body.bytes();
    message.isLittleEndian = isLittleEndian;
    return WireValues::read(message);
}

/// The values as they come out at the other side.
QVariantList afterTheWire(const QVariantList &values)
{
    WireMessage message;
    EXPECT_TRUE(WireValues::write(values, &message).ok());
    const auto read = WireValues::read(message);
    EXPECT_TRUE(read.ok());
    return read ? *read : QVariantList();
}

QString errorOfReading(const QByteArray &signature, const WireEncoder &body)
{
    const auto values = read(signature, body);
    return values ? QStringLiteral("none") : values.error().text;
}

QString errorOfWriting(const QVariantList &values)
{
    WireMessage message;
    const auto written = WireValues::write(values, &message);
    return written ? QStringLiteral("none") : written.error().text;
}

/// An array of dictionary entries, which `contents` encodes.
WireEncoder entries(const WireEncoder &contents, bool isLittleEndian = true)
{
    WireEncoder body(isLittleEndian);
    return body.u32(static_cast<quint32>(contents.bytes().size())).align(8).raw(contents.bytes());
}

/// Variants within each other, the innermost of which holds a byte.
WireEncoder variants(int levels)
{
    WireEncoder body;
    for (int i = 1; i < levels; ++i)
        body.signature("v");
    body.signature("y").raw("x");
    return body;
}
} // namespace

TEST(WireValues, OfEachTypeAreTheSameAfterTheWire)
{
    const QDateTime paris({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris"));
    const QVariant values[] = {true,
                               false,
                               0,
                               std::numeric_limits<int>::min(),
                               std::numeric_limits<int>::max(),
                               std::numeric_limits<uint>::max(),
                               std::numeric_limits<qlonglong>::min(),
                               std::numeric_limits<qlonglong>::max(),
                               std::numeric_limits<qulonglong>::max(),
                               0.25,
                               -0.0,
                               std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::denorm_min(),
                               "Grüße \U0001F600",
                               QByteArray("\0\xff", 2),
                               paris,
                               QDateTime({1, 1, 1}, {0, 0}, Qt::UTC),
                               QDateTime({2026, 3, 14}, {6, 55}, Qt::OffsetFromUTC, -3600),
                               QVariantList{1, "zwei", 3U, QVariantList{4.0, QVariantMap{{"5", true}}}},
                               QVariantMap{{"", 0}, {"a", QVariantMap{}}, {"b", QVariantList{paris}}}};
    for (const QVariant &value : values) {
        SCOPED_TRACE(value.typeName());
        for (int before = 0; before < 8; ++before) { // at each place of an alignment
            const QVariantList all{QByteArray(before, 'x'), value, "behind"};
            const QVariantList read = afterTheWire(all);
            EXPECT_EQ(read, all);
            EXPECT_EQ(read.value(1).metaType(), value.metaType());
        }
    }
    EXPECT_TRUE(std::isnan(afterTheWire({std::nan("")}).value(0).toDouble()));
    EXPECT_TRUE(std::signbit(afterTheWire({-0.0}).value(0).toDouble()));
    EXPECT_EQ(afterTheWire({}), QVariantList());
}

TEST(WireValues, OfOtherWidthsAreTheNearestOfOurs)
{
    const struct {
        QVariant written;
        QVariant read;
    } cases[] = {{QVariant::fromValue<short>(-3), -3},
                 {QVariant::fromValue<ushort>(65535), 65535},
                 {QVariant::fromValue<long>(-5), -5LL},
                 {QVariant::fromValue<ulong>(5), 5ULL},
                 {0.5F, 0.5},
                 {QStringList{"a", "b"}, QVariantList{"a", "b"}},
                 {QVariant::fromValue(QVariant(7)), 7},
                 {QVariantList{QVariant::fromValue(QVariant("x"))}, QVariantList{"x"}}};
    for (const auto &test : cases) {
        const QVariant read = afterTheWire({test.written}).value(0);
        EXPECT_EQ(read, test.read);
        EXPECT_EQ(read.metaType(), test.read.metaType());
    }
}

TEST(WireValues, AreReadInBothByteOrders)
{
    for (const bool isLittleEndian : {true, false}) {
        WireEncoder body(isLittleEndian);
        body.number(0xf1, 1).u32(1).number(0xfffe, 2).number(0xfffe, 2).u32(0xfffffffe).u32(0xfffffffe);
        body.number(0xfffffffffffffffe, 8).number(0xfffffffffffffffe, 8).number(0x3fd0000000000000, 8);
        body.text("text").u32(2).raw("by").u32(15).text("a").text("bc"); // 4 + 1 + 1, two of padding, 7
        const auto values = read("ybnqiuxtdsayas", body, isLittleEndian);
        ASSERT_TRUE(values) << qPrintable(values.error().text);
        EXPECT_EQ(*values,
                  (QVariantList{0xf1U, true, -2, 0xfffeU, -2, 0xfffffffeU, -2LL, 0xfffffffffffffffeULL, 0.25,
                                "text", QByteArray("by"), QVariantList{"a", "bc"}}));
    }
    for (const bool isLittleEndian : {true, false}) {
        WireEncoder contents(isLittleEndian);
        contents.text("a").text("b").align(8).text("").text("");
        const auto values = read("a{ss}", entries(contents, isLittleEndian), isLittleEndian);
        ASSERT_TRUE(values);
        EXPECT_EQ(*values, (QVariantList{QVariantMap{{"a", "b"}, {"", ""}}}));
    }
    for (const bool isLittleEndian : {true, false}) {
        WireEncoder body(isLittleEndian);
        body.number(0, 8).u32(static_cast<quint32>(-3600)).text("");
        const auto values = read("(xis)", body, isLittleEndian);
        ASSERT_TRUE(values);
        EXPECT_EQ(values->value(0).toDateTime(), QDateTime({1970, 1, 1}, {0, 0}, Qt::UTC));
        EXPECT_EQ(values->value(0).toDateTime().offsetFromUtc(), -3600);
    }
}

TEST(WireValues, ThatAreEmptyAreNotNull)
{
    for (const QVariant &value :
         {QVariant(""), QVariant(QByteArray("")), QVariant(QVariantList()), QVariant(QVariantMap())}) {
        const QVariant read = afterTheWire({value}).value(0);
        EXPECT_EQ(read.metaType(), value.metaType());
    }
    EXPECT_FALSE(afterTheWire({""}).value(0).toString().isNull());
    EXPECT_FALSE(afterTheWire({QByteArray("")}).value(0).toByteArray().isNull());
    EXPECT_FALSE(afterTheWire({QVariantMap{{"key", ""}}}).value(0).toMap().value("key").toString().isNull());
    EXPECT_FALSE(afterTheWire({QVariantMap{{"key", QByteArray("")}}})
                     .value(0)
                     .toMap()
                     .value("key")
                     .toByteArray()
                     .isNull());
}

TEST(WireValues, WhatDBusCannotCarryTravelsAsABlock)
{
    const QVariant odd[] = {QVariant(), QString(QChar(0xFFFE)), QVariantList{QVariant()},
                            QVariantMap{{QString(QChar(0)), 1}}};
    for (const QVariant &value : odd) {
        WireMessage message;
        ASSERT_TRUE(WireValues::write({value}, &message));
        EXPECT_EQ(message.signature, "ay");
        EXPECT_TRUE(CborBlock::decode(afterTheWire({value}).value(0).toByteArray()).ok());
    }
}

TEST(WireValues, ThatHaveNoTypeOnTheWireAreRefusedByName)
{
    EXPECT_EQ(errorOfWriting({QVariant::fromValue<QObject *>(nullptr)}),
              "a value of type QObject* cannot travel");
    EXPECT_EQ(errorOfWriting({QVariantList{1, QChar('x')}}), "a value of type QChar cannot travel");
    EXPECT_EQ(errorOfWriting({QVariantMap{{"path", QVariant::fromValue(ObjectPath{"/"})}}}),
              "a value of type dozely::ObjectPath cannot travel");
    EXPECT_EQ(errorOfWriting({QDateTime()}), "a date that is not valid");
    EXPECT_EQ(errorOfWriting({QVariantList{QDateTime()}}), "a date that is not valid");
}

TEST(WireValues, AreLimitedInSizeAndNumber)
{
    constexpr qsizetype most = CborBlock::maximumSize;
    EXPECT_EQ(errorOfWriting({QByteArray(most - 4, 'x')}), "none");
    EXPECT_EQ(errorOfWriting({QByteArray(most - 3, 'x')}), "a message of more than 4194304 bytes");
    EXPECT_EQ(errorOfWriting({QString(most, 'x')}), "a message of more than 4194304 bytes");
    EXPECT_EQ(errorOfWriting({QVariantMap{{QString(most, 'x'), 1}}}), "a message of more than 4194304 bytes");
    EXPECT_EQ(errorOfWriting({QVariantMap{{QString(most - 100, 'x'), QString(100, 'x')}}}),
              "a message of more than 4194304 bytes");
    EXPECT_EQ(errorOfWriting(QVariantList(255, 1)), "none");
    EXPECT_EQ(errorOfWriting(QVariantList(256, 1)), "a message of too many arguments");
    EXPECT_EQ(afterTheWire(QVariantList(255, true)).size(), 255);
}

TEST(WireValues, PathsOfObjectsAreArgumentsAloneAndNoValues)
{
    const auto values = read("oo", WireEncoder().text("/root").text("/"));
    ASSERT_TRUE(values);
    EXPECT_EQ(values->value(0).value<ObjectPath>().path, "/root");
    EXPECT_EQ(values->value(1).value<ObjectPath>().path, "/");
    EXPECT_EQ(afterTheWire({QVariant::fromValue(ObjectPath{"/object/1"})}).value(0).value<ObjectPath>().path,
              "/object/1");
    EXPECT_EQ(errorOfReading("v", WireEncoder().signature("o").text("/root")),
              "arguments of these types are not known: o");
    const WireEncoder info = entries(WireEncoder().text("key").signature("o").text("/root"));
    EXPECT_EQ(errorOfReading("a{sv}", info), "arguments of these types are not known: o");
    for (const char *const path : {"", "root", "/a/", "//"})
        EXPECT_FALSE(read("o", WireEncoder().text(path))) << path;
}

TEST(WireValues, OfTypesThatAreNotOursAreRefusedByName)
{
    const QByteArray zeroes(64, '\0');
    for (const char *const type : {"g", "h", "ai", "ab", "ax", "aas", "aay", "aav", "a{iv}", "a{si}",
                                   "a{sas}", "a{ov}", "(ii)", "(xi)", "(xiss)", "a(xis)", "ao"}) {
        SCOPED_TRACE(type);
        const QString expected = QStringLiteral("arguments of these types are not known: ") + type;
        EXPECT_EQ(errorOfReading(type, WireEncoder().raw(zeroes)), expected);
        EXPECT_EQ(errorOfReading("v", WireEncoder().signature(type).raw(zeroes)), expected);
        EXPECT_EQ(errorOfReading("sa{sv}" + QByteArray(type),
                                 WireEncoder().text("first").u32(0).align(8).raw(zeroes)),
                  expected);
    }
    EXPECT_EQ(errorOfReading("(xis)", WireEncoder().number(0, 8).u32(100'000).text("Nowhere/At_All")),
              "arguments of these types are not known: (xis)")
        << "no place on earth";
}

TEST(WireValues, OfSignaturesThatAreNoneAreRefused)
{
    const QByteArray zeroes(64, '\0');
    for (const QByteArray &signature :
         {QByteArray("z"), QByteArray("a"), QByteArray("("), QByteArray(")"), QByteArray("()"),
          QByteArray("a{s}"), QByteArray("a{vs}"), QByteArray("{sv}"), QByteArray("a{sv"), QByteArray("(i"),
          QByteArray(200, 'a') + 'i', QByteArray(100, '(') + 'i' + QByteArray(100, ')')}) {
        SCOPED_TRACE(signature.constData());
        EXPECT_FALSE(read(signature, WireEncoder().raw(zeroes)));
        EXPECT_FALSE(read("v", WireEncoder().signature(signature).raw(zeroes)));
    }
    EXPECT_FALSE(read("v", WireEncoder().signature("").raw(zeroes)));
    EXPECT_FALSE(read("v", WireEncoder().signature("ii").u32(1).u32(1)));
}

TEST(WireValues, NestSixtyFourDeepAndNoDeeper)
{
    EXPECT_TRUE(read("v", variants(64)));
    EXPECT_FALSE(read("v", variants(65)));
    EXPECT_FALSE(read("v", variants(100'000)));
    // Lists and the variants in them, 32 of each; the innermost list is empty.
    const auto lists = [](int containers) {
        WireEncoder body;
        QList<qsizetype> lengths;
        for (int i = 1; i < containers; i += 2) {
            body.align(4);
            lengths += body.bytes().size();
            body.u32(0).signature("av");
        }
        QByteArray bytes = body.u32(0).bytes();
        for (const qsizetype at : lengths) {
            const auto length = static_cast<quint32>(bytes.size() - at - 4);
            bytes.replace(at, 4, WireEncoder().u32(length).bytes());
        }
        return read("av", WireEncoder().raw(bytes)).ok();
    };
    EXPECT_TRUE(lists(3));
    EXPECT_TRUE(lists(63));
    EXPECT_FALSE(lists(65));
    EXPECT_FALSE(lists(9'999));
}

TEST(WireValues, OfAKeyThatComesTwiceIsTheLast)
{
    WireEncoder contents;
    contents.text("b").text("first").align(8).text("a").text("other").align(8).text("b").text("");
    const auto values = read("a{ss}", entries(contents));
    ASSERT_TRUE(values);
    EXPECT_EQ(*values, (QVariantList{QVariantMap{{"a", "other"}, {"b", ""}}}));
}

TEST(WireValues, ThatAreDamagedAreRefused)
{
    EXPECT_FALSE(read("b", WireEncoder().u32(2)));
    EXPECT_FALSE(read("s", WireEncoder().text(QByteArray("a\0b", 3))));
    EXPECT_FALSE(read("s", WireEncoder().text("\xff")));
    EXPECT_FALSE(read("s", WireEncoder().text("\xed\xa0\x80"))) << "half a surrogate pair";
    EXPECT_FALSE(read("s", WireEncoder().text("\xc0\x80"))) << "NUL in two bytes";
    EXPECT_FALSE(read("s", WireEncoder().u32(1).raw("ab"))) << "no NUL behind it";
    EXPECT_FALSE(read("s", WireEncoder().u32(0xffffffff).raw("a")));
    EXPECT_FALSE(read("ay", WireEncoder().u32(0xffffffff).raw("a")));
    EXPECT_FALSE(read("av", WireEncoder().u32(0xffffffff).signature("y").raw("a")));
    EXPECT_FALSE(read("as", WireEncoder().u32(5).text("a"))) << "an element reaches over the end";
    EXPECT_FALSE(read("as", WireEncoder().u32(7).text("a").raw("x")));
    EXPECT_FALSE(read("a{sv}", WireEncoder().u32(6).align(8).text("a"))) << "a key without value";
    EXPECT_FALSE(read("yu", WireEncoder().raw("xx").raw(QByteArray(2, '\0')).u32(1)))
        << "the padding is zero";
    EXPECT_FALSE(read("", WireEncoder().raw("x"))) << "more than the signature says";
    EXPECT_FALSE(read("i", WireEncoder().u32(1).raw("x")));
    EXPECT_FALSE(read("i", WireEncoder())) << "less";
}

TEST(WireValues, CutOffAnywhereAreRefused)
{
    const QVariantList all{true,
                           1,
                           2U,
                           3LL,
                           4ULL,
                           0.5,
                           "text",
                           QByteArray("data"),
                           QDateTime({2026, 3, 14}, {6, 55}, Qt::UTC),
                           QVariantList{1, "zwei", QVariantMap{{"drei", QVariantList{4}}}},
                           QVariantMap{{"a", QByteArray("b")}}};
    WireMessage message;
    ASSERT_TRUE(WireValues::write(all, &message));
    const QByteArray body = message.body;
    for (qsizetype size = 0; size < body.size(); ++size) {
        message.body = body.left(size);
        EXPECT_FALSE(WireValues::read(message)) << size;
    }
    message.body = body;
    EXPECT_EQ(*WireValues::read(message), all);
}
