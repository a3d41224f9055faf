// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/ZDRLog.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "support/FakeClock.h"
#include "support/Identity.h"
#include "support/ScratchRoot.h"
#include "unit/core/foundation/OtherProcess.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <ctime>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace dozely;

namespace
{
class ZDRLogLine : public testing::Test
{
protected:
    void SetUp() override
    {
        ::umask(022);
        qputenv("TZ", "Europe/Paris");
        ::tzset();
        setDate(QDateTime({2026, 3, 4}, QTime(8, 15, 2), Qt::UTC));
    }
    static void setDate(const QDateTime &date) { Port<Clock>::current() = std::make_shared<FakeClock>(date); }

    // The body of a role's line as this process writes it.
    static QString body(const QString &role, const QString &message)
    {
        return QString("(%1 - %2 - %3 - %4): %5")
            .arg(::getpid())
            .arg(::getppid())
            .arg(static_cast<int>(::geteuid()))
            .arg(role, message);
    }
    QString lineOfProcess(const QString &processName)
    {
        NSProcessInfo::setProcessName(processName);
        ZDRLog("message");
        return root.logLines().value(root.logLines().size() - 1);
    }

    ScratchRoot root;
};
} // namespace

TEST_F(ZDRLogLine, WritesTheLocalTimeABlankAndTheTextIntoTheFile)
{
    ZDRAppendStringToFile("Sleep well\n", root.join("/var/log/dozely.log"));
    EXPECT_EQ(root.logContent(), QByteArray("Mar 04 09:15:02 Sleep well\n"));
}

TEST_F(ZDRLogLine, WritesTheTextAsItIsWithoutALineEndOfItsOwn)
{
    const QString path = root.join("/var/log/other.log");
    ZDRAppendStringToFile("one, ", path);
    ZDRAppendStringToFile("100% %@\n", path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("Mar 04 09:15:02 one, Mar 04 09:15:02 100% %@\n"));
}

TEST_F(ZDRLogLine, WritesDayHourMinuteAndSecondWithTwoDigitsEach)
{
    setDate(QDateTime({2026, 2, 1}, QTime(0, 3, 9), Qt::UTC));
    ZDRLogText("x");
    EXPECT_EQ(root.logContent().left(16), QByteArray("Feb 01 01:03:09 "));
    setDate(QDateTime({2026, 12, 31}, QTime(22, 59, 59), Qt::UTC));
    ZDRLogText("x");
    EXPECT_EQ(root.logContent().split('\n').at(1).left(16), QByteArray("Dec 31 23:59:59 "));
}

TEST_F(ZDRLogLine, WritesEnglishMonthNames)
{
    QByteArray months;
    for (int month = 1; month <= 12; ++month)
        setDate(QDateTime({2026, month, 15}, QTime(12, 0), Qt::UTC)), ZDRLogText("x");
    for (const QByteArray &line : root.logContent().split('\n'))
        months += line.left(3);
    EXPECT_EQ(months, QByteArray("JanFebMarAprMayJunJulAugSepOctNovDec"));
}

TEST_F(ZDRLogLine, NoticesThatTheMachineMovedToAnotherTimeZone)
{
    ZDRLogText("x");
    qputenv("TZ", "America/New_York"); // nobody calls tzset
    setDate(QDateTime({2026, 3, 4}, QTime(8, 16), Qt::UTC));
    ZDRLogText("x");
    EXPECT_EQ(root.logContent().split('\n').at(1).left(16), QByteArray("Mar 04 03:16:00 "));
}

TEST_F(ZDRLogLine, NoticesTheOtherTimeZoneAlsoWhenTheClockIsSetBackToTheSecondOfAnEarlierLine)
{
    ZDRLogText("x");
    qputenv("TZ", "America/New_York");
    setDate(QDateTime({2026, 3, 4}, QTime(8, 16), Qt::UTC));
    std::thread([] { ZDRLogText("x"); }).join();
    setDate(QDateTime({2026, 3, 4}, QTime(8, 15, 2), Qt::UTC));
    ZDRLogText("x");
    EXPECT_EQ(root.logContent().split('\n').at(2).left(16), QByteArray("Mar 04 03:15:02 "));
}

TEST_F(ZDRLogLine, WritesTheNumberOfTheProcessThatLogsInAForkedOneToo)
{
    NSProcessInfo::setProcessName("dozelyd");
    ZDRLog("message");
    const pid_t child = ::fork();
    if (child == 0) {
        ZDRLog("message");
        ::_exit(0);
    }
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    EXPECT_EQ(root.logLines().value(0), body("Daemon", "message"));
    EXPECT_TRUE(root.logLines().value(1).startsWith(QString("(%1 - %2 - ").arg(child).arg(::getpid())))
        << qPrintable(root.logLines().value(1));
}

TEST_F(ZDRLogLine, TagsTheProcessNamedDozelydAsDaemon)
{
    EXPECT_EQ(lineOfProcess("dozelyd"), body("Daemon", "message"));
}

TEST_F(ZDRLogLine, TagsAProcessNamedDozelyAgentAsUserAgent)
{
    EXPECT_EQ(lineOfProcess("Dozely Agent"), body("User Agent", "message"));
}

TEST_F(ZDRLogLine, TagsAProcessNamedDozelyAsApp)
{
    EXPECT_EQ(lineOfProcess("Dozely"), body("App", "message"));
}

TEST_F(ZDRLogLine, TagsAProcessNamedDozelyAdminAsAdmin)
{
    EXPECT_EQ(lineOfProcess("Dozely Admin"), body("Admin", "message"));
}

TEST_F(ZDRLogLine, WritesNameAndMessageWithoutNumbersForAProcessOfAnotherName)
{
    EXPECT_EQ(lineOfProcess("some tool"), QString("some tool message"));
}

TEST_F(ZDRLogLine, ComparesProcessNamesExactly)
{
    for (const QString name : {"Dozelyd", "dozely", "Dozely agent", "Dozely Admin ", "dozelyd2"})
        EXPECT_EQ(lineOfProcess(name), name + " message");
}

TEST_F(ZDRLogLine, ALineEndInAProcessNameBeginsNoLine)
{
    EXPECT_EQ(lineOfProcess("tool\n").toStdString(), "tool  message");
    EXPECT_EQ(lineOfProcess("\ntool\r\n").toStdString(), " tool   message");
    EXPECT_EQ(root.logContent().count('\n'), 2);
}

TEST_F(ZDRLogLine, TheFourRoleFunctionsWriteTheirRoleWhateverTheProcessIsCalled)
{
    NSProcessInfo::setProcessName("some tool");
    ZDRLogDaemon("a");
    ZDRLogUserAgent("b");
    ZDRLogPrefPane("c");
    ZDRLogAdmin("d");
    EXPECT_EQ(root.logLines(), QStringList({body("Daemon", "a"), body("User Agent", "b"), body("App", "c"),
                                            body("Admin", "d")}));
}

TEST_F(ZDRLogLine, WritesTheEffectiveUserIdOfAnOrdinaryUser)
{
    root.makeFolder("/var/log", 0777);
    NSProcessInfo::setProcessName("Dozely Agent");
    EXPECT_EQ(consoleOfOrdinaryUser([] { ZDRLog("message"); }), QByteArray());
    const unsigned expected = ::geteuid() == 0 ? ordinaryUserId : ::geteuid();
    EXPECT_TRUE(root.logLines().value(0).contains(
        QString(" - %1 - %2 - User Agent): message").arg(::getpid()).arg(expected)))
        << root.logContent().constData();
}

TEST_F(ZDRLogLine, WritesTheEffectiveUserIdWhoeverTheRealUserIs)
{
    root.makeFolder("/var/log", 0777);
    const uid_t effective = Identity::ordinaryUserHere();
    // Only root can have two identities; for anybody else the two are one.
    EXPECT_TRUE(Identity::holdsAs(Identity::becomeOrdinaryUserEffectively, [] { ZDRLogDaemon("message"); }));
    EXPECT_TRUE(root.logLines().value(0).endsWith(QString(" - %1 - Daemon): message").arg(effective)))
        << root.logContent().constData();
}

TEST_F(ZDRLogLine, InterpretsItsFirstArgumentAsAFormat)
{
    NSProcessInfo::setProcessName("tool");
    ZDRLog("%d of 100%%: %@, %@", 7, QString("text"), QVariant());
    EXPECT_EQ(root.logLines(), QStringList({"tool 7 of 100%: text, (null)"}));
}

TEST_F(ZDRLogLine, DoesNotInterpretPercentSignsInArgumentsAndFormattedMessages)
{
    NSProcessInfo::setProcessName("tool");
    ZDRLog("%@", QString("%@ %d %s %n"));
    ZDRLogText("100 %@");
    EXPECT_EQ(root.logLines(), QStringList({"tool %@ %d %s %n", "tool 100 %@"}));
}

TEST_F(ZDRLogLine, WritesUtf8)
{
    NSProcessInfo::setProcessName("tool");
    ZDRLogText(u8"Mise en veille forcée… 😀");
    EXPECT_EQ(root.logContent().mid(16), QByteArray("tool Mise en veille forcée… 😀\n"));
    ZDRAppendStringToFile("x\n", root.join(u8"/var/log/été.log"));
    EXPECT_TRUE(QFile::exists(root.join(u8"/var/log/été.log")));
}

TEST_F(ZDRLogLine, AppendsAndNeverTruncates)
{
    QFile file(root.join("/var/log/dozely.log"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("earlier\n");
    file.close();
    ZDRAppendStringToFile("later\n", file.fileName());
    EXPECT_EQ(root.logContent(), QByteArray("earlier\nMar 04 09:15:02 later\n"));
}

TEST_F(ZDRLogLine, OpensTheFileAnewForEachLine)
{
    ZDRLogText("one");
    ASSERT_TRUE(QFile::remove(root.join("/var/log/dozely.log")));
    ZDRLogText("two");
    EXPECT_EQ(root.logLines().size(), 1);
}

TEST_F(ZDRLogLine, WritesNothingToTheConsoleWhenTheLineWasWritten)
{
    testing::internal::CaptureStderr();
    ZDRLogDaemon("message");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ZDRLogLine, LinesOfSeveralThreadsAndProcessesInterleaveWhole)
{
    constexpr int lines = 200;
    constexpr int threads = 3;
    root.makeFolder("/var/log", 0777);
    const auto writeMany = [](const QString &role) {
        for (int i = 0; i < lines; ++i)
            ZDRLogDaemon(role + QString(300, 'x') + QString::number(i));
    };
    // The process first: one that is made while other threads run may find their locks taken for ever.
    const auto writeInThreads = [&] {
        std::vector<std::thread> writers;
        writers.reserve(threads);
        for (int i = 0; i < threads; ++i)
            writers.emplace_back(writeMany, QString("thread"));
        for (std::thread &writer : writers)
            writer.join();
    };
    const QByteArray console = consoleOfChild([&] { writeMany("process"); }, writeInThreads);
    EXPECT_EQ(console, QByteArray());
    const QRegularExpression whole(R"(^\(\d+ - \d+ - \d+ - Daemon\): (thread|process)x{300}\d+$)");
    const QStringList written = root.logLines();
    EXPECT_EQ(written.size(), lines * (threads + 1));
    for (const QString &line : written)
        ASSERT_TRUE(whole.match(line).hasMatch()) << qPrintable(line);
}

TEST_F(ZDRLogLine, IsOneWhateverItsMessageHolds)
{
    const QString text = QString("first\nMar 04 09:15:02 (1 - 1 - 0 - Daemon): forged\r\x1b[2J") +
                         QChar(0x9b) + QChar(0x85) + QChar(0x2028) + "end\n";
    ZDRLog("%@", text);
    ZDRLogDaemon(text);
    ASSERT_EQ(root.logLines().size(), 2) << root.logContent().constData();
    for (const QString &line : root.logLines())
        EXPECT_TRUE(line.endsWith("first Mar 04 09:15:02 (1 - 1 - 0 - Daemon): forged  [2J   end"))
            << qPrintable(line);
}
