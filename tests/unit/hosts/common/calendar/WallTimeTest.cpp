// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/WallTime.h"

#include <QTimeZone>

#include <gtest/gtest.h>

TEST(WallTime, IsReadAsItIsWritten)
{
    for (const char *text : {"2026-03-14T06:55:00", "0001-01-01T00:00:00", "9999-12-31T23:59:59"}) {
        const auto wallTime = WallTime::fromString(text);
        ASSERT_TRUE(wallTime) << text;
        EXPECT_EQ(wallTime->toString(), text);
    }
    EXPECT_EQ(*WallTime::fromString("2026-03-14T06:55:01"), (WallTime{{2026, 3, 14}, {6, 55, 1}}));
}

TEST(WallTime, IsReadFromNoOtherText)
{
    for (const char *text : {"",
                             "2026-03-14",
                             "2026-03-14 06:55:00",
                             "2026-03-14T06:55",
                             "2026-03-14T06:55:00Z",
                             "2026-03-14T06:55:00.5",
                             " 2026-03-14T06:55:00",
                             "2026-03-14T06:55:00 ",
                             "2026-3-14T06:55:00",
                             "2026-02-29T06:55:00",
                             "2026-13-14T06:55:00",
                             "2026-03-14T24:00:00",
                             "2026-03-14T06:55:60",
                             "0000-03-14T06:55:00",
                             "-001-03-14T06:55:00",
                             "10000-03-14T06:55:00",
                             "20260314T065500",
                             "2026-03-14T0/:55:00",
                             "2026-03-14T0x:55:00",
                             "2026-03-1:T06:55:00"})
        EXPECT_FALSE(WallTime::fromString(text)) << text;
}

TEST(WallTime, OfADateIsWhatClocksOfItsOwnZoneShow)
{
    const QDateTime date({2026, 3, 14}, QTime(12, 0, 59, 999), QTimeZone("Asia/Kathmandu"));
    EXPECT_EQ(WallTime::of(date).toString(), "2026-03-14T12:00:59");
    EXPECT_EQ(WallTime::of(date.toUTC()).toString(), "2026-03-14T06:15:59");
    EXPECT_FALSE(WallTime::of(QDateTime()).isValid());
    EXPECT_EQ(WallTime().toString(), "");
}

TEST(WallTime, IsOrderedByDayAndThenByTime)
{
    const WallTime early{{2026, 3, 14}, {6, 0}};
    const WallTime late{{2026, 3, 14}, {7, 0}};
    const WallTime nextDay{{2026, 3, 15}, {1, 0}};
    EXPECT_TRUE(early < late && late < nextDay && early < nextDay);
    EXPECT_FALSE(late < early || early < early);
}
