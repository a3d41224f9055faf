// SPDX-License-Identifier: MIT
#include "hosts/common/schedules/ScheduleStore.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

#include <QDir>
#include <QLockFile>

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
    const QVariantMap later = changed(entry("a"), "Missed Policy", "skip");
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
    QLockFile other(root.join(storePath) + ".lock");
    other.setStaleLockTime(0);
    ASSERT_TRUE(other.tryLock());
    const auto edited = ScheduleStore::edit(keepAll, std::chrono::milliseconds(1));
    ASSERT_FALSE(edited);
    EXPECT_THAT(edited.error().text.toStdString(), HasSubstr("being changed by another program"));
}

TEST_F(ScheduleStoreTest, RefusesToGrowBeyondWhatIsRead)
{
    const auto edited = ScheduleStore::edit([](QList<Schedule> &schedules) {
        Schedule large = schedule("a");
        large.parameters["Text"] = QString(PropertyList::maximumSize, 'x');
        schedules += large;
        return true;
    });
    ASSERT_FALSE(edited);
    EXPECT_THAT(edited.error().text.toStdString(), HasSubstr("the schedules are too many"));
    EXPECT_FALSE(QFile::exists(root.join(storePath)));
}
