// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/RuleWords.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

namespace
{
/// It begins on a Saturday.
Recurrence recurrence(const QString &rule)
{
    return {rule, {{2026, 3, 14}, {22, 0}}, {}, {}, {}};
}

QString words(const QString &rule)
{
    return RuleWords::of(recurrence(rule));
}
} // namespace

TEST(RuleWords, WhatPeopleSayIsSaidSo)
{
    for (const auto &[rule, text] : {
             std::pair("FREQ=DAILY", "every day at 22:00"),
             {"FREQ=DAILY;INTERVAL=3", "every 3 days at 22:00"},
             {"FREQ=DAILY;BYDAY=SA,SU", "every Saturday and Sunday at 22:00"},
             {"freq=weekly;byday=mo,tu,we,th,fr", "every weekday at 22:00"},
             {"FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR,SA,SU", "every day at 22:00"},
             {"FREQ=WEEKLY", "every Saturday at 22:00"},
             {"FREQ=WEEKLY;BYDAY=TH,MO,WE", "every Monday, Wednesday and Thursday at 22:00"},
             {"FREQ=WEEKLY;INTERVAL=2;BYDAY=MO", "every 2 weeks on Monday at 22:00"},
             {"FREQ=MONTHLY", "every month on the 14th at 22:00"},
             {"FREQ=MONTHLY;BYMONTHDAY=1,22,-1",
              "every month on the 1st, the 22nd and the last day at 22:00"},
             {"FREQ=MONTHLY;BYMONTHDAY=11,12,13,23",
              "every month on the 11th, the 12th, the 13th and the 23rd at 22:00"},
             {"FREQ=MONTHLY;BYDAY=1MO,-1FR", "every month on the first Monday and the last Friday at 22:00"},
             {"FREQ=YEARLY", "every year on 14 March at 22:00"},
             {"FREQ=YEARLY;BYMONTH=12;BYMONTHDAY=24", "every year on 24 December at 22:00"},
             {"FREQ=HOURLY", "every hour"},
             {"FREQ=HOURLY;INTERVAL=2", "every 2 hours"},
             {"FREQ=MINUTELY;INTERVAL=15", "every 15 minutes"},
             {"FREQ=SECONDLY", "every second"},
         })
        EXPECT_EQ(words(rule), text) << rule;
}

TEST(RuleWords, TheTimesOfDayAreThoseOfTheRule)
{
    EXPECT_EQ(words("FREQ=DAILY;BYHOUR=6,22;BYMINUTE=30"), "every day at 06:30 and 22:30");
    EXPECT_EQ(words("FREQ=DAILY;BYHOUR=6;BYMINUTE=0;BYSECOND=5"), "every day at 06:00:05");
    EXPECT_EQ(words("FREQ=DAILY;BYHOUR=1,2,3,4,5,6,7"), "by the rule FREQ=DAILY;BYHOUR=1,2,3,4,5,6,7");
}

TEST(RuleWords, TheEndIsTold)
{
    EXPECT_EQ(words("FREQ=DAILY;COUNT=10"), "every day at 22:00, 10 times");
    EXPECT_EQ(words("FREQ=DAILY;COUNT=1"), "every day at 22:00, once");
    EXPECT_EQ(words("FREQ=DAILY;UNTIL=20261231"), "every day at 22:00, until 31 December 2026");
    EXPECT_EQ(words("FREQ=DAILY;UNTIL=20261231T235959"), "every day at 22:00, until 31 December 2026");
    EXPECT_EQ(words("FREQ=DAILY;UNTIL=20261231T120000"),
              "every day at 22:00, until 31 December 2026 at 12:00");
    EXPECT_EQ(words("FREQ=DAILY;UNTIL=20261231T120000Z"),
              "every day at 22:00, until 31 December 2026 at 12:00 UTC");
}

TEST(RuleWords, ExtraAndExcludedDaysAreTold)
{
    Recurrence daily = recurrence("FREQ=DAILY");
    daily.extraDates = {{{2026, 4, 1}, {6, 0}}};
    for (int day = 1; day <= 5; ++day)
        daily.excludedDates += {WallTime{{2026, 5, day}, {22, 0}}, WallTime{{2026, 5, day}, {23, 0}}};
    EXPECT_EQ(RuleWords::of(daily),
              "every day at 22:00, and on 1 April 2026, except on 1 May 2026, 2 May 2026, "
              "3 May 2026 and 2 other days");
}

TEST(RuleWords, WhatThereAreNoWordsForIsTheRule)
{
    for (const char *rule :
         {"FREQ=MONTHLY;BYDAY=MO,TU;BYSETPOS=-1", "FREQ=YEARLY;BYWEEKNO=20", "FREQ=YEARLY;BYYEARDAY=100",
          "FREQ=YEARLY;BYMONTH=1,2;BYMONTHDAY=3", "FREQ=MONTHLY;BYMONTHDAY=-2", "FREQ=MONTHLY;BYDAY=FR",
          "FREQ=MONTHLY;BYDAY=1FR;BYMONTHDAY=3", "FREQ=MONTHLY;BYDAY=-2FR", "FREQ=HOURLY;BYHOUR=9",
          "FREQ=DAILY;INTERVAL=2;BYDAY=MO", "FREQ=DAILY;BYMONTH=3", "FREQ=WEEKLY;BYMONTH=3",
          "FREQ=YEARLY;BYMONTH=3", "FREQ=YEARLY;BYMONTHDAY=-1;BYMONTH=2", "nonsense", ""})
        EXPECT_EQ(words(rule), QString("by the rule ") + rule);
}
