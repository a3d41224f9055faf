// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// Which script to run, as the parameters "Script" (its text) and "Script File" (an absolute path) give it:
/// one of them.
struct ScriptOrder {
    QStringList arguments; ///< For osascript.

    /// Absent when the parameters name no script, `fault` then holds what is wrong.
    static std::optional<ScriptOrder> fromParameters(const QVariantMap &parameters, QString *fault);
};
