// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/ChildStart_p.h"

#include "DozelyKit/system/machine/linux/DescriptorLimit_p.h"
#include "DozelyKit/system/machine/linux/ProcessPriority_p.h"

#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

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
ChildStart::Failure ChildStart::become(int output) const
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

Result<pid_t> ChildStart::fork(int output, Kinship kinship)
{
    auto report = Pipe::make();
    if (!report)
        return report.error();
    m_report = *std::move(report);
    // A signal that reached the child before its handlers are the usual ones would be taken for ours.
    sigset_t all;
    sigset_t former;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &former);
    const pid_t child = ::fork();
    if (child == 0) {
        const pid_t grandchild = kinship == Kinship::Orphan ? ::fork() : 0;
        if (grandchild > 0)
            ::_exit(0);
        const Failure failure = grandchild < 0 ? Failure{"fork", errno} : become(output);
        [[maybe_unused]] const ssize_t written = ::write(m_report.writeEnd.get(), &failure, sizeof failure);
        ::_exit(127);
    }
    const int code = errno;
    ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
    errno = code;
    if (child < 0)
        return failure("fork");
    m_report.writeEnd.reset();
    return child;
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
