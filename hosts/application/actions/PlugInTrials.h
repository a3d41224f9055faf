// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTimer>

#include <chrono>

/// Has configuration sides tried in a process of their own (PlugInTrial) before this one loads them: one that
/// hangs or crashes takes no window with it.
///
/// THREADING: the main thread. BLOCKING: never, but for ending the process at destruction.
class PlugInTrials : public QObject
{
    Q_OBJECT
public:
    /// The program, and its arguments before the paths.
    struct Start {
        QString program;
        QStringList arguments;
    };
    static constexpr std::chrono::seconds usualLimit{5};

    /// A side that takes longer than `limit` hangs.
    explicit PlugInTrials(Start start, std::chrono::milliseconds limit = usualLimit);
    ~PlugInTrials() override;

    /// Has the bundle tried soon; together with others that are asked for in the same turn of the event loop.
    void ask(const QString &path);

Q_SIGNALS:
    /// A bundle may be loaded, or why not: a sentence.
    /// @{
    void passed(const QString &path);
    void failed(const QString &path, const QString &why);
    /// @}

private:
    void begin();
    void readLines();
    void end(const QString &why);
    void settle(const QString &path, const QString &why);

    const Start m_start;
    QStringList m_waiting; // not told to a process yet
    QStringList m_given;   // to the one that runs, not answered
    QProcess m_process;
    QTimer m_soon;
    QTimer m_limit;
    bool m_isTooLate = false;
};
