// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QVariant>

namespace zandorSoftwaresExtensions
{
/// Moves `object` to where `index` pointed before it was taken out; every occurrence of it is removed first.
/// An object that is not in the list is inserted. Raises NSException (NSRangeException) when the place does
/// not exist.
DOZELYKIT_EXPORT void moveObjectToIndex(QVariantList &list, const QVariant &object, quint32 index);
} // namespace zandorSoftwaresExtensions
