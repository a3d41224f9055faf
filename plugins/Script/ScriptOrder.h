// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QStringList>
#include <QVariantMap>

/// Which script to run, as the parameters "Script" (its text) and "Script File" (an absolute path) give it:
/// one of them.
struct ScriptOrder {
    QStringList arguments; ///< For osascript.

    /// Fails when the parameters name no script, with a clause for the log.
    static dozely::Result<ScriptOrder> fromParameters(const QVariantMap &parameters);
};
