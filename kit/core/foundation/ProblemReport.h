// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

#include <functional>

namespace dozely
{

/// Where the ports tell what a person must know: a sentence each. The console log, until a program that keeps
/// a log of its own names it.
///
/// THREADING: the sink may be called from any thread; setting it belongs at the head of a program.
/// @{
DOZELYKIT_EXPORT void setProblemReport(std::function<void(const QString &sentence)> sink);
DOZELYKIT_EXPORT void reportProblem(const QString &sentence);
/// @}

} // namespace dozely
