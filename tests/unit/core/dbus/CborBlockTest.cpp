// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "support/PrintTo.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>
#include <QtEndian>

#include <gtest/gtest.h>

#include <limits>

using namespace dozely;

namespace
{
QByteArray block(const QVariant &value)
{
    const auto encoded = CborBlock::encode(value);
    EXPECT_TRUE(encoded);
    return encoded ? *encoded : QByteArray();
}

QVariant throughBlock(const QVariant &value)
{
    const auto result = CborBlock::decode(block(value));
    EXPECT_TRUE(result);
    return result ? *result : QVariant("nothing came back");
}
} // namespace

TEST(CborBlock, CarriesEveryKindOfValue)
{
    const QVariantList values{true,
                              7,
                              -7,
                              std::numeric_limits<qlonglong>::min(),
                              std::numeric_limits<qlonglong>::max(),
                              std::numeric_limits<qulonglong>::max(),
                              0.25,
                              QString(""),
                              QString::fromUtf16(u"a\0b", 3),
                              QByteArray(""),
                              QByteArray("\0\xff", 2),
                              QDateTime({2026, 3, 14}, {6, 55}, Qt::UTC),
                              QDateTime({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris")),
                              QDateTime({2026, 3, 14}, {6, 55}, Qt::OffsetFromUTC, -3600),
                              QVariantList{},
                              QVariantList{1, QVariantList{2}},
                              QVariantMap{{"", "empty key"}, {"k", QVariantMap{}}}};
    for (const QVariant &value : values)
        EXPECT_EQ(throughBlock(value), value);
}

TEST(CborBlock, HasTheReplacementCharacterForHalfOfAPair)
{
    const QString half = QString("a") + QChar(0xD800) + "b";
    const QString replaced = QString("a") + QChar(0xFFFD) + "b";
    EXPECT_EQ(throughBlock(half), QVariant(replaced));
    EXPECT_EQ(throughBlock(QStringList{half}), QVariant(QVariantList{replaced}));
    EXPECT_EQ(throughBlock(QVariantMap{{half, 1LL}}), QVariant(QVariantMap{{replaced, 1LL}}));
    const auto notification = CborBlock::encode(QVariant::fromValue(NSNotification(half)));
    ASSERT_TRUE(notification);
    EXPECT_EQ(CborBlock::decodeNotification(*notification)->name(), replaced);
    const QString pair = QString::fromUtf8("\xf0\x9f\x98\x80");
    EXPECT_EQ(throughBlock(pair), QVariant(pair));
}

TEST(CborBlock, KeepsTheZoneOfADate)
{
    const QDateTime paris({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris"));
    EXPECT_EQ(throughBlock(paris).toDateTime().timeZone(), QTimeZone("Europe/Paris"));
    const QDateTime offset({2026, 3, 14}, {6, 55}, Qt::OffsetFromUTC, 5400);
    EXPECT_EQ(throughBlock(offset).toDateTime().offsetFromUtc(), 5400);
}

TEST(CborBlock, KeepsWhatIsNothing)
{
    EXPECT_FALSE(throughBlock(QVariant()).isValid());
    const auto notification =
        CborBlock::decodeNotification(block(QVariant::fromValue(NSNotification(QString()))));
    ASSERT_TRUE(notification);
    EXPECT_TRUE(notification->name().isNull());
    EXPECT_FALSE(notification->object().isValid());
}

TEST(CborBlock, RefusesEveryTruncationOfABlock)
{
    const QByteArray whole = block(QVariantMap{{"list", QVariantList{1, "zwei", QByteArray("3")}},
                                               {"date", QDateTime({2026, 3, 14}, {6, 55}, Qt::UTC)}});
    for (qsizetype size = 0; size < whole.size(); ++size) {
        EXPECT_FALSE(CborBlock::decode(whole.left(size))) << size;
    }
}

TEST(CborBlock, OfTheSimpleValuesKnowsTrueFalseAndNull)
{
    EXPECT_EQ(CborBlock::decode(QByteArray("\xf4", 1)).value(), QVariant(false));
    EXPECT_EQ(CborBlock::decode(QByteArray("\xf5", 1)).value(), QVariant(true));
    EXPECT_FALSE(CborBlock::decode(QByteArray("\xf6", 1)).value().isValid());
    EXPECT_FALSE(CborBlock::decode(QByteArray("\xf7", 1))) << "undefined";
    EXPECT_FALSE(CborBlock::decode(QByteArray("\xf8\x20", 2))) << "one that has no meaning";
    EXPECT_FALSE(CborBlock::decode(QByteArray("\x82\xf7\x01", 3)));
}

TEST(CborBlock, RefusesWhatFollowsABlock)
{
    EXPECT_FALSE(CborBlock::decode(block(7) + '\0'));
}

TEST(CborBlock, RefusesLengthsBeyondTheBlock)
{
    for (const char *bytes : {"\x5b\x7f\xff\xff\xff\xff\xff\xff\xff", "\x7b\x7f\xff\xff\xff\xff\xff\xff\xff",
                              "\x9b\x7f\xff\xff\xff\xff\xff\xff\xff", "\xbb\x7f\xff\xff\xff\xff\xff\xff\xff"})
        EXPECT_FALSE(CborBlock::decode(QByteArray(bytes, 9)));
}

TEST(CborBlock, RefusesNestingBeyondTheLimitBothWays)
{
    QVariant deep = 1;
    for (int i = 0; i < CborBlock::maximumDepth; ++i)
        deep = QVariantList{deep};
    EXPECT_EQ(throughBlock(deep), deep);
    EXPECT_FALSE(CborBlock::encode(QVariantList{deep}));
    EXPECT_FALSE(CborBlock::decode(QByteArray(100'000, '\x81') + '\1'));
}

TEST(CborBlock, RefusesADateThatIsNone)
{
    EXPECT_FALSE(CborBlock::encode(QDateTime()));
    EXPECT_FALSE(CborBlock::decode(QByteArray("\xda\x44\x6f\x7a\x00\x80", 6))) << "an empty list";
}

TEST(CborBlock, FallsBackToTheOffsetForAZoneThatIsNotKnown)
{
    QByteArray paris = block(QDateTime({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris")));
    paris.replace("Europe/Paris", "Europe/Xxxxx");
    const auto value = CborBlock::decode(paris);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->toDateTime().offsetFromUtc(), 3600);
    EXPECT_EQ(value->toDateTime(), QDateTime({2026, 3, 14}, {5, 55}, Qt::UTC));
}

TEST(CborBlock, RefusesAnOffsetThatIsNoneHoweverLarge)
{
    // Tag, list of three, 0 ms, an offset in eight bytes, the name of no zone.
    const QByteArray before("\xda\x44\x6f\x7a\x00\x83\x00", 7);
    const auto dated = [&](const char *head, qint64 offset) {
        const qint64 bytes = qToBigEndian(offset);
        return before + head + QByteArray(reinterpret_cast<const char *>(&bytes), sizeof bytes) + "\x60";
    };
    constexpr qint64 twoTo32 = 1LL << 32;
    const auto east = CborBlock::decode(dated("\x1b", 3600));
    ASSERT_TRUE(east);
    EXPECT_EQ(east->toDateTime().offsetFromUtc(), 3600);
    const auto west = CborBlock::decode(dated("\x3b", 3600 - 1)); // n stands for -1 - n
    ASSERT_TRUE(west);
    EXPECT_EQ(west->toDateTime().offsetFromUtc(), -3600);
    EXPECT_FALSE(CborBlock::decode(dated("\x1b", twoTo32 + 3600)));
    EXPECT_FALSE(CborBlock::decode(dated("\x3b", twoTo32 + 3600 - 1)));
    EXPECT_FALSE(CborBlock::decode(dated("\x1b", 18 * 3600 + 1)));
}

TEST(CborBlock, OpensNoFileOutsideTheFolderOfZones)
{
    // A copy of a zone where any user could put a pipe, for whose other end the receiver would wait.
    const QTemporaryDir folder("/tmp/dz-XXXXXX");
    ASSERT_TRUE(QFile::copy("/usr/share/zoneinfo/Europe/Paris", folder.filePath("Zone")));
    const QByteArray name = "../../.." + folder.filePath("Zone").toUtf8();
    ASSERT_TRUE(QTimeZone(name).isValid()) << "Qt itself would open it";
    QByteArray dated = block(QDateTime({2026, 3, 14}, {6, 55}, Qt::OffsetFromUTC, 7200));
    ASSERT_TRUE(dated.endsWith('\x60')); // an empty text
    dated.chop(1);
    dated += QByteArray("\x78") + static_cast<char>(name.size()) + name;
    const auto value = CborBlock::decode(dated);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->toDateTime().timeSpec(), Qt::OffsetFromUTC);
    EXPECT_EQ(value->toDateTime().offsetFromUtc(), 7200);
}

TEST(CborBlock, TakesNoWordForAZone)
{
    // Qt makes a zone of any word, without an offset, where a POSIX rule could stand.
    const QByteArray word("\x67Nowhere");
    QByteArray dated = block(QDateTime({2026, 3, 14}, {6, 55}, Qt::OffsetFromUTC, 7200));
    dated.chop(1);
    const auto value = CborBlock::decode(dated + word);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->toDateTime().offsetFromUtc(), 7200);
}

TEST(CborBlock, KeepsAZoneThatIsAnOffset)
{
    const QDateTime date({2026, 3, 14}, {6, 55}, QTimeZone("UTC+01:30"));
    EXPECT_EQ(throughBlock(date).toDateTime().timeZone(), date.timeZone());
}
