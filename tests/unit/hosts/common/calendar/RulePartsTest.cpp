// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/RuleParts.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

namespace
{
QString withTimes(const QString &rule, const QList<QTime> &times)
{
    RuleParts parts(rule);
    const auto set = parts.setTimes(times);
    return set ? parts.toString() : set.error().text;
}
} // namespace

TEST(RuleParts, OnePartIsChangedAndTheOthersStayAsTheyWere)
{
    RuleParts parts("FREQ=weekly;byday=MO;X-OTHER=1;broken");
    EXPECT_EQ(parts.value("BYDAY"), "MO");
    EXPECT_TRUE(parts.value("COUNT").isNull());
    parts.set("BYDAY", "TU");
    parts.set("COUNT", "3");
    parts.remove("freq");
    EXPECT_EQ(parts.toString(), "byday=TU;X-OTHER=1;broken;COUNT=3");
}

TEST(RuleParts, DaysAreToldFromElapsedTime)
{
    for (const char *rule : {"FREQ=DAILY", "FREQ=WEEKLY", "FREQ=MONTHLY", "FREQ=YEARLY"})
        EXPECT_TRUE(RuleParts(rule).isOfDays()) << rule;
    for (const char *rule : {"FREQ=HOURLY", "freq=minutely", "FREQ=SECONDLY"})
        EXPECT_FALSE(RuleParts(rule).isOfDays()) << rule;
}

TEST(RuleParts, ASingleTimeIsThatOfTheStart)
{
    EXPECT_EQ(withTimes("FREQ=DAILY;BYHOUR=3;BYMINUTE=4;BYSECOND=5", {QTime(22, 0)}), "FREQ=DAILY");
}

TEST(RuleParts, SeveralTimesAreOneRuleWhereThatMeansJustThese)
{
    EXPECT_EQ(withTimes("FREQ=DAILY", {QTime(22, 30), QTime(6, 30)}),
              "FREQ=DAILY;BYHOUR=6,22;BYMINUTE=30;BYSECOND=0");
    EXPECT_EQ(withTimes("FREQ=DAILY", {QTime(22, 0), QTime(22, 15)}),
              "FREQ=DAILY;BYHOUR=22;BYMINUTE=0,15;BYSECOND=0");
    EXPECT_EQ(withTimes("FREQ=DAILY", {QTime(6, 0), QTime(6, 30), QTime(22, 0), QTime(22, 30)}),
              "FREQ=DAILY;BYHOUR=6,22;BYMINUTE=0,30;BYSECOND=0");
}

TEST(RuleParts, TimesThatWouldMeanOthersTooAreRefused)
{
    EXPECT_EQ(
        withTimes("FREQ=DAILY", {QTime(22, 0), QTime(6, 30)}),
        "one rule cannot mean 06:30, 22:00 without 06:00, 22:30, too; let the times have equal minutes, or "
        "add a second schedule");
}
