// SPDX-License-Identifier: MIT
#include "hosts/agent/FailureNotices.h"

#include "DozelyKit/core/foundation/Port.h"
#include "support/FakeUserNotificationPresenter.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

using namespace dozely;

class FailureNoticesTest : public HostFixture
{
protected:
    FailureNoticesTest() { Port<UserNotificationPresenter>::current() = desktop; }

    std::shared_ptr<FakeUserNotificationPresenter> desktop =
        std::make_shared<FakeUserNotificationPresenter>();
    FailureNotices notices;
};

TEST_F(FailureNoticesTest, ShowScheduleAndReasonOnOneLineEachWithoutAButton)
{
    notices.show("Back\nup", "it took\nlonger than 60 s");
    ASSERT_EQ(desktop->shown.size(), 1);
    EXPECT_EQ(desktop->shown[0]->title(), "Back up");
    EXPECT_TRUE(desktop->shown[0]->informativeText().endsWith("it took longer than 60 s"));
    EXPECT_EQ(desktop->shown[0]->actionButtonTitle(), "");
}

TEST_F(FailureNoticesTest, ShowThoseOfOneScheduleInOnePlace)
{
    notices.show("Backup", "one");
    notices.show("Backup", "two");
    notices.show("Other", "three");
    ASSERT_EQ(desktop->shown.size(), 3);
    EXPECT_EQ(desktop->shown[0], desktop->shown[1]);
    EXPECT_NE(desktop->shown[0], desktop->shown[2]);
}
