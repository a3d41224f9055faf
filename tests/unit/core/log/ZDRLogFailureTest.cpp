// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/ZDRLog.h"

#include "support/Identity.h"
#include "support/ScratchRoot.h"
#include "unit/core/foundation/OtherProcess.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace
{
// What the log does to its file, and what it must not do to what lies in its file's place.
class ZDRLogFile : public testing::Test
{
protected:
    void SetUp() override { ::umask(022); }

    QByteArray path(const QString &name = "dozely.log") const
    {
        return QFile::encodeName(root.join("/var/log/" + name));
    }
    void makeFile(const QByteArray &path, mode_t mode, const QByteArray &content = {}) const
    {
        QFile file(QFile::decodeName(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        ASSERT_EQ(::chmod(path.constData(), mode), 0);
    }
    static mode_t mode(const QByteArray &path)
    {
        struct stat status {
        };
        return ::lstat(path.constData(), &status) == 0 ? status.st_mode & 07777U : 0;
    }
    static QByteArray content(const QByteArray &path)
    {
        QFile file(QFile::decodeName(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    static QByteArray consoleOfLogging()
    {
        testing::internal::CaptureStderr();
        ZDRLogDaemon("message");
        return QByteArray::fromStdString(testing::internal::GetCapturedStderr());
    }
    ScratchRoot root;
};

QByteArray failure(int error)
{
    return "Could not open file for writing (errno: " + QByteArray::number(error) + ")\n";
}

/// Whether the console has the error, and in a line of its own what could not be logged.
testing::AssertionResult tells(const QByteArray &console, int error, const QByteArray &message = "message")
{
    const QList<QByteArray> lines = console.split('\n');
    if (console.startsWith(failure(error)) && lines.size() == 3 && lines[1].endsWith("): " + message))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << console.constData();
}
} // namespace

TEST_F(ZDRLogFile, IsReadableAndWritableForEverybodyOnceRootHasMadeIt)
{
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        ZDRLogDaemon("message");
        EXPECT_EQ(mode(path()), 0666U);
    }));
}

TEST_F(ZDRLogFile, IsOpenedToEverybodyByRootHoweverItWasBefore)
{
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        for (const mode_t before : {0600, 0640, 0777}) {
            makeFile(path(), before);
            ZDRLogDaemon("message");
            EXPECT_EQ(mode(path()), 0666U);
        }
    }));
}

TEST_F(ZDRLogFile, MadeByRootTakesLinesOfOrdinaryUsers)
{
    ZDRLogDaemon("of the first");
    EXPECT_EQ(consoleOfOrdinaryUser([] { ZDRLogUserAgent("of an ordinary user"); }), QByteArray());
    ASSERT_EQ(root.logLines().size(), 2);
    EXPECT_TRUE(root.logLines().at(1).endsWith("User Agent): of an ordinary user"));
}

TEST_F(ZDRLogFile, KeepsItsModeWhenAnOrdinaryUserLogs)
{
    root.makeFolder("/var/log", 0777);
    EXPECT_EQ(consoleOfOrdinaryUser([] { ZDRLogUserAgent("message"); }), QByteArray());
    EXPECT_EQ(mode(path()), 0644U);
    makeFile(path(), 0622);
    EXPECT_EQ(consoleOfOrdinaryUser([] { ZDRLogUserAgent("message"); }), QByteArray());
    EXPECT_EQ(mode(path()), 0622U);
}

TEST_F(ZDRLogFile, InAFolderThatMayNotBeWrittenIsReportedOnTheConsoleWithErrorThirteen)
{
    root.makeFolder("/var/log", 0555);
    EXPECT_TRUE(tells(consoleOfOrdinaryUser([] { ZDRLogUserAgent("message"); }), EACCES));
    EXPECT_FALSE(QFile::exists(QFile::decodeName(path())));
}

TEST_F(ZDRLogFile, WithoutItsFolderIsReportedOncePerMessage)
{
    ASSERT_TRUE(QDir().rmdir(root.join("/var/log")));
    testing::internal::CaptureStderr();
    ZDRLogDaemon("one");
    ZDRLogDaemon("two");
    const QByteArray console = QByteArray::fromStdString(testing::internal::GetCapturedStderr());
    EXPECT_EQ(console.count(failure(ENOENT)), 2);
    EXPECT_EQ(console.count("): one\n"), 1);
    EXPECT_EQ(console.count("): two\n"), 1);
}

TEST_F(ZDRLogFile, ThatCannotBeOpenedIsStillOpenedToEverybodyByRoot)
{
    // A program that runs may not be written (error 26), not even by root; its mode may be changed.
    ASSERT_TRUE(QFile::copy("/bin/cat", QFile::decodeName(path())));
    ASSERT_EQ(::chmod(path().constData(), 0755), 0);
    QProcess running;
    running.start(QFile::decodeName(path()), {});
    ASSERT_TRUE(running.waitForStarted());
    const QByteArray before = content(path());
    EXPECT_TRUE(Identity::holdsAsRoot([&] {
        EXPECT_TRUE(tells(consoleOfLogging(), ETXTBSY));
        EXPECT_EQ(mode(path()), 0666U);
    }));
    EXPECT_EQ(content(path()), before);
    running.closeWriteChannel();
    EXPECT_TRUE(running.waitForFinished());
}

TEST_F(ZDRLogFile, ReplacedByALinkIsNotFollowed)
{
    makeFile(path("secret"), 0600, "secret");
    ASSERT_EQ(::symlink(path("secret").constData(), path().constData()), 0);
    EXPECT_TRUE(tells(consoleOfLogging(), ELOOP));
    EXPECT_EQ(content(path("secret")), QByteArray("secret"));
    EXPECT_EQ(mode(path("secret")), 0600U);
}

TEST_F(ZDRLogFile, ReplacedByADanglingLinkMakesNoFileElsewhere)
{
    ASSERT_EQ(::symlink(path("elsewhere").constData(), path().constData()), 0);
    EXPECT_TRUE(tells(consoleOfLogging(), ELOOP));
    EXPECT_FALSE(QFile::exists(QFile::decodeName(path("elsewhere"))));
}

TEST_F(ZDRLogFile, ReplacedByAPipeWithoutReaderDoesNotHoldUpTheWriter)
{
    ASSERT_EQ(::mkfifo(path().constData(), 0600), 0);
    EXPECT_TRUE(tells(consoleOfLogging(), EINVAL));
    EXPECT_EQ(mode(path()), 0600U);
}

TEST_F(ZDRLogFile, ReplacedByAPipeWithAReaderGetsNothing)
{
    ASSERT_EQ(::mkfifo(path().constData(), 0600), 0);
    const int reader = ::open(path().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    EXPECT_TRUE(tells(consoleOfLogging(), EINVAL));
    char byte = 0;
    EXPECT_EQ(::read(reader, &byte, 1), 0);
    EXPECT_EQ(mode(path()), 0600U);
    ::close(reader);
}

TEST_F(ZDRLogFile, ReplacedByAFolderLeavesThatAsItIs)
{
    root.makeFolder("/var/log/dozely.log", 0700);
    EXPECT_TRUE(tells(consoleOfLogging(), EISDIR));
    EXPECT_EQ(mode(path()), 0700U);
}

TEST_F(ZDRLogFile, ThatTakesNoMoreBytesIsReportedOnTheConsole)
{
    makeFile(path(), 0666, "full");
    const QByteArray console = consoleOfOrdinaryUser([] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit fileSize{4, 4};
        ::setrlimit(RLIMIT_FSIZE, &fileSize);
        ZDRLogDaemon("message");
    });
    EXPECT_EQ(console, QByteArray("Could not write to file (errno: 27)\n"));
    EXPECT_EQ(content(path()), QByteArray("full"));
}

TEST_F(ZDRLogFile, LeavesNoDescriptorOpenWhateverHappens)
{
    const auto open = [] { return QDir("/proc/self/fd").entryList(QDir::Files | QDir::System).size(); };
    ZDRLogDaemon("once"); // the first line may make what stays, as the clock
    const auto before = open();
    ZDRLogDaemon("message");
    ASSERT_TRUE(QFile::remove(QFile::decodeName(path())));
    root.makeFolder("/var/log/dozely.log", 0700);
    consoleOfLogging();
    ASSERT_TRUE(QDir().rmdir(QFile::decodeName(path())));
    ASSERT_EQ(::symlink("/nowhere", path().constData()), 0);
    consoleOfLogging();
    EXPECT_EQ(open(), before);
}

TEST_F(ZDRLogFile, ThatCannotBeOpenedLetsNoTextBeginALineOnTheConsole)
{
    ASSERT_TRUE(QDir().rmdir(root.join("/var/log")));
    testing::internal::CaptureStderr();
    ZDRLog("%@", QString("one\nforged\r\x1b[2J"));
    ZDRAppendStringToFile("two\nforged\n", root.join("/var/log/other.log"));
    const QByteArray console = QByteArray::fromStdString(testing::internal::GetCapturedStderr());
    EXPECT_EQ(console.count('\n'), 4) << console.constData();
    EXPECT_TRUE(console.contains(" one forged  [2J\n")) << console.constData();
    EXPECT_TRUE(console.endsWith(" two forged\n")) << console.constData();
}

TEST_F(ZDRLogFile, ThatEndsWithHalfALineHasItClosedBeforeTheNext)
{
    makeFile(path(), 0666, "a whole line\nhalf a li");
    ZDRLogDaemon("message");
    ZDRLogDaemon("message");
    EXPECT_TRUE(content(path()).startsWith("a whole line\nhalf a li\n")) << content(path()).constData();
    EXPECT_EQ(root.logLines().size(), 4);
    EXPECT_TRUE(root.logLines().at(2).endsWith("Daemon): message"));
}

TEST_F(ZDRLogFile, HasHalfALineClosedThatSomebodyElseLeftAfterOurLast)
{
    ZDRLogDaemon("message");
    QFile file(root.join("/var/log/dozely.log"));
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("half a li");
    file.close();
    ZDRLogDaemon("message");
    EXPECT_EQ(root.logLines().size(), 3);
    // Another file of the same length in its place.
    const qsizetype length = content(path()).size();
    ASSERT_TRUE(file.rename(root.join("/var/log/dozely.log.1")));
    makeFile(path(), 0666, QByteArray(length, 'x'));
    ZDRLogDaemon("message");
    EXPECT_EQ(root.logLines().size(), 2);
}

TEST_F(ZDRLogFile, ThatHadNoRoomForAWholeLineBeginsTheNextOnItsOwn)
{
    makeFile(path(), 0666, "full\n");
    const QByteArray console = consoleOfOrdinaryUser([] {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit fileSize{15, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &fileSize);
        ZDRLogDaemon("cut off");
        fileSize.rlim_cur = RLIM_INFINITY; // there is room again
        ::setrlimit(RLIMIT_FSIZE, &fileSize);
        ZDRLogDaemon("whole");
    });
    EXPECT_TRUE(console.startsWith("Could not write to file (errno: 28)\n")) << console.constData();
    ASSERT_EQ(root.logLines().size(), 3) << content(path()).constData();
    EXPECT_TRUE(root.logLines().at(2).endsWith("Daemon): whole"));
}
