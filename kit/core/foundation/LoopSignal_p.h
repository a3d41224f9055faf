// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

/// Has `handler` called from the calling thread's event loop whenever this process gets the signal, for the
/// rest of the process. Signals that arrive before the loop has come round are one call; after the last of
/// them there is always at least one. What the signal itself interrupts only writes a number to a descriptor:
/// it takes no lock and cannot block. Until a loop runs, nothing happens at all. For one signal a process;
/// what cannot be set up leaves the signal as it was.
DOZELYKIT_AUTOTEST_EXPORT void handleSignalInLoop(int signalNumber, void (*handler)(int signalNumber));
