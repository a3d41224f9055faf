// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "unit/hosts/daemon/PerformingFixture.h"

using namespace dozely;

using namespace std::chrono_literals;

/// A daemon whose machine sleeps over the date of a schedule. That schedule is for a minute past noon, and
/// its plug-in allows thirty seconds.
class SleptOverTest : public PerformingFixture
{
protected:
    SleptOverTest()
    {
        Port<PowerEventScheduler>::current() = machine;
        Port<KeyEventDriver>::current() = std::make_shared<NoKeys>();
        makeProbe();
        ZDRPowerManager::sharedInstance();
        start({a});
    }

    void start(const QVariantList &schedules)
    {
        daemon.reset();
        writeStore(schedules);
        daemon = std::make_unique<DaemonController>(
            clock, std::make_shared<PinnedConsoleUser>(std::make_shared<FakeConsoleUser>()));
        for (const QVariant &schedule : schedules)
            waitForAnswers(daemon->plugIns(), *Schedule::fromEntry(schedule));
        clock.advance(100ms); // the events follow the answers
    }

    QVariantMap due(const QString &identifier, int secondsPastNoon) const
    {
        return changed(
            entry(identifier, noon().addSecs(secondsPastNoon)), "Parameters",
            QVariantMap{
                {"Acts In User Agent", 0LL}, {"Needs Wake Up", 1LL}, {"Text", "hello"}, {"Time Out", -30LL}});
    }

    /// What passes while the machine sleeps passes for no timer; the clock shows it afterwards.
    void sleepUntil(std::chrono::seconds fromNoon)
    {
        power->send(kIOMessageSystemWillSleep);
        clock.jumpTo(noon().addDuration(fromNoon));
        power->send(kIOMessageSystemHasPoweredOn);
        clock.advance(0ms);
    }
    QStringList actions() const { return messages().filter("\" acts in the daemon"); }
    bool acted() const { return !actions().isEmpty(); }

    std::shared_ptr<ScheduledEvents> machine = std::make_shared<ScheduledEvents>();
    FakeClock clock{noon()};
    const QVariantMap a = due("a", 60);
    std::unique_ptr<DaemonController> daemon;
};

TEST_F(SleptOverTest, WhatCameDueDuringSleepRunsWhenItsTimeOutStillAllows)
{
    sleepUntil(90s);
    EXPECT_TRUE(acted());
}

TEST_F(SleptOverTest, WhatCameDueEarlierRunsFirstWhereverTheStoreHasIt)
{
    start({due("late", 66), a, due("early", 63)});
    sleepUntil(70s);
    const QString acts = "Schedule \"Name of %1\" acts in the daemon";
    EXPECT_EQ(actions(), QStringList({acts.arg("a"), acts.arg("early"), acts.arg("late")}));
}

TEST_F(SleptOverTest, WhatCameDueTooLongAgoIsSkipped)
{
    sleepUntil(91s);
    EXPECT_FALSE(acted());
    EXPECT_EQ(lastAboutSchedules(), "Schedule \"Name of a\" was skipped: it is 31 s late");
}

TEST_F(SleptOverTest, WhatIsStillToComeRunsInItsTime)
{
    sleepUntil(59s);
    EXPECT_FALSE(acted());
    clock.advance(1s);
    EXPECT_TRUE(acted());
}

TEST_F(SleptOverTest, AClockThatIsSetHasTheEventsLookedAtAgain)
{
    clock.jumpTo(noon().addSecs(-3600));
    EXPECT_EQ(machine->events,
              QList{(PowerEventScheduler::Event{noon(), "com.dozely", PowerEventScheduler::wake})});
    EXPECT_EQ(machine->phases, QList{PowerEventScheduler::Phase::Running});
}
