// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// The content of a regular file of at most `maximumSize` bytes. Absent on failure, with `error` a sentence.
/// Never waits for a pipe or a device, whoever put it there, and follows a final symbolic link only when
/// `followLinks`.
std::optional<QByteArray> readRegularFile(const QString &path, qint64 maximumSize, bool followLinks,
                                          QString *error = nullptr);
