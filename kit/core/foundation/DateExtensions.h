// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QDateTime>

namespace zandorSoftwaresExtensions
{
/// The day of `date`, in its own time zone, at `hour`:`mins`:00. Values beyond a day or an hour roll over. A
/// wall time that a clock change skips moves forward by the gap; one that occurs twice is the first.
DOZELYKIT_EXPORT QDateTime dateFromHour(qint32 hour, qint32 mins, const QDateTime &date);

/// Hour (0 to 23) and minute (0 to 59) of the date in the local time zone.
DOZELYKIT_EXPORT qint32 hour(const QDateTime &date);
DOZELYKIT_EXPORT qint32 minute(const QDateTime &date);
} // namespace zandorSoftwaresExtensions
