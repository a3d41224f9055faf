// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEDesc.h"
#include "support/ProcessorTime.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <functional>

using namespace dozely;

namespace
{
QByteArray flat(const AEDesc &desc)
{
    QByteArray bytes;
    EXPECT_EQ(desc.flatten(&bytes), noErr);
    return bytes;
}

OSErr result(const QByteArray &bytes)
{
    AEDesc desc(typeText, "untouched");
    const OSErr error = AEDesc::unflatten(bytes, &desc);
    EXPECT_TRUE(error == noErr || desc == AEDesc(typeText, "untouched"));
    return error;
}

QByteArray word(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

/// A descriptor as it stands in the form.
QByteArray part(const char *type, const QByteArray &body)
{
    return type + word(static_cast<quint32>(body.size())) + body;
}

const QByteArray head("AEF\1", 4);

AEDesc sampleEvent()
{
    AEDesc list(typeAEList);
    list.append(AEDesc(typeText, "one"));
    list.append(AEDesc());
    AEDesc record(typeAERecord);
    record.setParameter(fourCharCode("list"), list);
    AEDesc event(typeAppleEvent);
    event.setAttribute(keyEventClassAttr, AEDesc::of(typeType, kCoreEventClass));
    event.setParameter(keyDirectObject, record);
    event.setParameter(fourCharCode("data"), AEDesc(typeData, QByteArray("\0\1\2", 3)));
    return event;
}
} // namespace

TEST(AEFlattening, WritesTypeSizeAndBytes)
{
    EXPECT_EQ(flat(AEDesc(typeText, "abc")), head + "TEXT" + word(3) + "abc");
    EXPECT_EQ(flat(AEDesc()), head + "null" + word(0));
}

TEST(AEFlattening, WritesContainersAsCountsAndDescriptors)
{
    AEDesc list(typeAEList);
    EXPECT_EQ(flat(list), head + part("list", word(0)));
    list.append(AEDesc(typeText, "a"));
    EXPECT_EQ(flat(list), head + part("list", word(1) + part("TEXT", "a")));
    AEDesc record(typeAERecord);
    record.setParameter(keyDirectObject, list);
    EXPECT_EQ(flat(record), head + part("reco", word(1) + "----" + flat(list).mid(4)));
    AEDesc event(typeAppleEvent);
    event.setAttribute(keyEventIDAttr, AEDesc(typeTrue));
    event.setParameter(keyDirectObject, AEDesc(typeData, "x"));
    EXPECT_EQ(flat(event), head + part("aevt", word(1) + "evid" + part("true", "") + word(1) + "----" +
                                                   part("data", "x")));
}

TEST(AEFlattening, IsReadBackAsItWas)
{
    AEDesc back;
    ASSERT_EQ(AEDesc::unflatten(flat(sampleEvent()), &back), noErr);
    EXPECT_EQ(back, sampleEvent());
    EXPECT_EQ(flat(back), flat(sampleEvent()));
}

TEST(AEFlattening, TakesNoTruncatedForm)
{
    const QByteArray whole = flat(sampleEvent());
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_EQ(result(whole.left(length)), errAECorruptData) << length;
    EXPECT_EQ(result(whole + '\0'), errAECorruptData);
}

TEST(AEFlattening, TakesNoOtherVersionOrForm)
{
    QByteArray newer = flat(AEDesc(typeText, "abc"));
    newer[3] = 2;
    EXPECT_EQ(result(newer), errAENewerVersion);
    newer[0] = 'B';
    EXPECT_EQ(result(newer), errAECorruptData);
    EXPECT_EQ(result({}), errAECorruptData);
}

TEST(AEFlattening, TakesNoNumbersThatTheBytesDoNotBearOut)
{
    EXPECT_EQ(result(head + "TEXT" + word(4) + "abc"), errAECorruptData);
    EXPECT_EQ(result(head + "TEXT" + word(0xffffffff) + "abc"), errAECorruptData);
    EXPECT_EQ(result(head + part("list", word(0xffffffff))), errAECorruptData);
    EXPECT_EQ(result(head + part("list", word(2) + part("TEXT", "a"))), errAECorruptData);
    EXPECT_EQ(result(head + part("list", word(0) + part("TEXT", "a"))), errAECorruptData);
    EXPECT_EQ(result(head + part("list", "")), errAECorruptData);
    EXPECT_EQ(result(head + part("null", "a")), errAECorruptData);
    EXPECT_EQ(result(head + part("aevt", word(0))), errAECorruptData);
    // An inner size that reaches beyond the container around it, into what follows.
    EXPECT_EQ(result(head + part("list", word(1) + part("list", word(1) + "TEXT" + word(9)) + "123456789")),
              errAECorruptData);
}

TEST(AEFlattening, TakesNoKeywordTwice)
{
    const QByteArray twice = word(2) + "aaaa" + part("TEXT", "1") + "aaaa" + part("TEXT", "2");
    EXPECT_EQ(result(head + part("reco", twice)), errAECorruptData);
    EXPECT_EQ(result(head + part("aevt", twice + word(0))), errAECorruptData);
    EXPECT_EQ(result(head + part("aevt", word(1) + "aaaa" + part("TEXT", "1") + word(1) + "aaaa" +
                                             part("TEXT", "2"))),
              noErr)
        << "an attribute and a parameter may have the same one";
}

TEST(AEFlattening, TakesAsManyLevelsAsADescriptorHas)
{
    QByteArray nested = part("list", word(0));
    for (int depth = 1; depth < AEDesc::maximumDepth; ++depth)
        nested = part("list", word(1) + nested);
    EXPECT_EQ(result(head + nested), noErr);
    EXPECT_EQ(result(head + part("list", word(1) + nested)), errAECorruptData);
    QByteArray abyss = part("list", word(0));
    for (int depth = 0; depth < 2000; ++depth)
        abyss = part("reco", word(1) + "aaaa" + abyss);
    EXPECT_EQ(result(head + abyss), errAECorruptData);
}

TEST(AEFlattening, HasALargestSize)
{
    const QByteArray fitting(AEDesc::maximumFlattenedSize - head.size() - 8, 'x');
    const AEDesc largest(typeData, fitting);
    EXPECT_EQ(flat(largest).size(), AEDesc::maximumFlattenedSize);
    EXPECT_EQ(result(flat(largest)), noErr);
    QByteArray bytes("before");
    EXPECT_EQ(AEDesc(typeData, fitting + 'x').flatten(&bytes), memFullErr);
    EXPECT_EQ(bytes, "before");
    EXPECT_EQ(result(head + part("data", fitting + 'x')), errAECorruptData);
}

// ---- what hostile bytes may cost

namespace
{
/// As many parameters as an event can have, one for each keyword, within lists that reach down to `depth`.
QByteArray largestRecord(const std::function<AEKeyword(quint32)> &keyword, int depth = 1)
{
    constexpr qsizetype listSize = 12;
    const qsizetype room = AEDesc::maximumFlattenedSize - head.size() - depth * listSize;
    const auto count = static_cast<quint32>(room / 12);
    QByteArray items;
    items.reserve(room);
    for (quint32 i = 0; i < count; ++i)
        items += word(keyword(i)) + part("null", "");
    QByteArray nested = part("reco", word(count) + items);
    for (int i = 1; i < depth; ++i)
        nested = part("list", word(1) + nested);
    return head + nested;
}

/// Comparing each with each takes half a minute; what is found in one step each takes a tenth of a second.
constexpr double reasonableSeconds = 3;
} // namespace

TEST(AEFlattening, ReadsAndWritesTheLargestRecordInReasonableTime)
{
    const QByteArray bytes = largestRecord([](quint32 i) { return i; });
    const double seconds = processorSeconds([&] {
        AEDesc back;
        ASSERT_EQ(AEDesc::unflatten(bytes, &back), noErr);
        for (AEKeyword i = 0; i < static_cast<quint32>(back.count()); ++i)
            ASSERT_TRUE(back.parameter(i)) << i;
        EXPECT_EQ(flat(back), bytes);
    });
    EXPECT_LT(seconds, reasonableSeconds);
}

TEST(AEFlattening, ReadsKeywordsInReasonableTimeHoweverTheyWereChosen)
{
    // Those that share their low or high bits, or their rest by the primes that tables of strangers have as
    // sizes: where a keyword alone says where it is kept, they all meet at one place.
    const QList<std::function<AEKeyword(quint32)>> choices{
        [](quint32 i) { return i << 13; },
        [](quint32 i) { return i << 16 | i >> 16; },
        [](quint32 i) { return i * 12289; },
        [](quint32 i) { return i * 85229; },
    };
    for (qsizetype choice = 0; choice < choices.size(); ++choice) {
        const QByteArray bytes = largestRecord(choices[choice]);
        const double seconds = processorSeconds([&] { EXPECT_EQ(result(bytes), noErr); });
        EXPECT_LT(seconds, reasonableSeconds / 3) << choice;
    }
}

TEST(AEFlattening, WritesWhatIsNestedAsFastAsWhatIsNot)
{
    const auto keyword = [](quint32 i) { return i; };
    const auto secondsAt = [&](int depth) {
        AEDesc desc;
        EXPECT_EQ(AEDesc::unflatten(largestRecord(keyword, depth), &desc), noErr);
        return processorSeconds([&] { flat(desc); });
    };
    secondsAt(1); // the first one pays for memory that nobody used before
    const double shallow = secondsAt(1);
    const double deep = secondsAt(AEDesc::maximumDepth);
    EXPECT_LT(deep, 2 * shallow + 0.005);
}

TEST(AEFlattening, EndsAtTheSecondOfTwoKeywordsWithoutReadingOn)
{
    // A third of a million parameters stand behind them.
    const QByteArray bytes = largestRecord([](quint32 i) { return i / 2; });
    EXPECT_LT(processorSeconds([&] { EXPECT_EQ(result(bytes), errAECorruptData); }), 0.01);
}
