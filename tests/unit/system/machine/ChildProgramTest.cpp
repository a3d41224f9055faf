// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ChildProgram_p.h"

#include "support/PrintTo.h"
#include "support/WaitUntil.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace
{
constexpr qsizetype enough = 1 << 20;

ChildProgram shell(const QString &script, const QStringList &arguments = {})
{
    return {"/bin/sh", QStringList{"-c", script, "sh"} + arguments, {"PATH=/usr/bin:/bin"}, "/"};
}

QByteArray outputOf(const ChildProgram &program)
{
    QString error;
    const auto ending = program.run(20s, enough, &error);
    EXPECT_TRUE(ending) << qPrintable(error);
    return ending.value_or(ChildProgram::Ending{}).output;
}
} // namespace

TEST(ChildProgram, TellsStatusAndOutput)
{
    const auto ending = shell("printf 'a\\nb'; exit 3").run(20s, enough, nullptr);
    ASSERT_TRUE(ending);
    EXPECT_EQ(ending->status, 3);
    EXPECT_EQ(ending->signal, 0);
    EXPECT_EQ(ending->output, "a\nb");
}

TEST(ChildProgram, TellsTheSignalThatEndedIt)
{
    const auto ending = shell("kill -SEGV $$").run(20s, enough, nullptr);
    ASSERT_TRUE(ending);
    EXPECT_EQ(ending->signal, SIGSEGV);
}

TEST(ChildProgram, GetsItsArgumentsAsTheyStand)
{
    EXPECT_EQ(outputOf(shell("printf '<%s>' \"$@\"", {"a b", "", "$HOME; ls", "Zoë"})),
              "<a b><><$HOME; ls><Zoë>");
}

TEST(ChildProgram, GetsTheGivenEnvironmentAlone)
{
    qputenv("DOZELY_SECRET", "x");
    const ChildProgram program{"/usr/bin/env", {}, {"ONE=1", "TWO=a b"}, "/"};
    EXPECT_EQ(outputOf(program), "ONE=1\nTWO=a b\n");
}

TEST(ChildProgram, GetsNoDescriptorBeyondTheStandardStreams)
{
    const int leaking = ::open("/etc/passwd", O_RDONLY); // not marked to be closed
    ASSERT_GT(leaking, STDERR_FILENO);
    ASSERT_EQ(::dup2(leaking, 77), 77);
    const QString lister = "for n in $(seq 0 99); do [ -e /proc/$$/fd/$n ] && printf '%s ' $n; done";
    EXPECT_EQ(outputOf(shell(lister)), "0 1 2 ");
    EXPECT_EQ(outputOf(shell("readlink /proc/$$/fd/0 /proc/$$/fd/2")), "/dev/null\n/dev/null\n");
    ::close(leaking);
    ::close(77);
}

TEST(ChildProgram, GetsNoBlockedOrIgnoredSignals)
{
    sigset_t blocked;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGTERM);
    ASSERT_EQ(::sigprocmask(SIG_BLOCK, &blocked, nullptr), 0);
    ::signal(SIGHUP, SIG_IGN);
    const QByteArray status = outputOf({"/bin/grep", {"-E", "^Sig(Blk|Ign)", "/proc/self/status"}, {}, "/"});
    EXPECT_EQ(status, "SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n");
}

TEST(ChildProgram, LeadsASessionOfItsOwn)
{
    EXPECT_EQ(outputOf(shell("set -- $(cat /proc/$$/stat); [ $6 = $$ ] && [ $5 = $$ ] && echo leads")),
              "leads\n");
}

TEST(ChildProgram, RunsInTheGivenFolderOrElseInTheRoot)
{
    const QTemporaryDir folder;
    ChildProgram program = shell("pwd");
    program.workingFolder = folder.path();
    EXPECT_EQ(outputOf(program).trimmed(), QFileInfo(folder.path()).canonicalFilePath().toUtf8());
    program.workingFolder = "/nonexistent";
    EXPECT_EQ(outputOf(program), "/\n");
}

TEST(ChildProgram, SaysWhyItCouldNotBeStarted)
{
    QString error;
    EXPECT_FALSE((ChildProgram{"/nonexistent/tool", {}, {}, "/"}).run(20s, enough, &error));
    EXPECT_EQ(error, "\"/nonexistent/tool\" could not be started: No such file or directory.");
    EXPECT_FALSE((ChildProgram{"/etc/passwd", {}, {}, "/"}).run(20s, enough, &error));
    EXPECT_EQ(error, "\"/etc/passwd\" could not be started: Permission denied.");
    EXPECT_FALSE((ChildProgram{"true", {}, {}, "/"}).run(20s, enough, &error)); // nothing is looked for
}

TEST(ChildProgram, IsKilledWithItsChildrenWhenItTakesTooLong)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    // The child of the child holds the pipe open, as long as it lives.
    const int reader = ::open(qPrintable(pipe), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    QString error;
    EXPECT_FALSE(
        shell("sh -c 'while :; do sleep 1; done' > \"$1\" & wait", {pipe}).run(200ms, enough, &error));
    EXPECT_EQ(error, "\"/bin/sh\" did not end in time.");
    char byte = 0;
    EXPECT_TRUE(waitUntil([&] { return ::read(reader, &byte, 1) == 0; })); // nobody is left to write
    ::close(reader);
}

TEST(ChildProgram, IsNotWaitedForBeyondItsOwnEnd)
{
    // What it left behind keeps the output open for much longer than the test may take.
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(outputOf(shell("sleep 3600 & echo $!")).trimmed().toInt() > 0, true);
    EXPECT_LT(time.elapsed(), 15'000);
}

TEST(ChildProgram, KeepsTheHeadOfALongOutput)
{
    const auto ending = shell("head -c 5000000 /dev/zero | tr '\\0' x; exit 7").run(20s, 1000, nullptr);
    ASSERT_TRUE(ending);
    EXPECT_EQ(ending->output, QByteArray(1000, 'x'));
    EXPECT_EQ(ending->status, 7); // it could write all of it
}

TEST(ChildProgram, IsForgottenOnceLaunched)
{
    const QTemporaryDir folder;
    const QString mark = folder.filePath("mark");
    ASSERT_TRUE(shell("echo $PPID > \"$1.new\"; mv \"$1.new\" \"$1\"", {mark}).launch());
    ASSERT_TRUE(waitUntil([&] { return QFileInfo::exists(mark); }));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1); // there is no child of ours to be waited for
    EXPECT_EQ(errno, ECHILD);
}

TEST(ChildProgram, IsNotLaunchedWhenItCannotBeStarted)
{
    EXPECT_FALSE((ChildProgram{"/nonexistent/tool", {}, {}, "/"}).launch());
}
