// SPDX-License-Identifier: MIT
#include "hosts/admin/WantedSchedules.h"

#include "hosts/admin/StructuredFile.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
const QDateTime now({2026, 3, 14}, {6, 0}, Qt::UTC);

Result<QList<Schedule>> read(const QByteArray &yaml, const QList<Schedule> &present = {},
                             const QDateTime &at = now)
{
    const auto value = StructuredFile::parse(yaml);
    EXPECT_TRUE(value) << qPrintable(value.error().text);
    return WantedSchedules::in(*value, present, at);
}

QString faultOf(const QByteArray &yaml)
{
    const auto wanted = read(yaml);
    return wanted ? QString("none") : wanted.error().text;
}

const QByteArray backup = "schedules:\n"
                          "- name: Backup\n"
                          "  program: /bin/true\n"
                          "  arguments: [a, b]\n"
                          "  actsIn: daemon\n"
                          "  every: weekday\n"
                          "  at: [\"03:00\", \"22:00\"]\n"
                          "  timeZone: Europe/Berlin\n"
                          "  wakes: true\n"
                          "  missed: run-once\n"
                          "  after: power-off\n";
} // namespace

TEST(WantedSchedules, WordsOfAFileAreAWholeSchedule)
{
    const auto wanted = read(backup);
    ASSERT_TRUE(wanted) << qPrintable(wanted.error().text);
    const Schedule &schedule = wanted->constFirst();
    EXPECT_EQ(schedule.name, "Backup");
    EXPECT_EQ(schedule.bundlePath, "/Library/Application Support/Dozely/PlugIns/Command.plugin");
    EXPECT_EQ(schedule.parameters["Program"], "/bin/true");
    EXPECT_EQ(schedule.parameters["Arguments"].toStringList(), (QStringList{"a", "b"}));
    EXPECT_EQ(schedule.parameters["Needs Wake Up"].toInt(), 1);
    EXPECT_EQ(schedule.parameters["Acts In User Agent"].toInt(), 0);
    EXPECT_EQ(schedule.recurrence->rule,
              "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR;BYHOUR=3,22;BYMINUTE=0;BYSECOND=0");
    EXPECT_EQ(schedule.date.toString(Qt::ISODate), "2026-03-16T02:00:00Z");
    EXPECT_EQ(schedule.missedPolicy, MissedPolicy::RunOnce);
    EXPECT_EQ(schedule.afterAction, AfterAction::PowerOff);
    EXPECT_FALSE(schedule.owner);
}

TEST(WantedSchedules, TheSameFileMeansTheSameOnEveryMachineAndDay)
{
    const QList<Schedule> first = *read(backup);
    EXPECT_EQ(*read(backup), first);
    EXPECT_EQ(*read(backup, first, now.addDays(40)), first);
}

TEST(WantedSchedules, WhatIsThereKeepsItsIdentifier)
{
    QList<Schedule> present = *read(backup);
    present[0].identifier = "another";
    EXPECT_EQ(*read(backup, present), present);
}

TEST(WantedSchedules, AScheduleThatTakesPlaceOnceHasADateOfItsOwn)
{
    const QByteArray once = "schedules: [{name: A, bundle: Sleep, timeZone: Europe/Berlin, date: %}]";
    EXPECT_EQ(
        read(QByteArray(once).replace('%', "\"2026-03-14 08:00\""))->constFirst().date.toString(Qt::ISODate),
        "2026-03-14T07:00:00Z");
    for (const char *date : {"tomorrow 8:00", "+5m", "2026-03-14", "now"})
        EXPECT_TRUE(faultOf(QByteArray(once).replace('%', date)).contains("\"date\" is not a date")) << date;
}

TEST(WantedSchedules, RepeatAsTheirFileSays)
{
    const auto only = [](const QByteArray &more) {
        const auto wanted = read("schedules: [{name: A, bundle: Sleep, timeZone: UTC, " + more + "}]");
        EXPECT_TRUE(wanted) << qPrintable(wanted.error().text);
        return wanted ? wanted->constFirst() : Schedule();
    };
    const Schedule monthly = only("every: month, on: [1, last], at: \"08:00\", count: 3");
    EXPECT_EQ(monthly.recurrence->rule, "FREQ=MONTHLY;BYMONTHDAY=1,-1;COUNT=3");
    EXPECT_EQ(monthly.recurrence->localStart.toString(), "2026-03-14T08:00:00");
    EXPECT_EQ(monthly.date.toString(Qt::ISODate), "2026-03-31T08:00:00Z");

    const Schedule unordered = only("every: day, at: [\"22:00\", \"03:00\", \"12:00\"]");
    EXPECT_EQ(unordered.recurrence->rule, "FREQ=DAILY;BYHOUR=3,12,22;BYMINUTE=0;BYSECOND=0");
    EXPECT_EQ(unordered.recurrence->localStart.toString(), "2026-03-14T03:00:00");

    const Schedule hourly = only("repeats: {rule: \"FREQ=HOURLY;INTERVAL=5\"}");
    EXPECT_EQ(hourly.recurrence->localStart.toString(), "2026-03-14T00:00:00");

    const Schedule given =
        only("repeats: {rule: FREQ=DAILY, localStart: \"2026-03-20T09:00:00\", "
             "excludedDates: [\"2026-03-20T09:00:00\"]}, missed: plug-in, actsIn: session, "
             "powersOn: true");
    EXPECT_EQ(given.date.toString(Qt::ISODate), "2026-03-21T09:00:00Z");
    EXPECT_EQ(given.missedPolicy, MissedPolicy::PlugIn);
    EXPECT_EQ(given.parameters["Acts In User Agent"].toInt(), 1);
    EXPECT_EQ(given.parameters["Needs Startup"].toInt(), 1);
    EXPECT_FALSE(given.parameters.contains("Needs Wake Up"));
}

TEST(WantedSchedules, WhatIsNotUnderstoodIsRefusedByName)
{
    EXPECT_EQ(faultOf("a: 1"),
              "it has no list of schedules (\"schedules\", or \"Schedule Array\" of a store)");
    EXPECT_EQ(faultOf("schedules: [{name: A, bundle: Sleep, date: \"2026-03-14 08:00\", colour: red}]"),
              "schedule 1, \"A\", is none: there is no word \"colour\"");
    EXPECT_EQ(faultOf("schedules: [{name: A, date: \"2026-03-14 08:00\"}]"),
              "schedule 1, \"A\", is none: \"Bundle Path\" is not an absolute path");
    EXPECT_EQ(faultOf("schedules: [{name: A, bundle: Sleep, every: often}]").left(31),
              "schedule 1, \"A\", is none: \"ofte");
    EXPECT_EQ(faultOf("schedules: [{name: A, bundle: Sleep, every: day}]"),
              "schedule 1, \"A\", is none: say at what time, by \"at\"");
    EXPECT_EQ(faultOf("schedules: [{name: A, bundle: Sleep, actsIn: nowhere, date: \"2026-03-14 08:00\"}]"),
              "schedule 1, \"A\", is none: \"actsIn\" is neither session nor daemon");
    EXPECT_EQ(faultOf("schedules: [{name: A, bundle: Sleep, repeats: {rule: FREQ=DAILY, often: 1}}]"),
              "schedule 1, \"A\", is none: \"repeats\" has no word \"often\"");
    EXPECT_EQ(faultOf("schedules: [{name: A, bundle: Sleep, timeZone: UTC, repeats: {rule: "
                      "FREQ=DAILY;UNTIL=20200101, localStart: \"2026-03-14T08:00:00\"}}]")
                  .left(26),
              "schedule 1, \"A\", is none: ");
    const QByteArray twice = "{name: A, bundle: Sleep, date: \"2026-03-14 08:00\"}";
    EXPECT_EQ(faultOf("schedules: [" + twice + "," + twice + "]"), "schedule 2, \"A\", is there twice");
}
