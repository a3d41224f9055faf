// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DateExtensions.h"

#include <QTimeZone>

#include <gtest/gtest.h>

#include <ctime>
#include <limits>

using namespace dozely;

using namespace zandorSoftwaresExtensions;

namespace
{
// A calendar date at noon of a day in a zone.
QDateTime noon(const char *zone, int year, int month, int day)
{
    return QDateTime({year, month, day}, QTime(12, 0), QTimeZone(zone));
}

// "2026-03-14T06:55:00+01:00"
QString written(const QDateTime &date)
{
    return date.toOffsetFromUtc(date.offsetFromUtc()).toString(Qt::ISODate);
}

void setLocalZone(const char *zone)
{
    qputenv("TZ", zone);
    ::tzset();
}
} // namespace

TEST(DateFromHour, IsTheSameDayAtThatHourAndMinuteAndSecondZero)
{
    const QDateTime date({2026, 3, 14}, QTime(23, 59, 58, 123), QTimeZone("Europe/Paris"));
    EXPECT_EQ(written(dateFromHour(6, 55, date)), QString("2026-03-14T06:55:00+01:00"));
    EXPECT_EQ(dateFromHour(6, 55, date).time().msec(), 0);
}

TEST(DateFromHour, KeepsTheZoneOfTheGivenDate)
{
    EXPECT_EQ(dateFromHour(6, 0, noon("Asia/Kathmandu", 2026, 3, 14)).timeZone(),
              QTimeZone("Asia/Kathmandu"));
    EXPECT_EQ(written(dateFromHour(6, 0, noon("Asia/Kathmandu", 2026, 3, 14))),
              QString("2026-03-14T06:00:00+05:45"));
    EXPECT_EQ(dateFromHour(6, 0, QDateTime({2026, 3, 14}, QTime(1, 0), Qt::UTC)),
              QDateTime({2026, 3, 14}, QTime(6, 0), Qt::UTC));
    EXPECT_EQ(written(dateFromHour(6, 0, QDateTime({2026, 3, 14}, QTime(1, 0), Qt::OffsetFromUTC, -12600))),
              QString("2026-03-14T06:00:00-03:30"));
}

TEST(DateFromHour, TakesTheDayFromTheDatesOwnZoneNotFromUtc)
{
    const QDateTime lateInNewYork({2026, 7, 4}, QTime(23, 30),
                                  QTimeZone("America/New_York")); // the 5th in UTC
    EXPECT_EQ(written(dateFromHour(8, 0, lateInNewYork)), QString("2026-07-04T08:00:00-04:00"));
}

TEST(DateFromHour, WorksInTheLocalZone)
{
    setLocalZone("America/New_York");
    const QDateTime date({2026, 7, 4}, QTime(12, 0), Qt::LocalTime);
    EXPECT_EQ(written(dateFromHour(8, 15, date)), QString("2026-07-04T08:15:00-04:00"));
    EXPECT_EQ(written(dateFromHour(2, 30, QDateTime({2026, 3, 8}, QTime(12, 0), Qt::LocalTime))),
              QString("2026-03-08T03:30:00-04:00"));
}

TEST(DateFromHour, RollsHoursAndMinutesBeyondTheirRangeOver)
{
    const QDateTime date = noon("Europe/Paris", 2026, 3, 14);
    EXPECT_EQ(written(dateFromHour(24, 0, date)), QString("2026-03-15T00:00:00+01:00"));
    EXPECT_EQ(written(dateFromHour(25, 90, date)), QString("2026-03-15T02:30:00+01:00"));
    EXPECT_EQ(written(dateFromHour(-1, 0, date)), QString("2026-03-13T23:00:00+01:00"));
    EXPECT_EQ(written(dateFromHour(0, -1, date)), QString("2026-03-13T23:59:00+01:00"));
    EXPECT_EQ(written(dateFromHour(24 * 31, 0, date)), QString("2026-04-14T00:00:00+02:00"));
}

TEST(DateFromHour, MovesASkippedTimeForwardByTheGap)
{
    EXPECT_EQ(written(dateFromHour(2, 30, noon("Europe/Paris", 2026, 3, 29))),
              QString("2026-03-29T03:30:00+02:00"));
    EXPECT_EQ(written(dateFromHour(2, 0, noon("America/New_York", 2026, 3, 8))),
              QString("2026-03-08T03:00:00-04:00"));
    // A gap of half an hour, in the southern spring.
    EXPECT_EQ(written(dateFromHour(2, 15, noon("Australia/Lord_Howe", 2026, 10, 4))),
              QString("2026-10-04T02:45:00+11:00"));
    // Midnight itself is skipped.
    EXPECT_EQ(written(dateFromHour(0, 0, noon("Africa/Cairo", 2026, 4, 24))),
              QString("2026-04-24T01:00:00+03:00"));
}

TEST(DateFromHour, MovesATimeOfADayThatWasSkippedWholeByADay)
{
    EXPECT_EQ(written(dateFromHour(36, 0, noon("Pacific/Apia", 2011, 12, 29))),
              QString("2011-12-31T12:00:00+14:00"));
}

TEST(DateFromHour, TakesTheFirstOfATimeThatOccursTwice)
{
    EXPECT_EQ(written(dateFromHour(2, 30, noon("Europe/Paris", 2026, 10, 25))),
              QString("2026-10-25T02:30:00+02:00"));
    EXPECT_EQ(written(dateFromHour(1, 30, noon("America/New_York", 2026, 11, 1))),
              QString("2026-11-01T01:30:00-04:00"));
    EXPECT_EQ(written(dateFromHour(1, 45, noon("Australia/Lord_Howe", 2026, 4, 5))),
              QString("2026-04-05T01:45:00+11:00"));
}

TEST(DateFromHour, IsExactJustBeforeAndJustAfterAChange)
{
    EXPECT_EQ(written(dateFromHour(1, 59, noon("Europe/Paris", 2026, 3, 29))),
              QString("2026-03-29T01:59:00+01:00"));
    EXPECT_EQ(written(dateFromHour(3, 0, noon("Europe/Paris", 2026, 3, 29))),
              QString("2026-03-29T03:00:00+02:00"));
    EXPECT_EQ(written(dateFromHour(3, 0, noon("Europe/Paris", 2026, 10, 25))),
              QString("2026-10-25T03:00:00+01:00"));
}

TEST(DateFromHour, ShowsTheAskedWallTimeOnEveryDayOfYearsUnlessItIsSkipped)
{
    for (const char *zone :
         {"Europe/Paris", "America/Santiago", "Africa/Casablanca", "Asia/Kolkata", "Pacific/Chatham"}) {
        int skipped = 0;
        for (QDateTime day = noon(zone, 2020, 1, 1); day.date().year() < 2030; day = day.addDays(1)) {
            for (const int hour : {0, 1, 2, 3, 23}) {
                const QDateTime date = dateFromHour(hour, 30, day);
                ASSERT_EQ(date.date(), day.date()) << zone << qPrintable(written(date));
                skipped += date.time() != QTime(hour, 30);
            }
        }
        EXPECT_LE(skipped, 10) << zone; // at most one a year
    }
}

TEST(DateFromHour, OfAnInvalidDateIsInvalid)
{
    EXPECT_FALSE(dateFromHour(6, 55, QDateTime()).isValid());
}

TEST(DateFromHour, TakesTheLargestNumbersWithoutOverflow)
{
    constexpr qint32 most = std::numeric_limits<qint32>::max();
    const QDateTime date({2026, 3, 14}, QTime(0, 0), Qt::UTC);
    EXPECT_EQ(date.msecsTo(dateFromHour(most, most, date)), qint64(most) * 3'660'000);
    EXPECT_EQ(date.msecsTo(dateFromHour(-most, -most, date)), -qint64(most) * 3'660'000);
}

TEST(DateAtWallTime, FollowsTheRuleOfDateFromHourToTheMillisecond)
{
    const QTimeZone paris("Europe/Paris");
    EXPECT_EQ(written(dateAtWallTime({2026, 3, 14}, QTime(6, 55, 59), paris)), "2026-03-14T06:55:59+01:00");
    EXPECT_EQ(dateAtWallTime({2026, 3, 14}, QTime(0, 0, 0, 1), paris).time().msec(), 1);
    EXPECT_EQ(written(dateAtWallTime({2026, 3, 29}, QTime(2, 30, 1), paris)), "2026-03-29T03:30:01+02:00");
    EXPECT_EQ(written(dateAtWallTime({2026, 10, 25}, QTime(2, 30, 1), paris)), "2026-10-25T02:30:01+02:00");
    EXPECT_EQ(dateAtWallTime({2026, 3, 14}, QTime(6, 0), paris).timeZone(), paris);
}

TEST(DateAtWallTime, MovesADayThatWasSkippedWholeForwardByADay)
{
    const QTimeZone apia("Pacific/Apia");
    EXPECT_EQ(written(dateAtWallTime({2011, 12, 30}, QTime(6, 0), apia)), "2011-12-31T06:00:00+14:00");
}

TEST(DateAtWallTime, IsInvalidWhereSomethingIs)
{
    EXPECT_FALSE(dateAtWallTime(QDate(), QTime(6, 0), QTimeZone::utc()).isValid());
    EXPECT_FALSE(dateAtWallTime({2026, 3, 14}, QTime(), QTimeZone::utc()).isValid());
    EXPECT_FALSE(dateAtWallTime({2026, 3, 14}, QTime(6, 0), QTimeZone()).isValid());
}

TEST(CalendarDate, IsTheSameMomentInTheZone)
{
    const QDateTime date({2026, 3, 14}, QTime(12, 0), Qt::UTC);
    EXPECT_EQ(written(calendarDate(date, "Asia/Kathmandu")), "2026-03-14T17:45:00+05:45");
    EXPECT_EQ(calendarDate(date, QString()).timeSpec(), Qt::UTC);
    EXPECT_EQ(calendarDate(date, QString()), date);
}

TEST(TimeZoneName, IsOneOfTheDatabaseAndNeitherARuleNorAPath)
{
    for (const char *name : {"Europe/Paris", "US/Pacific", "Etc/UTC", "UTC"})
        EXPECT_TRUE(isTimeZoneName(name)) << name;
    for (const char *name :
         {"", "Nowhere/Else", "CET-1", "Europe", "../zoneinfo/Europe/Paris", "/etc/localtime"})
        EXPECT_FALSE(isTimeZoneName(name)) << name;
}

TEST(HourAndMinute, AreThoseOfTheLocalTimeZone)
{
    setLocalZone("Asia/Kathmandu"); // 5:45 ahead
    const QDateTime date({2026, 3, 14}, QTime(20, 30), Qt::UTC);
    EXPECT_EQ(hour(date), 2);
    EXPECT_EQ(minute(date), 15);
    setLocalZone("America/New_York");
    EXPECT_EQ(hour(date), 16);
    EXPECT_EQ(minute(date), 30);
}

TEST(HourAndMinute, OfADateInAnotherZoneAreStillLocal)
{
    setLocalZone("Europe/Paris");
    EXPECT_EQ(hour(QDateTime({2026, 7, 14}, QTime(23, 5), QTimeZone("America/New_York"))), 5);
    EXPECT_EQ(minute(QDateTime({2026, 7, 14}, QTime(23, 5), QTimeZone("America/New_York"))), 5);
}

TEST(HourAndMinute, ReachFromZeroToTheEndOfTheDay)
{
    setLocalZone("UTC");
    EXPECT_EQ(hour(QDateTime({2026, 3, 14}, QTime(0, 0), Qt::UTC)), 0);
    EXPECT_EQ(minute(QDateTime({2026, 3, 14}, QTime(0, 0), Qt::UTC)), 0);
    EXPECT_EQ(hour(QDateTime({2026, 3, 14}, QTime(23, 59, 59, 999), Qt::UTC)), 23);
    EXPECT_EQ(minute(QDateTime({2026, 3, 14}, QTime(23, 59, 59, 999), Qt::UTC)), 59);
}
