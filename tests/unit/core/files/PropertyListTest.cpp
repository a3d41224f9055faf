// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"

#include "Python.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gmock/gmock.h>
#include <limits>
#include <sys/stat.h>

using namespace dozely;

namespace
{
using PropertyList::Format;
using testing::AllOf;
using testing::HasSubstr;

class PropertyListInEachFormat : public testing::TestWithParam<Format>
{
protected:
    /// The bytes that Python writes for a Python expression.
    static QByteArray written(const QString &expression)
    {
        const QString format = GetParam() == Format::Xml ? "plistlib.FMT_XML" : "plistlib.FMT_BINARY";
        return python(QString("sys.stdout.buffer.write(plistlib.dumps(%1, fmt=%2))").arg(expression, format));
    }
};

QString name(const testing::TestParamInfo<Format> &info)
{
    return info.param == Format::Xml ? "Xml" : "Binary";
}

QVariant everyKind()
{
    return QVariantMap{
        {"Name", QString("Nächtlich & <früh> \U0001F319")},
        {"Is Enabled", true},
        {"Off", false},
        {"Small", qint64(7)},
        {"Negative", qint64(-5'000'000'000)},
        {"Half", 0.5},
        {"Bytes", QByteArray("\x00\xff zeros", 8)},
        {"Date", QDateTime({2026, 3, 14}, {5, 55, 7}, Qt::UTC)},
        {"Old", QDateTime({1969, 12, 31}, {23, 59, 59}, Qt::UTC)},
        {"List", QVariantList{qint64(1), "two", QVariantList{}, QVariantMap{}}},
    };
}

constexpr char everyKindInPython[] =
    "{'Name': 'Nächtlich & <früh> \\U0001F319', 'Is Enabled': True, 'Off': False, 'Small': 7, "
    "'Negative': -5000000000, 'Half': 0.5, 'Bytes': b'\\x00\\xff zeros', "
    "'Date': datetime.datetime(2026, 3, 14, 5, 55, 7), 'Old': datetime.datetime(1969, 12, 31, 23, 59, 59), "
    "'List': [1, 'two', [], {}]}";

/// One array in the other, `levels` of them, as XML.
QByteArray nested(int levels)
{
    return "<plist version=\"1.0\">" + QByteArray("<array>").repeated(levels) +
           QByteArray("</array>").repeated(levels) + "</plist>";
}

/// The refusal of `data`, empty when it is read.
std::string refusal(const QByteArray &data)
{
    const auto value = PropertyList::fromData(data);
    return value ? std::string() : value.error().text.toStdString();
}

/// The refusal of the file, empty when it is read.
std::string refusalOf(const QString &path, bool followLinks = true)
{
    const auto value = PropertyList::fromFile(path, nullptr, followLinks);
    return value ? std::string() : value.error().text.toStdString();
}

/// The value in `data`; invalid when it is refused.
QVariant valueIn(const QByteArray &data)
{
    const auto value = PropertyList::fromData(data);
    return value ? *value : QVariant();
}

/// A binary list of these objects; references and offsets take two bytes.
QByteArray binaryList(const QByteArrayList &objects)
{
    const auto bigEndian = [](quint64 number, int width) {
        QByteArray bytes;
        for (int i = width - 1; i >= 0; --i)
            bytes += static_cast<char>(number >> (8 * i));
        return bytes;
    };
    QByteArray list = "bplist00";
    QByteArray table;
    for (const QByteArray &object : objects) {
        table += bigEndian(static_cast<quint64>(list.size()), 2);
        list += object;
    }
    const auto at = static_cast<quint64>(list.size());
    return list + table + QByteArray(6, '\0') + "\x02\x02" +
           bigEndian(static_cast<quint64>(objects.size()), 8) + bigEndian(0, 8) + bigEndian(at, 8);
}

/// An array of at most 14 references.
QByteArray binaryArray(const QList<int> &members)
{
    QByteArray array(1, static_cast<char>(0xa0 | members.size()));
    for (const int member : members)
        array += QByteArray(1, static_cast<char>(member >> 8)) + static_cast<char>(member & 0xff);
    return array;
}
} // namespace

TEST_P(PropertyListInEachFormat, ReadsWhatAnotherProgramWrote)
{
    const QByteArray data = written(everyKindInPython);
    ASSERT_FALSE(data.isEmpty());
    Format format{};
    const auto value = PropertyList::fromData(data, &format);
    ASSERT_TRUE(value) << qPrintable(value.error().text);
    EXPECT_EQ(*value, everyKind());
    EXPECT_EQ(format, GetParam());
}

TEST_P(PropertyListInEachFormat, WritesWhatAnotherProgramReads)
{
    const QByteArray data = PropertyList::toData(everyKind(), GetParam());
    ASSERT_FALSE(data.isEmpty());
    const QByteArray answer = python(QString("value = plistlib.loads(sys.stdin.buffer.read())\n"
                                             "print(value == %1, type(value['Is Enabled']).__name__)")
                                         .arg(everyKindInPython),
                                     data);
    EXPECT_EQ(answer, "True bool\n");
}

TEST_P(PropertyListInEachFormat, ReadsBackWhatItWrote)
{
    EXPECT_EQ(valueIn(PropertyList::toData(everyKind(), GetParam())), everyKind());
}

TEST_P(PropertyListInEachFormat, KeepsTheEndsOfTheIntegerRange)
{
    const QVariantList ends{std::numeric_limits<qint64>::min(), qint64(-1),
                            std::numeric_limits<qint64>::max(), quint64(1) << 63,
                            std::numeric_limits<quint64>::max()};
    EXPECT_EQ(valueIn(PropertyList::toData(ends, GetParam())), QVariant(ends));
    constexpr char inPython[] = "[-2**63, -1, 2**63 - 1, 2**63, 2**64 - 1]";
    EXPECT_EQ(valueIn(written(inPython)), QVariant(ends));
    EXPECT_EQ(python(QString("print(plistlib.loads(sys.stdin.buffer.read()) == %1)").arg(inPython),
                     PropertyList::toData(ends, GetParam())),
              "True\n");
}

TEST_P(PropertyListInEachFormat, WritesADateOfAnyZoneAsTheSameInstant)
{
    const QDateTime date({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris"));
    const auto read = PropertyList::fromData(PropertyList::toData(date, GetParam()));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->toDateTime(), QDateTime({2026, 3, 14}, {5, 55}, Qt::UTC));
    EXPECT_EQ(read->toDateTime().timeSpec(), Qt::UTC);
}

TEST_P(PropertyListInEachFormat, CarriesDatesOfEveryCentury)
{
    QVariantList dates;
    QStringList inPython;
    for (const int year : {1, 1600, 1800, 1932, 1970, 2000, 2001, 2069, 2070, 2500, 9999}) {
        dates += QDateTime({year, 12, 31}, {23, 59, 58}, Qt::UTC);
        inPython += QString("datetime.datetime(%1, 12, 31, 23, 59, 58)").arg(year);
    }
    const QString list = '[' + inPython.join(", ") + ']';
    EXPECT_EQ(valueIn(written(list)), QVariant(dates));
    const QByteArray ours = PropertyList::toData(dates, GetParam());
    EXPECT_EQ(valueIn(ours), QVariant(dates));
    EXPECT_EQ(python(QString("print(plistlib.loads(sys.stdin.buffer.read()) == %1)").arg(list), ours),
              "True\n");
}

TEST_P(PropertyListInEachFormat, RefusesToWriteADateThatItCouldNotReadBack)
{
    for (const int year : {-200'000, 200'000})
        EXPECT_TRUE(PropertyList::toData(QDateTime({year, 1, 1}, {0, 0}, Qt::UTC), GetParam()).isNull())
            << year;
    // So far away that the distance from another date is no number any more.
    for (const qint64 end : {std::numeric_limits<qint64>::min() + 1, std::numeric_limits<qint64>::max()})
        EXPECT_TRUE(PropertyList::toData(QDateTime::fromMSecsSinceEpoch(end, Qt::UTC), GetParam()).isNull())
            << end;
}

TEST_P(PropertyListInEachFormat, RefusesToWriteWhatItCannotCarry)
{
    const QVariant bad[] = {
        QVariant(),
        QVariant::fromValue(nullptr),
        QDateTime(),
        QString::fromLatin1("cut\0off", 7),
        QString(QChar(0xd800)),
        std::numeric_limits<double>::infinity(),
    };
    for (const QVariant &value : bad) {
        EXPECT_TRUE(PropertyList::toData(value, GetParam()).isNull()) << value.typeName();
        EXPECT_TRUE(PropertyList::toData(QVariantMap{{"key", QVariantList{value}}}, GetParam()).isNull());
    }
}

TEST_P(PropertyListInEachFormat, WritesSixtyFourLevelsAndRefusesSixtyFive)
{
    QVariant value = QVariantList{};
    for (int level = 1; level < 64; ++level)
        value = QVariantList{value};
    EXPECT_EQ(valueIn(PropertyList::toData(value, GetParam())), value);
    EXPECT_TRUE(PropertyList::toData(QVariantList{value}, GetParam()).isNull());
}

TEST_P(PropertyListInEachFormat, ReadsSixtyFourLevelsAndRefusesSixtyFive)
{
    const auto levels = [](int count) { return QString("eval('[' * %1 + ']' * %1)").arg(count); };
    EXPECT_EQ(refusal(written(levels(64))), "");
    EXPECT_THAT(refusal(written(levels(65))), HasSubstr("deeper than 64 levels"));
}

TEST_P(PropertyListInEachFormat, RefusesEveryTruncation)
{
    const QByteArray data = written(everyKindInPython);
    ASSERT_FALSE(data.isEmpty());
    const QByteArray whole = data.trimmed(); // a missing last line end cuts nothing off
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_NE(refusal(whole.first(size)), "") << size;
}

TEST_P(PropertyListInEachFormat, RefusesAListWithTooManyValues)
{
    EXPECT_EQ(refusal(written("[True] * 99999")), "");
    EXPECT_THAT(refusal(written("[True] * 100000")), HasSubstr("more than 100000 values"));
}

INSTANTIATE_TEST_SUITE_P(EachFormat, PropertyListInEachFormat, testing::Values(Format::Xml, Format::Binary),
                         [](const auto &info) { return name(info).toStdString(); });

TEST(PropertyList, ReadsOneMebibyteAndRefusesOneByteMore)
{
    const QByteArray head = "<plist version=\"1.0\"><string>";
    const QByteArray tail = "</string></plist>";
    QByteArray data = head + QByteArray((1 << 20) - head.size() - tail.size(), 'x') + tail;
    ASSERT_EQ(data.size(), 1 << 20);
    EXPECT_EQ(refusal(data), "");
    data.insert(head.size(), 'x');
    EXPECT_THAT(refusal(data), HasSubstr("larger than 1048576 bytes"));
}

TEST(PropertyList, IsNeverWrittenLargerThanItCouldBeRead)
{
    EXPECT_TRUE(PropertyList::toData(QString(1 << 20, 'x'), Format::Xml).isNull());
    EXPECT_FALSE(PropertyList::toData(QString(1 << 19, 'x'), Format::Xml).isNull());
}

TEST(PropertyList, SurvivesTwoHundredThousandLevelsOfXml)
{
    EXPECT_THAT(refusal(nested(65)), HasSubstr("deeper than 64 levels"));
    for (const QByteArray &level : {QByteArray("<array>"), QByteArray("<dict><key>k</key>"),
                                    QByteArray("<dict><key>k</key><array>"), QByteArray("<array><array/>")})
        EXPECT_THAT(refusal("<plist version=\"1.0\">" + level.repeated(40'000)),
                    HasSubstr("deeper than 64 levels"))
            << level.constData();
    EXPECT_NE(refusal(QByteArray("<plist>").repeated(100'000)), "");
    EXPECT_NE(refusal(QByteArray("<string>").repeated(100'000)), "");
}

TEST(PropertyList, CannotHideLevelsFromTheCheck)
{
    // Each of these would close levels, or open none, for a careless reader only.
    for (const char *trick : {"<array></dict>", "<array><!--></array>-->", "<array><!---></array>-->",
                              "<array a=\"/>\">", "<array a='/>'>", "<array / >",
                              "<array><![CDATA[</array>]]>", "<array><?></array>?>", "<array></plist>"})
        EXPECT_NE(refusal("<plist version=\"1.0\">" + QByteArray(trick).repeated(66) +
                          QByteArray("</array>").repeated(66) + "</plist>"),
                  "")
            << trick;
}

TEST(PropertyList, DeclaresNoEntities)
{
    const QByteArray laughs =
        "<?xml version=\"1.0\"?><!DOCTYPE plist [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;\">]>"
        "<plist version=\"1.0\"><string>&b;</string></plist>";
    EXPECT_THAT(refusal(laughs), HasSubstr("entities"));
    EXPECT_THAT(refusal("<!ENTITY a \"ha\"><plist version=\"1.0\"><true/></plist>"), HasSubstr("entities"));
}

TEST(PropertyList, KnowsTheFiveEntitiesAndNumbersOfCharacters)
{
    EXPECT_EQ(valueIn("<plist><string>&lt;&gt;&amp;&quot;&apos;&#65;&#x1F319;&#13;</string></plist>"),
              QVariant("<>&\"'A\U0001F319\r"));
    for (const char *reference : {"&", "&;", "&#;", "&#x;", "&lt", "&nbsp;", "&LT;", "&#0;", "&#1;",
                                  "&#xD800;", "&#xFFFF;", "&#x110000;", "&#-65;", "&#+65;", "&#x-41;",
                                  "&# 65;", "&#xx41;", "&#4294967361;", "&#000000000000065;"})
        EXPECT_NE(refusal("<plist><string>" + QByteArray(reference) + "</string></plist>"), "") << reference;
}

TEST(PropertyList, EndsLinesInOneWay)
{
    EXPECT_EQ(valueIn("<plist>\r\n<string>a\r\nb\rc\nd</string>\r</plist>"), QVariant("a\nb\nc\nd"));
}

TEST(PropertyList, HoldsCharactersOnly)
{
    for (const char *text : {"\xff", "\xc3", "\xed\xa0\x80", "\x01", "\x1b", "\xef\xbf\xbe", "\xef\xbf\xbf"})
        EXPECT_NE(refusal("<plist><string>" + QByteArray(text) + "</string></plist>"), "");
    for (const QByteArray &text : {QByteArray("\x52\xc3\x28"), QByteArray("\x51\xe4"),
                                   QByteArray("\x61\xd8\x3c"), QByteArray("\x62\xdf\x19\xd8\x3c")})
        EXPECT_NE(refusal(binaryList({text})), "") << text.toHex().constData();
    EXPECT_EQ(valueIn(binaryList({"\x52\xc3\xa4"})), QVariant("\u00e4"));
    EXPECT_EQ(valueIn(binaryList({QByteArray("\x60")})), QVariant(""));
}

TEST(PropertyList, ReadsNumbersInTheFormsThatXmlHas)
{
    const QVariantMap values{
        {"<integer> +12\n</integer>", qint64(12)},
        {"<integer>010</integer>", qint64(10)},
        {"<integer>0x1F</integer>", qint64(31)},
        {"<integer>-0X1f</integer>", qint64(-31)},
        {"<integer>0xFFFFFFFFFFFFFFFF</integer>", std::numeric_limits<quint64>::max()},
        {"<integer>-9223372036854775808</integer>", std::numeric_limits<qint64>::min()},
        {"<integer>1<!-- -->&#48;<![CDATA[2]]></integer>", qint64(102)},
        {"<real>+1.5E-1</real>", 0.15},
        {"<real>.5</real>", 0.5},
        {"<real>-infinity</real>", -std::numeric_limits<double>::infinity()},
        {"<real>+Inf</real>", std::numeric_limits<double>::infinity()},
        {"<data> A A\n\tEC </data>", QByteArray("\x00\x01\x02", 3)},
        {"<data>AAE</data>", QByteArray("\x00\x01", 2)},
        {"<date>2026-03-14T05:55:07</date>", QDateTime({2026, 3, 14}, {5, 55, 7}, Qt::UTC)},
        {"<date> 2026-03-14T05:55:07.25Z </date>", QDateTime({2026, 3, 14}, {5, 55, 7, 250}, Qt::UTC)},
        {"<date>2026-03-14T05:55:07+01:00</date>", QDateTime({2026, 3, 14}, {4, 55, 7}, Qt::UTC)},
        {"<true> <!-- --> </true>", true},
        {"<string/>", ""},
        {"<dict><key/><string>a</string></dict>", QVariantMap{{"", "a"}}},
    };
    for (auto entry = values.begin(); entry != values.end(); ++entry)
        EXPECT_EQ(valueIn("<plist>" + entry.key().toUtf8() + "</plist>"), entry.value())
            << qPrintable(entry.key());
}

TEST(PropertyList, IsRefusedRatherThanReadAsAnotherValue)
{
    for (const char *xml : {"<integer/>",
                            "<integer>abc</integer>",
                            "<integer>12abc</integer>",
                            "<integer>1.5</integer>",
                            "<integer>--1</integer>",
                            "<integer>- 1</integer>",
                            "<integer>0x</integer>",
                            "<integer>0x-1</integer>",
                            "<integer>18446744073709551616</integer>",
                            "<integer>-9223372036854775809</integer>",
                            "<real></real>",
                            "<real>abc</real>",
                            "<real>1,5</real>",
                            "<real>1.5x</real>",
                            "<real>1e400</real>",
                            "<real>+-1</real>",
                            "<date/>",
                            "<date>junk</date>",
                            "<date>2026-03-14</date>",
                            "<date>2026-02-30T00:00:00Z</date>",
                            "<date>2026-03-14T25:00:00Z</date>",
                            "<date>2026-03-14T05:55:07Zx</date>",
                            "<date>0000-03-14T05:55:07Z</date>",
                            "<date>12026-03-14T05:55:07Z</date>",
                            "<date>9999-12-31T23:59:59-01:00</date>",
                            "<data>A</data>",
                            "<data>AA!E</data>",
                            "<data>AA==AAEC</data>",
                            "<data>AA-_</data>",
                            "<true>x</true>",
                            "<true/><true/>",
                            "<true/>x",
                            "x<true/>",
                            "<key>k</key>",
                            "<array><key>k</key></array>",
                            "<array>x</array>",
                            "<dict><true/></dict>",
                            "<dict><key>k</key></dict>",
                            "<dict><key>k</key><key>l</key></dict>",
                            "<dict><key>k</key>x<true/></dict>",
                            "<string>a<?x?>b</string>"})
        EXPECT_NE(refusal("<plist>" + QByteArray(xml) + "</plist>"), "") << xml;
    EXPECT_NE(refusal("<plist><true/></plist>x"), "");
}

TEST(PropertyList, KeepsTheShapeOfItsText)
{
    const QVariantMap value{{"<&>\"'", QVariantList{QVariantList{}, QVariantMap{}, ""}},
                            {"Bytes", QByteArray(60, 'y')},
                            {"Nothing", QByteArray()},
                            {"Reals", QVariantList{0.0, -0.0, 0.1, 1e21, 1e15}},
                            {"Yes", true}};
    EXPECT_EQ(PropertyList::toData(value, Format::Xml),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
              "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
              "<plist version=\"1.0\">\n"
              "<dict>\n"
              "\t<key>&lt;&amp;&gt;\"'</key>\n"
              "\t<array>\n\t\t<array/>\n\t\t<dict/>\n\t\t<string></string>\n\t</array>\n"
              "\t<key>Bytes</key>\n"
              "\t<data>\n"
              "\teXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5eXl5\n"
              "\teXl5eXl5eXl5\n"
              "\t</data>\n"
              "\t<key>Nothing</key>\n"
              "\t<data>\n\t</data>\n"
              "\t<key>Reals</key>\n"
              "\t<array>\n\t\t<real>0.0</real>\n\t\t<real>-0.0</real>\n"
              "\t\t<real>0.10000000000000001</real>\n\t\t<real>1e+21</real>\n"
              "\t\t<real>1000000000000000</real>\n\t</array>\n"
              "\t<key>Yes</key>\n"
              "\t<true/>\n"
              "</dict>\n"
              "</plist>\n");
}

TEST(PropertyList, MayHoldCommentsCharacterDataAndAByteOrderMark)
{
    const QByteArray data = "\xef\xbb\xbf<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- a > b -->\n"
                            "<plist version=\"1.0\"><dict><!-- <array> --><key>k</key>"
                            "<string><![CDATA[<b> & c]]></string></dict></plist>\n<!-- end -->\n";
    EXPECT_EQ(valueIn(data), QVariant(QVariantMap{{"k", "<b> & c"}})) << refusal(data);
}

TEST(PropertyList, IsRefusedWhenItIsSomethingElse)
{
    for (const char *data : {"",
                             " ",
                             "hello",
                             "{ a = b; }",
                             "bplist",
                             "bplist00",
                             "<html></html>",
                             "<plist></plist>",
                             "<plist version=\"1.0\"/>",
                             "<plist><true/><true/></plist><plist/>",
                             "<plist <!-- ><true/></plist>",
                             "<!DOCTYPE <plist><plist><true/></plist>",
                             "<plistx><true/></plist>",
                             "<plist a=\"><true/></plist>",
                             "<plist/><true/></plist>",
                             "<!--><plist><true/></plist>",
                             "<!---><plist><true/></plist>",
                             "<?><plist><true/></plist>",
                             "<plist <x><true/></plist>",
                             "<!DOCTYPE plist \"a><plist><true/></plist>",
                             "<!DOCTYP><plist><true/></plist>"})
        EXPECT_NE(refusal(data), "") << data;
}

TEST(PropertyList, InItsBinaryFormIsTheSameByteForByteAsOthersWriteIt)
{
    // plistlib.dumps({'a': [0, True, -1, 'é']}, fmt=plistlib.FMT_BINARY) of Python 3.11
    const QByteArray expected = QByteArray::fromHex(
        "62706c6973743030d101025161a40304050610000913ffffffffffffffff6100e9080b0d1214151e0000000000"
        "000101000000000000000700000000000000000000000000000021");
    const QVariantMap value{{"a", QVariantList{0, true, -1, "é"}}};
    EXPECT_EQ(PropertyList::toData(value, PropertyList::Format::Binary).toHex().toStdString(),
              expected.toHex().toStdString());
}

TEST(PropertyList, OfAFewHundredBytesDoesNotUnfoldToGigabytes)
{
    // Each array holds the next one fourteen times: 14^8 values.
    QByteArrayList objects;
    for (int i = 0; i < 8; ++i)
        objects += binaryArray(QList<int>(14, i + 1));
    objects += QByteArray("\x09");
    const QByteArray data = binaryList(objects);
    ASSERT_LT(data.size(), 400);
    EXPECT_THAT(refusal(data), HasSubstr("more than 100000 values"));
    // The same with an honest number of values is read.
    EXPECT_EQ(refusal(binaryList({binaryArray({1, 1}), binaryArray({2, 2}), "\x09"})), "");
}

TEST(PropertyList, IsReadUpToExactlyWhatItsTermsAllow)
{
    const QByteArray data = PropertyList::toData(QVariantList{"abcdef", "gh"}, PropertyList::Format::Binary);
    const auto isRead = [](const QByteArray &data, const PropertyList::Terms &terms) {
        return PropertyList::fromData(data, nullptr, terms).ok();
    };
    PropertyList::Terms terms;
    terms.unfoldedBytes = 8;
    EXPECT_TRUE(isRead(data, terms));
    terms.unfoldedBytes = 7;
    EXPECT_FALSE(isRead(data, terms));
    terms = {};
    terms.nodes = 3;
    EXPECT_TRUE(isRead(data, terms));
    EXPECT_TRUE(isRead(PropertyList::toData(QVariantList{"abcdef", "gh"}, PropertyList::Format::Xml), terms));
    terms.nodes = 2;
    EXPECT_FALSE(isRead(data, terms));
    EXPECT_FALSE(
        isRead(PropertyList::toData(QVariantList{"abcdef", "gh"}, PropertyList::Format::Xml), terms));
    terms = {};
    terms.size = data.size();
    EXPECT_TRUE(isRead(data, terms));
    terms.size = data.size() - 1;
    EXPECT_FALSE(isRead(data, terms));
}

TEST(PropertyList, OfOneLargeTextDoesNotCopyItThousandsOfTimes)
{
    const QByteArray text = QByteArray("\x5f\x12\x00\x08\x00\x00", 6) + QByteArray(0x80000, 'x'); // 512 KiB
    QByteArrayList objects{binaryArray(QList<int>(14, 1)), binaryArray(QList<int>(14, 2)), text};
    QByteArray data = "bplist00";
    QByteArray table;
    for (const QByteArray &object : objects) {
        for (int shift = 24; shift >= 0; shift -= 8)
            table += static_cast<char>(data.size() >> shift);
        data += object;
    }
    const auto at = static_cast<quint32>(data.size());
    data +=
        table + QByteArray(6, '\0') + QByteArray("\x04\x02\0\0\0\0\0\0\0\x03\0\0\0\0\0\0\0\0\0\0\0\0", 22);
    for (int shift = 24; shift >= 0; shift -= 8)
        data += static_cast<char>(at >> shift);
    EXPECT_THAT(refusal(data), HasSubstr("unfolds to too many bytes"));
}

TEST(PropertyList, DoesNotHoldItself)
{
    EXPECT_THAT(refusal(binaryList({binaryArray({0})})), HasSubstr("holds itself"));
    EXPECT_THAT(refusal(binaryList({binaryArray({1}), binaryArray({2}), binaryArray({1})})),
                HasSubstr("holds itself"));
}

TEST(PropertyList, HoldsNoReferenceOutOfItself)
{
    EXPECT_NE(refusal(binaryList({binaryArray({1})})), "");
    EXPECT_NE(refusal(binaryList({QByteArray("\xaf\x13\x7f\xff\xff\xff\xff\xff\xff\xff", 10)})), "");
    EXPECT_NE(refusal(binaryList({QByteArray("\xdf\x13\xff\xff\xff\xff\xff\xff\xff\xff", 10)})), "");
    EXPECT_NE(refusal(binaryList({QByteArray("\x4f\x13\xff\xff\xff\xff\xff\xff\xff\xff", 10)})), "");
    EXPECT_NE(refusal(binaryList({QByteArray("\x6f\x13\x80\x00\x00\x00\x00\x00\x00\x01", 10)})), "");
    EXPECT_NE(refusal(binaryList({QByteArray("\x5e")})), "");
    EXPECT_NE(refusal(binaryList({QByteArray("\x33\x00", 2)})), "");
}

TEST(PropertyList, CarriesMillisecondsInItsBinaryForm)
{
    QVariantList dates;
    QStringList inPython;
    for (const int year : {1800, 1969, 2000, 2026, 9999}) {
        for (const int milliseconds : {1, 250, 499, 999}) {
            dates += QDateTime({year, 3, 14}, {5, 55, 7, milliseconds}, Qt::UTC);
            inPython +=
                QString("datetime.datetime(%1, 3, 14, 5, 55, 7, %2)").arg(year).arg(1000 * milliseconds);
        }
    }
    const QString list = '[' + inPython.join(", ") + ']';
    const QByteArray theirs =
        python(QString("sys.stdout.buffer.write(plistlib.dumps(%1, fmt=plistlib.FMT_BINARY))").arg(list));
    EXPECT_EQ(valueIn(theirs), QVariant(dates));
    const QByteArray ours = PropertyList::toData(dates, Format::Binary);
    EXPECT_EQ(valueIn(ours), QVariant(dates));
    EXPECT_EQ(python(QString("near = datetime.timedelta(microseconds=50)\n"
                             "read = plistlib.loads(sys.stdin.buffer.read())\n"
                             "print(all(abs(a - b) < near for a, b in zip(read, %1, strict=True)))")
                         .arg(list),
                     ours),
              "True\n");
    // XML has whole seconds, and a fraction is cut off, never rounded into the next one.
    EXPECT_EQ(valueIn(PropertyList::toData(dates[3], Format::Xml)),
              QVariant(QDateTime({1800, 3, 14}, {5, 55, 7}, Qt::UTC)));
}

TEST(PropertyList, CarriesDatesAsFarAsADoubleTellsMilliseconds)
{
    for (const int year : {-69'000, 73'000}) {
        const QDateTime date({year, 3, 14}, {5, 55, 7, 123}, Qt::UTC);
        EXPECT_EQ(valueIn(PropertyList::toData(date, Format::Binary)), QVariant(date));
        EXPECT_TRUE(PropertyList::toData(date, Format::Xml).isNull());
    }
    // No number, both infinities, 10^300 seconds, and 3 * 10^12 of them.
    for (const char *seconds : {"7ff8000000000000", "7ff0000000000000", "fff0000000000000",
                                "7e37e43c8800759c", "4285d3ef79800000", "c285d3ef79800000"})
        EXPECT_THAT(refusal(binaryList({"\x33" + QByteArray::fromHex(seconds)})), HasSubstr("out of range"));
}

TEST(PropertyList, HasIntegersOfSixtyFourBits)
{
    const auto sixteen = [](const char *hex) { return binaryList({"\x14" + QByteArray::fromHex(hex)}); };
    EXPECT_EQ(valueIn(sixteen("00000000000000007fffffffffffffff")),
              QVariant(std::numeric_limits<qint64>::max()));
    EXPECT_EQ(valueIn(sixteen("ffffffffffffffff8000000000000000")),
              QVariant(std::numeric_limits<qint64>::min()));
    for (const char *hex : {"00000000000000010000000000000000", "ffffffffffffffff7fffffffffffffff",
                            "80000000000000000000000000000000"})
        EXPECT_NE(refusal(sixteen(hex)), "") << hex;
    EXPECT_EQ(valueIn(binaryList({"\x10\xff"})), QVariant(qint64(255)));
}

TEST(PropertyList, IsNoArchiveOfReferences)
{
    EXPECT_THAT(refusal(binaryList({"\x80\x05"})), HasSubstr("unknown kind"));
}

TEST(PropertyList, WritesEqualTextsOnce)
{
    const QString text(1000, 'x');
    const QVariantMap twice{{text, QVariantList{text, text}}};
    const QByteArray data = PropertyList::toData(twice, Format::Binary);
    EXPECT_LT(data.size(), 1100);
    EXPECT_EQ(valueIn(data), QVariant(twice));
    // Unless reading them would unfold to more than is read.
    EXPECT_TRUE(PropertyList::toData(QStringList(40, QString(1 << 18, 'x')), Format::Binary).isNull());
}

TEST(PropertyList, HasTextKeysWithoutNulOnly)
{
    const QByteArray entry("\xd1\x00\x01\x00\x02", 5);
    EXPECT_EQ(refusal(binaryList({entry, "\x51k", "\x09"})), "");
    EXPECT_NE(refusal(binaryList({entry, "\x09", "\x09"})), "");
    EXPECT_NE(refusal(binaryList({entry, QByteArray("\x52k\0", 3), "\x09"})), "");
    EXPECT_NE(refusal(binaryList({entry, QByteArray("\x61\0\0", 3), "\x09"})), "");
}

TEST(PropertyList, SurvivesADamagedByteAnywhere)
{
    const QByteArray good = PropertyList::toData(everyKind(), Format::Binary);
    int refused = 0;
    for (qsizetype at = 0; at < good.size(); ++at) {
        for (const char damage : {'\x00', '\x7f', '\xff', '\xaf', '\xd1'}) {
            QByteArray bad = good;
            bad[at] = damage;
            refused += PropertyList::fromData(bad) ? 0 : 1;
        }
    }
    EXPECT_GT(refused, 0);
}

TEST(PropertyListFile, IsReadWithAClauseForWhatIsWrong)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("list.plist");
    EXPECT_THAT(refusalOf(path), AllOf(HasSubstr(path.toStdString()), HasSubstr("No such file")));

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(PropertyList::toData(everyKind(), Format::Xml));
    file.close();
    Format format{};
    EXPECT_EQ(*PropertyList::fromFile(path, &format), everyKind());
    EXPECT_EQ(format, Format::Xml);

    ASSERT_TRUE(file.resize(20));
    EXPECT_EQ(refusalOf(path),
              '"' + path.toStdString() + "\": This is no property list that can be read: it is cut off");
    ASSERT_TRUE(file.resize((1 << 20) + 1));
    EXPECT_EQ(refusalOf(path), "Cannot read \"" + path.toStdString() + "\": it is larger than 1048576 bytes");
}

TEST(PropertyListFile, IsFollowedThroughALinkOnlyWhenAllowed)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("list.plist"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(PropertyList::toData(true, Format::Binary));
    file.close();
    const QString link = folder.filePath("link.plist");
    ASSERT_TRUE(QFile::link(file.fileName(), link));
    EXPECT_TRUE(PropertyList::fromFile(link));
    EXPECT_THAT(refusalOf(link, false), HasSubstr("it is a symbolic link"));
    EXPECT_TRUE(PropertyList::fromFile(file.fileName(), nullptr, false));
}

TEST(PropertyListFile, IsNeitherAFolderNorAPipeThatNobodyWrites)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    EXPECT_THAT(refusalOf(pipe), HasSubstr("not a regular file")); // and does not wait for a writer
    EXPECT_THAT(refusalOf(folder.path()), HasSubstr("not a regular file"));
}
