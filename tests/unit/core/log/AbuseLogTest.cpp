// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/AbuseLog.h"

#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace dozely;
using namespace std::chrono_literals;

namespace
{
class AbuseLogTest : public testing::Test
{
protected:
    AbuseLogTest()
    {
        NSProcessInfo::setProcessName("judge");
        Port<Clock>::current() = clock;
    }

    /// What was logged, without the name of this process.
    QStringList told() const
    {
        QStringList lines = root.logLines();
        for (QString &line : lines)
            line.remove(0, QString("judge ").size());
        return lines;
    }

    ScratchRoot root;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
};
} // namespace

TEST_F(AbuseLogTest, TellsTheFirstCaseAtOnceAndTheRestOfTheMinuteInOneLine)
{
    for (int i = 0; i < 18; ++i)
        AbuseLog::note(1001, "message larger than 256 KiB refused");
    EXPECT_EQ(told(), QStringList{"User 1001: message larger than 256 KiB refused"});
    clock->advance(59'999ms);
    EXPECT_EQ(told().size(), 1);
    clock->advance(1ms);
    EXPECT_EQ(told().mid(1), QStringList{"User 1001: 17 x message larger than 256 KiB refused"});
}

TEST_F(AbuseLogTest, TellsOneLineAMinuteHoweverLongItLasts)
{
    for (int second = 0; second < 180; ++second) {
        AbuseLog::note(1001, "stream refused");
        clock->advance(1s);
    }
    EXPECT_EQ(told(), QStringList({"User 1001: stream refused", "User 1001: 59 x stream refused",
                                   "User 1001: 60 x stream refused", "User 1001: 60 x stream refused"}));
}

TEST_F(AbuseLogTest, TellsASingleFurtherCaseWithoutACount)
{
    AbuseLog::note(1001, "stream refused");
    AbuseLog::note(1001, "stream refused");
    clock->advance(1min);
    EXPECT_EQ(told().mid(1), QStringList{"User 1001: stream refused"});
}

TEST_F(AbuseLogTest, LeavesNoTimerAfterAQuietMinuteAndBeginsAnew)
{
    AbuseLog::note(1001, "stream refused");
    EXPECT_EQ(clock->pendingDelays().size(), 1);
    clock->advance(1min);
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
    AbuseLog::note(1001, "stream refused");
    EXPECT_EQ(told(), QStringList({"User 1001: stream refused", "User 1001: stream refused"}));
}

TEST_F(AbuseLogTest, CountsUsersAndKindsApart)
{
    AbuseLog::note(1001, "stream refused");
    AbuseLog::note(1002, "stream refused");
    AbuseLog::note(1001, "message refused");
    AbuseLog::note(4294967294U, "message refused");
    AbuseLog::note({}, "message refused");
    EXPECT_EQ(told(), QStringList({"User 1001: stream refused", "User 1002: stream refused",
                                   "User 1001: message refused", "User 4294967294: message refused",
                                   "Unknown user: message refused"}));
}

TEST_F(AbuseLogTest, TellsAKindByItsTextNotByItsAddress)
{
    const QByteArray text = "stream refused";
    AbuseLog::note(1001, text.constData());
    AbuseLog::note(1001, QByteArray(text.constData(), text.size()).constData());
    EXPECT_EQ(told().size(), 1);
}

TEST_F(AbuseLogTest, CountsWhatGoesBeyond256PairsTogether)
{
    for (quint32 user = 0; user < 1000; ++user)
        AbuseLog::note(user, "stream refused");
    EXPECT_EQ(told().size(), 257);
    EXPECT_EQ(told().last(), "Other users: further misuse");
    EXPECT_EQ(clock->pendingDelays().size(), 257);
    clock->advance(1min);
    EXPECT_EQ(told().mid(257), QStringList{"Other users: 743 x further misuse"});
    clock->advance(1min);
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
}

TEST_F(AbuseLogTest, TellsWhatOtherThreadsCountedFromTheMainThread)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int j = 0; j < 250; ++j)
                AbuseLog::note(1001, "stream refused");
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(told(), QStringList{"User 1001: stream refused"});
    EXPECT_TRUE(clock->pendingDelays().isEmpty()) << "armed by a thread that has no event loop";
    QCoreApplication::processEvents();
    clock->advance(1min);
    EXPECT_EQ(told().mid(1), QStringList{"User 1001: 999 x stream refused"});
}

TEST_F(AbuseLogTest, TellsWithTheNextNoteWhereNoEventLoopRuns)
{
    std::thread([] { AbuseLog::note(1001, "stream refused"); }).join();
    for (int i = 0; i < 3; ++i) {
        clock->advance(30s);
        std::thread([] { AbuseLog::note(1001, "stream refused"); }).join();
    }
    EXPECT_EQ(told(), QStringList({"User 1001: stream refused", "User 1001: 2 x stream refused"}));
    QCoreApplication::processEvents();
    EXPECT_EQ(clock->pendingDelays().size(), 1);
    clock->advance(1min);
    EXPECT_EQ(told().mid(2), QStringList{"User 1001: stream refused"});
}
