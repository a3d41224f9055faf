// SPDX-License-Identifier: MIT
//
// The manager within one process; tests/integration/apple-events has the rest.
#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/communication/events/AEProcesses.h"
#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/communication/remoting/NSSocketPort.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "support/FakeClock.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <gtest/gtest.h>

#include <thread>

using namespace dozely;

using Descriptor = std::shared_ptr<NSAppleEventDescriptor>;

class EventHandler : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void note(const std::shared_ptr<NSAppleEventDescriptor> &event,
                          const std::shared_ptr<NSAppleEventDescriptor> &reply)
    {
        const auto number = event->paramDescriptorForKeyword(keyDirectObject);
        calls += number ? number->int32Value() : -1;
        reply->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithString(name),
                                            keyDirectObject);
        last = event;
        lastReply = reply;
        if (action)
            action();
    }
    Q_INVOKABLE void fail(const std::shared_ptr<NSAppleEventDescriptor> &,
                          const std::shared_ptr<NSAppleEventDescriptor> &reply)
    {
        reply->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithInt32(1), keyErrorNumber);
        throw NSException(NSInvalidArgumentException, "this one always does");
    }
    Q_INVOKABLE void failOddly(const std::shared_ptr<NSAppleEventDescriptor> &,
                               const std::shared_ptr<NSAppleEventDescriptor> &)
    {
        throw 17;
    }
    Q_INVOKABLE void other(int) { calls += -2; }
    Q_INVOKABLE void otherFirst(int, const std::shared_ptr<NSAppleEventDescriptor> &) { calls += -2; }
    Q_INVOKABLE void otherSecond(const std::shared_ptr<NSAppleEventDescriptor> &, int) { calls += -2; }

    QString name = "first";
    QList<int> calls;
    Descriptor last;
    Descriptor lastReply;
    std::function<void()> action;
};

namespace
{
constexpr AEEventClass testClass = fourCharCode("Tcls");
constexpr AEEventID testID = fourCharCode("tsID");

class AppleEventManager : public testing::Test
{
protected:
    static NSAppleEventManager &manager() { return NSAppleEventManager::sharedAppleEventManager(); }

    static AppleEvent eventToSelf(qint32 number = 0, AEEventID eventID = testID)
    {
        const ProcessSerialNumber self{0, static_cast<quint32>(NSProcessInfo::processIdentifier())};
        return eventTo(self, number, eventID);
    }
    static AppleEvent eventTo(const ProcessSerialNumber &target, qint32 number = 0,
                              AEEventID eventID = testID)
    {
        AEDesc address;
        AECreateDesc(typeProcessSerialNumber, &target, sizeof target, &address);
        AppleEvent event;
        AECreateAppleEvent(testClass, eventID, address, kAutoGenerateReturnID, 7, &event);
        event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, number));
        return event;
    }
    static OSStatus sendWaiting(const AppleEvent &event, AppleEvent *reply, qint16 priority = 0)
    {
        return AESend(&event, reply, kAEWaitReply, priority, kAEDefaultTimeout);
    }
    static OSStatus post(const AppleEvent &event, qint16 priority = 0)
    {
        return AESend(&event, nullptr, kAENoReply, priority, kAEDefaultTimeout);
    }
    static QString text(const AppleEvent &reply)
    {
        return NSAppleEventDescriptor::descriptorWithAEDesc(
                   reply.parameter(keyDirectObject).value_or(AEDesc()))
            ->stringValue();
    }

    ScratchRoot root;
    EventHandler handler;
};
} // namespace

TEST_F(AppleEventManager, CallsTheHandlerOfThePairAlone)
{
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventToSelf(3), &reply), noErr);
    EXPECT_EQ(handler.calls, QList<int>{3});
    EXPECT_EQ(text(reply), "first");
    EXPECT_EQ(sendWaiting(eventToSelf(4, fourCharCode("else")), &reply), errAEEventNotHandled);
    EXPECT_EQ(handler.calls, QList<int>{3});
    EXPECT_EQ(text(reply), "first") << "a reply is there on success alone";
}

TEST_F(AppleEventManager, HasOneHandlerForEachPair)
{
    EventHandler second;
    second.name = "second";
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    manager().setEventHandlerForEventClass(&second, "note", testClass, testID);
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventToSelf(), &reply), noErr);
    EXPECT_EQ(text(reply), "second");
    EXPECT_TRUE(handler.calls.isEmpty());
    manager().removeEventHandlerForEventClass(testClass, testID);
    EXPECT_EQ(sendWaiting(eventToSelf(), &reply), errAEEventNotHandled);
}

TEST_F(AppleEventManager, ForgetsAHandlerThatIsDestroyed)
{
    auto mortal = std::make_unique<EventHandler>();
    manager().setEventHandlerForEventClass(mortal.get(), "note", testClass, testID);
    mortal.reset();
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventToSelf(), &reply), errAEEventNotHandled);
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    manager().setEventHandlerForEventClass(nullptr, "note", testClass, testID);
    EXPECT_EQ(sendWaiting(eventToSelf(), &reply), errAEEventNotHandled);
}

TEST_F(AppleEventManager, CallsNoOperationThatTakesSomethingElse)
{
    AppleEvent reply;
    for (const char *selector : {"other", "otherFirst", "otherSecond", "none", "deleteLater", ""}) {
        manager().setEventHandlerForEventClass(&handler, selector, testClass, testID);
        EXPECT_EQ(sendWaiting(eventToSelf(), &reply), errAEEventNotHandled) << selector;
    }
    EXPECT_TRUE(handler.calls.isEmpty());
}

TEST_F(AppleEventManager, TellsTheSenderThatAHandlerRaised)
{
    AppleEvent reply;
    for (const auto &[selector, reason] :
         {std::pair("fail", "NSInvalidArgumentException: this one always does"),
          std::pair("failOddly", "something that is no exception")}) {
        manager().setEventHandlerForEventClass(&handler, selector, testClass, testID);
        testing::internal::CaptureStderr();
        EXPECT_EQ(sendWaiting(eventToSelf(), &reply), errAEEventFailed);
        const std::string console = testing::internal::GetCapturedStderr();
        EXPECT_NE(console.find(std::string("A handler of Apple events raised: ") + reason), std::string::npos)
            << console;
    }
    EXPECT_FALSE(reply.hasData());
}

TEST_F(AppleEventManager, AnswersWithAReplyThatBearsTheEventsNumber)
{
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    const AppleEvent event = eventToSelf();
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(event, &reply), noErr);
    const auto answer = NSAppleEventDescriptor::descriptorWithAEDesc(reply);
    EXPECT_EQ(answer->eventClass(), kCoreEventClass);
    EXPECT_EQ(answer->eventID(), kAEAnswer);
    EXPECT_EQ(reply.attribute(keyReturnIDAttr), event.attribute(keyReturnIDAttr));
    EXPECT_EQ(reply.attribute(keyTransactionIDAttr), AEDesc::of(typeSInt32, qint32{7}));
}

TEST_F(AppleEventManager, TellsHandlersWhoHasSent)
{
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    AppleEvent event = eventToSelf();
    event.setAttribute(keySenderEUIDAttr, AEDesc::of(typeSInt64, qint64{12345}));
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(event, &reply), noErr);
    EXPECT_EQ(handler.last->attributeDescriptorForKeyword(keySenderPIDAttr)->int32Value(), ::getpid());
    EXPECT_EQ(handler.last->attributeDescriptorForKeyword(keySenderEUIDAttr)->aeDesc(),
              AEDesc::of(typeSInt64, qint64{::geteuid()}))
        << "whatever the event said";
}

TEST_F(AppleEventManager, ServesPostedEventsFromTheLoopInTheirOrderUrgentOnesFirst)
{
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    for (const int number : {1, 2, 3})
        EXPECT_EQ(post(eventToSelf(number)), noErr);
    EXPECT_EQ(post(eventToSelf(10), kAEHighPriority), noErr);
    EXPECT_EQ(post(eventToSelf(11), kAEHighPriority), noErr);
    EXPECT_TRUE(handler.calls.isEmpty()) << "nothing waits for them";
    ASSERT_TRUE(waitUntil([&] { return handler.calls.size() == 5; }));
    EXPECT_EQ(handler.calls, QList<int>({10, 11, 1, 2, 3}));
    EXPECT_FALSE(handler.lastReply->aeDesc().hasData()) << "nobody wants a reply";
}

TEST_F(AppleEventManager, ServesPostedEventsBeforeOneThatIsWaitedForUnlessThatIsUrgent)
{
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    AppleEvent reply;
    post(eventToSelf(1));
    EXPECT_EQ(sendWaiting(eventToSelf(2), &reply, kAEHighPriority), noErr);
    EXPECT_EQ(sendWaiting(eventToSelf(3), &reply), noErr);
    EXPECT_EQ(handler.calls, QList<int>({2, 1, 3}));
}

TEST_F(AppleEventManager, TakesNoMoreIntoItsQueueThanItHolds)
{
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    for (int i = 0; i < 300; ++i)
        post(eventToSelf(i));
    EXPECT_EQ(handler.calls.size(), 256);
    ASSERT_TRUE(waitUntil([&] { return handler.calls.size() == 300; }));
    for (int i = 0; i < 300; ++i)
        EXPECT_EQ(handler.calls[i], i);
}

TEST_F(AppleEventManager, ServesEventsWithinEvents)
{
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    handler.action = [&] {
        handler.action = {};
        AppleEvent inner;
        EXPECT_EQ(sendWaiting(eventToSelf(2), &inner), noErr);
    };
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventToSelf(1), &reply), noErr);
    EXPECT_EQ(handler.calls, QList<int>({1, 2}));
}

TEST_F(AppleEventManager, IsReachedByOtherThreadsOfItsProcess)
{
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    ASSERT_TRUE(manager().isListening());
    std::atomic<OSStatus> status = 1;
    AppleEvent reply;
    std::thread sender([&] { status = sendWaiting(eventToSelf(5), &reply); });
    EXPECT_TRUE(waitUntil([&] { return status != 1; }));
    sender.join();
    EXPECT_EQ(status, noErr);
    EXPECT_EQ(text(reply), "first");
}

TEST_F(AppleEventManager, ListensFromTheFirstHandlerOn)
{
    EXPECT_FALSE(manager().isListening());
    EXPECT_TRUE(Port<AEProcesses>::current()->processes().isEmpty());
    ProcessSignature::set(fourCharCode("Test"));
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    EXPECT_TRUE(manager().isListening());
    ASSERT_EQ(Port<AEProcesses>::current()->processes().size(), 1);
    EXPECT_EQ(Port<AEProcesses>::current()->processes().constFirst().signature, fourCharCode("Test"));
}

TEST_F(AppleEventManager, TriesAgainEverMoreSeldomWhereItCannotListen)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    const QString obstacle = root.join("/private");
    QFile file(obstacle);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    manager().setEventHandlerForEventClass(&handler, "note", testClass, fourCharCode("two "));
    EXPECT_FALSE(manager().isListening());
    for (const int seconds : {1, 2, 4, 8, 16, 32, 60, 60}) {
        EXPECT_EQ(clock->pendingDelays(), QList{std::chrono::milliseconds(seconds * 1000)});
        clock->advance(std::chrono::seconds(seconds));
        EXPECT_FALSE(manager().isListening());
    }
    file.remove();
    clock->advance(std::chrono::milliseconds(59'999));
    EXPECT_FALSE(manager().isListening());
    clock->advance(std::chrono::milliseconds(1));
    EXPECT_TRUE(manager().isListening());
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
}

// ---- what cannot be sent

TEST_F(AppleEventManager, SendsNothingThatIsNoEvent)
{
    AppleEvent reply;
    EXPECT_EQ(AESend(nullptr, &reply, kAEWaitReply, 0, -1), paramErr);
    const AEDesc null;
    EXPECT_EQ(AESend(&null, &reply, kAEWaitReply, 0, -1), errAENotAppleEvent);
    const AEDesc record(typeAERecord);
    EXPECT_EQ(AESend(&record, &reply, kAEWaitReply, 0, -1), errAENotAppleEvent);
}

TEST_F(AppleEventManager, SendsInNoOtherModePriorityOrTime)
{
    manager().setEventHandlerForEventClass(&handler, "note", testClass, testID);
    const AppleEvent event = eventToSelf();
    AppleEvent reply;
    for (const qint32 mode : {97, 99, 1, 3, 0x11, 0x33})
        EXPECT_EQ(AESend(&event, &reply, mode, 0, -1), noErr) << mode;
    for (const qint32 mode : {0, 2, 98, 96, 3 + 0x80, 3 + 0x1000, 3 + 0x04, -1})
        EXPECT_EQ(AESend(&event, &reply, mode, 0, -1), errAEUnknownSendMode) << mode;
    EXPECT_EQ(AESend(&event, nullptr, 99, 0, -1), paramErr) << "nowhere to put the reply";
    EXPECT_EQ(AESend(&event, &reply, 99, 2, -1), paramErr);
    EXPECT_EQ(AESend(&event, &reply, 99, -1, -1), paramErr);
    EXPECT_EQ(AESend(&event, &reply, 99, 0, -3), paramErr);
}

TEST_F(AppleEventManager, SendsToNobodyWhoIsNotThere)
{
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventTo({0, 0}), &reply), procNotFound);
    EXPECT_EQ(sendWaiting(eventTo({1, static_cast<quint32>(::getpid())}), &reply), procNotFound);
    EXPECT_EQ(sendWaiting(eventTo({0, 0xffffffff}), &reply), procNotFound);
    EXPECT_EQ(sendWaiting(eventTo({0, static_cast<quint32>(::getppid())}), &reply), procNotFound)
        << "it runs, but uses no events";
    EXPECT_EQ(post(eventTo({0, 0})), procNotFound);
}

TEST_F(AppleEventManager, SendsToNoAddressOfAnotherKind)
{
    AppleEvent event = eventToSelf();
    AppleEvent reply;
    event.setAttribute(keyAddressAttr, AEDesc(typeProcessSerialNumber, "short"));
    EXPECT_EQ(sendWaiting(event, &reply), errAEUnknownAddressType);
    event.setAttribute(keyAddressAttr, AEDesc(fourCharCode("sign"), "Test"));
    EXPECT_EQ(sendWaiting(event, &reply), errAEUnknownAddressType);
    event.removeAttribute(keyAddressAttr);
    EXPECT_EQ(sendWaiting(event, &reply), errAEUnknownAddressType);
}

TEST_F(AppleEventManager, SendsNothingLargerThanAnEventMayBe)
{
    AppleEvent event = eventTo({0, static_cast<quint32>(::getppid())});
    event.setParameter(fourCharCode("data"), AEDesc(typeData, QByteArray(5 << 20, 'x')));
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(event, &reply), memFullErr);
}

#include "NSAppleEventManagerTest.moc"
