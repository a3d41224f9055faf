// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

namespace dozely
{

/// What is done to the socket folder and to the files in it.
///
/// Everybody may write the folder, so nothing here trusts a name in it: entries are reached through
/// descriptors, no symbolic link is followed, and no tree is so deep that it uses up descriptors or stack.
///
/// THREADING: any thread. BLOCKING: as long as the removal takes.
namespace SocketFolder
{
/// Removes the folder at `fixedPath` below the root folder, and everything in it. False when something stays;
/// true when there was nothing.
DOZELYKIT_AUTOTEST_EXPORT bool wipe(const QString &fixedPath);

/// Creates the folder at `fixedPath` below the root folder with mode 0777, whatever the umask is. Missing
/// parents get mode 0755: whoever could write those could put another folder in this one's place. A folder of
/// our own that is already there is taken and gets the mode.
DOZELYKIT_AUTOTEST_EXPORT bool create(const QString &fixedPath);

/// True when `path` names anything at all, a symbolic link without a target included.
DOZELYKIT_AUTOTEST_EXPORT bool hasEntry(const QString &path);

/// Removes what `path` names: a file, a symbolic link and not its target, a folder with everything in it.
DOZELYKIT_AUTOTEST_EXPORT bool removeEntry(const QString &path);

/// Lets everybody connect to the socket file at `path`: mode 0666. False for anything but a socket that this
/// process's user made and that has no second name elsewhere.
DOZELYKIT_AUTOTEST_EXPORT bool openSocketToEverybody(const QString &path);
} // namespace SocketFolder

} // namespace dozely
