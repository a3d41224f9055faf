// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ClockDoubt.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

using namespace std::chrono_literals;

/// A clock that is right when it begins; what sets it afterwards is nobody who knows the time.
class ClockDoubtTest : public testing::Test
{
protected:
    ClockDoubtTest() : doubt(clock) { clock.synchronised = false; }
    void jump(std::chrono::seconds by)
    {
        clock.jumpTo(clock.currentDate().addDuration(by));
        doubt.look();
    }
    void pass(std::chrono::seconds time)
    {
        clock.advance(time);
        doubt.look();
    }

    FakeClock clock;
    ClockDoubt doubt; // made while the clock is synchronised
};

TEST_F(ClockDoubtTest, BelievesAClockThatRunsAndIsSetALittle)
{
    for (int i = 0; i < 100; ++i) {
        pass(1h);
        jump(300s);
        EXPECT_FALSE(doubt.isDoubted());
        jump(-299s);
        EXPECT_FALSE(doubt.isDoubted());
    }
}

TEST_F(ClockDoubtTest, DoubtsAJumpUntilItHasStoodForAMinute)
{
    jump(301s);
    EXPECT_EQ(doubt.until(), clock.currentDate());
    EXPECT_EQ(doubt.step(), 301s);
    const QDateTime until = doubt.until();
    pass(59s);
    EXPECT_EQ(doubt.until(), until) << "what comes due after the jump is due";
    pass(1s);
    EXPECT_FALSE(doubt.until().isValid());
    EXPECT_FALSE(doubt.isDoubted());
    EXPECT_EQ(doubt.excuse().until, until);
    EXPECT_EQ(doubt.excuse().duration, 60s);
    jump(-301s);
    EXPECT_TRUE(doubt.isDoubted()) << "the later clock was believed";
}

TEST_F(ClockDoubtTest, EachJumpBeginsTheMinuteAnew)
{
    jump(24h);
    pass(50s);
    jump(-12h);
    EXPECT_EQ(doubt.until(), clock.currentDate());
    pass(59s);
    EXPECT_TRUE(doubt.isDoubted());
    pass(1s);
    EXPECT_FALSE(doubt.isDoubted());
}

TEST_F(ClockDoubtTest, SetBackItIsAsIfNothingHadBeen)
{
    jump(24h * 365);
    EXPECT_TRUE(doubt.until().isValid());
    pass(30s);
    jump(-24h * 365);
    EXPECT_FALSE(doubt.isDoubted());
    EXPECT_FALSE(doubt.until().isValid());
    jump(200s);
    EXPECT_FALSE(doubt.isDoubted()) << "from where it was";
}

TEST_F(ClockDoubtTest, BelievesAClockThatSaysThatItIsSynchronised)
{
    clock.synchronised = true;
    jump(24h);
    EXPECT_FALSE(doubt.isDoubted());
    clock.synchronised = false;
    jump(24h);
    EXPECT_TRUE(doubt.isDoubted());
    clock.synchronised = true;
    pass(1s);
    EXPECT_FALSE(doubt.isDoubted());
}

TEST_F(ClockDoubtTest, AClockThatWasSetBackMakesNothingLate)
{
    jump(-24h);
    EXPECT_TRUE(doubt.isDoubted());
    EXPECT_FALSE(doubt.until().isValid());
    jump(24h);
    EXPECT_FALSE(doubt.isDoubted());
}

TEST_F(ClockDoubtTest, SleepIsNoJump)
{
    clock.sleep(8h);
    doubt.look();
    EXPECT_FALSE(doubt.isDoubted());
}

TEST(ClockDoubtAtTheStart, DoubtsAClockThatNothingHasSetAsFarAsItMakesMuchLate)
{
    FakeClock clock;
    clock.synchronised = false;
    ClockDoubt doubt(clock);
    EXPECT_EQ(doubt.until(), clock.currentDate().addSecs(-300));
    clock.advance(59s);
    doubt.look();
    EXPECT_TRUE(doubt.until().isValid());
    clock.advance(1s);
    doubt.look();
    EXPECT_FALSE(doubt.isDoubted());
}
