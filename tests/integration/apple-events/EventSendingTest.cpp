// SPDX-License-Identifier: MIT
#include "EventFixture.h"

#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/ZDRAppleEvent.h"
#include "DozelyKit/communication/events/ZDRAppleEventManager.h"

#include <csignal>
#include <limits>
#include <thread>

using namespace dozely;

using EventSending = EventFixture;
using testing::AllOf;
using testing::Ge;
using testing::Le;

TEST_F(EventSending, CarriesEveryTypeThereAndBack)
{
    const Host host = start();
    AEDesc list(typeAEList);
    list.append(AEDesc(typeText, "one"));
    list.append(AEDesc::of(typeSInt16, qint16{2}));
    AEDesc record(typeAERecord);
    record.setParameter(fourCharCode("list"), list);
    record.setParameter(fourCharCode("none"), AEDesc());
    AppleEvent inner = HostEvents::eventTo(1, HostEvents::note);
    inner.setAttribute(fourCharCode("attr"), list);
    inner.setParameter(keyDirectObject, record);
    const QList<AEDesc> values{AEDesc(),
                               AEDesc::of(typeBoolean, quint8{1}),
                               AEDesc(typeTrue),
                               AEDesc(typeFalse),
                               AEDesc::of(typeSInt16, std::numeric_limits<qint16>::min()),
                               AEDesc::of(typeSInt32, std::numeric_limits<qint32>::min()),
                               AEDesc::of(typeUInt32, std::numeric_limits<quint32>::max()),
                               AEDesc::of(typeSInt64, std::numeric_limits<qint64>::min()),
                               AEDesc::of(typeIEEE64BitFloatingPoint, -0.1),
                               AEDesc::of(typeType, fourCharCode("psn ")),
                               AEDesc::of(typeEnumerated, fourCharCode("yes ")),
                               AEDesc(typeText, "Zo\x91"),
                               AEDesc(typeUnicodeText, QByteArray("\xe5\x65\0\0\x00\xd8", 6)),
                               AEDesc(typeUTF8Text, "日本"),
                               AEDesc(typeData, QByteArray("\0\xff\n\0", 4)),
                               AEDesc(typeData),
                               AEDesc(typeProcessSerialNumber, QByteArray(8, '\7')),
                               AEDesc(fourCharCode("mine"), "own"),
                               list,
                               record,
                               inner,
                               AEDesc(typeAEList)};
    AppleEvent event = eventTo(host, HostEvents::echo);
    for (qsizetype i = 0; i < values.size(); ++i)
        event.setParameter(fourCharCode("v000") + static_cast<quint32>(i), values[i]);
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(event, &reply), noErr);
    for (qsizetype i = 0; i < values.size(); ++i)
        EXPECT_EQ(reply.parameter(fourCharCode("v000") + static_cast<quint32>(i)), values[i]) << i;
}

TEST_F(EventSending, CarriesWhatTheRecordsOfTheKitHold)
{
    const Host host = start("Kit1");
    const auto event = ZDRAppleEvent::appleEventWithEventClassForProcessWithSignature(
        HostEvents::hostClass, HostEvents::echo, fourCharCode("Kit1"));
    event->setShortValueForKeyword(-7, fourCharCode("shrt"));
    event->setLongValueForKeyword(-70'000, fourCharCode("long"));
    event->setStringForKeyword("plain text", fourCharCode("text"));
    event->setDataForKeyword(QByteArray("\0\xff\n", 3), fourCharCode("data"));
    const auto reply = ZDRAppleEventManager::sharedInstance()->sendAppleEvent(event, true);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->eventClass(), kCoreEventClass);
    EXPECT_EQ(reply->eventID(), kAEAnswer);
    EXPECT_EQ(reply->shortValueForKeyword(fourCharCode("shrt")), -7);
    EXPECT_EQ(reply->longValueForKeyword(fourCharCode("long")), -70'000);
    EXPECT_EQ(reply->stringValueForKeyword(fourCharCode("text")), "plain text");
    EXPECT_EQ(reply->dataValueForKeyword(fourCharCode("data")), QByteArray("\0\xff\n", 3));
}

TEST_F(EventSending, CarriesAMegabyteOfDataInARecordOfTheKit)
{
    const Host host = start("Kit1");
    const auto event = ZDRAppleEvent::appleEventWithEventClassForProcessWithSignature(
        HostEvents::hostClass, HostEvents::echo, fourCharCode("Kit1"));
    QByteArray megabyte(1 << 20, '\0');
    for (qsizetype i = 0; i < megabyte.size(); ++i)
        megabyte[i] = static_cast<char>(i ^ i >> 8);
    event->setDataForKeyword(megabyte, fourCharCode("data"));
    const auto reply = ZDRAppleEventManager::sharedInstance()->sendAppleEvent(event, true);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->dataValueForKeyword(fourCharCode("data")), megabyte);
}

TEST_F(EventSending, GivesAnEmptyRecordOfTheKitWhenNoReplyIsWanted)
{
    const Host host = start("Kit1");
    const auto event = ZDRAppleEvent::appleEventWithEventClassForProcessWithSignature(
        HostEvents::hostClass, HostEvents::note, fourCharCode("Kit1"));
    event->setLongValueForKeyword(7, keyDirectObject);
    const auto none = ZDRAppleEventManager::sharedInstance()->sendAppleEvent(event, false);
    ASSERT_TRUE(none);
    EXPECT_FALSE(none->carbonEvent()->hasData());
    EXPECT_EQ(host->nextHeard(), "7");
}

TEST_F(EventSending, CarriesAThousandParameters)
{
    const Host host = start();
    AppleEvent event = eventTo(host, HostEvents::echo);
    for (quint32 i = 0; i < 1000; ++i)
        event.setParameter(i, AEDesc::of(typeSInt32, static_cast<qint32>(i * i)));
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(event, &reply), noErr);
    for (quint32 i = 0; i < 1000; ++i)
        ASSERT_EQ(reply.parameter(i), AEDesc::of(typeSInt32, static_cast<qint32>(i * i))) << i;
}

TEST_F(EventSending, TellsTheReceiverWhoSends)
{
    const Host host = start();
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
    EXPECT_EQ(numberIn(reply, keySenderPIDAttr), ::getpid());
    EXPECT_EQ(numberIn(reply, keySenderEUIDAttr), static_cast<qint32>(::geteuid()));
}

TEST_F(EventSending, SendsTenThousandEventsInARowEachWithItsReply)
{
    const Host host = start();
    for (qint32 i = 0; i < 10'000; ++i) {
        AppleEvent event = eventTo(host, HostEvents::echo);
        event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, i));
        AppleEvent reply;
        ASSERT_EQ(sendWaiting(event, &reply), noErr) << i;
        ASSERT_EQ(reply.parameter(keyDirectObject), AEDesc::of(typeSInt32, i));
        ASSERT_EQ(reply.attribute(keyReturnIDAttr), event.attribute(keyReturnIDAttr));
    }
}

TEST_F(EventSending, PostsTenThousandEventsInARowAndTheyArriveInTheirOrder)
{
    const Host host = start();
    constexpr qint32 count = 10'000;
    constexpr qint32 ahead = 1'000;
    for (qint32 i = 1; i <= count; ++i) {
        AppleEvent event = eventTo(host, HostEvents::note);
        event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, i));
        ASSERT_EQ(post(event), noErr) << i;
        if (i > ahead) { // the pipe that it says so through holds some thousand lines
            ASSERT_EQ(host->nextHeard(), QString::number(i - ahead));
        }
    }
    for (qint32 i = count - ahead + 1; i <= count; ++i)
        ASSERT_EQ(host->nextHeard(), QString::number(i));
}

TEST_F(EventSending, LetsUrgentEventsPassThoseThatWait)
{
    const Host host = start();
    AppleEvent event = eventTo(host, HostEvents::hang);
    ASSERT_EQ(post(event), noErr);
    ASSERT_TRUE(host->hears("hang"));
    for (const qint32 number : {1, 2, 99}) {
        event = eventTo(host, HostEvents::note);
        event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, number));
        ASSERT_EQ(post(event, number == 99 ? kAEHighPriority : kAENormalPriority), noErr)
            << "the receiver is busy: nobody waits for it";
    }
    host->send("go on");
    EXPECT_EQ(host->nextHeard(), "99");
    EXPECT_EQ(host->nextHeard(), "1");
    EXPECT_EQ(host->nextHeard(), "2");
}

TEST_F(EventSending, TellsThatTheReceiverHasNoHandler)
{
    const Host host = start();
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventTo(host, fourCharCode("none")), &reply), errAEEventNotHandled);
    EXPECT_FALSE(reply.hasData());
    EXPECT_EQ(post(eventTo(host, fourCharCode("none"))), noErr) << "nobody asks";
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
}

TEST_F(EventSending, TellsThatTheHandlerRaised)
{
    const Host host = start();
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::fail), &reply), errAEEventFailed);
    EXPECT_EQ(post(eventTo(host, HostEvents::fail)), noErr);
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr) << "it goes on";
}

TEST_F(EventSending, TellsThatTheReplyIsTooLarge)
{
    const Host host = start();
    AppleEvent event = eventTo(host, HostEvents::grow);
    AppleEvent reply;
    event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, 4'000'000));
    EXPECT_EQ(sendWaiting(event, &reply), noErr);
    EXPECT_EQ(reply.parameter(keyDirectObject)->data().size(), 4'000'000);
    event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, 5'000'000));
    EXPECT_EQ(sendWaiting(event, &reply), memFullErr);
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
}

TEST_F(EventSending, CarriesTheLargestEventThereAndBack)
{
    const Host host = start();
    AppleEvent event = eventTo(host, HostEvents::echo);
    QByteArray flat;
    ASSERT_EQ(event.flatten(&flat), noErr);
    // Room for the parameter's keyword, type and size, and for what the reply says of the sender.
    const qsizetype room = AEDesc::maximumFlattenedSize - flat.size() - 12 - 64;
    const AEDesc largest(typeData, QByteArray(room, 'x'));
    event.setParameter(keyDirectObject, largest);
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(event, &reply), noErr);
    EXPECT_EQ(reply.parameter(keyDirectObject), largest);
    ASSERT_EQ(post(event), noErr);
}

TEST_F(EventSending, ReachesAProcessFromSeveralThreadsAtOnce)
{
    const Host host = start();
    std::atomic<int> right = 0;
    std::atomic<int> ended = 0;
    std::vector<std::thread> threads;
    for (qint32 number = 0; number < 4; ++number) {
        threads.emplace_back([&, number] {
            for (qint32 i = 0; i < 50; ++i) {
                AppleEvent event = eventTo(host, HostEvents::echo);
                event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, number * 1000 + i));
                AppleEvent reply;
                right += sendWaiting(event, &reply) == noErr && numberIn(reply) == number * 1000 + i;
            }
            ++ended;
        });
    }
    EXPECT_TRUE(waitUntil([&] { return ended == 4; }));
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(right, 200);
}

TEST_F(EventSending, GoesOnWithAReceiverThatWasStartedAgain)
{
    AppleEvent reply;
    for (int i = 0; i < 3; ++i) {
        const Host host = start("Agin");
        const auto event = ZDRAppleEvent::appleEventWithEventClassForProcessWithSignature(
            HostEvents::hostClass, HostEvents::echo, fourCharCode("Agin"));
        EXPECT_TRUE(ZDRAppleEventManager::sharedInstance()->sendAppleEvent(event, true)) << i;
    }
}
