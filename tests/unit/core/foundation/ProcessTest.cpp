// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/InterfaceFileLoader.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSLock.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/system/machine/ConsoleUser.h"
#include "support/FakeClock.h"

#include <gtest/gtest.h>

#include <thread>
#include <unistd.h>
#include <vector>

using namespace dozely;

using namespace std::chrono_literals;

TEST(NSProcessInfo, IsNamedAfterTheProgramUnlessANameWasGiven)
{
    NSProcessInfo::setProcessName(""); // another test of this program may have run before
    EXPECT_EQ(NSProcessInfo::processName(), QString("core_foundation_tests"));
    NSProcessInfo::setProcessName("Dozely Agent");
    EXPECT_EQ(NSProcessInfo::processName(), QString("Dozely Agent"));
    NSProcessInfo::setProcessName("");
    EXPECT_EQ(NSProcessInfo::processName(), QString("core_foundation_tests"));
}

TEST(NSProcessInfo, KnowsItsIds)
{
    EXPECT_EQ(NSProcessInfo::processIdentifier(), ::getpid());
    EXPECT_EQ(NSProcessInfo::parentProcessIdentifier(), ::getppid());
    EXPECT_EQ(NSProcessInfo::effectiveUserID(), ::geteuid());
}

TEST(Port, IsMadeOnceAndStaysWhatWasPutInItsPlace)
{
    const std::shared_ptr<Clock> made = Port<Clock>::current();
    ASSERT_TRUE(made);
    EXPECT_EQ(Port<Clock>::current(), made);
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    EXPECT_EQ(Port<Clock>::current(), clock);
}

TEST(Port, IsEmptyWhereNothingOfTheMachineServesIt)
{
    EXPECT_FALSE(Port<InterfaceFileLoader>::current());
}

TEST(NSLock, IsTakenAtOnceWhenItIsFree)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    NSLock lock;
    EXPECT_TRUE(lock.lockBeforeDate(5s));
    EXPECT_TRUE(clock->failedWaits.isEmpty());
}

TEST(NSLock, GivesUpAfterTheLimitWhenItStaysTaken)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    NSLock lock;
    ASSERT_TRUE(lock.lockBeforeDate(5s));
    EXPECT_FALSE(lock.lockBeforeDate(5s));
    EXPECT_EQ(clock->failedWaits, QList<std::chrono::milliseconds>({5000ms}));
    EXPECT_EQ(clock->steadyTime(), 5000ms);
}

TEST(NSLock, MayBeReleasedByAnotherThreadThanTheOneThatTookIt)
{
    NSLock lock;
    ASSERT_TRUE(lock.lockBeforeDate(0ms));
    std::thread([&lock] { lock.unlock(); }).join();
    EXPECT_TRUE(lock.lockBeforeDate(0ms));
}

TEST(NSLock, WakesTheThreadThatWaitsForIt)
{
    NSLock lock;
    ASSERT_TRUE(lock.lockBeforeDate(0ms));
    bool taken = false;
    std::thread waiting([&] { taken = lock.lockBeforeDate(1min); });
    lock.unlock();
    waiting.join();
    EXPECT_TRUE(taken);
}

TEST(NSLock, ReleasedWhileFreeIsTakenOnceOnly)
{
    NSLock lock;
    lock.unlock();
    lock.unlock();
    EXPECT_TRUE(lock.lockBeforeDate(0ms));
    EXPECT_FALSE(lock.lockBeforeDate(0ms));
}

TEST(NSLock, ReleasedByManyThreadsAtOnceIsStillTakenOnceOnly)
{
    NSLock lock;
    for (int round = 0; round < 200; ++round) {
        std::vector<std::thread> threads;
        threads.reserve(4);
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&lock] { lock.unlock(); });
        for (std::thread &thread : threads)
            thread.join();
        ASSERT_TRUE(lock.lockBeforeDate(0ms));
        ASSERT_FALSE(lock.lockBeforeDate(0ms));
    }
}
