// SPDX-License-Identifier: MIT
#include "hosts/admin/Spread.h"

#include "support/PrintTo.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace dozely;
using namespace std::chrono_literals;

namespace
{
Schedule daily(const QString &rule, const QString &start)
{
    Schedule schedule;
    schedule.timeZone = "Europe/Berlin";
    schedule.recurrence =
        Recurrence{rule, *WallTime::fromString(start), {}, {*WallTime::fromString(start)}, {}};
    return schedule;
}

/// The rule and its start, moved, or why it cannot be.
QString moved(Schedule schedule, std::chrono::seconds delay, std::chrono::seconds spread = 30min)
{
    const auto moved = Spread::apply(delay, spread, schedule);
    return moved ? schedule.recurrence->rule + " " + schedule.recurrence->localStart.toString()
                 : moved.error().text;
}
} // namespace

TEST(Spread, AMachineHasAlwaysTheSameDelayBelowTheSpread)
{
    const QByteArray id = "0123456789abcdef0123456789abcdef";
    EXPECT_EQ(Spread::of(id, 30min).count(), 541);
    EXPECT_EQ(Spread::of(id, 1s).count(), 0);
}

TEST(Spread, ManyMachinesAreSpreadEvenly)
{
    constexpr int machines = 1000;
    int early = 0;
    QSet<qint64> delays;
    for (int i = 0; i < machines; ++i) {
        const auto delay = Spread::of(QByteArray::number(i), 30min);
        EXPECT_LT(delay, 30min);
        early += delay < 15min ? 1 : 0;
        delays += delay.count();
    }
    EXPECT_NEAR(early, machines / 2, 60);
    EXPECT_GT(delays.size(), 700);
}

TEST(Spread, WhatTakesPlaceOnceIsLater)
{
    Schedule schedule;
    schedule.date = QDateTime({2026, 3, 14}, {6, 0}, Qt::UTC);
    EXPECT_TRUE(Spread::apply(5min, 30min, schedule));
    EXPECT_EQ(schedule.date.toString(Qt::ISODate), "2026-03-14T06:05:00Z");
}

TEST(Spread, WhatRepeatsByDaysIsLaterOnTheseDays)
{
    EXPECT_EQ(moved(daily("FREQ=WEEKLY;BYDAY=MO", "2026-03-16T22:50:00"), 541s),
              "FREQ=WEEKLY;BYDAY=MO 2026-03-16T22:59:01");
    EXPECT_EQ(moved(daily("FREQ=DAILY;BYHOUR=6,22;BYMINUTE=30;BYSECOND=0", "2026-03-16T06:30:00"), 541s),
              "FREQ=DAILY;BYHOUR=6,22;BYMINUTE=39;BYSECOND=1 2026-03-16T06:39:01");
    EXPECT_EQ(moved(daily("FREQ=HOURLY", "2026-03-16T23:59:00"), 5min), "FREQ=HOURLY 2026-03-17T00:04:00");
}

TEST(Spread, ExceptionsAndTheFirstDateGoWithIt)
{
    Schedule schedule = daily("FREQ=DAILY", "2026-03-16T03:00:00");
    EXPECT_TRUE(Spread::apply(5min, 30min, schedule));
    EXPECT_EQ(schedule.recurrence->excludedDates.constFirst().toString(), "2026-03-16T03:05:00");
    EXPECT_EQ(schedule.date.toString(Qt::ISODate), "2026-03-17T02:05:00Z");
}

TEST(Spread, EveryMachineRefusesWhatWouldBeTheNextDayOnSome)
{
    for (const auto delay : {0s, 1s, 1799s})
        EXPECT_EQ(moved(daily("FREQ=DAILY", "2026-03-16T23:45:00"), delay),
                  "a time of 23:45:00 cannot be spread over midnight");
    EXPECT_EQ(moved(daily("FREQ=DAILY", "2026-03-16T23:30:00"), 1799s), "FREQ=DAILY 2026-03-16T23:59:59");
}
