// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/SocketFolder_p.h"

#include "DozelyKit/communication/channel/linux/TreeRemover_p.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "support/WaitUntil.h"
#include "unit/communication/channel/PortFixture.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/resource.h>

using namespace dozely;

using SocketFolderRemoval = PortFixture;
using SocketFolderMode = PortFixture;

namespace
{
const QString folderPath = QStringLiteral("/private/var/tmp/com.dozely");
const QString removedPath = QStringLiteral("/private/var/tmp/com.dozely.removed");

bool isThere(const QString &path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0;
}

bool remove(const QString &folder, const QString &name)
{
    Descriptor parent(::open(QFile::encodeName(folder).constData(), O_PATH | O_DIRECTORY));
    return TreeRemover(std::move(parent), QFile::encodeName(name)).finish();
}

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
    ASSERT_TRUE(QDir().mkpath(memory.filePath("top")));
    makeDeepTree(memory.filePath("top"), 30'000);
    const auto asBefore = [] { return true; };
    EXPECT_TRUE(Identity::holdsAs(asBefore, [&] {
        // As many as are open, and ten to work with.
        const int next = ::open("/", O_RDONLY);
        ::close(next);
        const rlimit limit{static_cast<rlim_t>(next) + 10, static_cast<rlim_t>(next) + 10};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_TRUE(remove(memory.path(), "top"));
        EXPECT_FALSE(isThere(memory.filePath("top")));
    }));
}

TEST_F(SocketFolderRemoval, OfAWideTreeOfFoldersLeavesNothing)
{
    for (int i = 0; i < 10; ++i) {
        for (int j = 0; j < 10; ++j)
            ASSERT_TRUE(QDir().mkpath(root.join(folderPath) + QStringLiteral("/%1/%2/%1").arg(i).arg(j)));
    }
    EXPECT_TRUE(SocketFolder::wipe(folderPath));
    EXPECT_FALSE(isThere(root.join(folderPath))) << "moved aside at once";
    EXPECT_EQ(modeOf(root.join(removedPath)), 0700u) << "where nobody else can follow";
    EXPECT_TRUE(waitUntil([&] { return !isThere(root.join(removedPath)); }));
    EXPECT_EQ(QDir(root.join("/private/var/tmp")).count(), 2u) << "and nothing beside it, but . and ..";
}

TEST_F(SocketFolderRemoval, StopsWhenItsMomentHasComeAndGoesOnLater)
{
    makeDeepTree(path(QString()), 50);
    Descriptor parent(::open(qPrintable(root.join("/private/var/tmp")), O_PATH | O_DIRECTORY));
    TreeRemover remover(std::move(parent), "com.dozely");
    int slices = 1;
    while (remover.work({}) == TreeRemover::State::Working)
        ++slices;
    EXPECT_EQ(remover.work({}), TreeRemover::State::Gone);
    EXPECT_GE(slices, 100) << "an entry a slice, when its time is over before it begins";
    EXPECT_FALSE(isThere(root.join(folderPath)));
}

TEST_F(SocketFolderRemoval, TakesWhatAnEarlierProcessLeftOver)
{
    ASSERT_TRUE(QDir().mkpath(root.join(removedPath) + "/0123456789abcdef/inner"));
    EXPECT_TRUE(SocketFolder::wipe(folderPath));
    EXPECT_TRUE(waitUntil([&] { return !isThere(root.join(removedPath)); }));
}

TEST_F(SocketFolderRemoval, TakesWhatIsMovedAsideWhileItGoesOn)
{
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(QDir().mkpath(path("a/b/c")));
        EXPECT_TRUE(SocketFolder::clearEntry(path("a")));
        EXPECT_FALSE(isThere(path("a")));
        if (i < 2)
            QCoreApplication::processEvents();
    }
    EXPECT_TRUE(waitUntil([&] { return !isThere(root.join(removedPath)); }));
    EXPECT_TRUE(isThere(root.join(folderPath)));
}

TEST_F(SocketFolderRemoval, OfAFolderOfManyFilesIsNoWorkOfTheCallersThread)
{
    const QTemporaryDir memory("/dev/shm/dz-XXXXXX");
    RootFolder::set(memory.path());
    const QString top = memory.path() + folderPath + "/dozelyd";
    ASSERT_TRUE(QDir().mkpath(top));
    const Descriptor folder(::open(QFile::encodeName(top).constData(), O_PATH | O_DIRECTORY));
    for (int i = 0; i < 50'000; ++i)
        ASSERT_EQ(::mknodat(folder.get(), QByteArray::number(i).constData(), S_IFREG | 0600, 0), 0);
    // By the processor's time: the machine may be busy with others.
    const auto used = [] {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    };
    const double begin = used();
    EXPECT_TRUE(SocketFolder::clearEntry(top));
    EXPECT_LT(used() - begin, 10) << "milliseconds; 50,000 files at once take several times that";
    EXPECT_FALSE(isThere(top)) << "somebody else may have the name";
    EXPECT_TRUE(waitUntil([&] { return !isThere(memory.path() + removedPath); }, std::chrono::minutes(1)));
}

TEST_F(SocketFolderRemoval, OfAFolderThatIsNotThereSucceeds)
{
    EXPECT_TRUE(SocketFolder::wipe(folderPath));
    EXPECT_TRUE(SocketFolder::wipe(folderPath));
    EXPECT_TRUE(SocketFolder::wipe("/private/not/there"));
    EXPECT_TRUE(SocketFolder::clearEntry(path("nothing")));
}

TEST_F(SocketFolderRemoval, OfWhatMayNotBeRemovedFails)
{
    writeFile(path("file"));
    root.makeFolder(folderPath, 0555);
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([&] {
        EXPECT_FALSE(SocketFolder::clearEntry(path("file")));
        EXPECT_TRUE(SocketFolder::hasFile(path("file")));
    }));
}

TEST_F(SocketFolderRemoval, GivesUpWhatWasMovedAsideToNobodyElse)
{
    // A folder that somebody else may enter is no place for what root removes.
    root.makeFolder(removedPath, 0777);
    ASSERT_TRUE(QDir().mkpath(path("a/b")));
    EXPECT_TRUE(SocketFolder::clearEntry(path("a")));
    EXPECT_EQ(modeOf(root.join(removedPath)), 0700u);
    EXPECT_TRUE(waitUntil([&] { return !isThere(root.join(removedPath)); }));

    const QString elsewhere = root.makeFolder("/elsewhere");
    ASSERT_TRUE(QFile::link(elsewhere, root.join(removedPath)));
    ASSERT_TRUE(QDir().mkpath(path("a/b")));
    EXPECT_TRUE(SocketFolder::clearEntry(path("a"))) << "within the folder, then";
    EXPECT_EQ(QDir(elsewhere).count(), 2u);
    EXPECT_EQ(QDir(path(QString())).entryList({"moved-aside-*"}).size(), 1);
}

TEST(SocketFolderFile, IsThroughALinkAndNotALinkToNothing)
{
    const ScratchRoot root;
    ASSERT_TRUE(QFile::link("/", root.join("/link")));
    ASSERT_TRUE(QFile::link(root.join("/nowhere"), root.join("/dangling")));
    EXPECT_TRUE(SocketFolder::hasFile(root.join("/link")));
    EXPECT_FALSE(SocketFolder::hasFile(root.join("/dangling")));
    EXPECT_FALSE(SocketFolder::hasFile(root.join("/nowhere")));
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
