// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyInterfaceExport.h"

/// Exports a class that belongs to the library alone, but only in builds with tests, which link to it.
#ifdef DOZELY_BUILD_TESTS
#define DOZELYINTERFACE_AUTOTEST_EXPORT DOZELYINTERFACE_EXPORT
#else
#define DOZELYINTERFACE_AUTOTEST_EXPORT
#endif
