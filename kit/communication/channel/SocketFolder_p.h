// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

#include <optional>
#include <utility>

namespace dozely
{

/// What is done to the socket folder and to the files in it.
///
/// Everybody may write the folder, so nothing here trusts a name in it: entries are reached through
/// descriptors and no symbolic link is followed. What somebody has put there, of whatever size, is moved
/// aside in one rename: into "com.dozely.removed" beside the folder, which root alone can enter, and is
/// removed from there behind all else (BackgroundWork). Who may not do that moves it aside
/// within the folder, for root to find (SocketFolderWatch).
///
/// THREADING: any thread. BLOCKING: for a few system calls.
namespace SocketFolder
{
/// The folder, below the root folder.
inline const QString place = QStringLiteral("/private/var/tmp/com.dozely");

/// Moves the folder at `fixedPath` below the root folder aside with everything in it, to be removed, as is
/// what was left over from an earlier time. False when something stays; true when there was nothing. Where
/// nothing can be moved aside the folder is emptied at once, which blocks.
DOZELYKIT_AUTOTEST_EXPORT bool wipe(const QString &fixedPath);

/// Creates the folder at `fixedPath` below the root folder with mode 0777, whatever the umask is. Missing
/// parents get mode 0755: whoever could write those could put another folder in this one's place. A folder of
/// our own that is already there is taken and gets the mode.
DOZELYKIT_AUTOTEST_EXPORT bool create(const QString &fixedPath);

/// True when there is a file at `path`, through symbolic links: one without a target is none.
DOZELYKIT_AUTOTEST_EXPORT bool hasFile(const QString &path);

/// Has nothing be at `path` in the socket folder any more: removes a file, a symbolic link and not its
/// target, an empty folder; moves another folder aside. True also when there was nothing. What another user
/// had put there is told (AbuseLog).
DOZELYKIT_AUTOTEST_EXPORT bool clearEntry(const QString &path);

/// Whether an entry of this name is one that was moved aside within the folder.
DOZELYKIT_AUTOTEST_EXPORT bool isMovedAside(const QByteArray &name);

/// Lets everybody connect to the socket file at `path`: mode 0666. False for anything but a socket that this
/// process's user made and that has no second name elsewhere.
DOZELYKIT_AUTOTEST_EXPORT bool openSocketToEverybody(const QString &path);

/// Which socket is at `path`, device and inode: no other has the same as long as this one listens. Absent
/// when there is no socket of this process's user.
using SocketIdentity = std::pair<quint64, quint64>;
DOZELYKIT_AUTOTEST_EXPORT std::optional<SocketIdentity> socketAt(const QString &path);
} // namespace SocketFolder

} // namespace dozely
