// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerAnswers.h"

#include "hosts/common/performing/PerformanceOutcome.h"
#include "hosts/daemon/ScheduleKeeper.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"
#include "unit/hosts/daemon/RecurringFixture.h"

using namespace dozely;
using namespace std::chrono_literals;

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
constexpr quint32 anna = 501;

/// At noon, of schedules of anna's unless a test says otherwise.
class SchedulerAnswersTest : public BundleFixture
{
protected:
    SchedulerAnswersTest() { makeProbe(); }

    static Schedule acting(const QString &identifier, const QString &place,
                           const QDateTime &date = noon().addSecs(60))
    {
        Schedule made = schedule(identifier, date);
        made.parameters = {{"Acts In User Agent", place == "session" ? 1LL : 0LL}};
        return made;
    }
    void setSchedules(const QList<Schedule> &schedules) { keeper.scheduler().setSchedules(schedules); }
    Schedule stored(qint32 place) const { return keeper.scheduler().stored(place); }

    QVariantMap told(const PolkitAuthority::Standing &standing = {}, quint32 user = anna) const
    {
        return answers.schedule(0, {"com.dozely.somebody", user}, standing);
    }
    QVariant actsIn() const { return told()["actsIn"]; }

    /// "NAME DATE" of each, with "> MOMENT" where that is another.
    static std::vector<std::string> lines(const QVariantList &told)
    {
        std::vector<std::string> lines;
        for (const QVariant &each : told) {
            const QVariantMap one = each.toMap();
            QString line = one["identifier"].toString() + ' ' + one["date"].toString().mid(11, 8);
            if (one["isPostponed"].toBool())
                line += " > " + one["moment"].toString().mid(11, 8);
            lines.push_back(line.toStdString());
        }
        return lines;
    }
    std::vector<std::string> coming(qsizetype most = 100, const QDateTime &until = noon().addSecs(3600),
                                    const QDateTime &from = {}) const
    {
        return lines(answers.next({}, from, until, most));
    }
    std::vector<std::string> past(const std::optional<QString> &identifier = {},
                                  const std::optional<quint32> &owner = {}, qsizetype most = 100) const
    {
        const auto history = answers.history(identifier, owner, most);
        EXPECT_TRUE(history) << qPrintable(history.error().text);
        return history ? lines(*history) : std::vector<std::string>();
    }
    /// Has one begin at its date and end a second later.
    void perform(const Schedule &schedule, const QDateTime &date, PerformanceOutcome outcome = {true})
    {
        clock.jumpTo(date);
        keeper.noteBegun({{{schedule, date}, ActingPlace::Daemon}});
        clock.advance(1s);
        outcome.ended = clock.currentDate();
        keeper.noteEnd({schedule, date}, outcome);
    }

    FakeClock clock{noon()};
    ScheduleKeeper keeper{clock};
    SchedulerAnswers answers{keeper, clock};
};
} // namespace

TEST_F(SchedulerAnswersTest, TellWhereASchedulesActionRuns)
{
    for (const char *place : {"session", "daemon"}) {
        setSchedules({acting("a", place)});
        EXPECT_EQ(actsIn(), place);
    }
    Schedule unsaid = schedule("a");
    unsaid.parameters.clear();
    setSchedules({unsaid});
    EXPECT_EQ(actsIn(), "daemon") << "as its bundle has it";
    unsaid.bundlePath = QString(plugIns) + "/Missing.plugin";
    setSchedules({unsaid});
    EXPECT_EQ(actsIn(), QVariant(QString(""))) << "nobody knows";
}

TEST_F(SchedulerAnswersTest, TellWhetherTheCallerMayChangeASchedule)
{
    const auto mayChange = [this](const PolkitAuthority::Standing &standing, quint32 user = anna) {
        return told(standing, user)["mayChange"].toBool();
    };
    setSchedules({acting("a", "session")});
    EXPECT_TRUE(mayChange({.ofOwn = true}));
    EXPECT_FALSE(mayChange({}));
    EXPECT_FALSE(mayChange({.ofOwn = true}, anna + 1)) << "it is somebody else's";
    EXPECT_TRUE(mayChange({.ofAll = true}, anna + 1));
    setSchedules({acting("a", "daemon")});
    EXPECT_FALSE(mayChange({.ofOwn = true})) << "it acts as root";
    EXPECT_TRUE(mayChange({.ofAll = true}));
}

TEST_F(SchedulerAnswersTest, TellWhenAScheduleComesNext)
{
    setSchedules({Recurring::every("a", 100s, noon().addSecs(100))});
    EXPECT_EQ(told()["next"], "2026-03-14T12:01:40Z");
    ASSERT_TRUE(keeper.notePostponed({stored(0), noon().addSecs(100)}, noon().addSecs(150)));
    EXPECT_EQ(told()["next"], "2026-03-14T12:02:30Z");
    ASSERT_TRUE(keeper.notePostponed({stored(0), noon().addSecs(100)}, noon().addSecs(250)));
    EXPECT_EQ(told()["next"], "2026-03-14T12:03:20Z") << "the one after it comes first";
    Schedule disabled = stored(0);
    disabled.isEnabled = false;
    setSchedules({disabled});
    EXPECT_FALSE(told().contains("next"));
}

TEST_F(SchedulerAnswersTest, ListAllAsEachByItself)
{
    setSchedules({acting("a", "session"), acting("b", "daemon")});
    const QVariantList all = answers.list({"com.dozely.somebody", anna}, {.ofOwn = true});
    ASSERT_EQ(all.size(), 2);
    EXPECT_EQ(all[0], QVariant(told({.ofOwn = true})));
    EXPECT_EQ(all[1].toMap()["identifier"], "b");
    EXPECT_NE(all[0].toMap()["revision"], all[1].toMap()["revision"]);
}

TEST_F(SchedulerAnswersTest, TellWhatComesInItsOrderUpToADateOrANumber)
{
    setSchedules({Recurring::every("a", 100s, noon()), acting("b", "daemon", noon().addSecs(150))});
    EXPECT_THAT(coming(4), ElementsAre("a 12:00:00", "a 12:01:40", "b 12:02:30", "a 12:03:20"));
    EXPECT_THAT(coming(100, noon().addSecs(200)),
                ElementsAre("a 12:00:00", "a 12:01:40", "b 12:02:30", "a 12:03:20"));
    EXPECT_THAT(coming(100, noon().addSecs(199)), ElementsAre("a 12:00:00", "a 12:01:40", "b 12:02:30"));
    EXPECT_THAT(coming(2, {}, noon().addSecs(150)), ElementsAre("b 12:02:30", "a 12:03:20"));
    EXPECT_THAT(lines(answers.next(1, {}, {}, 100)), ElementsAre("b 12:02:30"));
    EXPECT_THAT(coming(0), IsEmpty());
    EXPECT_EQ(coming(5000, {}).size(), 1000U) << "so many at once";
    clock.advance(101s);
    EXPECT_THAT(coming(1), ElementsAre("b 12:02:30")) << "what is past does not come";
}

TEST_F(SchedulerAnswersTest, TellOfWhatComesWhatWasDecidedAboutIt)
{
    setSchedules({Recurring::every("a", 100s, noon().addSecs(100))});
    const auto at = [this](int seconds) { return Occurrence{stored(0), noon().addSecs(seconds)}; };
    ASSERT_TRUE(keeper.notePostponed(at(100), noon().addSecs(250)));
    ASSERT_TRUE(keeper.noteRemoved(at(200)));
    EXPECT_THAT(coming(3), ElementsAre("a 12:01:40 > 12:04:10", "a 12:05:00", "a 12:06:40"));
}

TEST_F(SchedulerAnswersTest, TellOfWhatComesWhetherTheMachineIsWokenForIt)
{
    Schedule woken = acting("a", "daemon");
    for (const auto &[parameter, key] :
         {std::pair("Needs Wake Up", "wakes"), std::pair("Needs Startup", "powersOn")}) {
        woken.parameters = {{parameter, 1LL}};
        setSchedules({woken});
        const QVariantMap one = answers.next({}, {}, {}, 1).value(0).toMap();
        EXPECT_EQ(one["wakes"], QVariant(QString(key) == "wakes")) << key;
        EXPECT_EQ(one["powersOn"], QVariant(QString(key) == "powersOn")) << key;
        EXPECT_EQ(one["name"], "Name of a");
    }
    EXPECT_EQ(answers.occurrence({woken, woken.date})["moment"], "2026-03-14T12:01:00Z");
}

TEST_F(SchedulerAnswersTest, TellWhatBecameOfOccurrencesNewestFirst)
{
    const Schedule a = Recurring::every("a", 100s, noon());
    Schedule b = acting("b", "daemon");
    b.owner = anna + 1;
    setSchedules({a, b});
    perform(a, noon());
    perform(b, noon().addSecs(60));
    perform(a, noon().addSecs(100), {true, "the disk is full", 3});
    EXPECT_THAT(past(), ElementsAre("a 12:01:40", "b 12:01:00", "a 12:00:00"));
    EXPECT_THAT(past({}, {}, 2), ElementsAre("a 12:01:40", "b 12:01:00"));
    EXPECT_THAT(past("a"), ElementsAre("a 12:01:40", "a 12:00:00"));
    EXPECT_THAT(past({}, anna), ElementsAre("a 12:01:40", "a 12:00:00"));
    EXPECT_THAT(past({}, anna + 1), ElementsAre("b 12:01:00"));
    EXPECT_THAT(past({}, anna + 2), IsEmpty());
    EXPECT_THAT(past("none"), IsEmpty());
    EXPECT_THAT(past("b", anna), ElementsAre("b 12:01:00")) << "the one that is named";
}

TEST_F(SchedulerAnswersTest, TellHowAnOccurrenceEnded)
{
    setSchedules({acting("a", "daemon", noon())});
    perform(stored(0), noon(), {true, "the disk is full", 3});
    const QVariantMap failed = answers.history("a", {}, 1)->value(0).toMap();
    EXPECT_EQ(failed, (QVariantMap{{"identifier", "a"},
                                   {"name", "Name of a"},
                                   {"date", "2026-03-14T12:00:00Z"},
                                   {"state", "failed"},
                                   {"isCountExact", true},
                                   {"begun", "2026-03-14T12:00:00Z"},
                                   {"ended", "2026-03-14T12:00:01Z"},
                                   {"lateness", 0},
                                   {"exitStatus", 3},
                                   {"failure", "the disk is full"}}));
    QVariantMap forAll = failed;
    forAll.remove("exitStatus");
    forAll.remove("failure");
    EXPECT_EQ(answers.outcomeForAll({"a", noon()}), forAll) << "why is its owner's business";
    setSchedules({});
    EXPECT_FALSE(answers.outcomeForAll({"a", noon()}).contains("name"));
}

TEST_F(SchedulerAnswersTest, TellWhichOnesWereMissedTogether)
{
    setSchedules({Recurring::every("a", 10s, noon())});
    keeper.noteRun(stored(0), {noon(), noon().addSecs(50), 6, false});
    const QVariantMap missed = answers.outcomeForAll({"a", noon().addSecs(50)});
    EXPECT_EQ(missed["state"], "missed");
    EXPECT_EQ(missed["first"], "2026-03-14T12:00:00Z");
    EXPECT_EQ(missed["count"], 6);
    EXPECT_EQ(missed["isCountExact"], false);
}

TEST_F(SchedulerAnswersTest, TellEverybodyOfNothingThatIsNotOver)
{
    setSchedules({acting("a", "daemon", noon())});
    EXPECT_THAT(answers.outcomeForAll({"a", noon()}), IsEmpty());
    keeper.noteBegun({{{stored(0), noon()}, ActingPlace::Daemon}});
    EXPECT_THAT(answers.outcomeForAll({"a", noon()}), IsEmpty());
}

TEST_F(SchedulerAnswersTest, SayThatTheRecordCannotBeRead)
{
    setSchedules({acting("a", "daemon", noon())});
    perform(stored(0), noon());
    keeper.flush();
    EXPECT_TRUE(QFile::remove(root.join(recordPath)));
    root.makeFolder(recordPath);
    const auto history = answers.history({}, {}, 10);
    ASSERT_FALSE(history);
    EXPECT_TRUE(history.error().text.startsWith("What became of it cannot be told: "));
    EXPECT_EQ(history.error().name, "com.dozely.Error.NotPossible");
}

TEST_F(SchedulerAnswersTest, NameWhatATestOfTheClockHasShown)
{
    using Outcome = WakeTrial::Outcome;
    const QList<std::pair<Outcome, const char *>> names{
        {Outcome::NoClock, "no clock"}, {Outcome::Dropped, "dropped"},    {Outcome::Kept, "kept"},
        {Outcome::Woken, "woken"},      {Outcome::TooEarly, "too early"}, {Outcome::TooLate, "too late"}};
    for (const auto &[outcome, name] : names)
        EXPECT_EQ(SchedulerAnswers::wakeTrial({outcome, "Well."})["outcome"], name);
    EXPECT_EQ(SchedulerAnswers::wakeTrial({Outcome::Woken, "Well.", noon(), noon().addSecs(1)}),
              (QVariantMap{{"outcome", "woken"},
                           {"sentence", "Well."},
                           {"planned", "2026-03-14T12:00:00Z"},
                           {"back", "2026-03-14T12:00:01Z"}}));
}
