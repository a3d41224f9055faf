// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEDesc.h"
#include "support/ProcessorTime.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
constexpr AEKeyword first = fourCharCode("frst");
constexpr AEKeyword second = fourCharCode("scnd");

/// Comparing each keyword with each would take many times as long as this; one step each takes a tenth of it.
constexpr double reasonableSeconds = 2;

AEDesc number(qint32 value)
{
    return AEDesc::of(typeSInt32, value);
}

/// A record with the parameters 0 to `count` - 1, each its own number.
AEDesc recordOf(quint32 count)
{
    AEDesc record(typeAERecord);
    for (quint32 i = 0; i < count; ++i)
        record.setParameter(i, number(static_cast<qint32>(i)));
    return record;
}
} // namespace

TEST(AEDesc, IsTheNullDescriptorAtFirst)
{
    const AEDesc desc;
    EXPECT_EQ(desc.descriptorType(), typeNull);
    EXPECT_FALSE(desc.hasData());
    EXPECT_TRUE(desc.data().isEmpty());
    EXPECT_EQ(desc, AEDesc(typeNull, "these bytes are none of it"));
}

TEST(AEDesc, HoldsATypeAndBytes)
{
    const AEDesc desc(typeText, "text");
    EXPECT_EQ(desc.descriptorType(), typeText);
    EXPECT_EQ(desc.data(), "text");
    EXPECT_TRUE(desc.hasData());
    EXPECT_TRUE(AEDesc(typeTrue).hasData());
    EXPECT_EQ(number(-2).data().toHex(), "feffffff");
}

TEST(AEDesc, OfAContainerTypeIsEmptyWhateverTheBytes)
{
    for (const DescType type : {typeAEList, typeAERecord, typeAppleEvent}) {
        const AEDesc desc(type, "bytes");
        EXPECT_TRUE(desc.isContainer());
        EXPECT_TRUE(desc.data().isEmpty());
        EXPECT_EQ(desc.count(), 0);
        EXPECT_EQ(desc.at(0), AEDesc());
    }
}

TEST(AEDesc, IsIndependentOfItsCopies)
{
    AEDesc original(typeAERecord);
    original.setParameter(first, number(1));
    AEDesc copy = original;
    copy.setParameter(first, number(2));
    EXPECT_EQ(original.parameter(first), number(1));
    EXPECT_EQ(copy.parameter(first), number(2));
    AEDesc outer(typeAERecord);
    outer.setParameter(first, copy);
    copy.removeParameter(first);
    EXPECT_EQ(outer.parameter(first)->parameter(first), number(2));
}

TEST(AEDesc, LeavesTheNullDescriptorWhereItWasMovedFrom)
{
    AEDesc original(typeAERecord);
    original.setParameter(first, number(1));
    const AEDesc moved = std::move(original);
    EXPECT_EQ(moved.count(), 1);
    EXPECT_EQ(original, AEDesc()); // NOLINT(bugprone-use-after-move)
}

TEST(AEDesc, KeepsParametersInTheirOrderAndReplacesInPlace)
{
    AEDesc record(typeAERecord);
    EXPECT_EQ(record.setParameter(second, number(2)), noErr);
    EXPECT_EQ(record.setParameter(first, number(1)), noErr);
    EXPECT_EQ(record.setParameter(second, number(3)), noErr);
    ASSERT_EQ(record.count(), 2);
    EXPECT_EQ(record.keywordAt(0), second);
    EXPECT_EQ(record.at(0), number(3));
    EXPECT_EQ(record.keywordAt(1), first);
    EXPECT_EQ(record.keywordAt(2), 0u);
    record.removeParameter(second);
    EXPECT_FALSE(record.parameter(second));
    EXPECT_EQ(record.count(), 1);
}

TEST(AEDesc, KeepsTheOrderOfManyParametersOverReplacingAndRemoving)
{
    constexpr quint32 count = 100;
    AEDesc record = recordOf(count);
    const AEDesc before = record;
    record.setParameter(30, number(-30));
    record.removeParameter(20);
    record.removeParameter(count - 1);
    record.removeParameter(count); // which there is not
    record.setParameter(20, number(-20));
    ASSERT_EQ(record.count(), count - 1);
    QList<AEKeyword> expected;
    for (quint32 i = 0; i < count - 1; ++i) {
        if (i != 20)
            expected += i;
    }
    expected += 20;
    for (qsizetype i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(record.keywordAt(i), expected[i]) << i;
        EXPECT_EQ(record.parameter(expected[i]), record.at(i)) << i;
    }
    EXPECT_EQ(record.parameter(30), number(-30));
    EXPECT_EQ(record.parameter(20), number(-20));
    EXPECT_FALSE(record.parameter(count - 1));
    EXPECT_EQ(before, recordOf(count)) << "a copy is independent";
}

TEST(AEDesc, FindsTheParametersThatAreLeftOfMany)
{
    AEDesc record = recordOf(100);
    for (quint32 i = 0; i < 100; i += 2)
        record.removeParameter(i);
    ASSERT_EQ(record.count(), 50);
    for (quint32 i = 0; i < 100; ++i)
        EXPECT_EQ(record.parameter(i),
                  i % 2 == 1 ? std::optional(number(static_cast<qint32>(i))) : std::nullopt);
    for (quint32 i = 1; i < 100; i += 2)
        record.removeParameter(i);
    EXPECT_EQ(record, AEDesc(typeAERecord));
    record.setParameter(first, number(1));
    EXPECT_EQ(record.parameter(first), number(1));
}

TEST(AEDesc, HoldsWhatAPlainListWouldThroughPuttingAndRemovingAtRandom)
{
    QRandomGenerator random(20261122);
    for (int round = 0; round < 500; ++round) {
        AEDesc record(typeAERecord);
        QList<std::pair<AEKeyword, qint32>> plain;
        const auto placeOf = [&](AEKeyword keyword) {
            return std::find_if(plain.begin(), plain.end(),
                                [=](const auto &item) { return item.first == keyword; });
        };
        for (qint32 step = 0; step < 100; ++step) {
            const AEKeyword keyword = random.bounded(40U);
            const auto place = placeOf(keyword);
            if (random.bounded(5) < 2) {
                record.removeParameter(keyword);
                if (place != plain.end())
                    plain.erase(place);
                continue;
            }
            record.setParameter(keyword, number(step));
            if (place != plain.end())
                place->second = step;
            else
                plain.append({keyword, step});
        }
        ASSERT_EQ(record.count(), plain.size());
        for (qsizetype i = 0; i < plain.size(); ++i) {
            ASSERT_EQ(record.keywordAt(i), plain[i].first);
            ASSERT_EQ(record.at(i), number(plain[i].second));
        }
        for (AEKeyword keyword = 0; keyword < 40; ++keyword) {
            const auto place = placeOf(keyword);
            ASSERT_EQ(record.parameter(keyword),
                      place == plain.end() ? std::nullopt : std::optional(number(place->second)));
        }
    }
}

TEST(AEDesc, TakesAndGivesEachParameterInTheSameTimeHoweverManyThereAre)
{
    constexpr quint32 count = 200'000;
    AEDesc event(typeAppleEvent);
    const double seconds = processorSeconds([&] {
        for (const qint32 sign : {1, -1}) { // the second time they are replaced
            for (quint32 i = 0; i < count; ++i) {
                event.setParameter(i, number(sign * static_cast<qint32>(i)));
                event.setAttribute(i, number(sign * static_cast<qint32>(i)));
            }
        }
        for (quint32 i = 0; i < count; ++i) {
            ASSERT_EQ(event.parameter(i), number(-static_cast<qint32>(i)));
            ASSERT_EQ(event.attribute(i), number(-static_cast<qint32>(i)));
        }
    });
    EXPECT_EQ(event.count(), count);
    EXPECT_LT(seconds, reasonableSeconds);
}

TEST(AEDesc, HasAttributesBesidesParametersWhenItIsAnEvent)
{
    AEDesc event(typeAppleEvent);
    EXPECT_EQ(event.setAttribute(first, number(1)), noErr);
    EXPECT_EQ(event.setParameter(first, number(2)), noErr);
    EXPECT_EQ(event.attribute(first), number(1));
    EXPECT_EQ(event.parameter(first), number(2));
    event.removeAttribute(first);
    EXPECT_FALSE(event.attribute(first));
    EXPECT_EQ(event.parameter(first), number(2));
}

TEST(AEDesc, RefusesParametersAndElementsWhereTheyHaveNoPlace)
{
    AEDesc null;
    AEDesc list(typeAEList);
    AEDesc record(typeAERecord);
    EXPECT_EQ(null.setParameter(first, number(1)), errAEWrongDataType);
    EXPECT_EQ(null.append(number(1)), errAEWrongDataType);
    EXPECT_EQ(list.setParameter(first, number(1)), errAEWrongDataType);
    EXPECT_EQ(record.append(number(1)), errAEWrongDataType);
    EXPECT_EQ(record.setAttribute(first, number(1)), errAEWrongDataType);
    EXPECT_EQ(null, AEDesc());
    EXPECT_EQ(list.count() + record.count(), 0);
    list.append(number(1));
    EXPECT_FALSE(list.parameter(0)) << "the elements of a list have no keywords";
}

TEST(AEDesc, CanBePutIntoItself)
{
    AEDesc list(typeAEList);
    list.append(number(1));
    EXPECT_EQ(list.append(list), noErr);
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.at(1).count(), 1);
}

TEST(AEDesc, NestsAsDeepAsTheLimitAndNoDeeper)
{
    AEDesc inner(typeAEList);
    for (int depth = 1; depth < AEDesc::maximumDepth; ++depth) {
        AEDesc outer(typeAEList);
        ASSERT_EQ(outer.append(inner), noErr) << depth;
        inner = outer;
    }
    AEDesc list(typeAEList);
    AEDesc record(typeAERecord);
    AEDesc event(typeAppleEvent);
    EXPECT_EQ(list.append(inner), errAEIllegalIndex);
    EXPECT_EQ(record.setParameter(first, inner), errAEIllegalIndex);
    EXPECT_EQ(event.setAttribute(first, inner), errAEIllegalIndex);
    EXPECT_EQ(list, AEDesc(typeAEList));
    EXPECT_EQ(inner.append(number(1)), noErr) << "bytes do not nest";
}

TEST(AEDesc, IsEqualToWhatHoldsTheSame)
{
    AEDesc one(typeAppleEvent);
    AEDesc other(typeAppleEvent);
    EXPECT_EQ(one, other);
    one.setParameter(first, number(1));
    EXPECT_NE(one, other);
    other.setParameter(first, number(1));
    EXPECT_EQ(one, other);
    other.setAttribute(first, number(1));
    EXPECT_NE(one, other);
    EXPECT_NE(number(1), number(2));
    EXPECT_NE(AEDesc(typeText, "a"), AEDesc(typeData, "a"));
}
