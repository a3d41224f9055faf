// SPDX-License-Identifier: MIT
#include "hosts/admin/StructuredFile.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
QString faultOf(const QByteArray &data)
{
    const auto value = StructuredFile::parse(data);
    return value ? QString("none") : value.error().text;
}
} // namespace

TEST(StructuredFile, TheSameIsReadFromEveryForm)
{
    const QVariantMap expected{
        {"name", "Backup"}, {"count", 7LL}, {"is", true}, {"list", QVariantList{"a", "1"}}};
    for (const char *text :
         {R"({"name": "Backup", "count": 7, "is": true, "list": ["a", "1"]})",
          "name: Backup\ncount: 7\nis: true\nlist:\n  - a\n  - '1'\n",
          "---\n{name: Backup, count: 7, is: True, list: [a, \"1\"]}",
          "<plist><dict><key>name</key><string>Backup</string><key>count</key><integer>7</integer><key>is</"
          "key><true/>"
          "<key>list</key><array><string>a</string><string>1</string></array></dict></plist>"}) {
        const auto value = StructuredFile::parse(text);
        ASSERT_TRUE(value) << qPrintable(value.error().text) << text;
        EXPECT_EQ(value->toMap(), expected) << text;
    }
}

TEST(StructuredFile, YamlHasTheTypesOfTheCoreSchema)
{
    const QVariantMap map =
        StructuredFile::parse("a: 1.5\nb: yes\nc: ~\nd: 03:00\ne: '7'\nf: -3\ng: .5\nh: 1e400\ni: 0o7\n"
                              "j: 9007199254740993\nk: 9223372036854775808\nl: 7.\nm: +7\n")
            ->toMap();
    EXPECT_EQ(map["a"], QVariant(1.5));
    EXPECT_EQ(map["b"], QVariant("yes"));
    EXPECT_FALSE(map["c"].isValid());
    EXPECT_EQ(map["d"], QVariant("03:00")) << "no number to the base of sixty";
    EXPECT_EQ(map["e"], QVariant("7"));
    EXPECT_EQ(map["f"], QVariant(-3LL));
    EXPECT_EQ(map["g"], QVariant(0.5));
    EXPECT_EQ(map["h"], QVariant("1e400"));
    EXPECT_EQ(map["i"], QVariant("0o7"));
    EXPECT_EQ(map["j"], QVariant(9007199254740993LL)) << "no fraction has so many digits";
    EXPECT_EQ(map["k"], QVariant(9223372036854775808.0));
    const auto typeOf = [&](const char *key) { return map[key].typeId(); };
    for (const char *whole : {"f", "j", "m"})
        EXPECT_EQ(typeOf(whole), QMetaType::LongLong) << whole;
    for (const char *fraction : {"a", "g", "k", "l"})
        EXPECT_EQ(typeOf(fraction), QMetaType::Double) << fraction;
}

TEST(StructuredFile, WhatMayMeanMoreThanItSaysIsRefused)
{
    EXPECT_EQ(faultOf("a: &x [1]\nb: *x\n"), "aliases are not understood, in line 2");
    EXPECT_EQ(faultOf("a: !!binary aGk=\n"), "tags are not understood, in line 1");
    EXPECT_EQ(faultOf("a: 1\na: 2\n"), "a key stands there twice, in line 2");
    EXPECT_EQ(faultOf("? [a]\n: 1\n"), "a key is not a text, in line 1");
    EXPECT_EQ(faultOf("a: 1\n---\nb: 2\n"), "it has more than one document");
    EXPECT_EQ(faultOf(""), "it is empty");
    EXPECT_EQ(faultOf(QByteArray(200, '[') + QByteArray(200, ']')), "it is nested too deeply, in line 1");
    const auto nested = [](int levels) { return QByteArray(levels, '[') + QByteArray(levels, ']'); };
    EXPECT_NE(faultOf(nested(dozely::PropertyList::maximumDepth + 1)), "it is nested too deeply, in line 1");
    EXPECT_EQ(faultOf(nested(dozely::PropertyList::maximumDepth + 2)), "it is nested too deeply, in line 1");
    EXPECT_NE(faultOf("a: [1\n"), "none");
    EXPECT_NE(faultOf("{\"a\": ]"), "none");
    EXPECT_NE(faultOf("<plist>"), "none");
    EXPECT_NE(faultOf("<plist version=\"1.0\"><date>some day</date></plist>"), "none");
    EXPECT_EQ(faultOf(QByteArray((16 << 20) + 1, ' ')), "it is larger than 16 MiB");
}
