// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ZoneClock.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
constexpr qint64 hour = 3'600'000;

qint64 moment(const char *text)
{
    return QDateTime::fromString(text, Qt::ISODate).toMSecsSinceEpoch();
}

/// A wall time, as if it were UTC.
qint64 wall(const char *text)
{
    return moment(qPrintable(QString(text) + 'Z'));
}

QString written(qint64 milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(Qt::ISODate);
}

qint64 offsetAt(const QTimeZone &zone, qint64 at)
{
    return qint64(zone.offsetFromUtc(QDateTime::fromMSecsSinceEpoch(at, Qt::UTC))) * 1000;
}
} // namespace

TEST(ZoneClock, KnowsTheStretchBetweenTwoChanges)
{
    const ZoneClock clock{QTimeZone("Europe/Paris")};
    const ZoneClock::Stretch summer = clock.stretchAt(moment("2026-07-01T00:00:00Z"));
    EXPECT_EQ(written(summer.begin), "2026-03-29T01:00:00Z");
    EXPECT_EQ(written(summer.end), "2026-10-25T01:00:00Z");
    EXPECT_EQ(summer.offset, 2 * hour);
    EXPECT_EQ(summer.offsetBefore, hour);
    EXPECT_EQ(summer.gap(), hour);
    EXPECT_TRUE(summer.holds(summer.begin) && summer.holds(summer.end - 1));
    EXPECT_FALSE(summer.holds(summer.begin - 1) || summer.holds(summer.end));
    EXPECT_EQ(clock.stretchAt(summer.begin).begin, summer.begin);
    EXPECT_EQ(clock.stretchAt(summer.end).begin, summer.end);
    EXPECT_EQ(clock.stretchAt(summer.begin - 1).end, summer.begin);
}

TEST(ZoneClock, TakesAnotherNameOfTheSameTimeForNoChange)
{
    // Alaska's clocks went forward in April 1983 and stayed so, by two more names, until the next April.
    for (const char *within : {"1983-04-24T12:00:00Z", "1983-11-01T00:00:00Z", "1984-01-15T00:00:00Z"}) {
        const ZoneClock clock{QTimeZone("America/Anchorage")}; // which remembers none yet
        const ZoneClock::Stretch stretch = clock.stretchAt(moment(within));
        EXPECT_EQ(written(stretch.begin), "1983-04-24T12:00:00Z") << within;
        EXPECT_EQ(written(stretch.end), "1984-04-29T11:00:00Z") << within;
        EXPECT_EQ(stretch.offset, -9 * hour) << within;
        EXPECT_EQ(stretch.gap(), hour) << within;
    }
}

TEST(ZoneClock, OfAZoneWithoutChangesHasOneStretch)
{
    for (const char *name : {"UTC", "Etc/GMT-5", "UTC+03:30"}) {
        const ZoneClock clock{QTimeZone(name)};
        const ZoneClock::Stretch all = clock.stretchAt(0);
        EXPECT_EQ(all.begin, ZoneClock::noBegin) << name;
        EXPECT_EQ(all.end, ZoneClock::noEnd) << name;
        EXPECT_EQ(all.gap(), 0) << name;
        EXPECT_EQ(clock.momentOf(0), -all.offset) << name;
    }
    EXPECT_EQ(ZoneClock(QTimeZone()).wallTimeAt(5), 5);
    EXPECT_EQ(ZoneClock::of(QDateTime({2026, 3, 14}, QTime(1, 0), Qt::OffsetFromUTC, 3600)).wallTimeAt(5),
              hour + 5);
}

TEST(ZoneClock, HasAFirstStretchAndGoesOnBeyondTheLastListedChange)
{
    const ZoneClock paris{QTimeZone("Europe/Paris")};
    EXPECT_EQ(paris.stretchAt(moment("1600-01-01T00:00:00Z")).begin, ZoneClock::noBegin);
    for (const int year : {2036, 2037, 2038, 2100, 9000}) {
        const QString text = QString::number(year);
        const ZoneClock::Stretch summer = paris.stretchAt(moment(qPrintable(text + "-07-01T00:00:00Z")));
        EXPECT_EQ(summer.offset, 2 * hour) << year;
        EXPECT_TRUE(written(summer.begin).startsWith(text + "-03-")) << year;
        EXPECT_TRUE(written(summer.end).startsWith(text + "-10-")) << year;
    }
    const ZoneClock tokyo{QTimeZone("Asia/Tokyo")};
    EXPECT_EQ(tokyo.stretchAt(moment("2026-01-01T00:00:00Z")).end, ZoneClock::noEnd);
}

TEST(ZoneClock, HasInEveryZoneTheOffsetThatTheZoneHas)
{
    const qint64 first = moment("1840-01-01T00:00:00Z");
    const qint64 last = moment("2045-01-01T00:00:00Z");
    for (const QByteArray &name : QTimeZone::availableTimeZoneIds()) {
        const QTimeZone zone(name);
        const ZoneClock clock(zone);
        ZoneClock::Stretch stretch = clock.stretchAt(first);
        for (qint64 at = first; at < last; at += 11 * 24 * hour) {
            while (stretch.end <= at) {
                ASSERT_EQ(offsetAt(zone, stretch.end - 1), stretch.offset)
                    << name.constData() << written(stretch.end).toStdString();
                const ZoneClock::Stretch next = clock.stretchAt(stretch.end);
                ASSERT_EQ(next.begin, stretch.end) << name.constData();
                ASSERT_EQ(next.offsetBefore, stretch.offset) << name.constData();
                stretch = next;
            }
            ASSERT_EQ(offsetAt(zone, at), stretch.offset) << name.constData() << written(at).toStdString();
        }
    }
}

TEST(ZoneClock, ComesFromWallTimesToMomentsInEveryOrderTheSame)
{
    const ZoneClock kept{QTimeZone("Europe/Paris")};
    for (const char *text :
         {"2026-03-29T01:59:59", "2026-03-29T02:30:00", "2026-10-25T02:30:00", "2026-03-29T03:00:00",
          "2026-10-25T01:59:59", "1900-01-01T00:00:00", "2026-10-25T03:00:00", "2050-07-01T00:00:00"})
        EXPECT_EQ(kept.momentOf(wall(text)), ZoneClock(QTimeZone("Europe/Paris")).momentOf(wall(text)))
            << text;
    EXPECT_EQ(written(kept.momentOf(wall("2026-03-29T02:30:00"))), "2026-03-29T01:30:00Z");
    EXPECT_EQ(written(kept.momentOf(wall("2026-10-25T02:30:00"))), "2026-10-25T00:30:00Z");
    EXPECT_EQ(written(kept.wallTimeAt(moment("2026-10-25T01:30:00Z"))), "2026-10-25T02:30:00Z");
}

TEST(ZoneClock, ManagesTwoChangesWithinTwoDays)
{
    // Summer time from the 10th of April at 02:00 to the 11th at 02:00 of summer: in a rule, since no zone
    // has it.
    const QTimeZone zone("AAA0BBB,J100/2,J101/2");
    ASSERT_TRUE(zone.isValid() && zone.hasTransitions());
    const ZoneClock clock(zone);
    EXPECT_EQ(written(clock.momentOf(wall("2026-04-10T01:59:59"))), "2026-04-10T01:59:59Z");
    EXPECT_EQ(written(clock.momentOf(wall("2026-04-10T02:30:00"))),
              "2026-04-10T02:30:00Z"); // skipped: shows 03:30
    EXPECT_EQ(written(clock.momentOf(wall("2026-04-10T12:00:00"))), "2026-04-10T11:00:00Z");
    EXPECT_EQ(written(clock.momentOf(wall("2026-04-11T01:30:00"))),
              "2026-04-11T00:30:00Z"); // the first of two
    EXPECT_EQ(written(clock.momentOf(wall("2026-04-11T02:00:00"))), "2026-04-11T02:00:00Z");
}

TEST(ZoneClock, ManagesOffsetsThatAreADayApart)
{
    const ZoneClock apia{QTimeZone("Pacific/Apia")};
    EXPECT_EQ(written(apia.momentOf(wall("2011-12-29T23:59:59"))), "2011-12-30T09:59:59Z");
    EXPECT_EQ(written(apia.momentOf(wall("2011-12-30T12:00:00"))),
              "2011-12-30T22:00:00Z"); // shows the 31st, 12:00
    EXPECT_EQ(written(apia.momentOf(wall("2011-12-31T12:00:00"))), "2011-12-30T22:00:00Z");
    const ZoneClock manila{QTimeZone("Asia/Manila")}; // which skipped the last day of 1844
    EXPECT_EQ(manila.momentOf(wall("1844-12-31T12:00:00")), manila.momentOf(wall("1845-01-01T12:00:00")));
    const ZoneClock juneau{QTimeZone("America/Juneau")}; // which had a day of 1867 twice
    EXPECT_LT(juneau.momentOf(wall("1867-10-18T12:00:00")), moment("1867-10-18T12:00:00Z"));
}
