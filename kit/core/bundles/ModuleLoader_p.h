// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

class QObject;

namespace dozely
{

/// Loads the module `file`, for the life of the process, and returns its root object, which the module owns.
/// The module must carry `interfaceId`; that is read from the file before any of its code runs. What the
/// module's own code raises is an error as well. The value is never null. Main thread.
Result<QObject *> loadRootObject(const QString &file, const QByteArray &interfaceId);

} // namespace dozely
