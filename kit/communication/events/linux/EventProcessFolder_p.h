// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"

#include <QByteArray>

#include <functional>

namespace dozely
{

/// The folder of the processes that use Apple events, "/private/var/tmp/com.dozely.events" below the root
/// folder, reached without following a link at its own place. Not valid when it is missing or belongs to
/// neither root, the root folder's owner nor this user.
Descriptor openEventFolder();

/// The same, after making it where that is possible: mode 1777, missing parents 0755.
Descriptor makeEventFolder();

/// Calls `visit` with each name in the folder, at most 100,000: a folder that everybody may write may hold
/// any number.
void forEachEntryOf(int folder, const std::function<void(const QByteArray &)> &visit);

} // namespace dozely
