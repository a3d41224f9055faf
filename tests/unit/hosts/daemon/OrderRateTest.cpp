// SPDX-License-Identifier: MIT
#include "hosts/daemon/OrderRate.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(OrderRate, LetsEachUserGiveSixtyOrdersInAnyMinute)
{
    OrderRate rate;
    for (int i = 0; i < 60; ++i)
        EXPECT_TRUE(rate.take(501, i * 1s)) << i;
    EXPECT_FALSE(rate.take(501, 59s));
    EXPECT_TRUE(rate.take(502, 59s)) << "somebody else's is another count";
    EXPECT_FALSE(rate.take(501, 59'999ms));
    EXPECT_TRUE(rate.take(501, 60s)) << "the first is a minute old";
    EXPECT_FALSE(rate.take(501, 60s)) << "the second is not";
}

TEST(OrderRate, DoesNotCountWhatItRefused)
{
    OrderRate rate;
    for (int i = 0; i < 200; ++i)
        rate.take(501, 0s);
    EXPECT_TRUE(rate.take(501, 60s));
}
