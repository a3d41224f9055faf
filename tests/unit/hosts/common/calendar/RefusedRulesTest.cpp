// SPDX-License-Identifier: MIT
#include "unit/hosts/common/calendar/SeriesFixture.h"

#include <ctime>

namespace
{
/// What this process has computed so far, in milliseconds: other processes do not count.
double computed()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Sanitizers make everything slower by as much.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double slowness = 20;
#else
constexpr double slowness = 1;
#endif
constexpr double longestRefusal = 50 * slowness; // milliseconds

const std::string nothing = "the rule gives no date within 100 years from its start";
} // namespace

class RefusedRulesTest : public SeriesFixture
{
protected:
    /// The same, and that nobody waits for it.
    static std::string quickFaultOf(const char *rule, const char *zone = "Europe/Paris")
    {
        const double before = computed();
        const std::string fault = faultOf(rule, "2026-03-14T06:55:00", zone);
        EXPECT_LT(computed() - before, longestRefusal) << rule << " " << zone;
        return fault;
    }
};

TEST_F(RefusedRulesTest, AreThoseThatAreNoRules)
{
    const std::string blanks = "the rule has blanks or other characters that no rule has";
    EXPECT_EQ(faultOf(""), "the rule has an empty part");
    EXPECT_EQ(faultOf("FREQ=DAILY;"), "the rule has an empty part");
    EXPECT_EQ(faultOf("FREQ=DAILY;;COUNT=1"), "the rule has an empty part");
    EXPECT_EQ(faultOf("FREQ=DAILY; COUNT=1"), blanks);
    EXPECT_EQ(faultOf("FREQ=DA\xc4\xb1LY"), blanks); // a dotless i, which is an I when it is a capital
    EXPECT_EQ(faultOf("FREQ=DAILY\n"), blanks);
    EXPECT_EQ(faultOf("COUNT=1"), "the rule has no FREQ");
    EXPECT_EQ(faultOf("FREQ"), "FREQ of the rule has no value");
    EXPECT_EQ(faultOf("FREQ="), "FREQ of the rule has no value");
    EXPECT_EQ(faultOf("FREQ=DAILY;FREQ=DAILY"), "the rule has FREQ twice");
    EXPECT_EQ(faultOf("FREQ=DAILY;BYDAY=MO;BYDAY=TU"), "the rule has BYDAY twice");
    EXPECT_EQ(faultOf("RRULE:FREQ=DAILY"), "the rule has a part that is not known, \"RRULE:FREQ\"");
    EXPECT_EQ(faultOf("FREQ=DAILY;X-MINE=1"), "the rule has a part that is not known, \"X-MINE\"");
    EXPECT_EQ(faultOf("FREQ=DAYLY"),
              "FREQ=DAYLY of the rule is not one of SECONDLY, MINUTELY, HOURLY, DAILY, WEEKLY, "
              "MONTHLY and YEARLY");
    EXPECT_EQ(faultOf("FREQ=DAILY;WKST=M"), "WKST=M of the rule is not one of MO, TU, WE, TH, FR, SA and SU");
}

TEST_F(RefusedRulesTest, AreThoseWithNumbersThatThereAreNot)
{
    for (const char *part : {"BYSECOND=61",
                             "BYSECOND=-1",
                             "BYSECOND=+1",
                             "BYMINUTE=60",
                             "BYHOUR=24",
                             "BYHOUR=1,,2",
                             "BYHOUR=1,",
                             "BYHOUR=1.5",
                             "BYHOUR=001",
                             "BYHOUR=0x1",
                             "BYMONTHDAY=0",
                             "BYMONTHDAY=32",
                             "BYMONTHDAY=-32",
                             "BYMONTH=0",
                             "BYMONTH=13",
                             "BYMONTH=-1",
                             "BYMONTH=5L",
                             "BYDAY=0MO",
                             "BYDAY=MON",
                             "BYDAY=",
                             "BYDAY=1",
                             "BYDAY=M",
                             "INTERVAL=0",
                             "INTERVAL=-1",
                             "INTERVAL=1000000001",
                             "INTERVAL=99999999999999999999",
                             "COUNT=0",
                             "COUNT=-1",
                             "COUNT=1;UNTIL=20260401",
                             "BYHOUR=1;BYSETPOS=0",
                             "BYHOUR=1;BYSETPOS=367"})
        EXPECT_NE(faultOf(qPrintable(QString("FREQ=DAILY;%1").arg(part))), "") << part;
    for (const char *part : {"BYYEARDAY=0", "BYYEARDAY=367", "BYYEARDAY=-367", "BYWEEKNO=0", "BYWEEKNO=54",
                             "BYDAY=54MO", "BYDAY=-54MO", "BYDAY=--1MO"})
        EXPECT_NE(faultOf(qPrintable(QString("FREQ=YEARLY;%1").arg(part))), "") << part;
    EXPECT_EQ(faultOf("FREQ=DAILY;BYMONTH=13"), "BYMONTH=13 of the rule is not made of numbers from 1 to 12");
    EXPECT_EQ(faultOf("FREQ=DAILY;BYMONTHDAY=32"),
              "BYMONTHDAY=32 of the rule is not made of numbers from 1 to 31 or from -31 to -1");
    EXPECT_EQ(faultOf("FREQ=DAILY;INTERVAL=0"),
              "INTERVAL=0 of the rule is not a number from 1 to 1000000000");
}

TEST_F(RefusedRulesTest, AreThoseWithAnEndThatIsNone)
{
    for (const char *until : {"2026", "20260229", "20261301", "20260401T", "20260401T0655", "20260401T240000",
                              "20260401T065500X", "20260401T065500ZZ", "20260401Z", "2026-04-01", "00000401",
                              "20260401T065561", "+0260401", "tomorrow"})
        EXPECT_EQ(faultOf(qPrintable(QString("FREQ=DAILY;UNTIL=%1").arg(until))),
                  "UNTIL=" + QString(until).toUpper().toStdString() +
                      " of the rule is not a date such as 20260314, 20260314T065500 or 20260314T065500Z");
    EXPECT_EQ(faultOf("FREQ=DAILY;UNTIL=20260313"), nothing); // before the start
}

TEST_F(RefusedRulesTest, AreThoseWhosePartsExcludeOneAnother)
{
    EXPECT_EQ(faultOf("FREQ=DAILY;COUNT=1;UNTIL=20260401"),
              "the rule has COUNT and UNTIL, of which there may be one");
    for (const char *rule : {"FREQ=WEEKLY;BYDAY=1MO", "FREQ=DAILY;BYDAY=1MO", "FREQ=HOURLY;BYDAY=-1MO"})
        EXPECT_EQ(faultOf(rule), "BYDAY of the rule has a number, which needs FREQ=MONTHLY or FREQ=YEARLY");
    EXPECT_EQ(faultOf("FREQ=YEARLY;BYWEEKNO=1;BYDAY=1MO"),
              "BYDAY of the rule has a number, which cannot be beside BYWEEKNO");
    EXPECT_EQ(faultOf("FREQ=WEEKLY;BYMONTHDAY=1"),
              "the rule has BYMONTHDAY, which cannot be beside FREQ=WEEKLY");
    for (const char *frequency : {"DAILY", "WEEKLY", "MONTHLY"})
        EXPECT_EQ(faultOf(qPrintable(QString("FREQ=%1;BYYEARDAY=1").arg(frequency))),
                  "the rule has BYYEARDAY, which cannot be beside FREQ=DAILY, WEEKLY or MONTHLY");
    for (const char *frequency : {"SECONDLY", "MINUTELY", "HOURLY", "DAILY", "WEEKLY", "MONTHLY"})
        EXPECT_EQ(faultOf(qPrintable(QString("FREQ=%1;BYWEEKNO=1").arg(frequency))),
                  "the rule has BYWEEKNO, which needs FREQ=YEARLY");
    EXPECT_EQ(faultOf("FREQ=DAILY;BYSETPOS=1"), "the rule has BYSETPOS, which needs another BY part");
    for (const char *part : {"RSCALE=GREGORIAN", "SKIP=OMIT"})
        EXPECT_EQ(faultOf(qPrintable(QString("FREQ=DAILY;%1").arg(part))),
                  "the rule has " + QString(part).section('=', 0, 0).toStdString() +
                      ", and other calendars than the Gregorian are not supported");
}

TEST_F(RefusedRulesTest, AreNotThoseInSmallLettersOrAnotherOrder)
{
    EXPECT_EQ(faultOf("byday=mo,tu;freq=weekly;until=20270101t000000z;wkst=su"), "");
    EXPECT_EQ(faultOf("COUNT=0002;FREQ=DAILY;INTERVAL=1000000000"), "");
    EXPECT_EQ(faultOf("FREQ=YEARLY;BYDAY=+1MO;BYMONTHDAY=+1"), "");
    EXPECT_EQ(faultOf("FREQ=HOURLY;BYYEARDAY=100"), "");
}

TEST_F(RefusedRulesTest, AreThoseOfNoZoneAndNoStart)
{
    EXPECT_FALSE(OccurrenceSeries::of(recurrence("FREQ=DAILY", "2026-03-14T06:55:00"), QTimeZone()));
    Recurrence noStart;
    noStart.rule = "FREQ=DAILY";
    EXPECT_FALSE(OccurrenceSeries::of(noStart, QTimeZone::utc()));
}

TEST_F(RefusedRulesTest, AreAtOnceThoseThatGiveNothing)
{
    for (const char *rule :
         {"FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=MINUTELY;BYMONTH=2;BYMONTHDAY=30",
          "FREQ=HOURLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30",
          "FREQ=MONTHLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30",
          "FREQ=MONTHLY;INTERVAL=12;BYMONTH=4", "FREQ=DAILY;BYMONTHDAY=31;BYMONTH=4,6,9,11",
          "FREQ=SECONDLY;INTERVAL=60;BYSECOND=30", "FREQ=SECONDLY;INTERVAL=86400;BYHOUR=5",
          "FREQ=MINUTELY;INTERVAL=2;BYMINUTE=0", "FREQ=HOURLY;INTERVAL=24;BYHOUR=5",
          "FREQ=YEARLY;BYDAY=53MO;BYMONTH=2", "FREQ=YEARLY;BYYEARDAY=366;BYWEEKNO=20",
          "FREQ=YEARLY;BYSETPOS=366;BYDAY=MO", "FREQ=HOURLY;BYSETPOS=366;BYMINUTE=0,1,2",
          "FREQ=SECONDLY;BYSETPOS=2;BYSECOND=1,2",
          "FREQ=SECONDLY;INTERVAL=999999937;BYHOUR=5;BYMINUTE=5;BYSECOND=5",
          "FREQ=YEARLY;INTERVAL=101;BYMONTH=2;BYMONTHDAY=29"}) {
        for (const char *zone : {"UTC", "Europe/Paris", "Asia/Tokyo"})
            EXPECT_EQ(quickFaultOf(rule, zone), nothing) << rule;
    }
}

TEST_F(RefusedRulesTest, AreAtOnceThoseThatCannotBeCounted)
{
    for (const char *rule : {"FREQ=DAILY;COUNT=1000000000", "FREQ=MINUTELY;BYHOUR=5;COUNT=1000000000",
                             "FREQ=WEEKLY;BYDAY=MO;BYSETPOS=1;COUNT=1000000000"})
        EXPECT_EQ(quickFaultOf(rule), "the rule's COUNT is too large to be counted") << rule;
    // These are counted without a step.
    EXPECT_EQ(quickFaultOf("FREQ=SECONDLY;COUNT=1000000000"), "");
    EXPECT_EQ(quickFaultOf("FREQ=DAILY;COUNT=10000"), "");
}

TEST_F(RefusedRulesTest, NobodyWaitsForOneThatIsNotRefused)
{
    // Something at first, then nothing for a thousand years or ever.
    for (const char *rule :
         {"FREQ=SECONDLY;UNTIL=99991231;BYMONTH=3;BYMONTHDAY=14;BYHOUR=7;INTERVAL=999999937",
          "FREQ=SECONDLY;INTERVAL=86399;BYHOUR=6;BYMINUTE=55;BYSECOND=0",
          "FREQ=YEARLY;INTERVAL=99;BYMONTH=2;BYMONTHDAY=29;BYDAY=SU",
          "FREQ=YEARLY;INTERVAL=1000000000;BYMONTHDAY=14"}) {
        Recurrence asked = recurrence(rule, "2026-03-14T06:55:00", {"2026-03-14T00:00:00"});
        for (const char *zone : {"UTC", "Europe/Paris"}) {
            const auto made = OccurrenceSeries::of(asked, QTimeZone(zone));
            if (!made)
                continue; // that they may be, too
            for (const char *date :
                 {"2026-03-14T12:00:00Z", "2100-01-01T00:00:00Z", "9999-01-01T00:00:00Z"}) {
                const double before = computed();
                const auto after = made->after(utc(date));
                const auto upTo = made->upTo(utc(date));
                const auto run = made->between(utc("2026-01-01T00:00:00Z"), utc(date));
                EXPECT_LT(computed() - before, 4 * longestRefusal) << rule << " " << date;
                EXPECT_TRUE(!after || *after > utc(date));
                EXPECT_TRUE(!upTo || *upTo <= utc(date));
                EXPECT_GE(run.count, 1);
            }
        }
    }
}

TEST_F(RefusedRulesTest, QuoteNoMoreOfTheRuleThanFitsALine)
{
    const std::string fault = faultOf(qPrintable("FREQ=DAILY;BYHOUR=" + QString(4000, '9')));
    EXPECT_LT(fault.size(), 150u);
    EXPECT_LT(faultOf(qPrintable("FREQ=DAILY;" + QString(4000, 'X'))).size(), 150u);
}
