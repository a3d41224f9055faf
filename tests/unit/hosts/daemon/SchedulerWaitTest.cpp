// SPDX-License-Identifier: MIT
#include "hosts/daemon/Scheduler.h"
#include "support/FakeClock.h"
#include "unit/hosts/HostFixture.h"

using namespace std::chrono_literals;

/// The clock starts at noon; nothing may be more than 5 s late.
class SchedulerWaitTest : public HostFixture
{
protected:
    static constexpr qint32 timeOut = -5;

    bool isTooLate(int secondsAfterNoon) const
    {
        const QDateTime date = noon().addSecs(secondsAfterNoon);
        return scheduler.lateness().isTooLate({schedule("a", date), date}, timeOut);
    }
    void wait(std::chrono::seconds duration)
    {
        scheduler.lateness().beginWait();
        clock.advance(duration);
        scheduler.lateness().endWait();
    }

    FakeClock clock{noon()};
    Scheduler scheduler{clock};
};

TEST_F(SchedulerWaitTest, WhatCameDueWhileAnAgentWasWaitedForIsNotTooLateByThat)
{
    wait(20s);
    EXPECT_FALSE(isTooLate(0));
    EXPECT_FALSE(isTooLate(1));
    clock.advance(5s);
    EXPECT_FALSE(isTooLate(1));
    clock.advance(1ms);
    EXPECT_TRUE(isTooLate(1)) << "the daemon had time for it since";
}

TEST_F(SchedulerWaitTest, WhatWasDueBeforeTheWaitIsAsLateAsItIs)
{
    clock.advance(1s);
    wait(20s);
    EXPECT_TRUE(isTooLate(0));
}

TEST_F(SchedulerWaitTest, WaitsThatFollowOneAnotherAreOne)
{
    wait(20s);
    clock.advance(100ms);
    wait(20s);
    EXPECT_FALSE(isTooLate(1));
}

TEST_F(SchedulerWaitTest, AWaitAfterAPauseIsAnotherOne)
{
    wait(20s);
    clock.advance(6s);
    wait(20s);
    EXPECT_TRUE(isTooLate(1)) << "there was time for it in the pause";
    EXPECT_FALSE(isTooLate(27));
}

TEST_F(SchedulerWaitTest, AWaitInWhichTheMachineSleptExcusesNothing)
{
    wait(61s);
    EXPECT_TRUE(isTooLate(1));
}

TEST_F(SchedulerWaitTest, WhatIsDueInTheSecondInWhichTheWaitBeganIsNotTooLateByThat)
{
    clock.advance(400ms);
    wait(20s);
    EXPECT_FALSE(isTooLate(0));
    EXPECT_TRUE(isTooLate(-1));
}

TEST_F(SchedulerWaitTest, WhileTheDaemonIsAtItNothingGetsTooLate)
{
    clock.advance(3s);
    scheduler.lateness().beginWait();
    clock.advance(20s);
    EXPECT_FALSE(isTooLate(0)) << "3 s when it began";
    EXPECT_FALSE(isTooLate(10));
    EXPECT_TRUE(isTooLate(-3)) << "6 s when it began";
    clock.advance(41s);
    EXPECT_TRUE(isTooLate(0)) << "the machine may have slept";
    scheduler.lateness().endWait();
}

TEST_F(SchedulerWaitTest, AWaitWithinWorkIsPartOfIt)
{
    scheduler.lateness().beginWait();
    wait(10s);
    clock.advance(10s);
    EXPECT_FALSE(isTooLate(0));
    scheduler.lateness().endWait();
    EXPECT_FALSE(isTooLate(0));
    clock.advance(6s);
    EXPECT_TRUE(isTooLate(0));
}
