// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"

#include <csignal>

/// What a performer's process does to itself before plug-ins are at work in it.
namespace ActorProcess
{
/// Puts nothing in the place of its standard input.
void readNothing();

/// Ends this process, and what it has started, when the supervisor is killed: the record has the action as
/// interrupted then, and nobody would end it at its limits. `report` is this process's end of the pipe for
/// reports, whose other end the supervisor has. Starts a thread, since the plug-in may do whatever it likes
/// with its own.
void endWithSupervisor(const dozely::Descriptor &report);

/// Makes it the process that acts, in a session of its own: its input is nothing, its output the
/// supervisor's, and the signals are blocked that were before the supervisor's.
void become(const dozely::Descriptor &output, const sigset_t &formerSignals);
} // namespace ActorProcess
