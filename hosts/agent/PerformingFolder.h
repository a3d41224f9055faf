// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QString>

/// Where the agent keeps the files of the actions that go on: "dozely/performing" in the user's folder for
/// what a session needs (XDG_RUNTIME_DIR), or, where there is none below the root folder, in ".cache" at
/// home.
namespace PerformingFolder
{
/// The full path; the folder is there then, and nobody else can write to it. An error says why it cannot be
/// used. BLOCKING: for the disk.
dozely::Result<QString> make();
} // namespace PerformingFolder
