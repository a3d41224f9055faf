// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandRunner.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "support/FakeClock.h"
#include "support/ScratchRoot.h"
#include "support/SignalProcess.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

using namespace dozely;

using testing::ElementsAre;
using testing::MatchesRegex;
using namespace std::chrono_literals;

namespace
{
class CommandRunnerTest : public testing::Test
{
protected:
    CommandRunnerTest()
    {
        QObject::connect(&runner, &CommandRunner::finished, &runner, [this] { ++ends; });
    }

    void run(const QString &program, const QStringList &arguments = {})
    {
        runner.run({{"Program", program}, {"Arguments", QVariant(arguments).toList()}},
                   ProgramEnvironment::ofSession());
    }
    void runToItsEnd(const QString &program, const QStringList &arguments = {})
    {
        const int before = ends;
        run(program, arguments);
        ASSERT_TRUE(waitUntil([&] { return ends > before; }));
    }
    QStringList onlyLines() const { return root.logLines(); }
    std::string onlyLine() const
    {
        const QStringList lines = root.logLines();
        return lines.size() == 1 ? lines.first().toStdString() : lines.join('\n').toStdString();
    }
    /// What a shell script writes to the file that it gets as its first argument.
    QByteArray writtenBy(const QString &script, const QStringList &arguments = {})
    {
        const QString path = root.join("/written");
        runToItsEnd("/bin/sh", QStringList{"-c", script, "sh", path} + arguments);
        return content(path);
    }
    static QByteArray content(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Starts a shell that runs until it is ended, and waits until it is ready. Its id is in the file
    /// "/ready".
    void runEndless(const QString &preparation = {})
    {
        const QString script =
            preparation + " echo $$ > \"$1.new\"; mv \"$1.new\" \"$1\"; while :; do read x < \"$2\"; done";
        run("/bin/sh", {"-c", script, "sh", root.join("/ready"), fifo()});
        ASSERT_TRUE(waitUntil([&] { return QFileInfo::exists(root.join("/ready")); }));
    }
    pid_t endlessProcess() const { return content(root.join("/ready")).trimmed().toInt(); }
    /// A pipe that nobody writes to, so that reading from it waits.
    QString fifo() const
    {
        const QString path = root.join("/pipe");
        ::mkfifo(qPrintable(path), 0600);
        return path;
    }

    ScratchRoot root;
    CommandRunner runner;
    int ends = 0;
};
} // namespace

TEST_F(CommandRunnerTest, LogsStatusAndDurationInOneLine)
{
    runToItsEnd("/bin/sh", {"-c", "exit 3"});
    EXPECT_THAT(onlyLine(),
                MatchesRegex(".*Command: /bin/sh ended with status 3 after [0-9]+\\.[0-9]{3} s\\."));
    EXPECT_FALSE(runner.isRunning());
    EXPECT_EQ(runner.exitStatus(), 3);
    runEndless();
    EXPECT_EQ(runner.exitStatus(), -1) << "none of this one yet";
}

TEST_F(CommandRunnerTest, MeasuresTheDurationOnTheSteadyClock)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    runEndless();
    clock->advance(1234ms);
    ASSERT_TRUE(signalProcess(endlessProcess(), SIGKILL));
    ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
    EXPECT_THAT(onlyLine(),
                testing::HasSubstr("Command: /bin/sh was ended by signal 9 (Killed) after 1.234 s."));
    EXPECT_EQ(runner.exitStatus(), 128 + SIGKILL);
}

TEST_F(CommandRunnerTest, NamesTheSignalThatEndedTheProgram)
{
    runToItsEnd("/bin/sh", {"-c", "kill -SEGV $$"});
    EXPECT_THAT(onlyLine(), MatchesRegex(".*was ended by signal 11 \\(Segmentation fault\\) after .* s\\."));
}

TEST_F(CommandRunnerTest, SaysThatAProgramIsNotThere)
{
    const QString program = root.join("/gone");
    runToItsEnd(program);
    EXPECT_THAT(onlyLine(), MatchesRegex(".*Command: " + program.toStdString() +
                                         " could not be started \\(.*No such file.*\\)\\."));
    EXPECT_FALSE(runner.isRunning());
}

TEST_F(CommandRunnerTest, SaysThatAFileMayNotBeExecuted)
{
    QFile file(root.join("/plain"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    runToItsEnd(file.fileName());
    EXPECT_THAT(onlyLine(), MatchesRegex(".*plain could not be started \\(.*Permission denied.*\\)\\."));
}

TEST_F(CommandRunnerTest, SaysThatTheWorkingDirectoryIsGone)
{
    auto environment = ProgramEnvironment::ofSession();
    environment.workingFolder = root.join("/gone");
    runner.run({{"Program", "/bin/true"}}, environment);
    ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
    EXPECT_THAT(onlyLine(), MatchesRegex(".*/bin/true could not be started \\(.*No such file.*\\)\\."));
}

TEST_F(CommandRunnerTest, RunsNothingWhenAParameterIsWrong)
{
    runner.run({{"Program", "touch"}, {"Arguments", QVariantList{root.join("/mark")}}},
               ProgramEnvironment::ofSession());
    EXPECT_FALSE(runner.isRunning());
    EXPECT_THAT(
        onlyLine(),
        testing::HasSubstr("Command: nothing was run, the parameter \"Program\" is not an absolute path."));
}

TEST_F(CommandRunnerTest, CannotBeMadeToForgeALogLine)
{
    runToItsEnd(QString::fromUtf8("/no\nJan 01 00:00:00 (1 - 1 - 0 - Daemon): forged\u2028x\x1b[2J"));
    EXPECT_EQ(onlyLines().size(), 1);
    EXPECT_THAT(onlyLine(), testing::HasSubstr("/no\\u000aJan"));
    EXPECT_THAT(onlyLine(), testing::HasSubstr("\\u2028x\\u001b[2J"));
}

TEST_F(CommandRunnerTest, PassesBlanksQuotesAndEmptyArgumentsUnchanged)
{
    const QStringList arguments{"a b",         "",          "\"quoted\"", "it's", "$HOME", "*",
                                "back\\slash", "new\nline", "ü",          "-"};
    QByteArray expected;
    for (const QString &argument : arguments)
        expected += argument.toUtf8() + '\0';
    EXPECT_EQ(writtenBy("f=$1; shift; printf '%s\\0' \"$@\" > \"$f\"", arguments), expected);
}

TEST_F(CommandRunnerTest, GivesTheSessionACleanEnvironment)
{
    ::setenv("LD_LIBRARY_PATH", "/strange", 1);
    ::setenv("SECRET", "token", 1);
    ::setenv("PATH", "/strange", 1);
    ::setenv("LANG", "de_DE.UTF-8", 1);
    ::setenv("XDG_RUNTIME_DIR", "/run/user/7", 1);
    ::setenv("DISPLAY", ":7", 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/run/user/7/bus", 1);
    ::unsetenv("WAYLAND_DISPLAY");
    const QByteArray written = writtenBy("/usr/bin/tr '\\0' '\\n' < /proc/$$/environ > \"$1\"");
    QList<QByteArray> variables = written.trimmed().split('\n');
    std::sort(variables.begin(), variables.end());
    EXPECT_THAT(variables, ElementsAre("DBUS_SESSION_BUS_ADDRESS=unix:path=/run/user/7/bus", "DISPLAY=:7",
                                       "HOME=" + RealHomeDirectory().toUtf8(), "LANG=de_DE.UTF-8",
                                       "PATH=/usr/local/bin:/usr/bin:/bin", "XDG_RUNTIME_DIR=/run/user/7"));
}

TEST_F(CommandRunnerTest, GivesTheDaemonsProgramsNothingOfASession)
{
    ::setenv("DISPLAY", ":7", 1);
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/run/user/7/bus", 1);
    ::setenv("LANG", "C", 1);
    const auto environment = ProgramEnvironment::ofDaemon();
    EXPECT_THAT(
        environment.variables,
        testing::UnorderedElementsAre("HOME=" + RealHomeDirectory().toUtf8(), "LANG=C",
                                      "PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"));
    EXPECT_EQ(environment.workingFolder, "/");
}

TEST_F(CommandRunnerTest, StartsInTheHomeDirectoryOfTheSessionsUser)
{
    const QString home = QFileInfo(RealHomeDirectory()).canonicalFilePath();
    EXPECT_EQ(writtenBy("pwd -P > \"$1\"").trimmed(), (home.isEmpty() ? QString("/") : home).toUtf8());
}

TEST_F(CommandRunnerTest, LeaksNoDescriptorIntoTheProgram)
{
    const int inherited = ::open("/etc/passwd", O_RDONLY); // on purpose without O_CLOEXEC
    const int high = ::fcntl(inherited, F_DUPFD, 200);
    ASSERT_GE(high, 200);
    // The fourth descriptor is the one by which ls reads the folder itself.
    runToItsEnd("/bin/sh", {"-c", "exec /bin/ls /proc/self/fd > \"$1\"", "sh", root.join("/written")});
    EXPECT_EQ(content(root.join("/written")), "0\n1\n2\n3\n");
    ::close(high);
    ::close(inherited);
}

TEST_F(CommandRunnerTest, ReadsNothingAndPrintsWhereThisProcessDoes)
{
    // Descriptors of the shell itself, read before any redirection takes their place.
    const std::string own = std::filesystem::read_symlink("/proc/self/fd/1").string() + ' ' +
                            std::filesystem::read_symlink("/proc/self/fd/2").string();
    ASSERT_NE(own, "/dev/null /dev/null");
    EXPECT_EQ(writtenBy("for n in 0 1 2; do streams=\"$streams $(readlink /proc/$$/fd/$n)\"; done; "
                        "echo $streams > \"$1\"; cat >> \"$1\""),
              QByteArray::fromStdString("/dev/null " + own + '\n'));
}

TEST_F(CommandRunnerTest, GivesTheProgramDefaultSignalsAndNoneBlocked)
{
    ::signal(SIGUSR1, SIG_IGN);
    sigset_t blocked;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGUSR2);
    ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, &blocked, nullptr), 0);
    runToItsEnd("/bin/grep", {"-q", "^SigBlk:.0000000000000000$", "/proc/self/status"});
    runToItsEnd("/bin/grep", {"-q", "^SigIgn:.0000000000000000$", "/proc/self/status"});
    for (const QString &line : onlyLines())
        EXPECT_TRUE(line.contains("ended with status 0")) << qPrintable(line);
    EXPECT_EQ(onlyLines().size(), 2);
}

TEST_F(CommandRunnerTest, IsRunningUntilTheProgramEnds)
{
    EXPECT_FALSE(runner.isRunning());
    runEndless();
    EXPECT_TRUE(runner.isRunning());
    EXPECT_TRUE(onlyLines().isEmpty());
    runner.stop();
    ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
    EXPECT_FALSE(runner.isRunning());
    EXPECT_THAT(onlyLine(), testing::HasSubstr("was ended by signal 15 (Terminated)"));
}

TEST_F(CommandRunnerTest, StopsWhatTheProgramStartedToo)
{
    runEndless("/bin/sh -c 'read x < \"$0\"' \"$2\" & echo $! > \"$1.child\";");
    const pid_t child = content(root.join("/ready.child")).trimmed().toInt();
    ASSERT_GT(child, 0);
    runner.stop();
    ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
    // The orphan may stay behind as a zombie where nobody collects it; it no longer runs.
    EXPECT_TRUE(waitUntil([&] {
        const QByteArray status = content(QString("/proc/%1/stat").arg(child));
        return status.isEmpty() || status.contains(") Z ");
    }));
}

TEST_F(CommandRunnerTest, KillsAfterFiveSecondsAProgramThatWillNotEnd)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    runEndless("trap 'echo asked > \"$1.asked\"' TERM;");
    runner.stop();
    ASSERT_TRUE(waitUntil([&] { return QFileInfo::exists(root.join("/ready.asked")); }));
    clock->advance(4999ms);
    EXPECT_TRUE(signalProcess(endlessProcess(), 0));
    EXPECT_TRUE(runner.isRunning());
    clock->advance(1ms);
    ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
    EXPECT_THAT(onlyLine(), testing::HasSubstr("was ended by signal 9 (Killed) after 5.000 s."));
}

TEST_F(CommandRunnerTest, DoesNotKillALaterProgramForAnEarlierOne)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    runEndless();
    runner.stop();
    ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
    QFile::remove(root.join("/ready"));
    runEndless();
    clock->advance(6s);
    EXPECT_TRUE(signalProcess(endlessProcess(), 0));
    runner.stop();
    ASSERT_TRUE(waitUntil([&] { return ends == 2; }));
    EXPECT_THAT(onlyLines().last().toStdString(), testing::HasSubstr("signal 15"));
}

TEST_F(CommandRunnerTest, StartsNoSecondProgramWhileOneRuns)
{
    runEndless();
    run("/bin/touch", {root.join("/mark")});
    EXPECT_THAT(onlyLine(),
                testing::HasSubstr("Command: /bin/touch was not started, since /bin/sh still runs."));
    runner.stop();
    ASSERT_TRUE(waitUntil([&] { return ends == 1; }));
    EXPECT_FALSE(QFileInfo::exists(root.join("/mark")));
}

TEST_F(CommandRunnerTest, TakesTheProgramWithItWhenDestroyed)
{
    const QString ready = root.join("/ready");
    auto owner = std::make_unique<CommandRunner>();
    owner->run(
        {{"Program", "/bin/sh"},
         {"Arguments", QVariantList{"-c", "echo $$ > \"$1.new\"; mv \"$1.new\" \"$1\"; read x < \"$2\"", "sh",
                                    ready, fifo()}}},
        ProgramEnvironment::ofSession());
    ASSERT_TRUE(waitUntil([&] { return QFileInfo::exists(ready); }));
    const pid_t process = endlessProcess();
    ASSERT_TRUE(signalProcess(process, 0));
    owner.reset();
    EXPECT_FALSE(signalProcess(process, 0));
    EXPECT_EQ(errno, ESRCH);
}
