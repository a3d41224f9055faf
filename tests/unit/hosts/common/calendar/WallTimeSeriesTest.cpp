// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/WallTimeSeries.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

namespace
{
const QTimeZone berlin("Europe/Berlin");

Recurrence recurrence(const QString &rule, const QString &start, const QStringList &excluded = {})
{
    Recurrence recurrence{rule, *WallTime::fromString(start), {}, {}, {}};
    for (const QString &date : excluded)
        recurrence.excludedDates += *WallTime::fromString(date);
    return recurrence;
}

QDateTime utc(const QString &text)
{
    return QDateTime::fromString(text + "Z", Qt::ISODate);
}

/// The rule, start and excluded dates of what begins anew.
QString anew(const Recurrence &recurrence, const QString &notBefore)
{
    const auto begun = begunAnew(recurrence, berlin, utc(notBefore));
    if (!begun)
        return begun.error().text;
    QString text = begun->rule + " " + begun->localStart.toString();
    for (const WallTime &date : begun->excludedDates)
        text += " without " + date.toString();
    return text;
}

/// The first moment of what begins anew, which nothing before may be.
QDateTime firstOf(const Recurrence &recurrence, const QString &notBefore)
{
    const auto begun = begunAnew(recurrence, berlin, utc(notBefore));
    const auto series = begun ? OccurrenceSeries::of(*begun, berlin) : begun.error();
    return series ? series->first().value_or(QDateTime()) : QDateTime();
}
} // namespace

TEST(WallTimeSeries, ATimeThatIsSkippedIsToldAsTheRuleHasIt)
{
    const auto series = WallTimeSeries::of(recurrence("FREQ=DAILY", "2026-03-28T02:30:00"), berlin);
    ASSERT_TRUE(series);
    const auto first = series->from(utc("2026-03-28T12:00:00"));
    ASSERT_TRUE(first);
    EXPECT_EQ(first->toString(), "2026-03-29T02:30:00");
    EXPECT_EQ(series->momentOf(*first), utc("2026-03-29T01:30:00"));
    EXPECT_EQ(series->after(*first)->toString(), "2026-03-30T02:30:00");
    EXPECT_EQ(series->from(utc("2026-03-29T01:30:00"))->toString(), "2026-03-29T02:30:00")
        << "itself included";
    EXPECT_EQ(series->from(utc("2026-03-29T01:30:01"))->toString(), "2026-03-30T02:30:00");
}

TEST(WallTimeSeries, OfElapsedTimeAWallTimeThatOccursTwiceIsToldOnce)
{
    const auto series =
        WallTimeSeries::of(recurrence("FREQ=MINUTELY;INTERVAL=30", "2026-10-25T01:30:00"), berlin);
    ASSERT_TRUE(series);
    QStringList told;
    for (auto date = series->from(WallTime{{2026, 10, 25}, {1, 30}}); told.size() < 5;
         date = series->after(*date))
        told += date->toString().mid(11, 5);
    EXPECT_EQ(told, QStringList({"01:30", "02:00", "02:30", "03:00", "03:30"}));
}

TEST(WallTimeSeries, ARuleWithoutSenseIsAnError)
{
    EXPECT_FALSE(WallTimeSeries::of(recurrence("FREQ=DAILY;BYMONTH=13", "2026-03-14T22:00:00"), berlin));
    EXPECT_FALSE(
        begunAnew(recurrence("nonsense", "2026-03-14T22:00:00"), berlin, utc("2026-03-14T00:00:00")));
}

TEST(BegunAnew, ItBeginsWithItsFirstOccurrence)
{
    const Recurrence daily = recurrence("FREQ=DAILY", "2026-03-01T22:00:00");
    EXPECT_EQ(anew(daily, "2026-03-14T20:59:59"), "FREQ=DAILY 2026-03-14T22:00:00");
    EXPECT_EQ(anew(daily, "2026-03-14T21:00:00"), "FREQ=DAILY 2026-03-14T22:00:00");
    EXPECT_EQ(anew(daily, "2026-03-14T21:00:01"), "FREQ=DAILY 2026-03-15T22:00:00");
}

TEST(BegunAnew, EverySecondWeekStaysTheSameWeek)
{
    const Recurrence biweekly = recurrence("FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,FR", "2026-03-02T22:00:00");
    EXPECT_EQ(anew(biweekly, "2026-03-08T00:00:00"),
              "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,FR 2026-03-16T22:00:00");
    EXPECT_EQ(firstOf(biweekly, "2026-03-08T00:00:00"), utc("2026-03-16T21:00:00"));
}

TEST(BegunAnew, WhatCountsCountsFromThere)
{
    const Recurrence five = recurrence("FREQ=DAILY;COUNT=5", "2026-03-01T22:00:00");
    EXPECT_EQ(anew(five, "2026-03-14T00:00:00"), "FREQ=DAILY;COUNT=5 2026-03-14T22:00:00");
}

TEST(BegunAnew, WhatIsExcludedIsNotTheFirst)
{
    const Recurrence daily =
        recurrence("FREQ=DAILY", "2026-03-01T22:00:00",
                   {"2026-03-05T22:00:00", "2026-03-14T22:00:00", "2026-03-20T22:00:00"});
    EXPECT_EQ(anew(daily, "2026-03-14T00:00:00"),
              "FREQ=DAILY 2026-03-15T22:00:00 without 2026-03-14T22:00:00 without 2026-03-20T22:00:00");
}

TEST(BegunAnew, AnExtraDateThatIsStillToComeStays)
{
    Recurrence weekly = recurrence("FREQ=WEEKLY", "2026-03-07T22:00:00");
    weekly.extraDates = {{{2026, 3, 10}, {12, 0}}, {{2026, 3, 12}, {12, 0}}};
    EXPECT_EQ(firstOf(weekly, "2026-03-11T00:00:00"), utc("2026-03-12T11:00:00"));
}

TEST(BegunAnew, AStartThatIsSkippedKeepsTheTimeOfTheRule)
{
    const Recurrence daily = recurrence("FREQ=DAILY", "2026-03-01T02:30:00");
    EXPECT_EQ(anew(daily, "2026-03-28T12:00:00"), "FREQ=DAILY 2026-03-29T02:30:00");
    EXPECT_EQ(firstOf(daily, "2026-03-28T12:00:00"), utc("2026-03-29T01:30:00"));
}

TEST(BegunAnew, InAnHourThatOccursTwiceElapsedTimeBeginsAfterNow)
{
    const Recurrence quarterly = recurrence("FREQ=MINUTELY;INTERVAL=15", "2026-10-25T00:00:00");
    EXPECT_EQ(anew(quarterly, "2026-10-25T01:20:00"), "FREQ=MINUTELY;INTERVAL=15 2026-10-25T03:00:00");
    EXPECT_EQ(firstOf(quarterly, "2026-10-25T01:20:00"), utc("2026-10-25T02:00:00"));
}

TEST(BegunAnew, WhatIsOverIsAnError)
{
    EXPECT_EQ(
        anew(recurrence("FREQ=DAILY;UNTIL=20260310T235959", "2026-03-01T22:00:00"), "2026-03-14T00:00:00"),
        "nothing comes of it any more");
}
