// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

/// Who this process is.
///
/// THREADING: setProcessName belongs at the head of main, before other threads run; the rest is free.
class DOZELYKIT_EXPORT NSProcessInfo
{
public:
    /// The base name of the program as started, unless setProcessName gave another one.
    static QString processName();
    /// Names the process; an empty name goes back to the base name of the program.
    static void setProcessName(const QString &name);

    static qint32 processIdentifier();
    static qint32 parentProcessIdentifier();
    static quint32 effectiveUserID();
};
