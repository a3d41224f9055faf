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
    Missed,       ///< Several that follow one another were found too late; the entry is the last one's.
    Postponed,    ///< To be performed later than at its date, at somebody's wish; not begun.
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
    QDateTime postponedTo = {};            ///< UTC; when it is to be performed, or was. Else invalid.

    /// An entry that stands for a run of occurrences, the last of which is its own: the first of them, UTC,
    /// how many they are, or at least are. Else absent.
    struct Run {
        QDateTime first;
        qint64 count = 0;
        bool isCountExact = true;
        bool operator==(const Run &) const = default;
    };
    std::optional<Run> run = {};

    /// Whether nothing becomes of it any more by itself.
    bool isOver() const
    {
        return state != OccurrenceState::Asked && state != OccurrenceState::Begun &&
               state != OccurrenceState::Postponed;
    }

    /// When it is to be performed, or was, of an occurrence with this date.
    QDateTime momentOf(const QDateTime &date) const { return postponedTo.isValid() ? postponedTo : date; }

    bool operator==(const OccurrenceEntry &) const = default;
};

/// How far a schedule that repeats has come.
struct CalendarEntry {
    QDateTime settled;     ///< UTC: whatever it had up to and including then, nothing more becomes of it.
    bool isPaused = false; ///< It was disabled when the store was last read.

    bool operator==(const CalendarEntry &) const = default;
};

/// What the daemon knows about occurrences that came due, by schedule identifier and date, and how far
/// schedules that repeat have come. A plain value; OccurrenceDatabase has it on disk.
class OccurrenceRecord
{
public:
    std::optional<OccurrenceEntry> find(const QString &identifier, const QDateTime &date) const;
    void set(const QString &identifier, const QDateTime &date, const OccurrenceEntry &entry);

    /// Dates of the schedule's occurrences, earliest first.
    QList<QDateTime> dates(const QString &identifier) const;

    /// The same, of those after one date and before another.
    QList<QDateTime> datesBetween(const QString &identifier, const QDateTime &after,
                                  const QDateTime &before) const;

    /// Schedule identifier and date of an occurrence.
    using Key = std::pair<QString, QDateTime>;

    /// What is asked for and has not begun, in the order in which it was asked for.
    const QList<Key> &asked() const { return m_asked; }

    /// What is postponed, of one schedule, and of all.
    /// @{
    QList<QDateTime> postponed(const QString &identifier) const;
    QList<Key> postponed() const;
    /// @}

    /// The occurrences that agents have been handed and that were to be performed at that moment.
    QList<Key> handedOverAt(const QDateTime &moment) const
    {
        return m_handedOver.values(moment.toMSecsSinceEpoch());
    }

    /// How far a schedule has come; absent for one that does not repeat, or was never seen before.
    std::optional<CalendarEntry> calendar(const QString &identifier) const;
    void setCalendar(const QString &identifier, const CalendarEntry &entry);
    void restoreCalendar(const QString &identifier, const CalendarEntry &entry);

    /// Of how many schedules that is known.
    qsizetype calendarCount() const { return m_calendars.size(); }

    /// Forgets the oldest of what `userId` asked for and is over, until there is less than `most` of it.
    /// False when that cannot be, since so much of it has not begun or goes on.
    bool makeRoom(quint32 userId, qsizetype most);

    /// What was set or removed since the last call of forgetChanges: the entry, absent when it was removed.
    using Changes = QHash<Key, std::optional<OccurrenceEntry>>;
    Changes changes() const;

    /// The same of schedules that repeat.
    using CalendarChanges = QHash<QString, CalendarEntry>;
    CalendarChanges calendarChanges() const;

    bool hasChanges() const { return !m_changed.isEmpty() || !m_changedCalendars.isEmpty(); }
    void forgetChanges();

    /// Puts in what is on disk already.
    void restore(const Key &key, const OccurrenceEntry &entry);

    /// Forgets one occurrence.
    void remove(const QString &identifier, const QDateTime &date);

    /// Turns what is begun, and does not go on, into interrupted; which that was.
    QList<Key> interruptBegun(const std::function<bool(const Key &, const OccurrenceEntry &)> &goesOn);

    /// What is begun in the daemon.
    QList<Key> begunInDaemon() const;

    /// Whether an occurrence's entry is needed, however old.
    using IsNeeded = std::function<bool(const QString &identifier, const QDateTime &date)>;

    /// Drops from memory what is no longer needed, which is no change: all of a schedule that is gone, and of
    /// the others all but what is needed, what is not over, what an agent was handed after
    /// `handedOverBefore`, and the latest few. True when something was dropped.
    bool prune(const IsNeeded &isNeeded, const std::function<bool(const QString &identifier)> &isGone,
               const QDateTime &handedOverBefore = {});

    /// The same for the schedules that have changed since the last call of forgetChanges, before that is
    /// called.
    void pruneChanged(const IsNeeded &isNeeded, const QDateTime &handedOverBefore);

    /// Reads what earlier versions wrote. An error when the bytes are not a whole record: one that is damaged
    /// in part cannot tell what ran.
    static dozely::Result<OccurrenceRecord> fromData(const QByteArray &data);

    /// The names of states on disk.
    /// @{
    static QString nameOf(OccurrenceState state);
    static std::optional<OccurrenceState> stateNamed(const QString &name);
    /// @}

private:
    using Entries = QMap<QDateTime, OccurrenceEntry>;
    void index(const Key &key, const OccurrenceEntry &entry);
    void unindex(const Key &key, const OccurrenceEntry &entry);
    bool pruneOne(const QString &identifier, Entries &entries, const IsNeeded &isNeeded,
                  const QDateTime &handedOverBefore);

    QMap<QString, Entries> m_entries;
    QList<Key> m_asked;
    QMultiHash<QString, QDateTime> m_postponed;
    QMultiHash<qint64, Key> m_handedOver; // by moment, milliseconds since 1970
    QSet<Key> m_changed;
    QHash<QString, CalendarEntry> m_calendars;
    QSet<QString> m_changedCalendars;
};
