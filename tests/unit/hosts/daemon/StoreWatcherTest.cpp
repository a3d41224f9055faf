// SPDX-License-Identifier: MIT
#include "hosts/daemon/StoreWatcher.h"
#include "support/FakeClock.h"
#include "support/WaitUntil.h"
#include "unit/hosts/HostFixture.h"

#include <QDir>

using namespace std::chrono_literals;

/// The settling time passes only when a test lets it.
class StoreWatcherTest : public HostFixture
{
protected:
    void watch()
    {
        watcher.emplace(root.join(storePath), root.path(), clock);
        QObject::connect(&*watcher, &StoreWatcher::changed, &*watcher, [this] { ++changes; });
    }
    /// Waits for the word of a change, then lets it settle.
    testing::AssertionResult tellsOneChange()
    {
        const int before = changes;
        if (!waitUntil([this] { return !clock.pendingDelays().isEmpty(); }))
            return testing::AssertionFailure() << "nothing was noticed";
        clock.advance(1s);
        return changes == before + 1
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << changes - before << " changes were told";
    }

    FakeClock clock;
    std::optional<StoreWatcher> watcher;
    int changes = 0;
};

TEST_F(StoreWatcherTest, TellsThatTheFileWasWrittenInPlace)
{
    write(storePath, "one");
    watch();
    write(storePath, "two");
    EXPECT_TRUE(tellsOneChange());
}

TEST_F(StoreWatcherTest, TellsEveryReplacementOfTheFile)
{
    write(storePath, "0");
    watch();
    for (const char *content : {"1", "2", "3"}) {
        write("/Library/Preferences/new", content);
        ASSERT_EQ(
            ::rename(qPrintable(root.join("/Library/Preferences/new")), qPrintable(root.join(storePath))), 0);
        EXPECT_TRUE(tellsOneChange());
    }
    write(storePath, "in place, after all that");
    EXPECT_TRUE(tellsOneChange());
}

TEST_F(StoreWatcherTest, TellsThatTheFileWasRemovedAndMadeAgain)
{
    write(storePath, "one");
    watch();
    ASSERT_TRUE(QFile::remove(root.join(storePath)));
    EXPECT_TRUE(tellsOneChange());
    write(storePath, "two");
    EXPECT_TRUE(tellsOneChange());
}

TEST_F(StoreWatcherTest, WaitsForAFolderThatDoesNotExistYet)
{
    watch();
    root.makeFolder("/Library");
    EXPECT_TRUE(tellsOneChange());
    root.makeFolder("/Library/Preferences");
    EXPECT_TRUE(tellsOneChange());
    write(storePath, "one");
    EXPECT_TRUE(tellsOneChange());
}

TEST_F(StoreWatcherTest, FollowsAFolderThatIsReplaced)
{
    write(storePath, "one");
    watch();
    ASSERT_TRUE(QDir().rename(root.join("/Library"), root.join("/Old")));
    EXPECT_TRUE(tellsOneChange());
    write(storePath, "two");
    EXPECT_TRUE(tellsOneChange());
}

TEST_F(StoreWatcherTest, TellsABurstOnce)
{
    write(storePath, "0");
    watch();
    for (int i = 0; i < 100; ++i)
        write(storePath, QByteArray::number(i));
    EXPECT_TRUE(tellsOneChange());
}

TEST_F(StoreWatcherTest, SetsNoTimerWhileNothingChanges)
{
    write(storePath, "one");
    watch();
    QCoreApplication::processEvents();
    EXPECT_TRUE(clock.pendingDelays().isEmpty());
}
