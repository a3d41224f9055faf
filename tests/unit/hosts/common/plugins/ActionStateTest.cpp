// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/ActionState.h"

#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"

#include <stdexcept>

using testing::HasSubstr;

namespace
{
/// An action that says how it is.
class SpokenAction : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    Q_INVOKABLE bool isActing() const { return acting; }
    Q_INVOKABLE int exitStatus() const { return 3; }
    Q_INVOKABLE QString failure() const { return "it was too tired"; }
    bool acting = true;
};

class RaisingAction : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    Q_INVOKABLE bool isActing() const { throw std::runtime_error("cannot say"); }
    Q_INVOKABLE int exitStatus() const { throw std::runtime_error("cannot say"); }
    Q_INVOKABLE QString failure() const { throw std::runtime_error("cannot say"); }
};
} // namespace

using ActionStateTest = BundleFixture;

TEST_F(ActionStateTest, IsWhatThePlugInSays)
{
    SpokenAction action;
    EXPECT_TRUE(ActionState::isActing(action));
    EXPECT_EQ(ActionState::exitStatus(action), 3);
    EXPECT_EQ(ActionState::failure(action), "it was too tired");
    action.acting = false;
    EXPECT_FALSE(ActionState::isActing(action));
}

TEST_F(ActionStateTest, OfAPlugInThatDoesNotSayIsOver)
{
    WDDaemonPlugIn action;
    EXPECT_FALSE(ActionState::isActing(action));
    EXPECT_FALSE(ActionState::exitStatus(action));
    EXPECT_EQ(ActionState::failure(action), "");
}

TEST_F(ActionStateTest, OfAPlugInThatCannotSayIsOverAndOneLine)
{
    RaisingAction action;
    EXPECT_FALSE(ActionState::isActing(action));
    ASSERT_EQ(messages().size(), 1);
    EXPECT_THAT(messages().first().toStdString(), HasSubstr("cannot say"));
    EXPECT_FALSE(ActionState::exitStatus(action));
    EXPECT_EQ(ActionState::failure(action), "");
}

#include "ActionStateTest.moc"
