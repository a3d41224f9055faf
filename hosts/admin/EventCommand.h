// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// "event": sends an Apple event and prints the reply. Raises AdminError when that fails. Root becomes the
/// user whose process is to have the event. BLOCKING: until the reply has come, or the time is up.
namespace EventCommand
{
void run(const AdminOptions &options);
} // namespace EventCommand
