// SPDX-License-Identifier: MIT
//
// A receiver that takes no more streams: 64 of each user.
#include "EventFixture.h"

#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"

#include <QFile>
#include <QSet>

using namespace dozely;

using testing::AllOf;
using testing::AnyOf;
using testing::Ge;
using testing::Le;

namespace
{
class EventRoom : public EventFixture
{
protected:
    using Clock = std::chrono::steady_clock;

    static double secondsSince(Clock::time_point start)
    {
        return std::chrono::duration<double>(Clock::now() - start).count();
    }

    /// What comes of it when the receiver has half a second.
    OSStatus sendForHalfASecond(AEEventID eventID, qint32 mode) const
    {
        const AppleEvent event = eventTo(receiver, eventID);
        AppleEvent reply;
        return AESend(&event, &reply, mode, kAENormalPriority, 30);
    }

    const Host receiver = start();
    std::deque<RawPeer> peers = takeRoomOf(receiver);
};
} // namespace

TEST_F(EventRoom, ThatIsFullIsAResultCodeOfItsOwnOnceTheTimeIsOver)
{
    for (const qint32 mode : {kAEWaitReply, kAENoReply}) {
        const auto start = Clock::now();
        EXPECT_EQ(sendForHalfASecond(HostEvents::note, mode), sessTableErr);
        EXPECT_THAT(secondsSince(start), AllOf(Ge(0.499), Le(5.0)));
    }
    peers.clear();
    EXPECT_EQ(sendForHalfASecond(HostEvents::note, kAEWaitReply), noErr);
    EXPECT_EQ(receiver->nextHeard(), "0");
    receiver->close();
    EXPECT_EQ(receiver->nextHeard(), QString()) << "what was refused did not arrive";
}

TEST_F(EventRoom, IsWaitedFor)
{
    const Host sender = startSilent();
    sender->send(QString("send %1 note").arg(receiver->processId()));
    EXPECT_EQ(sendForHalfASecond(HostEvents::echo, kAEWaitReply), sessTableErr) << "until now there is none";
    peers.clear();
    EXPECT_EQ(sender->answer(), "0");
    EXPECT_EQ(receiver->nextHeard(), "0");
}

TEST_F(EventRoom, IsWaitedForWhileEventsAreServed)
{
    HostEvents own;
    own.listen();
    const Host other = startSilent();
    other->send(QString("send %1 echo").arg(NSProcessInfo::processIdentifier()));
    EXPECT_EQ(sendForHalfASecond(HostEvents::echo, kAEWaitReply), sessTableErr);
    EXPECT_EQ(other->answer(), "0") << "nobody serves while the answer is waited for";
}

TEST_F(EventRoom, IsNotWaitedForAtAReceiverThatDies)
{
    const Host sender = startSilent();
    sender->send(QString("send %1 note").arg(receiver->processId()));
    EXPECT_EQ(sendForHalfASecond(HostEvents::echo, kAEWaitReply), sessTableErr);
    receiver->killHard();
    // Which of the two depends on whether the sender was just being refused: then it had a stream that broke.
    EXPECT_THAT(sender->answer(), AnyOf(QString::number(procNotFound), QString::number(connectionInvalid)));
}

TEST_F(EventFixture, ProcessesThatHaveSentOnceKeepNoOtherOut)
{
    const Host receiver = start();
    std::vector<Host> senders;
    while (senders.size() < 64) {
        senders.push_back(startSilent());
        senders.back()->send(QString("send %1 echo").arg(receiver->processId()));
    }
    for (const Host &sender : senders)
        EXPECT_EQ(sender->answer(), "0");
    AppleEvent reply;
    constexpr qint64 tenSeconds = 600;
    EXPECT_EQ(sendWaiting(eventTo(receiver, HostEvents::echo), &reply, tenSeconds), noErr);
}

TEST_F(EventFixture, AHundredProcessesAreHeardThatSendAtTheSameMoment)
{
    constexpr int count = 100;
    const Host receiver = start();
    std::vector<Host> senders;
    while (senders.size() < count)
        senders.push_back(startSilent());
    receiver->send("hold"); // takes nothing in until it is told
    for (const Host &sender : senders)
        sender->send(QString("tell %1 %2").arg(receiver->processId()).arg(sender->processId()));
    const QByteArray path = socketOf(receiver).toUtf8();
    EXPECT_TRUE(waitUntil([&] {
        QFile sockets("/proc/net/unix"); // a line for the receiver's own, and one for each that has connected
        EXPECT_TRUE(sockets.open(QIODevice::ReadOnly));
        return sockets.readAll().count(path) == 1 + count;
    }));
    receiver->send("go on");
    QSet<QString> heard;
    for (const Host &sender : senders) {
        EXPECT_EQ(sender->answer(), "0");
        heard += receiver->nextHeard();
    }
    EXPECT_EQ(heard.size(), count);
}
