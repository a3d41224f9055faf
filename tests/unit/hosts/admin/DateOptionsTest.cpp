// SPDX-License-Identifier: MIT
#include "hosts/admin/DateOptions.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminOptions.h"
#include "support/FakeClock.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
/// It is 2026-03-14 06:00 UTC.
class DateOptionsTest : public testing::Test
{
protected:
    DateOptionsTest() { Port<Clock>::current() = std::make_shared<FakeClock>(); }

    static DateOptions::Moment read(const QStringList &arguments)
    {
        AdminOptions options;
        EXPECT_FALSE(options.parse(QStringList{"dozely-admin", "add", "A"} + arguments));
        return DateOptions::read(options);
    }
    static QString dateOf(const QString &date, const QString &zone)
    {
        return read({"--date", date, "--time-zone", zone}).date.toString(Qt::ISODate);
    }
    static QString refusal(const QStringList &arguments)
    {
        try {
            read(arguments);
        } catch (const AdminError &error) {
            EXPECT_EQ(error.status(), ExitStatus::BadUsage);
            return error.sentence();
        }
        return "not refused";
    }
};
} // namespace

TEST_F(DateOptionsTest, ADateIsInTheTimeZoneThatIsNamed)
{
    EXPECT_EQ(dateOf("2026-03-14 07:55", "Europe/Paris"), "2026-03-14T06:55:00Z");
    EXPECT_EQ(dateOf("2026-07-01T06:55:30", "Europe/Paris"), "2026-07-01T04:55:30Z");
    EXPECT_EQ(dateOf("2026-03-15 00:00", "Asia/Kathmandu"), "2026-03-14T18:15:00Z");
}

TEST_F(DateOptionsTest, WhatPeopleWriteIsADateInThatZone)
{
    EXPECT_EQ(dateOf("tomorrow 7:00", "Europe/Paris"), "2026-03-15T06:00:00Z");
    EXPECT_EQ(dateOf("06:55", "Europe/Paris"), "2026-03-15T05:55:00Z");
    EXPECT_EQ(dateOf("+5m", "Europe/Paris"), "2026-03-14T06:05:00Z");
    EXPECT_EQ(read({"--in", "5m"}).date.toString(Qt::ISODate), "2026-03-14T06:05:00Z");
}

TEST_F(DateOptionsTest, TimeZonesWithoutAPlaceAndOldNamesAreKnown)
{
    EXPECT_EQ(dateOf("2026-03-14 06:55", "Etc/UTC"), "2026-03-14T06:55:00Z");
    EXPECT_EQ(dateOf("2026-03-14 06:55", "UTC"), "2026-03-14T06:55:00Z");
    EXPECT_EQ(dateOf("2026-07-01 06:55", "US/Pacific"), "2026-07-01T13:55:00Z");
}

TEST_F(DateOptionsTest, ASkippedTimeMovesForwardByTheGapAndIsRemarkedOn)
{
    const auto moment = read({"--date", "2026-03-29 02:30", "--time-zone", "Europe/Berlin"});
    EXPECT_EQ(moment.date.toString(Qt::ISODate), "2026-03-29T01:30:00Z");
    EXPECT_EQ(moment.remark,
              "2026-03-29 02:30 does not exist in Europe/Berlin; it becomes 2026-03-29 03:30:00.");
}

TEST_F(DateOptionsTest, ARepeatedTimeIsRefusedWithBothReadings)
{
    EXPECT_EQ(refusal({"--date", "2026-10-25 02:30", "--time-zone", "Europe/Berlin"}),
              "Clocks in Europe/Berlin show \"2026-10-25 02:30\" twice: say \"2026-10-25 02:30+02:00\" or "
              "\"2026-10-25 02:30+01:00\".");
    EXPECT_EQ(dateOf("2026-10-25 02:30+02:00", "Europe/Berlin"), "2026-10-25T00:30:00Z");
    EXPECT_EQ(dateOf("2026-10-25 02:30+01:00", "Europe/Berlin"), "2026-10-25T01:30:00Z");
}

TEST_F(DateOptionsTest, ADateThatCanBeReadInTwoWaysIsRefusedWithBoth)
{
    EXPECT_EQ(refusal({"--date", "03/04/2026 06:55"}),
              "\"03/04/2026 06:55\" can be 2026-04-03 06:55 or 2026-03-04 06:55.");
    EXPECT_EQ(refusal({"--date", "2026-03-15 7"}),
              "\"2026-03-15 7\" can be 2026-03-15 07:00 or 2026-03-15 19:00.");
}

TEST_F(DateOptionsTest, ADelayCountsFromNowAndIsNeverCutShort)
{
    EXPECT_EQ(read({"--in", "3"}).date.toString(Qt::ISODate), "2026-03-14T06:00:03Z");
    EXPECT_EQ(read({"--in", "0"}).date.toString(Qt::ISODate), "2026-03-14T06:00:00Z");
    EXPECT_EQ(read({"--in", "2.001"}).date.toString(Qt::ISODate), "2026-03-14T06:00:03Z");
}

TEST_F(DateOptionsTest, ADatePastIsRefused)
{
    EXPECT_EQ(refusal({"--date", "2026-03-14 05:59", "--time-zone", "UTC"}),
              "2026-03-14 05:59 in UTC is past.");
    EXPECT_EQ(dateOf("2026-03-14 06:00", "UTC"), "2026-03-14T06:00:00Z");
}

TEST_F(DateOptionsTest, ADateThatTheStoreCannotHoldIsRefused)
{
    const QString complaint = "The date is further ahead than the store can hold.";
    EXPECT_EQ(dateOf("9999-12-31 23:59", "UTC"), "9999-12-31T23:59:00Z");
    EXPECT_EQ(refusal({"--date", "9999-12-31 23:59", "--time-zone", "America/New_York"}), complaint);
}

TEST_F(DateOptionsTest, WhatIsNoDateIsRefused)
{
    for (const char *text : {"", "soon", "2026-02-30 06:55", "2026-03-15 24:00", "2026-03-15 06:60",
                             "2026-03-15 06:55:60", "2026-3-15 6:55", "2026-03-15 06:55 "})
        EXPECT_TRUE(refusal({"--date", text, "--time-zone", "UTC"})
                        .startsWith(QString("\"%1\" is not a date such as \"2026-03-14 06:55\"").arg(text)));
    EXPECT_EQ(refusal({"--date", "tomorrow"}),
              "\"tomorrow\" is a day; say at what time, such as \"tomorrow 06:55\".");
}

TEST_F(DateOptionsTest, WhatIsNoDelayIsRefused)
{
    for (const char *text : {"", "soon", "-1", "nan", "inf", "1e30"})
        EXPECT_EQ(refusal({"--in", text}), QString("\"%1\" is not a number of seconds from now.").arg(text));
}

TEST_F(DateOptionsTest, WhatIsNoTimeZoneIsRefused)
{
    for (const char *zone :
         {"", "Nowhere/Else", "CET-1", "Europe", "../zoneinfo/Europe/Paris", "/etc/localtime"})
        EXPECT_EQ(refusal({"--date", "2026-03-15 06:55", "--time-zone", zone}),
                  QString("There is no time zone \"%1\".").arg(zone));
}

TEST_F(DateOptionsTest, ExactlyOneWayToSayWhenIsTaken)
{
    EXPECT_EQ(refusal({}), "Say when, by --date or by --in.");
    EXPECT_EQ(refusal({"--in", "3", "--date", "2026-03-15 06:55"}), "Say when, by --date or by --in.");
}
