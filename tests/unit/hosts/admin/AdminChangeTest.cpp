// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"
#include "unit/hosts/admin/AdminTool.h"

#include <QDateTime>
#include <QJsonArray>

#include <gmock/gmock.h>

using namespace dozely;

using testing::HasSubstr;

namespace
{
/// Schedules that repeat, and what is changed of them. The tool's machine is in Tokyo, whose clocks are never
/// changed.
class AdminChangeTest : public testing::Test
{
protected:
    AdminChangeTest() { ::setenv("TZ", "Asia/Tokyo", 1); }

    QVariantMap entry(int place = 0) const
    {
        const auto list = PropertyList::fromData(tool.store());
        return list ? list->toMap().value("Schedule Array").toList().value(place).toMap() : QVariantMap();
    }
    QString rule() const { return entry()["Recurrence Rule"].toMap()["Rule"].toString(); }

    /// Runs the tool, which is to succeed.
    std::string done(const QStringList &arguments)
    {
        const auto result = tool.run(arguments);
        EXPECT_EQ(result.status, 0) << result.errors.constData();
        return result.output.toStdString();
    }
    void addNightly(const QStringList &more = {})
    {
        done(QStringList{"add", "Backup", "--program", "/bin/true", "--argument", "-l", "--every", "day",
                         "--at", "03:00", "--from", "2060-03-14"} +
             more);
    }
    /// Runs the tool, which is to refuse and to leave the store alone.
    std::string refused(const QStringList &arguments, int status = 2)
    {
        const QByteArray before = tool.store();
        const auto result = tool.run(arguments);
        EXPECT_EQ(result.status, status) << qPrintable(arguments.join(' '));
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(tool.store(), before) << qPrintable(arguments.join(' '));
        return result.errors.toStdString();
    }

    AdminTool tool;
};
} // namespace

TEST_F(AdminChangeTest, AddWritesHowItRepeats)
{
    addNightly({"--missed", "run-once=2d", "--overlap", "run", "--wake", "--after", "power-off", "--except",
                "2060-12-24"});
    const QVariantMap written = entry();
    const QVariantMap recurrence{{"Rule", "FREQ=DAILY"},
                                 {"Local Start", "2060-03-14T03:00:00"},
                                 {"Excluded Dates", QVariantList{"2060-12-24T03:00:00"}}};
    EXPECT_EQ(written["Recurrence Rule"].toMap(), recurrence);
    EXPECT_EQ(written["Date"].toDateTime(), QDateTime({2060, 3, 13}, {18, 0}, Qt::UTC));
    EXPECT_FALSE(written.contains("Time Zone")) << "it goes with the machine";
    EXPECT_EQ(written["Missed Policy"], "run once");
    EXPECT_EQ(written["Missed Limit"], 172800LL);
    EXPECT_EQ(written["Overlap Policy"], "run");
    EXPECT_EQ(written["After Action"], "power off");
    addNightly({"--time-zone", "Europe/Paris"});
    EXPECT_EQ(entry(1)["Time Zone"], "Europe/Paris");
    EXPECT_EQ(entry(1)["Date"].toDateTime(), QDateTime({2060, 3, 14}, {2, 0}, Qt::UTC));
}

TEST_F(AdminChangeTest, TheAnswerSaysTheRuleAndTheNextThreeDates)
{
    const std::string here = done(
        {"add", "A", "--program", "/bin/true", "--every", "day", "--at", "03:00", "--from", "2060-03-14"});
    EXPECT_THAT(here, HasSubstr(": every day at 03:00.\n"
                                "Next: Sunday 14 March 2060 at 03:00\n"
                                "      Monday 15 March 2060 at 03:00\n"
                                "      Tuesday 16 March 2060 at 03:00\n"));
    const std::string elsewhere =
        done({"add", "B", "--program", "/bin/true", "--every", "week", "--at", "22:00", "--from",
              "2060-03-14", "--count", "1", "--time-zone", "Europe/Paris"});
    EXPECT_THAT(elsewhere, HasSubstr(": every Sunday at 22:00, once (Europe/Paris).\n"
                                     "Next: Monday 15 March 2060 at 06:00 (Sunday 14 March 2060 at 22:00 in "
                                     "Europe/Paris)\n"));
    const QJsonObject json = tool.run({"change", "A", "--stays", "--json"}).json();
    EXPECT_EQ(json["next"],
              QJsonArray({"2060-03-13T18:00:00Z", "2060-03-14T18:00:00Z", "2060-03-15T18:00:00Z"}));
    EXPECT_EQ(json["schedule"]["repeats"]["rule"], "FREQ=DAILY");
    EXPECT_EQ(json["schedule"]["repeats"]["inWords"], "every day at 03:00");
    EXPECT_EQ(json["schedule"]["repeats"]["localStart"], "2060-03-14T03:00:00");
    EXPECT_TRUE(json["schedule"]["timeZone"].isNull());
    EXPECT_EQ(json["schedule"]["staysWhenOver"], true);
}

TEST_F(AdminChangeTest, WhatIsNotNamedStays)
{
    addNightly({"--missed", "skip", "--wake", "--owner", "4711"});
    QVariantMap expected = entry();
    EXPECT_THAT(done({"change", "Backup", "--name", "Nightly"}),
                HasSubstr("\"Nightly\" is changed: every day"));
    expected["Name"] = "Nightly";
    EXPECT_EQ(entry(), expected);
    done({"change", "Nightly", "--missed", "run-once"});
    expected["Missed Policy"] = "run once";
    EXPECT_EQ(entry(), expected);
    done({"change", "Nightly", "--parameter", "Level=3", "--disabled", "--owner", "0"});
    QVariantMap parameters = expected["Parameters"].toMap();
    parameters["Level"] = 3LL;
    expected["Parameters"] = parameters;
    expected["Is Enabled"] = false;
    expected["Owner"] = 0LL;
    EXPECT_EQ(entry(), expected);
    EXPECT_THAT(tool.root.logContent().toStdString(), HasSubstr("was changed by user"));
}

TEST_F(AdminChangeTest, WhatAnOptionOfAddSaysCanBeTakenBack)
{
    addNightly();
    const QVariantMap before = entry();
    // What the first make of it the second make as it was.
    const QList<std::pair<QStringList, QStringList>> opposites{
        {{"--stays"}, {"--no-stays"}},
        {{"--disabled"}, {"--enabled"}},
        {{"--alert", "60"}, {"--no-alert"}},
        {{"--wake"}, {"--no-wake"}},
        {{"--power-on"}, {"--no-power-on"}},
        {{"--tell-failure"}, {"--no-tell-failure"}},
        {{"--in-daemon"}, {"--in-default"}},
        {{"--in-session", "--anyway"}, {"--in-default"}},
        {{"--parameter", "Level=3"}, {"--no-parameter", "Level"}},
        {{"--argument", "-v"}, {"--argument", "-l"}},
        {{"--program", "/bin/false"}, {"--program", "/bin/true", "--argument", "-l"}},
        {{"--name", "Nightly"}, {"--name", "Backup"}},
        {{"--missed", "run-once=2d"}, {"--missed", "bundle"}},
        {{"--missed", "plug-in"}, {"--missed", "bundle"}},
        {{"--at", "04:00"}, {"--at", "03:00"}},
        {{"--until", "2061-01-01"}, {"--endless"}},
        {{"--count", "5"}, {"--endless"}},
        {{"--except", "2060-12-24", "--except", "2060-12-25 03:00"},
         {"--no-except", "2060-12-24 03:00", "--no-except", "2060-12-25"}},
        {{"--time-zone", "Asia/Tokyo"}, {"--time-zone", "machine"}},
        {{"--on", "1", "--every", "month"}, {"--every", "day", "--from", "2060-03-14"}},
    };
    for (const auto &[there, back] : opposites) {
        const QString name = there.contains("Nightly") ? "Nightly" : "Backup";
        done(QStringList{"change", "Backup"} + there);
        EXPECT_NE(entry(), before) << qPrintable(there.join(' '));
        done(QStringList{"change", name} + back);
        EXPECT_EQ(entry(), before) << qPrintable(back.join(' '));
    }
}

TEST_F(AdminChangeTest, WhatIsNotThereCannotBeTakenBackNorWhatIsSaidInTheSameBreath)
{
    addNightly({"--except", "2060-12-24"});
    EXPECT_THAT(refused({"change", "Backup", "--stays", "--no-stays"}),
                HasSubstr("Say --stays or --no-stays, not both."));
    EXPECT_THAT(refused({"change", "Backup", "--alert", "60", "--no-alert"}), HasSubstr("not both"));
    EXPECT_THAT(refused({"change", "Backup", "--disabled", "--enabled"}), HasSubstr("not both"));
    EXPECT_THAT(refused({"change", "Backup", "--count", "3", "--endless"}), HasSubstr("not both"));
    EXPECT_THAT(refused({"change", "Backup", "--until", "2061-01-01", "--endless"}), HasSubstr("not both"));
    EXPECT_THAT(refused({"change", "Backup", "--in-session", "--in-default"}), HasSubstr("one"));
    EXPECT_THAT(refused({"change", "Backup", "--no-parameter", "Level"}),
                HasSubstr("There is no parameter \"Level\"."));
    EXPECT_THAT(refused({"change", "Backup", "--no-except", "2060-12-25"}),
                HasSubstr("There is no exception on 2060-12-25."));
    EXPECT_THAT(refused({"change", "Backup", "--once", "--no-except", "2060-12-24"}),
                HasSubstr("what repeats"));
    EXPECT_THAT(refused({"add", "B", "--program", "/bin/true", "--in", "60", "--no-wake"}),
                HasSubstr("\"add\" takes no option --no-wake"));
}

TEST_F(AdminChangeTest, WhatFollowsAWakingDoesNotStayWithoutOne)
{
    addNightly({"--wake", "--power-on", "--after", "sleep"});
    done({"change", "Backup", "--no-power-on"});
    EXPECT_THAT(refused({"change", "Backup", "--no-wake"}),
                HasSubstr("--after sleep would never come any more, since it follows a waking: say --after "
                          "nothing, too."));
    EXPECT_EQ(entry()["Parameters"].toMap()["Needs Wake Up"], 1LL);
    done({"change", "Backup", "--no-wake", "--after", "nothing"});
    done({"change", "Backup", "--wake", "--after", "sleep"});
    done({"change", "Backup", "--no-wake", "--anyway"});
    done({"change", "Backup", "--name", "Other"});
}

TEST_F(AdminChangeTest, AnotherProgramComesWithoutTheArgumentsOfTheFormer)
{
    addNightly({"--wake"});
    done({"change", "Backup", "--argument", "-v"});
    EXPECT_EQ(entry()["Parameters"].toMap()["Arguments"], QVariantList{"-v"});
    done({"change", "Backup", "--program", "/bin/false"});
    const QVariantMap parameters{
        {"Program", "/bin/false"}, {"Arguments", QVariantList()}, {"Needs Wake Up", 1LL}};
    EXPECT_EQ(entry()["Parameters"].toMap(), parameters);
}

TEST_F(AdminChangeTest, AnotherRuleBeginsAnew)
{
    addNightly();
    done({"change", "Backup", "--at", "04:00"});
    EXPECT_EQ(entry()["Recurrence Rule"].toMap()["Local Start"], "2060-03-14T04:00:00");
    EXPECT_EQ(entry()["Date"].toDateTime(), QDateTime({2060, 3, 13}, {19, 0}, Qt::UTC));
    done({"change", "Backup", "--every", "weekday"});
    EXPECT_EQ(rule(), "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR");
    EXPECT_LT(entry()["Date"].toDateTime(), QDateTime::currentDateTimeUtc().addDays(4)) << "from now on";
    EXPECT_GT(entry()["Date"].toDateTime(), QDateTime::currentDateTimeUtc());
    EXPECT_THAT(entry()["Recurrence Rule"].toMap()["Local Start"].toString().toStdString(),
                HasSubstr("T04:00:00"));
}

TEST_F(AdminChangeTest, AnExceptionLeavesTheBeginning)
{
    addNightly();
    done({"change", "Backup", "--except", "2060-03-20"});
    done({"change", "Backup", "--except", "2060-03-21"});
    const QVariantMap recurrence = entry()["Recurrence Rule"].toMap();
    EXPECT_EQ(recurrence["Local Start"], "2060-03-14T03:00:00");
    EXPECT_EQ(recurrence["Excluded Dates"], QVariantList({"2060-03-20T03:00:00", "2060-03-21T03:00:00"}));
    EXPECT_EQ(entry()["Date"].toDateTime(), QDateTime({2060, 3, 13}, {18, 0}, Qt::UTC));
    done({"change", "Backup", "--except", "2060-03-14"});
    EXPECT_EQ(entry()["Date"].toDateTime(), QDateTime({2060, 3, 14}, {18, 0}, Qt::UTC))
        << "the first that is left";
}

TEST_F(AdminChangeTest, AZoneIsFixedAndLetGoAgain)
{
    addNightly();
    done({"change", "Backup", "--time-zone", "Europe/Paris"});
    EXPECT_EQ(entry()["Time Zone"], "Europe/Paris");
    EXPECT_EQ(entry()["Date"].toDateTime(), QDateTime({2060, 3, 14}, {2, 0}, Qt::UTC));
    EXPECT_EQ(rule(), "FREQ=DAILY");
    done({"change", "Backup", "--time-zone", "machine"});
    EXPECT_FALSE(entry().contains("Time Zone"));
    EXPECT_EQ(entry()["Date"].toDateTime(), QDateTime({2060, 3, 13}, {18, 0}, Qt::UTC));
}

TEST_F(AdminChangeTest, WhatRepeatsCanTakePlaceOnce)
{
    addNightly({"--overlap", "run"});
    done({"change", "Backup", "--once"});
    EXPECT_FALSE(entry().contains("Recurrence Rule"));
    EXPECT_FALSE(entry().contains("Overlap Policy")) << "that is of what repeats";
    EXPECT_EQ(entry()["Date"].toDateTime(), QDateTime({2060, 3, 13}, {18, 0}, Qt::UTC));
    EXPECT_EQ(entry()["Time Zone"], "Asia/Tokyo");
    done({"change", "Backup", "--every", "week"});
    EXPECT_EQ(rule(), "FREQ=WEEKLY");
    EXPECT_THAT(entry()["Recurrence Rule"].toMap()["Local Start"].toString().toStdString(),
                HasSubstr("T03:00:00"))
        << "at its time";
    done({"change", "Backup", "--date", "2060-04-01 12:00"});
    EXPECT_FALSE(entry().contains("Recurrence Rule"));
    EXPECT_EQ(entry()["Date"].toDateTime(), QDateTime({2060, 4, 1}, {3, 0}, Qt::UTC));
}

TEST_F(AdminChangeTest, NothingIsLostByWhatIsRefused)
{
    addNightly();
    tool.add("Once");
    const QList<std::pair<QStringList, const char *>> cases{
        {{"change", "Backup"}, "Say what is to change"},
        {{"change", "Backup", "--at", "25:00"}, "\"25:00\" is not a time such as 22:00."},
        {{"change", "Backup", "--name", "A", "--at", "7"}, "\"7\" can be 07:00 or 19:00."},
        {{"change", "Backup", "--date", "2060-03-15 03:00", "--every", "day"},
         "what repeats begins by --from"},
        {{"change", "Backup", "--once", "--at", "04:00"}, "It takes place once, or it repeats"},
        {{"change", "Backup", "--bundle", "Command", "--program", "/bin/true"},
         "by --bundle or by --program"},
        {{"change", "Backup", "--missed", "never"},
         "--missed is skip, run-once, run-once=LIMIT, plug-in or bundle"},
        {{"change", "Backup", "--missed", "skip=5"},
         "--missed is skip, run-once, run-once=LIMIT, plug-in or bundle"},
        {{"change", "Backup", "--missed", "run-once=soon"}, "\"soon\" is not a number of seconds"},
        {{"change", "Backup", "--overlap", "wait"}, "--overlap is skip or run, not \"wait\"."},
        {{"change", "Backup", "--after", "power off"},
         "--after is nothing, sleep or power-off, not \"power off\"."},
        {{"change", "Backup", "--after", "sleep"}, "--after sleep comes only where the machine was woken"},
        {{"change", "Backup", "--name", " "}, "needs a name"},
        {{"change", "Once", "--at", "04:00"}, "Say how often, by --every or --rule."},
        {{"change", "Once", "--overlap", "run"}, "--overlap is of what repeats."},
        {{"change", "Once", "--except", "2060-03-15"}, "--except is of what repeats."},
        {{"change", "Once", "--time-zone", "Europe/Paris"}, "With --time-zone say --date, too"},
        {{"add", "A", "--program", "/bin/true", "--once", "--in", "5"}, "\"add\" takes no option --once."},
        {{"add", "A", "--program", "/bin/true", "--rule", "FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30"},
         "It cannot repeat so: "},
    };
    for (const auto &[arguments, complaint] : cases)
        EXPECT_THAT(refused(arguments), HasSubstr(complaint));
    EXPECT_THAT(refused({"change", "Gone", "--at", "04:00"}, 1), HasSubstr("There is no schedule \"Gone\"."));
    EXPECT_THAT(refused({"change", "Backup", "--program", "/no/such/program"}, 1),
                HasSubstr("there is no program /no/such/program"));
}

TEST_F(AdminChangeTest, WhatIsNotUnderstoodSurvives)
{
    QVariantMap recurrence{
        {"Rule", "FREQ=DAILY"}, {"Local Start", "2060-03-14T03:00:00"}, {"Later Key", "stays"}};
    QVariantMap schedule{{"Identifier", "one"},
                         {"Name", "Backup"},
                         {"Is Enabled", true},
                         {"Bundle Path", "/Library/Application Support/Dozely/PlugIns/Command.plugin"},
                         {"Parameters", QVariantMap{{"Program", "/bin/true"}}},
                         {"Date", QDateTime({2060, 3, 13}, {18, 0}, Qt::UTC)},
                         {"Recurrence Rule", recurrence},
                         {"Another Later Key", 7LL}};
    tool.writeStore(PropertyList::toData(
        QVariantMap{{"Schedule Array", QVariantList{schedule, QVariantMap{{"Name", "bad"}}}}},
        PropertyList::Format::Xml));
    done({"change", "Backup", "--at", "04:00"});
    EXPECT_EQ(entry()["Another Later Key"], 7LL);
    EXPECT_EQ(entry()["Recurrence Rule"].toMap()["Later Key"], "stays");
    EXPECT_EQ(entry()["Recurrence Rule"].toMap()["Local Start"], "2060-03-14T04:00:00");
    EXPECT_EQ(entry(1)["Name"], "bad");
}

TEST_F(AdminChangeTest, ListShowsTheNextDateAndTheRule)
{
    addNightly();
    tool.add("Once");
    const std::string forPeople = done({"list"});
    EXPECT_THAT(forPeople, HasSubstr("2060-03-14 03:00:00  machine  "));
    EXPECT_THAT(forPeople, HasSubstr("every day at 03:00"));
    const QJsonArray schedules = tool.run({"list", "--json"}).json()["schedules"].toArray();
    EXPECT_EQ(schedules[0]["next"], "2060-03-13T18:00:00Z");
    EXPECT_EQ(schedules[1]["next"], schedules[1]["date"]);
    EXPECT_TRUE(schedules[1]["repeats"].isNull());
    EXPECT_EQ(schedules[1]["timeZone"], "Asia/Tokyo");
}
