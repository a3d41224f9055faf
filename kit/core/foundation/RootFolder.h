// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

#include <optional>

namespace dozely
{

/// The folder under which every fixed path of the system lies: "/" unless a program relocates it.
///
/// Set it first thing in main (`--root DIR`); it is not guarded against use from other threads while it
/// changes.
namespace RootFolder
{
/// Relocates the system. `folder` must be absolute; "/" or an empty text is the normal place.
DOZELYKIT_EXPORT void set(const QString &folder);

/// The folder in force, without a trailing slash; "" for "/".
DOZELYKIT_EXPORT QString path();

/// A fixed path such as "/var/log/dozely.log" below the root folder.
DOZELYKIT_EXPORT QString join(const QString &fixedPath);

/// The user who owns the system's files: 0 for "/", the owner of the folder when it is relocated.
/// Absent when the folder cannot be read: an unknown owner is nobody, never root.
DOZELYKIT_EXPORT std::optional<quint32> owner();

/// A sentence saying why the system cannot run below `folder`, empty when it can: it must be an existing
/// absolute folder, and short enough that a socket path with a name of `longestSocketName` bytes still fits
/// into an address.
DOZELYKIT_EXPORT QString refusal(const QString &folder, int longestSocketName = 40);
} // namespace RootFolder

} // namespace dozely
