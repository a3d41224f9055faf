// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/ActionInhibitor.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "unit/hosts/PowerFakes.h"

#include <gtest/gtest.h>

using namespace dozely;

class ActionInhibitorTest : public testing::Test
{
protected:
    ActionInhibitorTest() { Port<SystemPower>::current() = power; }

    std::shared_ptr<PowerByHand> power = std::make_shared<PowerByHand>();
    ActionInhibitor inhibitor;
};

TEST_F(ActionInhibitorTest, KeepsTheMachineAwakeUntilTheLastActionEnds)
{
    auto first = inhibitor.hold({});
    EXPECT_EQ(power->inhibitions, 1);
    auto second = inhibitor.hold({{"WDInhibitsSleep", true}});
    EXPECT_EQ(power->inhibitions, 1) << "one for all";
    first.reset();
    EXPECT_EQ(power->inhibitions, 1);
    second.reset();
    EXPECT_EQ(power->inhibitions, 0);
    const auto third = inhibitor.hold({});
    EXPECT_EQ(power->inhibitions, 1);
    EXPECT_EQ(power->reasons,
              QStringList({"A scheduled action is running", "A scheduled action is running"}));
}

TEST_F(ActionInhibitorTest, LetsActionsThatSleepOrPowerOffThemselvesDoSo)
{
    for (const QVariant &no : {QVariant(false), QVariant(0LL), QVariant("0")}) {
        const auto hold = inhibitor.hold({{"WDInhibitsSleep", no}});
        EXPECT_EQ(hold, nullptr);
        EXPECT_EQ(power->inhibitions, 0);
    }
    EXPECT_TRUE(power->reasons.isEmpty());
}
