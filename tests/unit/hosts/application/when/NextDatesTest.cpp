// SPDX-License-Identifier: MIT
#include "hosts/application/when/NextDates.h"

#include "unit/hosts/application/when/TimingFixture.h"

#include <QSignalSpy>

using namespace std::chrono_literals;

class NextDatesTest : public TimingFixture
{
protected:
    NextDatesTest()
    {
        qputenv("TZ", zone);
        next.setLocale(QLocale("en_GB"));
    }

    NextDates &showing(const Recurrence &recurrence, const QString &timeZone = {})
    {
        next.setSchedule(utc("2026-03-14T21:00:00Z"), timeZone, recurrence);
        return next;
    }

    NextDates next;
};

TEST_F(NextDatesTest, AreTheNextFiveInWords)
{
    EXPECT_EQ(showing(recurrence("FREQ=DAILY;INTERVAL=2")).lines(),
              QStringList({"today 22:00", "Monday 22:00", "Wednesday 22:00", "Friday 22:00",
                           "22 March 2026, 22:00"}));
    EXPECT_EQ(next.text().count('\n'), 4);
    EXPECT_EQ(next.accessibleName(), "Next dates");
    EXPECT_EQ(next.accessibleDescription(), next.text());
}

TEST_F(NextDatesTest, AreFewerWhereItEnds)
{
    EXPECT_EQ(showing(recurrence("FREQ=DAILY;COUNT=2")).lines(),
              QStringList({"today 22:00", "tomorrow 22:00"}));
    clock->jumpTo(utc("2026-03-20T00:00:00Z"));
    EXPECT_EQ(showing(recurrence("FREQ=DAILY;COUNT=2")).lines(),
              QStringList("Nothing comes of it any more."));
    EXPECT_EQ(showing(recurrence("NONSENSE")).lines(), QStringList("Nothing comes of it any more."));
    next.clearSchedule();
    EXPECT_EQ(next.text(), "");
}

TEST_F(NextDatesTest, OfWhatTakesPlaceOnceIsThatMoment)
{
    next.setSchedule(utc("2026-03-15T05:55:00Z"), "", {});
    EXPECT_EQ(next.lines(), QStringList("tomorrow 06:55"));
    next.setSchedule(utc("2026-03-14T05:55:00Z"), "", {});
    EXPECT_EQ(next.lines(), QStringList("That is past."));
}

TEST_F(NextDatesTest, SayWhereClocksChange)
{
    clock->jumpTo(utc("2026-03-27T12:00:00Z"));
    EXPECT_EQ(showing(recurrence("FREQ=DAILY", "2026-03-14T02:30:00")).lines().mid(0, 3),
              QStringList({"tomorrow 02:30", "Sunday 03:30: clocks skip 02:30", "Monday 02:30"}));
    EXPECT_EQ(
        showing(recurrence("FREQ=DAILY", "2026-03-14T06:00:00")).lines().mid(0, 3),
        QStringList({"tomorrow 06:00", "Sunday 06:00: clocks are set forward before it", "Monday 06:00"}));
    clock->jumpTo(utc("2026-10-24T12:00:00Z"));
    EXPECT_EQ(showing(recurrence("FREQ=DAILY", "2026-03-14T06:00:00")).lines().mid(0, 2),
              QStringList({"tomorrow 06:00: clocks are set back before it", "Monday 06:00"}));
}

TEST_F(NextDatesTest, OfAnotherZoneHaveItsTimeBeside)
{
    EXPECT_EQ(showing(recurrence("FREQ=DAILY;COUNT=1"), "Asia/Tokyo").lines(),
              QStringList("today 14:00 (22:00 in Asia/Tokyo)"));
    EXPECT_EQ(showing(recurrence("FREQ=DAILY;COUNT=1"), "Europe/Paris").lines(), QStringList("today 22:00"));
}

TEST_F(NextDatesTest, StayRightWhenADateHasComeAndAfterMidnight)
{
    showing(recurrence("FREQ=DAILY"));
    clock->advance(15h - 1ms);
    EXPECT_EQ(next.lines().constFirst(), "today 22:00");
    clock->advance(1ms);
    EXPECT_EQ(next.lines().constFirst(), "tomorrow 22:00");
    clock->advance(2h - 1ms);
    EXPECT_EQ(next.lines().constFirst(), "tomorrow 22:00");
    clock->advance(1ms);
    EXPECT_EQ(next.lines().constFirst(), "today 22:00");
    clock->jumpTo(utc("2026-03-20T22:00:00Z"));
    EXPECT_EQ(next.lines().constFirst(), "tomorrow 22:00"); // it is 23:00
    clock->jumpTo(utc("2026-03-20T12:00:00Z"));
    EXPECT_EQ(next.lines().constFirst(), "today 22:00");
    EXPECT_EQ(next.lines().constLast(), "Tuesday 22:00");
}

TEST_F(NextDatesTest, LookNoMoreThanOnceAMinute)
{
    showing(recurrence("FREQ=SECONDLY", "2026-03-14T07:00:00"));
    EXPECT_EQ(next.lines().constFirst(), "today 07:00:01");
    clock->advance(59s);
    EXPECT_EQ(next.lines().constFirst(), "today 07:00:01");
    clock->advance(1s);
    EXPECT_EQ(next.lines().constFirst(), "today 07:01:01");
}

TEST_F(NextDatesTest, AreSaidAnewWhenTheLocaleChanges)
{
    showing(recurrence("FREQ=WEEKLY"));
    EXPECT_EQ(next.lines().constLast(), "11 April 2026, 22:00");
    next.setLocale(QLocale("de_DE"));
    EXPECT_EQ(next.lines().constLast(), "11. April 2026, 22:00");
    EXPECT_EQ(next.accessibleDescription(), next.text());
}
