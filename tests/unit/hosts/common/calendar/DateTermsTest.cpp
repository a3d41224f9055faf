// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/DateTerms.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
using Towards = DateTerms::Towards;

QDateTime utc(const char *text)
{
    return QDateTime::fromString(text, Qt::ISODateWithMs);
}

/// It is Saturday, 14 March 2026, 07:00 in Berlin.
const char *const now = "2026-03-14T06:00:00Z";

QString read(const QString &text, Towards towards = Towards::ToCome, const char *at = now,
             const char *zone = "Europe/Berlin")
{
    const auto date = DateTerms(utc(at), QTimeZone(zone), towards).read(text);
    if (!date)
        return date.error().text;
    QString read = date->day.toString(Qt::ISODate);
    if (date->time)
        read += date->time->toString(" HH:mm:ss");
    return date->offset ? QString("%1 %2").arg(read).arg(date->offset->count()) : read;
}

/// The moment, or why there is none.
QString moment(const QString &text, const char *at = now, const char *zone = "Europe/Berlin")
{
    const DateTerms terms(utc(at), QTimeZone(zone));
    const auto date = terms.read(text);
    if (!date)
        return date.error().text;
    const auto moment = terms.momentOf(*date, text);
    if (!moment)
        return moment.error().text;
    return moment->date.toString(Qt::ISODate) + (moment->isMoved ? " moved" : "");
}

QString ambiguous(const char *text, const char *readings)
{
    return QString("\"%1\" can be %2").arg(text, readings);
}
} // namespace

TEST(DateTerms, WhatPeopleWriteIsRead)
{
    for (const auto &[text, date] : {
             std::pair("2026-03-14", "2026-03-14"),
             {"2026-03-14 06:55", "2026-03-14 06:55:00"},
             {"2026-03-14 6:55", "2026-03-14 06:55:00"},
             {"2026-03-14T06:55:30", "2026-03-14 06:55:30"},
             {"06:55", "2026-03-15 06:55:00"},
             {"07:00", "2026-03-14 07:00:00"},
             {"07:00:01", "2026-03-14 07:00:01"},
             {"22:00", "2026-03-14 22:00:00"},
             {"7 pm", "2026-03-14 19:00:00"},
             {"6:30 am", "2026-03-15 06:30:00"},
             {"today", "2026-03-14"},
             {"today 22:00", "2026-03-14 22:00:00"},
             {"Tomorrow 7:00", "2026-03-15 07:00:00"},
             {"tomorrow at 7:00", "2026-03-15 07:00:00"},
             {"tomorrow 7.30", "2026-03-15 07:30:00"},
             {"7:00 tomorrow", "2026-03-15 07:00:00"},
             {"7 pm tomorrow", "2026-03-15 19:00:00"},
             {"yesterday 7:00", "2026-03-13 07:00:00"},
             {"fri 22:00", "2026-03-20 22:00:00"},
             {"friday, 22:00", "2026-03-20 22:00:00"},
             {"sat 06:55", "2026-03-21 06:55:00"},
             {"sat 07:00", "2026-03-14 07:00:00"},
             {"mo", "2026-03-16"},
             {"saturday", "2026-03-14"},
             {"next saturday", "2026-03-21"},
             {"22.12. 6:30", "2026-12-22 06:30:00"},
             {"22.12 6:30", "2026-12-22 06:30:00"},
             {"22.12.", "2026-12-22"},
             {"13.3.", "2027-03-13"},
             {"14.3.", "2026-03-14"},
             {"14.3. 6:30", "2027-03-14 06:30:00"},
             {"29.2.", "2028-02-29"},
             {"12/22", "2026-12-22"},
             {"12/22 7 pm", "2026-12-22 19:00:00"},
             {"22.12.2026 6:30", "2026-12-22 06:30:00"},
             {"15.03.2026", "2026-03-15"},
             {"04/04/2026", "2026-04-04"},
             {"22 dec", "2026-12-22"},
             {"dec 22, 2027 6:30", "2027-12-22 06:30:00"},
             {"22nd December 2026", "2026-12-22"},
             {"22. december 6:30", "2026-12-22 06:30:00"},
             {"tue 22.12. 6:30", "2026-12-22 06:30:00"},
             {"fri 3.4. 6:30", "2026-04-03 06:30:00"},
         })
        EXPECT_EQ(read(text), date) << text;
}

TEST(DateTerms, WhatIsPastIsTheLatest)
{
    for (const auto &[text, date] : {std::pair("06:55", "2026-03-14 06:55:00"),
                                     {"07:00", "2026-03-14 07:00:00"},
                                     {"22:00", "2026-03-13 22:00:00"},
                                     {"fri 22:00", "2026-03-13 22:00:00"},
                                     {"sat 22:00", "2026-03-07 22:00:00"},
                                     {"sat", "2026-03-14"},
                                     {"22.12.", "2025-12-22"},
                                     {"29.2.", "2024-02-29"}})
        EXPECT_EQ(read(text, Towards::Past), date) << text;
}

TEST(DateTerms, AMomentHasAnOffset)
{
    for (const auto &[text, date] : {std::pair("2026-03-14 06:55+01:00", "2026-03-14 06:55:00 3600"),
                                     {"2026-03-14T06:55:30-09:30", "2026-03-14 06:55:30 -34200"},
                                     {"2026-03-14T06:55Z", "2026-03-14 06:55:00 0"},
                                     {"tomorrow 7:00+02:00", "2026-03-15 07:00:00 7200"},
                                     {"06:00Z", "2026-03-14 06:00:00 0"},
                                     {"05:59Z", "2026-03-15 05:59:00 0"},
                                     {"now", "2026-03-14 06:00:00 0"},
                                     {"+5m", "2026-03-14 06:05:00 0"},
                                     {"+90s", "2026-03-14 06:01:30 0"},
                                     {"+1h30m", "2026-03-14 07:30:00 0"},
                                     {"in 5 minutes", "2026-03-14 06:05:00 0"},
                                     {"in 1 hour 30 min", "2026-03-14 07:30:00 0"},
                                     {"+2d", "2026-03-16 06:00:00 0"}})
        EXPECT_EQ(read(text), date) << text;
    EXPECT_EQ(read("+5m", Towards::ToCome, "2026-03-14T06:00:00.001Z"), "2026-03-14 06:05:01 0")
        << "rounded up";
}

TEST(DateTerms, WhatCanBeReadInTwoWaysIsRefusedWithBoth)
{
    for (const auto &[text, readings] : {std::pair("03/04/2026", "2026-04-03 or 2026-03-04"),
                                         {"03/04", "2026-04-03 or 2027-03-04"},
                                         {"3.4. 6:30", "2026-04-03 06:30 or 2027-03-04 06:30"},
                                         {"3.4.2026 22:00", "2026-04-03 22:00 or 2026-03-04 22:00"},
                                         {"01-02-03", "2003-02-01 or 2003-01-02 or 2001-02-03"},
                                         {"22.12", "2026-12-22 or 2026-03-14 22:12"},
                                         {"5", "2026-03-15 05:00 or 2026-03-14 17:00"},
                                         {"tomorrow 7", "2026-03-15 07:00 or 2026-03-15 19:00"},
                                         {"12 am", "2026-03-15 00:00 or 2026-03-14 12:00"},
                                         {"next friday", "2026-03-20 or 2026-03-27"},
                                         {"+5", "+5s or +5m or +5h"}})
        EXPECT_EQ(read(text), ambiguous(text, readings));
}

TEST(DateTerms, DaysAheadAreRefusedWhereClocksAreChangedMeanwhile)
{
    // On 2026-03-29 clocks in Berlin go forward.
    EXPECT_EQ(
        read("+1d", Towards::ToCome, "2026-03-28T12:00:00Z"),
        ambiguous("+1d", "2026-03-29 14:00:00 or 2026-03-29 13:00:00, since clocks are changed meanwhile"));
    EXPECT_EQ(read("+24h", Towards::ToCome, "2026-03-28T12:00:00Z"), "2026-03-29 12:00:00 0");
}

TEST(DateTerms, WhatIsNoDateIsRefused)
{
    for (const char *text : {"",
                             " ",
                             "soon",
                             "2026-02-30",
                             "2026-3-15",
                             "2026-03-14 25:00",
                             "2026-03-14 06:55 ",
                             "2026-03-14 06:55+1",
                             "2026-03-14 06:55+25:00",
                             "2026-03-14+01:00",
                             "99/99/2026",
                             "30.2.",
                             "tomorrow tomorrow",
                             "fri fri 22:00",
                             "mon 22.12.2026",
                             "06:55 06:55",
                             "+",
                             "+5x",
                             "in",
                             "in five minutes",
                             "+-5m",
                             "-5m",
                             "+99999999999d",
                             "tomorrow  7:00",
                             "m 22:00",
                             "22:60",
                             "0.0.",
                             "next week",
                             "dec",
                             "2026"})
        EXPECT_EQ(read(text),
                  QString("\"%1\" is not a date such as \"2026-03-14 06:55\", \"06:55\", \"tomorrow 7:00\", "
                          "\"fri 22:00\" or \"+5m\"")
                      .arg(text));
    EXPECT_TRUE(read(QString("1 ").repeated(5000) + "1").contains("is not a date"));
}

TEST(DateTerms, DaysBeginByTheClocksOfTheZone)
{
    // Half past eleven at night in New York; in Berlin it is the next day.
    const char *const late = "2026-03-15T03:30:00Z";
    EXPECT_EQ(read("tomorrow", Towards::ToCome, late, "America/New_York"), "2026-03-15");
    EXPECT_EQ(read("tomorrow", Towards::ToCome, late, "Europe/Berlin"), "2026-03-16");
    EXPECT_EQ(read("04:00", Towards::ToCome, late, "Europe/Berlin"), "2026-03-16 04:00:00");
}

TEST(DateTerms, ATimeThatClocksSkipIsAsMuchLater)
{
    EXPECT_EQ(moment("2026-03-29 02:30"), "2026-03-29T01:30:00Z moved");
    EXPECT_EQ(moment("tomorrow 2:30", "2026-03-28T12:00:00Z"), "2026-03-29T01:30:00Z moved");
    EXPECT_EQ(moment("02:30", "2026-03-28T12:00:00Z"), "2026-03-29T01:30:00Z moved");
    EXPECT_EQ(moment("02:30", "2026-03-29T01:15:00Z"), "2026-03-29T01:30:00Z moved") << "at 03:15";
    EXPECT_EQ(moment("02:30", "2026-03-29T01:45:00Z"), "2026-03-30T00:30:00Z") << "at 03:45";
}

TEST(DateTerms, ATimeThatClocksShowTwiceIsRefusedWithBoth)
{
    const QString twice = "Clocks in Europe/Berlin show \"%1\" twice: say \"%1+02:00\" or \"%1+01:00\"";
    EXPECT_EQ(moment("2026-10-25 02:30"), twice.arg("2026-10-25 02:30"));
    EXPECT_EQ(moment("sun 2:30", "2026-10-24T12:00:00Z"), twice.arg("sun 2:30"));
    EXPECT_EQ(moment("sun 2:30+01:00", "2026-10-24T12:00:00Z"), "2026-10-25T01:30:00Z");
    EXPECT_EQ(moment("02:30", "2026-10-25T00:45:00Z"), twice.arg("02:30")) << "between the two";
    EXPECT_EQ(moment("02:30", "2026-10-25T01:45:00Z"), "2026-10-26T01:30:00Z") << "after both";
}
