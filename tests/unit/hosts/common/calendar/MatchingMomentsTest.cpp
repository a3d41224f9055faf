// SPDX-License-Identifier: MIT
//
// Rules whose parts can be tried on every moment by themselves, without a calendar's cleverness.
#include "support/PrintTo.h"
#include "unit/hosts/common/calendar/SeriesFixture.h"

#include <functional>

namespace
{
/// A rule in UTC, and the same again: the days on which it may take place and the times of such a day; of
/// those the ones count that are a multiple of `interval` seconds from the start.
struct Case {
    const char *rule;
    std::function<bool(const QDate &)> isOn;
    QList<int> hours{0};
    QList<int> minutes{0};
    QList<int> seconds{0};
    qint64 interval = 1;
    std::function<bool(int hour, int minute)> isAt = [](int, int) { return true; };
};

constexpr char start[] = "2026-01-01T00:00:00"; // a Thursday
const QDate firstDay(2026, 1, 1);
const QDate lastDay(2028, 3, 1);
const QDateTime afterAll(lastDay.addDays(1), {0, 0}, Qt::UTC);

QList<int> upTo(int last)
{
    QList<int> numbers;
    for (int number = 0; number <= last; ++number)
        numbers += number;
    return numbers;
}

int fromEnd(const QDate &day)
{
    return day.day() - day.daysInMonth() - 1;
}

qint64 daysSinceStart(const QDate &day)
{
    return firstDay.daysTo(day);
}

/// Weeks since that of the start, which begin on that day.
qint64 weeksSinceStart(const QDate &day, int firstOfWeek)
{
    const QDate monday = firstDay.addDays(-((firstDay.dayOfWeek() - firstOfWeek + 7) % 7));
    return monday.daysTo(day) / 7;
}

int monthsSinceStart(const QDate &day)
{
    return (day.year() - firstDay.year()) * 12 + day.month() - 1;
}

const QList<Case> cases{
    {"FREQ=HOURLY;BYMONTH=3,5;BYMONTHDAY=20,-1",
     [](const QDate &day) {
         return (day.month() == 3 || day.month() == 5) && (day.day() == 20 || fromEnd(day) == -1);
     },
     upTo(23)},
    {"FREQ=HOURLY;INTERVAL=5;BYDAY=TU,SA",
     [](const QDate &day) { return day.dayOfWeek() == 2 || day.dayOfWeek() == 6; },
     upTo(23),
     {0},
     {0},
     5 * 3600},
    {"FREQ=HOURLY;BYHOUR=0,9,23;BYMINUTE=15,45;BYDAY=MO",
     [](const QDate &day) { return day.dayOfWeek() == 1; },
     {0, 9, 23},
     {15, 45}},
    {"FREQ=HOURLY;BYYEARDAY=60,-1;BYSECOND=7,59",
     [](const QDate &day) { return day.dayOfYear() == 60 || day.dayOfYear() == day.daysInYear(); },
     upTo(23),
     {0},
     {7, 59}},
    {"FREQ=MINUTELY;INTERVAL=7;BYHOUR=3,22;BYMONTH=2",
     [](const QDate &day) { return day.month() == 2; },
     {3, 22},
     upTo(59),
     {0},
     7 * 60},
    {"FREQ=MINUTELY;BYMINUTE=0,59;BYHOUR=12;BYMONTHDAY=1",
     [](const QDate &day) { return day.day() == 1; },
     {12},
     {0, 59}},
    {"FREQ=SECONDLY;INTERVAL=3;BYSECOND=5,6,50;BYMINUTE=0,30;BYHOUR=8;BYDAY=SU;BYMONTH=1",
     [](const QDate &day) { return day.dayOfWeek() == 7 && day.month() == 1; },
     {8},
     {0, 30},
     {5, 6, 50},
     3},
    {"FREQ=DAILY;INTERVAL=3;BYMONTH=2,11",
     [](const QDate &day) {
         return (day.month() == 2 || day.month() == 11) && daysSinceStart(day) % 3 == 0;
     }},
    {"FREQ=DAILY;BYMONTHDAY=-2,15;BYMONTH=12,1",
     [](const QDate &day) {
         return (day.month() == 12 || day.month() == 1) && (day.day() == 15 || fromEnd(day) == -2);
     }},
    {"FREQ=DAILY;BYMONTH=11", [](const QDate &day) { return day.month() == 11; }},
    {"FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,SU;BYMONTH=6,12",
     [](const QDate &day) {
         return (day.dayOfWeek() == 1 || day.dayOfWeek() == 7) && (day.month() == 6 || day.month() == 12) &&
                weeksSinceStart(day, 1) % 2 == 0;
     }},
    {"FREQ=WEEKLY;INTERVAL=3;WKST=SU;BYDAY=MO,SU,SA",
     [](const QDate &day) {
         return (day.dayOfWeek() == 1 || day.dayOfWeek() >= 6) && weeksSinceStart(day, 7) % 3 == 0;
     }},
    {"FREQ=MONTHLY;INTERVAL=7;BYMONTHDAY=31",
     [](const QDate &day) { return day.day() == 31 && monthsSinceStart(day) % 7 == 0; }},
    {"FREQ=MONTHLY;BYDAY=2TU,-1FR;BYMONTH=2,3",
     [](const QDate &day) {
         return (day.month() == 2 || day.month() == 3) &&
                ((day.dayOfWeek() == 2 && day.day() > 7 && day.day() <= 14) ||
                 (day.dayOfWeek() == 5 && fromEnd(day) >= -7));
     }},
    {"FREQ=HOURLY;BYMONTH=5;BYMONTHDAY=2;BYMINUTE=15,30,45;BYSETPOS=2,-1",
     [](const QDate &day) { return day.month() == 5 && day.day() == 2; },
     upTo(23),
     {30, 45}},
    {"FREQ=DAILY;BYDAY=WE;BYHOUR=6,12,18;BYMINUTE=10,50;BYSETPOS=1,3,-1,-1",
     [](const QDate &day) { return day.dayOfWeek() == 3; },
     {6, 12, 18},
     {10, 50},
     {0},
     1,
     [](int hour, int minute) { return (hour != 18 && minute == 10) || (hour == 18 && minute == 50); }},
    {"FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1",
     [](const QDate &day) {
         return day.dayOfWeek() <= 5 && (fromEnd(day) == -1 || (day.dayOfWeek() == 5 && fromEnd(day) >= -3));
     }},
    {"FREQ=YEARLY;BYMONTH=11;BYDAY=TH",
     [](const QDate &day) { return day.month() == 11 && day.dayOfWeek() == 4; }},
    {"FREQ=YEARLY;BYYEARDAY=-1,100",
     [](const QDate &day) { return day.dayOfYear() == 100 || day.dayOfYear() == day.daysInYear(); }},
    {"FREQ=YEARLY;BYWEEKNO=1,20;BYDAY=MO",
     [](const QDate &day) {
         return day.dayOfWeek() == 1 && (day.weekNumber() == 1 || day.weekNumber() == 20);
     }},
};

QList<QDateTime> moments(const Case &each)
{
    QList<QDateTime> moments;
    for (QDate day = firstDay; day <= lastDay; day = day.addDays(1)) {
        if (!each.isOn(day))
            continue;
        for (const int hour : each.hours) {
            for (const int minute : each.minutes) {
                for (const int second : each.seconds) {
                    const qint64 passed = daysSinceStart(day) * 86400 + hour * 3600 + minute * 60 + second;
                    if (passed % each.interval == 0 && each.isAt(hour, minute))
                        moments += QDateTime(day, {hour, minute, second}, Qt::UTC);
                }
            }
        }
    }
    return moments;
}
} // namespace

class MatchingMomentsTest : public SeriesFixture
{
};

TEST_F(MatchingMomentsTest, AreThoseOfTheSeriesWhicheverWayItIsWalked)
{
    for (const Case &each : cases) {
        SCOPED_TRACE(each.rule);
        const OccurrenceSeries all = series(recurrence(each.rule, start), "UTC");
        const QList<QDateTime> expected = moments(each);
        ASSERT_GE(expected.size(), 3);
        QList<QDateTime> forward;
        for (auto next = all.first(); next && *next < afterAll; next = all.after(*next))
            forward += *next;
        EXPECT_EQ(forward, expected);
        QList<QDateTime> backward;
        for (auto last = all.upTo(afterAll.addSecs(-1)); last; last = all.upTo(last->addSecs(-1)))
            backward.prepend(*last);
        EXPECT_EQ(backward, expected);
    }
}

TEST_F(MatchingMomentsTest, AreFoundFromAnyDay)
{
    for (const Case &each : cases) {
        SCOPED_TRACE(each.rule);
        const OccurrenceSeries all = series(recurrence(each.rule, start), "UTC");
        const QList<QDateTime> expected = moments(each);
        for (QDateTime from(firstDay, {12, 34, 56}, Qt::UTC); from < afterAll; from = from.addDays(1)) {
            const auto next = std::upper_bound(expected.cbegin(), expected.cend(), from);
            if (next != expected.cend()) {
                EXPECT_EQ(all.after(from), *next) << qPrintable(from.toString());
            }
            const auto former = next == expected.cbegin() ? std::nullopt : std::optional(*std::prev(next));
            EXPECT_EQ(all.upTo(from), former) << qPrintable(from.toString());
        }
    }
}
