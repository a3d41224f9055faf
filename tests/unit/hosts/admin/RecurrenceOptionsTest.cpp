// SPDX-License-Identifier: MIT
#include "hosts/admin/RecurrenceOptions.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
/// It is Saturday, 2026-03-14 06:00 UTC, 07:00 in Berlin.
class RecurrenceOptionsTest : public testing::Test
{
protected:
    RecurrenceOptionsTest() { Port<Clock>::current() = clock; }

    RecurrenceOptions::Made made(const QStringList &arguments)
    {
        AdminOptions options;
        EXPECT_FALSE(options.parse(QStringList{"dozely-admin", "change", "A"} + arguments));
        auto made = RecurrenceOptions::read(options, former, zone);
        made.recurrence.excludedDates += RecurrenceOptions::exceptions(options, made.recurrence, zone);
        return made;
    }
    /// The rule and the first wall time, and what is excluded.
    QString rule(const QStringList &arguments)
    {
        const Recurrence recurrence = made(arguments).recurrence;
        QString text = recurrence.rule + " " + recurrence.localStart.toString();
        for (const WallTime &date : recurrence.excludedDates)
            text += " without " + date.toString();
        return text;
    }
    QString refusal(const QStringList &arguments)
    {
        try {
            return "not refused, but " + rule(arguments);
        } catch (const AdminError &error) {
            EXPECT_EQ(error.status(), ExitStatus::BadUsage);
            return error.sentence();
        }
    }
    void setFormer(const QString &rule, const QString &start, const QStringList &excluded = {})
    {
        Recurrence recurrence{rule, *WallTime::fromString(start), {}, {}, {}};
        for (const QString &date : excluded)
            recurrence.excludedDates += *WallTime::fromString(date);
        former.recurrence = recurrence;
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    RecurrenceOptions::Former former;
    QTimeZone zone{"Europe/Berlin"};
};
} // namespace

TEST_F(RecurrenceOptionsTest, WhatIsDailyBeginsAtTheFirstTimeFromNow)
{
    EXPECT_EQ(rule({"--every", "day", "--at", "22:00"}), "FREQ=DAILY 2026-03-14T22:00:00");
    EXPECT_EQ(rule({"--every", "day", "--at", "07:00"}), "FREQ=DAILY 2026-03-14T07:00:00") << "now itself";
    EXPECT_EQ(rule({"--every", "day", "--at", "06:59"}), "FREQ=DAILY 2026-03-15T06:59:00");
    EXPECT_EQ(rule({"--every", "weekday", "--at", "22:00"}),
              "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR 2026-03-16T22:00:00");
    EXPECT_EQ(rule({"--every", "thursday,monday", "--at", "22:00"}),
              "FREQ=WEEKLY;BYDAY=MO,TH 2026-03-16T22:00:00");
}

TEST_F(RecurrenceOptionsTest, WeekMonthAndYearAreCountedFromTheFirstTime)
{
    EXPECT_EQ(rule({"--every", "week", "--at", "22:00"}), "FREQ=WEEKLY 2026-03-14T22:00:00");
    EXPECT_EQ(rule({"--every", "week", "--at", "06:00"}), "FREQ=WEEKLY 2026-03-15T06:00:00");
    EXPECT_EQ(rule({"--every", "month", "--at", "06:00"}), "FREQ=MONTHLY 2026-03-15T06:00:00");
    EXPECT_EQ(rule({"--every", "year", "--at", "22:00"}), "FREQ=YEARLY 2026-03-14T22:00:00");
}

TEST_F(RecurrenceOptionsTest, DaysOfTheMonthAreNamed)
{
    EXPECT_EQ(rule({"--every", "month", "--on", "1,15,last", "--at", "22:00"}),
              "FREQ=MONTHLY;BYMONTHDAY=1,15,-1 2026-03-15T22:00:00");
    const auto rare = made({"--every", "month", "--on", "31", "--at", "22:00"});
    EXPECT_EQ(rare.remarks,
              QStringList("Months without a day 31 are left out; --on last is the last day of each "
                          "month."));
}

TEST_F(RecurrenceOptionsTest, ADistanceBeginsAStepFromNow)
{
    EXPECT_EQ(rule({"--every", "15m"}), "FREQ=MINUTELY;INTERVAL=15 2026-03-14T07:15:00");
    EXPECT_EQ(rule({"--every", "2h"}), "FREQ=HOURLY;INTERVAL=2 2026-03-14T09:00:00");
    EXPECT_EQ(rule({"--every", "2h", "--from", "2026-03-15"}), "FREQ=HOURLY;INTERVAL=2 2026-03-15T00:00:00");
    clock->advance(std::chrono::milliseconds(1));
    EXPECT_EQ(rule({"--every", "2s"}), "FREQ=SECONDLY;INTERVAL=2 2026-03-14T07:00:03");
}

TEST_F(RecurrenceOptionsTest, SeveralTimesAreOneRuleWhereTheyCan)
{
    EXPECT_EQ(rule({"--every", "day", "--at", "22:00", "--at", "06:00"}),
              "FREQ=DAILY;BYHOUR=6,22;BYMINUTE=0;BYSECOND=0 2026-03-14T22:00:00");
    EXPECT_EQ(rule({"--every", "day", "--at", "22:00", "--at", "22:00"}), "FREQ=DAILY 2026-03-14T22:00:00");
    EXPECT_EQ(refusal({"--every", "day", "--at", "22:00", "--at", "06:30"}),
              "It cannot repeat so: one rule cannot mean 06:30, 22:00 without 06:00, 22:30, too; let the "
              "times have "
              "equal minutes, or add a second schedule.");
}

TEST_F(RecurrenceOptionsTest, ARuleIsTakenAsItIs)
{
    EXPECT_EQ(rule({"--rule", "FREQ=MONTHLY;BYDAY=1MO", "--at", "03:00"}),
              "FREQ=MONTHLY;BYDAY=1MO 2026-04-06T03:00:00");
    EXPECT_EQ(rule({"--rule", " RRULE:FREQ=DAILY;BYHOUR=6,22"}),
              "FREQ=DAILY;BYHOUR=6,22 2026-03-14T22:00:00");
    EXPECT_EQ(rule({"--rule", "FREQ=HOURLY;BYMINUTE=30"}), "FREQ=HOURLY;BYMINUTE=30 2026-03-14T07:30:00");
}

TEST_F(RecurrenceOptionsTest, ItBeginsAndEndsAsIsSaid)
{
    EXPECT_EQ(rule({"--every", "day", "--at", "22:00", "--from", "2026-04-01", "--until", "2026-04-30"}),
              "FREQ=DAILY;UNTIL=20260430T235959 2026-04-01T22:00:00");
    EXPECT_EQ(rule({"--every", "day", "--from", "2026-04-01 12:30", "--count", "3"}),
              "FREQ=DAILY;COUNT=3 2026-04-01T12:30:00");
    EXPECT_EQ(rule({"--every", "day", "--at", "10:00", "--from", "2026-04-01 12:30", "--until",
                    "2026-04-30 12:00"}),
              "FREQ=DAILY;UNTIL=20260430T120000 2026-04-02T10:00:00");
    EXPECT_EQ(rule({"--every", "day", "--at", "06:00", "--from", "2026-03-14"}),
              "FREQ=DAILY 2026-03-15T06:00:00")
        << "today's is past";
}

TEST_F(RecurrenceOptionsTest, ABeginningThatIsSkippedKeepsItsTime)
{
    const auto skipped = made({"--every", "day", "--from", "2026-03-29 02:30"});
    EXPECT_EQ(skipped.recurrence.localStart.toString(), "2026-03-29T02:30:00");
    EXPECT_EQ(skipped.remarks,
              QStringList("2026-03-29 02:30 does not exist in Europe/Berlin; it becomes 2026-03-29 "
                          "03:30:00."));
}

TEST_F(RecurrenceOptionsTest, ExceptionsAreADayOrATime)
{
    EXPECT_EQ(
        rule({"--every", "day", "--at", "22:00", "--except", "2026-12-25", "--except", "2026-12-26 22:00"}),
        "FREQ=DAILY 2026-03-14T22:00:00 without 2026-12-25T22:00:00 without 2026-12-26T22:00:00");
    EXPECT_EQ(
        rule({"--every", "6h", "--except", "2026-03-15"}),
        "FREQ=HOURLY;INTERVAL=6 2026-03-14T13:00:00 without 2026-03-15T01:00:00 without 2026-03-15T07:00:00 "
        "without 2026-03-15T13:00:00 without 2026-03-15T19:00:00");
    EXPECT_EQ(refusal({"--every", "weekday", "--at", "22:00", "--except", "2026-03-15"}),
              "Nothing takes place on 2026-03-15 that could be left out.");
    EXPECT_EQ(refusal({"--every", "day", "--at", "22:00", "--except", "2026-03-15 21:00"}),
              "Nothing takes place on 2026-03-15 21:00 that could be left out.");
}

TEST_F(RecurrenceOptionsTest, WhatDoesNotFitTogetherIsRefused)
{
    const QList<std::pair<QStringList, const char *>> cases{
        {{"--at", "22:00"}, "Say how often, by --every or --rule."},
        {{"--every", "day"}, "Say at what time, by --at."},
        {{"--rule", "FREQ=DAILY"}, "Say at what time, by --at."},
        {{"--every", "day", "--rule", "FREQ=DAILY", "--at", "22:00"}, "Say --every or --rule, not both."},
        {{"--every", "day", "--every", "week", "--at", "22:00"}, "--every is there twice."},
        {{"--every", "day", "--at", "22:00", "--until", "2027-01-01", "--count", "3"},
         "Say --until or --count, not both."},
        {{"--every", "day", "--at", "22:00", "--on", "5"},
         "--on names days of the month and needs --every month."},
        {{"--every", "15m", "--at", "22:00"},
         "--at is the time of day of what takes place on some days, and not of what goes on around the "
         "clock."},
        {{"--rule", "FREQ=DAILY;BYHOUR=3", "--at", "22:00"},
         "The rule says itself at what times; leave --at or its BYHOUR, BYMINUTE and BYSECOND out."},
        {{"--rule", "FREQ=DAILY;COUNT=3", "--at", "22:00", "--count", "3"},
         "The rule says itself when it ends; leave --until and --count or its UNTIL and COUNT out."},
        {{"--rule", "daily", "--at", "22:00"}, "\"daily\" is not a rule such as FREQ=WEEKLY;BYDAY=MO."},
        {{"--every", "day", "--at", "22:00", "--count", "0"},
         "--count needs a whole number, 1 or more, not \"0\"."},
        {{"--every", "day", "--at", "22:00", "--from", "2026-03-13"}, "2026-03-13 in Europe/Berlin is past."},
        {{"--every", "day", "--from", "2026-03-14 06:30"}, "2026-03-14 06:30 in Europe/Berlin is past."},
        {{"--every", "day", "--at", "22:00", "--until", "2026-03-13"}, "It is to end before it begins."},
        {{"--every", "weekday", "--at", "22:00", "--until", "2026-03-15"}, "It cannot repeat so: "},
        {{"--rule", "FREQ=DAILY;BYMONTH=13", "--at", "22:00"}, "It cannot repeat so: BYMONTH=13 of the rule"},
    };
    for (const auto &[arguments, complaint] : cases)
        EXPECT_EQ(refusal(arguments).left(QString(complaint).size()), complaint)
            << qPrintable(arguments.join(' '));
}

TEST_F(RecurrenceOptionsTest, WhatCanBeReadInTwoWaysIsRefusedWithBoth)
{
    const QList<std::pair<QStringList, const char *>> cases{
        {{"--every", "day", "--at", "7"}, "\"7\" can be 07:00 or 19:00."},
        {{"--every", "5"}, "\"5\" can be 5m (minutes) or 5h (hours)."},
        {{"--every", "day", "--at", "22:00", "--from", "03/04/2026"},
         "\"03/04/2026\" can be 2026-04-03 or 2026-03-04."},
        {{"--every", "day", "--at", "22:00", "--except", "03/04/2026"},
         "\"03/04/2026\" can be 2026-04-03 or 2026-03-04."},
        {{"--every", "day", "--from", "2026-10-25 02:30"},
         "Clocks in Europe/Berlin show \"2026-10-25 02:30\" twice: say \"2026-10-25 02:30+02:00\" or "
         "\"2026-10-25 "
         "02:30+01:00\"."},
        {{"--every", "month", "--at", "22:00", "--from", "2026-03-31"},
         "Every month from 31 March 2026 on can be day 31 of those months that have one, --on 31, or the "
         "last of "
         "each, --on last."},
        {{"--every", "year", "--at", "22:00", "--from", "2028-02-29"},
         "Every year from 29 February 2028 on can be that day of leap years, --rule "
         "\"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=29\", or the last of February, --rule "
         "\"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=-1\"."},
    };
    for (const auto &[arguments, complaint] : cases)
        EXPECT_EQ(refusal(arguments), complaint);
}

TEST_F(RecurrenceOptionsTest, AnotherTimeLeavesTheDays)
{
    setFormer("FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR", "2026-03-02T22:00:00");
    EXPECT_EQ(rule({"--at", "21:00"}), "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR 2026-03-16T21:00:00");
    setFormer("FREQ=WEEKLY;INTERVAL=2;COUNT=9", "2026-03-02T22:00:00");
    EXPECT_EQ(rule({"--at", "21:00"}), "FREQ=WEEKLY;INTERVAL=2;COUNT=9 2026-03-16T21:00:00");
    setFormer("FREQ=HOURLY;INTERVAL=2", "2026-03-02T22:00:00");
    EXPECT_EQ(refusal({"--at", "21:00"}).left(12), "--at is the ");
}

TEST_F(RecurrenceOptionsTest, OtherDaysLeaveTheTimesAndTheEnd)
{
    setFormer("FREQ=DAILY;BYHOUR=6,22;BYMINUTE=0;BYSECOND=0;UNTIL=20261231T235959", "2026-03-02T06:00:00");
    EXPECT_EQ(rule({"--every", "weekday"}),
              "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR;BYHOUR=6,22;BYMINUTE=0;BYSECOND=0;"
              "UNTIL=20261231T235959 2026-03-16T06:00:00");
    EXPECT_EQ(rule({"--every", "3h", "--count", "4"}), "FREQ=HOURLY;INTERVAL=3;COUNT=4 2026-03-14T10:00:00");
    former = {{}, QTime(22, 0)};
    EXPECT_EQ(rule({"--every", "weekday"}), "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR 2026-03-16T22:00:00")
        << "of what took place once";
}

TEST_F(RecurrenceOptionsTest, DaysOfTheMonthTakeThePlaceOfThoseOfWeeks)
{
    setFormer("FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1", "2026-03-31T22:00:00");
    EXPECT_EQ(rule({"--on", "5"}), "FREQ=MONTHLY;BYMONTHDAY=5 2026-04-05T22:00:00");
}

TEST_F(RecurrenceOptionsTest, EveryMonthMayBeginOnADayThatAllMonthsHave)
{
    EXPECT_EQ(rule({"--every", "month", "--from", "2026-03-28 09:00"}), "FREQ=MONTHLY 2026-03-28T09:00:00");
    EXPECT_EQ(refusal({"--every", "month", "--from", "2026-03-29 09:00"}).left(17), "Every month from ");
}

TEST_F(RecurrenceOptionsTest, AnotherEndLeavesTheRule)
{
    setFormer("FREQ=WEEKLY;INTERVAL=2;COUNT=9", "2026-03-02T22:00:00");
    EXPECT_EQ(rule({"--until", "2026-12-31"}),
              "FREQ=WEEKLY;INTERVAL=2;UNTIL=20261231T235959 2026-03-16T22:00:00");
    EXPECT_EQ(rule({"--count", "3"}), "FREQ=WEEKLY;INTERVAL=2;COUNT=3 2026-03-16T22:00:00");
}

TEST_F(RecurrenceOptionsTest, AnotherBeginningLeavesTheDays)
{
    setFormer("FREQ=WEEKLY", "2026-06-06T22:00:00"); // a Saturday
    EXPECT_EQ(rule({"--from", "2026-04-01"}), "FREQ=WEEKLY;BYDAY=SA 2026-04-04T22:00:00");
    setFormer("FREQ=MONTHLY", "2026-06-06T22:00:00");
    EXPECT_EQ(rule({"--from", "2026-04-01"}), "FREQ=MONTHLY;BYMONTHDAY=6 2026-04-06T22:00:00");
    setFormer("FREQ=YEARLY", "2026-06-06T22:00:00");
    EXPECT_EQ(rule({"--from", "2027-04-01"}), "FREQ=YEARLY;BYMONTH=6;BYMONTHDAY=6 2027-06-06T22:00:00");
}

TEST_F(RecurrenceOptionsTest, AnotherBeginningHasARuleSayTheDayThatItLeftToTheFormerOne)
{
    const auto movedOn = [this](const char *former) {
        setFormer(former, "2026-03-05T22:00:00"); // a Thursday
        return rule({"--from", "2026-04-01"}).section(' ', 0, 0).toStdString();
    };
    EXPECT_EQ(movedOn("FREQ=WEEKLY"), "FREQ=WEEKLY;BYDAY=TH");
    EXPECT_EQ(movedOn("FREQ=MONTHLY"), "FREQ=MONTHLY;BYMONTHDAY=5");
    EXPECT_EQ(movedOn("FREQ=YEARLY"), "FREQ=YEARLY;BYMONTH=3;BYMONTHDAY=5");
    EXPECT_EQ(movedOn("FREQ=YEARLY;BYMONTH=7"), "FREQ=YEARLY;BYMONTH=7;BYMONTHDAY=5");
    for (const char *whole :
         {"FREQ=DAILY", "FREQ=WEEKLY;BYDAY=MO", "FREQ=MONTHLY;BYMONTHDAY=7", "FREQ=YEARLY;BYYEARDAY=200",
          "FREQ=YEARLY;BYWEEKNO=20", "FREQ=YEARLY;BYDAY=20MO"})
        EXPECT_EQ(movedOn(whole), whole);
}

TEST_F(RecurrenceOptionsTest, ExceptionsStayWhereTheyAreStillSome)
{
    setFormer("FREQ=DAILY", "2026-03-02T22:00:00",
              {"2026-03-05T22:00:00", "2026-03-20T22:00:00", "2026-03-21T22:00:00"});
    const auto kept = made({"--every", "weekday"});
    EXPECT_EQ(kept.recurrence.excludedDates, (QList<WallTime>{{{2026, 3, 20}, {22, 0}}}));
    EXPECT_EQ(kept.remarks,
              QStringList("The exception of 21 March 2026 at 22:00 is gone: nothing takes place then "
                          "any more."));
}
