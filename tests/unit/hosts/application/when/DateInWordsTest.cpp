// SPDX-License-Identifier: MIT
#include "hosts/application/when/DateInWords.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

namespace
{
const QLocale british("en_GB");

/// On Saturday, 2026-03-14, at that time of a clock in Berlin.
QString words(const QString &moment, const QString &now = "12:00", const QLocale &locale = british,
              const QString &today = "2026-03-14")
{
    const QTimeZone zone("Europe/Berlin");
    const auto at = [&](const QString &text) {
        const QDateTime read = QDateTime::fromString(text, "yyyy-MM-dd HH:mm");
        return QDateTime(read.date(), read.time(), zone).toUTC();
    };
    return DateInWords::of(at(moment), at(today + " " + now), zone, locale);
}
} // namespace

TEST(DateInWords, DaysNearbyHaveNames)
{
    EXPECT_EQ(words("2026-03-14 22:00"), "today 22:00");
    EXPECT_EQ(words("2026-03-15 06:55"), "tomorrow 06:55");
    EXPECT_EQ(words("2026-03-13 06:55"), "yesterday 06:55");
    EXPECT_EQ(words("2026-03-16 22:00"), "Monday 22:00");
    EXPECT_EQ(words("2026-03-20 22:00"), "Friday 22:00");
    EXPECT_EQ(words("2026-03-21 22:00"), "21 March 2026, 22:00"); // a Saturday, too
    EXPECT_EQ(words("2026-03-12 22:00"), "12 March 2026, 22:00");
    EXPECT_EQ(words("2027-03-14 06:55"), "14 March 2027, 06:55");
}

TEST(DateInWords, MidnightIsWhereTomorrowBegins)
{
    EXPECT_EQ(words("2026-03-14 23:59", "23:58"), "today 23:59");
    EXPECT_EQ(words("2026-03-15 00:00", "23:59"), "tomorrow 00:00");
    EXPECT_EQ(words("2026-03-15 00:00", "00:00"), "tomorrow 00:00");
    EXPECT_EQ(words("2026-03-14 00:00", "00:00"), "today 00:00");
    EXPECT_EQ(words("2026-03-13 23:59", "00:00"), "yesterday 23:59");
}

TEST(DateInWords, TheDayOnWhichClocksChangeIsADayLikeOthers)
{
    // 23 hours and 25 hours long; the day after is tomorrow all the same, and six days ahead have names.
    EXPECT_EQ(words("2026-03-30 23:30", "00:30", british, "2026-03-29"), "tomorrow 23:30");
    EXPECT_EQ(words("2026-03-30 00:00", "23:59", british, "2026-03-29"), "tomorrow 00:00");
    EXPECT_EQ(words("2026-10-26 00:30", "00:30", british, "2026-10-25"), "tomorrow 00:30");
    EXPECT_EQ(words("2026-10-31 23:59", "00:00", british, "2026-10-25"), "Saturday 23:59");
    EXPECT_EQ(words("2026-11-01 00:00", "23:59", british, "2026-10-25"), "1 November 2026, 00:00");
}

TEST(DateInWords, TheYearTurns)
{
    EXPECT_EQ(words("2027-01-01 00:00", "23:59", british, "2026-12-31"), "tomorrow 00:00");
    EXPECT_EQ(words("2027-01-03 06:00", "12:00", british, "2026-12-31"), "Sunday 06:00");
}

TEST(DateInWords, TheDayIsThatOfTheZoneAndNotOfUtc)
{
    const QDateTime now({2026, 3, 14}, {6, 0}, Qt::UTC);
    const QDateTime moment({2026, 3, 14}, {16, 0}, Qt::UTC);
    EXPECT_EQ(DateInWords::of(moment, now, QTimeZone("Asia/Tokyo"), british), "tomorrow 01:00");
    EXPECT_EQ(DateInWords::of(moment, now, QTimeZone("America/New_York"), british), "today 12:00");
}

TEST(DateInWords, SecondsAreSaidWhereThereAreSome)
{
    EXPECT_EQ(DateInWords::of(QTime(6, 55, 30), british), "06:55:30");
    EXPECT_EQ(DateInWords::of(QTime(18, 55, 30), QLocale("en_US")), "6:55:30 PM");
    EXPECT_EQ(DateInWords::of(QTime(18, 55), QLocale("en_US")), "6:55 PM");
    EXPECT_EQ(DateInWords::of(QTime(18, 55, 30), QLocale("fi_FI")), "18.55.30");
    EXPECT_EQ(DateInWords::of(QTime(6, 55), QLocale::c()), "06:55");
}

TEST(DateInWords, DaysAreInTheFormsOfTheLocale)
{
    const QDate day(2027, 3, 14);
    for (const auto &[locale, text] : {std::pair("en_GB", "14 March 2027"),
                                       {"en_US", "March 14, 2027"},
                                       {"de_DE", "14. März 2027"},
                                       {"fr_FR", "14 mars 2027"},
                                       {"es_ES", "14 de marzo de 2027"},
                                       {"ja_JP", "2027年3月14日"},
                                       {"ar_EG", "١٤ مارس ٢٠٢٧"},
                                       {"hu_HU", "2027. március 14."},
                                       {"C", "14 March 2027"}})
        EXPECT_EQ(DateInWords::of(day, QLocale(locale)), QString::fromUtf8(text)) << locale;
    EXPECT_EQ(words("2026-03-20 22:00", "12:00", QLocale("de_DE")), "Freitag 22:00");
}

TEST(DateInWords, DayOrMonthComeFirstAsTheLocaleSaysThem)
{
    for (const char *locale : {"en_GB", "de_DE", "fr_FR", "es_ES", "ar_EG", "C"})
        EXPECT_TRUE(DateInWords::isDayFirst(QLocale(locale))) << locale;
    for (const char *locale : {"en_US", "ja_JP", "hu_HU"})
        EXPECT_FALSE(DateInWords::isDayFirst(QLocale(locale))) << locale;
}

TEST(DateInWords, WhatIsNoDateIsNothing)
{
    EXPECT_EQ(DateInWords::of(QDateTime(), QDateTime::currentDateTimeUtc(), QTimeZone::utc(), british), "");
}
