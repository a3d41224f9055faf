// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/linux/ByteQuota_p.h"
#include "DozelyKit/communication/remoting/linux/TurnOrder_p.h"

#include <gtest/gtest.h>

#include <map>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
constexpr TurnOrder::User one = 501;
constexpr TurnOrder::User other = 502;

/// Sources that always have something more to do: source N of user U is 1000 * U + N.
class TurnOrderTest : public testing::Test
{
protected:
    static quint64 source(TurnOrder::User user, quint64 number = 0) { return 1000 * user + number; }

    void addStreams(TurnOrder::User user, quint64 count)
    {
        for (quint64 i = 0; i < count; ++i)
            order.add(source(user, i), user);
    }

    /// Gives a turn, which costs what a message of that user does; whose it was.
    TurnOrder::User turn()
    {
        const auto next = order.next();
        EXPECT_TRUE(next);
        const TurnOrder::User user = next.value_or(0) / 1000;
        order.charge(user, costs[user]);
        order.add(*next, user);
        ++turns[user];
        return user;
    }

    TurnOrder order;
    std::map<TurnOrder::User, std::chrono::nanoseconds> costs{{one, 100us}, {other, 100us}};
    std::map<TurnOrder::User, int> turns;
};
} // namespace

TEST_F(TurnOrderTest, NobodyIsNextWhenNobodyWaits)
{
    EXPECT_TRUE(order.isEmpty());
    EXPECT_FALSE(order.next());
    order.add(1, one);
    EXPECT_FALSE(order.isEmpty());
    EXPECT_EQ(order.next(), 1U);
    EXPECT_TRUE(order.isEmpty());
    EXPECT_FALSE(order.next());
}

TEST_F(TurnOrderTest, TheStreamsOfAUserAreServedOneAfterTheOther)
{
    addStreams(one, 3);
    for (const quint64 expected : {0, 1, 2, 0, 1, 2}) {
        const auto next = order.next();
        EXPECT_EQ(next, source(one, expected));
        order.charge(one, expected == 1 ? 10ms : 1us);
        order.add(*next, one);
    }
}

TEST_F(TurnOrderTest, UsersGetTheSameWhoeverHasMoreStreams)
{
    addStreams(one, 64);
    addStreams(other, 1);
    for (int i = 0; i < 1000; ++i)
        turn();
    EXPECT_NEAR(turns[one], 500, 1);
}

TEST_F(TurnOrderTest, UsersGetTheSameTimeWhateverAMessageCosts)
{
    costs[one] = 900us;
    costs[other] = 100us;
    addStreams(one, 5);
    addStreams(other, 5);
    for (int i = 0; i < 1000; ++i)
        turn();
    EXPECT_NEAR(turns[one], 100, 1);
}

TEST_F(TurnOrderTest, TimeThatWasNotUsedIsNotSaved)
{
    addStreams(one, 1);
    addStreams(other, 1);
    const auto left = order.next(); // its user has nothing to do for long
    EXPECT_EQ(left, source(one));
    for (int i = 0; i < 1000; ++i)
        turn();
    order.add(*left, one);
    turns.clear();
    for (int i = 0; i < 100; ++i)
        turn();
    EXPECT_NEAR(turns[one], 50, 1);
}

TEST_F(TurnOrderTest, WhoComesIsServedNext)
{
    addStreams(other, 64);
    for (int i = 0; i < 1000; ++i)
        turn();
    addStreams(one, 1);
    EXPECT_EQ(turn(), one);
    turns.clear();
    for (int i = 0; i < 100; ++i)
        turn();
    EXPECT_NEAR(turns[one], 50, 1) << "and then has the same as they";
}

TEST_F(TurnOrderTest, WhoHasHadTooMuchWaitsForTheOthersEvenIfHeGoesMeanwhile)
{
    addStreams(one, 1);
    addStreams(other, 1);
    EXPECT_EQ(order.next(), source(one));
    order.charge(one, 1ms);
    EXPECT_EQ(turn(), other);
    order.add(source(one), one);
    turns.clear();
    while (turn() != one) {
    }
    EXPECT_NEAR(turns[other], 9, 1);
}

TEST_F(TurnOrderTest, ARequestThatWaitedForAPersonDoesNotShutItsUserOut)
{
    addStreams(one, 1);
    addStreams(other, 1);
    EXPECT_EQ(order.next(), source(one));
    order.charge(one, 1h);
    order.add(source(one), one);
    while (turn() != one) {
        ASSERT_LE(turns[other], 1000);
    }
}

TEST(ByteQuota, LimitsEachUserAndAllTogether)
{
    ByteQuota quota(100, 250);
    EXPECT_TRUE(quota.take(one, 60));
    EXPECT_FALSE(quota.take(one, 41));
    EXPECT_TRUE(quota.take(one, 40));
    EXPECT_FALSE(quota.take(one, 1));
    EXPECT_TRUE(quota.take(other, 100));
    EXPECT_FALSE(quota.take(503, 51)) << "of all";
    EXPECT_TRUE(quota.take(503, 50));
    EXPECT_FALSE(quota.take(504, 1));
    quota.give(one, 10);
    EXPECT_FALSE(quota.take(504, 11));
    EXPECT_TRUE(quota.take(504, 10));
    EXPECT_FALSE(quota.take(one, 1));
}

TEST(ByteQuota, TakesBackNoMoreThanItGave)
{
    ByteQuota quota(100, 100);
    quota.give(one, 50);
    EXPECT_TRUE(quota.take(one, 100));
    EXPECT_FALSE(quota.take(other, 1)) << "nobody gives what he does not have";
    quota.give(one, 100);
    EXPECT_TRUE(quota.take(other, 100));
}
