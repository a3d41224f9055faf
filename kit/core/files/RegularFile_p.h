// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QString>

namespace dozely
{

/// The name of the error of a file that is larger than it may be.
constexpr char fileTooLarge[] = "too large";

/// The content of a regular file of at most `maximumSize` bytes; never null. Never waits for a pipe or a
/// device, whoever put it there, and follows a final symbolic link only when `followLinks`.
Result<QByteArray> readRegularFile(const QString &path, qint64 maximumSize, bool followLinks);

} // namespace dozely
