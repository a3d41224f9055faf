// SPDX-License-Identifier: MIT
#include "hosts/performer/Supervisor.h"

#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/common/performing/OrderStream.h"
#include "hosts/performer/Descendants.h"
#include "hosts/performer/OwnUnit.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace dozely;

using std::chrono::steady_clock;

namespace
{
/// Between two looks at what was killed.
constexpr std::chrono::milliseconds killPause(100);

/// No more is taken of an action's output, 8 MiB a second: most of it is not kept, and one that writes
/// without end would have a processor for itself and another for its readers. It waits at the full pipe
/// instead.
/// @{
constexpr qsizetype mostOutputAtOnce = 64 << 10;
constexpr std::chrono::microseconds pauseAfterIt(8000);
/// @}

/// What a pipe has in it.
qsizetype sizeWithin(const Descriptor &pipe)
{
    int size = 0;
    return pipe.isValid() && ::ioctl(pipe.get(), FIONREAD, &size) == 0 ? size : 0;
}

/// What is there of a descriptor that does not block; false at its end.
bool readInto(QByteArray &bytes, int descriptor)
{
    char buffer[16 << 10];
    const ssize_t size = ::read(descriptor, buffer, sizeof buffer);
    if (size <= 0)
        return size < 0 && (errno == EAGAIN || errno == EINTR);
    bytes.append(buffer, size);
    return true;
}

QString endOf(int waitStatus)
{
    if (WIFSIGNALED(waitStatus))
        return QString("its process was ended by signal %1 (%2)")
            .arg(WTERMSIG(waitStatus))
            .arg(QString::fromLocal8Bit(::strsignal(WTERMSIG(waitStatus))));
    return QString("its process ended by itself with status %1").arg(WEXITSTATUS(waitStatus));
}
} // namespace

Supervisor::Supervisor(PerformanceOrder order, Ends ends, Descriptor signalDescriptor, pid_t actor,
                       bool isInUnit)
    : m_order(std::move(order)),
      m_ends(std::move(ends)),
      m_signals(std::move(signalDescriptor)),
      m_actor(actor),
      m_isInUnit(isInUnit)
{
}

int Supervisor::run()
{
    while (!isOver())
        wait();
    hearReports();
    takeOutput(sizeWithin(m_ends.output)); // what the action left behind may write without end
    QByteArray &kept = m_outcome.output;
    kept = kept.last(std::min(kept.size(), PerformanceOutcome::mostOutput));
    if (m_isCalledOff)
        return 1;
    if (m_outcome.failure.isEmpty() && !m_isDone) {
        m_outcome.failure = endOf(*m_waitStatus);
        m_outcome.hasDied = !WIFSIGNALED(*m_waitStatus) || WTERMSIG(*m_waitStatus) != SIGKILL;
    }
    if (!m_isStopping && !hasSucceeded() && m_isInUnit && OwnUnit::hasRunOutOfMemory())
        m_outcome.failure = "it took more memory than it may";
    m_outcome.ended = QDateTime::currentDateTimeUtc();
    const bool isWritten = writeDown();
    // At once: a service manager that has a copy of this end closes it later.
    ::shutdown(m_ends.host.get(), SHUT_RDWR);
    return isWritten && hasSucceeded() ? 0 : 1;
}

bool Supervisor::hasSucceeded() const
{
    return m_outcome.failure.isEmpty() && m_outcome.exitStatus.value_or(0) == 0;
}

/// What was asked to end is over once nothing of it is left; else what the action left behind may stay.
bool Supervisor::isOver() const
{
    return m_waitStatus && (!m_isStopping || Descendants::of(::getpid()).isEmpty());
}

void Supervisor::wait()
{
    const Moment now = steady_clock::now();
    const bool hearsOutput = now >= m_outputAgain;
    std::array<pollfd, 4> watched{{{m_signals.get(), POLLIN, 0},
                                   {m_mayStillGo ? m_ends.host.get() : -1, POLLIN, 0},
                                   {m_ends.report.get(), POLLIN, 0},
                                   {hearsOutput ? m_ends.output.get() : -1, POLLIN, 0}}};
    Moment until = m_deadline.value_or(Moment::max());
    if (!hearsOutput)
        until = std::min(until, m_outputAgain);
    int limit = -1;
    if (until != Moment::max()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - now);
        limit = static_cast<int>(std::clamp<qint64>(left.count(), 0, 3'600'000));
    }
    if (::poll(watched.data(), watched.size(), limit) < 0)
        return;
    if (watched[1].revents != 0)
        hearHost();
    if (watched[2].revents != 0)
        hearReports();
    if (watched[3].revents != 0)
        takeOutput(mostOutputAtOnce);
    if (watched[0].revents != 0)
        hearSignals();
    if (m_deadline && steady_clock::now() >= *m_deadline) {
        if (m_isStopping)
            continueStopping();
        else
            stop(QString("it took longer than %1 s").arg(m_order.limits.longest.count()));
    }
}

void Supervisor::hearHost()
{
    char byte = 0;
    const ssize_t size = ::read(m_ends.host.get(), &byte, 1);
    if (size < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    m_mayStillGo = false; // from now on the host may come and go; it sees the end of this process
    if (size == 1) {
        [[maybe_unused]] const ssize_t written = ::write(m_ends.go.get(), &byte, 1);
        m_ends.go.reset();
        if (m_order.limits.longest.count() > 0)
            m_deadline = steady_clock::now() + m_order.limits.longest;
    } else {
        m_isCalledOff = true;
        m_isStopping = true;
        continueStopping();
    }
}

void Supervisor::hearSignals()
{
    signalfd_siginfo information{};
    while (::read(m_signals.get(), &information, sizeof information) == sizeof information) {
        if (information.ssi_signo != SIGCHLD)
            stop("it was asked to end");
    }
    reap();
}

/// Those that lost their parents are this process's, too.
void Supervisor::reap()
{
    int status = 0;
    for (pid_t child = 0; (child = ::waitpid(-1, &status, WNOHANG)) > 0;) {
        if (child == m_actor)
            m_waitStatus = status;
    }
}

void Supervisor::hearReports()
{
    while (m_ends.report.isValid()) {
        const qsizetype before = m_reports.size();
        if (!readInto(m_reports, m_ends.report.get()))
            m_ends.report.reset();
        else if (m_reports.size() == before)
            break;
    }
    Report::take(m_reports, [this](Report::Kind kind, const QString &text) {
        bool isNumber = false;
        const qint64 status = text.toLongLong(&isNumber);
        switch (kind) {
        case Report::Kind::Begun:
            m_outcome.hasBegun = true;
            OrderStream::tellBegun(m_ends.host.get());
            break;
        case Report::Kind::Refused:
        case Report::Kind::Raised:
            m_outcome.failure = text;
            m_outcome.hasRaised = kind == Report::Kind::Raised;
            break;
        case Report::Kind::Delivered:
            m_outcome.delivery = static_cast<PerformanceOutcome::Delivery>(status);
            break;
        case Report::Kind::Done:
            m_isDone = true;
            if (isNumber)
                m_outcome.exitStatus = status;
            break;
        }
    });
}

/// Passed on to whoever reads this process's own output, the machine's journal for one.
void Supervisor::takeOutput(qsizetype most)
{
    QByteArray &kept = m_outcome.output;
    qsizetype taken = 0;
    while (m_ends.output.isValid() && taken < most) {
        QByteArray piece;
        if (!readInto(piece, m_ends.output.get()))
            m_ends.output.reset();
        if (piece.isEmpty())
            break;
        [[maybe_unused]] const ssize_t written =
            ::write(STDOUT_FILENO, piece.constData(), static_cast<size_t>(piece.size()));
        taken += piece.size();
        kept += piece;
        if (kept.size() > 2 * PerformanceOutcome::mostOutput)
            kept = kept.last(PerformanceOutcome::mostOutput);
    }
    m_outputAgain = steady_clock::now() + pauseAfterIt * taken / mostOutputAtOnce;
}

void Supervisor::stop(const QString &why)
{
    if (m_isStopping)
        return;
    m_isStopping = true;
    m_outcome.failure = why;
    m_deadline = steady_clock::now() + m_order.limits.timeToEnd;
    Descendants::signal(::getpid(), SIGTERM);
}

/// More may have begun while the others were killed.
void Supervisor::continueStopping()
{
    Descendants::signal(::getpid(), SIGKILL);
    m_deadline = steady_clock::now() + killPause;
}

/// Whole or not at all. The disk need not have it yet: what a machine lost that went down was cut short.
bool Supervisor::writeDown()
{
    const QString path = PerformanceOutcome::pathBeside(m_order.place);
    QFile file(PerformanceOutcome::unfinishedPathBeside(m_order.place));
    const QByteArray data = m_outcome.toData();
    if (file.open(QIODevice::WriteOnly) && file.write(data) == data.size() && file.flush() &&
        std::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(path).constData()) == 0)
        return true;
    ZDRLog("What became of schedule \"%@\" could not be written down: %@", m_order.schedule,
           qt_error_string(errno));
    file.remove();
    return false;
}
