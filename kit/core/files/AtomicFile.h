// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QString>

/// Replaces a file so that a reader, or a machine that loses power, finds the old content or the new one
/// whole: written to a temporary in the same folder, synchronised, renamed over the old one, the folder
/// synchronised. `mode` is the permission bits of the new file. False on failure, with `error` a sentence;
/// the old file stays.
DOZELYKIT_EXPORT bool replaceFileAtomically(const QString &path, const QByteArray &content, int mode,
                                            QString *error = nullptr);
