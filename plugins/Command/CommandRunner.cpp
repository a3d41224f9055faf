// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandRunner.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/LogLabel.h"
#include "DozelyKit/core/foundation/Platform.h"
#include "DozelyKit/core/foundation/ZDRLog.h"
#include "plugins/Command/CommandLine.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/stat.h>
#include <unistd.h>

using std::chrono::milliseconds;

namespace
{
/// A path fit to stand within one log line: whoever names a program must not be able to forge lines.
QString onOneLine(const QString &text)
{
    return logLabel(text, wholeText, LineBreaks::Escapes);
}

QString inSeconds(milliseconds duration)
{
    return QString::number(static_cast<double>(duration.count()) / 1000, 'f', 3);
}

/// Marks every descriptor beyond the standard streams to be closed when the program starts. Closing them at
/// once would take away the one through which QProcess tells that the start failed.
void closeDescriptorsAtStart()
{
    constexpr unsigned firstExtra = STDERR_FILENO + 1;
    if (::close_range(firstExtra, ~0U, CLOSE_RANGE_CLOEXEC) == 0)
        return;
    const long limit = ::sysconf(_SC_OPEN_MAX);
    for (int descriptor = firstExtra; descriptor < limit; ++descriptor)
        ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

/// Runs in the child between fork and exec: nothing here may allocate or lock.
void prepareChild()
{
    ::setsid();
    ::umask(022);
    for (int number = 1; number < NSIG; ++number)
        ::signal(number, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    closeDescriptorsAtStart();
}
} // namespace

CommandRunner::CommandRunner(QObject *parent) : QObject(parent)
{
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setChildProcessModifier(prepareChild);
    connect(&m_process, &QProcess::finished, this, &CommandRunner::reportEnd);
    connect(&m_process, &QProcess::errorOccurred, this, &CommandRunner::reportError);
}

CommandRunner::~CommandRunner()
{
    m_process.disconnect(this);
    if (!isRunning())
        return;
    signalGroup(SIGKILL);
    m_process.waitForFinished();
}

void CommandRunner::run(const QVariantMap &parameters, const CommandEnvironment &environment)
{
    QString fault;
    const auto commandLine = CommandLine::fromParameters(parameters, &fault);
    if (!commandLine) {
        ZDRLog("Command: nothing was run, %@.", fault);
        return;
    }
    if (isRunning()) {
        ZDRLog("Command: %@ was not started, since %@ still runs.", onOneLine(commandLine->program),
               onOneLine(m_process.program()));
        return;
    }
    ++m_runs;
    m_startTime = Platform::current().clock->steadyTime();
    m_process.setProcessEnvironment(environment.variables);
    m_process.setWorkingDirectory(environment.workingDirectory);
    m_process.start(commandLine->program, commandLine->arguments, QIODevice::NotOpen);
}

bool CommandRunner::isRunning() const
{
    return m_process.state() != QProcess::NotRunning;
}

void CommandRunner::stop()
{
    if (!isRunning())
        return;
    signalGroup(SIGTERM);
    Platform::current().clock->callAfter(patience, this, [this, run = m_runs] {
        if (run == m_runs && isRunning())
            signalGroup(SIGKILL);
    });
}

void CommandRunner::signalGroup(int signal) const
{
    const auto process = static_cast<pid_t>(m_process.processId());
    if (process <= 0)
        return;
    // A child that has not come as far as its own group yet is reached by its own id.
    if (::kill(-process, signal) != 0)
        ::kill(process, signal);
}

void CommandRunner::reportEnd(int code, QProcess::ExitStatus status)
{
    const QString duration = inSeconds(Platform::current().clock->steadyTime() - m_startTime);
    const QString program = onOneLine(m_process.program());
    if (status == QProcess::NormalExit) {
        ZDRLog("Command: %@ ended with status %d after %@ s.", program, code, duration);
    } else {
        ZDRLog("Command: %@ was ended by signal %d (%@) after %@ s.", program, code,
               QString::fromLocal8Bit(::strsignal(code)), duration);
    }
    Q_EMIT finished();
}

void CommandRunner::reportError(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart)
        return; // a crash is reported as an end
    ZDRLog("Command: %@ could not be started (%@).", onOneLine(m_process.program()),
           onOneLine(m_process.errorString()));
    Q_EMIT finished();
}
