// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ProgramLimits.h"

/// The limits of an action where no service manager keeps them: those that a process can put upon itself.
namespace OwnLimits
{
/// The I/O priority of a weight (ioprio_set(2), best effort): 0, the first, to 7. The usual weight, 100, is
/// the usual priority, 4; twice the weight is one step.
int ioPriorityOf(quint64 weight);

/// Puts them upon this process and what it starts. One that the machine refuses costs one log line.
///
/// Memory is what the process may have for itself to write to (RLIMIT_DATA, getrlimit(2)), each process on
/// its own. RLIMIT_AS would count what is mapped and never touched, libraries and the stacks of threads
/// among it, and so refuse a program several times the memory that it takes. For a share of the processors
/// there is nothing of the kind.
void take(const dozely::ProgramLimits &limits);
} // namespace OwnLimits
