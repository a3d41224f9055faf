// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/ZDRAppleEventManager.h"
#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/ZDRAppleEventManager_p.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace dozely;

class ReachedHandler : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void take(const std::shared_ptr<NSAppleEventDescriptor> &event,
                          const std::shared_ptr<NSAppleEventDescriptor> &reply)
    {
        ++calls;
        const auto answer = ZDRAppleEvent::appleEventWithAppleEventDescriptor(reply);
        answer->setLongValueForKeyword(
            ZDRAppleEvent::appleEventWithAppleEventDescriptor(event)->longValueForKeyword(keyDirectObject) +
                1,
            keyDirectObject);
    }
    /// What a handler of the kit's manager would be called with.
    Q_INVOKABLE void handle(const std::shared_ptr<ZDRAppleEvent> &, const std::shared_ptr<ZDRAppleEvent> &)
    {
        ++calls;
    }
    Q_INVOKABLE QString description()
    {
        ++calls;
        return {};
    }

    int calls = 0;
};

namespace
{
constexpr AEEventClass testClass = fourCharCode("Tcls");
constexpr AEEventID testID = fourCharCode("tsID");
constexpr AEEventID otherID = fourCharCode("othr");

/// Writes down what the number is sent.
class SpyNumber : public AddressNumber
{
public:
    SpyNumber(quint64 address, QStringList *sent) : AddressNumber(address), m_sent(sent) {}
    QString description() const override { return note("description"); }
    QString stringValue() const override { return note("stringValue"); }
    quint64 hash() const override { return note("hash").size(); }

private:
    QString note(const QString &selector) const
    {
        *m_sent += selector + ' ' + QString::number(unsignedLongValue());
        return selector;
    }
    QStringList *m_sent;
};

/// Fails whenever it is asked what it is.
class ThrowingNumber : public AddressNumber
{
public:
    using AddressNumber::AddressNumber;
    QString description() const override { throw 42; }
};

class ZDRAppleEventManagerTest : public testing::Test
{
protected:
    ZDRAppleEventManagerTest()
    {
        NSProcessInfo::setProcessName("Dozely Admin");
        ZDRAppleEventManagerPrivate::of(manager).makeNumber = [this](quint64 address) {
            return std::make_unique<SpyNumber>(address, &sent);
        };
    }

    static std::shared_ptr<NSAppleEventDescriptor> incoming(AEEventClass eventClass, AEEventID eventID)
    {
        AppleEvent event;
        AECreateAppleEvent(eventClass, eventID, AEDesc(), 1, 0, &event);
        return NSAppleEventDescriptor::descriptorWithAEDesc(event);
    }
    void dispatch(AEEventClass eventClass, AEEventID eventID)
    {
        manager.dispatchAppleEventWithReply(incoming(eventClass, eventID),
                                            NSAppleEventDescriptor::nullDescriptor());
    }
    static std::shared_ptr<ZDRAppleEvent> eventTo(qint64 process, AEEventID eventID = testID)
    {
        const ProcessSerialNumber number{0, static_cast<quint32>(process)};
        AEDesc address;
        AECreateDesc(typeProcessSerialNumber, &number, sizeof number, &address);
        AppleEvent event;
        AECreateAppleEvent(testClass, eventID, address, 1, 0, &event);
        return ZDRAppleEvent::appleEventWithCarbonEvent(event);
    }
    static std::shared_ptr<ZDRAppleEvent> eventToSelf(AEEventID eventID = testID)
    {
        return eventTo(NSProcessInfo::processIdentifier(), eventID);
    }
    /// The messages in the log, without who wrote them.
    QStringList logged() const
    {
        QStringList messages;
        for (const QString &line : root.logLines())
            messages += line.mid(line.indexOf("): ") + 3);
        return messages;
    }
    static QString address(const void *object) { return QString::number(reinterpret_cast<quintptr>(object)); }

    ScratchRoot root;
    ZDRAppleEventManager &manager = *ZDRAppleEventManager::sharedInstance();
    QStringList sent;
    ReachedHandler handler;
};
} // namespace

TEST(ZDRAppleEventManagerOnce, IsOneAProcess)
{
    const auto first = ZDRAppleEventManager::sharedInstance();
    EXPECT_EQ(ZDRAppleEventManager::sharedInstance(), first);
    EXPECT_EQ(ZDRAppleEventManager::init(), nullptr);
}

TEST(ZDRAppleEventManagerOnce, IsTheOneThatInitMade)
{
    const auto made = ZDRAppleEventManager::init();
    ASSERT_TRUE(made);
    EXPECT_EQ(ZDRAppleEventManager::init(), nullptr);
    EXPECT_EQ(ZDRAppleEventManager::sharedInstance(), made);
    EXPECT_TRUE(made->appleEventClasses().isEmpty());
}

// ---- the table

TEST_F(ZDRAppleEventManagerTest, KeepsHandlersByClassIDAndAddress)
{
    manager.setObserverForEventClass(&handler, "handle", testClass, testID);
    const QVariantMap pair{{address(&handler), "handle"}};
    EXPECT_EQ(manager.appleEventClasses(), (QVariantMap{{"'Tcls'", QVariantMap{{"'tsID'", pair}}}}));
}

TEST_F(ZDRAppleEventManagerTest, KeepsSeveralHandlersOfOnePair)
{
    const ReachedHandler second;
    manager.setObserverForEventClass(&handler, "handle", testClass, testID);
    manager.setObserverForEventClass(&second, "take", testClass, testID);
    const QVariantMap pair{{address(&handler), "handle"}, {address(&second), "take"}};
    EXPECT_EQ(manager.appleEventClasses(), (QVariantMap{{"'Tcls'", QVariantMap{{"'tsID'", pair}}}}));
}

TEST_F(ZDRAppleEventManagerTest, KeepsTheLaterSelectorOfOneHandler)
{
    manager.setObserverForEventClass(&handler, "handle", testClass, testID);
    manager.setObserverForEventClass(&handler, "take", testClass, testID);
    const QVariantMap pair{{address(&handler), "take"}};
    EXPECT_EQ(manager.appleEventClasses(), (QVariantMap{{"'Tcls'", QVariantMap{{"'tsID'", pair}}}}));
}

TEST_F(ZDRAppleEventManagerTest, KeepsPairsApart)
{
    manager.setObserverForEventClass(&handler, "one", testClass, testID);
    manager.setObserverForEventClass(&handler, "two", testClass, otherID);
    manager.setObserverForEventClass(&handler, "three", otherID, testID);
    const QVariantMap classes = manager.appleEventClasses();
    EXPECT_EQ(classes.keys(), QStringList({"'Tcls'", "'othr'"}));
    EXPECT_EQ(classes["'Tcls'"].toMap().keys(), QStringList({"'othr'", "'tsID'"}));
    EXPECT_EQ(classes["'othr'"].toMap()["'tsID'"].toMap().values(), QVariantList{"three"});
}

TEST_F(ZDRAppleEventManagerTest, KeepsTheEntryOfAHandlerThatIsGone)
{
    auto mortal = std::make_unique<ReachedHandler>();
    const QString was = address(mortal.get());
    manager.setObserverForEventClass(mortal.get(), "description", testClass, testID);
    mortal.reset();
    EXPECT_EQ(manager.appleEventClasses()["'Tcls'"].toMap()["'tsID'"].toMap().keys(), QStringList{was});
    dispatch(testClass, testID);
    EXPECT_EQ(sent, QStringList{"description " + was}) << "the number is there still";
}

// ---- dispatch

TEST_F(ZDRAppleEventManagerTest, SendsASelectorThatANumberAnswersToTheNumber)
{
    manager.setObserverForEventClass(&handler, "description", testClass, testID);
    dispatch(testClass, testID);
    EXPECT_EQ(sent, QStringList{"description " + address(&handler)});
    EXPECT_EQ(handler.calls, 0) << "the handler has an operation of that name, too";
    EXPECT_TRUE(logged().isEmpty());
}

TEST_F(ZDRAppleEventManagerTest, DoesNothingWithASelectorThatANumberDoesNotAnswer)
{
    for (const char *selector : {"handle", "take", "deleteLater", "destroyed", ""}) {
        manager.setObserverForEventClass(&handler, selector, testClass, testID);
        dispatch(testClass, testID);
    }
    QCoreApplication::processEvents();
    EXPECT_TRUE(sent.isEmpty());
    EXPECT_EQ(handler.calls, 0);
    EXPECT_TRUE(logged().isEmpty());
}

TEST_F(ZDRAppleEventManagerTest, SendsToTheNumberOfEachHandlerOfThePair)
{
    const ReachedHandler second;
    manager.setObserverForEventClass(&handler, "stringValue", testClass, testID);
    manager.setObserverForEventClass(&second, "hash", testClass, testID);
    manager.setObserverForEventClass(this, "handle", testClass, testID);
    dispatch(testClass, testID);
    sent.sort();
    EXPECT_EQ(sent, QStringList({"hash " + address(&second), "stringValue " + address(&handler)}));
}

TEST_F(ZDRAppleEventManagerTest, LogsAnEventOfAClassThatItDoesNotKnow)
{
    dispatch(testClass, testID);
    manager.setObserverForEventClass(&handler, "description", testClass, testID);
    dispatch(otherID, testID);
    EXPECT_EQ(logged(), QStringList({"No matching IDs", "No matching IDs"}));
    EXPECT_TRUE(sent.isEmpty());
}

TEST_F(ZDRAppleEventManagerTest, LogsAnEventOfAKnownClassWithAnotherID)
{
    manager.setObserverForEventClass(&handler, "description", testClass, testID);
    dispatch(testClass, otherID);
    EXPECT_EQ(logged(), QStringList{"No matching Observers"});
    EXPECT_TRUE(sent.isEmpty());
}

TEST_F(ZDRAppleEventManagerTest, TakesIncomingEventsOfThePairsThatItKnows)
{
    manager.setObserverForEventClass(&handler, "description", testClass, testID);
    const auto reply = manager.sendAppleEvent(eventToSelf(), true);
    ASSERT_TRUE(reply) << "to the sender the event is handled";
    EXPECT_EQ(reply->carbonEvent()->count(), 0);
    EXPECT_EQ(sent.size(), 1);
}

TEST_F(ZDRAppleEventManagerTest, IsPassedByAHandlerRegisteredWithThePlatform)
{
    manager.setObserverForEventClass(&handler, "handle", testClass, testID);
    NSAppleEventManager::sharedAppleEventManager().setEventHandlerForEventClass(&handler, "take", testClass,
                                                                                testID);
    const auto event = eventToSelf();
    event->setLongValueForKeyword(41, keyDirectObject);
    const auto reply = manager.sendAppleEvent(event, true);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->longValueForKeyword(keyDirectObject), 42);
    EXPECT_EQ(handler.calls, 1);
}

// ---- the number

TEST(AddressNumber, AnswersWhatANumberAnswers)
{
    const AddressNumber number(0xfedcba9876543210);
    EXPECT_EQ(number.description(), "18364758544493064720");
    EXPECT_EQ(number.stringValue(), "18364758544493064720");
    EXPECT_EQ(number.longValue(), -81985529216486896);
    EXPECT_EQ(number.longLongValue(), -81985529216486896);
    EXPECT_EQ(number.integerValue(), -81985529216486896);
    EXPECT_EQ(number.unsignedLongValue(), 0xfedcba9876543210);
    EXPECT_EQ(number.unsignedLongLongValue(), 0xfedcba9876543210);
    EXPECT_EQ(number.unsignedIntegerValue(), 0xfedcba9876543210);
    EXPECT_EQ(number.hash(), 0xfedcba9876543210);
    EXPECT_EQ(number.intValue(), 0x76543210);
    EXPECT_EQ(number.shortValue(), 0x3210);
    EXPECT_EQ(number.charValue(), 0x10);
    EXPECT_EQ(number.floatValue(), 0xfedcba9876543210p0F);
    EXPECT_EQ(number.doubleValue(), 0xfedcba9876543210p0);
    EXPECT_TRUE(number.boolValue());
    const AddressNumber high(0xffffffff);
    EXPECT_EQ(high.intValue(), -1);
    EXPECT_EQ(high.unsignedIntValue(), 0xffffffffU);
    EXPECT_EQ(high.shortValue(), -1);
    EXPECT_EQ(high.unsignedShortValue(), 0xffffU);
    EXPECT_EQ(high.charValue(), -1);
    EXPECT_EQ(high.unsignedCharValue(), 0xffU);
    EXPECT_FALSE(AddressNumber(0).boolValue());
    for (const char *selector : {"description", "stringValue", "unsignedLongValue", "doubleValue"})
        EXPECT_TRUE(number.respondsToSelector(selector)) << selector;
    EXPECT_FALSE(number.respondsToSelector("deleteLater"));
    EXPECT_FALSE(number.respondsToSelector("length"));
}

// ---- sending

TEST_F(ZDRAppleEventManagerTest, ReturnsAnEmptyReplyWhenNoneWasAskedFor)
{
    NSAppleEventManager::sharedAppleEventManager().setEventHandlerForEventClass(&handler, "take", testClass,
                                                                                testID);
    const auto reply = manager.sendAppleEvent(eventToSelf(), false);
    ASSERT_TRUE(reply);
    ASSERT_NE(reply->carbonEvent(), nullptr);
    EXPECT_EQ(reply->carbonEvent()->descriptorType(), typeNull);
    EXPECT_TRUE(logged().isEmpty());
}

TEST_F(ZDRAppleEventManagerTest, LogsWhatCouldNotBeSentAndReturnsNothing)
{
    EXPECT_EQ(manager.sendAppleEvent(eventTo(0), true), nullptr);
    EXPECT_EQ(manager.sendAppleEvent(eventTo(0), false), nullptr);
    EXPECT_EQ(manager.sendAppleEvent(eventToSelf(), true), nullptr);
    EXPECT_EQ(manager.sendAppleEvent(eventToSelf(), -4, false), nullptr);
    EXPECT_EQ(logged(), QStringList({"Could not send AppleEvent 'tsID': -600 (1)",
                                     "Could not send AppleEvent 'tsID': -600 (0)",
                                     "Could not send AppleEvent 'tsID': -1708 (1)",
                                     "Could not send AppleEvent 'tsID': -50 (0)"}));
}

TEST_F(ZDRAppleEventManagerTest, CannotSendWhatIsNotInTheBareForm)
{
    const auto held = ZDRAppleEvent::appleEventWithAppleEventDescriptor(incoming(testClass, otherID));
    EXPECT_EQ(manager.sendAppleEvent(held, true), nullptr);
    EXPECT_EQ(manager.sendAppleEvent(ZDRAppleEvent::appleEvent(), true), nullptr);
    EXPECT_EQ(manager.sendAppleEvent(nullptr, true), nullptr);
    const QStringList lines = logged();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0], "Could not send AppleEvent 'othr': -50 (1)");
    EXPECT_TRUE(lines[1].endsWith("': -1707 (1)")) << qPrintable(lines[1]);
    EXPECT_EQ(lines[2], "Could not send AppleEvent '    ': -50 (1)");
}

TEST_F(ZDRAppleEventManagerTest, TellsTheSenderOfAnEventThatANumberThrew)
{
    ZDRAppleEventManagerPrivate::of(manager).makeNumber = [](quint64 address) {
        return std::make_unique<ThrowingNumber>(address);
    };
    manager.setObserverForEventClass(&handler, "description", testClass, testID);
    manager.setObserverForEventClass(&handler, "stringValue", testClass, otherID);
    testing::internal::CaptureStderr();
    AppleEvent reply;
    const auto send = [&](AEEventID eventID) {
        return AESend(eventToSelf(eventID)->carbonEvent(), &reply, kAEWaitReply, kAENormalPriority,
                      kAEDefaultTimeout);
    };
    EXPECT_EQ(send(testID), errAEEventFailed);
    EXPECT_EQ(send(otherID), noErr);
    testing::internal::GetCapturedStderr();
}

#include "ZDRAppleEventManagerTest.moc"
