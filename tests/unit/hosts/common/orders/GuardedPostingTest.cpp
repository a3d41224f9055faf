// SPDX-License-Identifier: MIT
#include "hosts/common/orders/GuardedPosting.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

using namespace dozely;

/// A lock that stays taken makes the fake clock count a failed wait.
class GuardedPostingTest : public BundleFixture
{
protected:
    GuardedPostingTest() { Port<Clock>::current() = clock; }
    ~GuardedPostingTest() override { GuardedPosting::giveBackAllLocks(); }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<WDCommunicationCenter> center = WDCommunicationCenter::sharedInstance();
};

TEST_F(GuardedPostingTest, LogsWhatAPostRaisedInOneLineAndGivesTheLockBack)
{
    EXPECT_FALSE(GuardedPosting::guardAgentOfUser(501, [this]() -> bool {
        EXPECT_TRUE(center->lockAgentAccessForUser(501));
        throw NSException("Gone", "The target died.");
    }));
    EXPECT_EQ(messages(), QStringList{"The request to the agent of user 501 failed: Gone: The target died."});
    EXPECT_TRUE(center->lockAgentAccessForUser(501));
    EXPECT_FALSE(GuardedPosting::guardDaemon([this]() -> bool {
        EXPECT_TRUE(center->lockDaemonAccess());
        throw NSException("Gone", "The target died.");
    }));
    EXPECT_TRUE(center->lockDaemonAccess());
    EXPECT_TRUE(clock->failedWaits.isEmpty());
}

TEST_F(GuardedPostingTest, LeavesTheLockAloneWhenNothingWasRaised)
{
    EXPECT_TRUE(
        GuardedPosting::guardAgentOfUser(501, [this] { return center->lockAgentAccessForUser(501); }));
    EXPECT_FALSE(center->lockAgentAccessForUser(501));
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(GuardedPostingTest, GivesAllLocksBackAfterAPlugInRaised)
{
    EXPECT_TRUE(GuardedPosting::guardPlugIn([this] {
        EXPECT_TRUE(center->lockDaemonAccess() && center->lockAgentAccessForUser(1) &&
                    center->lockPrefPaneAccessForUser(2));
        throw 7;
    }));
    EXPECT_TRUE(center->lockDaemonAccess() && center->lockAgentAccessForUser(1) &&
                center->lockPrefPaneAccessForUser(2));
}
