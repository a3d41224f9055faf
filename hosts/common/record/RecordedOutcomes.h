// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/record/Sqlite.h"

#include <QDateTime>
#include <QString>

#include <optional>

/// What became of one occurrence.
struct RecordedOutcome {
    QString state;                    ///< As docs/file-formats.md names it.
    QDateTime begun;                  ///< UTC; invalid for one that never began.
    std::optional<qint64> lateness;   ///< Milliseconds.
    std::optional<qint64> exitStatus; ///< Of the program that it ran, where that is known.
    QDateTime ended = {};             ///< UTC; invalid where that is not known.
    QString failure = {};             ///< Why it failed: a clause; empty when it did not.

    /// Whether nothing becomes of it any more by itself.
    bool isOver() const { return state != "asked" && state != "begun" && state != "postponed"; }
};

/// What an occurrence that is over wrote last.
struct RecordedOutput {
    QDateTime date; ///< The occurrence's, UTC.
    RecordedOutcome outcome;
    QByteArray output; ///< Empty also where none is kept any more.
};

/// The record of occurrences, "/var/lib/dozely/occurrences.db" below the root folder, for who only looks into
/// it. The daemon goes on writing meanwhile. THREADING: one thread. BLOCKING: for the disk.
class RecordedOutcomes
{
public:
    /// Name of the error that the caller may not read the record.
    static constexpr char notPermitted[] = "not permitted";

    /// Opens the record; one that does not exist has no outcomes.
    static dozely::Result<RecordedOutcomes> open();

    /// The outcome of a schedule's occurrence; nothing when the record has none.
    dozely::Result<std::optional<RecordedOutcome>> find(const QString &identifier,
                                                        const QDateTime &date) const;

    /// What the occurrence at `date` wrote, or, without one, the latest that was performed and is over;
    /// nothing when the record has no such occurrence.
    dozely::Result<std::optional<RecordedOutput>> findOutput(const QString &identifier,
                                                             const std::optional<QDateTime> &date) const;

    /// Whether any occurrence of a schedule, whatever its date, is asked for, postponed or runs.
    dozely::Result<bool> isInUse(const QString &identifier) const;

private:
    std::optional<Sqlite> m_database;
    bool m_hasFailures = false; // else it is of the first format
};
