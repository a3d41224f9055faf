// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/ChildStart_p.h"

#include "DozelyKit/system/machine/linux/DescriptorLimit_p.h"
#include "DozelyKit/system/machine/linux/ProcessPriority_p.h"

#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sched.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// What runs in another process on memory of this one leaves no marks of a sanitizer there.
#define NOT_INSTRUMENTED __attribute__((no_sanitize_address))

namespace dozely
{

namespace
{
void fill(std::vector<char *> &vector, QByteArrayList &texts)
{
    for (QByteArray &text : texts)
        vector.push_back(text.data());
    vector.push_back(nullptr);
}

/// While it exists no signal reaches the thread: one that reached a child before its handlers are the usual
/// ones would be taken for ours.
class NoSignals
{
public:
    NoSignals()
    {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &m_former);
    }
    ~NoSignals()
    {
        const int code = errno;
        ::pthread_sigmask(SIG_SETMASK, &m_former, nullptr);
        errno = code;
    }
    NoSignals(const NoSignals &) = delete;
    NoSignals &operator=(const NoSignals &) = delete;

private:
    sigset_t m_former{};
};

/// Enough for what is called between the start of a process and its becoming a program.
constexpr size_t stackSize = 64UL * 1024;

/// Starts a process in this one's memory, on a stack of its own, and waits until it became a program or
/// ended. A copy of the memory, which fork makes, costs a large process more than all the rest.
pid_t startInThisMemory(int (*function)(void *), void *argument, std::byte *stack)
{
    return ::clone(function, stack + stackSize, CLONE_VM | CLONE_VFORK | SIGCHLD, argument);
}
} // namespace

ChildStart::ChildStart(const ChildProgram &program)
    : m_path(QFile::encodeName(program.path)),
      m_folder(QFile::encodeName(program.workingFolder)),
      m_needsFolder(program.needsFolder),
      m_input(program.input),
      m_sharesOutput(program.sharesOutput),
      m_environment(program.environment)
{
    m_arguments += m_path;
    for (const QString &argument : program.arguments)
        m_arguments += argument.toUtf8();
    fill(m_argumentVector, m_arguments);
    fill(m_environmentVector, m_environment);
}

/// Becomes the program; returns when that fails.
NOT_INSTRUMENTED ChildStart::Failure ChildStart::become(int output) const
{
    ::setsid();
    ::umask(022);
    for (int number = 1; number < NSIG; ++number)
        ::signal(number, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    const int null = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    if (null < 0 || ::dup2(m_input < 0 ? null : m_input, STDIN_FILENO) < 0)
        return {"dup2", errno};
    const int unread = m_sharesOutput ? STDOUT_FILENO : null;
    const int unreadErrors = m_sharesOutput ? STDERR_FILENO : null;
    if (::dup2(output < 0 ? unread : output, STDOUT_FILENO) < 0 || ::dup2(unreadErrors, STDERR_FILENO) < 0)
        return {"dup2", errno};
    // Not closed at once: one of them tells the parent when the start fails.
    if (::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC) != 0)
        return {"close_range", errno};
    DescriptorLimit::giveBackInChild();
    ProcessPriority::giveBackInChild();
    if (::chdir(m_folder.constData()) != 0 && (m_needsFolder || ::chdir("/") != 0))
        return {"chdir", errno};
    ::execve(m_path.constData(), m_argumentVector.data(), m_environmentVector.data());
    return {"execve", errno};
}

Result<pid_t> ChildStart::fork(int output)
{
    auto report = Pipe::make();
    if (!report)
        return report.error();
    m_report = *std::move(report);
    const NoSignals noSignals;
    const pid_t child = ::fork();
    if (child == 0) {
        const Failure failure = become(output);
        [[maybe_unused]] const ssize_t written = ::write(m_report.writeEnd.get(), &failure, sizeof failure);
        ::_exit(127);
    }
    if (child < 0)
        return failure("fork");
    m_report.writeEnd.reset();
    return child;
}

/// What the processes of an orphan's start share.
struct ChildStart::Orphan {
    const ChildStart &start;
    std::vector<std::byte> stacks = std::vector<std::byte>(2 * stackSize);
    Failure failure{}; ///< No step when the program runs.
};

/// The process between: its end leaves the program without a parent to wait for it.
NOT_INSTRUMENTED int ChildStart::beBetween(void *shared)
{
    auto *orphan = static_cast<Orphan *>(shared);
    if (startInThisMemory(beOrphan, shared, orphan->stacks.data() + stackSize) < 0)
        orphan->failure = {"clone", errno};
    return 0;
}

NOT_INSTRUMENTED int ChildStart::beOrphan(void *shared)
{
    auto *orphan = static_cast<Orphan *>(shared);
    orphan->failure = orphan->start.become(-1);
    return 127;
}

Result<void> ChildStart::launchOrphan() const
{
    Orphan orphan{*this};
    const NoSignals noSignals;
    const pid_t between = startInThisMemory(beBetween, &orphan, orphan.stacks.data());
    if (between < 0)
        return failure("clone");
    waitFor(between);
    if (orphan.failure.code == 0)
        return {};
    errno = orphan.failure.code;
    return failure(orphan.failure.step);
}

Result<void> ChildStart::outcome() const
{
    Failure reported{};
    ssize_t size = 0;
    do {
        size = ::read(m_report.readEnd.get(), &reported, sizeof reported);
    } while (size < 0 && errno == EINTR);
    if (size != sizeof reported)
        return {};
    errno = reported.code;
    return failure(reported.step);
}

Error ChildStart::failure(const char *step)
{
    return {qt_error_string(errno), step};
}

ChildProgram::Ending ChildStart::waitFor(pid_t child)
{
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    ChildProgram::Ending ending;
    if (WIFSIGNALED(status))
        ending.signal = WTERMSIG(status);
    else
        ending.status = WEXITSTATUS(status);
    return ending;
}

} // namespace dozely
