// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QDateTime>
#include <QHash>
#include <QMap>
#include <QStringList>

#include <optional>

/// What became of an occurrence.
enum class OccurrenceState {
    Asked,        ///< To be performed at once, at somebody's wish that was acknowledged; not begun.
    Begun,        ///< Its action was about to start; found at start it means that the daemon died.
    Done,         ///< Performed here, or handed to an agent.
    Skipped,      ///< Found too late.
    NotPerformed, ///< Its action could not be started.
    Removed,      ///< Dropped at the wish of the user whose agent had it.
    Interrupted,  ///< Begun by a daemon that died before the end.
};

/// One occurrence as the daemon remembers it.
struct OccurrenceEntry {
    OccurrenceState state = OccurrenceState::Begun;
    std::optional<quint32> handedTo;     ///< The user whose agent has it; that user may hand it back.
    QDateTime handedOver;                ///< When, UTC; invalid without handedTo.
    std::optional<quint32> askedBy = {}; ///< The user who asked for it to be performed now.

    bool operator==(const OccurrenceEntry &) const = default;
};

/// What the daemon knows about occurrences that came due, by schedule identifier and date. A plain value;
/// docs/file-formats.md describes its bytes.
class OccurrenceRecord
{
public:
    std::optional<OccurrenceEntry> find(const QString &identifier, const QDateTime &date) const;
    void set(const QString &identifier, const QDateTime &date, const OccurrenceEntry &entry);

    /// Dates of the schedule's occurrences, earliest first.
    QList<QDateTime> dates(const QString &identifier) const;

    /// Schedule identifier and date of an occurrence.
    using Key = std::pair<QString, QDateTime>;

    /// What is asked for and has not begun, in the order in which it was asked for.
    const QList<Key> &asked() const { return m_asked; }

    /// Forgets the oldest of what `userId` asked for and is over, until there is less than `most` of it.
    /// False when that cannot be, since so much of it has not begun or goes on.
    bool makeRoom(quint32 userId, qsizetype most);

    /// Forgets one occurrence.
    void remove(const QString &identifier, const QDateTime &date);

    /// Turns what is begun into interrupted; "identifier at date" of each.
    QStringList interruptBegun();

    /// Drops what is no longer needed: all of a schedule that `currentDates` (identifier to date) does not
    /// hold, and of the others all but the current date's, what is not over, and the latest few. True when
    /// something was dropped.
    bool prune(const QHash<QString, QDateTime> &currentDates);

    /// Null when there is too much of it for a property list that could be read back.
    QByteArray toData() const;

    /// An error when the bytes are not a whole record: one that is damaged in part cannot tell what ran.
    static dozely::Result<OccurrenceRecord> fromData(const QByteArray &data);

private:
    void noteAsked(const Key &key, bool isAsked);

    QMap<QString, QMap<QDateTime, OccurrenceEntry>> m_entries;
    QList<Key> m_asked;
};
