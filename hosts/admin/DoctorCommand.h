// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that looks at all that can be wrong with an installation. It works for any user, who then
/// learns less, and whether a daemon runs or not. THREADING: the main thread. BLOCKING: for the disk and some
/// seconds for services that do not answer.
namespace DoctorCommand
{
/// Raises AdminError, without a sentence, when something is wrong.
void run(const AdminOptions &options);
} // namespace DoctorCommand
