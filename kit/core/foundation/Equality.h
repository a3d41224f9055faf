// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QVariant>

namespace dozely
{

/// Whether two values are equal in type and value, as `isEqual:` has it: numbers (truth values among them) by
/// their exact value, however wide they are; texts, bytes, dates and all else with their own type alone, so
/// the number 5 is not the text "5"; lists and dictionaries by what they hold; objects by their address. No
/// value is equal to no value. Any thread.
DOZELYKIT_EXPORT bool isEqual(const QVariant &one, const QVariant &other);

} // namespace dozely
