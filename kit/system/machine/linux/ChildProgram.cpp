// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ChildProgram_p.h"

#include "DozelyKit/core/foundation/linux/Descriptor_p.h"

#include <QDeadlineTimer>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <linux/close_range.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern "C" {
#include <sys/pidfd.h> // says nothing about C++ in glibc 2.36
}

namespace
{
/// A pipe whose ends no other program gets.
struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
    bool open()
    {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            return false;
        readEnd.reset(ends[0]);
        writeEnd.reset(ends[1]);
        return true;
    }
};

/// All that the child needs between fork and exec, where nothing may allocate or lock.
class Prepared
{
public:
    explicit Prepared(const ChildProgram &program)
        : m_path(QFile::encodeName(program.path)),
          m_folder(QFile::encodeName(program.workingFolder)),
          m_environment(program.environment)
    {
        m_arguments += m_path;
        for (const QString &argument : program.arguments)
            m_arguments += argument.toUtf8();
        fill(m_argumentVector, m_arguments);
        fill(m_environmentVector, m_environment);
    }

    /// Becomes the program; an errno value when that fails. `output` is its standard output, -1 for
    /// /dev/null.
    int become(int output) const
    {
        ::setsid();
        ::umask(022);
        for (int number = 1; number < NSIG; ++number)
            ::signal(number, SIG_DFL);
        sigset_t none;
        ::sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        const int null = ::open("/dev/null", O_RDWR | O_CLOEXEC);
        if (null < 0 || ::dup2(output < 0 ? null : output, STDOUT_FILENO) < 0 ||
            ::dup2(null, STDIN_FILENO) < 0 || ::dup2(null, STDERR_FILENO) < 0)
            return errno;
        // Not closed at once: one of them tells the parent when the start fails.
        if (::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC) != 0)
            return errno;
        if (::chdir(m_folder.constData()) != 0 && ::chdir("/") != 0)
            return errno;
        ::execve(m_path.constData(), m_argumentVector.data(), m_environmentVector.data());
        return errno;
    }

private:
    static void fill(std::vector<char *> &vector, QByteArrayList &texts)
    {
        for (QByteArray &text : texts)
            vector.push_back(text.data());
        vector.push_back(nullptr);
    }

    QByteArray m_path;
    QByteArray m_folder;
    QByteArrayList m_arguments;
    QByteArrayList m_environment;
    std::vector<char *> m_argumentVector;
    std::vector<char *> m_environmentVector;
};

[[noreturn]] void failWith(int code, int reportTo)
{
    [[maybe_unused]] const ssize_t written = ::write(reportTo, &code, sizeof code);
    ::_exit(127);
}

/// The errno value that a child reported; 0 once its program runs.
int reported(const Descriptor &readEnd)
{
    int code = 0;
    ssize_t size = 0;
    do {
        size = ::read(readEnd.get(), &code, sizeof code);
    } while (size < 0 && errno == EINTR);
    return size == sizeof code ? code : 0;
}

int waitFor(pid_t child)
{
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

/// Takes what is there; false at the end of the stream.
bool takeOutput(int stream, QByteArray &output, qsizetype maximum)
{
    char buffer[4096];
    const ssize_t size = ::read(stream, buffer, sizeof buffer);
    if (size <= 0)
        return size < 0 && (errno == EINTR || errno == EAGAIN);
    output.append(buffer, std::min<qsizetype>(size, maximum - output.size()));
    return true;
}

/// Waits until the child has ended, taking its output meanwhile. False when the time is over.
bool followToEnd(int child, int stream, const QDeadlineTimer &deadline, QByteArray &output, qsizetype maximum)
{
    pollfd watched[] = {{child, POLLIN, 0}, {stream, POLLIN, 0}};
    while (watched[0].revents == 0) {
        const qint64 left = deadline.remainingTime();
        if (left <= 0)
            return false;
        if (::poll(watched, 2, static_cast<int>(std::min<qint64>(left, 60'000))) < 0 && errno != EINTR)
            return false;
        if (watched[1].revents != 0 && !takeOutput(stream, output, maximum))
            watched[1].fd = -1;
    }
    // What it wrote last; not what a child of its own may still write.
    while (watched[1].fd >= 0) {
        watched[1].revents = 0;
        if (output.size() >= maximum || ::poll(watched + 1, 1, 0) <= 0 ||
            !takeOutput(stream, output, maximum))
            break;
    }
    return true;
}
} // namespace

bool ChildProgram::launch() const
{
    const Prepared prepared(*this);
    Pipe report;
    if (!report.open())
        return false;
    const pid_t child = ::fork();
    if (child == 0) {
        // A child of a child that has ended belongs to nobody here, and leaves nothing to be waited for.
        const pid_t grandchild = ::fork();
        if (grandchild == 0)
            failWith(prepared.become(-1), report.writeEnd.get());
        if (grandchild < 0)
            failWith(errno, report.writeEnd.get());
        ::_exit(0);
    }
    if (child < 0)
        return false;
    report.writeEnd.reset();
    const int code = reported(report.readEnd);
    waitFor(child);
    return code == 0;
}

std::optional<ChildProgram::Ending> ChildProgram::run(std::chrono::milliseconds limit,
                                                      qsizetype maximumOutput, QString *error) const
{
    const QDeadlineTimer deadline(limit);
    const auto fail = [&](const QString &reason) {
        if (error)
            *error = QString("\"%1\" %2.").arg(path, reason);
        return std::nullopt;
    };
    const Prepared prepared(*this);
    Pipe report;
    Pipe output;
    if (!report.open() || !output.open())
        return fail("could not be started: " + qt_error_string(errno));
    const pid_t child = ::fork();
    if (child < 0)
        return fail("could not be started: " + qt_error_string(errno));
    if (child == 0)
        failWith(prepared.become(output.writeEnd.get()), report.writeEnd.get());
    report.writeEnd.reset();
    output.writeEnd.reset();
    if (const int code = reported(report.readEnd)) {
        waitFor(child);
        return fail("could not be started: " + qt_error_string(code));
    }
    const Descriptor process(::pidfd_open(child, 0));
    Ending ending;
    const bool ended = process.get() >= 0 && followToEnd(process.get(), output.readEnd.get(), deadline,
                                                         ending.output, maximumOutput);
    if (!ended)
        ::kill(-child, SIGKILL);
    const int status = waitFor(child);
    if (!ended)
        return fail("did not end in time");
    if (WIFSIGNALED(status))
        ending.signal = WTERMSIG(status);
    else
        ending.status = WEXITSTATUS(status);
    return ending;
}
