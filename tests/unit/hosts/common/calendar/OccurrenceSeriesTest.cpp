// SPDX-License-Identifier: MIT
#include "unit/hosts/common/calendar/SeriesFixture.h"

class OccurrenceSeriesTest : public SeriesFixture
{
};

// The clocks of Paris: an hour forward on 2026-03-29 at 02:00, back on 2026-10-25 at 03:00.

TEST_F(OccurrenceSeriesTest, OfDaysFollowsTheWallClock)
{
    EXPECT_EQ(
        firstOf(recurrence("FREQ=DAILY", "2026-03-28T06:55:00"), 3),
        (QStringList{"2026-03-28T06:55:00+01:00", "2026-03-29T06:55:00+02:00", "2026-03-30T06:55:00+02:00"}));
}

TEST_F(OccurrenceSeriesTest, MovesASkippedTimeForwardByTheGap)
{
    EXPECT_EQ(
        firstOf(recurrence("FREQ=DAILY", "2026-03-28T02:30:00"), 3),
        (QStringList{"2026-03-28T02:30:00+01:00", "2026-03-29T03:30:00+02:00", "2026-03-30T02:30:00+02:00"}));
}

TEST_F(OccurrenceSeriesTest, TakesTheFirstOfARepeatedTimeAndNotTheSecond)
{
    EXPECT_EQ(
        firstOf(recurrence("FREQ=DAILY", "2026-10-24T02:30:00"), 3),
        (QStringList{"2026-10-24T02:30:00+02:00", "2026-10-25T02:30:00+02:00", "2026-10-26T02:30:00+01:00"}));
}

TEST_F(OccurrenceSeriesTest, PutsWhatWasMovedBetweenWhatWasNot)
{
    // 02:30 is moved to 03:30, behind 03:00; 02:00 falls upon 03:00, and that instant comes once.
    EXPECT_EQ(
        firstOf(recurrence("FREQ=DAILY;BYHOUR=2,3;BYMINUTE=0,30", "2026-03-29T00:00:00"), 3),
        (QStringList{"2026-03-29T03:00:00+02:00", "2026-03-29T03:30:00+02:00", "2026-03-30T02:00:00+02:00"}));
    EXPECT_EQ(firstOf(recurrence("FREQ=DAILY;BYHOUR=2,3;BYMINUTE=15", "2026-03-29T02:00:00"), 2),
              (QStringList{"2026-03-29T03:15:00+02:00", "2026-03-30T02:15:00+02:00"}));
    EXPECT_EQ(firstOf(recurrence("FREQ=WEEKLY;BYHOUR=2,3;BYMINUTE=0,40", "2026-03-29T02:20:00"), 2),
              (QStringList{"2026-03-29T03:00:00+02:00", "2026-03-29T03:40:00+02:00"}));
}

TEST_F(OccurrenceSeriesTest, MovesADayThatWasSkippedWhole)
{
    EXPECT_EQ(firstOf(recurrence("FREQ=DAILY", "2011-12-29T06:00:00"), 3, "Pacific/Apia"),
              (QStringList{"2011-12-29T06:00:00-10:00", "2011-12-31T06:00:00+14:00",
                           "2012-01-01T06:00:00+14:00"})); // that of the 30th falls upon that of the 31st
}

TEST_F(OccurrenceSeriesTest, OfHoursIsElapsedTimeThroughBothKindsOfChange)
{
    EXPECT_EQ(firstOf(recurrence("FREQ=MINUTELY;INTERVAL=30", "2026-03-29T01:00:00"), 4),
              (QStringList{"2026-03-29T01:00:00+01:00", "2026-03-29T01:30:00+01:00",
                           "2026-03-29T03:00:00+02:00", "2026-03-29T03:30:00+02:00"}));
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY", "2026-10-25T01:30:00"), 4),
              (QStringList{"2026-10-25T01:30:00+02:00", "2026-10-25T02:30:00+02:00",
                           "2026-10-25T02:30:00+01:00", "2026-10-25T03:30:00+01:00"}));
}

TEST_F(OccurrenceSeriesTest, OfHoursIsLimitedByWhatClocksShow)
{
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY;BYHOUR=2", "2026-10-24T02:00:00"), 4),
              (QStringList{"2026-10-24T02:00:00+02:00", "2026-10-25T02:00:00+02:00",
                           "2026-10-25T02:00:00+01:00", "2026-10-26T02:00:00+01:00"}));
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY;BYHOUR=2", "2026-03-28T02:00:00"), 2),
              (QStringList{"2026-03-28T02:00:00+01:00", "2026-03-30T02:00:00+02:00"}));
    // The half hour by which Lord Howe's clocks go leaves the hours as they are, and shifts what the clocks
    // show.
    EXPECT_EQ(
        firstOf(recurrence("FREQ=HOURLY", "2026-04-05T01:00:00"), 3, "Australia/Lord_Howe"),
        (QStringList{"2026-04-05T01:00:00+11:00", "2026-04-05T01:30:00+10:30", "2026-04-05T02:30:00+10:30"}));
    EXPECT_EQ(
        firstOf(recurrence("FREQ=HOURLY;BYMINUTE=0", "2026-04-05T01:00:00"), 3, "Australia/Lord_Howe"),
        (QStringList{"2026-04-05T01:00:00+11:00", "2026-04-05T02:00:00+10:30", "2026-04-05T03:00:00+10:30"}));
}

TEST_F(OccurrenceSeriesTest, HasTheStartOnlyWhereTheRuleGivesIt)
{
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=WEEKLY;BYDAY=MO", "2026-03-14T06:00:00"), 2),
              "2026-03-16 2026-03-23");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=DAILY;BYHOUR=5;COUNT=2", "2026-03-14T06:00:00"), 3),
              "2026-03-15 2026-03-16");
}

TEST_F(OccurrenceSeriesTest, EndsWithUntilInEachOfItsForms)
{
    const char *start = "2026-03-14T22:00:00"; // 21:00 UTC
    const auto lastDay = [&](const char *until) {
        const auto all = series(recurrence(qPrintable(QString("FREQ=DAILY;UNTIL=%1").arg(until)), start));
        return written(all.upTo(utc("2030-01-01T00:00:00Z")), "Europe/Paris").left(10);
    };
    EXPECT_EQ(lastDay("20260316T210000Z"), "2026-03-16");
    EXPECT_EQ(lastDay("20260316T205959Z"), "2026-03-15");
    EXPECT_EQ(lastDay("20260316T220000"), "2026-03-16");
    EXPECT_EQ(lastDay("20260316T215959"), "2026-03-15");
    EXPECT_EQ(lastDay("20260316"), "2026-03-16"); // the whole day
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY;UNTIL=20260314T235959", start), 9).size(), 2);
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY;UNTIL=20260314", start), 9).size(), 2);
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY;UNTIL=20260314T230000Z", start), 9).size(), 3);
}

TEST_F(OccurrenceSeriesTest, EndsWithCountWhateverIsExcluded)
{
    const Recurrence two =
        recurrence("FREQ=DAILY;COUNT=3", "2026-03-14T06:00:00", {}, {"2026-03-15T06:00:00"});
    EXPECT_EQ(firstDaysOf(two, 9), "2026-03-14 2026-03-16");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=HOURLY;INTERVAL=12;COUNT=3", "2026-03-14T06:00:00"), 9),
              "2026-03-14 2026-03-14 2026-03-15");
    EXPECT_EQ(
        firstDaysOf(recurrence("FREQ=MONTHLY;BYDAY=MO,TU;BYSETPOS=1,-1;COUNT=3", "2026-03-14T06:00:00"), 9),
        "2026-03-31 2026-04-06 2026-04-28");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=DAILY;BYHOUR=5,7;COUNT=2", "2026-03-14T06:00:00"), 9),
              "2026-03-14 2026-03-15");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=DAILY;BYHOUR=5,7;BYSECOND=1,2;COUNT=3", "2026-03-14T06:00:00"), 9),
              "2026-03-14 2026-03-14 2026-03-15");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;COUNT=9999", "9998-03-14T06:00:00"), 9),
              "9998-03-14 9999-03-14");
}

TEST_F(OccurrenceSeriesTest, WhatIsExcludedIsPassedOverOnTheWayBackToo)
{
    const auto upTo = [](const Recurrence &recurrence, const char *moment) {
        return written(series(recurrence, "UTC").upTo(utc(moment)), "UTC");
    };
    const Recurrence seconds =
        recurrence("FREQ=SECONDLY", "2026-03-14T06:00:00", {}, {"2026-03-14T07:00:00", "2026-03-14T06:59:58"});
    EXPECT_EQ(upTo(seconds, "2026-03-14T07:00:00Z"), "2026-03-14T06:59:59Z");
    EXPECT_EQ(upTo(seconds, "2026-03-14T06:59:58Z"), "2026-03-14T06:59:57Z");
    const Recurrence days =
        recurrence("FREQ=DAILY", "2026-03-14T06:00:00", {}, {"2026-03-15T06:00:00", "2026-03-14T06:00:00"});
    EXPECT_EQ(upTo(days, "2026-03-16T05:59:59Z"), "none");
    EXPECT_EQ(upTo(days, "2026-03-16T06:00:00Z"), "2026-03-16T06:00:00Z");
}

TEST_F(OccurrenceSeriesTest, HasExtraDatesAndEachInstantOnce)
{
    const Recurrence all = recurrence("FREQ=DAILY;COUNT=2", "2026-03-28T02:30:00",
                                      {"2026-03-29T03:30:00", "2026-03-29T02:30:00", "2026-03-20T01:00:00",
                                       "2026-05-01T01:00:00", "2026-05-01T01:00:00"});
    EXPECT_EQ(firstOf(all, 9), (QStringList{"2026-03-20T01:00:00+01:00", "2026-03-28T02:30:00+01:00",
                                            "2026-03-29T03:30:00+02:00", "2026-05-01T01:00:00+02:00"}));
    EXPECT_EQ(written(series(all).upTo(utc("2026-05-01T00:00:00Z")), "UTC"), "2026-04-30T23:00:00Z");
    EXPECT_EQ(written(series(all).upTo(utc("2026-03-27T00:00:00Z")), "UTC"), "2026-03-20T00:00:00Z");
    EXPECT_EQ(series(all).upTo(utc("2026-03-19T00:00:00Z")), std::nullopt);
}

TEST_F(OccurrenceSeriesTest, ExcludesByTheRulesWallTimeAndByTheOneThatIsShown)
{
    const auto without = [](const char *date) {
        return firstOf(recurrence("FREQ=DAILY", "2026-03-29T02:30:00", {}, {date}), 1).first();
    };
    EXPECT_EQ(without("2026-03-29T02:30:00"), "2026-03-30T02:30:00+02:00");
    EXPECT_EQ(without("2026-03-29T03:30:00"), "2026-03-30T02:30:00+02:00");
    EXPECT_EQ(without("2026-03-29T03:00:00"), "2026-03-29T03:30:00+02:00");
    // Of an instant that two wall times share the other one stays.
    EXPECT_EQ(
        firstOf(recurrence("FREQ=DAILY;BYHOUR=2,3", "2026-03-29T00:30:00", {}, {"2026-03-29T02:30:00"}), 1),
        QStringList{"2026-03-29T03:30:00+02:00"});
    // Both of a time that clocks show twice.
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY", "2026-10-25T01:30:00", {}, {"2026-10-25T02:30:00"}), 2),
              (QStringList{"2026-10-25T01:30:00+02:00", "2026-10-25T03:30:00+01:00"}));
    EXPECT_EQ(series(recurrence("FREQ=DAILY;COUNT=1", "2026-03-14T06:00:00", {"2026-03-29T02:30:00"},
                                {"2026-03-14T06:00:00", "2026-03-29T03:30:00"}))
                  .first(),
              std::nullopt);
}

TEST_F(OccurrenceSeriesTest, AsksForDatesBetweenWholeSeconds)
{
    const OccurrenceSeries all = series(recurrence("FREQ=DAILY", "2026-03-14T06:00:00"), "UTC");
    const QDateTime date = utc("2026-03-15T06:00:00Z");
    EXPECT_EQ(all.after(date.addMSecs(-1)), date);
    EXPECT_EQ(all.after(date), date.addDays(1));
    EXPECT_EQ(all.upTo(date), date);
    EXPECT_EQ(all.upTo(date.addMSecs(-1)), date.addDays(-1));
    EXPECT_EQ(all.upTo(date.addMSecs(999)), date);
    EXPECT_EQ(all.after(date.toTimeZone(QTimeZone("Asia/Tokyo")))->timeSpec(), Qt::UTC);
}

TEST_F(OccurrenceSeriesTest, TellsWhatAWholeRunHas)
{
    const OccurrenceSeries all = series(recurrence("FREQ=DAILY", "2026-03-14T06:00:00"), "UTC");
    const OccurrenceSeries::Run run = all.between(utc("2026-03-14T06:00:00Z"), utc("2026-03-20T06:00:00Z"));
    EXPECT_EQ(run,
              (OccurrenceSeries::Run{utc("2026-03-15T06:00:00Z"), utc("2026-03-20T06:00:00Z"), 6, true}));
    EXPECT_EQ(all.between(utc("2026-03-14T06:00:00Z"), utc("2026-03-15T05:59:59Z")), OccurrenceSeries::Run());
    EXPECT_EQ(all.between(utc("2026-03-20T06:00:00Z"), utc("2026-03-14T06:00:00Z")), OccurrenceSeries::Run());
}

TEST_F(OccurrenceSeriesTest, CountsLongRunsAtLeastAndKnowsTheirEndsExactly)
{
    const OccurrenceSeries all = series(recurrence("FREQ=SECONDLY;INTERVAL=7", "2020-01-01T00:00:00"), "UTC");
    const OccurrenceSeries::Run run = all.between(utc("2020-01-01T00:00:00Z"), utc("2026-01-01T00:00:00Z"));
    EXPECT_EQ(run.first, utc("2020-01-01T00:00:07Z"));
    EXPECT_EQ(run.last, utc("2025-12-31T23:59:54Z"));
    EXPECT_FALSE(run.isCountExact);
    EXPECT_GE(run.count, 10'000);
}

TEST_F(OccurrenceSeriesTest, SaysOfARunWhoseEndItCannotFindThatItsCountIsNotExact)
{
    // At a quarter past each hour until the clocks of Pyongyang went forward by half an hour, at 15:00 UTC of
    // the 4th of May, and never again. Nobody looks for that from the year 9999 back.
    const OccurrenceSeries all =
        series(recurrence("FREQ=MINUTELY;INTERVAL=60;BYMINUTE=15", "2018-05-04T20:15:00"), "Asia/Pyongyang");
    const OccurrenceSeries::Run run = all.between(utc("2018-05-04T12:00:00Z"), utc("9999-01-01T00:00:00Z"));
    EXPECT_EQ(run,
              (OccurrenceSeries::Run{utc("2018-05-04T12:45:00Z"), utc("2018-05-04T14:45:00Z"), 3, false}));
    EXPECT_EQ(all.after(run.last), std::nullopt);
    EXPECT_EQ(all.between(utc("2018-05-04T12:00:00Z"), utc("2018-05-05T00:00:00Z")),
              (OccurrenceSeries::Run{utc("2018-05-04T12:45:00Z"), utc("2018-05-04T14:45:00Z"), 3, true}));
}

TEST_F(OccurrenceSeriesTest, ReachesFromTheFirstYearToTheLast)
{
    const OccurrenceSeries first = series(recurrence("FREQ=DAILY", "0001-01-01T00:00:00"), "UTC");
    EXPECT_EQ(first.first(), utc("0001-01-01T00:00:00Z"));
    EXPECT_EQ(first.upTo(utc("0001-01-02T12:00:00Z")), utc("0001-01-02T00:00:00Z"));
    EXPECT_EQ(first.after(utc("9999-12-30T00:00:00Z")), utc("9999-12-31T00:00:00Z"));
    EXPECT_EQ(first.after(utc("9999-12-31T00:00:00Z")), std::nullopt);
    for (const char *rule : {"FREQ=HOURLY", "FREQ=YEARLY;BYWEEKNO=1,53", "FREQ=WEEKLY;BYDAY=SU"}) {
        const OccurrenceSeries last = series(recurrence(rule, "9998-12-31T20:00:00"), "America/New_York");
        EXPECT_LE(*last.upTo(utc("9999-12-31T23:59:59Z")), utc("9999-12-31T23:59:59Z")) << rule;
        EXPECT_EQ(last.after(utc("9999-12-31T23:59:59Z")), std::nullopt) << rule;
    }
}

TEST_F(OccurrenceSeriesTest, FindsTheSameFromAnywhereAsWhenItIsWalked)
{
    for (const char *rule :
         {"FREQ=DAILY;INTERVAL=3;BYHOUR=2,14", "FREQ=WEEKLY;INTERVAL=2;BYDAY=SU,WE;WKST=SU",
          "FREQ=MONTHLY;INTERVAL=5;BYMONTHDAY=31,-31", "FREQ=YEARLY;INTERVAL=3;BYWEEKNO=1,-1",
          "FREQ=MONTHLY;BYDAY=MO,2TU;BYSETPOS=-1,2", "FREQ=HOURLY;INTERVAL=7;BYMINUTE=0,45",
          "FREQ=DAILY;BYMONTH=3,10;BYDAY=SU;COUNT=400"}) {
        const OccurrenceSeries all = series(recurrence(rule, "1990-01-17T02:30:00"));
        QDateTime previous = *all.first();
        for (int i = 0; i < 300; ++i) {
            const auto next = all.after(previous);
            if (!next)
                break;
            ASSERT_LT(previous, *next) << rule;
            const QDateTime middle = previous.addSecs(previous.secsTo(*next) / 2);
            ASSERT_EQ(all.after(next->addSecs(-1)), next) << rule;
            ASSERT_EQ(all.after(middle), next) << rule;
            ASSERT_EQ(all.upTo(middle), previous) << rule;
            ASSERT_EQ(all.upTo(*next), next) << rule;
            previous = *next;
        }
    }
}
