// SPDX-License-Identifier: MIT
#include "unit/hosts/HostFixture.h"

#include <QTimeZone>

using testing::HasSubstr;

class ScheduleTest : public HostFixture
{
protected:
    /// Why the entry is refused; empty when it is accepted.
    static std::string faultOf(const QVariant &entry)
    {
        const auto schedule = Schedule::fromEntry(entry);
        EXPECT_TRUE(schedule || !schedule.error().text.isEmpty());
        return schedule ? std::string() : schedule.error().text.toStdString();
    }
    static QVariantMap without(const QString &key)
    {
        QVariantMap left = entry("a");
        left.remove(key);
        return left;
    }
};

TEST_F(ScheduleTest, ReadsEveryKeyOfAnEntry)
{
    const auto schedule = Schedule::fromEntry(entry("a"));
    ASSERT_TRUE(schedule);
    EXPECT_EQ(schedule->identifier, "a");
    EXPECT_EQ(schedule->name, "Name of a");
    EXPECT_TRUE(schedule->isEnabled);
    EXPECT_EQ(schedule->bundlePath, "/Library/Application Support/Dozely/PlugIns/Probe.plugin");
    EXPECT_EQ(schedule->parameters, (QVariantMap{{"Key", "value"}}));
    EXPECT_EQ(schedule->date, noon());
    EXPECT_EQ(schedule->timeZone, "Europe/Paris");
    EXPECT_EQ(schedule->owner, 501u);
    EXPECT_TRUE(schedule->otherKeys.isEmpty());
}

TEST_F(ScheduleTest, ShowsItsDateInItsOwnTimeZone)
{
    const QDateTime date = schedule("a").calendarDate();
    EXPECT_EQ(date, noon());
    EXPECT_EQ(date.time(), QTime(13, 0));
    EXPECT_EQ(date.timeZone().id(), "Europe/Paris");
}

TEST_F(ScheduleTest, JoinsItsBundleToTheRootFolder)
{
    EXPECT_EQ(schedule("a").fullBundlePath(),
              root.join("/Library/Application Support/Dozely/PlugIns/Probe.plugin"));
}

TEST_F(ScheduleTest, TakesParametersTimeZoneAndOwnerAsOptional)
{
    const auto schedule = Schedule::fromEntry(without("Parameters"));
    ASSERT_TRUE(schedule);
    EXPECT_TRUE(schedule->parameters.isEmpty());
    EXPECT_EQ(Schedule::fromEntry(without("Time Zone"))->calendarDate().timeSpec(), Qt::UTC);
    EXPECT_FALSE(Schedule::fromEntry(without("Owner"))->owner);
}

TEST_F(ScheduleTest, NamesTheKeyThatIsMissing)
{
    for (const char *key : {"Identifier", "Name", "Is Enabled", "Bundle Path", "Date"})
        EXPECT_EQ(faultOf(without(key)), std::string("\"") + key + "\" is missing");
}

TEST_F(ScheduleTest, NamesTheKeyOfWrongType)
{
    const QList<QPair<QString, QVariant>> wrong{
        {"Identifier", qint64(7)}, {"Name", QVariantList()}, {"Is Enabled", "yes"},
        {"Is Enabled", qint64(1)}, {"Bundle Path", true},    {"Parameters", "none"},
        {"Date", "tomorrow"},      {"Time Zone", qint64(1)}, {"Owner", "root"},
        {"Owner", qint64(-1)},     {"Owner", 0xffffffffLL},  {"Owner", 1.5}};
    for (const auto &[key, value] : wrong)
        EXPECT_THAT(faultOf(changed(entry("a"), key, value)),
                    HasSubstr("\"" + key.toStdString() + "\" is not"));
}

TEST_F(ScheduleTest, RefusesWhatIsNoDictionary)
{
    EXPECT_EQ(faultOf("text"), "it is not a dictionary");
    EXPECT_EQ(faultOf(QVariant()), "it is not a dictionary");
}

TEST_F(ScheduleTest, RefusesAnEmptyIdentifier)
{
    EXPECT_EQ(faultOf(changed(entry("a"), "Identifier", "")), "\"Identifier\" is empty");
}

TEST_F(ScheduleTest, RefusesBundlePathsThatAreNotPlainAndAbsolute)
{
    for (const char *path : {"", "/", "Probe.plugin", "/a/../b.plugin", "/a//b.plugin", "/a/b.plugin/"})
        EXPECT_THAT(faultOf(changed(entry("a"), "Bundle Path", path)), HasSubstr("Bundle Path")) << path;
}

TEST_F(ScheduleTest, RefusesAnUnknownTimeZone)
{
    EXPECT_THAT(faultOf(changed(entry("a"), "Time Zone", "Europe/Atlantis")), HasSubstr("Time Zone"));
}

TEST_F(ScheduleTest, KeepsKeysThatItDoesNotKnow)
{
    QVariantMap later = changed(entry("a"), "Colour", QVariantMap{{"Red", 1LL}});
    const auto schedule = Schedule::fromEntry(later);
    ASSERT_TRUE(schedule);
    EXPECT_EQ(schedule->toEntry(), later);
}

TEST_F(ScheduleTest, ReadsWhenItRepeatsAndWhatBecomesOfWhatIsMissed)
{
    QVariantMap daily = changed(entry("a"), "Recurrence Rule",
                                QVariantMap{{"Rule", "FREQ=DAILY"},
                                            {"Local Start", "2026-03-14T06:55:00"},
                                            {"Excluded Dates", QVariantList{"2026-03-15T06:55:00"}},
                                            {"Colour", "red"}});
    daily.insert("Missed Policy", "run once");
    daily.insert("Missed Limit", 3600LL);
    daily.insert("Overlap Policy", "run");
    daily.insert("After Action", "power off");
    const auto schedule = Schedule::fromEntry(daily);
    ASSERT_TRUE(schedule) << qPrintable(schedule.error().text);
    ASSERT_TRUE(schedule->recurrence);
    EXPECT_EQ(schedule->recurrence->rule, "FREQ=DAILY");
    EXPECT_EQ(schedule->recurrence->localStart, (WallTime{{2026, 3, 14}, {6, 55}}));
    EXPECT_EQ(schedule->recurrence->excludedDates.size(), 1);
    EXPECT_EQ(schedule->missedPolicy, MissedPolicy::RunOnce);
    EXPECT_EQ(schedule->missedLimit, std::chrono::hours(1));
    EXPECT_EQ(schedule->overlapPolicy, OverlapPolicy::Run);
    EXPECT_EQ(schedule->afterAction, AfterAction::PowerOff);
    EXPECT_EQ(schedule->toEntry(), daily) << "and writes all of it as it was";
}

TEST_F(ScheduleTest, RefusesPoliciesThatAreNone)
{
    for (const char *key : {"Missed Policy", "Overlap Policy", "After Action"}) {
        EXPECT_THAT(faultOf(changed(entry("a"), key, "maybe")), HasSubstr(key));
        EXPECT_THAT(faultOf(changed(entry("a"), key, 1LL)), HasSubstr(key));
        EXPECT_THAT(faultOf(changed(entry("a"), key, "")), HasSubstr(key));
    }
    for (const QVariant &limit : {QVariant(-1LL), QVariant("600"), QVariant(1.5), QVariant(true)})
        EXPECT_THAT(faultOf(changed(entry("a"), "Missed Limit", limit)), HasSubstr("Missed Limit"));
    EXPECT_THAT(faultOf(changed(entry("a"), "Recurrence Rule", "FREQ=DAILY")), HasSubstr("Recurrence Rule"));
    EXPECT_THAT(faultOf(changed(entry("a"), "Recurrence Rule", QVariantMap{})), HasSubstr("Recurrence Rule"));
}

TEST_F(ScheduleTest, IsInTheMachinesZoneWhenItRepeatsInNone)
{
    Schedule daily = schedule("a");
    daily.timeZone.clear();
    EXPECT_EQ(daily.zone(), QTimeZone::utc());
    daily.recurrence = Recurrence();
    EXPECT_EQ(daily.zone().id(), QTimeZone::systemTimeZoneId());
    daily.timeZone = "Asia/Tokyo";
    EXPECT_EQ(daily.zone().id(), "Asia/Tokyo");
}

TEST_F(ScheduleTest, RoundsAFractionOfASecondUpSoThatNothingRunsEarly)
{
    EXPECT_EQ(schedule("a", noon().addMSecs(1)).date, noon().addSecs(1));
    EXPECT_EQ(schedule("a", noon().addMSecs(-1)).date, noon());
    const QDateTime before1970({1969, 12, 31}, {23, 59, 58, 500}, Qt::UTC);
    EXPECT_EQ(schedule("a", before1970).date, before1970.addMSecs(500));
}
