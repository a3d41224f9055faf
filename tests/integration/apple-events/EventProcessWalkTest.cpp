// SPDX-License-Identifier: MIT
#include "EventFixture.h"

#include "DozelyKit/communication/events/ZDRAppleEvent.h"

using namespace dozely;

using EventProcessWalk = EventFixture;

TEST_F(EventProcessWalk, MeetsRunningProcessesInOrderOfNumber)
{
    std::vector<Host> hosts;
    for (int i = 0; i < 4; ++i)
        hosts.push_back(start("Walk"));
    QList<quint32> expected;
    for (const Host &host : hosts)
        expected += static_cast<quint32>(host->processId());
    std::sort(expected.begin(), expected.end());
    QList<quint32> met;
    for (ProcessSerialNumber number; GetNextProcess(&number) == noErr;)
        met += number.lowLongOfPSN;
    EXPECT_EQ(met, expected);
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("Walk")).lowLongOfPSN,
              expected.constFirst());
}

TEST_F(EventProcessWalk, NeverMeetsAProcessThatWasKilled)
{
    const Host first = start("Walk");
    const Host second = start("Walk");
    for (const Host *host : {&first, &second}) {
        const auto killed = static_cast<quint32>((*host)->processId());
        (*host)->killHard();
        for (ProcessSerialNumber number; GetNextProcess(&number) == noErr;)
            EXPECT_NE(number.lowLongOfPSN, killed);
    }
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("Walk")), ProcessSerialNumber());
}

TEST_F(EventProcessWalk, NeverMeetsAProcessThatHasEndedNorItsFiles)
{
    {
        const Host host = start("Walk");
        host->close();
    }
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("Walk")), ProcessSerialNumber());
    EXPECT_TRUE(QDir(EventProcesses::folder()).entryList(QDir::Files | QDir::System).isEmpty());
}

TEST_F(EventProcessWalk, DoesNotMeetAProcessThatOnlySends)
{
    const Host host = start("Walk");
    const Host silent = startSilent("Slnt");
    EXPECT_EQ(silent->ask(QString("send %1 echo").arg(host->processId())), "0");
    EXPECT_EQ(ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("Slnt")), ProcessSerialNumber());
}

TEST_F(EventProcessWalk, MeetsProcessesOfAllUsers)
{
    const Host host = start("Mine");
    const Host others = start("Thrs", otherUser());
    EXPECT_EQ(others->ask("psn Mine"), QString::number(host->processId()));
    EXPECT_EQ(host->ask("psn Thrs"), QString::number(others->processId()));
}

TEST_F(EventProcessWalk, MeetsAProcessAgainWhoseFilesWereTakenAway)
{
    const Host host = start("Walk");
    const auto number = static_cast<quint32>(host->processId());
    const auto isMet = [&] {
        return ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("Walk")).lowLongOfPSN == number;
    };
    ASSERT_TRUE(isMet());
    QDir folder(EventProcesses::folder());
    for (const char *pattern :
         {"*.socket", "*"}) { // the socket alone, then everything, as an administrator may
        for (const QString &name : folder.entryList({pattern}, QDir::Files | QDir::System))
            ASSERT_TRUE(folder.remove(name));
        ASSERT_TRUE(waitUntil([&] { return socketOf(host).endsWith(".socket") && isMet(); }));
        AppleEvent reply;
        EXPECT_EQ(sendWaiting(eventTo(host, HostEvents::echo), &reply), noErr) << pattern;
    }
}

TEST_F(EventProcessWalk, MeetsAProcessAgainWhenTheFolderWasRemoved)
{
    // As the daemon does, for those who may not make the folder.
    EventProcesses keeper;
    keeper.prepare();
    const Host host = start("Walk", otherUser());
    ASSERT_TRUE(QDir(EventProcesses::folder()).removeRecursively());
    const auto isMet = [] {
        return ZDRAppleEvent::psnOfProcessWithSignature(fourCharCode("Walk")) != ProcessSerialNumber();
    };
    ASSERT_FALSE(isMet());
    EXPECT_TRUE(waitUntil(isMet));
    EXPECT_EQ(QFile::permissions(EventProcesses::folder()) & QFile::WriteOther, QFile::WriteOther);
}
