// SPDX-License-Identifier: MIT
#include "HostProcess.h"

#include <QDeadlineTimer>

#include <algorithm>

namespace
{
constexpr std::chrono::seconds answerLimit(20); // bounds a failing test only
}

HostProcess::HostProcess(const QString &rootFolder, const QString &processName, const QString &identity)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(PEER_HOST, {rootFolder, processName, identity});
    m_process.waitForStarted();
    m_processId = m_process.processId();
}

HostProcess::~HostProcess()
{
    killHard();
}

void HostProcess::send(const QString &command)
{
    m_process.write(command.toUtf8() + '\n');
    m_process.waitForBytesWritten();
}

QString HostProcess::answer()
{
    const QString line = lineStartingWith("= ");
    return line.isNull() ? QStringLiteral("nothing") : line.mid(2);
}

QString HostProcess::ask(const QString &command)
{
    const auto start = Clock::now();
    send(command);
    const QString result = answer();
    m_elapsed = Clock::now() - start;
    return result;
}

bool HostProcess::hears(const QString &notificationName)
{
    return !lineStartingWith("heard " + notificationName.toUtf8()).isNull();
}

QString HostProcess::nextHeard()
{
    return lineStartingWith("heard ").mid(6);
}

void HostProcess::close()
{
    m_process.closeWriteChannel();
    m_process.waitForFinished();
}

void HostProcess::killHard()
{
    m_process.kill();
    m_process.waitForFinished();
}

QString HostProcess::lineStartingWith(const QByteArray &start)
{
    const QDeadlineTimer deadline(answerLimit);
    for (;;) {
        while (m_process.canReadLine())
            m_lines += m_process.readLine().trimmed();
        const auto line = std::find_if(m_lines.begin(), m_lines.end(),
                                       [&](const QByteArray &text) { return text.startsWith(start); });
        if (line != m_lines.end()) {
            const QString found = QString::fromUtf8(*line);
            m_lines.erase(line);
            return found;
        }
        if (!m_process.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            return {};
    }
}
