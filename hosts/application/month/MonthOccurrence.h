// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QVariantMap>

/// One occurrence of a schedule as a calendar shows it. A plain value.
struct MonthOccurrence {
    QString identifier; ///< The schedule's.
    QString name;       ///< The schedule's.
    QDateTime moment;   ///< When it takes place.
    QDateTime date;     ///< By which it is told.
    bool isPostponed = false;
    bool wasSkipped = false;

    /// An OCCURRENCE of com.dozely.Scheduler1, or an OUTCOME of what is past, which was skipped where its
    /// state says that nothing was performed. What is missing, or of another type, is as if it had not been
    /// said.
    static MonthOccurrence fromMap(const QVariantMap &map);

    bool operator==(const MonthOccurrence &) const = default;
};
