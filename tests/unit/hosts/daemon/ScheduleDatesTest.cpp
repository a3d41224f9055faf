// SPDX-License-Identifier: MIT
#include "hosts/daemon/ScheduleDates.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
QDateTime day(int day)
{
    return {{2026, 3, day}, {3, 0}, Qt::UTC};
}

/// Each day at three from the 14th on, `count` times.
Schedule daily(int count)
{
    Schedule schedule;
    schedule.identifier = "a";
    schedule.timeZone = "UTC";
    schedule.date = day(14);
    schedule.recurrence = Recurrence{
        QString("FREQ=DAILY;COUNT=%1").arg(count), *WallTime::fromString("2026-03-14T03:00:00"), {}, {}, {}};
    return schedule;
}

class ScheduleDatesTest : public testing::Test
{
protected:
    ScheduleDates dates() const { return ScheduleDates(schedule, clock, record); }
    void know(const QDateTime &date) { record.set("a", date, {OccurrenceState::Done, {}, {}}); }

    Schedule schedule = daily(4);
    const ZoneClock clock{schedule.zone()};
    OccurrenceRecord record;
};
} // namespace

TEST_F(ScheduleDatesTest, AreOpenWhereTheRecordHasNone)
{
    know(day(15));
    EXPECT_EQ(dates().openAfter(day(13)), day(14));
    EXPECT_EQ(dates().openAfter(day(14)), day(16)) << "not one that is known";
    EXPECT_EQ(dates().openAfter(day(17)), std::nullopt);
}

TEST_F(ScheduleDatesTest, BetweenTwoMomentsAreCountedWithoutTheKnown)
{
    const auto all = dates().openBetween(day(13), day(20));
    EXPECT_EQ(all.first, day(14));
    EXPECT_EQ(all.last, day(17));
    EXPECT_EQ(all.count, 4);
    know(day(14));
    know(day(16));
    know(day(17));
    const auto left = dates().openBetween(day(13), day(20));
    EXPECT_EQ(left.first, day(15));
    EXPECT_EQ(left.last, day(15));
    EXPECT_EQ(left.count, 1);
}

TEST_F(ScheduleDatesTest, AreNoneBeforeTheFirstAfterTheLastAndOfWhatTakesPlaceOnce)
{
    EXPECT_EQ(dates().openBetween(day(10), day(13)).count, 0);
    EXPECT_EQ(dates().openBetween(day(17), day(20)).count, 0);
    schedule.recurrence.reset();
    EXPECT_EQ(dates().openAfter(day(10)), std::nullopt);
    EXPECT_EQ(dates().openBetween(day(10), day(20)).count, 0);
    EXPECT_EQ(dates().upTo(day(20)), std::nullopt);
    EXPECT_FALSE(dates().gives(day(14)));
}

TEST_F(ScheduleDatesTest, AreSettledUpToTheLastOfThoseThatAreKnown)
{
    know(day(14));
    know(day(15));
    know(day(16));
    const auto current = dates().currentAfter(day(13), day(15));
    EXPECT_EQ(current.date, day(17));
    EXPECT_EQ(current.settled, day(15)) << "the next one is known and still to come";
}
