// SPDX-License-Identifier: MIT
#include "hosts/application/book/ScheduleBook.h"

#include "FakeSchedulerClient.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

using testing::Contains;

namespace
{
class ScheduleBookTest : public testing::Test
{
protected:
    ScheduleBookTest()
    {
        client.schedules["1"] = {{"name", "Backup"},
                                 {"isEnabled", true},
                                 {"date", "2026-03-14T22:00:00Z"},
                                 {"revision", "r0"},
                                 {"next", "2026-03-15T22:00:00Z"},
                                 {"mayChange", true}};
        client.schedules["2"] = {{"name", "Music"}, {"isEnabled", false}, {"revision", "r0"}};
        book = std::make_unique<ScheduleBook>(client);
        QObject::connect(book.get(), &ScheduleBook::applied, [this](int count) { failures = count; });
        settle();
    }
    static void settle()
    {
        for (int turn = 0; turn < 20; ++turn)
            QCoreApplication::processEvents();
    }
    void apply()
    {
        failures = -1;
        book->apply();
        settle();
    }
    QString keyOf(const QString &name) const
    {
        for (int row = 0; row < book->count(); ++row) {
            if (book->at(row).value("name") == name)
                return book->at(row).key;
        }
        return {};
    }
    const BookEntry &entry(const QString &key) const { return *book->entry(key); }

    FakeSchedulerClient client;
    std::unique_ptr<ScheduleBook> book;
    int failures = -1;
};

TEST_F(ScheduleBookTest, ReadsWhatTheDaemonHas)
{
    EXPECT_EQ(book->state(), ScheduleBook::State::Read);
    ASSERT_EQ(book->count(), 2);
    EXPECT_EQ(book->at(0).value("name"), "Backup");
    EXPECT_EQ(book->at(0).next, QDateTime({2026, 3, 15}, {22, 0}, Qt::UTC));
    EXPECT_FALSE(book->at(0).wanted->contains("revision"));
    EXPECT_FALSE(book->hasChanges());
}

TEST_F(ScheduleBookTest, TellsOnlyWhatWasChangedAndOfWhichRevision)
{
    book->change(keyOf("Backup"), {{"name", "Night backup"}, {"isEnabled", true}}, "Change of the name");
    EXPECT_TRUE(book->hasChanges());
    EXPECT_EQ(client.schedules["1"]["name"], "Backup");
    apply();
    EXPECT_THAT(client.calls, Contains(QString("change 1 name,revision")));
    EXPECT_EQ(client.lastChanges["revision"], "r0");
    EXPECT_EQ(failures, 0);
    EXPECT_FALSE(book->hasChanges());
    EXPECT_EQ(entry(keyOf("Night backup")).revision, "r1");
}

TEST_F(ScheduleBookTest, TakesStepsBackAndForth)
{
    const QString key = keyOf("Backup");
    book->change(key, {{"name", "A"}}, "Change of the name");
    book->change(key, {{"isEnabled", false}}, "Switching off");
    book->steps().undo();
    EXPECT_EQ(entry(key).value("isEnabled"), true);
    book->steps().undo();
    EXPECT_EQ(entry(key).value("name"), "Backup");
    EXPECT_FALSE(book->hasChanges());
    book->steps().redo();
    EXPECT_EQ(entry(key).value("name"), "A");
}

TEST_F(ScheduleBookTest, JoinsTheLettersOfOneNameInOneStep)
{
    const QString key = keyOf("Backup");
    for (const char *const typed : {"B", "Ba", "Bac"})
        book->change(key, {{"name", typed}}, "Change of the name", ScheduleBook::Step::JoinsLast);
    EXPECT_EQ(book->steps().count(), 1);
    book->steps().undo();
    EXPECT_EQ(entry(key).value("name"), "Backup");
}

TEST_F(ScheduleBookTest, JoinsNothingWithAStepThatWasAppliedAlready)
{
    const QString key = keyOf("Backup");
    book->change(key, {{"name", "A"}}, "Change of the name", ScheduleBook::Step::JoinsLast);
    apply();
    book->change(key, {{"name", "AB"}}, "Change of the name", ScheduleBook::Step::JoinsLast);
    book->steps().undo();
    EXPECT_EQ(entry(key).value("name"), "A");
}

TEST_F(ScheduleBookTest, MakesNoStepOfAChangeThatIsNone)
{
    book->change(keyOf("Backup"), {{"name", "Backup"}}, "Change of the name");
    EXPECT_EQ(book->steps().count(), 0);
}

TEST_F(ScheduleBookTest, AddsAScheduleOnceAndKeepsItsRow)
{
    const QString key = book->add({{"name", "New"}}, "New schedule");
    EXPECT_EQ(book->rowOf(key), 2);
    apply();
    EXPECT_EQ(entry(key).identifier, "added-1");
    EXPECT_EQ(book->count(), 3) << "the daemon's signal is of this one";
    EXPECT_FALSE(book->hasChanges());
}

TEST_F(ScheduleBookTest, TakesAnAppliedAdditionBack)
{
    const QString key = book->add({{"name", "New"}}, "New schedule");
    apply();
    book->steps().undo();
    EXPECT_TRUE(book->hasChanges());
    apply();
    EXPECT_FALSE(client.schedules.contains("added-1"));
    book->steps().redo();
    apply();
    EXPECT_EQ(entry(key).identifier, "added-2");
}

TEST_F(ScheduleBookTest, RemovesAndBringsBack)
{
    const QString key = keyOf("Backup");
    book->remove(key, "Removal");
    EXPECT_FALSE(entry(key).wanted);
    apply();
    EXPECT_FALSE(client.schedules.contains("1"));
    book->steps().undo();
    apply();
    EXPECT_EQ(client.schedules["added-1"]["name"], "Backup");
}

TEST_F(ScheduleBookTest, RemovesNothingTwiceAndNothingThatIsNotThere)
{
    const QString key = keyOf("Backup");
    book->remove(key, "Removal");
    const int steps = book->steps().count();
    book->remove(key, "Removal");
    book->remove("no such key", "Removal");
    EXPECT_EQ(book->steps().count(), steps);
}

TEST_F(ScheduleBookTest, KeepsWhatCouldNotBeApplied)
{
    client.refusal = dozely::Error{"You may not.", "com.dozely.Error.NotAllowed"};
    const QString key = keyOf("Backup");
    book->change(key, {{"name", "A"}}, "Change of the name");
    apply();
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(entry(key).failure, "You may not.");
    EXPECT_TRUE(book->hasChanges());
    client.refusal.reset();
    apply();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(entry(key).failure, "");
}

TEST_F(ScheduleBookTest, CountsARemovalAsDoneWhereSomebodyElseHasDoneItAndOnlyThere)
{
    const QString key = keyOf("Backup");
    book->remove(key, "Removal");
    client.refusal = dozely::Error{"You may not.", "com.dozely.Error.NotAllowed"};
    apply();
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(entry(key).failure, "You may not.");
    EXPECT_TRUE(client.schedules.contains("1"));
    client.refusal.reset();
    client.schedules.remove("1"); // and nobody has told of it yet
    apply();
    EXPECT_EQ(failures, 0);
    EXPECT_FALSE(book->hasChanges());
    EXPECT_EQ(keyOf("Backup"), "");
}

TEST_F(ScheduleBookTest, KeepsWhatWasChangedWhileItWasApplied)
{
    const QString key = keyOf("Backup");
    book->change(key, {{"name", "A"}}, "Change of the name");
    book->apply();
    book->change(key, {{"name", "AB"}}, "Change of the name");
    settle();
    EXPECT_EQ(client.schedules["1"]["name"], "A");
    EXPECT_EQ(entry(key).value("name"), "AB");
    EXPECT_TRUE(book->hasChanges());
    EXPECT_FALSE(entry(key).isChangedElsewhere);
}

TEST_F(ScheduleBookTest, FollowsWhatSomebodyElseDoes)
{
    const QString key = keyOf("Backup");
    client.changeElsewhere("1", {{"name", "Theirs"}});
    client.changeElsewhere("3", {{"name", "Third"}});
    client.removeElsewhere("2");
    settle();
    EXPECT_EQ(entry(key).value("name"), "Theirs");
    EXPECT_EQ(book->count(), 3);
    EXPECT_FALSE(book->at(1).wanted);
    EXPECT_FALSE(book->hasChanges());
}

TEST_F(ScheduleBookTest, AsksForManyThatChangedAtOnceByReadingAll)
{
    const auto add = [this](int count) {
        QStringList identifiers;
        for (int number = 0; number < count; ++number) {
            identifiers += QString("new %1").arg(client.schedules.size());
            client.schedules[identifiers.last()] = {{"name", "New"}, {"revision", "r0"}};
        }
        client.calls.clear();
        return identifiers;
    };
    Q_EMIT client.schedulesChanged(add(20));
    settle();
    EXPECT_EQ(book->count(), 22);
    EXPECT_EQ(client.calls, QStringList()) << "each for itself";
    Q_EMIT client.schedulesChanged(add(21));
    settle();
    EXPECT_EQ(book->count(), 43);
    EXPECT_EQ(client.calls, QStringList("list"));
    add(1);
    Q_EMIT client.schedulesChanged({});
    settle();
    EXPECT_EQ(book->count(), 44) << "which, is not said";
}

TEST_F(ScheduleBookTest, JoinsChangesOfBothThatDoNotMeet)
{
    const QString key = keyOf("Backup");
    book->change(key, {{"name", "Mine"}}, "Change of the name");
    client.changeElsewhere("1", {{"isEnabled", false}});
    settle();
    EXPECT_EQ(entry(key).value("name"), "Mine");
    EXPECT_EQ(entry(key).value("isEnabled"), false);
    EXPECT_FALSE(entry(key).isChangedElsewhere);
    book->steps().undo();
    EXPECT_FALSE(book->hasChanges()) << "the other's change is none of ours to take back";
}

TEST_F(ScheduleBookTest, TellsWhereBothHaveChangedTheSame)
{
    const QString key = keyOf("Backup");
    book->change(key, {{"name", "Mine"}}, "Change of the name");
    client.changeElsewhere("1", {{"name", "Theirs"}});
    settle();
    EXPECT_EQ(entry(key).value("name"), "Mine");
    EXPECT_TRUE(entry(key).isChangedElsewhere);
    book->revert(key, "Taking over");
    EXPECT_EQ(entry(key).value("name"), "Theirs");
    EXPECT_FALSE(entry(key).isChangedElsewhere);
}

TEST_F(ScheduleBookTest, TakesNothingBackWhereNothingWasChanged)
{
    book->revert(keyOf("Backup"), "Taking over");
    book->revert("nobody", "Taking over");
    EXPECT_FALSE(book->steps().canUndo());
}

TEST_F(ScheduleBookTest, AppliesItsOwnOverAnothersWhenThatIsWanted)
{
    const QString key = keyOf("Backup");
    book->change(key, {{"name", "Mine"}}, "Change of the name");
    client.changeElsewhere("1", {{"name", "Theirs"}});
    settle();
    book->keepOwn(key);
    EXPECT_FALSE(entry(key).isChangedElsewhere);
    apply();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(client.schedules["1"]["name"], "Mine");
}

TEST_F(ScheduleBookTest, LearnsWhatChangedUnnoticedWhenItIsRefusedForThat)
{
    const QString key = keyOf("Backup");
    client.schedules["1"]["revision"] = "r9";
    client.schedules["1"]["name"] = "Theirs";
    book->change(key, {{"name", "Mine"}}, "Change of the name");
    apply();
    EXPECT_EQ(failures, 1);
    EXPECT_TRUE(entry(key).isChangedElsewhere);
    EXPECT_EQ(entry(key).revision, "r9");
}

TEST_F(ScheduleBookTest, AddsAgainWhatSomebodyRemovedWhileItWasChangedHere)
{
    const QString key = keyOf("Backup");
    book->change(key, {{"name", "Mine"}}, "Change of the name");
    client.removeElsewhere("1");
    settle();
    EXPECT_TRUE(entry(key).isChangedElsewhere);
    EXPECT_FALSE(entry(key).next.isValid());
    apply();
    EXPECT_EQ(client.schedules["added-1"]["name"], "Mine");
}

TEST_F(ScheduleBookTest, TakesAllChangesBackInOneStep)
{
    book->change(keyOf("Backup"), {{"name", "A"}}, "Change of the name");
    book->add({{"name", "New"}}, "New schedule");
    book->revertAll("Discarding");
    EXPECT_FALSE(book->hasChanges());
    book->steps().undo();
    EXPECT_NE(keyOf("A"), "");
    EXPECT_NE(keyOf("New"), "");
}

TEST_F(ScheduleBookTest, ReadsAgainWhenTheDaemonComesBack)
{
    client.setThere(false);
    settle();
    EXPECT_EQ(book->count(), 2) << "what is known stays";
    client.schedules["3"] = {{"name", "Third"}};
    client.setThere(true);
    settle();
    EXPECT_EQ(book->count(), 3);
}

TEST_F(ScheduleBookTest, SaysWhyItCannotRead)
{
    client.isThere = false;
    book->read();
    settle();
    EXPECT_EQ(book->state(), ScheduleBook::State::Failed);
    EXPECT_EQ(book->failure(), "The Dozely service is not running.");
}

TEST_F(ScheduleBookTest, SaysNothingOfARepetitionThatIsNoMore)
{
    client.schedules["1"]["repeats"] = QVariantMap{{"rule", "FREQ=DAILY"}, {"inWords", "every day"}};
    book->read();
    settle();
    const QString key = keyOf("Backup");
    EXPECT_EQ(entry(key).value("repeats"), QVariant(QVariantMap{{"rule", "FREQ=DAILY"}}));
    book->change(key, {{"repeats", QVariant()}}, "Once");
    apply();
    EXPECT_EQ(client.lastChanges["repeats"], QVariant(QVariantMap()));
}
} // namespace

TEST_F(ScheduleBookTest, ReadsAScheduleAnewOfWhichAnOccurrenceBeginsOrEnds)
{
    const QString key = keyOf("Backup");
    const auto moveOn = [this](const char *next) { client.schedules["1"].insert("next", next); };
    moveOn("2026-03-16T22:00:00Z");
    Q_EMIT client.occurrenceBegan("1", "2026-03-15T22:00:00Z", {});
    settle();
    EXPECT_EQ(entry(key).next, QDateTime({2026, 3, 16}, {22, 0}, Qt::UTC));
    moveOn("2026-03-17T22:00:00Z");
    Q_EMIT client.occurrenceEnded("1", "2026-03-15T22:00:00Z", {});
    settle();
    EXPECT_EQ(entry(key).next, QDateTime({2026, 3, 17}, {22, 0}, Qt::UTC));
}

TEST_F(ScheduleBookTest, TellsWhatIsWantedNoMoreAsEmpty)
{
    client.changeElsewhere("1", {{"missed", "run once"},
                                 {"owner", 501U},
                                 {"repeats", QVariantMap{{"rule", "FREQ=DAILY"}}},
                                 {"missedLimit", quint64(60)}});
    settle();
    book->change(
        keyOf("Backup"),
        {{"missed", QVariant()}, {"owner", QVariant()}, {"repeats", QVariant()}, {"missedLimit", QVariant()}},
        "Change");
    apply();
    EXPECT_EQ(failures, 0);
    QVariantMap told = client.lastChanges;
    told.remove("revision");
    EXPECT_EQ(told, (QVariantMap{{"missed", ""}, {"owner", ""}, {"repeats", QVariantMap()}}));
}
