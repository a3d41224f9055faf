// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/SocketFolder_p.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "unit/communication/channel/PortFixture.h"

#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/resource.h>

using namespace dozely;

using SocketFolderRemoval = PortFixture;
using SocketFolderMode = PortFixture;

namespace
{
const QString folderPath = QStringLiteral("/private/var/tmp/com.dozely");

// Makes `depth` folders, each in the one before, with a file in each.
void makeDeepTree(const QString &top, int depth)
{
    int folder = ::open(qPrintable(top), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < depth; ++i) {
        ASSERT_EQ(::mkdirat(folder, "d", 0755), 0);
        const int inner = ::openat(folder, "d", O_RDONLY | O_DIRECTORY);
        ASSERT_GE(inner, 0);
        ::close(folder);
        folder = inner;
        ::close(::openat(folder, "f", O_CREAT | O_WRONLY, 0600));
    }
    ::close(folder);
}
} // namespace

TEST_F(SocketFolderRemoval, OfThirtyThousandLevelsNeedsAHandfulOfDescriptors)
{
    // In memory: on a disk, so many folders take minutes however they are removed.
    const QTemporaryDir memory("/dev/shm/dz-XXXXXX");
    ASSERT_TRUE(memory.isValid());
    RootFolder::set(memory.path());
    const QString top = memory.path() + folderPath;
    ASSERT_TRUE(QDir().mkpath(top));
    makeDeepTree(top, 30'000);
    const auto asBefore = [] { return true; };
    EXPECT_TRUE(Identity::holdsAs(asBefore, [&] {
        // As many as are open, and ten to work with.
        const int next = ::open("/", O_RDONLY);
        ::close(next);
        const rlimit limit{static_cast<rlim_t>(next) + 10, static_cast<rlim_t>(next) + 10};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_TRUE(SocketFolder::wipe(folderPath));
        EXPECT_FALSE(QFile::exists(top));
    }));
}

TEST_F(SocketFolderRemoval, OfAWideTreeOfFoldersLeavesNothing)
{
    for (int i = 0; i < 20; ++i) {
        for (int j = 0; j < 20; ++j)
            ASSERT_TRUE(QDir().mkpath(root.join(folderPath) + QStringLiteral("/%1/%2/%1").arg(i).arg(j)));
    }
    EXPECT_TRUE(SocketFolder::wipe(folderPath));
    EXPECT_FALSE(QFile::exists(root.join(folderPath)));
    EXPECT_EQ(QDir(root.join("/private/var/tmp")).count(), 2u) << "and nothing beside it, but . and ..";
}

TEST_F(SocketFolderRemoval, OfAFolderThatIsNotThereSucceeds)
{
    EXPECT_TRUE(SocketFolder::wipe(folderPath));
    EXPECT_TRUE(SocketFolder::wipe(folderPath));
    EXPECT_TRUE(SocketFolder::wipe("/private/not/there"));
}

TEST_F(SocketFolderRemoval, OfWhatMayNotBeRemovedFails)
{
    writeFile(path("file"));
    root.makeFolder(folderPath, 0555);
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([&] {
        EXPECT_FALSE(SocketFolder::removeEntry(path("file")));
        EXPECT_TRUE(SocketFolder::hasEntry(path("file")));
    }));
}

TEST_F(SocketFolderMode, IsSetOnASocketOfOurs)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("s");
    ASSERT_TRUE(server);
    ::chmod(qPrintable(path("s")), 0600);
    EXPECT_TRUE(SocketFolder::openSocketToEverybody(path("s")));
    EXPECT_EQ(modeOf(path("s")), 0666u);
}

TEST_F(SocketFolderMode, IsNotSetOnARegularFile)
{
    writeFile(path("file"));
    ::chmod(qPrintable(path("file")), 0600);
    EXPECT_FALSE(SocketFolder::openSocketToEverybody(path("file")));
    EXPECT_EQ(modeOf(path("file")), 0600u);
}

TEST_F(SocketFolderMode, IsNotSetThroughASymbolicLink)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("s");
    ASSERT_TRUE(server);
    ::chmod(qPrintable(path("s")), 0600);
    ASSERT_TRUE(QFile::link(path("s"), path("link")));
    EXPECT_FALSE(SocketFolder::openSocketToEverybody(path("link")));
    EXPECT_EQ(modeOf(path("s")), 0600u);
}

TEST_F(SocketFolderMode, IsNotSetOnASocketThatHasASecondName)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("s");
    ASSERT_TRUE(server);
    ::chmod(qPrintable(path("s")), 0600);
    ASSERT_EQ(::link(qPrintable(path("s")), qPrintable(path("second"))), 0);
    EXPECT_FALSE(SocketFolder::openSocketToEverybody(path("second")));
    EXPECT_EQ(modeOf(path("s")), 0600u);
}

TEST_F(SocketFolderMode, IsNotSetWhereNothingIs)
{
    EXPECT_FALSE(SocketFolder::openSocketToEverybody(path("nothing")));
}
