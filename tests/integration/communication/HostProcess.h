// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>

#include <chrono>

/// A running peer_host. Killed at the end of its life.
class HostProcess
{
public:
    using Clock = std::chrono::steady_clock;

    /// Who it is; see peer_host.cpp.
    static constexpr const char *root = "root";
    static constexpr const char *asStarted = "as-started";

    HostProcess(const QString &rootFolder, const QString &processName, const QString &identity);
    ~HostProcess();
    HostProcess(const HostProcess &) = delete;
    HostProcess &operator=(const HostProcess &) = delete;

    /// Sends the command without waiting for its answer.
    void send(const QString &command);
    /// The answer to the command sent before; "nothing" when the process died or took more than 20 s.
    QString answer();
    QString ask(const QString &command);

    /// How long the latest ask took.
    Clock::duration elapsed() const { return m_elapsed; }

    /// Waits until the host has said that it heard the notification.
    bool hears(const QString &notificationName);

    /// What the host says next that it heard; empty when it says nothing for 20 s.
    QString nextHeard();

    /// As it was while it ran, too.
    qint64 processId() const { return m_processId; }

    /// Lets it end with its standard input, and waits until it is gone.
    void close();

    /// kill -9, and waits until it is gone.
    void killHard();

private:
    QString lineStartingWith(const QByteArray &start);

    QProcess m_process;
    qint64 m_processId = 0;
    QList<QByteArray> m_lines;
    Clock::duration m_elapsed{0};
};
