// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AECodes.h"
#include "DozelyKit/communication/events/AEMacRoman_p.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
QByteArray allBytes()
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes.append(static_cast<char>(i));
    return bytes;
}
} // namespace

TEST(AEMacRoman, HasACharacterForEachByteAndFindsItBack)
{
    const QString text = AEMacRoman::decoded(allBytes());
    EXPECT_EQ(text.size(), 256);
    EXPECT_EQ(QSet<QChar>(text.begin(), text.end()).size(), 256);
    EXPECT_EQ(AEMacRoman::encoded(text), allBytes());
}

TEST(AEMacRoman, WritesWhatItsTableSays)
{
    EXPECT_EQ(AEMacRoman::encoded(QString::fromUtf8("Zoë, 3 €")), QByteArray("Zo\x91, 3 \xDB"));
    EXPECT_EQ(AEMacRoman::decoded("\x8E\xD2\xF0"), QString::fromUtf16(u"\u00E9\u201C\uF8FF"));
}

TEST(AEMacRoman, PutsComposedCharactersTogetherFirst)
{
    EXPECT_EQ(AEMacRoman::encoded(QString::fromUtf16(u"e\u0301")), QByteArray("\x8E"));
}

TEST(AEMacRoman, WritesAQuestionMarkForEachCharacterThatItLacks)
{
    EXPECT_EQ(AEMacRoman::encoded(QString::fromUtf8("a日b😀c")), QByteArray("a?b?c"));
    EXPECT_EQ(AEMacRoman::encoded(QString(QChar(0xD800))), QByteArray("?"));
}

TEST(FourCharCode, ReadsFourCharactersAsABigEndianNumber)
{
    EXPECT_EQ(fourCharCode("psn "), 0x70736e20u);
    EXPECT_EQ(typeProcessSerialNumber, 0x70736e20u);
}

TEST(NSFileTypeForHFSTypeCode, PutsTheCharactersBetweenQuotes)
{
    EXPECT_EQ(NSFileTypeForHFSTypeCode(fourCharCode("quit")), "'quit'");
    EXPECT_EQ(NSFileTypeForHFSTypeCode(fourCharCode("psn ")), "'psn '");
    EXPECT_EQ(NSFileTypeForHFSTypeCode(0x8E6F6F41), QString::fromUtf8("'éooA'"));
    EXPECT_EQ(NSFileTypeForHFSTypeCode(0), QString("'") + QString(4, QChar(0)) + "'");
}

TEST(NSFileTypeForHFSTypeCode, GivesDifferentCodesDifferentTexts)
{
    QSet<QString> texts;
    for (quint32 byte = 0; byte < 256; ++byte) {
        for (const int shift : {0, 8, 16, 24})
            texts += NSFileTypeForHFSTypeCode(byte << shift);
    }
    EXPECT_EQ(texts.size(), 4 * 255 + 1);
}

TEST(CodeOfCharacters, TakesFourCharactersOfMacRomanAlone)
{
    EXPECT_EQ(codeOfCharacters("aevt"), kCoreEventClass);
    EXPECT_EQ(codeOfCharacters(QString::fromUtf8("éooA")), 0x8E6F6F41u);
    EXPECT_EQ(codeOfCharacters("????"), fourCharCode("????"));
    for (const char *text : {"", "abc", "abcde", "abc日"})
        EXPECT_FALSE(codeOfCharacters(QString::fromUtf8(text))) << text;
}
