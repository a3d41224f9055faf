// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ChildProgram.h"

/// How one item of Open.plugin is opened.
namespace Opening
{
/// The program that opens it: an application itself; for files, folders and addresses "xdg-open", which asks
/// the desktop. It has this process's environment, and works in the home folder. An error, a clause, for an
/// item that is not there or is none. BLOCKING: for the disk.
dozely::Result<dozely::ChildProgram> programFor(const QString &item);

/// The same in a unit of the user's service manager where this process runs in one itself, since what is left
/// in that is killed with the action's end.
dozely::ChildProgram outliving(dozely::ChildProgram program);
} // namespace Opening
