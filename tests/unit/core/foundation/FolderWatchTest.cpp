// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/linux/FolderWatch_p.h"

#include "support/PrintTo.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <memory>

using namespace dozely;
using namespace std::chrono_literals;

namespace
{
class FolderWatchTest : public testing::Test
{
protected:
    FolderWatchTest() { QDir().mkpath(path()); }

    QString path(const QString &entry = {}) const
    {
        return above.path() + "/folder" + (entry.isEmpty() ? entry : '/' + entry);
    }
    void touch(const QString &entry) const
    {
        QFile file(path(entry));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    void begin()
    {
        watch = std::make_unique<FolderWatch>(QFile::encodeName(path()),
                                              [this](const FolderWatch::Change &change) {
                                                  ++calls;
                                                  names += change.names;
                                                  mayBeMore = mayBeMore || change.mayBeMore;
                                                  others += change.isAnother ? 1 : 0;
                                              });
    }
    bool hears(const QByteArray &name) const
    {
        return waitUntil([&] { return names.contains(name); });
    }

    const QTemporaryDir above;
    int calls = 0;
    int others = 0;
    bool mayBeMore = false;
    QSet<QByteArray> names;
    std::unique_ptr<FolderWatch> watch;
};
} // namespace

TEST_F(FolderWatchTest, NamesWhatComesAndGoes)
{
    touch("old");
    begin();
    ASSERT_TRUE(watch->isWatching());
    touch("new");
    EXPECT_TRUE(hears("new"));
    QFile::remove(path("old"));
    EXPECT_TRUE(hears("old"));
    QFile::rename(path("new"), path("moved"));
    EXPECT_TRUE(hears("moved"));
    QDir().mkdir(path("inner"));
    EXPECT_TRUE(hears("inner"));
    EXPECT_EQ(others, 0);
    EXPECT_FALSE(mayBeMore);
}

TEST_F(FolderWatchTest, IsSilentAboutWhatIsBesideTheFolder)
{
    begin();
    QDir(above.path()).mkdir("beside");
    touch("within");
    EXPECT_TRUE(hears("within"));
    EXPECT_EQ(names.size(), 1);
    EXPECT_EQ(others, 0);
}

TEST_F(FolderWatchTest, TellsThatTheFolderIsGoneAndThereAgainAndGoesOn)
{
    begin();
    ASSERT_TRUE(QDir().rmdir(path()));
    EXPECT_TRUE(waitUntil([&] { return others == 1; }));
    EXPECT_FALSE(watch->isWatching());
    ASSERT_TRUE(QDir().mkdir(path()));
    EXPECT_TRUE(waitUntil([&] { return others == 2; }));
    EXPECT_TRUE(watch->isWatching());
    touch("later");
    EXPECT_TRUE(hears("later"));
}

TEST_F(FolderWatchTest, NoticesAFolderThatIsRemovedWhileSomebodyHasItOpen)
{
    begin();
    const Descriptor held(::open(QFile::encodeName(path()).constData(), O_RDONLY | O_DIRECTORY));
    ASSERT_TRUE(QDir().rmdir(path()));
    EXPECT_TRUE(waitUntil([&] { return others == 1; }));
}

TEST_F(FolderWatchTest, FollowsThePathAndNotTheFolderThatWasMovedAway)
{
    begin();
    ASSERT_TRUE(QDir().rename(path(), above.path() + "/aside"));
    ASSERT_TRUE(QDir().mkdir(path()));
    EXPECT_TRUE(waitUntil([&] { return others > 0 && watch->isWatching(); }));
    QFile file(above.path() + "/aside/there");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    touch("here");
    EXPECT_TRUE(hears("here"));
    EXPECT_FALSE(names.contains("there"));
}

TEST_F(FolderWatchTest, WaitsForAFolderThatDoesNotExistYet)
{
    QDir().rmdir(path());
    begin();
    EXPECT_FALSE(watch->isWatching());
    QDir().mkdir(path());
    EXPECT_TRUE(waitUntil([&] { return others == 1; }));
    EXPECT_TRUE(watch->isWatching());
}

TEST_F(FolderWatchTest, CallsTenTimesASecondAtMost)
{
    begin();
    QElapsedTimer time;
    time.start();
    ASSERT_TRUE(waitUntil([&] {
        touch("x");
        QFile::remove(path("x"));
        return time.elapsed() > 550;
    }));
    EXPECT_GE(calls, 2);
    EXPECT_LE(calls, time.elapsed() / 100 + 1);
}

TEST_F(FolderWatchTest, ForgetsNothingThatHappensWithinThePause)
{
    begin();
    touch("first");
    ASSERT_TRUE(hears("first"));
    touch("second");
    EXPECT_TRUE(hears("second"));
    EXPECT_EQ(calls, 2);
}

TEST_F(FolderWatchTest, NamesSoManyAndSaysThatThereMayBeMore)
{
    begin();
    for (int i = 0; i < 300; ++i)
        touch(QString::number(i));
    ASSERT_TRUE(waitUntil([&] { return mayBeMore; }));
    EXPECT_EQ(names.size(), FolderWatch::mostNames);
}

TEST_F(FolderWatchTest, MayBeEndedFromItsHandler)
{
    bool called = false;
    watch = std::make_unique<FolderWatch>(QFile::encodeName(path()), [&](const FolderWatch::Change &) {
        watch.reset();
        called = true;
    });
    touch("x");
    EXPECT_TRUE(waitUntil([&] { return called; }));
    EXPECT_FALSE(watch);
}
