// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/DescriptorLimit.h"
#include "DozelyKit/system/machine/ProcessPriority.h"
#include "DozelyKit/system/machine/RunningProgram.h"

#include "support/PrintTo.h"
#include "support/WaitUntil.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace dozely;

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
    const auto ending = program.run(20s, enough);
    EXPECT_TRUE(ending) << qPrintable(ending.error().text);
    return ending ? ending->output : QByteArray();
}

QString failureOf(const ChildProgram &program, std::chrono::milliseconds limit = 20s)
{
    const auto ending = program.run(limit, enough);
    return ending ? QString("none") : ending.error().text;
}

/// Starts a program and keeps what is told about it.
struct Started {
    explicit Started(const ChildProgram &program)
        : running(program.start([this](const Result<ChildProgram::Ending> &told) {
              EXPECT_FALSE(ending) << "once";
              ending = told;
          }))
    {
    }
    bool waitForEnd()
    {
        return waitUntil([this] { return ending.has_value(); });
    }

    std::optional<Result<ChildProgram::Ending>> ending;
    std::unique_ptr<RunningProgram> running;
};

void countSignal(int)
{
    [[maybe_unused]] const ssize_t written = ::write(99, "!", 1);
}
} // namespace

TEST(ChildProgram, TellsStatusAndOutput)
{
    const auto ending = shell("printf 'a\\nb'; exit 3").run(20s, enough);
    ASSERT_TRUE(ending);
    EXPECT_EQ(ending->status, 3);
    EXPECT_EQ(ending->signal, 0);
    EXPECT_EQ(ending->output, "a\nb");
}

TEST(ChildProgram, TellsTheSignalThatEndedIt)
{
    const auto ending = shell("kill -SEGV $$").run(20s, enough);
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
    EXPECT_EQ(failureOf({"/nonexistent/tool", {}, {}, "/"}),
              "\"/nonexistent/tool\" could not be started: No such file or directory");
    EXPECT_EQ(failureOf({"/etc/passwd", {}, {}, "/"}),
              "\"/etc/passwd\" could not be started: Permission denied");
    EXPECT_FALSE((ChildProgram{"true", {}, {}, "/"}).run(20s, enough)); // nothing is looked for
}

TEST(ChildProgram, IsKilledWithItsChildrenWhenItTakesTooLong)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    // The child of the child holds the pipe open, as long as it lives.
    const int reader = ::open(qPrintable(pipe), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(failureOf(shell("sh -c 'while :; do sleep 1; done' > \"$1\" & wait", {pipe}), 200ms),
              "\"/bin/sh\" did not end in time");
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
    const auto ending = shell("head -c 5000000 /dev/zero | tr '\\0' x; exit 7").run(20s, 1000);
    ASSERT_TRUE(ending);
    EXPECT_EQ(ending->output, QByteArray(1000, 'x'));
    EXPECT_EQ(ending->status, 7); // it could write all of it
}

TEST(ChildProgram, HasAllOfItsOutputTakenThatItWroteBeforeItsEnd)
{
    const auto ending = shell("head -c 60000 /dev/zero").run(20s, 100'000);
    ASSERT_TRUE(ending) << ending.error().text.toStdString();
    EXPECT_EQ(ending->output.size(), 60'000);
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

TEST(RunningProgram, TellsItsEndFromTheEventLoop)
{
    Started program(shell("exit 3"));
    EXPECT_FALSE(program.ending);
    ASSERT_TRUE(program.waitForEnd());
    ASSERT_TRUE(program.ending->ok());
    EXPECT_EQ((*program.ending)->status, 3);
    EXPECT_EQ((*program.ending)->signal, 0);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "nobody is left to be waited for";
}

TEST(RunningProgram, TellsFromTheEventLoopThatItCouldNotBeStarted)
{
    Started gone({"/nonexistent/tool", {}, {}, "/"});
    EXPECT_FALSE(gone.ending);
    ASSERT_TRUE(gone.waitForEnd());
    ASSERT_FALSE(gone.ending->ok());
    EXPECT_EQ(gone.ending->error().text, "No such file or directory");
    EXPECT_EQ(gone.ending->error().name, "execve");
    Started homeless({"/bin/true", {}, {}, "/nonexistent", true});
    ASSERT_TRUE(homeless.waitForEnd());
    ASSERT_FALSE(homeless.ending->ok());
    EXPECT_EQ(homeless.ending->error().name, "chdir");
}

TEST(RunningProgram, MayBeDestroyedByWhoIsToldItsEnd)
{
    std::unique_ptr<RunningProgram> program;
    for (const char *path : {"/bin/true", "/nonexistent/tool"}) {
        program = ChildProgram{path, {}, {}, "/"}.start([&](const auto &) { program.reset(); });
        ASSERT_TRUE(waitUntil([&] { return !program; }));
    }
}

TEST(RunningProgram, KnowsForHowLongItHadNoProcessor)
{
    // Two that want the same processor all the time, and one that wants none.
    const ChildProgram busy{"/usr/bin/taskset", {"-c", "0", "/bin/sh", "-c", "while :; do :; done"}, {}};
    const auto first = busy.start([](const auto &) {});
    const auto second = busy.start([](const auto &) {});
    bool hasEnded = false;
    const auto idle = ChildProgram{"/bin/sleep", {"1000"}, {}}.start([&](const auto &) { hasEnded = true; });
    ASSERT_TRUE(waitUntil(
        [&] { return first->timeWithoutProcessor() > 500ms && second->timeWithoutProcessor() > 500ms; }));
    EXPECT_LT(idle->timeWithoutProcessor(), first->timeWithoutProcessor());
    idle->sendSignal(SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return hasEnded; }));
    EXPECT_EQ(idle->timeWithoutProcessor(), 0ms);
}

TEST(RunningProgram, ASignalReachesItsGroup)
{
    Started program(shell("sleep 3600 & wait"));
    program.running->sendSignal(SIGTERM);
    ASSERT_TRUE(program.waitForEnd());
    ASSERT_TRUE(program.ending->ok());
    EXPECT_EQ((*program.ending)->signal, SIGTERM);
    program.running->sendSignal(SIGTERM); // to nobody
}

TEST(RunningProgram, ASignalThatComesEarlyDoesNotReachTheHandlersOfThisProcess)
{
    // A handler writes to a descriptor that a child has as well.
    int pipe[2];
    ASSERT_EQ(::pipe2(pipe, O_NONBLOCK), 0);
    ASSERT_EQ(::dup2(pipe[1], 99), 99);
    ::signal(SIGUSR1, countSignal);
    for (int i = 0; i < 100; ++i) {
        Started program(shell("exit 0"));
        program.running->sendSignal(SIGUSR1);
        ASSERT_TRUE(program.waitForEnd());
    }
    char byte = 0;
    EXPECT_EQ(::read(pipe[0], &byte, 1), -1);
    EXPECT_EQ(errno, EAGAIN);
    ::close(99);
}

TEST(RunningProgram, TakesItsGroupWithItWhenDestroyed)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    const int reader = ::open(qPrintable(pipe), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    auto program =
        std::make_unique<Started>(shell("sh -c 'echo; while :; do sleep 1; done' > \"$1\" & wait", {pipe}));
    char byte = 0;
    ASSERT_TRUE(waitUntil([&] { return ::read(reader, &byte, 1) == 1; }));
    program->running.reset();
    EXPECT_FALSE(program->ending);
    EXPECT_TRUE(waitUntil([&] { return ::read(reader, &byte, 1) == 0; })); // nobody is left to write
    ::close(reader);
}

TEST(ChildProgram, SharesTheOutputOfThisProcessWhereThatIsWanted)
{
    QTemporaryDir folder;
    const QByteArray path = folder.filePath("shared").toUtf8();
    for (const bool isShared : {false, true}) {
        // In a process of its own, whose output is a file.
        const pid_t child = ::fork();
        if (child == 0) {
            const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            ::dup2(file, STDOUT_FILENO);
            ::dup2(file, STDERR_FILENO);
            ChildProgram program = shell("echo seen; echo wrong >&2");
            program.sharesOutput = isShared;
            bool isOver = false;
            const auto running = program.start([&](const auto &) { isOver = true; });
            ::_exit(waitUntil([&] { return isOver; }) ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), isShared ? "seen\nwrong\n" : "");
    }
}

TEST(ChildProgram, HasTheLimitOfDescriptorsThatWasThereBeforeItWasRaised)
{
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    limit.rlim_cur = 256;
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_EQ(outputOf(shell("ulimit -S -n; ulimit -H -n")).split('\n').first(), "256");
    DescriptorLimit::raise();
    DescriptorLimit::raise(); // what was there before is still what was there before
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    EXPECT_EQ(limit.rlim_cur, limit.rlim_max);
    ASSERT_GT(limit.rlim_max, 256u);
    EXPECT_EQ(outputOf(shell("ulimit -S -n; ulimit -H -n")),
              "256\n" + QByteArray::number(static_cast<quint64>(limit.rlim_max)) + '\n');
}

TEST(ChildProgram, HasTheNiceValueThatWasThereBeforeThisProcessRaisedItsOwn)
{
    // In a process of its own, which begins at a value that anybody may leave upwards or nobody.
    const pid_t child = ::fork();
    if (child == 0) {
        ::setpriority(PRIO_PROCESS, 0, 3);
        ProcessPriority::raiseTo(7); // is no raise
        const bool isKept = ::getpriority(PRIO_PROCESS, 0) == 3;
        ProcessPriority::raiseTo(ProcessPriority::beforeUsers);
        const int raised = ::getpriority(PRIO_PROCESS, 0);
        const bool isRaised = raised == ProcessPriority::beforeUsers || (::geteuid() != 0 && raised == 3);
        ::_exit(isKept && isRaised && outputOf(shell("nice")) == "3\n" ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}
