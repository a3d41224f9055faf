// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QDateTime>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QStringList>

#include <functional>
#include <optional>

/// What became of an occurrence.
enum class OccurrenceState {
    Asked,        ///< To be performed at once, at somebody's wish that was acknowledged; not begun.
    Begun,        ///< Its action was about to start; found at start it means that the daemon died.
    Done,         ///< Performed here, or handed to an agent.
    Skipped,      ///< Found too late.
    NotPerformed, ///< Its action could not be started.
    Removed,      ///< Dropped at the wish of the user whose agent had it.
    Interrupted,  ///< Begun, and cut short without anybody who could tell how.
    Unknown,      ///< Sent to an agent that did not answer: it may have been performed.
    Failed,       ///< Performed, but not to a good end.
};

/// Where an action was performed.
enum class ActingPlace { Unknown, Daemon, Session };

/// One occurrence as the daemon remembers it.
struct OccurrenceEntry {
    OccurrenceState state = OccurrenceState::Begun;
    std::optional<quint32> handedTo;     ///< The user whose agent has it; that user may hand it back.
    QDateTime handedOver;                ///< When, UTC; invalid without handedTo.
    std::optional<quint32> askedBy = {}; ///< The user who asked for it to be performed now.
    QDateTime begun = {};                ///< When its action began, UTC; invalid before that.
    std::optional<qint64> lateness = {}; ///< Milliseconds: when it began, or was found too late.
    ActingPlace place = ActingPlace::Unknown;
    std::optional<qint64> exitStatus = {}; ///< Of the program that it ran, where that is known.
    QDateTime ended = {};                  ///< When an action in a performer ended, UTC.
    QString failure = {};                  ///< Why it failed: a clause; empty when it did not.

    /// Whether nothing becomes of it any more by itself.
    bool isOver() const { return state != OccurrenceState::Asked && state != OccurrenceState::Begun; }

    bool operator==(const OccurrenceEntry &) const = default;
};

/// What the daemon knows about occurrences that came due, by schedule identifier and date. A plain value;
/// OccurrenceDatabase has it on disk.
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

    /// The schedules whose occurrences of that date agents have been handed.
    QStringList handedOverAt(const QDateTime &date) const
    {
        return m_handedOver.values(date.toMSecsSinceEpoch());
    }

    /// Forgets the oldest of what `userId` asked for and is over, until there is less than `most` of it.
    /// False when that cannot be, since so much of it has not begun or goes on.
    bool makeRoom(quint32 userId, qsizetype most);

    /// What was set or removed since the last call of forgetChanges: the entry, absent when it was removed.
    using Changes = QHash<Key, std::optional<OccurrenceEntry>>;
    Changes changes() const;
    bool hasChanges() const { return !m_changed.isEmpty(); }
    void forgetChanges() { m_changed.clear(); }

    /// Puts in what is on disk already.
    void restore(const Key &key, const OccurrenceEntry &entry);

    /// Forgets one occurrence.
    void remove(const QString &identifier, const QDateTime &date);

    /// Turns what is begun, and does not go on, into interrupted; which that was.
    QList<Key> interruptBegun(const std::function<bool(const Key &, const OccurrenceEntry &)> &goesOn);

    /// What is begun in the daemon.
    QList<Key> begunInDaemon() const;

    /// Drops from memory what is no longer needed, which is no change: all of a schedule that is gone, and of
    /// the others all but what has their `currentDate`, what is not over, and the latest few. True when
    /// something was dropped.
    bool prune(const std::function<QDateTime(const QString &identifier)> &currentDate,
               const std::function<bool(const QString &identifier)> &isGone);

    /// Reads what earlier versions wrote. An error when the bytes are not a whole record: one that is damaged
    /// in part cannot tell what ran.
    static dozely::Result<OccurrenceRecord> fromData(const QByteArray &data);

    /// The names of states on disk.
    /// @{
    static QString nameOf(OccurrenceState state);
    static std::optional<OccurrenceState> stateNamed(const QString &name);
    /// @}

private:
    void noteAsked(const Key &key, bool isAsked);
    void noteHandedOver(const Key &key, bool isHandedOver);

    QMap<QString, QMap<QDateTime, OccurrenceEntry>> m_entries;
    QMultiHash<qint64, QString> m_handedOver; // by date, milliseconds since 1970
    QList<Key> m_asked;
    QSet<Key> m_changed;
};
