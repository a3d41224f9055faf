// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandRunner.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "plugins/Command/CommandLine.h"

#include <csignal>
#include <cstring>

using namespace dozely;

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
} // namespace

CommandRunner::CommandRunner(QObject *parent) : QObject(parent) {}

CommandRunner::~CommandRunner() = default;

void CommandRunner::setScheduleName(const QString &name)
{
    m_label = name.isEmpty() ? "Command" : QString("Command of schedule \"%1\"").arg(logLabel(name));
}

void CommandRunner::run(const QVariantMap &parameters, const ProgramEnvironment &environment)
{
    const auto commandLine = CommandLine::fromParameters(parameters);
    m_failure.clear();
    if (!commandLine) {
        m_failure = commandLine.error().text;
        ZDRLog("%@: nothing was run, %@.", m_label, commandLine.error().text);
        return;
    }
    if (isRunning()) {
        ZDRLog("%@: %@ was not started, since %@ still runs.", m_label, onOneLine(commandLine->program),
               onOneLine(m_path));
        return;
    }
    ++m_runs;
    m_exitStatus = -1;
    m_startTime = Port<Clock>::current()->steadyTime();
    m_path = commandLine->program;
    ChildProgram program{commandLine->program, commandLine->arguments, environment.variables,
                         environment.workingFolder, true};
    program.sharesOutput = true; // what it prints is what its action prints
    m_program = program.start([this](const Result<ChildProgram::Ending> &ending) { reportEnd(ending); });
}

bool CommandRunner::isRunning() const
{
    return m_program != nullptr;
}

void CommandRunner::stop()
{
    if (!isRunning())
        return;
    m_program->sendSignal(SIGTERM);
    Port<Clock>::current()->callAfter(patience, this, [this, run = m_runs] {
        if (run == m_runs && isRunning())
            m_program->sendSignal(SIGKILL);
    });
}

void CommandRunner::reportEnd(const Result<ChildProgram::Ending> &ending)
{
    const QString duration = inSeconds(Port<Clock>::current()->steadyTime() - m_startTime);
    const QString path = onOneLine(m_path);
    if (!ending) {
        const QString reason = QString("%1: %2").arg(QString(ending.error().name), ending.error().text);
        m_failure = QString("%1 could not be started: %2").arg(path, onOneLine(ending.error().text));
        ZDRLog("%@: %@ could not be started (%@).", m_label, path, onOneLine(reason));
    } else if (ending->signal != 0) {
        ZDRLog("%@: %@ was ended by signal %d (%@) after %@ s.", m_label, path, ending->signal,
               QString::fromLocal8Bit(::strsignal(ending->signal)), duration);
    } else {
        ZDRLog("%@: %@ ended with status %d after %@ s.", m_label, path, ending->status, duration);
    }
    if (ending)
        m_exitStatus = ending->signal != 0 ? 128 + ending->signal : ending->status;
    m_program.reset();
    Q_EMIT finished();
}
