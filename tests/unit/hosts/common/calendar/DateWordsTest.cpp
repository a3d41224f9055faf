// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/DateWords.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

TEST(DateWords, ADateIsItsDayAndItsTime)
{
    EXPECT_EQ(DateWords::of(QDateTime({2026, 3, 14}, {22, 0}, Qt::UTC)), "Saturday 14 March 2026 at 22:00");
    EXPECT_EQ(DateWords::of(QDateTime({2026, 3, 1}, {6, 5, 9}, Qt::UTC)), "Sunday 1 March 2026 at 06:05:09");
}

TEST(DateWords, ADurationHasTwoUnitsAtMost)
{
    using namespace std::chrono;
    EXPECT_EQ(DateWords::of(milliseconds(1999)), "1 s");
    EXPECT_EQ(DateWords::of(seconds(59)), "59 s");
    EXPECT_EQ(DateWords::of(seconds(60)), "1 min");
    EXPECT_EQ(DateWords::of(seconds(135)), "2 min 15 s");
    EXPECT_EQ(DateWords::of(minutes(125)), "2 h 5 min");
    EXPECT_EQ(DateWords::of(hours(24) + seconds(59)), "1 day");
    EXPECT_EQ(DateWords::of(hours(76)), "3 days 4 h");
}
