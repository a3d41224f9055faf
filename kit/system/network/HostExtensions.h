// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

namespace zandorSoftwaresExtensions
{
/// The hardware address of the network controller behind the default route, such as "00:1b:63:aa:02:ff"; null
/// when there is none. Where several controllers share the route, the last one's. Any thread.
DOZELYKIT_EXPORT QString primaryMACAddress();
} // namespace zandorSoftwaresExtensions
