// SPDX-License-Identifier: MIT
#include "hosts/application/actions/PlugInTrials.h"

#include "hosts/application/actions/PlugInTrial.h"

#include <QProcessEnvironment>

PlugInTrials::PlugInTrials(Start start, std::chrono::milliseconds limit) : m_start(std::move(start))
{
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &PlugInTrials::begin);
    m_limit.setSingleShot(true);
    m_limit.setInterval(limit);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        m_isTooLate = true;
        m_process.kill();
    });
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &PlugInTrials::readLines);
    connect(&m_process, &QProcess::finished, this, [this] {
        end(m_isTooLate ? tr("It does not come to an end while it is loaded.")
                        : tr("It crashes while it is loaded."));
    });
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(tr("It cannot be tried: %1").arg(m_process.errorString()));
    });
}

PlugInTrials::~PlugInTrials()
{
    m_process.disconnect(this);
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

void PlugInTrials::ask(const QString &path)
{
    if (m_waiting.contains(path) || m_given.contains(path))
        return;
    m_waiting += path;
    m_soon.start(0);
}

void PlugInTrials::begin()
{
    if (m_waiting.isEmpty() || m_process.state() != QProcess::NotRunning)
        return; // the end of the one before begins the next one
    m_given = std::exchange(m_waiting, {});
    m_isTooLate = false;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen"); // no window of it is to be seen
    m_process.setProcessEnvironment(environment);
    m_limit.start();
    m_process.start(m_start.program, m_start.arguments + m_given, QIODevice::ReadOnly);
}

void PlugInTrials::readLines()
{
    while (m_process.canReadLine()) {
        const QStringList parts = PlugInTrial::partsOf(QString::fromUtf8(m_process.readLine()).chopped(1));
        if (parts.isEmpty() || !m_given.contains(parts.at(1)))
            continue; // a plug-in's own
        m_limit.start();
        if (parts.at(0) != QLatin1String("begin"))
            settle(parts.at(1), parts.at(0) == QLatin1String("ready") ? QString() : parts.at(2));
    }
}

void PlugInTrials::settle(const QString &path, const QString &why)
{
    m_given.removeOne(path);
    if (why.isEmpty())
        Q_EMIT passed(path);
    else
        Q_EMIT failed(path, why);
}

void PlugInTrials::end(const QString &why)
{
    readLines();
    m_limit.stop();
    // The first that has no answer ended it; the others have not had their turn.
    const QStringList unanswered = m_given;
    if (!unanswered.isEmpty()) {
        m_waiting = unanswered.mid(1) + m_waiting;
        settle(unanswered.first(), why);
    }
    m_given.clear();
    if (!m_waiting.isEmpty())
        m_soon.start(0);
}
