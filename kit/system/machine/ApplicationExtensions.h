// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

/// Whether the running application, that is its main bundle, starts when the user logs in.
///
/// The setting lies in the login-window preferences, "~/Library/Preferences/loginwindow.plist" below the root
/// folder, whose "AutoLaunchedApplicationDictionary" is an array of dictionaries with "Path" and "Hide". A
/// file that cannot be read is left as it is, and none is ever made. Nothing is reported: there is no log
/// line and no result.
///
/// THREADING: any thread; no lock is taken, so a change that somebody else makes to the file meanwhile is
/// lost.
namespace zandorSoftwaresExtensions
{
/// Puts the application at the head of the login items, or takes it away; either way every entry with the
/// same file name goes, whatever folder it names. The file keeps its form (XML or binary), its other content
/// and its mode.
///
/// A session of this platform starts what lies in its autostart folder. So the entry
/// "dozely-login-NAME.desktop" there follows the setting: it is made, replaced and removed here, but only
/// while it carries the key "X-Dozely-LoginItem", that is, while nobody else put something in its place.
DOZELYKIT_EXPORT void setLoginItem(bool enabled, bool hidden);

/// Whether an entry names exactly this application's bundle. False as well without a bundle or a readable
/// file.
DOZELYKIT_EXPORT bool isLoginItem();
} // namespace zandorSoftwaresExtensions
