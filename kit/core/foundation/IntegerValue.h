// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>
#include <QVariant>

namespace dozely
{

/// The integer at the head of a text: leading blanks skipped, an optional sign, digits up to the first other
/// character; 0 when there is none. Saturates at the ends of the range.
DOZELYKIT_EXPORT qint32 integerValue(const QString &text);

/// The 32-bit integer of a value: of a string as above, of a number truncated to 32 bits (a fraction is cut
/// first), of anything else 0.
DOZELYKIT_EXPORT qint32 integerValue(const QVariant &value);

/// The 64-bit integer of a value: of a string as above, saturating at the ends of 64 bits; of a number its
/// whole part; of anything else 0.
DOZELYKIT_EXPORT qint64 longIntegerValue(const QVariant &value);

} // namespace dozely
