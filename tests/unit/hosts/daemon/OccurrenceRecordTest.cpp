// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceFile.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

using namespace dozely;

using enum OccurrenceState;

/// What was begun was begun by a process that is gone.
const auto nothingGoesOn = [](const auto &, const OccurrenceEntry &) { return false; };

class OccurrenceRecordTest : public HostFixture
{
protected:
    static OccurrenceRecord sample()
    {
        OccurrenceRecord record;
        record.set("a", noon(), {Done, 501u, noon().addSecs(1)});
        record.set("b", noon(), {Skipped, {}, {}});
        return record;
    }
    static QByteArray earlierData()
    {
        return PropertyList::toData(
            QVariantMap{
                {"Format", 1LL},
                {"Occurrences",
                 QVariantList{QVariantMap{{"Identifier", "a"},
                                          {"Date", noon()},
                                          {"State", "done"},
                                          {"Handed To", 501LL},
                                          {"Handed Over", noon().addSecs(1)}},
                              QVariantMap{{"Identifier", "b"}, {"Date", noon()}, {"State", "skipped"}}}}},
            PropertyList::Format::Binary);
    }
    /// Those that have no current date are gone.
    static bool prune(OccurrenceRecord &record, const QHash<QString, QDateTime> &currentDates)
    {
        return record.prune([&](const QString &identifier,
                                const QDateTime &date) { return currentDates.value(identifier) == date; },
                            [&](const QString &identifier) { return !currentDates.contains(identifier); });
    }
    static constexpr char earlierPath[] = "/var/lib/dozely/occurrences.plist";
};

TEST_F(OccurrenceRecordTest, ReadsWhatEarlierVersionsWrote)
{
    const auto record = OccurrenceRecord::fromData(earlierData());
    ASSERT_TRUE(record);
    EXPECT_EQ(record->find("a", noon()), (OccurrenceEntry{Done, 501u, noon().addSecs(1)}));
    EXPECT_EQ(record->find("b", noon()), (OccurrenceEntry{Skipped, {}, {}}));
    EXPECT_FALSE(record->find("a", noon().addSecs(1)));
}

TEST_F(OccurrenceRecordTest, KnowsWhatChanged)
{
    OccurrenceRecord record;
    record.restore({"a", noon()}, {Begun, {}, {}});
    EXPECT_FALSE(record.hasChanges());
    record.set("b", noon(), {Done, {}, {}});
    record.interruptBegun(nothingGoesOn);
    record.set("c", noon(), {Done, {}, {}});
    record.remove("c", noon());
    const auto changes = record.changes();
    EXPECT_EQ(changes.size(), 3);
    EXPECT_EQ(changes.value({"a", noon()})->state, Interrupted);
    EXPECT_EQ(changes.value({"b", noon()})->state, Done);
    EXPECT_FALSE(changes.value({"c", noon()}));
    record.forgetChanges();
    EXPECT_TRUE(prune(record, {}));
    EXPECT_FALSE(record.hasChanges()) << "that is for memory alone";
}

TEST_F(OccurrenceRecordTest, TurnsWhatWasBegunIntoInterruptedOnce)
{
    OccurrenceRecord record = sample();
    record.set("c", noon(), {Begun, {}, {}});
    EXPECT_EQ(record.interruptBegun(nothingGoesOn), (QList<OccurrenceRecord::Key>{{"c", noon()}}));
    EXPECT_EQ(record.find("c", noon())->state, Interrupted);
    EXPECT_TRUE(record.interruptBegun(nothingGoesOn).isEmpty());
}

TEST_F(OccurrenceRecordTest, ForgetsSchedulesThatAreGone)
{
    OccurrenceRecord record = sample();
    EXPECT_TRUE(prune(record, {{"b", noon()}}));
    EXPECT_FALSE(record.find("a", noon()));
    EXPECT_TRUE(record.find("b", noon()));
    EXPECT_FALSE(prune(record, {{"b", noon()}}));
}

TEST_F(OccurrenceRecordTest, KeepsTheCurrentDateAndTheLatestOthers)
{
    OccurrenceRecord record;
    for (int day = 0; day < 9; ++day)
        record.set("a", noon().addDays(day), {Done, {}, {}});
    EXPECT_TRUE(prune(record, {{"a", noon().addDays(1)}}));
    EXPECT_EQ(record.dates("a"), QList<QDateTime>({noon().addDays(1), noon().addDays(7), noon().addDays(8)}));
}

TEST_F(OccurrenceRecordTest, ThatIsDamagedAnywhereIsRefusedWhole)
{
    const QByteArray whole = earlierData();
    for (qsizetype length = 0; length < whole.size(); length += 5) {
        const auto record = OccurrenceRecord::fromData(whole.left(length));
        ASSERT_FALSE(record) << "cut after " << length;
        EXPECT_FALSE(record.error().text.isEmpty()) << "cut after " << length;
    }
}

TEST_F(OccurrenceRecordTest, WithOneEntryThatCannotBeReadIsRefusedWhole)
{
    const QVariantMap good{{"Identifier", "a"}, {"Date", noon()}, {"State", "done"}};
    const QVariantList wrong{"text",
                             changed(good, "State", "dreamt"),
                             changed(good, "State", 1LL),
                             changed(good, "Date", "noon"),
                             changed(good, "Identifier", 1LL),
                             changed(good, "Handed To", 501LL), // without the date
                             changed(changed(good, "Handed To", -1LL), "Handed Over", noon())};
    for (const QVariant &entry : wrong) {
        const QVariantMap root{{"Format", 1LL}, {"Occurrences", QVariantList{good, entry}}};
        EXPECT_FALSE(OccurrenceRecord::fromData(PropertyList::toData(root, PropertyList::Format::Xml)));
    }
}

TEST_F(OccurrenceRecordTest, OfALaterFormatIsRefused)
{
    const QVariantMap root{{"Format", 2LL}, {"Occurrences", QVariantList()}};
    const auto record = OccurrenceRecord::fromData(PropertyList::toData(root, PropertyList::Format::Xml));
    ASSERT_FALSE(record);
    EXPECT_FALSE(record.error().text.isEmpty());
}

using OccurrenceFileTest = OccurrenceRecordTest;

TEST_F(OccurrenceFileTest, IsEmptyAndUndamagedWhereThereIsNone)
{
    EXPECT_FALSE(OccurrenceFile::exists());
    const auto loaded = OccurrenceFile::load();
    EXPECT_TRUE(loaded.damage.isEmpty());
    EXPECT_TRUE(loaded.record.dates("a").isEmpty());
}

TEST_F(OccurrenceFileTest, IsSetAsideUnderANameThatSaysWhy)
{
    write(earlierPath, "damaged");
    EXPECT_FALSE(OccurrenceFile::load().damage.isEmpty());
    ASSERT_TRUE(OccurrenceFile::setAside(true));
    EXPECT_EQ(read(QString(earlierPath) + ".damaged"), "damaged");
    write(earlierPath, earlierData());
    EXPECT_TRUE(OccurrenceFile::load().record.find("a", noon()));
    ASSERT_TRUE(OccurrenceFile::setAside(false));
    EXPECT_EQ(read(QString(earlierPath) + ".taken-over"), earlierData());
    EXPECT_FALSE(OccurrenceFile::exists());
}

TEST_F(OccurrenceFileTest, ThatOthersMayWriteIsNotBelieved)
{
    write(earlierPath, earlierData());
    ASSERT_EQ(::chmod(qPrintable(root.join(earlierPath)), 0666), 0);
    const auto loaded = OccurrenceFile::load();
    EXPECT_FALSE(loaded.damage.isEmpty());
    EXPECT_FALSE(loaded.record.find("a", noon()));
}

TEST_F(OccurrenceRecordTest, KnowsWhatIsAskedForInItsOrder)
{
    OccurrenceRecord record = sample();
    record.set("z", noon(), {Asked, {}, {}, 501u});
    record.set("y", noon(), {Asked, {}, {}, 502u});
    record.set("x", noon(), {Asked, {}, {}, 502u});
    record.set("x", noon(), {Begun, {}, {}, 502u});
    EXPECT_EQ(record.asked(), (QList<OccurrenceRecord::Key>{{"z", noon()}, {"y", noon()}}));
    record.remove("z", noon());
    EXPECT_EQ(record.asked(), (QList<OccurrenceRecord::Key>{{"y", noon()}}));
    EXPECT_FALSE(record.find("z", noon()));
}

TEST_F(OccurrenceRecordTest, MakesRoomByForgettingTheOldestThatIsOver)
{
    OccurrenceRecord record;
    for (int i = 0; i < 5; ++i)
        record.set("a", noon().addSecs(i), {i == 0 ? Asked : Done, {}, {}, 501u});
    record.set("b", noon(), {Done, {}, {}, 502u});
    EXPECT_TRUE(record.makeRoom(501, 6));
    EXPECT_EQ(record.dates("a").size(), 5);
    EXPECT_TRUE(record.makeRoom(501, 3));
    EXPECT_EQ(record.dates("a"), (QList<QDateTime>{noon(), noon().addSecs(4)}));
    EXPECT_FALSE(record.makeRoom(501, 1)) << "what has not begun stays";
    EXPECT_TRUE(record.find("b", noon()));
}

TEST_F(OccurrenceRecordTest, PrunesNothingThatIsAskedForUnlessItsScheduleIsGone)
{
    OccurrenceRecord record;
    for (int i = 1; i < 9; ++i)
        record.set("a", noon().addSecs(i), {Asked, {}, {}, 501u});
    record.set("b", noon(), {Asked, {}, {}, 501u});
    EXPECT_TRUE(prune(record, {{"a", noon()}}));
    EXPECT_EQ(record.dates("a").size(), 8);
    EXPECT_EQ(record.asked().size(), 8);
}
