// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/FriendlyTerms.h"

#include "support/PrintTo.h"

#include <QTimeZone>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
QString timeIn(const QString &text)
{
    const auto time = FriendlyTerms::time(text);
    return time ? time->toString("HH:mm:ss") : time.error().text;
}

QString repetitionIn(const QString &text)
{
    const auto rule = FriendlyTerms::repetition(text);
    return rule ? *rule : rule.error().text;
}

QStringList momentsOf(const QDateTime &wallTime, const char *zone)
{
    QStringList moments;
    for (const QDateTime &moment :
         FriendlyTerms::momentsOf(wallTime.date(), wallTime.time(), QTimeZone(zone)))
        moments += moment.toString(Qt::ISODate);
    return moments;
}
} // namespace

TEST(FriendlyTerms, ATimeThatCanBeReadInOneWayIsRead)
{
    for (const auto &[text, time] : {std::pair("22:00", "22:00:00"),
                                     {"06:55:30", "06:55:30"},
                                     {"00:00", "00:00:00"},
                                     {"0:30", "00:30:00"},
                                     {"7:00", "07:00:00"},
                                     {"9:05:30", "09:05:30"},
                                     {"12:00", "12:00:00"},
                                     {"7 pm", "19:00:00"},
                                     {"7:15am", "07:15:00"},
                                     {"11 PM", "23:00:00"}})
        EXPECT_EQ(timeIn(text), time) << text;
}

TEST(FriendlyTerms, ATimeThatCanBeReadInTwoWaysIsRefusedWithBoth)
{
    for (const auto &[text, readings] : {std::pair("5", "05:00 or 17:00"), {"12 am", "00:00 or 12:00"}})
        EXPECT_EQ(timeIn(text), QString("\"%1\" can be %2").arg(text, readings));
}

TEST(FriendlyTerms, WhatIsNoTimeIsRefused)
{
    for (const char *text : {"", "22", "24:00", "22:60", "22:00:61", "22.00", "noon", " 22:00", "22:00 ",
                             "13 pm", "0 am", "-1:00", "022:00", "22:0"})
        EXPECT_EQ(timeIn(text), QString("\"%1\" is not a time such as 22:00").arg(text));
}

TEST(FriendlyTerms, ARepetitionIsARule)
{
    for (const auto &[text, rule] : {std::pair("day", "FREQ=DAILY"),
                                     {"weekday", "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR"},
                                     {"week", "FREQ=WEEKLY"},
                                     {"Month", "FREQ=MONTHLY"},
                                     {"year", "FREQ=YEARLY"},
                                     {"thursday,monday", "FREQ=WEEKLY;BYDAY=MO,TH"},
                                     {"Sun, tue", "FREQ=WEEKLY;BYDAY=TU,SU"},
                                     {"15m", "FREQ=MINUTELY;INTERVAL=15"},
                                     {"1h", "FREQ=HOURLY"},
                                     {"2s", "FREQ=SECONDLY;INTERVAL=2"}})
        EXPECT_EQ(repetitionIn(text), rule) << text;
}

TEST(FriendlyTerms, ARepetitionThatCanBeReadInTwoWaysIsRefusedWithBoth)
{
    EXPECT_EQ(repetitionIn("5"), "\"5\" can be 5m (minutes) or 5h (hours)");
    EXPECT_EQ(repetitionIn("monday,t"), "\"t\" can be tuesday or thursday");
    EXPECT_EQ(repetitionIn("s"), "\"s\" can be saturday or sunday");
}

TEST(FriendlyTerms, WhatIsNoRepetitionIsRefused)
{
    for (const char *text : {"", "often", "m", "0m", "-5m", "1.5h", "monday,", "2d", "1234567m"})
        EXPECT_EQ(
            repetitionIn(text),
            QString("\"%1\" is none of day, weekday, week, month and year, of days such as monday,thursday "
                    "and of distances such as 15m and 2h")
                .arg(text));
}

TEST(FriendlyTerms, DaysOfAMonthAreNumbersAndTheLast)
{
    EXPECT_EQ(*FriendlyTerms::monthDays("15, 1,last,1"), (QList<int>{1, 15, -1}));
    for (const char *text : {"", "0", "32", "-1", "1st", "1,,2", "monday"})
        EXPECT_FALSE(FriendlyTerms::monthDays(text)) << text;
    EXPECT_EQ(FriendlyTerms::monthDays("32").error().text,
              "\"32\" is no day of a month, which is 1 to 31, or last");
}

TEST(FriendlyTerms, ADurationHasAUnitOrIsInSeconds)
{
    for (const auto &[text, seconds] :
         {std::pair("90", 90), {"90s", 90}, {"10m", 600}, {"6h", 21600}, {"2d", 172800}, {"0", 0}})
        EXPECT_EQ(FriendlyTerms::duration(text)->count(), seconds) << text;
    for (const char *text : {"", "m", "-1", "1.5h", "10 m", "99999999999", "9999999999", "36601d", "1w"})
        EXPECT_FALSE(FriendlyTerms::duration(text)) << text;
}

TEST(FriendlyTerms, AWallTimeHasNoMomentOrOneOrTwo)
{
    const QDate spring(2026, 3, 29);
    const QDate autumn(2026, 10, 25);
    EXPECT_EQ(momentsOf(QDateTime(spring, {2, 30}), "Europe/Berlin"), QStringList());
    EXPECT_EQ(momentsOf(QDateTime(spring, {3, 30}), "Europe/Berlin"), QStringList("2026-03-29T01:30:00Z"));
    EXPECT_EQ(momentsOf(QDateTime(autumn, {2, 30}), "Europe/Berlin"),
              QStringList({"2026-10-25T00:30:00Z", "2026-10-25T01:30:00Z"}));
    EXPECT_EQ(momentsOf(QDateTime(autumn, {3, 0}), "Europe/Berlin"), QStringList("2026-10-25T02:00:00Z"));
    EXPECT_EQ(momentsOf(QDateTime({2026, 4, 5}, {1, 45}), "Australia/Lord_Howe"),
              QStringList({"2026-04-04T14:45:00Z", "2026-04-04T15:15:00Z"}))
        << "half an hour";
}
