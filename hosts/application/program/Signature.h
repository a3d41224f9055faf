// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AECodes.h"

/// Under which the application's process is found by who sends it Apple events; that of its Info.plist.
inline constexpr OSType applicationSignature = dozely::fourCharCode("DzAp");
