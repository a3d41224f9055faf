// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/WallTimeSeries.h"

/// What becomes of the excluded dates of a recurrence that is changed.
namespace ExcludedDates
{
struct Kept {
    QList<WallTime> kept; ///< Those at which something would take place.
    QList<WallTime> gone; ///< Those after the new start at which nothing does any more.
};

/// Which of the former ones a recurrence, which has none itself, keeps.
Kept keptOf(const QList<WallTime> &former, const Recurrence &recurrence, const QTimeZone &zone);

/// The occurrences of a series from one wall time to another, both included: no more than `most`.
QList<WallTime> between(const WallTimeSeries &series, const WallTime &first, const WallTime &last,
                        qsizetype most);
} // namespace ExcludedDates
