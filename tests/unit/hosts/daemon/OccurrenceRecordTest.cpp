// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceFile.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

using namespace dozely;

using enum OccurrenceState;

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
};

TEST_F(OccurrenceRecordTest, SurvivesBeingWrittenAndRead)
{
    for (const OccurrenceState state : {Begun, Done, Skipped, NotPerformed, Removed, Interrupted}) {
        OccurrenceRecord record = sample();
        record.set("c", noon(), {state, {}, {}});
        const auto read = OccurrenceRecord::fromData(record.toData());
        ASSERT_TRUE(read);
        EXPECT_EQ(read->find("a", noon()), (OccurrenceEntry{Done, 501u, noon().addSecs(1)}));
        EXPECT_EQ(read->find("b", noon()), (OccurrenceEntry{Skipped, {}, {}}));
        EXPECT_EQ(read->find("c", noon()), (OccurrenceEntry{state, {}, {}}));
        EXPECT_FALSE(read->find("a", noon().addSecs(1)));
    }
}

TEST_F(OccurrenceRecordTest, WritesTheDocumentedKeys)
{
    const QVariantMap root = PropertyList::fromData(sample().toData())->toMap();
    EXPECT_EQ(root.keys(), QStringList({"Format", "Occurrences"}));
    EXPECT_EQ(root.value("Format"), QVariant(qint64(1)));
    EXPECT_EQ(root.value("Occurrences").toList(),
              (QVariantList{QVariantMap{{"Identifier", "a"},
                                        {"Date", noon()},
                                        {"State", "done"},
                                        {"Handed To", qint64(501)},
                                        {"Handed Over", noon().addSecs(1)}},
                            QVariantMap{{"Identifier", "b"}, {"Date", noon()}, {"State", "skipped"}}}));
}

TEST_F(OccurrenceRecordTest, TurnsWhatWasBegunIntoInterruptedOnce)
{
    OccurrenceRecord record = sample();
    record.set("c", noon(), {Begun, {}, {}});
    EXPECT_EQ(record.interruptBegun(), QStringList{"c at 2026-03-14T12:00:00Z"});
    EXPECT_EQ(record.find("c", noon())->state, Interrupted);
    EXPECT_TRUE(record.interruptBegun().isEmpty());
}

TEST_F(OccurrenceRecordTest, ForgetsSchedulesThatAreGone)
{
    OccurrenceRecord record = sample();
    EXPECT_TRUE(record.prune({{"b", noon()}}));
    EXPECT_FALSE(record.find("a", noon()));
    EXPECT_TRUE(record.find("b", noon()));
    EXPECT_FALSE(record.prune({{"b", noon()}}));
}

TEST_F(OccurrenceRecordTest, KeepsTheCurrentDateAndTheLatestOthers)
{
    OccurrenceRecord record;
    for (int day = 0; day < 9; ++day)
        record.set("a", noon().addDays(day), {Done, {}, {}});
    EXPECT_TRUE(record.prune({{"a", noon().addDays(1)}}));
    EXPECT_EQ(record.dates("a"), QList<QDateTime>({noon().addDays(1), noon().addDays(7), noon().addDays(8)}));
}

TEST_F(OccurrenceRecordTest, ThatIsDamagedAnywhereIsRefusedWhole)
{
    const QByteArray whole = sample().toData();
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

TEST_F(OccurrenceFileTest, IsEmptyAndUndamagedBeforeTheFirstStart)
{
    const auto loaded = OccurrenceFile::load();
    EXPECT_TRUE(loaded.damage.isEmpty());
    EXPECT_TRUE(loaded.record.dates("a").isEmpty());
}

TEST_F(OccurrenceFileTest, IsForItsOwnerAlone)
{
    const auto saved = OccurrenceFile::save(sample());
    ASSERT_TRUE(saved) << saved.error().text.toStdString();
    struct stat status {
    };
    ASSERT_EQ(::stat(qPrintable(root.join(recordPath)), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    ASSERT_EQ(::stat(qPrintable(root.join("/var/lib/dozely")), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0755u);
    EXPECT_EQ(OccurrenceFile::load().record.find("b", noon()), (OccurrenceEntry{Skipped, {}, {}}));
}

TEST_F(OccurrenceFileTest, ThatIsDamagedIsMovedAside)
{
    write(recordPath, "damaged");
    EXPECT_FALSE(OccurrenceFile::load().damage.isEmpty());
    EXPECT_EQ(read(QString(recordPath) + ".damaged"), "damaged");
    EXPECT_FALSE(QFile::exists(root.join(recordPath)));
    EXPECT_TRUE(OccurrenceFile::load().damage.isEmpty());
}

TEST_F(OccurrenceFileTest, ThatOthersMayWriteIsNotBelieved)
{
    write(recordPath, sample().toData());
    ASSERT_EQ(::chmod(qPrintable(root.join(recordPath)), 0666), 0);
    const auto loaded = OccurrenceFile::load();
    EXPECT_FALSE(loaded.damage.isEmpty());
    EXPECT_FALSE(loaded.record.find("a", noon()));
}

TEST_F(OccurrenceFileTest, StaysAsItIsWhenTheRecordHasGrownBeyondWhatIsRead)
{
    const auto saved = OccurrenceFile::save(sample());
    ASSERT_TRUE(saved) << saved.error().text.toStdString();
    OccurrenceRecord large = sample();
    for (int second = 0; second < 30'000; ++second)
        large.set("c", noon().addSecs(second), {Done, {}, {}});
    const auto refused = OccurrenceFile::save(large);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().text, "it has grown too large");
    EXPECT_TRUE(OccurrenceFile::load().record.find("a", noon()));
}

TEST_F(OccurrenceFileTest, SaysWhyItCouldNotBeSaved)
{
    write("/var/lib", "a file where a folder belongs");
    const auto saved = OccurrenceFile::save(sample());
    ASSERT_FALSE(saved);
    EXPECT_FALSE(saved.error().text.isEmpty());
}

TEST_F(OccurrenceRecordTest, KnowsWhatIsAskedForInItsOrderAlsoAfterBeingRead)
{
    OccurrenceRecord record = sample();
    record.set("z", noon(), {Asked, {}, {}, 501u});
    record.set("y", noon(), {Asked, {}, {}, 502u});
    record.set("x", noon(), {Asked, {}, {}, 502u});
    record.set("x", noon(), {Begun, {}, {}, 502u});
    EXPECT_EQ(record.asked(), (QList<OccurrenceRecord::Key>{{"z", noon()}, {"y", noon()}}));
    const auto read = OccurrenceRecord::fromData(record.toData());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->asked().size(), 2);
    EXPECT_EQ(read->find("y", noon()), (OccurrenceEntry{Asked, {}, {}, 502u}));
    EXPECT_EQ(read->find("x", noon())->askedBy, 502u);
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
    EXPECT_TRUE(record.prune({{"a", noon()}}));
    EXPECT_EQ(record.dates("a").size(), 8);
    EXPECT_EQ(record.asked().size(), 8);
}
