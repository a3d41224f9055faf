// SPDX-License-Identifier: MIT
#include "hosts/common/bus/ScheduleDictionary.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

namespace
{
Schedule schedule()
{
    Schedule schedule;
    schedule.identifier = "a";
    schedule.name = "Water";
    schedule.bundlePath = "/Library/Water.plugin";
    schedule.date = QDateTime({2026, 3, 14}, {5, 55}, Qt::UTC);
    return schedule;
}
} // namespace

TEST(ScheduleDictionary, LeavesOutWhatHasNoValue)
{
    EXPECT_EQ(ScheduleDictionary::of(schedule()), (QVariantMap{{"identifier", "a"},
                                                               {"name", "Water"},
                                                               {"isEnabled", true},
                                                               {"bundlePath", "/Library/Water.plugin"},
                                                               {"parameters", QVariantMap()},
                                                               {"date", "2026-03-14T05:55:00Z"},
                                                               {"timeZone", "UTC"},
                                                               {"staysWhenOver", false}}));
}

TEST(ScheduleDictionary, TellsAllThatAScheduleHas)
{
    Schedule all = schedule();
    all.timeZone = "";
    all.owner = 501;
    all.recurrence = Recurrence{"FREQ=DAILY;BYHOUR=7;BYMINUTE=0;BYSECOND=0",
                                *WallTime::fromString("2026-03-14T07:00:00"),
                                {*WallTime::fromString("2026-03-20T08:00:00")},
                                {},
                                {}};
    all.missedPolicy = MissedPolicy::RunOnce;
    all.missedLimit = std::chrono::seconds(60);
    all.overlapPolicy = OverlapPolicy::Run;
    all.afterAction = AfterAction::PowerOff;
    all.parameters = {{"When", all.date}, {"Data", QByteArray("x")}, {"List", QVariantList{all.date, 5LL}}};
    const QVariantMap told = ScheduleDictionary::of(all);
    EXPECT_EQ(told["timeZone"], ""); // the machine's
    EXPECT_EQ(told["owner"], QVariant(501U));
    EXPECT_EQ(told["missed"], "run once");
    EXPECT_EQ(told["missedLimit"], QVariant(quint64(60)));
    EXPECT_EQ(told["overlap"], "run");
    EXPECT_EQ(told["after"], "power off");
    EXPECT_EQ(told["parameters"], (QVariantMap{{"When", "2026-03-14T05:55:00Z"},
                                               {"Data", QByteArray("x")},
                                               {"List", QVariantList{"2026-03-14T05:55:00Z", 5LL}}}));
    const QVariantMap repeats = told["repeats"].toMap();
    EXPECT_EQ(repeats["localStart"], "2026-03-14T07:00:00");
    EXPECT_EQ(repeats["extraDates"], (QStringList{"2026-03-20T08:00:00"}));
    EXPECT_TRUE(repeats["inWords"].toString().startsWith("every day at 07:00"));
}

TEST(ScheduleDictionary, ReadsDatesStrictly)
{
    using ScheduleDictionary::dateOf;
    EXPECT_EQ(dateOf("2026-03-14T06:55:00+01:00"), QDateTime({2026, 3, 14}, {5, 55}, Qt::UTC));
    EXPECT_EQ(dateOf("2026-03-14T06:55:00.001Z"), QDateTime({2026, 3, 14}, {6, 55, 1}, Qt::UTC));
    for (const char *bad :
         {"", "2026-03-14", "2026-03-14T06:55Z", "2026-03-14T06:55:00", "2026-02-30T06:55:00Z",
          "2026-03-14 06:55:00Z", " 2026-03-14T06:55:00Z", "2026-03-14T06:55:00Z\n", "2026-03-14T25:55:00Z",
          "9999-12-31T23:59:59.5Z", "0001-01-01T00:00:00+01:00"})
        EXPECT_FALSE(dateOf(bad)) << bad;
}

TEST(ScheduleDictionary, HasAnotherRevisionForEveryOtherSchedule)
{
    const QString before = ScheduleDictionary::revisionOf(schedule());
    EXPECT_EQ(ScheduleDictionary::revisionOf(schedule()), before);
    Schedule other = schedule();
    other.parameters = {{"Key", true}};
    EXPECT_NE(ScheduleDictionary::revisionOf(other), before);
}
