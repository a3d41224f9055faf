// SPDX-License-Identifier: MIT
#include "hosts/daemon/ScheduleKeeper.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/BundleFixture.h"
#include "unit/hosts/daemon/RecurringFixture.h"

#include <QDir>

#include <array>
#include <sys/stat.h>
#include <unistd.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

class ScheduleKeeperTest : public BundleFixture
{
protected:
    /// Reads the store and returns the lines that the log got.
    std::vector<std::string> linesOfReading(ScheduleKeeper &keeper) const
    {
        const qsizetype before = messages().size();
        keeper.readStore();
        std::vector<std::string> lines;
        for (const QString &line : messages().mid(before))
            lines.push_back(line.toStdString());
        return lines;
    }
    static QStringList identifiersOf(const ScheduleKeeper &keeper)
    {
        QStringList identifiers;
        for (const Schedule &schedule : keeper.scheduler().schedules())
            identifiers += schedule.identifier;
        return identifiers;
    }
    static std::optional<OccurrenceState> savedState(const QString &identifier)
    {
        OccurrenceDatabase database;
        (void)database.open(noon());
        const auto entry = database.find({identifier, noon()});
        return entry && *entry ? std::optional((*entry)->state) : std::nullopt;
    }
    static Occurrence occurrenceOf(const QString &identifier) { return {schedule(identifier), noon()}; }

    FakeClock clock{noon()};
};

TEST_F(ScheduleKeeperTest, CountsTheSchedulesInTheLogWhenTheirNumberChanges)
{
    ScheduleKeeper keeper(clock);
    EXPECT_THAT(linesOfReading(keeper), ElementsAre("Schedules: 0"));
    writeStore({entry("a"), entry("b")});
    EXPECT_THAT(linesOfReading(keeper), ElementsAre("Schedules: 2"));
    EXPECT_THAT(linesOfReading(keeper), ElementsAre());
}

TEST_F(ScheduleKeeperTest, KeepsTheLastGoodStateOfADamagedStoreAndSaysSoOnce)
{
    ScheduleKeeper keeper(clock);
    writeStore({entry("a"), entry("b")});
    keeper.readStore();
    for (const QByteArray &damaged : {QByteArray(), storeOf({entry("c")}).left(200), QByteArray("text")}) {
        write(storePath, damaged);
        EXPECT_THAT(linesOfReading(keeper), ElementsAre(HasSubstr("its schedules stay as they were")));
        EXPECT_THAT(linesOfReading(keeper), ElementsAre());
        EXPECT_EQ(identifiersOf(keeper), QStringList({"a", "b"}));
        EXPECT_EQ(read(storePath), damaged) << "the daemon never writes the store";
        writeStore({entry("a"), entry("b")});
        keeper.readStore();
    }
}

TEST_F(ScheduleKeeperTest, RunsTheGoodEntriesAndNamesTheBadOneInOneLine)
{
    ScheduleKeeper keeper(clock);
    writeStore({entry("a"), changed(entry("b"), "Date", "tomorrow"), entry("c")});
    EXPECT_THAT(
        linesOfReading(keeper),
        ElementsAre(R"(Schedule entry 2 ("Name of b", "b") is bad: "Date" is not a date)", "Schedules: 2"));
    EXPECT_EQ(identifiersOf(keeper), QStringList({"a", "c"}));
}

TEST_F(ScheduleKeeperTest, KeepsTheLastGoodStateOfAnEntryThatTurnsBad)
{
    ScheduleKeeper keeper(clock);
    writeStore({entry("a"), entry("b")});
    keeper.readStore();
    writeStore({changed(entry("a"), "Name", "New"), changed(entry("b"), "Is Enabled", "no")});
    EXPECT_THAT(linesOfReading(keeper), ElementsAre(HasSubstr("\"b\") is bad")));
    EXPECT_EQ(keeper.scheduler().schedule("a")->name, "New");
    EXPECT_EQ(keeper.scheduler().schedule("b"), schedule("b"));
    writeStore({entry("a")});
    keeper.readStore();
    EXPECT_EQ(identifiersOf(keeper), QStringList{"a"});
}

TEST_F(ScheduleKeeperTest, HasNoSchedulesOnceTheStoreIsRemoved)
{
    ScheduleKeeper keeper(clock);
    writeStore({entry("a")});
    keeper.readStore();
    ASSERT_TRUE(QFile::remove(root.join(storePath)));
    EXPECT_THAT(linesOfReading(keeper), ElementsAre("Schedules: 0"));
}

TEST_F(ScheduleKeeperTest, HasABeginningOnDiskAtOnceAndTheEndALittleLater)
{
    ScheduleKeeper keeper(clock);
    keeper.noteBegun({{occurrenceOf("a"), ActingPlace::Daemon}});
    EXPECT_EQ(savedState("a"), OccurrenceState::Begun);
    keeper.note(occurrenceOf("a"), OccurrenceState::Done);
    EXPECT_EQ(savedState("a"), OccurrenceState::Begun);
    clock.advance(1s);
    EXPECT_EQ(savedState("a"), OccurrenceState::Done);
}

TEST_F(ScheduleKeeperTest, HasOnDiskWhatIsAskedForBeforeItSaysSo)
{
    writeStore({entry("a", noon().addSecs(3600))});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    const Occurrence asked = keeper.scheduler().makeOccurrenceNow(*keeper.scheduler().schedule("a"));
    ASSERT_TRUE(keeper.noteAsked(asked, 501));
    EXPECT_EQ(savedState("a"), OccurrenceState::Asked);
    ScheduleKeeper restarted(clock);
    restarted.readStore();
    ASSERT_EQ(restarted.scheduler().due().size(), 1);
    EXPECT_TRUE(restarted.scheduler().due().first().isAskedFor);
    EXPECT_EQ(restarted.scheduler().nextDate(), noon());
    restarted.noteBegun({{restarted.scheduler().due().first(), ActingPlace::Daemon}});
    EXPECT_TRUE(restarted.scheduler().due().isEmpty());
    EXPECT_EQ(savedState("a"), OccurrenceState::Begun);
}

TEST_F(ScheduleKeeperTest, TakesNoMoreOfOneUserThanTwoHundredThatAreNotOver)
{
    writeStore({entry("a", noon().addSecs(3600))});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    const auto ask = [&](quint32 user) {
        return keeper.noteAsked(keeper.scheduler().makeOccurrenceNow(*keeper.scheduler().schedule("a")),
                                user);
    };
    for (int i = 0; i < 200; ++i)
        ASSERT_TRUE(ask(501)) << i;
    const auto refused = ask(501);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().text, "200 actions that this user asked for are not over");
    EXPECT_TRUE(ask(502));
    keeper.note(keeper.scheduler().due().first(), OccurrenceState::Done);
    EXPECT_TRUE(ask(501)) << "what is over is forgotten instead";
    EXPECT_EQ(keeper.scheduler().record().dates("a").size(), 201);
}

TEST_F(ScheduleKeeperTest, RefusesWhatIsAskedForWhenTheDiskDoes)
{
    write("/var/lib", "a file where a folder belongs");
    ScheduleKeeper keeper(clock);
    EXPECT_FALSE(keeper.noteAsked(occurrenceOf("a"), 501));
    EXPECT_FALSE(keeper.scheduler().record().find("a", noon()));
}

TEST_F(ScheduleKeeperTest, SaysThatWhatIsAskedForIsGone)
{
    writeStore({entry("a", noon().addSecs(3600))});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    ASSERT_TRUE(keeper.noteAsked(occurrenceOf("a"), 501));
    writeStore({});
    EXPECT_THAT(linesOfReading(keeper),
                ElementsAre("Schedule a was not performed: it was removed", "Schedules: 0"));
    EXPECT_TRUE(keeper.scheduler().record().asked().isEmpty());
}

TEST_F(ScheduleKeeperTest, SavesWhatIsLeftWhenItIsTold)
{
    ScheduleKeeper keeper(clock);
    keeper.note(occurrenceOf("a"), OccurrenceState::Skipped);
    keeper.flush();
    EXPECT_EQ(savedState("a"), OccurrenceState::Skipped);
}

TEST_F(ScheduleKeeperTest, LogsWhatItFindsBegunAsInterruptedAndDoesNotRepeatIt)
{
    writeStore({entry("a")});
    ScheduleKeeper(clock).noteBegun(
        {{occurrenceOf("a"), ActingPlace::Daemon}, {occurrenceOf("gone"), ActingPlace::Daemon}});
    ScheduleKeeper restarted(clock);
    EXPECT_THAT(
        linesOfReading(restarted),
        ElementsAre("Schedules: 1",
                    "Schedule \"Name of a\" at 2026-03-14T12:00:00Z was interrupted and is not repeated",
                    "Schedule gone at 2026-03-14T12:00:00Z was interrupted and is not repeated"));
    EXPECT_TRUE(linesOfReading(restarted).empty());
    EXPECT_TRUE(restarted.scheduler().due().isEmpty());
    restarted.flush();
    EXPECT_EQ(savedState("a"), OccurrenceState::Interrupted);
}

TEST_F(ScheduleKeeperTest, TakesWhatFellDueBeforeADamagedRecordForPerhapsPerformed)
{
    writeStore({entry("a", noon().addSecs(-1)), entry("b")});
    write(recordPath, "damaged");
    ScheduleKeeper keeper(clock);
    ASSERT_EQ(messages().size(), 1);
    EXPECT_THAT(messages().first().toStdString(), HasSubstr("is damaged and was moved aside"));
    keeper.readStore();
    const auto due = keeper.scheduler().due();
    ASSERT_EQ(due.size(), 2);
    EXPECT_TRUE(due[0].mayHaveRun);
    EXPECT_FALSE(due[1].mayHaveRun);
}

TEST_F(ScheduleKeeperTest, RepeatsNothingOfATimeOfWhichNothingIsKnownAfterItWasKilled)
{
    writeStore({entry("a", noon().addSecs(-1))});
    write(recordPath, "damaged");
    {
        ScheduleKeeper killed(clock); // before it saved anything
    }
    clock.advance(1s);
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    ASSERT_EQ(keeper.scheduler().due().size(), 1);
    EXPECT_TRUE(keeper.scheduler().due().first().mayHaveRun);
}

TEST_F(ScheduleKeeperTest, KnowsAnOccurrenceAgainWhoseDateComesBackAfterManyOthers)
{
    ScheduleKeeper keeper(clock);
    for (int day = 0; day < 9; ++day) {
        const QDateTime date = noon().addDays(-day);
        writeStore({entry("a", date)});
        keeper.readStore();
        keeper.note({schedule("a", date), date}, OccurrenceState::Done);
    }
    for (int day = 0; day < 9; ++day) {
        writeStore({entry("a", noon().addDays(-day))});
        keeper.readStore();
        EXPECT_TRUE(keeper.scheduler().due().isEmpty()) << day;
        ScheduleKeeper restarted(clock);
        restarted.readStore();
        EXPECT_TRUE(restarted.scheduler().due().isEmpty()) << day << ", after a restart";
    }
}

TEST_F(ScheduleKeeperTest, ForgetsOccurrencesOfSchedulesThatAreGone)
{
    ScheduleKeeper keeper(clock);
    keeper.noteBegun({{occurrenceOf("a"), ActingPlace::Daemon}});
    keeper.note(occurrenceOf("a"), OccurrenceState::Done);
    writeStore({entry("b")});
    keeper.readStore();
    keeper.flush();
    EXPECT_FALSE(savedState("a"));
}

TEST_F(ScheduleKeeperTest, ForgetsNothingWhileTheStoreIsBad)
{
    ScheduleKeeper keeper(clock);
    keeper.note(occurrenceOf("a"), OccurrenceState::Done);
    keeper.flush();
    const auto isRemembered = [&] {
        keeper.readStore();
        keeper.flush();
        return savedState("a").has_value();
    };
    EXPECT_TRUE(isRemembered()) << "no store";
    write(storePath, "text");
    EXPECT_TRUE(isRemembered()) << "no property list";
    writeStore({entry("b"), "text"});
    EXPECT_TRUE(isRemembered()) << "an entry of which nobody can say what it stands for";
    writeStore({entry("b"), changed(entry("a"), "Date", "tomorrow")});
    EXPECT_TRUE(isRemembered()) << "its entry is bad";
}

TEST_F(ScheduleKeeperTest, ForgetsWhatIsGoneAlthoughAnEntryOfTheStoreIsBad)
{
    writeStore({entry("a", noon().addSecs(3600)), entry("bad")});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    keeper.note(occurrenceOf("a"), OccurrenceState::Done);
    keeper.note(occurrenceOf("bad"), OccurrenceState::Done);
    keeper.flush();
    ASSERT_TRUE(keeper.noteAsked({schedule("bad"), noon().addSecs(5)}, 501));
    writeStore({changed(entry("bad"), "Date", "tomorrow")});
    keeper.readStore();
    EXPECT_FALSE(savedState("a"));
    EXPECT_EQ(savedState("bad"), OccurrenceState::Done);
    EXPECT_EQ(keeper.scheduler().record().asked().size(), 1);
    EXPECT_TRUE(keeper.scheduler().record().dates("a").isEmpty());
}

TEST_F(ScheduleKeeperTest, SaysWhatItCouldNotReadAndTriesAgain)
{
    writeStore({entry("a")});
    ASSERT_EQ(::chmod(qPrintable(root.join(storePath)), 0666), 0);
    ScheduleKeeper keeper(clock);
    EXPECT_THAT(linesOfReading(keeper),
                ElementsAre(HasSubstr("none of its schedules was read"), "Schedules: 0"));
    ASSERT_EQ(::chmod(qPrintable(root.join(storePath)), 0644), 0);
    int readings = 0;
    QObject::connect(&keeper, &ScheduleKeeper::storeMayBeReadable, &keeper, [&] {
        ++readings;
        keeper.readStore();
    });
    clock.advance(1s);
    EXPECT_EQ(readings, 1);
    EXPECT_EQ(identifiersOf(keeper), QStringList{"a"});
    clock.advance(3600s);
    EXPECT_EQ(readings, 1);
}

TEST_F(ScheduleKeeperTest, RemovesWhatIsOverForThirtyDaysUnlessItIsToStay)
{
    writeStore({entry("over"), changed(entry("stays"), "Stays When Over", true), entry("open"),
                changed(entry("bad"), "Date", "tomorrow"), entry("changed")});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    for (const char *identifier : {"over", "stays", "changed"})
        keeper.note(occurrenceOf(identifier), OccurrenceState::Done);
    const auto stored = [&] {
        QStringList identifiers;
        for (const QVariant &one :
             dozely::PropertyList::fromData(read(storePath))->toMap()["Schedule Array"].toList())
            identifiers += one.toMap()["Identifier"].toString();
        return identifiers;
    };
    clock.advance(30 * 24h);
    keeper.removeOver();
    EXPECT_EQ(stored().size(), 5);
    writeStore({entry("over"), changed(entry("stays"), "Stays When Over", true), entry("open"),
                changed(entry("bad"), "Date", "tomorrow"), changed(entry("changed"), "Name", "New")});
    clock.advance(24h);
    keeper.removeOver();
    EXPECT_EQ(stored(), QStringList({"stays", "open", "bad", "changed"}));
    EXPECT_EQ(messages().filter("it is over for 30 days").size(), 1);
    keeper.readStore();
    EXPECT_FALSE(savedState("over"));
}

TEST_F(ScheduleKeeperTest, TriesAgainEverMoreSeldom)
{
    write(storePath, "text");
    ScheduleKeeper keeper(clock);
    int readings = 0;
    QObject::connect(&keeper, &ScheduleKeeper::storeMayBeReadable, &keeper, [&] {
        ++readings;
        keeper.readStore();
        keeper.readStore(); // as when the store is changed meanwhile
    });
    keeper.readStore();
    clock.advance(3600s);
    EXPECT_GE(readings, 60);
    EXPECT_LE(readings, 67);
}

TEST_F(ScheduleKeeperTest, SaysOnceThatTheRecordCannotBeSaved)
{
    write("/var/lib", "a file where a folder belongs");
    ScheduleKeeper keeper(clock);
    keeper.noteBegun({{occurrenceOf("a"), ActingPlace::Daemon}});
    keeper.noteBegun({{occurrenceOf("b"), ActingPlace::Daemon}});
    ASSERT_EQ(messages().size(), 1);
    EXPECT_THAT(messages().first().toStdString(), HasSubstr("could not be saved"));
    EXPECT_TRUE(keeper.scheduler().record().find("b", noon())) << "remembered all the same";
}

TEST_F(ScheduleKeeperTest, SavesByItselfWhatTheDiskRefused)
{
    write("/var/lib", "a file where a folder belongs");
    ScheduleKeeper keeper(clock);
    keeper.noteBegun({{occurrenceOf("a"), ActingPlace::Daemon}});
    EXPECT_TRUE(keeper.scheduler().record().hasChanges());
    ASSERT_TRUE(QFile::remove(root.join("/var/lib")));
    clock.advance(999ms);
    EXPECT_TRUE(keeper.scheduler().record().hasChanges());
    clock.advance(1ms);
    EXPECT_FALSE(keeper.scheduler().record().hasChanges());
}

/// Bytes that this process has for itself, its heap among them.
static qint64 ownMemory()
{
    QFile file("/proc/self/smaps_rollup");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    const qsizetype anonymous = content.indexOf("Anonymous:");
    EXPECT_GE(anonymous, 0);
    return content.mid(anonymous + qstrlen("Anonymous:")).trimmed().split(' ').first().toLongLong() << 10;
}

TEST_F(ScheduleKeeperTest, GivesMemoryBackOnceNothingHasHappenedForAWhile)
{
    constexpr qint64 taken = 16 << 20;
    ScheduleKeeper keeper(clock);
    writeStore({entry("a")});
    keeper.readStore();
    // As many occurrences do: all of it is free again but the last piece, which holds the heap up.
    std::vector<std::unique_ptr<std::array<char, 1024>>> pieces(taken / 1024);
    for (auto &piece : pieces)
        piece = std::make_unique<std::array<char, 1024>>();
    const auto last = std::move(pieces.back());
    pieces.clear();
    keeper.note(occurrenceOf("a"), OccurrenceState::Done);
    clock.advance(9s);
    const qint64 before = ownMemory();
    keeper.note(occurrenceOf("a"), OccurrenceState::Done);
    clock.advance(5s);
    EXPECT_GT(ownMemory(), before - taken / 2) << "something has happened meanwhile";
    clock.advance(15s);
#ifndef __SANITIZE_ADDRESS__ // which has a heap of its own, and gives nothing back when it is asked to
    EXPECT_LT(ownMemory(), before - taken / 2);
#endif
    clock.advance(1h);
    EXPECT_TRUE(clock.pendingDelays().isEmpty()) << "it does not do so for ever";
}

TEST_F(ScheduleKeeperTest, TakesAScheduleWhoseRuleHasNoSenseForABadEntry)
{
    ScheduleKeeper keeper(clock);
    writeStore({Recurring::daily("a", noon()).toEntry(), entry("b")});
    keeper.readStore();
    writeStore({Recurring::schedule("a", "FREQ=DAILY;BYMONTH=13", noon()).toEntry(),
                Recurring::schedule("c", "FREQ=NEVER", noon()).toEntry(), entry("b")});
    const auto lines = linesOfReading(keeper);
    EXPECT_EQ(lines.size(), 2u);
    EXPECT_THAT(lines.front(), HasSubstr("Schedule \"Name of a\" is bad: BYMONTH=13"));
    EXPECT_EQ(identifiersOf(keeper), QStringList({"b", "a"}));
    EXPECT_EQ(keeper.scheduler().schedule("a")->recurrence->rule, "FREQ=DAILY") << "the last good one";
    EXPECT_THAT(linesOfReading(keeper), ElementsAre()) << "once";
}

TEST_F(ScheduleKeeperTest, RemembersHowFarASchedulesOccurrencesHaveComeAcrossDaemons)
{
    writeStore({Recurring::every("a", 10s, noon()).toEntry()});
    {
        ScheduleKeeper keeper(clock);
        keeper.readStore();
        keeper.noteBegun({{keeper.scheduler().due().first(), ActingPlace::Daemon}});
        // It is killed now: "begun" is on disk, and with it how far the schedule has come.
    }
    ScheduleKeeper restarted(clock);
    restarted.readStore();
    EXPECT_EQ(restarted.scheduler().nextDate(), noon().addSecs(10));
    EXPECT_EQ(messages().filter("was interrupted").size(), 1);
}

TEST_F(ScheduleKeeperTest, SavesForGoodWhatIsRemovedOrPostponedOrNothingAtAll)
{
    writeStore({Recurring::every("a", 10s, noon()).toEntry()});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    clock.advance(35s);
    Occurrence current = keeper.scheduler().due().first();
    ASSERT_TRUE(keeper.noteRemoved(current)) << "with all that is due";
    EXPECT_EQ(keeper.scheduler().nextDate(), noon().addSecs(40));
    current = keeper.scheduler().pendingOf(0).first();
    ASSERT_TRUE(keeper.notePostponed(current, noon().addSecs(45)));
    {
        ScheduleKeeper restarted(clock);
        restarted.readStore();
        EXPECT_EQ(restarted.scheduler().nextDate(), noon().addSecs(45));
    }
}

TEST_F(ScheduleKeeperTest, NotesNoWishThatTheDiskRefuses)
{
    write("/var/lib", "a file where a folder belongs");
    writeStore({Recurring::every("a", 10s, noon()).toEntry()});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    clock.advance(25s);
    const auto before = keeper.scheduler().record().calendar("a");
    const Occurrence current = keeper.scheduler().due().first();
    EXPECT_FALSE(keeper.noteRemoved(current));
    EXPECT_FALSE(keeper.notePostponed(current, noon().addSecs(60)));
    EXPECT_EQ(keeper.scheduler().record().calendar("a"), before);
    ASSERT_EQ(keeper.scheduler().pendingOf(0).size(), 1);
    EXPECT_EQ(keeper.scheduler().pendingOf(0).first().moment(), noon());
    EXPECT_TRUE(keeper.scheduler().record().dates("a").isEmpty());
}

TEST_F(ScheduleKeeperTest, TellsOfALostRecordInOneLineForAllSchedulesThatRepeat)
{
    write(recordPath, "no database");
    ASSERT_EQ(::chmod(qPrintable(root.join(recordPath)), 0600), 0);
    writeStore({Recurring::every("a", 10s, noon().addSecs(-100)).toEntry(),
                Recurring::daily("b", noon().addDays(-9)).toEntry(),
                Recurring::daily("now", noon()).toEntry(),
                Recurring::daily("later", noon().addDays(9)).toEntry()});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    EXPECT_EQ(messages().filter("Schedules that repeat: 3; what they had up to 2026-03-14T12:00:00Z").size(),
              1);
    EXPECT_EQ(keeper.scheduler().nextDate(), noon().addSecs(10));
    keeper.flush();
    ScheduleKeeper restarted(clock);
    restarted.readStore();
    EXPECT_EQ(messages().filter("Schedules that repeat").size(), 1);
}

TEST_F(ScheduleKeeperTest, DropsWhatIsPostponedWithASchedulesDateAndWhenItIsDisabledOrRemoved)
{
    writeStore({entry("disabled"), entry("moved"), entry("removed"), entry("stays")});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    for (qint32 place = 0; place < 4; ++place)
        ASSERT_TRUE(keeper.notePostponed(keeper.scheduler().pendingOf(place).first(), noon().addSecs(60)));
    writeStore({changed(entry("disabled"), "Is Enabled", false), entry("moved", noon().addSecs(30)),
                entry("stays")});
    EXPECT_THAT(
        linesOfReading(keeper),
        testing::UnorderedElementsAre(
            "Schedule \"Name of disabled\": what was postponed is not performed: it was disabled",
            "Schedule \"Name of moved\": what was postponed is not performed: it was given another date",
            "Schedule removed was not performed: it was removed", "Schedules: 3"));
    EXPECT_EQ(keeper.scheduler().record().postponed().size(), 1);
    EXPECT_EQ(keeper.scheduler().nextDate(), noon().addSecs(30));
}

TEST_F(ScheduleKeeperTest, RemovesAScheduleThirtyDaysAfterTheLastOfItsOccurrences)
{
    writeStore({Recurring::schedule("a", "FREQ=DAILY;COUNT=2", noon()).toEntry(),
                Recurring::daily("for ever", noon()).toEntry()});
    ScheduleKeeper keeper(clock);
    keeper.readStore();
    for (int day = 0; day < 2; ++day, clock.advance(24h)) {
        for (const Occurrence &occurrence : keeper.scheduler().due())
            keeper.note(occurrence, OccurrenceState::Skipped);
    }
    clock.advance(29 * 24h);
    keeper.removeOver();
    keeper.readStore();
    EXPECT_EQ(identifiersOf(keeper).size(), 2);
    clock.advance(1s);
    keeper.removeOver();
    keeper.readStore();
    EXPECT_EQ(identifiersOf(keeper), QStringList{"for ever"});
}
