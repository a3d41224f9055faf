// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ProgramEnvironment.h"
#include "DozelyKit/system/machine/RunningProgram.h"

#include <QObject>
#include <QVariantMap>

#include <chrono>

/// Runs one program at a time and writes one line about it to the log: how it ended and after how long, or
/// why it could not be started.
///
/// The program is a ChildProgram, and gets what one gets. THREADING: the main thread, whose event loop
/// notices the end. Destroying the object kills the program's group.
class CommandRunner : public QObject
{
    Q_OBJECT
public:
    /// How long a program that was asked to end may take before it is killed.
    static constexpr std::chrono::seconds patience{5};

    explicit CommandRunner(QObject *parent = nullptr);
    ~CommandRunner() override;

    /// Has the lines in the log name the schedule; empty for none.
    void setScheduleName(const QString &name);

    /// Starts the program that `parameters` name. One that is wrong, and a program that still runs, leave a
    /// line in the log.
    void run(const QVariantMap &parameters, const dozely::ProgramEnvironment &environment);

    /// True from the start until the program's end, or that it could not be started, is in the log.
    bool isRunning() const;

    /// The exit status of the last program, or 128 and the number of the signal that ended it; -1 while none
    /// has ended.
    int exitStatus() const { return m_exitStatus; }

    /// Why the last program was not started: a clause, one line; empty for one that was.
    QString failure() const { return m_failure; }

    /// Asks the program's group to end (SIGTERM), and kills it (SIGKILL) when the program still runs after
    /// `patience`.
    void stop();

Q_SIGNALS:
    /// The program has ended, or could not be started.
    void finished();

private:
    void reportEnd(const dozely::Result<dozely::ChildProgram::Ending> &ending);

    std::unique_ptr<dozely::RunningProgram> m_program; // null while none runs
    QString m_path;                                    // of the last one
    QString m_label = "Command";
    std::chrono::milliseconds m_startTime{0};
    int m_exitStatus = -1;
    QString m_failure;
    quint64 m_runs = 0; // tells a late kill that its program is gone
};
