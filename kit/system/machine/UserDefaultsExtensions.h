// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>
#include <QStringList>

/// Small questions about the machine, its system and its users. Each answer is found out afresh, but for the
/// two numbers of the version.
///
/// THREADING: any thread.
namespace zandorSoftwaresExtensions
{
/// The name of the user at the console; null when nobody is there. Blocks for at most two seconds.
DOZELYKIT_EXPORT QString loggedInUser();

/// The user id of the user at the console; 0 when nobody is there. Who must tell nobody from root asks
/// loggedInUser. Blocks for at most two seconds.
DOZELYKIT_EXPORT quint32 loggedInUserID();

/// The version of the operating system, such as "10.15.7" or "12": "ProductVersion" in the file
/// "/System/Library/CoreServices/SystemVersion.plist" below the root folder where that file exists, else the
/// VERSION_ID of os-release. Null when it tells none.
DOZELYKIT_EXPORT QString systemVersion();

/// The number before the first point of the version (10 in "10.15.7"); the whole of it when it has none.
/// Found out on first use and kept for the life of the process.
DOZELYKIT_EXPORT qint64 systemType();

/// The number between the first and the second point of the version (15 in "10.15.7"), 0 when it has none.
/// Found out on first use and kept for the life of the process.
DOZELYKIT_EXPORT qint64 systemSubtype();

/// The computer's name as a person gave it, else its host name. Blocks for at most two seconds.
DOZELYKIT_EXPORT QString rendezvousName();

/// The codes of the languages that the user prefers, best first: "AppleLanguages" of the user's global
/// preferences
/// ("~/Library/Preferences/.GlobalPreferences.plist") where they hold it, else those of the locale.
DOZELYKIT_EXPORT QStringList userPreferedLanguages();
} // namespace zandorSoftwaresExtensions
