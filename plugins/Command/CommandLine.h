// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// The program to run and its arguments, as the parameters "Program" and "Arguments" give them. No shell is
/// involved: each argument reaches the program as it stands.
struct CommandLine {
    QString program;
    QStringList arguments;

    /// The command line in a plug-in's parameters; absent when there is none, `fault` then holds a sentence
    /// that says which parameter is wrong.
    static std::optional<CommandLine> fromParameters(const QVariantMap &parameters, QString *fault);
};
