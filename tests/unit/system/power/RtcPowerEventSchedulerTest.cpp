// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/power/PowerMessages.h"
#include "DozelyKit/system/power/linux/RtcPowerEventScheduler_p.h"
#include "support/Identity.h"
#include "support/PrintTo.h"
#include "unit/system/power/FakeRtc.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
using Event = PowerEventScheduler::Event;
using Phase = PowerEventScheduler::Phase;
constexpr char wake[] = "wake";
constexpr char powerOn[] = "poweron";
constexpr char owner[] = "com.dozely";
constexpr qint64 hour = 3600;
constexpr qint64 day = 24 * hour;
} // namespace

class RtcPowerEventSchedulerTest : public RtcFixture
{
protected:
    RtcPowerEventSchedulerTest()
    {
        setProblemReport([this](const QString &sentence) { problems += sentence; });
    }
    ~RtcPowerEventSchedulerTest() override { setProblemReport({}); }

    QDateTime at(qint64 seconds) const { return start.addSecs(seconds); }
    int schedule(qint64 seconds, const QString &type, const QString &by = owner)
    {
        return scheduler.schedule(at(seconds), by, type);
    }
    /// The alarm, in seconds from the start; 0 for none.
    qint64 alarm() const { return rtc.alarm() == 0 ? 0 : rtc.alarm() - start.toSecsSinceEpoch(); }

    const QDateTime start = clock->currentDate();
    RtcPowerEventScheduler scheduler{rtc.writer()};
    QStringList problems;
};

TEST_F(RtcPowerEventSchedulerTest, SchedulesAndListsEventsInTheirOrder)
{
    EXPECT_EQ(schedule(200, wake), 0);
    EXPECT_EQ(schedule(100, powerOn, "pmset"), 0);
    EXPECT_THAT(scheduler.scheduledEvents(),
                ElementsAre(Event{at(200), owner, wake}, Event{at(100), "pmset", powerOn}));
}

TEST_F(RtcPowerEventSchedulerTest, WhileRunningTheEarliestEventOfBothTypesIsArmed)
{
    schedule(200, wake);
    EXPECT_EQ(alarm(), 200);
    schedule(100, powerOn);
    EXPECT_EQ(alarm(), 100);
    schedule(300, wake);
    EXPECT_EQ(alarm(), 100);
}

TEST_F(RtcPowerEventSchedulerTest, BeforeSleepTheEarliestWakeIsArmed)
{
    schedule(100, powerOn);
    schedule(300, wake);
    schedule(200, wake);
    EXPECT_EQ(scheduler.arm(Phase::Sleeping), 0);
    EXPECT_EQ(alarm(), 200);
    EXPECT_EQ(scheduler.arm(Phase::Running), 0);
    EXPECT_EQ(alarm(), 100);
}

TEST_F(RtcPowerEventSchedulerTest, BeforePowerOffTheEarliestPowerOnIsArmed)
{
    schedule(100, wake);
    schedule(300, powerOn);
    EXPECT_EQ(scheduler.arm(Phase::PoweringOff), 0);
    EXPECT_EQ(alarm(), 300);
}

TEST_F(RtcPowerEventSchedulerTest, DisarmsWhenNothingMatters)
{
    schedule(100, powerOn);
    EXPECT_EQ(scheduler.arm(Phase::Sleeping), 0);
    EXPECT_EQ(alarm(), 0);
    EXPECT_EQ(scheduler.arm(Phase::PoweringOff), 0);
    EXPECT_EQ(alarm(), 100);
}

TEST_F(RtcPowerEventSchedulerTest, WritesZeroThenTheTime)
{
    schedule(100, wake);
    EXPECT_THAT(rtc.written, ElementsAre("0", QByteArray::number(in(100))));
}

TEST_F(RtcPowerEventSchedulerTest, LeavesAnAlarmAloneThatIsRightAlready)
{
    schedule(100, wake);
    rtc.written.clear();
    schedule(200, wake);
    EXPECT_EQ(scheduler.arm(Phase::Sleeping), 0);
    EXPECT_THAT(rtc.written, IsEmpty());
}

TEST_F(RtcPowerEventSchedulerTest, RefusesWhatIsNoEvent)
{
    EXPECT_EQ(schedule(0, wake), EINVAL);
    EXPECT_EQ(schedule(-10, wake), EINVAL);
    EXPECT_EQ(scheduler.schedule(at(0).addMSecs(999), owner, wake), EINVAL) << "the fraction is cut off";
    EXPECT_EQ(scheduler.schedule({}, owner, wake), EINVAL);
    EXPECT_EQ(schedule(100, "sleep"), EINVAL);
    EXPECT_EQ(schedule(100, ""), EINVAL);
    EXPECT_EQ(schedule(100, wake, ""), EINVAL);
    EXPECT_FALSE(PowerEventStore::exists());
    EXPECT_THAT(rtc.written, IsEmpty());
}

TEST_F(RtcPowerEventSchedulerTest, TakesEventsInAnyZoneAndInWholeSeconds)
{
    EXPECT_EQ(scheduler.schedule(at(100).addMSecs(900).toTimeSpec(Qt::LocalTime), owner, wake), 0);
    EXPECT_THAT(scheduler.scheduledEvents(), ElementsAre(Event{at(100), owner, wake}));
}

TEST_F(RtcPowerEventSchedulerTest, TwoEventsThatAgreeAreOne)
{
    EXPECT_EQ(schedule(100, wake), 0);
    EXPECT_EQ(schedule(100, wake), 0);
    EXPECT_EQ(schedule(100, wake, "pmset"), 0);
    EXPECT_THAT(scheduler.scheduledEvents(), SizeIs(2));
}

TEST_F(RtcPowerEventSchedulerTest, CancelsExactlyTheEventThatAgrees)
{
    schedule(100, wake);
    schedule(100, wake, "pmset");
    schedule(200, powerOn);
    EXPECT_EQ(scheduler.cancel(at(100), owner, powerOn), ENOENT);
    EXPECT_EQ(scheduler.cancel(at(101), owner, wake), ENOENT);
    EXPECT_EQ(scheduler.cancel(at(100), "somebody", wake), ENOENT);
    EXPECT_THAT(scheduler.scheduledEvents(), SizeIs(3));
    EXPECT_EQ(scheduler.cancel(at(100), owner, wake), 0);
    EXPECT_EQ(alarm(), 100) << "for pmset's";
    EXPECT_EQ(scheduler.cancel(at(100), "pmset", wake), 0);
    EXPECT_EQ(alarm(), 200);
    EXPECT_EQ(scheduler.cancel(at(200), owner, powerOn), 0);
    EXPECT_EQ(alarm(), 0);
    EXPECT_THAT(scheduler.scheduledEvents(), IsEmpty());
}

TEST_F(RtcPowerEventSchedulerTest, PutsTheAlarmOfAnotherProgramBack)
{
    rtc.setAlarm(in(300));
    schedule(100, wake);
    scheduler.cancel(at(100), owner, wake);
    ASSERT_EQ(alarm(), 0);
    EXPECT_EQ(scheduler.putBackAlarm(at(300)), 0);
    EXPECT_EQ(alarm(), 300);
    EXPECT_FALSE(scheduler.alarm()->isOurs);
    EXPECT_EQ(schedule(200, wake), 0);
    EXPECT_EQ(scheduler.putBackAlarm(at(300)), 0);
    EXPECT_EQ(alarm(), 200) << "an earlier one stays";
    EXPECT_EQ(scheduler.putBackAlarm(at(0)), 0);
    EXPECT_EQ(scheduler.putBackAlarm({}), 0);
    EXPECT_EQ(alarm(), 200);
}

TEST_F(RtcPowerEventSchedulerTest, CancelsWhereTheClockIsGone)
{
    schedule(100, wake);
    schedule(200, wake);
    ASSERT_TRUE(QFile::remove(root.join("/sys/class/rtc/rtc0/wakealarm")));
    EXPECT_EQ(scheduler.cancel(at(100), owner, wake), 0);
    EXPECT_THAT(scheduler.scheduledEvents(), ElementsAre(Event{at(200), owner, wake}));
    EXPECT_EQ(scheduler.arm(Phase::Running), ENODEV);
}

TEST_F(RtcPowerEventSchedulerTest, CancellingWithoutAStoreMakesNone)
{
    EXPECT_EQ(scheduler.cancel(at(100), owner, wake), ENOENT);
    EXPECT_FALSE(QDir(root.join("/var/lib/dozely")).exists());
}

TEST_F(RtcPowerEventSchedulerTest, EventsWhoseTimeHasPassedLeaveTheStore)
{
    schedule(100, wake);
    schedule(200, wake);
    pass(100s);
    EXPECT_THAT(scheduler.scheduledEvents(), ElementsAre(Event{at(200), owner, wake}));
    EXPECT_THAT(PowerEventStore::peek().events, SizeIs(2)) << "looking changes nothing";
    EXPECT_EQ(scheduler.arm(Phase::Running), 0);
    EXPECT_THAT(PowerEventStore::peek().events, SizeIs(1));
    EXPECT_EQ(alarm(), 200);
}

TEST_F(RtcPowerEventSchedulerTest, SurvivesARestart)
{
    schedule(100, wake);
    RtcPowerEventScheduler next(rtc.writer());
    EXPECT_THAT(next.scheduledEvents(), ElementsAre(Event{at(100), owner, wake}));
    EXPECT_EQ(next.cancel(at(100), owner, wake), 0);
    EXPECT_EQ(alarm(), 0) << "it knows that the alarm was for that event";
}

TEST_F(RtcPowerEventSchedulerTest, KeepsAnEarlierAlarmThatIsNotOurs)
{
    rtc.setAlarm(in(50));
    EXPECT_EQ(schedule(100, wake), 0);
    EXPECT_EQ(alarm(), 50);
    EXPECT_EQ(scheduler.cancel(at(100), owner, wake), 0);
    EXPECT_EQ(alarm(), 50);
    EXPECT_THAT(rtc.written, IsEmpty());
}

TEST_F(RtcPowerEventSchedulerTest, ReplacesALaterAlarmThatIsNotOurs)
{
    rtc.setAlarm(in(500));
    EXPECT_EQ(schedule(100, wake), 0);
    EXPECT_EQ(alarm(), 100);
}

TEST_F(RtcPowerEventSchedulerTest, TakesOverWhenTheOthersAlarmHasPassed)
{
    rtc.setAlarm(in(50));
    schedule(100, wake);
    scheduler.keepArmed();
    pass(51s);
    EXPECT_EQ(alarm(), 100);
}

TEST_F(RtcPowerEventSchedulerTest, AnAlarmThatSomebodySetAfterOursIsNotTakenForOurs)
{
    schedule(100, wake);
    rtc.setAlarm(in(70));
    EXPECT_EQ(scheduler.cancel(at(100), owner, wake), 0);
    EXPECT_EQ(alarm(), 70);
}

TEST_F(RtcPowerEventSchedulerTest, GoesInStepsToADateFartherThanTheClockReaches)
{
    rtc.horizon = day;
    EXPECT_EQ(schedule(3 * day, wake), 0);
    EXPECT_EQ(alarm(), day - 60);
    scheduler.keepArmed();
    for (int hours = 0; hours < 70; ++hours) {
        pass(1h);
        ASSERT_GT(alarm(), start.secsTo(now())) << "armed all the time";
        ASSERT_LE(alarm(), 3 * day);
    }
    EXPECT_EQ(alarm(), 3 * day);
    EXPECT_THAT(problems, IsEmpty());
}

TEST_F(RtcPowerEventSchedulerTest, AStepThatWakesTheMachineLeadsToTheNext)
{
    rtc.horizon = day;
    schedule(3 * day, wake);
    scheduler.keepArmed();
    scheduler.powerChanges(kIOMessageSystemWillSleep);
    EXPECT_EQ(alarm(), day - 60);
    sleepUntil(at(day - 60));
    scheduler.powerChanges(kIOMessageSystemHasPoweredOn);
    EXPECT_EQ(alarm(), 2 * day - 120);
}

TEST_F(RtcPowerEventSchedulerTest, FailsWithoutAClockAndKeepsNothing)
{
    ASSERT_TRUE(QDir(root.join("/sys/class/rtc")).removeRecursively());
    EXPECT_EQ(schedule(100, wake), ENODEV);
    EXPECT_THAT(scheduler.scheduledEvents(), IsEmpty());
    EXPECT_FALSE(scheduler.alarm());
    EXPECT_EQ(scheduler.arm(Phase::Running), 0) << "nothing to arm";
}

TEST_F(RtcPowerEventSchedulerTest, FailsWhereTheClockRefusesAndKeepsWhatWasBefore)
{
    EXPECT_EQ(schedule(200, wake), 0);
    rtc.failure = EACCES;
    EXPECT_EQ(schedule(100, wake), EACCES);
    EXPECT_THAT(scheduler.scheduledEvents(), ElementsAre(Event{at(200), owner, wake}));
    EXPECT_EQ(alarm(), 200);
    rtc.failure = 0;
    EXPECT_EQ(scheduler.cancel(at(200), owner, wake), 0);
    EXPECT_EQ(alarm(), 0) << "it still knows that the alarm is its own";
}

TEST_F(RtcPowerEventSchedulerTest, ArmsTheFormerEventAgainWhenANewOneCannotBe)
{
    EXPECT_EQ(schedule(2 * hour, wake), 0);
    rtc.horizon = 10; // but the former one is written as it was
    rtc.setAlarm(in(2 * hour));
    EXPECT_EQ(schedule(hour, wake), EINVAL);
    rtc.horizon = day;
    EXPECT_THAT(scheduler.scheduledEvents(), ElementsAre(Event{at(2 * hour), owner, wake}));
    EXPECT_EQ(scheduler.arm(Phase::Running), 0);
    EXPECT_EQ(alarm(), 2 * hour);
}

TEST_F(RtcPowerEventSchedulerTest, AnEventThatCannotBeSavedLeavesTheAlarmAsItWas)
{
    const QString folder = QFileInfo(PowerEventStore::path()).path();
    bool isFolderGone = false;
    RtcPowerEventScheduler other([&](const QString &path, const QByteArray &text) {
        if (isFolderGone) { // since the store was read
            QDir(folder).removeRecursively();
            QFile file(folder);
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        }
        return rtc.writer()(path, text);
    });
    EXPECT_EQ(other.schedule(at(2 * hour), owner, wake), 0);
    isFolderGone = true;
    EXPECT_EQ(other.schedule(at(hour), owner, wake), EIO);
    EXPECT_EQ(alarm(), 2 * hour);
    ASSERT_TRUE(QFile::remove(folder));
    rtc.setAlarm(0);
    EXPECT_EQ(other.schedule(at(hour), owner, wake), EIO);
    EXPECT_EQ(alarm(), 0) << "none, as before";
}

TEST_F(RtcPowerEventSchedulerTest, ARefusedEventLeavesTheStepToALaterOneOurs)
{
    rtc.horizon = hour;
    EXPECT_EQ(schedule(day, wake), 0);
    pass(10min);
    rtc.refused = in(100);
    EXPECT_EQ(scheduler.schedule(now().addSecs(100), owner, wake), EINVAL);
    EXPECT_NE(alarm(), 0);
    ASSERT_TRUE(scheduler.alarm());
    EXPECT_TRUE(scheduler.alarm()->isOurs);
    EXPECT_EQ(scheduler.cancel(at(day), owner, wake), 0);
    EXPECT_EQ(alarm(), 0);
}

TEST_F(RtcPowerEventSchedulerTest, AnAlarmOfSomebodyElseAtTheVerySecondStaysTheirs)
{
    rtc.setAlarm(in(100));
    EXPECT_EQ(schedule(100, wake), 0);
    EXPECT_THAT(rtc.written, IsEmpty());
    EXPECT_EQ(scheduler.cancel(at(100), owner, wake), 0);
    EXPECT_EQ(alarm(), 100);
}

TEST_F(RtcPowerEventSchedulerTest, ARefusedEventLeavesTheAlarmOfSomebodyElseAsItWas)
{
    rtc.setAlarm(in(500));
    rtc.refused = in(100);
    EXPECT_EQ(schedule(100, wake), EINVAL);
    EXPECT_EQ(alarm(), 500);
    EXPECT_THAT(scheduler.scheduledEvents(), IsEmpty());
}

TEST_F(RtcPowerEventSchedulerTest, ARefusedEventLeavesTheAlarmOfSomebodyElseThatComesBeforeAnEventOfOurs)
{
    ASSERT_EQ(schedule(day, wake), 0);
    rtc.setAlarm(in(500));
    rtc.refused = in(100);
    EXPECT_EQ(schedule(100, wake), EINVAL);
    EXPECT_EQ(alarm(), 500);
    EXPECT_THAT(scheduler.scheduledEvents(), SizeIs(1));
}

TEST_F(RtcPowerEventSchedulerTest, ARefusedEventDoesNotBringBackAnAlarmThatComesAfterAnEventOfOurs)
{
    ASSERT_EQ(schedule(hour, wake), 0);
    rtc.setAlarm(in(day)); // somebody else's, over ours
    rtc.refused = in(100);
    EXPECT_EQ(schedule(100, wake), EINVAL);
    EXPECT_EQ(alarm(), hour);
    ASSERT_TRUE(scheduler.alarm());
    EXPECT_TRUE(scheduler.alarm()->isOurs);
}

TEST_F(RtcPowerEventSchedulerTest, AClockThatReachesHoursOnlyIsStepped)
{
    rtc.horizon = 6 * hour;
    EXPECT_EQ(schedule(day, wake), 0);
    EXPECT_EQ(alarm(), 6 * hour - 60);
}

TEST_F(RtcPowerEventSchedulerTest, AClockThatIsWrongForAMomentCostsNoEvent)
{
    ASSERT_EQ(schedule(day, powerOn, "pmset"), 0);
    clock->synchronised = false;
    clock->jumpTo(at(365 * day));
    EXPECT_EQ(scheduler.arm(Phase::Running), 0);
    RtcPowerEventScheduler ofAnother{rtc.writer()}; // started by that clock
    EXPECT_EQ(ofAnother.arm(Phase::Running), 0);
    EXPECT_THAT(scheduler.scheduledEvents(), IsEmpty()) << "it is past, for all that is known";
    clock->jumpTo(at(60));
    EXPECT_EQ(scheduler.arm(Phase::Running), 0);
    EXPECT_THAT(scheduler.scheduledEvents(), ElementsAre(Event{at(day), "pmset", powerOn}));
    EXPECT_EQ(alarm(), day - 60) << "by a clock that was not set";
}

TEST_F(RtcPowerEventSchedulerTest, AnEventThatIsPastIsForgottenOnceTheClockIsSure)
{
    ASSERT_EQ(schedule(day, powerOn, "pmset"), 0);
    clock->synchronised = false;
    clock->jumpTo(at(2 * day));
    EXPECT_EQ(scheduler.arm(Phase::Running), 0);
    EXPECT_FALSE(PowerEventStore::peek().events.isEmpty());
    pass(60s);
    EXPECT_EQ(scheduler.arm(Phase::Running), 0);
    EXPECT_TRUE(PowerEventStore::peek().events.isEmpty()) << "it has stood for a minute";
}

TEST_F(RtcPowerEventSchedulerTest, AnAlarmThatDoesNotReadBackIsAFailure)
{
    rtc.isDeaf = true;
    EXPECT_EQ(schedule(100, wake), EIO);
    EXPECT_THAT(scheduler.scheduledEvents(), IsEmpty());
}

TEST_F(RtcPowerEventSchedulerTest, AnOrdinaryUserMayLookButNotChange)
{
    schedule(100, wake);
    const QString folder = root.join("/var/lib/dozely");
    ASSERT_EQ(::chmod(qPrintable(root.path()), 0755), 0);
    ASSERT_TRUE(QFile::remove(PowerEventStore::path() + ".lock"));
    ASSERT_EQ(::chmod(qPrintable(folder), 0555), 0); // also for a user who runs this and owns it
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([this] {
        EXPECT_EQ(schedule(50, wake), EACCES);
        EXPECT_EQ(scheduler.cancel(at(100), owner, wake), EACCES);
        EXPECT_EQ(scheduler.arm(Phase::Running), EACCES);
        EXPECT_THAT(scheduler.scheduledEvents(), ElementsAre(Event{at(100), owner, wake}));
        EXPECT_TRUE(scheduler.alarm()->isOurs);
    }));
    ASSERT_EQ(::chmod(qPrintable(folder), 0755), 0);
    EXPECT_EQ(alarm(), 100);
}

TEST_F(RtcPowerEventSchedulerTest, FollowsAClockInLocalTime)
{
    rtc.setOffset(2 * hour);
    EXPECT_EQ(schedule(100, wake), 0);
    EXPECT_EQ(alarm(), 2 * hour + 100);
    const auto armed = scheduler.alarm();
    ASSERT_TRUE(armed);
    EXPECT_EQ(armed->armedFor, at(100));
    EXPECT_TRUE(armed->isOurs);
}

TEST_F(RtcPowerEventSchedulerTest, TellsTheClockAndItsAlarm)
{
    auto found = scheduler.alarm();
    ASSERT_TRUE(found);
    EXPECT_EQ(found->device, "rtc0");
    EXPECT_EQ(found->clock, "rtc_fake rtc0");
    EXPECT_FALSE(found->armedFor.isValid());
    EXPECT_FALSE(found->isOurs);
    rtc.setAlarm(in(70));
    found = scheduler.alarm();
    EXPECT_EQ(found->armedFor, at(70));
    EXPECT_FALSE(found->isOurs);
}

TEST_F(RtcPowerEventSchedulerTest, TestsTheAlarmAndSetsItAsItWas)
{
    schedule(100, wake);
    EXPECT_EQ(scheduler.testAlarm(at(3600)), "");
    EXPECT_THAT(rtc.written.mid(2),
                ElementsAre("0", QByteArray::number(in(3600)), "0", QByteArray::number(in(100))));
    EXPECT_EQ(alarm(), 100);
    EXPECT_TRUE(scheduler.alarm()->isOurs);
}

TEST_F(RtcPowerEventSchedulerTest, TestingLeavesNoAlarmWhereNoneWas)
{
    EXPECT_EQ(scheduler.testAlarm(at(3600)), "");
    EXPECT_EQ(alarm(), 0);
}

TEST_F(RtcPowerEventSchedulerTest, TestingSaysWhatIsWrong)
{
    EXPECT_EQ(scheduler.testAlarm(at(0)), "Invalid argument.");
    rtc.isDeaf = true;
    EXPECT_EQ(scheduler.testAlarm(at(60)), "Input/output error.");
    rtc.failure = EACCES;
    EXPECT_EQ(scheduler.testAlarm(at(60)), "Permission denied.");
    ASSERT_TRUE(QDir(root.join("/sys/class/rtc")).removeRecursively());
    EXPECT_EQ(scheduler.testAlarm(at(60)), "The machine has no clock that could wake it.");
}

TEST_F(RtcPowerEventSchedulerTest, KeepsArmedThroughSleepAndPowerOff)
{
    schedule(100, powerOn);
    schedule(200, wake);
    scheduler.powerChanges(kIOMessageSystemWillSleep);
    EXPECT_EQ(alarm(), 100) << "another process keeps the alarm";
    scheduler.keepArmed();
    scheduler.powerChanges(kIOMessageSystemWillSleep);
    EXPECT_EQ(alarm(), 200);
    scheduler.powerChanges(kIOMessageSystemHasPoweredOn);
    EXPECT_EQ(alarm(), 100);
    scheduler.powerChanges(kIOMessageSystemWillPowerOff);
    EXPECT_EQ(alarm(), 100);
    scheduler.powerChanges(kIOMessageSystemWillNotPowerOff);
    EXPECT_EQ(alarm(), 100);
}

TEST_F(RtcPowerEventSchedulerTest, AnEventScheduledOnTheWayToSleepCountsForSleep)
{
    scheduler.keepArmed();
    scheduler.powerChanges(kIOMessageSystemWillSleep);
    schedule(100, powerOn);
    EXPECT_EQ(alarm(), 0);
    schedule(200, wake);
    EXPECT_EQ(alarm(), 200);
}

TEST_F(RtcPowerEventSchedulerTest, ArmsAtItsStart)
{
    schedule(100, wake);
    rtc.setAlarm(0); // the firmware forgot it
    RtcPowerEventScheduler next(rtc.writer());
    next.keepArmed();
    EXPECT_EQ(alarm(), 100);
}

TEST_F(RtcPowerEventSchedulerTest, ArmsAnewWhenTheCalendarClockWasSet)
{
    schedule(2 * hour, wake);
    scheduler.keepArmed();
    clock->jumpTo(at(hour)); // the calendar's clock alone: the other one is an hour behind now
    EXPECT_EQ(alarm(), hour);
    EXPECT_EQ(scheduler.alarm()->armedFor, at(2 * hour));
}

TEST_F(RtcPowerEventSchedulerTest, SaysOnceThatTheMachineCannotBeWoken)
{
    schedule(day, wake);
    scheduler.keepArmed();
    ASSERT_TRUE(QFile::remove(root.join("/sys/class/rtc/rtc0/wakealarm")));
    pass(5h);
    EXPECT_THAT(problems, SizeIs(1));
}

TEST_F(RtcPowerEventSchedulerTest, ADamagedStoreIsSetAsideAndTheNextEventsAreKept)
{
    schedule(100, wake);
    QFile file(PowerEventStore::path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("<plist>");
    file.close();
    EXPECT_EQ(schedule(200, wake), 0);
    EXPECT_THAT(problems, SizeIs(1));
    EXPECT_THAT(scheduler.scheduledEvents(), ElementsAre(Event{at(200), owner, wake}));
    EXPECT_EQ(alarm(), 100) << "an earlier alarm whose event nobody knows any more";
}

TEST_F(RtcPowerEventSchedulerTest, ShowsTheAlarmAsTheControllersProperty)
{
    EXPECT_TRUE(scheduler.controller().isThere);
    EXPECT_EQ(scheduler.controller().failure, 0);
    EXPECT_EQ(scheduler.controllerProperties(), QVariantMap());
    schedule(600, wake);
    EXPECT_EQ(scheduler.controllerProperties(), (QVariantMap{{"AutoWake", 600ULL}}));
}

TEST_F(RtcPowerEventSchedulerTest, HasNoControllerWithoutAClock)
{
    ASSERT_TRUE(QDir(root.join("/sys/class/rtc")).removeRecursively());
    EXPECT_FALSE(scheduler.controller().isThere);
    EXPECT_FALSE(scheduler.controllerProperties());
}
