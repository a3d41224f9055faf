// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace dozely
{

/// What the library itself says, in the user's language: the text of that key in its own bundle, the key
/// where that has none.
QString libraryText(const QString &key);

} // namespace dozely
