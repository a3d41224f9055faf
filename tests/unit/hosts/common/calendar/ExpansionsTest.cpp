// SPDX-License-Identifier: MIT
//
// Where other readers of RFC 5545 differ from its table of expansions (3.3.10), or from one another: what we
// take to be right, and why. tests/oracle holds the rest against one of them.
#include "unit/hosts/common/calendar/SeriesFixture.h"

class ExpansionsTest : public SeriesFixture
{
};

TEST_F(ExpansionsTest, AWeekNumberAloneTakesTheWeekdayOfTheStart)
{
    // "Information, not contained in the rule, [...] is derived from DTSTART": not all seven days of the
    // week.
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYWEEKNO=20", "1997-05-14T09:00:00"), 3),
              "1997-05-14 1998-05-13 1999-05-19");
}

TEST_F(ExpansionsTest, AWeekNumberBesideADayOfTheMonthTakesNothingFromTheStart)
{
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYWEEKNO=20;BYMONTHDAY=15", "1997-01-01T09:00:00"), 3),
              "1997-05-15 1998-05-15 2000-05-15");
}

TEST_F(ExpansionsTest, AWeekBelongsWholeToItsYear)
{
    // The first week of 1998 begins in 1997: it is one of 1998, which every other year from 1996 on has.
    EXPECT_EQ(
        firstDaysOf(recurrence("FREQ=YEARLY;INTERVAL=2;BYWEEKNO=1;BYDAY=MO,SU", "1996-01-01T09:00:00"), 4),
        "1996-01-01 1996-01-07 1997-12-29 1998-01-04");
    // Three days of week 53 of 1998 lie in 1999.
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYWEEKNO=53;BYDAY=FR", "1999-01-01T09:00:00"), 2),
              "1999-01-01 2004-12-31");
}

TEST_F(ExpansionsTest, YearsAreCountedFromTheOneOfTheStart)
{
    // 1999-01-01 is in the last week of 1998, and yet a day of 1999.
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;INTERVAL=2;BYWEEKNO=10", "1999-01-01T09:00:00"), 2),
              "1999-03-12 2001-03-09");
}

TEST_F(ExpansionsTest, AnHourIsOneOfTheStartsClock)
{
    // At a half past each hour of UTC.
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY;INTERVAL=2;BYMINUTE=0,15,45", "2026-03-01T09:40:00"), 4,
                      "Asia/Kolkata"),
              (QStringList{"2026-03-01T09:45:00+05:30", "2026-03-01T11:00:00+05:30",
                           "2026-03-01T11:15:00+05:30", "2026-03-01T11:45:00+05:30"}));
}

TEST_F(ExpansionsTest, AFirstWeekThatIsCountedFromTheEndIsWhole)
{
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYWEEKNO=-53;BYDAY=MO,FR", "2010-01-04T09:00:00"), 4),
              "2014-12-29 2015-01-02 2019-12-30 2020-01-03"); // those of 53 weeks: 2015 and 2020
}

TEST_F(ExpansionsTest, AYearWithoutWeek53HasNothingInIt)
{
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYWEEKNO=53;BYDAY=MO", "2010-01-01T09:00:00"), 2),
              "2015-12-28 2020-12-28");
}

TEST_F(ExpansionsTest, WeeksBeginWhereWkstSays)
{
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYWEEKNO=1;BYDAY=SU", "2025-01-10T09:00:00"), 2),
              "2026-01-04 2027-01-10");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYWEEKNO=1;BYDAY=SU;WKST=SU", "2025-01-10T09:00:00"), 2),
              "2026-01-04 2027-01-03");
}

TEST_F(ExpansionsTest, DaysOfTheMonthWithoutMonthsAreOfEveryMonth)
{
    // BYMONTHDAY expands a year; only what the rule leaves open is the start's.
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYMONTHDAY=31", "1997-03-10T09:00:00"), 3),
              "1997-03-31 1997-05-31 1997-07-31");
}

TEST_F(ExpansionsTest, PositionsAreOfTheWholeFirstPeriod)
{
    // The first working day of each week. The week of the start has it on Monday, before the start.
    EXPECT_EQ(
        firstDaysOf(recurrence("FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=1", "2026-03-18T09:00:00"), 2),
        "2026-03-23 2026-03-30");
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY;BYMINUTE=0,20,40;BYSETPOS=1", "2026-03-18T09:10:00"), 2, "UTC"),
              (QStringList{"2026-03-18T10:00:00Z", "2026-03-18T11:00:00Z"}));
}

TEST_F(ExpansionsTest, PositionsAreThoseOfInstancesAndNotOfDays)
{
    EXPECT_EQ(firstOf(recurrence("FREQ=MONTHLY;BYDAY=MO;BYHOUR=9,17;BYSETPOS=2,-1", "2026-03-01T00:00:00"), 4,
                      "UTC"),
              (QStringList{"2026-03-02T17:00:00Z", "2026-03-30T17:00:00Z", "2026-04-06T17:00:00Z",
                           "2026-04-27T17:00:00Z"}));
    EXPECT_EQ(firstOf(recurrence("FREQ=DAILY;BYHOUR=9,12,17;BYSETPOS=-1", "2026-03-01T00:00:00"), 2, "UTC"),
              (QStringList{"2026-03-01T17:00:00Z", "2026-03-02T17:00:00Z"}));
}

TEST_F(ExpansionsTest, DaysOfAYearAndOtherDaysLimitOneAnother)
{
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYYEARDAY=1,32,60;BYMONTH=2,3", "2026-01-01T09:00:00"), 3),
              "2026-02-01 2026-03-01 2027-02-01");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYYEARDAY=-1;BYDAY=FR", "2026-01-01T09:00:00"), 2),
              "2027-12-31 2032-12-31");
}

TEST_F(ExpansionsTest, OrdinalsAreOfTheMonthWhereThereAreMonthsAndOtherwiseOfTheYear)
{
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYMONTH=3,10;BYDAY=-1SU", "2026-01-01T09:00:00"), 3),
              "2026-03-29 2026-10-25 2027-03-28");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYDAY=-1SU", "2026-01-01T09:00:00"), 2),
              "2026-12-27 2027-12-26");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY;BYDAY=-53MO", "2026-01-01T09:00:00"), 1), "2029-01-01");
}

TEST_F(ExpansionsTest, DaysWithAndWithoutOrdinalsAreAlternatives)
{
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=MONTHLY;BYDAY=1MO,TU", "2026-03-01T09:00:00"), 7),
              "2026-03-02 2026-03-03 2026-03-10 2026-03-17 2026-03-24 2026-03-31 2026-04-06");
}

TEST_F(ExpansionsTest, ALeapSecondIsTheLastOfItsMinute)
{
    // RFC 5545, 3.3.12: who knows of no leap seconds takes 60 for 59.
    EXPECT_EQ(firstOf(recurrence("FREQ=DAILY;BYSECOND=59,60", "2026-03-01T09:00:00"), 2, "UTC"),
              (QStringList{"2026-03-01T09:00:59Z", "2026-03-02T09:00:59Z"}));
}

TEST_F(ExpansionsTest, AMonthWithoutTheDayHasNone)
{
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=MONTHLY", "2026-01-31T09:00:00"), 3),
              "2026-01-31 2026-03-31 2026-05-31");
    EXPECT_EQ(firstDaysOf(recurrence("FREQ=YEARLY", "2024-02-29T09:00:00"), 2), "2024-02-29 2028-02-29");
}

TEST_F(ExpansionsTest, AMinuteIsExpandedBySecondsAndLimitedByMinutes)
{
    EXPECT_EQ(
        firstOf(recurrence("FREQ=MINUTELY;INTERVAL=2;BYMINUTE=0,1,2;BYSECOND=10,50", "2026-03-01T09:00:20"),
                4, "UTC"),
        (QStringList{"2026-03-01T09:00:50Z", "2026-03-01T09:02:10Z", "2026-03-01T09:02:50Z",
                     "2026-03-01T10:00:10Z"}));
    EXPECT_EQ(firstOf(recurrence("FREQ=HOURLY;BYSECOND=10,50", "2026-03-01T09:05:20"), 2, "UTC"),
              (QStringList{"2026-03-01T09:05:50Z", "2026-03-01T10:05:10Z"}));
}
