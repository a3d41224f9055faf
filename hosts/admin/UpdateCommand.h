// SPDX-License-Identifier: MIT
#pragma once

class AdminOptions;

/// The command that asks the update server.
namespace UpdateCommand
{
/// `check`: asks for the latest version and shows it beside the installed one. Raises AdminError with
/// NewerVersion after that was shown when there is a newer one, with NoAnswer when it could not be found out.
/// Nothing is downloaded or opened. The process is no longer root afterwards. BLOCKING: as
/// WDUpdateChecker::updateLatestVersionDictionary.
void run(const AdminOptions &options);
} // namespace UpdateCommand
