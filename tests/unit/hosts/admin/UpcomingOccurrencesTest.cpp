// SPDX-License-Identifier: MIT
#include "hosts/common/record/UpcomingOccurrences.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

namespace
{
const QDateTime now({2026, 3, 14}, {6, 0}, Qt::UTC);

Schedule schedule(const QString &name, const QString &rule, const QDateTime &first)
{
    Schedule schedule;
    schedule.identifier = schedule.name = name;
    schedule.date = first;
    schedule.timeZone = "UTC";
    if (!rule.isEmpty())
        schedule.recurrence = Recurrence{rule, WallTime::of(first), {}, {}, {}};
    return schedule;
}

QDateTime at(int day, int hour)
{
    return QDateTime({2026, 3, day}, {hour, 0}, Qt::UTC);
}

RecordedOccurrence recorded(const QString &identifier, const QDateTime &date, const QString &state,
                            const QDateTime &postponedTo = {})
{
    RecordedOccurrence occurrence;
    occurrence.identifier = identifier;
    occurrence.date = date;
    occurrence.outcome.state = state;
    occurrence.postponedTo = postponedTo;
    return occurrence;
}

/// "a 14 22" for what schedule a has on the 14th at 22:00.
QStringList first(qsizetype most, const QList<Schedule> &schedules,
                  const QList<RecordedOccurrence> &known = {})
{
    UpcomingOccurrences upcoming(schedules, now, known);
    QStringList texts;
    while (texts.size() < most) {
        const auto next = upcoming.next();
        if (!next)
            break;
        texts += schedules.at(next->schedule).name + next->moment.toString(" d H");
        if (next->isPostponed())
            texts.last() += " from" + next->date.toString(" d H");
    }
    return texts;
}
} // namespace

TEST(UpcomingOccurrences, ThoseOfAllSchedulesComeInTheOrderOfTheirDates)
{
    EXPECT_EQ(
        first(6, {schedule("a", "FREQ=DAILY", at(10, 22)), schedule("b", "FREQ=DAILY;INTERVAL=2", at(14, 7)),
                  schedule("c", "", at(15, 12)), schedule("past", "", at(13, 12))}),
        QStringList({"b 14 7", "a 14 22", "c 15 12", "a 15 22", "b 16 7", "a 16 22"}));
}

TEST(UpcomingOccurrences, WhatEndsIsOver)
{
    EXPECT_EQ(first(9, {schedule("a", "FREQ=DAILY;COUNT=6", at(10, 22))}),
              QStringList({"a 14 22", "a 15 22"}));
    EXPECT_EQ(first(9, {}), QStringList());
}

TEST(UpcomingOccurrences, ADisabledScheduleHasNone)
{
    Schedule disabled = schedule("a", "FREQ=DAILY", at(10, 22));
    disabled.isEnabled = false;
    EXPECT_EQ(first(9, {disabled}), QStringList());
}

TEST(UpcomingOccurrences, WhatWasLeftOutDoesNotCome)
{
    const QList<Schedule> schedules{schedule("a", "FREQ=DAILY", at(10, 22)), schedule("b", "", at(15, 12))};
    EXPECT_EQ(
        first(2, schedules, {recorded("a", at(14, 22), "removed"), recorded("b", at(15, 12), "removed")}),
        QStringList({"a 15 22", "a 16 22"}));
}

TEST(UpcomingOccurrences, WhatWasPostponedComesAtItsMoment)
{
    const QList<Schedule> schedules{schedule("a", "FREQ=DAILY", at(10, 22))};
    EXPECT_EQ(first(3, schedules, {recorded("a", at(14, 22), "postponed", at(16, 2))}),
              QStringList({"a 15 22", "a 16 2 from 14 22", "a 16 22"}));
    EXPECT_EQ(first(1, schedules, {recorded("a", at(13, 22), "postponed", at(14, 7))}),
              QStringList("a 14 7 from 13 22"))
        << "its date is past";
    EXPECT_EQ(first(1, schedules, {recorded("gone", at(14, 22), "postponed", at(14, 8))}),
              QStringList("a 14 22"));
}

TEST(UpcomingOccurrences, ARuleWithoutSenseIsTold)
{
    UpcomingOccurrences upcoming({schedule("a", "FREQ=DAILY;BYMONTH=13", at(10, 22))}, now, {});
    EXPECT_FALSE(upcoming.next());
    EXPECT_EQ(upcoming.faults().size(), 1);
    EXPECT_EQ(upcoming.faults().value(0).left(22), "Nothing comes of \"a\": ");
}
