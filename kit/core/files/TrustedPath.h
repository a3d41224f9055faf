// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Result.h"

#include <QList>
#include <QString>

namespace dozely
{

/// Whether the code or data at `path` can have been put there only by one of `owners`: the path lies below
/// the root folder, and from the root folder down to it, and, for a folder, through everything in it, each
/// entry belongs to one of them and nobody else may write it. Symbolic links on the way make it untrusted.
/// The error names the first entry that is not trusted.
DOZELYKIT_EXPORT Result<void> isTrustedPath(const QString &path, const QList<quint32> &owners);

} // namespace dozely
