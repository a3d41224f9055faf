// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QString>

namespace dozely
{

/// Replaces a file so that a reader, or a machine that loses power, finds the old content or the new one
/// whole: written to a temporary in the same folder, synchronised, renamed over the old one, the folder
/// synchronised. `mode` is the permission bits of the new file. On failure the old file stays. Temporaries in
/// that folder that are older than ten minutes, which killed programs left, are removed.
DOZELYKIT_EXPORT Result<void> replaceFileAtomically(const QString &path, const QByteArray &content, int mode);

} // namespace dozely
