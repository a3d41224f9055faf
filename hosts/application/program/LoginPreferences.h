// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

/// The login-window preferences, "~/Library/Preferences/loginwindow.plist" below the root folder.
namespace LoginPreferences
{
/// Makes the file, with nothing in it, where there is nothing of that name: the library changes what is there
/// (setLoginItem) but makes none.
dozely::Result<void> makeIfMissing();
} // namespace LoginPreferences
