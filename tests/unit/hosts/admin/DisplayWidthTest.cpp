// SPDX-License-Identifier: MIT
#include "hosts/admin/DisplayWidth.h"

#include <gtest/gtest.h>

namespace
{
QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}
} // namespace

TEST(DisplayWidth, CountsTheColumnsThatATerminalTakes)
{
    EXPECT_EQ(DisplayWidth::of(""), 0);
    EXPECT_EQ(DisplayWidth::of(text("Größe „x“ …")), 11);
    EXPECT_EQ(DisplayWidth::of(text("日本語")), 6);
    EXPECT_EQ(DisplayWidth::of(text("カード: ok")), 10);
    EXPECT_EQ(DisplayWidth::of(text("ｶｰﾄﾞ")), 4); // halfwidth forms
    EXPECT_EQ(DisplayWidth::of(text("e\u0301")), 1);
    EXPECT_EQ(DisplayWidth::of(text("مواعيد")), 6);
    EXPECT_EQ(DisplayWidth::of(text("مُغيَّر")), 4);
    EXPECT_EQ(DisplayWidth::of(text("🌱 x")), 4);
    EXPECT_EQ(DisplayWidth::of(text("𠮟")), 2);
    EXPECT_EQ(DisplayWidth::widest({"abc", text("日本"), "a"}), 4);
}

TEST(DisplayWidth, PadsToColumns)
{
    EXPECT_EQ(DisplayWidth::padded(text("日本"), 6), text("日本  "));
    EXPECT_EQ(DisplayWidth::padded("long", 2), "long");
}

TEST(DisplayWidth, BreaksAtBlanksAndBetweenWideCharacters)
{
    EXPECT_EQ(DisplayWidth::lines("one two three", 8), (QStringList{"one two", "three"}));
    EXPECT_EQ(DisplayWidth::lines("one two", 7), (QStringList{"one two"}));
    EXPECT_EQ(DisplayWidth::lines("unbreakable x", 5), (QStringList{"unbreakable", "x"}));
    EXPECT_EQ(DisplayWidth::lines(text("日本語の文"), 6), (QStringList{text("日本語"), text("の文")}));
    EXPECT_EQ(DisplayWidth::lines(text("日本語 --option です"), 12),
              (QStringList{text("日本語"), text("--option で"), text("す")}));
    EXPECT_EQ(DisplayWidth::lines("", 5), QStringList{""});
}

TEST(DisplayWidth, KeepsPunctuationWhereItBelongs)
{
    EXPECT_EQ(DisplayWidth::lines(text("日本語。「文」"), 6),
              (QStringList{text("日本"), text("語。"), text("「文」")}));
}
