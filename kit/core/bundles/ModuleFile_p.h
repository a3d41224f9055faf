// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

namespace dozely
{

/// Which files the code of this process comes from; absolute paths. Any thread.
namespace ModuleFile
{
/// The running program; null when it cannot be found out.
QString ofProgram();

/// The library, module or program whose image in memory holds `address`; null when none does.
QString ofAddress(const void *address);
} // namespace ModuleFile

} // namespace dozely
