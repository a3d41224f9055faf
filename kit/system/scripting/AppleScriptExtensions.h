// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>
#include <QVariant>

/// Running scripts. Nothing is returned: results and failures are lines in the log.
///
/// THREADING: the calling thread. docs/scripts.md describes the language and what scripts may call.
namespace zandorSoftwaresExtensions
{
/// Starts "/usr/bin/osascript", below the root folder, with "-e" and the script's source (any value's
/// description), and neither waits for it nor looks how it ends.
DOZELYKIT_EXPORT void executeScriptInNSTask(const QVariant &source);

/// Compiles the source and runs it in this process. BLOCKING: until it has ended, a minute at most.
DOZELYKIT_EXPORT void executeScript(const QString &source);

/// Loads the script in the file and runs it in this process. BLOCKING: until it has ended, a minute at most.
DOZELYKIT_EXPORT void executeScriptFile(const QString &path);

/// Gives scripts the functions `dozely.log`, `dozely.post` and `dozely.run`. The operations above see to it;
/// who uses NSAppleScript itself calls this first, as does a host that puts a function of its own in the
/// place of one of them. Any thread, any number of times: only the first counts.
DOZELYKIT_EXPORT void registerScriptFunctions();
} // namespace zandorSoftwaresExtensions
