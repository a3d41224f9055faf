// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKitExport.h"

/// Exports a class that belongs to the library alone, but only in builds with tests, which link to it.
#ifdef DOZELY_BUILD_TESTS
#define DOZELYKIT_AUTOTEST_EXPORT DOZELYKIT_EXPORT
#else
#define DOZELYKIT_AUTOTEST_EXPORT
#endif
