// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

/// One occurrence of a schedule as a calendar shows it. A plain value.
struct MonthOccurrence {
    QString identifier; ///< The schedule's.
    QString name;       ///< The schedule's.
    QDateTime moment;   ///< When it takes place.
    QDateTime date;     ///< By which it is told.
    bool isPostponed = false;
    bool wasSkipped = false;

    bool operator==(const MonthOccurrence &) const = default;
};
