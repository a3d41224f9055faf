// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/AtomicFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace dozely;

namespace
{
class AtomicFileTest : public testing::Test
{
protected:
    QByteArray content() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList entries() const
    {
        return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir folder;
    QString path = folder.filePath("store.plist");
};
} // namespace

TEST_F(AtomicFileTest, IsMadeWithTheModeWhateverTheMaskOfTheProcess)
{
    ::umask(077);
    EXPECT_TRUE(replaceFileAtomically(path, "new", 0644));
    EXPECT_EQ(content(), "new");
    struct stat status {
    };
    ASSERT_EQ(::stat(qPrintable(path), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0644U);
    EXPECT_EQ(entries(), QStringList("store.plist"));
}

TEST_F(AtomicFileTest, ReplacesTheOldContentForWhoOpensItLaterOnly)
{
    ASSERT_TRUE(replaceFileAtomically(path, "old content", 0600));
    QFile reader(path);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    ASSERT_TRUE(replaceFileAtomically(path, "new", 0600));
    EXPECT_EQ(reader.readAll(), "old content");
    EXPECT_EQ(content(), "new");
}

TEST_F(AtomicFileTest, SweepsAwayWhatKilledProgramsLeft)
{
    const auto leave = [&](const QString &name, int minutesAgo) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-60 * minutesAgo),
                                     QFileDevice::FileModificationTime));
    };
    leave(".dozely-0123456789abcdef", 11);
    leave(".dozely-1", 11);
    leave(".dozely-2", 0);      // may be of a program that is at it
    leave(".dozely-notes", 11); // somebody else's
    ASSERT_TRUE(QDir(folder.path()).mkdir(".dozely-3"));
    ASSERT_TRUE(replaceFileAtomically(path, "new", 0600));
    EXPECT_EQ(entries(), QStringList({".dozely-2", ".dozely-3", ".dozely-notes", "store.plist"}));
}

TEST_F(AtomicFileTest, ReplacesALinkAndNotWhatItLeadsTo)
{
    QFile other(folder.filePath("other"));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.write("untouched");
    other.close();
    ASSERT_TRUE(QFile::link(other.fileName(), path));
    ASSERT_TRUE(replaceFileAtomically(path, "new", 0600));
    EXPECT_TRUE(QFile::symLinkTarget(path).isEmpty());
    ASSERT_TRUE(other.open(QIODevice::ReadOnly));
    EXPECT_EQ(other.readAll(), "untouched");
}

TEST_F(AtomicFileTest, StaysAsItWasWhenTheDiskIsFull)
{
    ASSERT_TRUE(replaceFileAtomically(path, "old", 0600));
    // A file may not grow beyond this, as on a full disk; the signal that would end the process is not
    // wanted.
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit former{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &former), 0);
    const rlimit limit{1024, former.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto restore = qScopeGuard([&former] { ::setrlimit(RLIMIT_FSIZE, &former); });
    const auto replaced = replaceFileAtomically(path, QByteArray(100'000, 'x'), 0600);
    ASSERT_FALSE(replaced);
    EXPECT_TRUE(replaced.error().text.contains(path)) << qPrintable(replaced.error().text);
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(entries(), QStringList("store.plist"));
}

TEST_F(AtomicFileTest, TellsWhyItCannotBeWritten)
{
    const auto replaced = replaceFileAtomically(folder.filePath("missing/store.plist"), "new", 0600);
    ASSERT_FALSE(replaced);
    EXPECT_TRUE(replaced.error().text.contains("No such file")) << qPrintable(replaced.error().text);
    EXPECT_FALSE(replaceFileAtomically(folder.path() + '/', "new", 0600));
    ASSERT_TRUE(QDir(folder.path()).mkpath("store.plist/occupied"));
    EXPECT_FALSE(replaceFileAtomically(path, "new", 0600));
    EXPECT_EQ(entries(), QStringList("store.plist"));
}
