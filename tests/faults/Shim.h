// SPDX-License-Identifier: MIT
#pragma once

#include "FaultPage.h"

#include <dlfcn.h>

#define SHIM_CALL extern "C" __attribute__((visibility("default")))

/// Null until the program has begun, and for one that is to be left alone.
extern Page *page;

/// What the program gets in the place of calendar timers; -1 for none.
extern int timers[timerCount];

/// What comes next of that name: the machine's own.
template<typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}
