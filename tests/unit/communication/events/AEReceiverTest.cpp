// SPDX-License-Identifier: MIT
//
// Handlers that run an event loop of their own, as one does that shows a dialog, while events come in.
#include "DozelyKit/communication/events/AEReceiver_p.h"

#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"
#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QScopeGuard>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

using namespace dozely;

/// Counts how deep its calls nest, and does in each what the test says.
class NestingHandler : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void take(const std::shared_ptr<NSAppleEventDescriptor> &event,
                          const std::shared_ptr<NSAppleEventDescriptor> &)
    {
        const auto ended = qScopeGuard([this] { --depth; });
        deepest = std::max(deepest, ++depth);
        const qint32 number = event->paramDescriptorForKeyword(keyDirectObject)->int32Value();
        taken += number;
        if (action)
            action(number);
    }

    int depth = 0;
    int deepest = 0;
    QList<qint32> taken;
    std::function<void(qint32 number)> action;
};

namespace
{
constexpr AEEventClass testClass = fourCharCode("Tcls");
constexpr AEEventID testID = fourCharCode("tsID");
constexpr int deepestNesting = 8;
constexpr int longestQueue = 256;

class AppleEventReceiver : public testing::Test
{
protected:
    AppleEventReceiver()
    {
        NSAppleEventManager::sharedAppleEventManager().setEventHandlerForEventClass(&handler, "take",
                                                                                    testClass, testID);
    }

    static AppleEvent eventToSelf(qint32 number)
    {
        const ProcessSerialNumber self{0, static_cast<quint32>(NSProcessInfo::processIdentifier())};
        AEDesc address;
        AECreateDesc(typeProcessSerialNumber, &self, sizeof self, &address);
        AppleEvent event;
        AECreateAppleEvent(testClass, testID, address, kAutoGenerateReturnID, kAnyTransactionID, &event);
        event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, number));
        return event;
    }
    static OSStatus post(qint32 number)
    {
        const AppleEvent event = eventToSelf(number);
        return AESend(&event, nullptr, kAENoReply, kAENormalPriority, kAEDefaultTimeout);
    }

    /// What has come in is served.
    static void runTheLoop()
    {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    }

    /// Each handler posts the next number and runs the loop before it ends, until as many were posted.
    void nestUpTo(
        qint32 count, const std::function<void()> &atTheEnd = [] {})
    {
        handler.action = [=, this](qint32 number) {
            if (number + 1 < count) {
                EXPECT_EQ(post(number + 1), noErr);
                runTheLoop();
            }
            atTheEnd();
        };
        EXPECT_EQ(post(0), noErr);
        EXPECT_TRUE(waitUntil([&] { return handler.taken.size() == count && handler.depth == 0; }));
        handler.action = {};
    }

    static QList<qint32> numbersBelow(qint32 count)
    {
        QList<qint32> numbers;
        for (qint32 i = 0; i < count; ++i)
            numbers += i;
        return numbers;
    }

    ScratchRoot root;
    NestingHandler handler;
};
} // namespace

TEST_F(AppleEventReceiver, NestsHandlersEightDeepAndHasTheOthersWaitInTheirOrder)
{
    constexpr int count = 500;
    nestUpTo(count);
    EXPECT_EQ(handler.deepest, deepestNesting);
    EXPECT_EQ(handler.taken, numbersBelow(count));
}

TEST_F(AppleEventReceiver, NestsAsDeepAsBeforeAfterHandlersThatThrewWhateverTheyLike)
{
    constexpr int count = 20;
    testing::internal::CaptureStderr();
    nestUpTo(count, [] { throw 42; });
    const QString console = QString::fromStdString(testing::internal::GetCapturedStderr());
    EXPECT_EQ(console.count("A handler of Apple events raised: "), count) << qPrintable(console);
    EXPECT_EQ(handler.taken, numbersBelow(count));
    handler.taken.clear();
    handler.deepest = 0;
    nestUpTo(count);
    EXPECT_EQ(handler.deepest, deepestNesting);
    EXPECT_EQ(handler.taken, numbersBelow(count));
}

TEST_F(AppleEventReceiver, AnswersWhatIsWaitedForThoughHandlersNestAsDeepAsTheyMay)
{
    OSStatus status = procNotFound;
    handler.action = [&](qint32 number) {
        if (number == deepestNesting) {
            AppleEvent reply;
            const AppleEvent event = eventToSelf(100);
            status = AESend(&event, &reply, kAEWaitReply, kAENormalPriority, kAEDefaultTimeout);
        } else if (number < deepestNesting) {
            EXPECT_EQ(post(number + 1), noErr);
            runTheLoop();
        }
    };
    post(1);
    EXPECT_TRUE(waitUntil([&] { return status != procNotFound && handler.depth == 0; }));
    EXPECT_EQ(status, noErr);
    EXPECT_TRUE(handler.taken.contains(100));
}

TEST_F(AppleEventReceiver, RefusesAnEventOfItsOwnForWhichItsQueueHasNoRoom)
{
    QList<OSStatus> results;
    handler.action = [&](qint32 number) {
        if (number > deepestNesting)
            return;
        EXPECT_EQ(post(number + 1), noErr); // of the deepest one it is the first that waits
        runTheLoop();
        for (int i = 2; number == deepestNesting && i <= longestQueue + 10; ++i)
            results += post(number + i);
    };
    post(1);
    ASSERT_TRUE(waitUntil([&] { return !results.isEmpty() && handler.depth == 0; }));
    EXPECT_EQ(results.count(noErr), longestQueue - 1);
    EXPECT_EQ(results.count(sessTableErr), 10);
    EXPECT_EQ(results.lastIndexOf(noErr), longestQueue - 2) << "the first ones are taken";
    QList<qint32> expected = numbersBelow(1 + deepestNesting + longestQueue);
    expected.removeFirst();
    EXPECT_EQ(handler.taken, expected);
    EXPECT_EQ(post(1), noErr) << "there is room again";
}

TEST_F(AppleEventReceiver, TakesInWhatOthersPostOnceHandlersNestLessDeep)
{
    constexpr int count = longestQueue + 50;
    std::atomic<int> posted = 0;
    std::thread sender;
    handler.action = [&](qint32 number) {
        if (number < deepestNesting) {
            EXPECT_EQ(post(number + 1), noErr);
            runTheLoop();
        } else if (number == deepestNesting) {
            sender = std::thread([&] {
                for (; posted < count; ++posted)
                    EXPECT_EQ(post(100 + posted), noErr);
            });
            EXPECT_TRUE(waitUntil([&] { return posted > 20; }));
            runTheLoop();
            EXPECT_EQ(handler.taken.size(), deepestNesting);
        }
    };
    post(1);
    EXPECT_TRUE(waitUntil([&] { return handler.taken.size() == deepestNesting + count; }));
    sender.join();
    EXPECT_EQ(handler.deepest, deepestNesting);
    handler.taken.remove(0, deepestNesting);
    std::sort(handler.taken.begin(), handler.taken.end()); // each came by a stream of its own
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(handler.taken[i], 100 + i);
}

TEST_F(AppleEventReceiver, TellsOfEventsOfOthersForWhichItsQueueHasNoRoom)
{
    NSProcessInfo::setProcessName("Dozely Admin");
    const auto told = [&] { return root.logLines().filter("Apple event dropped, 256 wait already"); };
    bool isFull = false;
    std::atomic<int> refused = 0;
    std::thread sender;
    handler.action = [&](qint32) {
        while (!isFull) {
            if (post(0) != noErr) // when the queue is full, those that wait are served within this call
                isFull = true;
        }
        if (sender.joinable())
            return;
        EXPECT_EQ(handler.depth, deepestNesting);
        sender = std::thread([&] { refused = post(1) == noErr ? 1 : -1; });
        EXPECT_TRUE(waitUntil([&] { return !told().isEmpty(); }));
    };
    post(0);
    EXPECT_TRUE(waitUntil([&] { return refused != 0 && handler.depth == 0; }));
    sender.join();
    EXPECT_EQ(refused, 1) << "its sender does not wait for what becomes of it";
    EXPECT_EQ(told().size(), 1);
    EXPECT_FALSE(handler.taken.contains(1));
}

TEST_F(AppleEventReceiver, TellsInOneLineWhatAHandlerRaised)
{
    handler.action = [](qint32) { throw NSException(NSInvalidArgumentException, "one\ntwo\x1b[31m"); };
    testing::internal::CaptureStderr();
    AppleEvent reply;
    const AppleEvent event = eventToSelf(1);
    EXPECT_EQ(AESend(&event, &reply, kAEWaitReply, kAENormalPriority, kAEDefaultTimeout), errAEEventFailed);
    const QString console = QString::fromStdString(testing::internal::GetCapturedStderr());
    EXPECT_EQ(console.count('\n'), 1) << qPrintable(console);
    EXPECT_FALSE(console.contains('\x1b'));
    EXPECT_TRUE(console.contains("one two")) << qPrintable(console);
}

#include "AEReceiverTest.moc"
