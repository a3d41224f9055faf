// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/TxtRecord_p.h"

#include "support/PrintTo.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

#include <random>

using namespace dozely;

namespace
{
/// A record of these strings, however long or odd they are.
QByteArray record(const QByteArrayList &strings)
{
    QByteArray bytes;
    for (const QByteArray &string : strings)
        bytes.append(static_cast<char>(string.size())).append(string);
    return bytes;
}

/// As the reference prints it.
QByteArray printed(const QVariantMap &entries)
{
    QJsonArray list;
    QMap<QByteArray, QJsonValue> sorted;
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        QJsonValue value;
        if (entry.value().isValid())
            value = QString::fromLatin1(entry.value().toByteArray().toHex());
        sorted.insert(entry.key().toUtf8(), value);
    }
    for (auto entry = sorted.cbegin(); entry != sorted.cend(); ++entry)
        list += QJsonArray{QString::fromLatin1(entry.key().toHex()), entry.value()};
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

/// What an independent decoder makes of each record.
QList<QByteArray> reference(const QString &kind, const QList<QByteArray> &records)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(PYTHON, {TXT_REFERENCE, kind});
    for (const QByteArray &bytes : records)
        process.write(bytes.toHex() + '\n');
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0);
    QList<QByteArray> answers;
    for (const QByteArray &line : process.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            answers += QJsonDocument::fromJson(line).toJson(QJsonDocument::Compact);
    }
    return answers;
}

class Random
{
public:
    /// A number below `limit`.
    int below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned>(limit)); }

    QByteArray bytes(int size)
    {
        QByteArray result(size, '\0');
        for (char &byte : result)
            byte = static_cast<char>(below(256));
        return result;
    }

    /// An entry with all that goes wrong in one: few keys, in either case, so that they meet; keys that are
    /// none.
    QByteArray oddEntry()
    {
        switch (below(8)) {
        case 0:
            return bytes(below(256));
        case 1:
            return '=' + bytes(below(8));
        case 2:
            return {};
        default: {
            const QByteArrayList keys{"a",          "A",     "b",          "state", "State",
                                      "with blank", "x\x7f", "t\xC3\xA4g", "~"};
            const QByteArray key = keys.at(below(static_cast<int>(keys.size())));
            return below(3) == 0 ? key : key + '=' + bytes(below(40));
        }
        }
    }

    QByteArray oddRecord()
    {
        QByteArrayList entries;
        for (int count = below(12); count > 0; --count)
            entries += oddEntry();
        QByteArray result = record(entries);
        if (below(4) == 0 && !result.isEmpty())
            result.chop(below(static_cast<int>(result.size())));
        return result;
    }

    /// Entries as a proper service has them, no key twice.
    QVariantMap properEntries()
    {
        QVariantMap entries;
        for (int count = below(12); count > 0; --count) {
            QByteArray key;
            for (int length = 1 + below(9); length > 0; --length)
                key += static_cast<char>('a' + below(26));
            QVariant value;
            if (below(4) != 0)
                value = QByteArray("").append(bytes(below(60)));
            entries.insert(key, value);
        }
        return entries;
    }

private:
    std::mt19937 m_engine{20260314};
};
} // namespace

TEST(TxtRecord, WritesALengthByteBeforeEachEntry)
{
    EXPECT_EQ(
        TxtRecord::encode({{"paper", QByteArray("A4")}, {"color", QByteArray("")}, {"duplex", QVariant()}}),
        QByteArray("\x06"
                   "color="
                   "\x06"
                   "duplex"
                   "\x08"
                   "paper=A4"));
}

TEST(TxtRecord, WithoutEntriesIsOneEmptyString)
{
    EXPECT_EQ(TxtRecord::encode({}), QByteArray(1, '\0'));
    EXPECT_TRUE(TxtRecord::decode(QByteArray(1, '\0')).isEmpty());
    EXPECT_TRUE(TxtRecord::decode({}).isEmpty());
}

TEST(TxtRecord, TellsAMissingValueFromAnEmptyOne)
{
    const QVariantMap entries = TxtRecord::decode(record({"duplex", "color="}));
    ASSERT_EQ(entries.keys(), QStringList({"color", "duplex"}));
    EXPECT_FALSE(entries["duplex"].isValid());
    ASSERT_EQ(entries["color"].typeId(), QMetaType::QByteArray);
    EXPECT_TRUE(entries["color"].toByteArray().isEmpty());
    EXPECT_FALSE(entries["color"].toByteArray().isNull());
}

TEST(TxtRecord, KeepsEveryByteOfAValue)
{
    QByteArray all;
    for (int i = 0; i < 240; ++i)
        all += static_cast<char>(i);
    const auto encoded = TxtRecord::encode({{"k", all}, {"equals", QByteArray("a=b==")}});
    ASSERT_TRUE(encoded);
    EXPECT_EQ(TxtRecord::decode(*encoded), QVariantMap({{"k", all}, {"equals", QByteArray("a=b==")}}));
}

TEST(TxtRecord, WritesATextAsUtf8)
{
    EXPECT_EQ(TxtRecord::encode({{"k", QString("\u00e9")}}), QByteArray("\x04k=\xC3\xA9"));
}

TEST(TxtRecord, LetsTheFirstOfLikeKeysCountWhateverTheirCase)
{
    EXPECT_EQ(TxtRecord::decode(record({"State=on", "state=off", "STATE", "State=again"})),
              QVariantMap({{"State", QByteArray("on")}}));
    EXPECT_EQ(TxtRecord::decode(record({"state", "State=on"})), QVariantMap({{"state", QVariant()}}));
}

TEST(TxtRecord, PassesOverEntriesWithoutAKey)
{
    EXPECT_EQ(TxtRecord::decode(record({"=value", "", "=", "k=v"})), QVariantMap({{"k", QByteArray("v")}}));
}

TEST(TxtRecord, PassesOverKeysThatAreNotPrintableAscii)
{
    EXPECT_EQ(TxtRecord::decode(record({"a\x1f=1", "a\x7f=2", "\xC3\xA4=3", QByteArray("\0=4", 3), " ~=5"})),
              QVariantMap({{" ~", QByteArray("5")}}));
}

TEST(TxtRecord, CountsBlanksAsPartOfAKey)
{
    EXPECT_EQ(TxtRecord::decode(record({"k =1", "k=2"})),
              QVariantMap({{"k ", QByteArray("1")}, {"k", QByteArray("2")}}));
}

TEST(TxtRecord, GivesWhatCameBeforeAnEntryThatIsCutOff)
{
    QByteArray cut = record({"a=1", "b=2"});
    cut.chop(1);
    EXPECT_EQ(TxtRecord::decode(cut), QVariantMap({{"a", QByteArray("1")}}));
    EXPECT_FALSE(TxtRecord::isWellFormed(cut));
    EXPECT_TRUE(TxtRecord::isWellFormed(record({"a=1", "b=2"})));
    EXPECT_TRUE(TxtRecord::decode("\xFF").isEmpty());
}

TEST(TxtRecord, HoldsAnEntryOf255BytesAndNoneOf256)
{
    const QByteArray value(253, 'v'); // with "k=" 255
    const auto longest = TxtRecord::encode({{"k", value}});
    ASSERT_TRUE(longest);
    EXPECT_EQ(longest->size(), 256);
    EXPECT_EQ(TxtRecord::decode(*longest), QVariantMap({{"k", value}}));
    EXPECT_FALSE(TxtRecord::encode({{"k", value + 'v'}}));
    EXPECT_TRUE(TxtRecord::encode({{QString(255, 'k'), QVariant()}}));
    EXPECT_FALSE(TxtRecord::encode({{QString(256, 'k'), QVariant()}}));
}

TEST(TxtRecord, RefusesToWriteKeysThatNoRecordMayHold)
{
    for (const QString &key :
         {QString(""), QString("a=b"), QString("\n"), QString("\x7f"), QString("\u00e4")})
        EXPECT_FALSE(TxtRecord::encode({{key, QByteArray("v")}})) << qPrintable(key);
    EXPECT_FALSE(TxtRecord::encode({{"a", QByteArray("1")}, {"A", QByteArray("2")}}));
}

TEST(TxtRecord, RefusesToWriteValuesThatAreNeitherBytesNorText)
{
    EXPECT_FALSE(TxtRecord::encode({{"k", 1}}));
    EXPECT_FALSE(TxtRecord::encode({{"k", QVariantList{1}}}));
}

TEST(TxtRecord, RefusesToWriteMoreThanFitsIntoAPacket)
{
    QVariantMap entries;
    for (int i = 0; i < 5; ++i)
        entries.insert(QString::number(i), QByteArray(249, 'v')); // 252 bytes each
    ASSERT_TRUE(TxtRecord::encode(entries));
    entries.insert("5", QByteArray(36, 'v')); // 39: 1299 in all
    EXPECT_TRUE(TxtRecord::encode(entries));
    entries.insert("5", QByteArray(37, 'v'));
    EXPECT_EQ(TxtRecord::encode(entries).value_or(QByteArray()).size(), 1300);
    entries.insert("5", QByteArray(38, 'v'));
    EXPECT_FALSE(TxtRecord::encode(entries));
}

TEST(TxtRecord, ReadsNothingFromARecordLargerThanAnyPacket)
{
    const QByteArray entry = record({"k=v"});
    EXPECT_EQ(TxtRecord::decode(entry.repeated(TxtRecord::largestRead / entry.size())).size(), 1);
    EXPECT_TRUE(TxtRecord::decode(entry.repeated(TxtRecord::largestRead / entry.size() + 1)).isEmpty());
}

TEST(TxtRecord, LeavesOutEmptyStringsAndStringsThatAreTooLong)
{
    EXPECT_EQ(TxtRecord::strings(QByteArray("\0\x01"
                                            "a\0\x02"
                                            "bc",
                                            8)),
              QByteArrayList({"a", "bc"}));
    EXPECT_EQ(TxtRecord::fromStrings({"a", QByteArray(256, 'x'), "bc"}), QByteArray("\x01"
                                                                                    "a\x02"
                                                                                    "bc"));
    EXPECT_EQ(TxtRecord::fromStrings({}), QByteArray(1, '\0'));
}

TEST(TxtRecord, ReadsAThousandOddRecordsAsTheRfcSays)
{
    Random random;
    QList<QByteArray> records;
    for (int i = 0; i < 1000; ++i)
        records += random.oddRecord();
    const QList<QByteArray> expected = reference("rfc", records);
    ASSERT_EQ(expected.size(), records.size());
    int entries = 0;
    for (qsizetype i = 0; i < records.size(); ++i) {
        const QVariantMap decoded = TxtRecord::decode(records.at(i));
        ASSERT_EQ(printed(decoded), expected.at(i)) << records.at(i).toHex().constData();
        entries += static_cast<int>(decoded.size());
    }
    EXPECT_GT(entries, 1000); // the records were not all rubbish
}

TEST(TxtRecord, WritesAThousandRecordsThatAnotherImplementationReads)
{
    Random random;
    QList<QVariantMap> dictionaries;
    QList<QByteArray> records;
    while (records.size() < 1000) {
        const QVariantMap entries = random.properEntries();
        if (const auto encoded = TxtRecord::encode(entries)) {
            dictionaries += entries;
            records += *encoded;
        }
    }
    const QList<QByteArray> read = reference("zeroconf", records);
    ASSERT_EQ(read.size(), records.size());
    for (qsizetype i = 0; i < records.size(); ++i) {
        ASSERT_EQ(read.at(i), printed(dictionaries.at(i))) << records.at(i).toHex().constData();
        ASSERT_EQ(TxtRecord::decode(records.at(i)), dictionaries.at(i));
    }
}
