// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ChildProgram.h"

#include "DozelyKit/system/machine/RunningProgram.h"
#include "DozelyKit/system/machine/linux/ChildStart_p.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <unistd.h>

extern "C" {
#include <sys/pidfd.h> // says nothing about C++ in glibc 2.36
}

namespace dozely
{

namespace
{
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
    return ChildStart(*this).launchOrphan().ok();
}

Result<ChildProgram::Ending> ChildProgram::run(std::chrono::milliseconds limit, qsizetype maximumOutput) const
{
    const QDeadlineTimer deadline(limit);
    const auto notStarted = [this](const Error &reason) {
        return Error{QString("\"%1\" could not be started: %2").arg(path, reason.text), reason.name};
    };
    ChildStart start(*this);
    auto output = Pipe::make();
    if (!output)
        return notStarted(output.error());
    const auto child = start.fork(output->writeEnd.get());
    if (!child)
        return notStarted(child.error());
    output->writeEnd.reset();
    if (const auto outcome = start.outcome(); !outcome) {
        ChildStart::waitFor(*child);
        return notStarted(outcome.error());
    }
    const Descriptor process(::pidfd_open(*child, 0));
    QByteArray written;
    const bool ended = process.isValid() &&
                       followToEnd(process.get(), output->readEnd.get(), deadline, written, maximumOutput);
    if (!ended)
        ::kill(-*child, SIGKILL);
    Ending ending = ChildStart::waitFor(*child);
    if (!ended)
        return Error{QString("\"%1\" did not end in time").arg(path)};
    ending.output = written;
    return ending;
}

std::unique_ptr<RunningProgram> ChildProgram::start(Ended ended) const
{
    return std::unique_ptr<RunningProgram>(new RunningProgram(*this, std::move(ended)));
}

} // namespace dozely
