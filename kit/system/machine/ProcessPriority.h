// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

namespace dozely
{

/// How soon this process gets a processor when others want it, too.
namespace ProcessPriority
{
/// The nice value (setpriority(2)) of a process that must be in time whatever users' programs do.
constexpr int beforeUsers = -10;

/// Gives the calling thread, and the threads that it makes from now on, that nice value. Without the right to
/// it everything stays as it is. Programs that are started with ChildProgram get the value that was there
/// before.
///
/// THREADING: the head of main is the place for it.
DOZELYKIT_EXPORT void raiseTo(int niceValue);
} // namespace ProcessPriority

} // namespace dozely
