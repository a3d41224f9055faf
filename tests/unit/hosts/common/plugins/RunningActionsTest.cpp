// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/RunningActions.h"

#include "support/PrintTo.h"
#include "support/WaitUntil.h"
#include "unit/hosts/BundleFixture.h"

#include <stdexcept>

using testing::HasSubstr;

/// An action that goes on until it is told to finish.
class LongAction : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    Q_INVOKABLE bool isActing() const { return acting; }
    bool acting = true;
Q_SIGNALS:
    void actionDidFinish();
};

class RaisingAction : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    Q_INVOKABLE bool isActing() const { throw std::runtime_error("cannot say"); }
};

using RunningActionsTest = BundleFixture;

TEST_F(RunningActionsTest, DropAPlugInThatDoesNotSayThatItActs)
{
    RunningActions running;
    auto plugIn = std::make_shared<WDDaemonPlugIn>();
    const std::weak_ptr<WDDaemonPlugIn> watched = plugIn;
    bool finished = false;
    running.keep(std::move(plugIn), [&] { finished = true; });
    EXPECT_FALSE(finished) << "from the event loop only";
    EXPECT_TRUE(waitUntil([&] { return finished; }));
    EXPECT_TRUE(watched.expired());
}

TEST_F(RunningActionsTest, KeepAPlugInUntilItNoLongerActs)
{
    RunningActions running;
    auto plugIn = std::make_shared<LongAction>();
    LongAction &action = *plugIn;
    const std::weak_ptr<LongAction> watched = plugIn;
    int finished = 0;
    running.keep(std::move(plugIn), [&] { ++finished; });
    QCoreApplication::processEvents();
    Q_EMIT action.actionDidFinish(); // too early: it still acts
    QCoreApplication::processEvents();
    ASSERT_FALSE(watched.expired());
    EXPECT_EQ(running.current().size(), 1u);
    action.acting = false;
    Q_EMIT action.actionDidFinish();
    Q_EMIT action.actionDidFinish();
    EXPECT_TRUE(waitUntil([&] { return watched.expired(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(finished, 1);
}

TEST_F(RunningActionsTest, DropAPlugInThatCannotSayWhetherItActs)
{
    RunningActions running;
    bool finished = false;
    running.keep(std::make_shared<RaisingAction>(), [&] { finished = true; });
    EXPECT_TRUE(waitUntil([&] { return finished; }));
    ASSERT_EQ(messages().size(), 1);
    EXPECT_THAT(messages().first().toStdString(), HasSubstr("cannot say"));
}

#include "RunningActionsTest.moc"
