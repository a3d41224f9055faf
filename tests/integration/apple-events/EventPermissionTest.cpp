// SPDX-License-Identifier: MIT
//
// Any process may look; only the receiver's own user or root may send.
#include "EventFixture.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

namespace
{
class EventPermission : public EventFixture
{
protected:
    static bool isRoot() { return ::geteuid() == 0; }

    /// A receiver to which `intruder` may not send.
    Host startReceiver() const
    {
        // Neither root nor the folder's owner, where there is somebody else to be.
        return start("Rcvr", isRoot() ? QString::number(Identity::ordinaryUser + 1) : "shut-off");
    }
    Host startIntruder() const { return startSilent("Intr", otherUser()); }
};
} // namespace

TEST_F(EventPermission, LetsRootAndTheOwnUserSend)
{
    const Host receiver = start("Rcvr", otherUser());
    AppleEvent reply;
    ASSERT_EQ(sendWaiting(eventTo(receiver, HostEvents::echo), &reply), noErr);
    EXPECT_EQ(numberIn(reply, keySenderEUIDAttr), static_cast<qint32>(::geteuid()));
    const Host sender = startSilent("Sndr", otherUser());
    EXPECT_EQ(sender->ask(QString("send %1 echo").arg(receiver->processId())), "0");
}

TEST_F(EventPermission, LetsNoOtherUserSend)
{
    const Host receiver = startReceiver();
    const Host intruder = startIntruder();
    const QString send = QString("send %1 note").arg(receiver->processId());
    // Where there is a second user the sender knows it beforehand.
    EXPECT_EQ(intruder->ask(send), isRoot() ? "-10004" : "-609");
}

TEST_F(EventPermission, LetsEveryUserLook)
{
    const Host receiver = startReceiver();
    const Host intruder = startIntruder();
    EXPECT_EQ(intruder->ask("psn Rcvr"), QString::number(receiver->processId()));
    EXPECT_EQ(intruder->ask("psn None"), "0");
}

TEST_F(EventPermission, HoldsAgainstAFloodFromAnotherUser)
{
    const Host receiver = startReceiver();
    const Host intruder = startIntruder();
    const QString path = socketOf(receiver);
    ASSERT_TRUE(QFile::exists(path));
    constexpr int count = 5000;
    intruder->send(QString("flood %1 %2").arg(path).arg(count));
    if (isRoot()) { // the receiver's own user is served meanwhile, and so is root
        const Host friendly = startSilent("Frnd", QString::number(Identity::ordinaryUser + 1));
        EXPECT_EQ(friendly->ask(QString("series %1 1000").arg(receiver->processId())), "1000");
        AppleEvent reply;
        for (int i = 0; i < 1000; ++i)
            ASSERT_EQ(sendWaiting(eventTo(receiver, HostEvents::echo), &reply), noErr) << i;
    }
    EXPECT_EQ(intruder->answer(), QString::number(count)) << "each was shut out without a word";
    EXPECT_EQ(receiver->ask("psn Rcvr"), QString::number(receiver->processId())) << "it lives";
}

TEST_F(EventPermission, LetsNoOtherUserTakeAwayWhatIsAnothers)
{
    const Host receiver = startReceiver();
    const QString path = socketOf(receiver);
    struct stat status {
    };
    ASSERT_EQ(::stat(qPrintable(EventProcesses::folder()), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 01777u) << "everybody adds, nobody removes what is another's";
    if (isRoot()) { // there is somebody to try it
        EXPECT_TRUE(Identity::holdsAsOrdinaryUser([&] {
            EXPECT_NE(::unlink(qPrintable(path)), 0);
            EXPECT_NE(::rename(qPrintable(path), qPrintable(path + "x")), 0);
        }));
    }
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(EventPermission, IsNotForWhoListensInAnothersPlace)
{
    const Host victim = start("Vctm");
    const Host impostor = start("Impo");
    ASSERT_EQ(::rename(qPrintable(socketOf(impostor)), qPrintable(socketOf(victim))), 0);
    AppleEvent reply;
    EXPECT_EQ(sendWaiting(eventTo(victim, HostEvents::echo), &reply), procNotFound);
    EXPECT_EQ(post(eventTo(victim, HostEvents::note)), procNotFound);
}
