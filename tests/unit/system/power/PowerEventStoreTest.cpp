// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/power/linux/PowerEventStore_p.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <cerrno>
#include <sys/stat.h>

#include <gmock/gmock.h>

using namespace dozely;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PowerEventStoreTest : public testing::Test
{
protected:
    PowerEventStoreTest()
    {
        setProblemReport([this](const QString &sentence) { problems += sentence; });
    }
    ~PowerEventStoreTest() override { setProblemReport({}); }

    static PowerEventStore::Content someContent()
    {
        PowerEventStore::Content content;
        content.events = {{QDateTime({2026, 3, 14}, {5, 55}, Qt::UTC), "com.dozely", "wake"},
                          {QDateTime({2026, 3, 14}, {19, 30}, Qt::UTC), "somebody <else>", "poweron"}};
        content.armed = 1'773'467'700;
        return content;
    }
    void putFile(const QByteArray &data, int mode = 0644)
    {
        root.makeFolder("/var/lib/dozely");
        QFile::remove(PowerEventStore::path());
        QFile file(PowerEventStore::path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(data);
        ASSERT_EQ(::fchmod(file.handle(), static_cast<mode_t>(mode)), 0);
    }
    QByteArray fileContent(const QString &suffix = {}) const
    {
        QFile file(PowerEventStore::path() + suffix);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void putList(const QVariant &list) { putFile(PropertyList::toData(list, PropertyList::Format::Xml)); }
    std::unique_ptr<PowerEventStore> open()
    {
        auto opening = PowerEventStore::open();
        EXPECT_TRUE(opening.store) << opening.failure;
        return std::move(opening.store);
    }

    ScratchRoot root;
    QStringList problems;
};

TEST_F(PowerEventStoreTest, IsEmptyWhereThereIsNoFile)
{
    EXPECT_FALSE(PowerEventStore::exists());
    EXPECT_EQ(PowerEventStore::peek(), PowerEventStore::Content());
    EXPECT_EQ(open()->content(), PowerEventStore::Content());
    EXPECT_FALSE(PowerEventStore::exists());
}

TEST_F(PowerEventStoreTest, KeepsWhatWasSaved)
{
    ASSERT_EQ(open()->save(someContent()), 0);
    EXPECT_EQ(open()->content(), someContent());
    EXPECT_EQ(PowerEventStore::peek(), someContent());
    EXPECT_THAT(problems, IsEmpty());
}

TEST_F(PowerEventStoreTest, IsReadableForEverybody)
{
    const auto store = open();
    ASSERT_EQ(store->save(someContent()), 0);
    struct stat status = {};
    ASSERT_EQ(::stat(qPrintable(PowerEventStore::path()), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0644U);
}

TEST_F(PowerEventStoreTest, IsOneAtATime)
{
    const auto store = open();
    QProcess other;
    other.start("flock", {"--nonblock", PowerEventStore::path() + ".lock", "true"});
    ASSERT_TRUE(other.waitForFinished());
    EXPECT_EQ(other.exitCode(), 1) << "the lock was to be had";
}

TEST_F(PowerEventStoreTest, KeepsEntriesAndKeysThatItDoesNotKnow)
{
    const QVariantMap good{{"time", QDateTime({2026, 3, 14}, {5, 55}, Qt::UTC)},
                           {"scheduledby", "com.dozely"},
                           {"eventtype", "wake"}};
    QVariantMap withMore = good;
    withMore.insert("Leeway", 5LL);
    QVariantMap withoutTime = good;
    withoutTime.insert("time", "soon");
    QVariantMap ofAnotherType = good;
    ofAnotherType.insert("eventtype", "sleep");
    putList(QVariantMap{{"Format", 1LL},
                        {"Events", QVariantList{"text", withMore, good, withoutTime, ofAnotherType}},
                        {"Later", "kept"}});
    auto store = open();
    PowerEventStore::Content content = store->content();
    ASSERT_THAT(content.events, SizeIs(1));
    EXPECT_EQ(content.events.first().type, "wake");
    content.events.clear();
    ASSERT_EQ(store->save(content), 0);
    const QVariantMap list = PropertyList::fromData(fileContent())->toMap();
    EXPECT_EQ(list.value("Events"), QVariant(QVariantList{"text", withMore, withoutTime, ofAnotherType}));
    EXPECT_EQ(list.value("Later"), QVariant("kept"));
    EXPECT_THAT(problems, IsEmpty());
}

TEST_F(PowerEventStoreTest, KeepsTheFormOfItsFile)
{
    // Neither fractions of seconds nor control characters could be kept in XML.
    const QVariantMap root{{"Format", 1LL},
                           {"Events", QVariantList{QVariantMap{{"Note", "bell\a"}}}},
                           {"Changed", QDateTime({2026, 3, 14}, {5, 55, 0, 250}, Qt::UTC)}};
    putFile(PropertyList::toData(root, PropertyList::Format::Binary));
    PowerEventStore::Content content = open()->content();
    const PowerEventStore::Content before = content;
    content.events = someContent().events;
    ASSERT_EQ(open()->save(content), 0);
    const auto after = open()->content();
    EXPECT_EQ(after.events, content.events);
    EXPECT_EQ(after.foreign, before.foreign);
    EXPECT_EQ(after.rest, before.rest);
    EXPECT_TRUE(fileContent().startsWith("bplist"));
    EXPECT_THAT(problems, IsEmpty());
}

TEST_F(PowerEventStoreTest, SetsADamagedFileAsideAndSaysSo)
{
    putFile("not a property list");
    EXPECT_EQ(open()->content(), PowerEventStore::Content());
    EXPECT_EQ(fileContent(".damaged"), "not a property list");
    EXPECT_FALSE(PowerEventStore::exists());
    EXPECT_THAT(problems, SizeIs(1));
}

TEST_F(PowerEventStoreTest, LosesNoDamagedFileToALaterOne)
{
    for (const char *data : {"first", "second", "third"}) {
        putFile(data);
        open();
    }
    EXPECT_EQ(fileContent(".damaged"), "first");
    EXPECT_EQ(fileContent(".damaged-2"), "second");
    EXPECT_EQ(fileContent(".damaged-3"), "third");
}

TEST_F(PowerEventStoreTest, TakesAListOfAnotherShapeForDamaged)
{
    const QVariant shapes[] = {QVariantMap{{"Format", 2LL}, {"Events", QVariantList()}},
                               QVariantMap{{"Format", 1LL}, {"Events", QVariantMap()}},
                               QVariantMap{{"Format", 1LL}}, QVariantList{1LL}};
    int seen = 0;
    for (const QVariant &shape : shapes) {
        putList(shape);
        EXPECT_EQ(PowerEventStore::peek(), PowerEventStore::Content());
        EXPECT_TRUE(PowerEventStore::exists()) << "looking at it moves nothing";
        open();
        EXPECT_FALSE(PowerEventStore::exists());
        EXPECT_THAT(problems, SizeIs(++seen));
    }
}

TEST_F(PowerEventStoreTest, SetsAFileAsideThatIsTooLarge)
{
    putFile(QByteArray(PropertyList::maximumSize + 1, 'x'));
    open();
    EXPECT_EQ(fileContent(".damaged").size(), PropertyList::maximumSize + 1);
}

TEST_F(PowerEventStoreTest, DoesNotReadWhatOthersMayHaveWritten)
{
    const QByteArray data = PropertyList::toData(QVariantMap{{"Format", 1LL}, {"Events", QVariantList()}},
                                                 PropertyList::Format::Xml);
    putFile(data, 0666);
    EXPECT_EQ(PowerEventStore::open().failure, EPERM);
    EXPECT_EQ(fileContent(), data) << "and leaves it where it is";
    EXPECT_THAT(problems, SizeIs(1));
}

TEST_F(PowerEventStoreTest, FollowsNoLink)
{
    putFile("x");
    ASSERT_TRUE(QFile::rename(PowerEventStore::path(), root.join("/elsewhere")));
    ASSERT_TRUE(QFile::link(root.join("/elsewhere"), PowerEventStore::path()));
    EXPECT_EQ(PowerEventStore::open().failure, EPERM);
}

TEST_F(PowerEventStoreTest, ReadsABinaryListToo)
{
    putFile(PropertyList::toData(QVariantMap{{"Format", 1LL}, {"Events", QVariantList{"?"}}},
                                 PropertyList::Format::Binary));
    EXPECT_THAT(open()->content().foreign, ElementsAre(QVariant("?")));
}

TEST_F(PowerEventStoreTest, WritesNothingWhenNothingChanged)
{
    putFile(PropertyList::toData(QVariantMap{{"Format", 1LL}, {"Events", QVariantList{"?"}}},
                                 PropertyList::Format::Binary));
    const QByteArray before = fileContent();
    const auto store = open();
    ASSERT_EQ(store->save(store->content()), 0);
    EXPECT_EQ(fileContent(), before);
}

TEST_F(PowerEventStoreTest, RefusesADateThatNoListCanHold)
{
    PowerEventStore::Content content = someContent();
    const auto store = open();
    ASSERT_EQ(store->save(content), 0);
    content.events += PowerEventScheduler::Event{QDateTime({10000, 1, 1}, {0, 0}, Qt::UTC), "a", "wake"};
    EXPECT_EQ(store->save(content), EFBIG);
    EXPECT_EQ(PowerEventStore::peek(), someContent());
}
