// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"

#include <optional>

/// What a plug-in object says of its action by operations that it may have or not. Nothing that it raises
/// gets out. THREADING: the main thread.
namespace ActionState
{
/// Whether the action goes on: its invokable `bool isActing()`; false without one, and when it raises, which
/// is one line in the log.
bool isActing(WDPlugIn &plugIn);

/// How the program ended that it ran: its invokable `int exitStatus()`, negative when none was started;
/// absent without one, and when it raises.
std::optional<qint64> exitStatus(WDPlugIn &plugIn);

/// Why it ran no program, where it was to run one: its invokable `QString failure()`, a clause; empty without
/// one, and when it raises.
QString failure(WDPlugIn &plugIn);
} // namespace ActionState
