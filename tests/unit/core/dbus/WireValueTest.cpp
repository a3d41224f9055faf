// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/linux/WireValue_p.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "support/PrintTo.h"

#include <QDateTime>
#include <QTimeZone>
#include <QtEndian>

#include <gtest/gtest.h>

#include <limits>

namespace
{
QVariant throughBlob(const QVariant &value)
{
    QVariant result;
    EXPECT_TRUE(WireValue::fromBlob(WireValue::toBlob(value), &result));
    return result;
}
} // namespace

TEST(WireBlock, CarriesEveryKindOfValue)
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
        EXPECT_EQ(throughBlob(value), value);
}

TEST(WireBlock, KeepsTheZoneOfADate)
{
    const QDateTime paris({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris"));
    EXPECT_EQ(throughBlob(paris).toDateTime().timeZone(), QTimeZone("Europe/Paris"));
    const QDateTime offset({2026, 3, 14}, {6, 55}, Qt::OffsetFromUTC, 5400);
    EXPECT_EQ(throughBlob(offset).toDateTime().offsetFromUtc(), 5400);
}

TEST(WireBlock, KeepsWhatIsNothing)
{
    EXPECT_FALSE(throughBlob(QVariant()).isValid());
    NSNotification notification;
    ASSERT_TRUE(WireValue::notificationFromBlob(
        WireValue::toBlob(QVariant::fromValue(NSNotification(QString()))), &notification));
    EXPECT_TRUE(notification.name().isNull());
    EXPECT_FALSE(notification.object().isValid());
}

TEST(WireBlock, RefusesEveryTruncationOfABlock)
{
    const QByteArray block =
        WireValue::toBlob(QVariantMap{{"list", QVariantList{1, "zwei", QByteArray("3")}},
                                      {"date", QDateTime({2026, 3, 14}, {6, 55}, Qt::UTC)}});
    for (qsizetype size = 0; size < block.size(); ++size) {
        QVariant value;
        EXPECT_FALSE(WireValue::fromBlob(block.left(size), &value)) << size;
    }
}

TEST(WireBlock, RefusesWhatFollowsABlock)
{
    QVariant value;
    EXPECT_FALSE(WireValue::fromBlob(WireValue::toBlob(7) + '\0', &value));
}

TEST(WireBlock, RefusesLengthsBeyondTheBlock)
{
    QVariant value;
    for (const char *block : {"\x5b\x7f\xff\xff\xff\xff\xff\xff\xff", "\x7b\x7f\xff\xff\xff\xff\xff\xff\xff",
                              "\x9b\x7f\xff\xff\xff\xff\xff\xff\xff", "\xbb\x7f\xff\xff\xff\xff\xff\xff\xff"})
        EXPECT_FALSE(WireValue::fromBlob(QByteArray(block, 9), &value));
}

TEST(WireBlock, RefusesNestingBeyondTheLimitBothWays)
{
    QVariant deep = 1;
    for (int i = 0; i < WireValue::maximumDepth; ++i)
        deep = QVariantList{deep};
    EXPECT_EQ(throughBlob(deep), deep);
    EXPECT_THROW(WireValue::toBlob(QVariantList{deep}), NSException);
    QVariant value;
    EXPECT_FALSE(WireValue::fromBlob(QByteArray(100'000, '\x81') + '\1', &value));
}

TEST(WireBlock, RefusesADateThatIsNone)
{
    EXPECT_THROW(WireValue::toBlob(QDateTime()), NSException);
    QVariant value;
    EXPECT_FALSE(WireValue::fromBlob(QByteArray("\xda\x44\x6f\x7a\x00\x80", 6), &value)) << "an empty list";
}

TEST(WireBlock, FallsBackToTheOffsetForAZoneThatIsNotKnown)
{
    QByteArray block = WireValue::toBlob(QDateTime({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris")));
    block.replace("Europe/Paris", "Europe/Xxxxx");
    QVariant value;
    ASSERT_TRUE(WireValue::fromBlob(block, &value));
    EXPECT_EQ(value.toDateTime().offsetFromUtc(), 3600);
    EXPECT_EQ(value.toDateTime(), QDateTime({2026, 3, 14}, {5, 55}, Qt::UTC));
}

TEST(WireBlock, RefusesAnOffsetThatIsNoneHoweverLarge)
{
    // Tag, list of three, 0 ms, an offset in eight bytes, the name of no zone.
    const QByteArray before("\xda\x44\x6f\x7a\x00\x83\x00", 7);
    const auto block = [&](const char *head, qint64 offset) {
        const qint64 bytes = qToBigEndian(offset);
        return before + head + QByteArray(reinterpret_cast<const char *>(&bytes), sizeof bytes) + "\x60";
    };
    constexpr qint64 twoTo32 = 1LL << 32;
    QVariant value;
    ASSERT_TRUE(WireValue::fromBlob(block("\x1b", 3600), &value));
    EXPECT_EQ(value.toDateTime().offsetFromUtc(), 3600);
    ASSERT_TRUE(WireValue::fromBlob(block("\x3b", 3600 - 1), &value)); // n stands for -1 - n
    EXPECT_EQ(value.toDateTime().offsetFromUtc(), -3600);
    EXPECT_FALSE(WireValue::fromBlob(block("\x1b", twoTo32 + 3600), &value));
    EXPECT_FALSE(WireValue::fromBlob(block("\x3b", twoTo32 + 3600 - 1), &value));
    EXPECT_FALSE(WireValue::fromBlob(block("\x1b", 18 * 3600 + 1), &value));
}
