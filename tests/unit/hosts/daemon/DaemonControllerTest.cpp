// SPDX-License-Identifier: MIT
#include "hosts/daemon/DaemonController.h"

#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "unit/hosts/daemon/PerformingFixture.h"

using namespace dozely;

using namespace std::chrono_literals;

/// A daemon that begins at noon, and performs in processes of its own. The schedules' plug-in allows thirty
/// seconds.
class DaemonControllerTest : public PerformingFixture
{
protected:
    DaemonControllerTest()
    {
        Port<PowerEventScheduler>::current() = machine;
        Port<KeyEventDriver>::current() = std::make_shared<NoKeys>();
        makeProbe();
        ZDRPowerManager::sharedInstance();
        clock.synchronised = true;
        daemon = std::make_unique<DaemonController>(
            clock, std::make_shared<PinnedConsoleUser>(std::make_shared<FakeConsoleUser>()));
    }

    static QVariantMap inDaemon(const QString &identifier, std::chrono::seconds after)
    {
        const QVariantMap parameters{{"Acts In User Agent", 0LL}, {"Text", identifier}, {"Time Out", -30LL}};
        return changed(entry(identifier, noon().addDuration(after)), "Parameters", parameters);
    }
    /// Stores these, as somebody else, and waits until the daemon knows all of them.
    void store(const QVariantList &entries)
    {
        writeStore(entries);
        daemon->rereadStore();
        for (const QVariant &each : entries)
            waitForAnswers(daemon->plugIns(), *Schedule::fromEntry(each.toMap()));
        clock.advance(0ms);
    }
    qsizetype countOf(const QString &text) const { return messages().filter(text).size(); }
    qsizetype started(const QString &identifier) const
    {
        return countOf(QString("\"Name of %1\" acts in the daemon").arg(identifier));
    }
    bool hasActed(const QString &identifier)
    {
        return waitUntil(
            [&] { return countOf(QString("Probe acts in the daemon: %1,").arg(identifier)) == 1; });
    }

    std::shared_ptr<ScheduledEvents> machine = std::make_shared<ScheduledEvents>();
    FakeClock clock{noon()};
    std::unique_ptr<DaemonController> daemon;
};

TEST_F(DaemonControllerTest, PerformsEachScheduleAtItsDateAndOnce)
{
    store({inDaemon("a", 60s), inDaemon("b", 90s)});
    clock.advance(60s - 1ms);
    EXPECT_EQ(started("a"), 0);
    clock.advance(1ms);
    EXPECT_EQ(started("a"), 1);
    clock.advance(30s - 1ms);
    EXPECT_EQ(started("b"), 0);
    clock.advance(1ms);
    EXPECT_EQ(started("b"), 1);
    clock.advance(1h);
    EXPECT_EQ(started("a") + started("b"), 2);
    EXPECT_TRUE(hasActed("a") && hasActed("b"));
}

TEST_F(DaemonControllerTest, PerformsAllThatAreDueAtOnce)
{
    store({inDaemon("a", 60s), inDaemon("b", 60s), inDaemon("c", 60s)});
    clock.advance(60s);
    EXPECT_TRUE(hasActed("a") && hasActed("b") && hasActed("c"));
}

TEST_F(DaemonControllerTest, MakesReadyWhatIsToComeInTwoSecondsAndNotBefore)
{
    store({inDaemon("a", 60s)});
    const auto loaded = [this] { return countOf("Probe initialised"); };
    const qsizetype before = loaded();
    clock.advance(58s - 1ms);
    EXPECT_EQ(QDir(DaemonActions::folder()).entryList(QDir::Files), QStringList());
    clock.advance(1ms);
    EXPECT_TRUE(waitUntil([&] { return loaded() == before + 1; }));
    EXPECT_EQ(started("a"), 0);
    clock.advance(2s);
    EXPECT_TRUE(hasActed("a"));
    EXPECT_EQ(loaded(), before + 1) << "by the process that was ready";
}

TEST_F(DaemonControllerTest, PerformsNothingThatWasRemovedOrDisabledInItsLastSeconds)
{
    store({inDaemon("a", 60s), inDaemon("b", 60s), inDaemon("c", 60s)});
    clock.advance(59s);
    store({changed(inDaemon("b", 60s), "Is Enabled", false), inDaemon("c", 60s)});
    clock.advance(60s);
    EXPECT_TRUE(hasActed("c"));
    EXPECT_EQ(started("a") + started("b"), 0);
}

TEST_F(DaemonControllerTest, PerformsAtOnceWhatItLearnsALittleTooLate)
{
    clock.advance(60s);
    store({inDaemon("a", 35s), inDaemon("b", 25s)});
    EXPECT_TRUE(hasActed("a"));
    EXPECT_EQ(started("b"), 0) << "its plug-in allows thirty seconds";
    EXPECT_EQ(countOf("\"Name of b\" was skipped"), 1);
}

TEST_F(DaemonControllerTest, WaitsForAnotherDateOnceAScheduleHasOne)
{
    store({inDaemon("a", 60s)});
    store({inDaemon("a", 600s)});
    clock.advance(599s);
    EXPECT_EQ(started("a"), 0);
    store({inDaemon("a", 599s)});
    EXPECT_TRUE(hasActed("a"));
}

TEST_F(DaemonControllerTest, RemovesWhatIsOverForThirtyDays)
{
    store({inDaemon("a", 60s), inDaemon("b", 24h * 60)});
    clock.advance(60s);
    ASSERT_TRUE(hasActed("a"));
    EXPECT_TRUE(waitUntil([&] {
        const auto entry = daemon->keeper().scheduler().record().find("a", noon().addSecs(60));
        return entry && entry->state == OccurrenceState::Done;
    }));
    const auto stored = [] {
        QStringList identifiers;
        const auto content = ScheduleStore::read();
        for (const Schedule &schedule : content->schedules)
            identifiers += schedule.identifier;
        return identifiers;
    };
    clock.advance(24h * 29);
    EXPECT_EQ(stored(), QStringList({"a", "b"}));
    clock.advance(24h * 2);
    EXPECT_EQ(stored(), QStringList("b"));
}

TEST_F(DaemonControllerTest, HasOnDiskWhatBeganWhenItEnds)
{
    store({inDaemon("a", 60s)});
    clock.advance(60s);
    ASSERT_TRUE(hasActed("a"));
    daemon.reset();
    OccurrenceDatabase database;
    (void)database.open(noon());
    const auto entry = database.find({"a", noon().addSecs(60)});
    EXPECT_TRUE(entry && *entry);
}
