// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/StringsFile_p.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QStringEncoder>
#include <QVariant>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
using Table = QHash<QString, QString>;

/// The table in `data`; without one the refusal, under the key "refused".
Table parsed(const QByteArray &data)
{
    const auto table = StringsFile::parse(data);
    return table ? *table : Table{{"refused", table.error().text}};
}
} // namespace

TEST(StringsFile, HoldsKeysAndValues)
{
    EXPECT_EQ(parsed("\"Cancel\" = \"Annuler\";\n\"Alert message %@\"=\"Prévu : %@\" ;"),
              (Table{{"Cancel", "Annuler"}, {"Alert message %@", "Prévu : %@"}}));
    EXPECT_EQ(parsed(""), Table());
}

TEST(StringsFile, MayHoldCommentsBetweenItsParts)
{
    EXPECT_EQ(parsed("/* \"a\" = \"b\"; */ // \"c\"\n\"k\" /* is */ = // now\n \"/* v // */\"; /**/ // end"),
              (Table{{"k", "/* v // */"}}));
}

TEST(StringsFile, KnowsTheEscapes)
{
    EXPECT_EQ(parsed(R"("a\"b\\c" = "line\nnext\tcolumn\r\'";)"),
              (Table{{"a\"b\\c", "line\nnext\tcolumn\r'"}}));
    EXPECT_EQ(parsed(R"("k" = "\u00E9\U202f\ud83c\udf19\q";)"),
              (Table{{"k", QString("é\u202f\U0001F319q")}}));
}

TEST(StringsFile, MayLeaveOutTheQuotesOfAWord)
{
    EXPECT_EQ(parsed("NSName_1 = com.dozely/Kit-2;"), (Table{{"NSName_1", "com.dozely/Kit-2"}}));
}

TEST(StringsFile, TakesTheLastOfTwoEntries)
{
    EXPECT_EQ(parsed("a = b; a = c;"), (Table{{"a", "c"}}));
}

TEST(StringsFile, MayBeInUtf16BehindAByteOrderMark)
{
    const QString text = "\"k\" = \"späť \U0001F319\";\n";
    const Table expected{{"k", "späť \U0001F319"}};
    for (const auto encoding :
         {QStringConverter::Utf16LE, QStringConverter::Utf16BE, QStringConverter::Utf8}) {
        QStringEncoder encode(encoding, QStringConverter::Flag::WriteBom);
        const QByteArray data = encode(text);
        EXPECT_EQ(parsed(data), expected) << QStringConverter::nameForEncoding(encoding);
    }
}

TEST(StringsFile, MayBeAPropertyListOfTexts)
{
    const QVariantMap map{{"Cancel", "Annuler"}};
    for (const auto format : {PropertyList::Format::Xml, PropertyList::Format::Binary})
        EXPECT_EQ(parsed(PropertyList::toData(map, format)), (Table{{"Cancel", "Annuler"}}));
    EXPECT_FALSE(StringsFile::parse(PropertyList::toData(QVariantMap{{"k", 1}}, PropertyList::Format::Xml)));
    EXPECT_FALSE(StringsFile::parse(PropertyList::toData(QVariantList{"k"}, PropertyList::Format::Xml)));
    EXPECT_FALSE(StringsFile::parse("bplist00"));
}

TEST(StringsFile, IsRefusedWholeWithTheLineThatIsDamaged)
{
    const char *const bad[] = {"\"k\"",        "\"k\" =",     "\"k\" = \"v\"",        "\"k\" = \"v",
                               "\"k\" \"v\";", "= \"v\";",    "\"k\" = \"\\u00g0\";", "\"k\" = \"\\u12",
                               "\"k\" = \"\\", "/* no end",   "\"k\" = \"v\";;",      "/",
                               "\"k\" = ;",    "k = \"v\"; }"};
    for (const char *data : bad)
        EXPECT_FALSE(StringsFile::parse(data)) << data;
    EXPECT_EQ(parsed("a = b;\n\nc d;\n"), (Table{{"refused", "It is damaged in line 3"}}));
}

TEST(StringsFile, IsRefusedInABrokenEncoding)
{
    const Table refused = parsed("\"k\" = \"\xff\xfe\";");
    EXPECT_TRUE(refused.value("refused").contains("encoded"));
}

TEST(StringsFile, IsRefusedBeyondTheSizeLimit)
{
    QByteArray data = "a = b;" + QByteArray(PropertyList::maximumSize - 6, ' ');
    EXPECT_EQ(parsed(data), (Table{{"a", "b"}}));
    EXPECT_TRUE(parsed(data + ' ').value("refused").contains("larger"));
}
