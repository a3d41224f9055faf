// SPDX-License-Identifier: MIT
//
// Replies that are late or never come, and two that wait for each other.
#include "EventFixture.h"

#include "platform/NSAppleEventManager.h"
#include "platform/NSProcessInfo.h"

#include <csignal>

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
    ASSERT_EQ(::kill(static_cast<pid_t>(host->processId()), SIGSTOP), 0);
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply, 6), errAETimeout);
    AppleEvent event = eventTo(host, HostEvents::note);
    EXPECT_EQ(AESend(&event, nullptr, kAENoReply, 0, 6), errAETimeout)
        << "a first event has to be taken by the receiver";
    ASSERT_EQ(::kill(static_cast<pid_t>(host->processId()), SIGCONT), 0);
    EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr);
    event.setParameter(keyDirectObject, AEDesc::of(typeSInt32, 5));
    EXPECT_EQ(post(event), noErr);
    EXPECT_EQ(host->nextHeard(), "5") << "the one that was given up did not come later";
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
    // Both wait in a handler of the other, each for a reply to its own first event on a fresh connection.
    const Host first = start();
    const Host second = start();
    AppleEvent reply;
    for (const auto &[from, to] : {std::pair(&first, &second), std::pair(&second, &first)}) {
        AppleEvent event = eventTo(*from, HostEvents::send);
        event.setParameter(HostEvents::target,
                           AEDesc::of(typeSInt32, static_cast<qint32>((*to)->processId())));
        event.setParameter(HostEvents::ticks, AEDesc::of(typeSInt32, 600));
        ASSERT_EQ(sendWaiting(event, &reply), noErr);
        EXPECT_EQ(numberIn(reply), noErr);
    }
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
