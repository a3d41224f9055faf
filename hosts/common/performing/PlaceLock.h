// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QString>

/// The file that stands for one performance: a host makes it, the performer has it locked as long as it goes
/// on. The kernel gives the lock back, however the performer ends (open file
/// description locks, fcntl(2)).
namespace PlaceLock
{
/// Makes the file, which holds `content`, or, on a full disk, nothing. An error when there is one, or none
/// can be made.
dozely::Result<void> make(const QString &place, const QByteArray &content = {});

/// Where make leaves an unfinished file when its process is cut short.
QString unfinishedPathBeside(const QString &place);

/// Takes the lock for as long as the descriptor is open, and leaves a sign of it. An error when somebody has
/// it, when the host has removed the file, and when that does not begin with `mark`: it has called one off
/// and made room for the next, which is not disturbed.
dozely::Result<dozely::Descriptor> take(const QString &place, const QByteArray &mark = {});

/// Whether somebody has the lock: a performer that is ready or at work. Also true for a file of which
/// nobody can tell, for want of a descriptor for example.
bool isHeld(const QString &place);

/// Asks the performer that has the lock to end (SIGTERM). False when none has.
bool askToEnd(const QString &place);

/// Sees to it that nothing begins at this place any more: removes the file, unless a performer has the lock.
/// False when one has.
bool takeBack(const QString &place);

/// The same while no performer has come there yet; false when one has, also one that has ended since.
bool takeBackUntouched(const QString &place);
} // namespace PlaceLock
