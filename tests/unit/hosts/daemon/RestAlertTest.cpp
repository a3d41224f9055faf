// SPDX-License-Identifier: MIT
#include "hosts/daemon/RestAlert.h"

#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/Scheduler.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

using namespace dozely;

class RestAlertTest : public BundleFixture
{
protected:
    RestAlertTest() { root.makeSocketFolder(); }

    FakeClock clock{noon()};
    Scheduler scheduler{clock};
    std::shared_ptr<FakeConsoleUser> console = std::make_shared<FakeConsoleUser>();
    RestAlert alert{scheduler, std::make_shared<PinnedConsoleUser>(console)};
};

TEST_F(RestAlertTest, TellsNobodyWhereNobodyIs)
{
    const auto told = alert.show(AfterAction::Sleep, noon());
    ASSERT_TRUE(told);
    EXPECT_FALSE(*told);
}

TEST_F(RestAlertTest, NeedsThePlugInWhoseAlertItIs)
{
    console->user = ConsoleUser::User{"alice", 1001};
    const auto told = alert.show(AfterAction::PowerOff, noon());
    ASSERT_FALSE(told);
    EXPECT_EQ(told.error().text, "PowerOff.plugin, whose alert user 1001 would see, is not there");
}

TEST_F(RestAlertTest, SaysWhoCouldNotBeAlerted)
{
    console->user = ConsoleUser::User{"alice", 1001};
    makeBundle("Sleep", {{"CFBundleIdentifier", "com.dozely.plugin.Sleep"}}, {});
    const auto told = alert.show(AfterAction::Sleep, noon());
    ASSERT_FALSE(told);
    EXPECT_EQ(told.error().text, "user 1001 could not be alerted");
}
