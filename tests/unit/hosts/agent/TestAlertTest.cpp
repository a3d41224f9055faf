// SPDX-License-Identifier: MIT
#include "hosts/agent/TestAlert.h"

#include "DozelyKit/system/alerts/NSUserNotificationCenter.h"
#include "support/FakeClock.h"
#include "support/FakeUserNotificationPresenter.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

using namespace dozely;

using namespace std::chrono_literals;

class TestAlertTest : public HostFixture
{
protected:
    TestAlertTest() { Port<UserNotificationPresenter>::current() = desktop; }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>(noon());
    std::shared_ptr<FakeUserNotificationPresenter> desktop =
        std::make_shared<FakeUserNotificationPresenter>();
    TestAlert alert{*clock};
};

TEST_F(TestAlertTest, IsShownLikeAnyOtherAndCountsDown)
{
    alert.show();
    ASSERT_EQ(desktop->shown.size(), 1);
    EXPECT_EQ(desktop->shown[0]->title(), "Test alert");
    EXPECT_EQ(desktop->shown[0]->informativeText(), "Test alert text");
    EXPECT_EQ(desktop->shown[0]->actionButtonTitle(), "Test alert button");
    EXPECT_EQ(desktop->shown[0]->userInfo().value("Schedule Date").toDateTime(), noon().addSecs(60));
}

TEST_F(TestAlertTest, GoesAtItsEnd)
{
    alert.show();
    clock->advance(59s);
    EXPECT_TRUE(desktop->closed.isEmpty());
    clock->advance(1s);
    EXPECT_EQ(desktop->closed.size(), 1);
}

TEST_F(TestAlertTest, OneThatIsAskedForAgainBeginsAnew)
{
    alert.show();
    clock->advance(59s);
    alert.show();
    EXPECT_EQ(desktop->shown.size(), 2);
    EXPECT_EQ(desktop->closed.size(), 1);
    clock->advance(59s);
    EXPECT_EQ(desktop->closed.size(), 1);
    clock->advance(1s);
    EXPECT_EQ(desktop->closed.size(), 2);
}
