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

/// Gives this process a copy of its own of all code and data that it has loaded from files below the folder:
/// the kernel shares them with the files, so that whoever writes into one of those, as "cp" over it does,
/// changes or takes away what runs here. Where the machine does not let memory become code, the code stays
/// shared. Main thread, at once after loading: what another thread writes into the module's data meanwhile
/// may be lost.
void detach(const QString &folder);
} // namespace ModuleFile

} // namespace dozely
