// SPDX-License-Identifier: MIT
#include "hosts/common/schedules/ScheduleStore.h"

#include "DozelyKit/core/files/GuardedFile.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

#include <QDir>
#include <QtEndian>

#include <unistd.h>

using namespace dozely;

using testing::HasSubstr;

class ScheduleStoreTest : public HostFixture
{
protected:
    static QStringList identifiersOf(const QList<Schedule> &schedules)
    {
        QStringList identifiers;
        for (const Schedule &schedule : schedules)
            identifiers += schedule.identifier;
        return identifiers;
    }
    QVariantMap storedRoot() const { return PropertyList::fromData(read(storePath))->toMap(); }
    QVariantList storedEntries() const { return storedRoot().value("Schedule Array").toList(); }
    static bool keepAll(QList<Schedule> &) { return true; }
    static bool editedBy(const std::function<bool(QList<Schedule> &)> &change)
    {
        const auto edited = ScheduleStore::edit(change);
        return edited && *edited;
    }
};

TEST_F(ScheduleStoreTest, ThatDoesNotExistIsEmpty)
{
    const auto content = ScheduleStore::read();
    ASSERT_TRUE(content);
    EXPECT_FALSE(content->exists);
    EXPECT_TRUE(content->schedules.isEmpty());
    EXPECT_TRUE(content->faults.isEmpty());
}

TEST_F(ScheduleStoreTest, GivesItsSchedulesInTheirOrder)
{
    writeStore({entry("b"), entry("a"), entry("c")});
    const auto content = ScheduleStore::read();
    ASSERT_TRUE(content);
    EXPECT_TRUE(content->exists);
    EXPECT_EQ(identifiersOf(content->schedules), QStringList({"b", "a", "c"}));
}

TEST_F(ScheduleStoreTest, ReadsBinaryPropertyLists)
{
    const auto content = ScheduleStore::parse(PropertyList::toData(
        QVariantMap{{"Schedule Array", QVariantList{entry("a")}}}, PropertyList::Format::Binary));
    ASSERT_TRUE(content);
    EXPECT_EQ(content->schedules, QList<Schedule>{schedule("a")});
}

TEST_F(ScheduleStoreTest, GivesTheGoodEntriesAndASentenceNamingEachBadOne)
{
    writeStore({entry("a"), changed(entry("b"), "Date", "tomorrow"), QVariantMap{{"Name", "Nameless"}},
                "text", entry("c")});
    const auto content = ScheduleStore::read();
    ASSERT_TRUE(content);
    EXPECT_EQ(identifiersOf(content->schedules), QStringList({"a", "c"}));
    EXPECT_EQ(content->faults,
              QStringList({R"(Schedule entry 2 ("Name of b", "b") is bad: "Date" is not a date)",
                           R"(Schedule entry 3 ("Nameless") is bad: "Identifier" is missing)",
                           R"(Schedule entry 4 is bad: it is not a dictionary)"}));
    EXPECT_EQ(content->faultyIdentifiers, QSet<QString>{"b"});
}

TEST_F(ScheduleStoreTest, KeepsTheNameOfABadEntryOnOneLine)
{
    const auto content =
        ScheduleStore::parse(storeOf({changed(changed(entry("a"), "Date", true), "Name", "one\ntwo")}));
    ASSERT_TRUE(content);
    ASSERT_EQ(content->faults.size(), 1);
    EXPECT_THAT(content->faults.first().toStdString(), HasSubstr("one two"));
}

TEST_F(ScheduleStoreTest, TakesTheFirstOfTwoEntriesWithOneIdentifier)
{
    const auto content = ScheduleStore::parse(storeOf({entry("a"), changed(entry("a"), "Name", "Second")}));
    ASSERT_TRUE(content);
    EXPECT_EQ(content->schedules, QList<Schedule>{schedule("a")});
    ASSERT_EQ(content->faults.size(), 1);
    EXPECT_THAT(content->faults.first().toStdString(), HasSubstr("taken by an earlier entry"));
}

TEST_F(ScheduleStoreTest, ThatIsTruncatedAnywhereIsRefusedWithASentence)
{
    const QByteArray whole = storeOf({entry("a"), entry("b")}).trimmed();
    for (qsizetype length = 0; length < whole.size(); length += 7) {
        const auto content = ScheduleStore::parse(whole.left(length));
        ASSERT_FALSE(content) << "cut after " << length;
        EXPECT_FALSE(content.error().text.isEmpty()) << "cut after " << length;
    }
}

TEST_F(ScheduleStoreTest, ThatIsNoStoreIsRefusedWithASentence)
{
    const QList<QByteArray> wrong{
        "not a list at all", PropertyList::toData(QVariantList{entry("a")}, PropertyList::Format::Xml),
        PropertyList::toData(QVariantMap{{"Schedule Array", "text"}}, PropertyList::Format::Xml),
        QByteArray(PropertyList::maximumSize + 1, ' ')};
    for (const QByteArray &data : wrong) {
        const auto content = ScheduleStore::parse(data);
        ASSERT_FALSE(content);
        EXPECT_FALSE(content.error().text.isEmpty());
    }
}

TEST_F(ScheduleStoreTest, WithoutAScheduleArrayIsEmpty)
{
    const auto content =
        ScheduleStore::parse(PropertyList::toData(QVariantMap{{"Other", 1LL}}, PropertyList::Format::Xml));
    ASSERT_TRUE(content);
    EXPECT_TRUE(content->schedules.isEmpty());
}

TEST_F(ScheduleStoreTest, ThatOthersMayWriteIsNotParsed)
{
    writeStore({entry("a")});
    ASSERT_EQ(::chmod(qPrintable(root.join(storePath)), 0666), 0);
    const auto content = ScheduleStore::read();
    ASSERT_FALSE(content);
    EXPECT_THAT(content.error().text.toStdString(), HasSubstr("may be written by others"));
}

TEST_F(ScheduleStoreTest, ThatIsALinkIsNotFollowed)
{
    write("/tmp/elsewhere.plist", storeOf({entry("a")}));
    root.makeFolder("/Library/Preferences");
    ASSERT_TRUE(QFile::link(root.join("/tmp/elsewhere.plist"), root.join(storePath)));
    const auto content = ScheduleStore::read();
    ASSERT_FALSE(content);
    EXPECT_THAT(content.error().text.toStdString(), HasSubstr("symbolic link"));
}

TEST_F(ScheduleStoreTest, IsMadeByTheFirstEdit)
{
    ASSERT_TRUE(editedBy([](QList<Schedule> &schedules) {
        schedules += schedule("a");
        return true;
    }));
    EXPECT_EQ(ScheduleStore::read()->schedules, QList<Schedule>{schedule("a")});
    EXPECT_TRUE(read(storePath).startsWith("<?xml"));
    struct stat status {
    };
    ASSERT_EQ(::stat(qPrintable(root.join(storePath)), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0644u);
}

TEST_F(ScheduleStoreTest, KeepsWhatItDoesNotUnderstandThroughAnEdit)
{
    const QVariantMap bad = changed(entry("bad"), "Date", "tomorrow");
    const QVariantMap later = changed(entry("a"), "Colour", "red");
    write(storePath,
          PropertyList::toData(
              QVariantMap{{"Schedule Array", QVariantList{bad, later, entry("b")}}, {"Other", "kept"}},
              PropertyList::Format::Binary));
    ASSERT_TRUE(editedBy([](QList<Schedule> &schedules) {
        schedules[0].isEnabled = false;
        schedules.removeAt(1);
        schedules += schedule("c");
        return true;
    }));
    PropertyList::Format format{};
    EXPECT_TRUE(PropertyList::fromData(read(storePath), &format));
    EXPECT_EQ(format, PropertyList::Format::Binary);
    EXPECT_EQ(storedRoot().value("Other"), "kept");
    EXPECT_EQ(storedEntries(), (QVariantList{bad, changed(later, "Is Enabled", false), entry("c")}));
}

TEST_F(ScheduleStoreTest, KeepsEntriesThatAnEditDoesNotTouchToTheirLastKey)
{
    QVariantMap plain = entry("plain"); // without what is there by default
    plain.remove("Parameters");
    const QVariantMap wordy = changed(entry("wordy"), "Stays When Over", false);
    writeStore({plain, entry("edited"), wordy});
    ASSERT_TRUE(editedBy([](QList<Schedule> &schedules) {
        schedules[1].name = "another";
        return true;
    }));
    EXPECT_EQ(storedEntries(), (QVariantList{plain, changed(entry("edited"), "Name", "another"), wordy}));
}

TEST_F(ScheduleStoreTest, IsNotRewrittenByAnEditThatChangesNothing)
{
    const QByteArray unusual = storeOf({entry("a")}) + "\n<!-- by hand -->\n";
    write(storePath, unusual);
    EXPECT_TRUE(editedBy(keepAll));
    EXPECT_EQ(read(storePath), unusual);
}

TEST_F(ScheduleStoreTest, IsNotRewrittenByAnEditThatIsGivenUp)
{
    writeStore({entry("a")});
    const QByteArray before = read(storePath);
    const auto edited = ScheduleStore::edit([](QList<Schedule> &schedules) {
        schedules.clear();
        return false;
    });
    ASSERT_TRUE(edited);
    EXPECT_FALSE(*edited);
    EXPECT_EQ(read(storePath), before);
}

TEST_F(ScheduleStoreTest, ThatIsBadIsNotEdited)
{
    write(storePath, "damaged");
    const auto edited = ScheduleStore::edit(keepAll);
    ASSERT_FALSE(edited);
    EXPECT_THAT(edited.error().text.toStdString(), HasSubstr("was not changed"));
    EXPECT_EQ(read(storePath), "damaged");
}

TEST_F(ScheduleStoreTest, IsNotEditedWhileAnotherProgramHoldsItsLock)
{
    writeStore({entry("a")});
    const auto other = GuardedFile({root.join(storePath), 0}).lock();
    ASSERT_TRUE(other);
    const auto edited = ScheduleStore::edit(keepAll, std::chrono::milliseconds(1));
    ASSERT_FALSE(edited);
    EXPECT_THAT(edited.error().text.toStdString(), HasSubstr("being changed by another program"));
}

TEST_F(ScheduleStoreTest, HoldsTenThousandSchedules)
{
    constexpr int many = 10'000;
    const auto edited = ScheduleStore::edit([](QList<Schedule> &schedules) {
        for (int i = 0; i < many; ++i)
            schedules += schedule(QString("schedule-%1").arg(i));
        return true;
    });
    ASSERT_TRUE(edited) << edited.error().text.toStdString();
    const auto content = ScheduleStore::read();
    ASSERT_TRUE(content) << content.error().text.toStdString();
    ASSERT_EQ(content->schedules.size(), many);
    EXPECT_EQ(content->schedules.last(), schedule("schedule-9999"));
    EXPECT_FALSE(PropertyList::fromData(read(storePath))) << "other lists have the limits that they had";
}

TEST_F(ScheduleStoreTest, HasOneBadEntryWhereADateCannotBeRead)
{
    const QByteArray good = storeOf({entry("a"), entry("b"), entry("c")});
    for (const char *const date :
         {"12026-03-14T12:00:00Z", "2026-13-14T12:00:00Z", "tomorrow &amp; then", ""}) {
        QByteArray store = good;
        const qsizetype place = store.indexOf("<date>", store.indexOf("<date>") + 1) + 6; // of "b"
        store.replace(place, 20, QByteArray(date));
        write(storePath, store);
        const auto content = ScheduleStore::read();
        ASSERT_TRUE(content) << content.error().text.toStdString();
        EXPECT_EQ(identifiersOf(content->schedules), QStringList({"a", "c"}));
        ASSERT_EQ(content->faults.size(), 1);
        EXPECT_EQ(content->faults.first(),
                  R"(Schedule entry 2 ("Name of b", "b") is bad: "Date" is not a date)");
        ASSERT_TRUE(editedBy([](QList<Schedule> &schedules) {
            schedules.removeLast();
            return true;
        }));
        EXPECT_THAT(read(storePath).toStdString(), HasSubstr(std::string("<date>") + date + "</date>"));
    }
}

TEST_F(ScheduleStoreTest, HasOneBadEntryWhereADateOfABinaryListIsOutOfRange)
{
    QByteArray store = PropertyList::toData(
        QVariantMap{{"Schedule Array", QVariantList{entry("a"), entry("b", noon().addSecs(1))}}},
        PropertyList::Format::Binary);
    const QByteArray infinite = QByteArray::fromHex("337ff0000000000000");
    const double seconds = noon().addSecs(1).toSecsSinceEpoch() - 978'307'200.0;
    QByteArray date(8, 0);
    qToBigEndian(seconds, date.data());
    ASSERT_EQ(store.count('3' + date), 1);
    store.replace('3' + date, infinite);
    write(storePath, store);
    const auto content = ScheduleStore::read();
    ASSERT_TRUE(content) << content.error().text.toStdString();
    EXPECT_EQ(identifiersOf(content->schedules), QStringList{"a"});
    EXPECT_EQ(content->faults.size(), 1);
    ASSERT_TRUE(editedBy([](QList<Schedule> &schedules) {
        schedules += schedule("c");
        return true;
    }));
    EXPECT_TRUE(read(storePath).contains(infinite));
    EXPECT_EQ(identifiersOf(ScheduleStore::read()->schedules), QStringList({"a", "c"}));
}

TEST_F(ScheduleStoreTest, RefusesToGrowBeyondWhatIsRead)
{
    const auto edited = ScheduleStore::edit([](QList<Schedule> &schedules) {
        Schedule large = schedule("a");
        large.parameters["Text"] = QString(16 << 20, 'x');
        schedules += large;
        return true;
    });
    ASSERT_FALSE(edited);
    EXPECT_THAT(edited.error().text.toStdString(), HasSubstr("the schedules are too many"));
    EXPECT_FALSE(QFile::exists(root.join(storePath)));
}
