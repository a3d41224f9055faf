// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/StringFormat.h"

#include <QDateTime>
#include <QObject>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <limits>

using namespace dozely;

namespace
{
QString text(const char *format, const QVariantList &arguments = {})
{
    return stringWithFormat(QString::fromUtf8(format), arguments);
}
} // namespace

TEST(StringWithFormat, CopiesTextWithoutConversions)
{
    EXPECT_EQ(text(""), QString(""));
    EXPECT_EQ(text("Mise en veille forcee."), QString("Mise en veille forcee."));
    EXPECT_EQ(text("été %d"), QString(u8"été 0"));
}

TEST(StringWithFormat, PrintsObjectsByTheirDescription)
{
    EXPECT_EQ(text("%@/%@", {"/folder", "name"}), QString("/folder/name"));
    EXPECT_EQ(text("%@", {42}), QString("42"));
    EXPECT_EQ(text("%@", {QDateTime({2026, 3, 14}, QTime(5, 55), Qt::UTC)}),
              QString("2026-03-14 05:55:00 +0000"));
}

TEST(StringWithFormat, PrintsNullForNothing)
{
    EXPECT_EQ(text("%ld @ %@", {qint64(0), QString()}), QString("0 @ (null)"));
    EXPECT_EQ(text("[%@]", {QVariant()}), QString("[(null)]"));
    EXPECT_EQ(text("[%@]", {""}), QString("[]"));
    EXPECT_EQ(text("[%s]", {QString()}), QString("[(null)]"));
}

TEST(StringWithFormat, TakesMissingArgumentsForNothing)
{
    EXPECT_EQ(text("%d %@ %s %x %f %p", {}), QString("0 (null) (null) 0 0.000000 0x0"));
}

TEST(StringWithFormat, IgnoresArgumentsThatAreNotAskedFor)
{
    EXPECT_EQ(text("%d", {1, 2, 3}), QString("1"));
}

TEST(StringWithFormat, DoesNotInterpretWhatItPutsIn)
{
    EXPECT_EQ(text("%@ %d", {"%d%%", 5}), QString("%d%% 5"));
}

TEST(StringWithFormat, PrintsUserIdsSigned)
{
    EXPECT_EQ(text("%@.%d", {"Dozely Agent", quint32(501)}), QString("Dozely Agent.501"));
    EXPECT_EQ(text("%@.%d", {"Dozely Agent", quint32(4294967294)}), QString("Dozely Agent.-2"));
}

TEST(StringWithFormat, ShowsANegativeCodeAsLongWithItsSignExtended)
{
    EXPECT_EQ(text("%08lx", {qint32(-536870206)}), QString("ffffffffe00002c2"));
    EXPECT_EQ(text("%08x", {qint32(-536870206)}), QString("e00002c2"));
    EXPECT_EQ(text("%08lx", {qint32(0x2c2)}), QString("000002c2"));
}

TEST(StringWithFormat, TakesIntegersAtTheWidthThatTheModifierNames)
{
    const qint64 number = 0x123456789abcdef0;
    EXPECT_EQ(
        text("%hhx %hx %x %lx %llx %qx %zx", {number, number, number, number, number, number, number}),
        QString("f0 def0 9abcdef0 123456789abcdef0 123456789abcdef0 123456789abcdef0 123456789abcdef0"));
    EXPECT_EQ(text("%hhd %hd %d", {0x80, 0x8000, quint32(0x80000000)}), QString("-128 -32768 -2147483648"));
    EXPECT_EQ(text("%lu", {std::numeric_limits<quint64>::max()}), QString("18446744073709551615"));
    EXPECT_EQ(text("%u", {-1}), QString("4294967295"));
    EXPECT_EQ(text("%i %o %X", {-3, 8, 255}), QString("-3 10 FF"));
}

TEST(StringWithFormat, FormatsIntegersExactlyAsPrintf)
{
    for (const char *flags : {"", "-", "+", " ", "0", "#", "-#", "+0"}) {
        for (const char *width : {"", "1", "12", ".0", ".7", "12.7"}) {
            for (const char type : {'d', 'u', 'x', 'X', 'o'}) {
                const std::string format = std::string("[%") + flags + width + type + "]";
                for (const int number : {0, 1, -1, 123456, std::numeric_limits<int>::min()}) {
                    char expected[64];
                    std::snprintf(expected, sizeof expected, format.c_str(), number);
                    EXPECT_EQ(text(format.c_str(), {number}), QString(expected)) << format << ' ' << number;
                }
            }
        }
    }
}

TEST(StringWithFormat, FormatsFractionsAsPrintfInTheCLocale)
{
    std::setlocale(LC_NUMERIC, "C");
    for (const char *format : {"[%f]", "[%.2f]",    "[%8.3f]", "[%-10.1f]", "[%+g]",   "[%e]",    "[%.3e]",
                               "[%g]", "[%010.2f]", "[%.0f]",  "[%.0e]",    "[%.1f]",  "[%#.0f]", "[% f]",
                               "[%G]", "[%E]",      "[%.17g]", "[%.20f]",   "[%5.0f]", "[%-8.1e]"}) {
        for (const double number :
             {0.0, -0.0, 0.5, 1.5, 2.5, -0.5, 0.25, 0.125, 1.0, -2.5, 3.14159265, 1e10, 1e-7, 1e22, 5e-324,
              std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}) {
            char expected[128];
            std::snprintf(expected, sizeof expected, format, number);
            EXPECT_EQ(text(format, {number}), QString(expected)) << format << ' ' << number;
        }
    }
    EXPECT_EQ(text("%.1f", {3}), QString("3.0"));
    EXPECT_EQ(text("%.0f", {0.5}), QString("0"));
    EXPECT_EQ(text("%f", {std::numeric_limits<double>::max()}).size(), 316);
}

TEST(StringWithFormat, CutsTheFractionOfANumberThatIsPrintedAsInteger)
{
    EXPECT_EQ(text("%d %ld", {2.9, -2.9}), QString("2 -2"));
    EXPECT_EQ(text("%d", {true}), QString("1"));
}

TEST(StringWithFormat, PrintsZeroForATextThatIsPrintedAsNumber)
{
    EXPECT_EQ(text("%d %f", {"15", "1.5"}), QString("0 0.000000"));
}

TEST(StringWithFormat, PrintsCharacterStrings)
{
    EXPECT_EQ(text("%s", {QVariant::fromValue<const char *>("-[WDCommunicationCenter dealloc]")}),
              QString("-[WDCommunicationCenter dealloc]"));
    EXPECT_EQ(text("%s %s", {QByteArray("caf\xc3\xa9"), "text"}), QString(u8"café text"));
}

TEST(StringWithFormat, PrintsCharacters)
{
    EXPECT_EQ(text("%c%c", {65, QVariant(QChar(u'é'))}), QString(u8"Aé"));
}

TEST(StringWithFormat, PrintsPointers)
{
    QObject object;
    const QString address = QString::number(reinterpret_cast<quintptr>(&object), 16);
    EXPECT_EQ(text("%p", {QVariant::fromValue(&object)}), "0x" + address);
    EXPECT_EQ(text("%p", {QVariant::fromValue<void *>(&object)}), "0x" + address);
}

TEST(StringWithFormat, PadsAndCutsTexts)
{
    EXPECT_EQ(text("[%6@][%-6s][%.2@][%5.1s]", {"abc", "abc", "abc", "abc"}),
              QString("[   abc][abc   ][ab][    a]"));
    EXPECT_EQ(text("[%2@]", {"abc"}), QString("[abc]"));
    EXPECT_EQ(text("[%.0@][%.0s][%2.0s]", {"abc", "abc", "abc"}), QString("[][][  ]"));
}

TEST(StringWithFormat, TakesWidthAndPrecisionFromArguments)
{
    EXPECT_EQ(text("[%*d][%-*d][%*d][%.*f]", {5, 42, 5, 42, -5, 42, 2, 1.239}),
              QString("[   42][42   ][42   ][1.24]"));
}

TEST(StringWithFormat, TakesArgumentsByPositionAsTranslationsDo)
{
    EXPECT_EQ(text("%2$@ before %1$@", {"one", "two"}), QString("two before one"));
    EXPECT_EQ(text("%3$d", {1, 2}), QString("0"));
}

TEST(StringWithFormat, PrintsAPercentSign)
{
    EXPECT_EQ(text("100%% %d%%", {5}), QString("100% 5%"));
}

TEST(StringWithFormat, LeavesUnknownConversionsAsTheyStand)
{
    EXPECT_EQ(text("100%, %k, %", {5}), QString("100%, %k, %"));
    EXPECT_EQ(text("%n", {5}), QString("%n"));
    EXPECT_EQ(text("%-12.3l"), QString("%-12.3l"));
}

TEST(StringWithFormat, BoundsWidthsThatWouldFillTheMemory)
{
    EXPECT_LT(text("%999999999d", {1}).size(), 1000);
    EXPECT_LT(text("%.999999999d", {1}).size(), 1000);
    EXPECT_LT(text("%99999999999999999999@", {"x"}).size(), 1000);
    EXPECT_LT(text("%*f", {std::numeric_limits<int>::min(), 1.0}).size(), 1000);
    EXPECT_LT(text("%#300.300o", {-1}).size(), 1000);
}

TEST(NSLog, WritesOneLineToTheConsole)
{
    testing::internal::CaptureStderr();
    NSLog("Could not open file for writing (errno: %d)", 13);
    NSLog("%@ %@", QString(u8"été"), QVariant());
    NSLog("plain");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Could not open file for writing (errno: 13)\nété (null)\nplain\n");
}
