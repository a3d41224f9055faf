// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/LogLabel.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

TEST(LogLabel, StaysWithinOneLineAndALimit)
{
    EXPECT_EQ(logLabel("a\nb\tc\r"), "a b c ");
    EXPECT_EQ(logLabel(QString("a") + QChar(0x2028) + "b" + QChar(0x2029) + "c"), "a b c");
    EXPECT_EQ(logLabel("été %@"), "été %@");
    EXPECT_EQ(logLabel(QString(1000, 'x')), QString(200, 'x') + "...");
    EXPECT_EQ(logLabel(QString(200, 'x')), QString(200, 'x'));
    EXPECT_EQ(logLabel(QString()), QString());
    EXPECT_TRUE(logLabel(QString()).isNull());
    EXPECT_FALSE(logLabel("").isNull()) << "an empty text is not none";
}

TEST(LogLabel, IsAsLongAsItMayBe)
{
    EXPECT_EQ(logLabel("abcd", 3), "abc...");
    EXPECT_EQ(logLabel("abcd", 0), "...");
    EXPECT_EQ(logLabel(QString(1000, 'x'), wholeText), QString(1000, 'x'));
}

TEST(LogLabel, ShowsWhatWouldHaveBrokenTheLineAsItIsAsked)
{
    const QString text = QString("a\nb\x1b[2J") + QChar(0x2028) + QChar(0);
    EXPECT_EQ(logLabel(text, wholeText, LineBreaks::QuestionMarks), "a?b?[2J??");
    EXPECT_EQ(logLabel(text, wholeText, LineBreaks::Escapes), "a\\u000ab\\u001b[2J\\u2028\\u0000");
    EXPECT_EQ(logLabel("a\nb", 2, LineBreaks::Escapes), "a\\u000a...") << "counted before it is escaped";
}

TEST(LogLabel, CutsNoCharacterInHalves)
{
    const QString clock = QString::fromUcs4(U"\U0001F550");
    EXPECT_EQ(logLabel("a" + clock, 2), "a...");
    EXPECT_EQ(logLabel("a" + clock, 3), "a" + clock);
    EXPECT_EQ(logLabel("a" + clock + "b", 3), "a" + clock + "...");
}
