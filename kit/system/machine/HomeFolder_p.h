// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace dozely
{

/// A path in the current user's home folder, below the root folder; null for a user without a home. `path`
/// begins with "/".
QString pathInHomeFolder(const QString &path);

} // namespace dozely
