// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

/// The program to run and its arguments, as the parameters "Program" and "Arguments" give them. No shell is
/// involved: each argument reaches the program as it stands.
struct CommandLine {
    QString program;
    QStringList arguments;

    /// The command line in a plug-in's parameters, or which parameter is wrong.
    static dozely::Result<CommandLine> fromParameters(const QVariantMap &parameters);
};
