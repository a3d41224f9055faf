// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QVariantMap>

#include <optional>

/// What became of an occurrence, as the daemon tells it. A plain value.
struct HistoryOutcome {
    QString identifier; ///< The schedule's.
    QString name;       ///< Empty: the schedule is gone.
    QDateTime date;     ///< UTC; of several that were missed the last.
    QString state;      ///< As docs/file-formats.md names it.
    QDateTime first;    ///< UTC; of several the first, otherwise invalid.
    std::optional<qint64> count;
    bool isCountExact = true;
    QDateTime postponedTo;
    QDateTime begun;
    QDateTime ended;
    std::optional<qint64> lateness; ///< Milliseconds.
    std::optional<int> exitStatus;
    QString failure; ///< A clause.

    /// An OUTCOME of com.dozely.Scheduler1. What is missing, or of another type, is as if it had not been
    /// said.
    static HistoryOutcome fromMap(const QVariantMap &map);

    /// Whether a person will want to know why.
    bool isTrouble() const;
};
