// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/ActionInhibitor.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "hosts/common/plugins/RunningActions.h"
#include "support/WaitUntil.h"
#include "unit/hosts/PowerFakes.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
/// Acts until it is told to stop.
class LongAction : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    Q_INVOKABLE bool isActing() const { return acts; }
    bool acts = true;

Q_SIGNALS:
    void actionDidFinish();
};
} // namespace

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

TEST_F(ActionInhibitorTest, IsHeldWhileAnActionGoesOnAndLetGoAtItsEnd)
{
    RunningActions running;
    const auto action = std::make_shared<LongAction>();
    bool hasFinished = false;
    running.keep(action, [&] { hasFinished = true; });
    EXPECT_EQ(power->inhibitions, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(power->inhibitions, 1) << "it goes on";
    action->acts = false;
    Q_EMIT action->actionDidFinish();
    EXPECT_TRUE(waitUntil([&] { return hasFinished; }));
    EXPECT_EQ(power->inhibitions, 0);
}

TEST_F(ActionInhibitorTest, IsLetGoWhenRunningActionsAreDropped)
{
    RunningActions running;
    running.keep(std::make_shared<LongAction>());
    EXPECT_EQ(power->inhibitions, 1);
    running.clear();
    EXPECT_EQ(power->inhibitions, 0);
}

#include "ActionInhibitorTest.moc"
