// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

/// A program that is run beside this one. It leads a session of its own; standard input and error are
/// /dev/null; no other descriptor, no blocked or ignored signal and no environment variable but the given
/// ones reaches it.
///
/// THREADING: any thread; no event loop is needed.
struct DOZELYKIT_AUTOTEST_EXPORT ChildProgram {
    QString path; ///< Absolute; no shell is involved and nothing is looked for.
    QStringList arguments;
    QByteArrayList environment; ///< Entries NAME=VALUE.
    QString workingFolder = QStringLiteral("/");

    /// How a program ended, and what it wrote to its standard output.
    struct Ending {
        int status = 0; ///< When it ended by itself.
        int signal = 0; ///< When a signal ended it.
        QByteArray output;
    };

    /// Starts the program and forgets it; nobody waits for it. False when it could not be started.
    bool launch() const;

    /// Runs the program to its end. Of its output the first `maximumOutput` bytes are kept. Absent, with
    /// `error` a sentence, when it could not be started, or did not end in time: it and its group are then
    /// killed.
    std::optional<Ending> run(std::chrono::milliseconds limit, qsizetype maximumOutput, QString *error) const;
};
