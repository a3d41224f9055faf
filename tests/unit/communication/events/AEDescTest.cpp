// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEDesc.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
constexpr AEKeyword first = fourCharCode("frst");
constexpr AEKeyword second = fourCharCode("scnd");

AEDesc number(qint32 value)
{
    return AEDesc::of(typeSInt32, value);
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
