// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/StringExtensions.h"

#include <gtest/gtest.h>

using namespace zandorSoftwaresExtensions;

TEST(StringWithData, DecodesEachEncoding)
{
    EXPECT_EQ(stringWithData("Dozely", NSASCIIStringEncoding), QString("Dozely"));
    EXPECT_EQ(stringWithData("\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80", NSUTF8StringEncoding), QString(u8"é€😀"));
    EXPECT_EQ(stringWithData("\xe9\xff", NSISOLatin1StringEncoding), QString(u8"éÿ"));
    EXPECT_EQ(stringWithData("\xb1\xe6", NSISOLatin2StringEncoding), QString(u8"ąć"));
    EXPECT_EQ(stringWithData("\x80\xe9", NSWindowsCP1252StringEncoding), QString(u8"€é"));
    EXPECT_EQ(stringWithData("\x8e\xdb\xa5", NSMacOSRomanStringEncoding), QString(u8"é€•"));
    EXPECT_EQ(stringWithData(QByteArray("\x20\xac\0A", 4), NSUTF16BigEndianStringEncoding), QString(u8"€A"));
    EXPECT_EQ(stringWithData(QByteArray("\xac\x20"
                                        "A\0",
                                        4),
                             NSUTF16LittleEndianStringEncoding),
              QString(u8"€A"));
    EXPECT_EQ(stringWithData(QByteArray("\0\x01\xf6\0", 4), NSUTF32StringEncoding), QString(u8"😀"));
}

TEST(StringWithData, TakesTheByteOrderFromTheMarkAndDropsIt)
{
    EXPECT_EQ(stringWithData(QByteArray("\xfe\xff\x20\xac", 4), NSUTF16StringEncoding), QString(u8"€"));
    EXPECT_EQ(stringWithData(QByteArray("\xff\xfe\xac\x20", 4), NSUTF16StringEncoding), QString(u8"€"));
    EXPECT_EQ(stringWithData(QByteArray("\xff\xfe\0\0\xac\x20\0\0", 8), NSUTF32StringEncoding),
              QString(u8"€"));
}

TEST(StringWithData, GivesNullForAsciiWithAByteAbove127)
{
    EXPECT_TRUE(stringWithData("caf\xe9", NSASCIIStringEncoding).isNull());
    EXPECT_FALSE(stringWithData("caf\x7f", NSASCIIStringEncoding).isNull());
}

TEST(StringWithData, GivesNullForUtf8ThatIsNotWellFormed)
{
    for (const char *bytes : {"\xff", "caf\xe9", "\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xe2\x82"})
        EXPECT_TRUE(stringWithData(bytes, NSUTF8StringEncoding).isNull())
            << QByteArray(bytes).toHex().constData();
}

TEST(StringWithData, GivesNullForHalfACharacter)
{
    EXPECT_TRUE(stringWithData("abc", NSUTF16BigEndianStringEncoding).isNull());
    EXPECT_TRUE(stringWithData(QByteArray("\xd8\x3d", 2), NSUTF16BigEndianStringEncoding).isNull());
    EXPECT_TRUE(stringWithData("abcde", NSUTF32StringEncoding).isNull());
}

TEST(StringWithData, GivesNullForAnUnknownEncoding)
{
    for (const quint64 encoding : {quint64(0), quint64(2), quint64(31), quint64(1) << 32, ~quint64(0)})
        EXPECT_TRUE(stringWithData("abc", encoding).isNull()) << encoding;
    EXPECT_TRUE(stringWithData("", 31).isNull());
}

TEST(StringWithData, GivesAnEmptyTextForEmptyData)
{
    EXPECT_FALSE(stringWithData("", NSUTF8StringEncoding).isNull());
    EXPECT_TRUE(stringWithData("", NSUTF8StringEncoding).isEmpty());
}

TEST(StringWithData, KeepsZeroBytes)
{
    EXPECT_EQ(stringWithData(QByteArray("a\0b", 3), NSUTF8StringEncoding), QString::fromLatin1("a\0b", 3));
}
