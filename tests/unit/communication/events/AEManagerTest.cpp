// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/communication/events/AESender_p.h"
#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"

#include <gtest/gtest.h>

#include <limits>

using namespace dozely;

namespace
{
constexpr AEKeyword key = fourCharCode("test");
constexpr AEEventClass testClass = fourCharCode("Tcls");
constexpr AEEventID testID = fourCharCode("tsID");

AppleEvent newEvent(qint16 returnID = kAutoGenerateReturnID)
{
    AppleEvent event;
    EXPECT_EQ(AECreateAppleEvent(testClass, testID, AEDesc(typeProcessSerialNumber, QByteArray(8, '\0')),
                                 returnID, kAnyTransactionID, &event),
              noErr);
    return event;
}

template<class Value>
Value attributeOf(const AppleEvent &event, AEKeyword keyword, DescType type)
{
    Value value{};
    EXPECT_EQ(AEGetAttributePtr(event, keyword, type, nullptr, &value, sizeof value, nullptr), noErr);
    return value;
}
} // namespace

TEST(AECreateDesc, CopiesTheBytes)
{
    AEDesc desc;
    EXPECT_EQ(AECreateDesc(typeText, "abcd", 3, &desc), noErr);
    EXPECT_EQ(desc, AEDesc(typeText, "abc"));
    EXPECT_EQ(AECreateDesc(typeText, nullptr, 0, &desc), noErr);
    EXPECT_EQ(desc, AEDesc(typeText));
    EXPECT_EQ(AECreateDesc(typeText, nullptr, 1, &desc), paramErr);
    EXPECT_EQ(AECreateDesc(typeText, "a", -1, &desc), paramErr);
    EXPECT_EQ(AECreateDesc(typeAEList, "a", 1, &desc), paramErr);
    EXPECT_EQ(AEDisposeDesc(&desc), noErr);
    EXPECT_FALSE(desc.hasData());
}

TEST(AECreateAppleEvent, MakesAnEventWithItsAttributes)
{
    const AppleEvent event = newEvent(77);
    EXPECT_EQ(event.descriptorType(), typeAppleEvent);
    EXPECT_EQ(event.count(), 0);
    EXPECT_EQ(attributeOf<OSType>(event, keyEventClassAttr, typeType), testClass);
    EXPECT_EQ(attributeOf<OSType>(event, keyEventIDAttr, typeType), testID);
    EXPECT_EQ(attributeOf<qint16>(event, keyReturnIDAttr, typeSInt16), 77);
    EXPECT_EQ(attributeOf<qint32>(event, keyTransactionIDAttr, typeSInt32), 0);
    EXPECT_EQ(event.attribute(keyAddressAttr)->descriptorType(), typeProcessSerialNumber);
}

TEST(AECreateAppleEvent, NumbersEventsThatHaveNoReturnID)
{
    const auto first = attributeOf<qint16>(newEvent(), keyReturnIDAttr, typeSInt16);
    const auto second = attributeOf<qint16>(newEvent(), keyReturnIDAttr, typeSInt16);
    EXPECT_GT(first, 0);
    EXPECT_EQ(second, first + 1);
    for (int i = 0; i < 40'000; ++i)
        ASSERT_GT(attributeOf<qint16>(newEvent(), keyReturnIDAttr, typeSInt16), 0);
}

TEST(AEGetParamPtr, ReadsAsMuchAsFitsAndTellsHowMuchThereIs)
{
    AppleEvent event = newEvent();
    EXPECT_EQ(AEPutParamPtr(&event, key, typeText, "abcdef", 6), noErr);
    char buffer[] = "xxxxxxxx";
    DescType type = typeNull;
    qsizetype size = -1;
    EXPECT_EQ(AEGetParamPtr(event, key, typeText, &type, buffer, 4, &size), noErr);
    EXPECT_STREQ(buffer, "abcdxxxx");
    EXPECT_EQ(type, typeText);
    EXPECT_EQ(size, 6);
    EXPECT_EQ(AEGetParamPtr(event, key, typeText, nullptr, nullptr, 4, nullptr), noErr);
    EXPECT_EQ(AEGetParamPtr(event, key, typeText, nullptr, buffer, -1, nullptr), noErr);
    EXPECT_STREQ(buffer, "abcdxxxx");
}

TEST(AEGetParamPtr, ConvertsToTheTypeAskedFor)
{
    AppleEvent event = newEvent();
    const qint32 value = -5;
    AEPutParamPtr(&event, key, typeSInt32, &value, sizeof value);
    qint16 narrow = 0;
    DescType type = typeNull;
    EXPECT_EQ(AEGetParamPtr(event, key, typeSInt16, &type, &narrow, sizeof narrow, nullptr), noErr);
    EXPECT_EQ(narrow, -5);
    EXPECT_EQ(type, typeSInt16);
    EXPECT_EQ(AEGetParamPtr(event, key, typeWildCard, &type, nullptr, 0, nullptr), noErr);
    EXPECT_EQ(type, typeSInt32);
}

TEST(AEGetParamPtr, LeavesEverythingAloneWhenItFails)
{
    AppleEvent event = newEvent();
    AEPutParamPtr(&event, key, typeText, "abc", 3);
    event.setParameter(fourCharCode("list"), AEDesc(typeAEList));
    qint32 value = 42;
    DescType type = typeTrue;
    qsizetype size = 43;
    const auto get = [&](const AEDesc &desc, AEKeyword keyword) {
        return AEGetParamPtr(desc, keyword, typeSInt32, &type, &value, sizeof value, &size);
    };
    EXPECT_EQ(get(event, fourCharCode("none")), errAEDescNotFound);
    EXPECT_EQ(get(event, key), errAECoercionFail);
    EXPECT_EQ(get(event, fourCharCode("list")), errAEWrongDataType);
    EXPECT_EQ(get(AEDesc(), key), errAEWrongDataType);
    EXPECT_EQ(AEGetAttributePtr(AEDesc(typeAERecord), key, typeSInt32, &type, &value, 4, &size),
              errAEWrongDataType);
    EXPECT_EQ(AEGetAttributePtr(event, key, typeSInt32, &type, &value, 4, &size), errAEDescNotFound);
    EXPECT_EQ(value, 42);
    EXPECT_EQ(type, typeTrue);
    EXPECT_EQ(size, 43);
}

TEST(AESizeOfParam, TellsTypeAndSizeAsTheyAreHeld)
{
    AppleEvent event = newEvent();
    AEPutParamPtr(&event, key, typeUnicodeText, "a\0b\0c\0", 6);
    DescType type = typeNull;
    qsizetype size = 0;
    EXPECT_EQ(AESizeOfParam(event, key, &type, &size), noErr);
    EXPECT_EQ(type, typeUnicodeText);
    EXPECT_EQ(size, 6);
    EXPECT_EQ(AESizeOfParam(event, key, nullptr, nullptr), noErr);
    event.setParameter(key, AEDesc(typeAEList));
    EXPECT_EQ(AESizeOfParam(event, key, &type, &size), noErr);
    EXPECT_EQ(size, 16) << "head, type, size, count";
    EXPECT_EQ(AESizeOfParam(event, fourCharCode("none"), &type, &size), errAEDescNotFound);
    EXPECT_EQ(AESizeOfParam(AEDesc(), key, &type, &size), errAEWrongDataType);
}

TEST(AEPutParamPtr, FailsWhereThereIsNoPlace)
{
    AEDesc null;
    EXPECT_EQ(AEPutParamPtr(&null, key, typeText, "a", 1), errAEWrongDataType);
    AppleEvent event = newEvent();
    const AppleEvent before = event;
    EXPECT_EQ(AEPutParamPtr(&event, key, typeAERecord, "a", 1), paramErr);
    EXPECT_EQ(event, before);
}

TEST(NSAppleEventDescriptor, ReadsAnEvent)
{
    const auto event = NSAppleEventDescriptor::descriptorWithAEDesc(newEvent(5));
    EXPECT_EQ(event->descriptorType(), typeAppleEvent);
    EXPECT_EQ(event->eventClass(), testClass);
    EXPECT_EQ(event->eventID(), testID);
    EXPECT_EQ(event->attributeDescriptorForKeyword(keyReturnIDAttr)->int32Value(), 5);
    EXPECT_EQ(event->attributeDescriptorForKeyword(fourCharCode("none")), nullptr);
    EXPECT_EQ(event->paramDescriptorForKeyword(key), nullptr);
    EXPECT_EQ(NSAppleEventDescriptor::nullDescriptor()->eventClass(), 0u);
}

TEST(NSAppleEventDescriptor, ConvertsWhatItHolds)
{
    const auto number = NSAppleEventDescriptor::descriptorWithInt32(-7);
    EXPECT_EQ(number->int32Value(), -7);
    EXPECT_EQ(number->stringValue(), "-7");
    EXPECT_EQ(number->data().toHex(), "f9ffffff");
    const auto text = NSAppleEventDescriptor::descriptorWithString(QString::fromUtf8("日 12"));
    EXPECT_EQ(text->stringValue(), QString::fromUtf8("日 12"));
    EXPECT_EQ(text->int32Value(), 0);
    EXPECT_EQ(text->descriptorType(), typeUnicodeText);
    const auto data = NSAppleEventDescriptor::descriptorWithDescriptorType(typeData, "ab");
    EXPECT_EQ(data->data(), "ab");
    EXPECT_TRUE(data->stringValue().isNull());
    EXPECT_EQ(NSAppleEventDescriptor::descriptorWithDescriptorType(typeSInt32, "a")->int32Value(), 0);
    EXPECT_EQ(NSAppleEventDescriptor::descriptorWithString("")->stringValue(), "");
}

TEST(NSAppleEventDescriptor, SharesWhatIsPutIntoItWithAllItsHolders)
{
    const auto event = NSAppleEventDescriptor::descriptorWithAEDesc(newEvent());
    const auto other = event;
    event->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithInt32(3), key);
    EXPECT_EQ(other->paramDescriptorForKeyword(key)->int32Value(), 3);
    event->setParamDescriptorForKeyword(nullptr, key);
    EXPECT_EQ(other->paramDescriptorForKeyword(key), nullptr);
    const auto null = NSAppleEventDescriptor::nullDescriptor();
    null->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithInt32(3), key);
    EXPECT_EQ(null->paramDescriptorForKeyword(key), nullptr);
}

TEST(AESendTimeOut, IsInTicksRoundedUpToAMillisecond)
{
    using namespace std::chrono_literals;
    EXPECT_EQ(AESender::limitOf(0), 0ms);
    EXPECT_EQ(AESender::limitOf(1), 17ms);
    EXPECT_EQ(AESender::limitOf(30), 500ms);
    EXPECT_EQ(AESender::limitOf(60), 1000ms);
    EXPECT_EQ(AESender::limitOf(kAEDefaultTimeout), 60'000ms);
}

TEST(AESendTimeOut, IsFarAwayWhereThereIsNoneAndNeverOverflows)
{
    constexpr std::chrono::hours aCentury(24 * 365 * 100);
    EXPECT_EQ(AESender::limitOf(kNoTimeOut), aCentury);
    for (const qint64 ticks :
         {qint64{1} << 40, std::numeric_limits<qint64>::max() / 1000, std::numeric_limits<qint64>::max()})
        EXPECT_EQ(AESender::limitOf(ticks), aCentury) << ticks;
    EXPECT_GT(std::chrono::steady_clock::now() + AESender::limitOf(kNoTimeOut),
              std::chrono::steady_clock::now());
}
