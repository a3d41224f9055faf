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
