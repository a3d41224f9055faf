// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/GuardedFile.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "support/BecomeUser.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace dozely;

namespace
{
using testing::HasSubstr;
using namespace std::chrono_literals;

class GuardedFileTest : public testing::Test
{
protected:
    GuardedFileTest() { ::umask(022); }

    GuardedFile file(GuardedFile::Owners owners = GuardedFile::Owners::System) const
    {
        return GuardedFile({path, 100, 0640, owners});
    }
    QByteArray contentOf(const QString &name) const
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    mode_t modeOf(const QString &name) const
    {
        struct stat status = {};
        EXPECT_EQ(::stat(qPrintable(name), &status), 0);
        return status.st_mode & 07777U;
    }
    /// Whether another program could take the kernel's lock.
    bool isLockFree() const
    {
        QProcess other;
        other.start("flock", {"--nonblock", path + ".lock", "true"});
        EXPECT_TRUE(other.waitForFinished());
        return other.exitCode() == 0;
    }

    ScratchRoot root;
    QString path = root.join("/var/lib/room/file");
};
} // namespace

TEST_F(GuardedFileTest, HoldsNothingBeforeItIsWritten)
{
    EXPECT_FALSE(file().exists());
    const auto content = file().read();
    ASSERT_TRUE(content);
    EXPECT_FALSE(*content);
}

TEST_F(GuardedFileTest, GivesBackWhatReplacedIt)
{
    for (const QByteArray &content : {QByteArray("first"), QByteArray(100, 'x'), QByteArray("")}) {
        ASSERT_TRUE(file().replace(content));
        EXPECT_TRUE(file().exists());
        EXPECT_EQ(file().read().value(), std::optional(content));
    }
}

TEST_F(GuardedFileTest, HasItsModeInAFolderForItsOwner)
{
    ASSERT_TRUE(file().replace("content"));
    EXPECT_EQ(modeOf(path), 0640U);
    EXPECT_EQ(modeOf(root.join("/var/lib/room")), 0755U);
    EXPECT_EQ(modeOf(root.join("/var/lib")), 0755U);
}

TEST_F(GuardedFileTest, IsNotReplacedByWhatCouldNotBeReadBack)
{
    ASSERT_TRUE(file().replace("content"));
    for (const QByteArray &content : {QByteArray(101, 'x'), QByteArray()}) {
        const auto replaced = file().replace(content);
        ASSERT_FALSE(replaced);
        EXPECT_EQ(replaced.error().name, GuardedFile::tooLarge);
    }
    EXPECT_EQ(contentOf(path), "content");
}

TEST_F(GuardedFileTest, ThatIsTooLargeIsNotRead)
{
    ASSERT_TRUE(GuardedFile({path, 1000, 0640}).replace(QByteArray(101, 'x')));
    const auto content = file().read();
    ASSERT_FALSE(content);
    EXPECT_EQ(content.error().name, GuardedFile::tooLarge);
}

TEST_F(GuardedFileTest, ThatOthersMayWriteIsNotRead)
{
    ASSERT_TRUE(file().replace("content"));
    for (const QString &open : {path, root.join("/var")}) {
        const mode_t former = modeOf(open);
        ASSERT_EQ(::chmod(qPrintable(open), 0777), 0);
        const auto content = file().read();
        ASSERT_FALSE(content);
        EXPECT_EQ(content.error().name, GuardedFile::untrusted);
        EXPECT_THAT(content.error().text.toStdString(), HasSubstr("may be written by others"));
        ASSERT_EQ(::chmod(qPrintable(open), former), 0);
    }
    EXPECT_TRUE(file().read());
}

TEST_F(GuardedFileTest, IsReadBehindNoLink)
{
    root.makeFolder("/var/lib/room");
    ASSERT_TRUE(QFile::link("nowhere", path));
    EXPECT_TRUE(file().exists());
    const auto content = file().read();
    ASSERT_FALSE(content);
    EXPECT_EQ(content.error().name, GuardedFile::untrusted);
}

TEST_F(GuardedFileTest, ThatIsAFolderIsAnError)
{
    root.makeFolder("/var/lib/room/file");
    const auto content = file().read();
    ASSERT_FALSE(content);
    EXPECT_EQ(content.error().name, "");
}

TEST_F(GuardedFileTest, OfTheUserIsBelievedWhereThatIsAsked)
{
    // Only root can have the system below the folder of somebody else; another user is the system's owner.
    ASSERT_TRUE(file().replace("content"));
    const bool isRoot = ::geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(::chown(qPrintable(root.path()), Identity::ordinaryUser, Identity::ordinaryUser), 0);
    }
    EXPECT_EQ(file().read().ok(), !isRoot);
    const auto users = file(GuardedFile::Owners::SystemAndThisUser).read();
    ASSERT_TRUE(users) << users.error().text.toStdString();
    EXPECT_EQ(*users, std::optional<QByteArray>("content"));
}

TEST_F(GuardedFileTest, IsNotBelievedBelowARootFolderOfNobody)
{
    ASSERT_TRUE(file().replace("content"));
    RootFolder::set(root.join("/missing"));
    const auto content = file().read();
    ASSERT_FALSE(content);
    EXPECT_EQ(content.error().name, GuardedFile::untrusted);
}

TEST_F(GuardedFileTest, IsLockedWhateverEarlierHoldersLeftInTheLockFile)
{
    root.makeFolder("/var/lib/room");
    for (const QByteArray &left :
         {QByteArray(), QByteArray("1\ndozely-admin\nhost\n"), QByteArray("damaged")}) {
        QFile lockFile(path + ".lock");
        ASSERT_TRUE(lockFile.open(QIODevice::WriteOnly));
        lockFile.write(left);
        lockFile.close();
        ASSERT_EQ(::chmod(qPrintable(lockFile.fileName()), 0644), 0);
        const auto lock = file().lock(0ms);
        ASSERT_TRUE(lock) << lock.error().text.toStdString();
        EXPECT_EQ(modeOf(lockFile.fileName()), 0600U) << "others could hold it";
    }
}

TEST_F(GuardedFileTest, KeepsTheKernelsLockWhileItIsLocked)
{
    const GuardedFile guarded = file();
    {
        const auto lock = guarded.lock();
        ASSERT_TRUE(lock) << lock.error().text.toStdString();
        EXPECT_FALSE(isLockFree());
        EXPECT_EQ(modeOf(path + ".lock"), 0600U);
        const auto second = guarded.lock(1ms);
        ASSERT_FALSE(second);
        EXPECT_EQ(second.error().name, GuardedFile::busy);
    }
    EXPECT_TRUE(isLockFree());
    EXPECT_TRUE(guarded.lock(0ms));
}

TEST_F(GuardedFileTest, IsNotLockedWhereNoLockFileCanBeMade)
{
    root.makeFolder("/var/lib/room/file.lock");
    const auto descriptor = file().lock(1ms);
    ASSERT_FALSE(descriptor);
    EXPECT_THAT(descriptor.error().text.toStdString(), HasSubstr("lock file"));
    QFile occupied(root.join("/occupied"));
    ASSERT_TRUE(occupied.open(QIODevice::WriteOnly));
    const auto inAFile = GuardedFile({root.join("/occupied/file"), 100, 0640}).lock(1ms);
    ASSERT_FALSE(inAFile);
    EXPECT_THAT(inAFile.error().text.toStdString(), HasSubstr("The folder of"));
}

TEST_F(GuardedFileTest, LosesNoDamagedFileToALaterOneUnlessItMay)
{
    for (const char *content : {"first", "second", "third"}) {
        ASSERT_TRUE(file().replace(content));
        ASSERT_TRUE(file().setAside(GuardedFile::Earlier::Kept));
        EXPECT_FALSE(file().exists());
    }
    EXPECT_EQ(contentOf(path + ".damaged"), "first");
    EXPECT_EQ(contentOf(path + ".damaged-2"), "second");
    EXPECT_EQ(contentOf(path + ".damaged-3"), "third");
    ASSERT_TRUE(file().replace("last"));
    ASSERT_TRUE(file().setAside(GuardedFile::Earlier::Replaced));
    EXPECT_EQ(contentOf(path + ".damaged"), "last");
    EXPECT_FALSE(file().setAside(GuardedFile::Earlier::Replaced)) << "there is nothing any more";
}

TEST_F(GuardedFileTest, IsSetAsideBesideALinkThatLeadsNowhere)
{
    ASSERT_TRUE(file().replace("damaged"));
    ASSERT_TRUE(QFile::link("nowhere", path + ".damaged"));
    const auto aside = file().setAside(GuardedFile::Earlier::Kept);
    ASSERT_TRUE(aside) << aside.error().text.toStdString();
    EXPECT_TRUE(QFileInfo(path + ".damaged").isSymLink());
    EXPECT_EQ(contentOf(path + ".damaged-2"), "damaged");
}

TEST_F(GuardedFileTest, MakesFoldersThatOthersCannotWriteInWhateverTheMaskOfTheProcess)
{
    const mode_t mask = ::umask(0);
    const auto replaced = file().replace("content");
    ::umask(mask);
    ASSERT_TRUE(replaced) << replaced.error().text.toStdString();
    EXPECT_EQ(modeOf(QFileInfo(path).path()), 0755U);
}
