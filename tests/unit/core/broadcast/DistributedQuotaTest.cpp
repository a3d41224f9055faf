// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/linux/DistributedQuota_p.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
class DistributedQuotaTest : public testing::Test
{
protected:
    DistributedQuotaTest()
    {
        Port<Clock>::current() = clock;
        setProblemReport([this](const QString &line) { lines += line; });
    }
    ~DistributedQuotaTest() override { setProblemReport({}); }

    /// How many of `count` notifications of the user are delivered.
    int taken(std::optional<quint32> user, int count)
    {
        int number = 0;
        for (int i = 0; i < count; ++i)
            number += quota.take(user) ? 1 : 0;
        return number;
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    DistributedQuota quota;
    QStringList lines;
};
} // namespace

TEST_F(DistributedQuotaTest, LetsABurstPassAndThenSoManyASecond)
{
    EXPECT_EQ(taken(1000, 1000), 256);
    clock->advance(1s);
    EXPECT_EQ(taken(1000, 1000), 64);
    clock->advance(1h);
    EXPECT_EQ(taken(1000, 1000), 256);
}

TEST_F(DistributedQuotaTest, MeasuresEachUserAlone)
{
    EXPECT_EQ(taken(1000, 1000), 256);
    EXPECT_EQ(taken(1001, 10), 10);
    EXPECT_EQ(taken(0, 10), 10);
}

TEST_F(DistributedQuotaTest, MeasuresTheUnknownTogetherAndNotAsRoot)
{
    EXPECT_EQ(taken(std::nullopt, 1000), 256);
    EXPECT_EQ(taken(0, 1), 1);
    EXPECT_EQ(taken(4294967295U, 1), 1);
}

TEST_F(DistributedQuotaTest, SaysSoInOneLineAFlood)
{
    taken(1000, 256);
    EXPECT_TRUE(lines.isEmpty());
    taken(1000, 1000);
    clock->advance(1s);
    taken(1000, 1000);
    EXPECT_EQ(lines, QStringList("User 1000 posts too many notifications: some are not delivered."));
    clock->advance(1h);
    taken(1000, 1000);
    EXPECT_EQ(lines.size(), 2);
    taken(std::nullopt, 1000);
    EXPECT_EQ(lines.last(), "User (unknown) posts too many notifications: some are not delivered.");
}

TEST_F(DistributedQuotaTest, KeepsNoMoreUsersThanItsMeasureAndForgetsQuietOnes)
{
    for (quint32 user = 0; user < 1024; ++user)
        ASSERT_TRUE(quota.take(user));
    EXPECT_FALSE(quota.take(5000)); // no room
    clock->advance(1h);
    EXPECT_TRUE(quota.take(5000));
}
