// SPDX-License-Identifier: MIT
//
// Replies that are late or never come, and two that wait for each other.
#include "EventFixture.h"

#include "DozelyKit/communication/events/AEReceiver_p.h"
#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "support/SignalProcess.h"

#include <csignal>

using namespace dozely;

/// Posts long events to a receiver that hangs until one cannot leave any more, gives that up, and has the
/// receiver go on.
class GivingUp : public QObject
{
    Q_OBJECT
public:
    static constexpr AEEventID eventID = fourCharCode("give");

    explicit GivingUp(HostProcess &host) : m_host(host)
    {
        NSAppleEventManager::sharedAppleEventManager().setEventHandlerForEventClass(
            this, "giveUp", HostEvents::hostClass, eventID);
    }

    ~GivingUp() override { AEReceiver::shared().stop(); }

    Q_INVOKABLE void giveUp(const std::shared_ptr<NSAppleEventDescriptor> &,
                            const std::shared_ptr<NSAppleEventDescriptor> &)
    {
        EXPECT_TRUE(m_host.hears("hang"));
        AppleEvent event = HostEvents::eventTo(m_host.processId(), HostEvents::echo);
        event.setParameter(keyDirectObject, AEDesc(typeData, QByteArray(3'000'000, 'g')));
        for (int i = 0; i < 100 && status == noErr; ++i) // the buffer of a socket may be large
            status = AESend(&event, nullptr, kAENoReply, kAENormalPriority, 6);
        m_host.send("go on");
    }

    OSStatus status = noErr;

private:
    HostProcess &m_host;
};

using EventReply = EventFixture;
using testing::AllOf;
using testing::Ge;
using testing::Le;

namespace
{
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}
} // namespace

TEST_F(EventReply, IsWaitedForAsManyTicksAsWereGiven)
{
    const Host host = start();
    AppleEvent reply;
    const auto start = Clock::now();
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::hang), &reply, 30), errAETimeout);
    EXPECT_THAT(secondsSince(start), AllOf(Ge(0.499), Le(5.0)))
        << "half a second; above, room for a busy machine";
    EXPECT_FALSE(reply.hasData());
}

TEST_F(EventReply, ThatComesTooLateIsNobodys)
{
    const Host host = start();
    AppleEvent event = eventTo(host, HostEvents::hang);
    event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, 1));
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(event, &reply, 6), errAETimeout);
    ASSERT_TRUE(host->hears("hang"));
    host->send("go on"); // now the late reply comes, before those to what follows
    for (qint32 i = 2; i < 50; ++i) {
        event = eventTo(host, HostEvents::echo);
        event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, i));
        ASSERT_EQ(sendWaiting(event, &reply), noErr);
        ASSERT_EQ(numberIn(reply), i);
    }
}

TEST_F(EventReply, IsWaitedForNoTimeAtAllWithZeroTicks)
{
    const Host host = start();
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply, 0), errAETimeout);
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
}

TEST_F(EventReply, IsWaitedForWithoutEndWithoutATimeOut)
{
    const Host host = start();
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply, kNoTimeOut), noErr);
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply, std::numeric_limits<qint64>::max()),
              noErr);
}

TEST_F(EventReply, OfAReceiverThatDiesIsAResultCode)
{
    for (const qint64 ticks : {kAEDefaultTimeout, kNoTimeOut}) {
        const Host host = start();
        AppleEvent reply;
        ASSERT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
        EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::die), &reply, ticks), connectionInvalid);
        host->killHard(); // waits until all of it is gone
        EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), procNotFound);
    }
}

TEST_F(EventReply, OfAReceiverThatDiesAtTheFirstEventIsAResultCode)
{
    const Host host = start();
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::die), &reply), connectionInvalid);
}

TEST_F(EventReply, OfAReceiverThatIsKilledInTheMiddleIsAResultCode)
{
    const Host host = start();
    const Host sender = startSilent();
    sender->send(QString("send %1 hang").arg(host->processId()));
    ASSERT_TRUE(host->hears("hang"));
    host->killHard();
    EXPECT_EQ(sender->answer(), "-609");
    EXPECT_EQ(sender->ask(QString("send %1 echo").arg(host->processId())), "-600");
}

TEST_F(EventReply, OfAReceiverThatIsStoppedTimesOut)
{
    const Host host = start();
    ASSERT_TRUE(signalProcess(host->processId(), SIGSTOP));
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply, 6), errAETimeout);
    AppleEvent event = eventTo(host, HostEvents::note);
    EXPECT_EQ(AESend(&event, nullptr, kAENoReply, 0, 6), errAETimeout)
        << "a first event has to be taken by the receiver";
    ASSERT_TRUE(signalProcess(host->processId(), SIGCONT));
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
    event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, 5));
    EXPECT_EQ(post(event), noErr);
    EXPECT_EQ(host->nextHeard(), "5") << "the one that was given up did not come later";
}

TEST_F(EventReply, ToAnEventThatCouldNotBeHandedOverInTimeIsNotAskedForLater)
{
    const Host host = start();
    ASSERT_TRUE(signalProcess(host->processId(), SIGSTOP));
    AppleEvent event = eventTo(host, HostEvents::note);
    event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, 4));
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(event, &reply, 6), errAETimeout);
    ASSERT_TRUE(signalProcess(host->processId(), SIGCONT));
    event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, 5));
    EXPECT_EQ(post(event), noErr);
    EXPECT_EQ(host->nextHeard(), "5") << "the one that was given up did not come before";
}

TEST_F(EventReply, ComesThoughAHandlerGaveUpAnEventToTheSameProcessMeanwhile)
{
    const Host host = start();
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
    GivingUp handler(*host);
    AppleEvent toSelf = HostEvents::eventTo(NSProcessInfo::processIdentifier(), GivingUp::eventID);
    ASSERT_EQ(post(toSelf), noErr); // served while this process waits
    AppleEvent event = eventTo(host, HostEvents::hang);
    event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, 8));
    EXPECT_EQ(sendWaiting(event, &reply), noErr) << "the host lives, and answers";
    EXPECT_EQ(numberIn(reply), 8);
    EXPECT_EQ(handler.status, errAETimeout);
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
}

// ---- waiting processes serve

TEST_F(EventReply, IsGivenToEventsThatArriveWhileThisProcessWaits)
{
    const Host host = start();
    HostEvents own;
    own.listen();
    AppleEvent event = eventTo(host, HostEvents::send);
    event.setParameter(HostEvents::target, AEDesc::of(typeSInt32, NSProcessInfo::processIdentifier()));
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(event, &reply), noErr);
    EXPECT_EQ(numberIn(reply), noErr) << "the host's own event was answered here";
}

TEST_F(EventReply, IsGivenOverSeveralProcessesThatWaitForEachOther)
{
    // This one -> first -> second -> first again, which waits.
    const Host first = start();
    const Host second = start();
    AppleEvent event = eventTo(first, HostEvents::bounce);
    event.setParameter(HostEvents::target, AEDesc::of(typeSInt32, static_cast<qint32>(second->processId())));
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(event, &reply), noErr);
    EXPECT_EQ(numberIn(reply), noErr);
}

TEST_F(EventReply, IsGivenToTwoThatSendToEachOtherAtTheSameMoment)
{
    const Host first = start();
    const Host second = start();
    constexpr int count = 2000;
    first->send(QString("series %1 %2").arg(second->processId()).arg(count));
    second->send(QString("series %1 %2").arg(first->processId()).arg(count));
    EXPECT_EQ(first->answer(), QString::number(count));
    EXPECT_EQ(second->answer(), QString::number(count));
}

TEST_F(EventReply, IsGivenAtFullLengthToTwoThatSendToEachOther)
{
    // Each waits, in its handler of the other's event, for the reply to an event of its own. All are
    // long: where a socket holds less, each has to read while it writes.
    const Host first = start();
    const Host second = start();
    constexpr int size = 3'000'000;
    first->send(QString("meet %1 %2").arg(second->processId()).arg(size));
    second->send(QString("meet %1 %2").arg(first->processId()).arg(size));
    EXPECT_EQ(first->answer(), "yes");
    EXPECT_EQ(second->answer(), "yes");
}

TEST_F(EventReply, IsKnownToTimeOutAtTheOneThatWaitsForAHangingOne)
{
    const Host middle = start();
    const Host hanging = start();
    AppleEvent event = eventTo(middle, HostEvents::send);
    event.setParameter(HostEvents::target, AEDesc::of(typeSInt32, static_cast<qint32>(hanging->processId())));
    event.setParameter(HostEvents::what, AEDesc(typeText, "hang"));
    event.setParameter(HostEvents::ticks, AEDesc::of(typeSInt32, 6));
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(event, &reply), noErr);
    EXPECT_EQ(numberIn(reply), errAETimeout);
}

#include "EventReplyTest.moc"
