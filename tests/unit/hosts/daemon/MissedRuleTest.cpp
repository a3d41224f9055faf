// SPDX-License-Identifier: MIT
#include "hosts/daemon/MissedRule.h"
#include "unit/hosts/HostFixture.h"

using namespace std::chrono_literals;

class MissedRuleTest : public HostFixture
{
protected:
    static MissedRule rule(const Schedule &schedule, const QVariantMap &info)
    {
        return MissedRule::of(schedule, info, -60);
    }
};

TEST_F(MissedRuleTest, IsThePlugInsTimeOutUnlessSomebodySaysOtherwise)
{
    EXPECT_EQ(rule(schedule("a"), {}).policy, MissedPolicy::PlugIn);
    EXPECT_EQ(rule(schedule("a"), {}).allowedLateness(), 60s);
    EXPECT_EQ(rule(schedule("a"), {{"WDMissedPolicy", "no such"}}).policy, MissedPolicy::PlugIn);
    EXPECT_EQ(rule(schedule("a"), {{"WDMissedPolicy", 1}}).policy, MissedPolicy::PlugIn);
}

TEST_F(MissedRuleTest, IsTheBundlesWhereTheScheduleHasNone)
{
    const QVariantMap info{{"WDMissedPolicy", "run once"}, {"WDMissedLimit", 3600LL}};
    EXPECT_EQ(rule(schedule("a"), info).policy, MissedPolicy::RunOnce);
    EXPECT_EQ(rule(schedule("a"), info).allowedLateness(), 1h);
    EXPECT_EQ(rule(schedule("a"), {{"WDMissedPolicy", "run once"}}).allowedLateness(), std::nullopt);
    EXPECT_EQ(rule(schedule("a"), {{"WDMissedPolicy", "skip"}}).allowedLateness(), 1s);
}

TEST_F(MissedRuleTest, IsTheSchedulesBeforeTheBundles)
{
    Schedule own = schedule("a");
    own.missedPolicy = MissedPolicy::RunOnce;
    const QVariantMap info{{"WDMissedPolicy", "skip"}, {"WDMissedLimit", 3600LL}};
    EXPECT_EQ(rule(own, info).allowedLateness(), std::nullopt) << "the bundle's limit is of its own policy";
    own.missedLimit = 5s;
    EXPECT_EQ(rule(own, info).allowedLateness(), 5s);
    own.missedPolicy = MissedPolicy::PlugIn;
    EXPECT_EQ(rule(own, info).allowedLateness(), 60s);
}
