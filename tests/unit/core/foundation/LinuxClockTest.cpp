// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/linux/LinuxClock_p.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <cerrno>
#include <thread>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
QDateTime now()
{
    return QDateTime::currentDateTimeUtc();
}

// A timer whose descriptor tells, as often as asked, that the clock was set: a test must not set the
// machine's clock.
class JumpyTimer : public LinuxAbsoluteTimer
{
public:
    int jumps = 0;

protected:
    int takeExpiration() override
    {
        const int error = LinuxAbsoluteTimer::takeExpiration();
        return error == 0 && jumps-- > 0 ? ECANCELED : error;
    }
};

class ClosedTimer : public LinuxAbsoluteTimer
{
public:
    using LinuxAbsoluteTimer::takeExpiration;
};
} // namespace

TEST(LinuxClock, TellsTheDateInUtc)
{
    const QDateTime before = now();
    const QDateTime date = LinuxClock().currentDate();
    EXPECT_EQ(date.timeSpec(), Qt::UTC);
    EXPECT_GE(date, before);
    EXPECT_LE(date, now());
}

TEST(LinuxClock, KnowsTheTimeSinceTheBootSleepIncluded)
{
    const auto uptime = [] {
        QFile file("/proc/uptime");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().split(' ').value(0).toDouble() * 1000; // milliseconds
    };
    const double before = uptime();
    const auto time = static_cast<double>(LinuxClock().bootTime().count());
    EXPECT_GE(time, before - 10); // it is told in hundredths of a second
    EXPECT_LE(time, uptime() + 20);
}

TEST(LinuxClock, HasASteadyTimeThatRunsWithRealTime)
{
    LinuxClock clock;
    const auto before = clock.steadyTime();
    bool rang = false;
    QObject context;
    clock.callAfter(50ms, &context, [&] { rang = true; });
    ASSERT_TRUE(waitUntil([&] { return rang; }));
    EXPECT_GE(clock.steadyTime() - before, 49ms);
}

TEST(LinuxClock, CallsOnceNotBeforeTheDelay)
{
    LinuxClock clock;
    QObject context;
    int calls = 0;
    bool later = false;
    clock.callAfter(10ms, &context, [&] { ++calls; });
    clock.callAfter(60ms, &context, [&] { later = true; });
    EXPECT_EQ(calls, 0);
    ASSERT_TRUE(waitUntil([&] { return later; }));
    EXPECT_EQ(calls, 1);
}

TEST(LinuxClock, CallsInTheOrderOfTheDelays)
{
    LinuxClock clock;
    QObject context;
    QList<int> order;
    clock.callAfter(40ms, &context, [&] { order += 2; });
    clock.callAfter(10ms, &context, [&] { order += 1; });
    clock.callAfter(-5s, &context, [&] { order += 0; });
    ASSERT_TRUE(waitUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, QList<int>({0, 1, 2}));
}

TEST(LinuxClock, DoesNotCallWhenTheContextIsGone)
{
    LinuxClock clock;
    auto context = std::make_unique<QObject>();
    QObject other;
    bool called = false;
    bool later = false;
    clock.callAfter(5ms, context.get(), [&] { called = true; });
    clock.callAfter(30ms, &other, [&] { later = true; });
    context.reset();
    ASSERT_TRUE(waitUntil([&] { return later; }));
    EXPECT_FALSE(called);
}

TEST(LinuxClock, DoesNotTakeADelayOfMonthsForAShortOne)
{
    LinuxClock clock;
    QObject context;
    bool called = false;
    bool later = false;
    clock.callAfter(std::chrono::hours(24 * 50), &context, [&] { called = true; }); // 2^32 ms and a little
    clock.callAfter(30ms, &context, [&] { later = true; });
    ASSERT_TRUE(waitUntil([&] { return later; }));
    EXPECT_FALSE(called);
}

TEST(LinuxClock, AcquiresAFreeUnitAtOnceAndGivesUpAfterTheLimit)
{
    LinuxClock clock;
    QSemaphore semaphore(1);
    EXPECT_TRUE(clock.acquire(semaphore, 0ms));
    const auto before = clock.steadyTime();
    EXPECT_FALSE(clock.acquire(semaphore, 30ms));
    EXPECT_GE(clock.steadyTime() - before, 29ms);
}

TEST(LinuxClock, DoesNotWaitForEverWhenTheLimitIsNegative)
{
    QSemaphore semaphore(0);
    EXPECT_FALSE(LinuxClock().acquire(semaphore, -1ms));
}

TEST(LinuxClock, AcquiresAUnitThatAnotherThreadReleasesMeanwhile)
{
    QSemaphore semaphore(0);
    std::thread releasing([&] { semaphore.release(); });
    EXPECT_TRUE(LinuxClock().acquire(semaphore, 1min));
    releasing.join();
}

TEST(AbsoluteTimer, FiresOnceWhenTheDateComesAndNotBefore)
{
    const auto timer = LinuxClock().makeAbsoluteTimer();
    QSignalSpy due(timer.get(), &AbsoluteTimer::due);
    QSignalSpy changed(timer.get(), &AbsoluteTimer::clockChanged);
    const QDateTime date = now().addMSecs(50);
    timer->start(date);
    ASSERT_TRUE(waitUntil([&] { return !due.isEmpty(); }));
    EXPECT_GE(now(), date);
    QCoreApplication::processEvents();
    EXPECT_EQ(due.size(), 1);
    EXPECT_TRUE(changed.isEmpty());
}

TEST(AbsoluteTimer, FiresForAPastDateAsSoonAsTheLoopRuns)
{
    for (const QDateTime &date : {now().addDays(-1), QDateTime::fromMSecsSinceEpoch(0, Qt::UTC),
                                  QDateTime({1960, 1, 1}, QTime(0, 0), Qt::UTC)}) {
        const auto timer = LinuxClock().makeAbsoluteTimer();
        QSignalSpy due(timer.get(), &AbsoluteTimer::due);
        timer->start(date);
        EXPECT_TRUE(due.isEmpty());
        EXPECT_TRUE(waitUntil([&] { return !due.isEmpty(); })) << qPrintable(date.toString());
    }
}

TEST(AbsoluteTimer, TakesADateInAnyZone)
{
    const auto timer = LinuxClock().makeAbsoluteTimer();
    QSignalSpy due(timer.get(), &AbsoluteTimer::due);
    timer->start(now().addMSecs(10).toOffsetFromUtc(-5 * 3600));
    EXPECT_TRUE(waitUntil([&] { return !due.isEmpty(); }));
}

TEST(AbsoluteTimer, DoesNotFireOnceItIsStopped)
{
    LinuxClock clock;
    const auto stopped = clock.makeAbsoluteTimer();
    const auto later = clock.makeAbsoluteTimer();
    QSignalSpy due(stopped.get(), &AbsoluteTimer::due);
    QSignalSpy end(later.get(), &AbsoluteTimer::due);
    stopped->start(now().addMSecs(-1)); // expired already, not yet reported
    stopped->stop();
    later->start(now().addMSecs(40));
    ASSERT_TRUE(waitUntil([&] { return !end.isEmpty(); }));
    EXPECT_TRUE(due.isEmpty());
}

TEST(AbsoluteTimer, WaitsForTheNewDateOnlyWhenStartedAgain)
{
    const auto timer = LinuxClock().makeAbsoluteTimer();
    QSignalSpy due(timer.get(), &AbsoluteTimer::due);
    timer->start(now().addMSecs(5));
    const QDateTime date = now().addMSecs(60);
    timer->start(date);
    ASSERT_TRUE(waitUntil([&] { return !due.isEmpty(); }));
    EXPECT_GE(now(), date);
    EXPECT_EQ(due.size(), 1);
}

TEST(AbsoluteTimer, MayBeStartedAgainFromItsOwnSignal)
{
    const auto timer = LinuxClock().makeAbsoluteTimer();
    int fired = 0;
    QObject::connect(timer.get(), &AbsoluteTimer::due, timer.get(), [&] {
        if (++fired < 3)
            timer->start(now().addMSecs(5));
    });
    timer->start(now());
    EXPECT_TRUE(waitUntil([&] { return fired == 3; }));
}

TEST(AbsoluteTimer, TellsThatTheClockWasSetAndGoesOnWaitingForItsDate)
{
    JumpyTimer timer;
    timer.jumps = 2;
    QSignalSpy due(&timer, &AbsoluteTimer::due);
    QSignalSpy changed(&timer, &AbsoluteTimer::clockChanged);
    timer.start(now());
    ASSERT_TRUE(waitUntil([&] { return !due.isEmpty(); }));
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(due.size(), 1);
}

TEST(AbsoluteTimer, MayBeStoppedWhenItTellsThatTheClockWasSet)
{
    JumpyTimer timer;
    timer.jumps = 1;
    LinuxAbsoluteTimer later;
    QSignalSpy due(&timer, &AbsoluteTimer::due);
    QSignalSpy end(&later, &AbsoluteTimer::due);
    QSignalSpy changed(&timer, &AbsoluteTimer::clockChanged);
    QObject::connect(&timer, &AbsoluteTimer::clockChanged, &timer, [&] { timer.stop(); });
    timer.start(now());
    ASSERT_TRUE(waitUntil([&] { return !changed.isEmpty(); }));
    later.start(now().addMSecs(30));
    ASSERT_TRUE(waitUntil([&] { return !end.isEmpty(); }));
    EXPECT_TRUE(due.isEmpty());
}

TEST(AbsoluteTimer, HasNothingToReadBeforeItsDate)
{
    ClosedTimer timer;
    timer.start(now().addSecs(3600));
    EXPECT_EQ(timer.takeExpiration(), EAGAIN);
}
