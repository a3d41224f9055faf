// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>

namespace dozely
{

class RunningProgram;

/// A program that is run beside this one. It leads a session of its own; its standard streams are /dev/null,
/// but for an input that is given, an output that is read, and an output that is shared; no other descriptor,
/// no blocked or ignored signal and no environment variable but the given ones reaches it. Its limit of open
/// descriptors and its nice value are those that this process had before DescriptorLimit and ProcessPriority
/// raised its own.
///
/// THREADING: any thread, without an event loop, but for `start`.
struct DOZELYKIT_EXPORT ChildProgram {
    QString path; ///< Absolute; no shell is involved and nothing is looked for.
    QStringList arguments;
    QByteArrayList environment; ///< Entries NAME=VALUE.
    QString workingFolder = QStringLiteral("/");
    bool needsFolder = false; ///< Not started where its folder is not to be had; else it works in "/" then.
    int input = -1;           ///< An open descriptor that becomes its standard input; -1 for /dev/null.
    /// Its standard output and error are this process's, unless `run` reads the output.
    bool sharesOutput = false;

    /// How a program ended, and what it wrote to its standard output.
    struct Ending {
        int status = 0; ///< When it ended by itself.
        int signal = 0; ///< When a signal ended it.
        QByteArray output;
    };
    /// Is told how a program ended, or why it could not be started: the machine's reason, `name` being the
    /// step that failed ("execve", "chdir", ...).
    using Ended = std::function<void(const Result<Ending> &)>;

    /// Starts the program and forgets it; nobody waits for it. False when it could not be started.
    bool launch() const;

    /// Runs the program to its end. Of its output the first `maximumOutput` bytes are kept. An error when it
    /// could not be started, or did not end in time: it and its group are then killed.
    Result<Ending> run(std::chrono::milliseconds limit, qsizetype maximumOutput) const;

    /// Starts the program, whose output is not read, without waiting for anything. This thread's event loop
    /// tells `ended`, once, and not after the object was destroyed; `ended` may destroy it. Never null.
    std::unique_ptr<RunningProgram> start(Ended ended) const;
};

} // namespace dozely
