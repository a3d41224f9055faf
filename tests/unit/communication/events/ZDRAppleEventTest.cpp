// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/ZDRAppleEvent.h"
#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "unit/core/foundation/OtherProcess.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace dozely;

namespace
{
constexpr AEKeyword key = fourCharCode("test");
constexpr AEEventClass testClass = fourCharCode("Tcls");
constexpr AEEventID testID = fourCharCode("tsID");

/// Processes of the test's choice.
class FakeProcesses : public AEProcesses
{
public:
    void prepare() override {}
    QList<Process> processes() override { return running; }
    std::shared_ptr<NSSocketPort> announce(OSType) override { return nullptr; }
    std::shared_ptr<NSSocketPort> portOf(qint32, Process *) override { return nullptr; }

    QList<Process> running;
};

class ZDRAppleEventTest : public testing::Test
{
protected:
    static AppleEvent newRecord()
    {
        AppleEvent event;
        AECreateAppleEvent(testClass, testID, AEDesc(), 1, 0, &event);
        return event;
    }

    /// What a writer says on the console.
    template<class Write>
    static std::string consoleOf(const Write &write)
    {
        testing::internal::CaptureStderr();
        write();
        return testing::internal::GetCapturedStderr();
    }

    void put(DescType type, const QByteArray &data)
    {
        bare->carbonEvent()->setParameter(key, AEDesc(type, data));
        object->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithDescriptorType(type, data),
                                             key);
    }
    template<class Value>
    void put(DescType type, Value value)
    {
        put(type, AEDesc::of(type, value).data());
    }

    std::shared_ptr<NSAppleEventDescriptor> object =
        NSAppleEventDescriptor::descriptorWithAEDesc(newRecord());
    std::shared_ptr<ZDRAppleEvent> held = ZDRAppleEvent::appleEventWithAppleEventDescriptor(object);
    std::shared_ptr<ZDRAppleEvent> bare = ZDRAppleEvent::appleEventWithCarbonEvent(newRecord());
};
} // namespace

// ---- forms

TEST_F(ZDRAppleEventTest, IsEmptyAtFirst)
{
    const auto event = ZDRAppleEvent::appleEvent();
    ASSERT_NE(event->carbonEvent(), nullptr);
    EXPECT_EQ(event->carbonEvent()->descriptorType(), typeNull);
    EXPECT_FALSE(event->carbonEvent()->hasData());
    EXPECT_EQ(event->eventClass(), 0u);
    EXPECT_EQ(event->eventID(), 0u);
}

TEST_F(ZDRAppleEventTest, HasNoBareRecordWhenItHoldsAnObject)
{
    EXPECT_EQ(held->carbonEvent(), nullptr);
    EXPECT_EQ(bare->carbonEvent(), bare->carbonEvent());
    EXPECT_EQ(*bare->carbonEvent(), newRecord());
}

TEST_F(ZDRAppleEventTest, TellsClassAndIDInBothForms)
{
    for (const auto &event : {held, bare}) {
        EXPECT_EQ(event->eventClass(), testClass);
        EXPECT_EQ(event->eventID(), testID);
    }
}

TEST_F(ZDRAppleEventTest, WithoutAnObjectIsABareRecord)
{
    const auto event = ZDRAppleEvent::appleEventWithAppleEventDescriptor(nullptr);
    EXPECT_NE(event->carbonEvent(), nullptr);
    EXPECT_EQ(event->longValueForKeyword(key), 0);
}

TEST_F(ZDRAppleEventTest, WritesIntoTheObjectThatOthersHold)
{
    held->setShortValueForKeyword(-3, key);
    EXPECT_EQ(object->paramDescriptorForKeyword(key)->int32Value(), -3);
    EXPECT_EQ(object->paramDescriptorForKeyword(key)->descriptorType(), typeSInt16);
}

// ---- numbers

TEST_F(ZDRAppleEventTest, KeepsShortValuesInBothForms)
{
    for (const auto &event : {held, bare}) {
        for (const qint16 value : {0, 1, -1, 32767, -32768}) {
            event->setShortValueForKeyword(value, key);
            EXPECT_EQ(event->shortValueForKeyword(key), value);
        }
    }
    EXPECT_EQ(bare->carbonEvent()->parameter(key), AEDesc::of(typeSInt16, qint16{-32768}));
}

TEST_F(ZDRAppleEventTest, CutsANumberToAShortOneInAnObjectAndHasNoneInABareRecord)
{
    put(typeSInt32, 70'000);
    EXPECT_EQ(held->shortValueForKeyword(key), 4464);
    EXPECT_EQ(bare->shortValueForKeyword(key), 0);
    put(typeSInt32, -5);
    EXPECT_EQ(held->shortValueForKeyword(key), -5);
    EXPECT_EQ(bare->shortValueForKeyword(key), -5);
}

TEST_F(ZDRAppleEventTest, ReadsANegativeNumberSignedFromAnObjectAndUnsignedFromABareRecord)
{
    put(typeSInt32, -2);
    EXPECT_EQ(held->longValueForKeyword(key), -2);
    EXPECT_EQ(bare->longValueForKeyword(key), 0xfffffffe);
    put(typeSInt32, std::numeric_limits<qint32>::min());
    EXPECT_EQ(held->longValueForKeyword(key), -2147483648LL);
    EXPECT_EQ(bare->longValueForKeyword(key), 2147483648LL);
    put(typeSInt16, qint16{-2});
    EXPECT_EQ(held->longValueForKeyword(key), -2);
    EXPECT_EQ(bare->longValueForKeyword(key), 0xfffffffe);
    put(typeSInt32, 123);
    EXPECT_EQ(held->longValueForKeyword(key), 123);
    EXPECT_EQ(bare->longValueForKeyword(key), 123);
}

TEST_F(ZDRAppleEventTest, StoresEightBytesUnderTheTypeOfFourInABareRecordAndFourInAnObject)
{
    constexpr qint64 value = 0x1234567890abcdef;
    held->setLongValueForKeyword(value, key);
    EXPECT_EQ(object->paramDescriptorForKeyword(key)->descriptorType(), typeSInt32);
    EXPECT_EQ(object->paramDescriptorForKeyword(key)->data().size(), 4);
    EXPECT_EQ(held->longValueForKeyword(key), static_cast<qint32>(0x90abcdef));

    bare->setLongValueForKeyword(value, key);
    EXPECT_EQ(bare->carbonEvent()->parameter(key), AEDesc::of(typeSInt32, value));
    EXPECT_EQ(bare->longValueForKeyword(key), value);
    bare->setLongValueForKeyword(-2, key);
    EXPECT_EQ(bare->longValueForKeyword(key), -2) << "all eight bytes are there";

    object->setParamDescriptorForKeyword(
        NSAppleEventDescriptor::descriptorWithAEDesc(AEDesc::of(typeSInt32, value)), key);
    EXPECT_EQ(held->longValueForKeyword(key), static_cast<qint32>(0x90abcdef))
        << "an object reads the low half of a bare record's eight";
}

TEST_F(ZDRAppleEventTest, HasNoNumberWhereThereIsNone)
{
    for (const auto &event : {held, bare, ZDRAppleEvent::appleEvent()}) {
        EXPECT_EQ(event->shortValueForKeyword(key), 0);
        EXPECT_EQ(event->longValueForKeyword(key), 0);
    }
    put(typeData, QByteArray("abcd"));
    EXPECT_EQ(held->shortValueForKeyword(key) + held->longValueForKeyword(key), 0);
    EXPECT_EQ(bare->shortValueForKeyword(key) + bare->longValueForKeyword(key), 0);
}

// ---- text

TEST_F(ZDRAppleEventTest, KeepsPlainTextInBothForms)
{
    for (const auto &event : {held, bare}) {
        for (const char *text :
             {"", "a", "plain text", "exactly sixteen.", "exactly thirty-two characters ok"}) {
            event->setStringForKeyword(text, key);
            EXPECT_EQ(event->stringValueForKeyword(key), text);
        }
    }
}

TEST_F(ZDRAppleEventTest, WritesMacRomanButReadsUTF8InABareRecord)
{
    const QString text = QString::fromUtf8("Zoë");
    bare->setStringForKeyword(text, key);
    EXPECT_EQ(bare->carbonEvent()->parameter(key), AEDesc(typeText, "Zo\x91"));
    EXPECT_TRUE(bare->stringValueForKeyword(key).isEmpty()) << "0x91 alone is no UTF-8";
    put(typeText, QByteArray("Zoë")); // UTF-8 bytes under a type that is none
    EXPECT_EQ(bare->stringValueForKeyword(key), text);
    EXPECT_EQ(held->stringValueForKeyword(key), QString::fromUtf8("Zo√´")) << "the same bytes as Mac Roman";
}

TEST_F(ZDRAppleEventTest, WritesAQuestionMarkForWhatMacRomanLacks)
{
    bare->setStringForKeyword(QString::fromUtf8("日本 ok"), key);
    EXPECT_EQ(bare->stringValueForKeyword(key), "?? ok");
    held->setStringForKeyword(QString::fromUtf8("日本 ok"), key);
    EXPECT_EQ(held->stringValueForKeyword(key), QString::fromUtf8("日本 ok"));
}

TEST_F(ZDRAppleEventTest, ReadsTextUpToAZeroInABareRecord)
{
    put(typeText, QByteArray("abc\0def", 7));
    EXPECT_EQ(bare->stringValueForKeyword(key), "abc");
    EXPECT_EQ(held->stringValueForKeyword(key), QString("abc") + QChar(0) + "def");
}

TEST_F(ZDRAppleEventTest, ReadsTextWithoutATerminatorNoFurtherThanItGoes)
{
    for (const int length : {15, 16, 17, 32, 4096}) {
        // Not a byte array's own bytes, behind which there always is a zero.
        const std::vector<char> text(static_cast<size_t>(length), 'x');
        put(typeText, QByteArray::fromRawData(text.data(), length));
        ASSERT_EQ(bare->carbonEvent()->parameter(key)->data().constData(), text.data()) << "not copied";
        EXPECT_EQ(bare->stringValueForKeyword(key), QString(length, 'x'));
        EXPECT_EQ(held->stringValueForKeyword(key), QString(length, 'x'));
    }
}

TEST_F(ZDRAppleEventTest, ReadsNoMoreTextThanTheSizeOfTheParameterAsItIsHeld)
{
    put(typeSInt32, 1234567);
    EXPECT_EQ(bare->stringValueForKeyword(key), "1234") << "four bytes are held";
    EXPECT_EQ(held->stringValueForKeyword(key), "1234567");
    put(typeUnicodeText, NSAppleEventDescriptor::descriptorWithString("abc")->data());
    EXPECT_EQ(bare->stringValueForKeyword(key), "abc");
}

TEST_F(ZDRAppleEventTest, HasNoTextWhereThereIsNone)
{
    for (const auto &event : {held, bare, ZDRAppleEvent::appleEvent()})
        EXPECT_TRUE(event->stringValueForKeyword(key).isEmpty());
    put(typeData, QByteArray("text"));
    EXPECT_TRUE(held->stringValueForKeyword(key).isEmpty());
    EXPECT_TRUE(bare->stringValueForKeyword(key).isEmpty());
}

// ---- data

TEST_F(ZDRAppleEventTest, KeepsDataInBothForms)
{
    QByteArray large(1 << 20, '\0');
    for (qsizetype i = 0; i < large.size(); ++i)
        large[i] = static_cast<char>(i * 31 >> 3);
    for (const auto &event : {held, bare}) {
        for (const QByteArray &data :
             {QByteArray(), QByteArray("\0\1\2", 3), QByteArray(16, '\xff'), QByteArray(17, '\0'), large}) {
            event->setDataForKeyword(data, key);
            EXPECT_EQ(event->dataValueForKeyword(key), data);
        }
    }
    EXPECT_EQ(bare->carbonEvent()->parameter(key)->descriptorType(), typeData);
    EXPECT_EQ(object->paramDescriptorForKeyword(key)->descriptorType(), typeData);
}

TEST_F(ZDRAppleEventTest, ReadsTheBytesOfAnyTypeUnconverted)
{
    put(typeUnicodeText, NSAppleEventDescriptor::descriptorWithString("ab")->data());
    EXPECT_EQ(bare->dataValueForKeyword(key), QByteArray("a\0b\0", 4));
    EXPECT_EQ(held->dataValueForKeyword(key), QByteArray("a\0b\0", 4));
    put(fourCharCode("mine"), QByteArray("whatever"));
    EXPECT_EQ(bare->dataValueForKeyword(key), "whatever");
}

TEST_F(ZDRAppleEventTest, HasNoDataWhereThereIsNone)
{
    for (const auto &event : {held, bare, ZDRAppleEvent::appleEvent()})
        EXPECT_TRUE(event->dataValueForKeyword(key).isEmpty());
    bare->carbonEvent()->setParameter(key, AEDesc(typeAEList));
    EXPECT_TRUE(bare->dataValueForKeyword(key).isEmpty());
}

// ---- failing writers

TEST_F(ZDRAppleEventTest, TellsTheConsoleWhenABareRecordTakesNoParameter)
{
    const auto empty = ZDRAppleEvent::appleEvent();
    const auto ends = [](const std::string &console, const std::string &line) {
        return console.size() >= line.size() && console.ends_with(line) &&
               std::count(console.begin(), console.end(), '\n') == 1;
    };
    EXPECT_TRUE(ends(consoleOf([&] { empty->setShortValueForKeyword(1, key); }),
                     "AEPutParamPtr (setShortValue:forKeyword:): -1703\n"));
    EXPECT_TRUE(ends(consoleOf([&] { empty->setLongValueForKeyword(1, key); }),
                     "AEPutParamPtr (setLongValue:forKeyword:): -1703\n"));
    EXPECT_TRUE(ends(consoleOf([&] { empty->setStringForKeyword("1", key); }),
                     "AEPutParamPtr (setString:forKeyword:): -1703\n"));
    EXPECT_TRUE(ends(consoleOf([&] { empty->setDataForKeyword("1", key); }),
                     "AEPutParamPtr (setData:forKeyword:): -1703\n"));
    EXPECT_FALSE(empty->carbonEvent()->hasData());
}

TEST_F(ZDRAppleEventTest, SaysNothingOtherwise)
{
    EXPECT_EQ(consoleOf([&] {
                  const auto null = ZDRAppleEvent::appleEventWithAppleEventDescriptor(
                      NSAppleEventDescriptor::nullDescriptor());
                  for (const auto &event : {held, bare, null}) {
                      event->setShortValueForKeyword(1, key);
                      event->setLongValueForKeyword(1, key);
                      event->setStringForKeyword("1", key);
                      event->setDataForKeyword("1", key);
                  }
                  for (const auto &event : {held, bare, null, ZDRAppleEvent::appleEvent()}) {
                      event->shortValueForKeyword(0);
                      event->longValueForKeyword(0);
                      event->stringValueForKeyword(0);
                      event->dataValueForKeyword(0);
                  }
              }),
              "");
}

// ---- processes by signature

TEST_F(ZDRAppleEventTest, FindsTheFirstProcessWithTheSignature)
{
    const auto processes = std::make_shared<FakeProcesses>();
    processes->running = {
        {100, 0, fourCharCode("one ")}, {200, 501, fourCharCode("two ")}, {300, 502, fourCharCode("two ")}};
    Port<AEProcesses>::current() = processes;
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("two ")), (ProcessSerialNumber{0, 200}));
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("one ")), (ProcessSerialNumber{0, 100}));
}

TEST_F(ZDRAppleEventTest, FindsAProcessOfItsOwnUserFirstThenOneOfRoot)
{
    const quint32 own = NSProcessInfo::effectiveUserID();
    const quint32 root = RootFolder::owner().value_or(0);
    constexpr quint32 stranger = 54321;
    constexpr OSType wanted = fourCharCode("many");
    const auto processes = std::make_shared<FakeProcesses>();
    Port<AEProcesses>::current() = processes;
    processes->running = {
        {100, stranger, wanted}, {200, root, wanted}, {300, own, fourCharCode("else")}, {400, own, wanted}};
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(wanted),
              (ProcessSerialNumber{0, own == root ? 200U : 400U}));
    processes->running.removeLast();
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(wanted), (ProcessSerialNumber{0, 200}));
    processes->running.removeAt(1);
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(wanted), (ProcessSerialNumber{0, 100}));
}

TEST_F(ZDRAppleEventTest, FindsItsOwnUsersProcessAsAnOrdinaryUser)
{
    constexpr OSType wanted = fourCharCode("many");
    const auto outcome = consoleOfOrdinaryUser([] {
        const auto processes = std::make_shared<FakeProcesses>();
        Port<AEProcesses>::current() = processes;
        processes->running = {
            {100, 4242, wanted}, {200, 0, wanted}, {300, NSProcessInfo::effectiveUserID(), wanted}};
        std::fprintf(stderr, "%u", ZDRAppleEvent::psnOfProcessWithSignature(wanted).lowLongOfPSN);
    });
    EXPECT_EQ(outcome, QByteArray("300"));
}

TEST_F(ZDRAppleEventTest, FindsANumberWithBothWordsZeroWhereNoProcessHasTheSignature)
{
    const auto processes = std::make_shared<FakeProcesses>();
    processes->running = {{100, 0, fourCharCode("one ")}};
    Port<AEProcesses>::current() = processes;
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("none")), (ProcessSerialNumber{0, 0}));
    processes->running.clear();
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("one ")), (ProcessSerialNumber{0, 0}));
}

TEST_F(ZDRAppleEventTest, IsMadeForTheProcessWithTheSignature)
{
    const auto processes = std::make_shared<FakeProcesses>();
    processes->running = {{100, 0, fourCharCode("one ")}};
    Port<AEProcesses>::current() = processes;
    const auto event = ZDRAppleEvent::appleEventWithEventClassForProcessWithSignature(testClass, testID,
                                                                                      fourCharCode("one "));
    EXPECT_EQ(event->eventClass(), testClass);
    EXPECT_EQ(event->eventID(), testID);
    const ProcessSerialNumber number{0, 100};
    AEDesc address;
    AECreateDesc(typeProcessSerialNumber, &number, sizeof number, &address);
    ASSERT_NE(event->carbonEvent(), nullptr);
    EXPECT_EQ(event->carbonEvent()->attribute(keyAddressAttr), address);
    EXPECT_EQ(event->carbonEvent()->attribute(keyTransactionIDAttr), AEDesc::of(typeSInt32, qint32{0}));

    const auto next = ZDRAppleEvent::appleEventWithEventClassForProcessWithSignature(testClass, testID,
                                                                                     fourCharCode("none"));
    EXPECT_EQ(next->carbonEvent()->attribute(keyAddressAttr)->data(), QByteArray(8, '\0'));
    EXPECT_NE(next->carbonEvent()->attribute(keyReturnIDAttr),
              event->carbonEvent()->attribute(keyReturnIDAttr))
        << "each event has a number of its own";
}
