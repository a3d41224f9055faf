// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/record/Sqlite.h"

#include <QDateTime>
#include <QList>
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

/// A row of the record.
struct RecordedOccurrence {
    QString identifier; ///< The schedule's.
    QDateTime date;     ///< UTC; of a run of missed ones the latest.
    RecordedOutcome outcome;
    QDateTime postponedTo = {};  ///< UTC; invalid for one that was not postponed, or is over.
    QDateTime first = {};        ///< UTC, of a run of missed ones the earliest; otherwise invalid.
    std::optional<qint64> count; ///< How many a run of missed ones has.
    bool isCountExact = true;    ///< Otherwise there are more.
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

    /// The latest occurrence of a schedule that the record has at or before `date`; nothing when it has none.
    dozely::Result<std::optional<RecordedOccurrence>> findLatest(const QString &identifier,
                                                                 const QDateTime &date) const;

    /// The latest occurrences, of one schedule or of all, newest first.
    dozely::Result<QList<RecordedOccurrence>> latest(const std::optional<QString> &identifier,
                                                     qint64 most) const;

    /// What the record knows of what is to come after `date`, and what was postponed.
    dozely::Result<QList<RecordedOccurrence>> toCome(const QDateTime &date) const;

    /// What the occurrence at `date` wrote, or, without one, the latest that was performed and is over;
    /// nothing when the record has no such occurrence.
    dozely::Result<std::optional<RecordedOutput>> findOutput(const QString &identifier,
                                                             const std::optional<QDateTime> &date) const;

    /// Whether any occurrence of a schedule, whatever its date, is asked for, postponed or runs.
    dozely::Result<bool> isInUse(const QString &identifier) const;

private:
    QByteArray query(const char *more) const;
    dozely::Result<QList<RecordedOccurrence>> all(SqliteStatement &search) const;

    std::optional<Sqlite> m_database;
    qint64 m_version = 0; // of the format
};
