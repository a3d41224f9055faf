// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/record/Sqlite.h"
#include "hosts/daemon/OccurrenceRecord.h"

#include <functional>

/// The record of occurrences on disk, "/var/lib/dozely/occurrences.db" below the root folder; what
/// docs/file-formats.md says of it. Only the daemon writes it.
///
/// One that is damaged is moved aside and a new one made that says, before anything else, from when on it
/// knows what happened: a daemon that is killed right after that repeats nothing either.
///
/// THREADING: one thread. BLOCKING: for the disk.
class OccurrenceDatabase
{
public:
    static QString path();

    struct Opened {
        /// Since the daemon before this one: what has not begun or is not over, what was handed to an
        /// agent that may still hand it back, how far schedules that repeat have come, and what became of
        /// any of theirs that is later than that.
        OccurrenceRecord record;
        QDateTime nothingKnownBefore; ///< Invalid when everything is known.
        QStringList complaints;       ///< For the log.
    };

    /// Opens the database, or makes it, and takes over what an earlier version recorded in a property list.
    /// `now` is the date from which on a new one knows what happens. Where it cannot be opened, every later
    /// operation tries again.
    Opened open(const QDateTime &now);

    /// An occurrence of whatever age.
    dozely::Result<std::optional<OccurrenceEntry>> find(const OccurrenceRecord::Key &key);

    struct Limits {
        qint64 ofASchedule = 100; ///< Of its latest occurrences that are over.
        qint64 ofAnAsker = 200;   ///< Of the latest that one user asked for and that are over.
    };
    void setLimits(const Limits &limits) { m_limits = limits; }

    /// Some occurrences of the same schedule.
    struct Occurrences {
        QDateTime date = {};  ///< That at this date; invalid for none.
        QDateTime after = {}; ///< All later than this; invalid for none.

        bool contains(const QDateTime &other) const
        {
            return other == date || (after.isValid() && other > after);
        }
    };
    /// What a schedule still has to be told apart by, and what is therefore never forgotten.
    using Needed = std::function<Occurrences(const QString &identifier)>;

    /// What actions wrote last, by occurrence.
    using Outputs = QHash<OccurrenceRecord::Key, QByteArray>;

    /// Outputs of so many occurrences of a schedule are kept, the latest ones.
    static constexpr qint64 outputsOfASchedule = 10;

    using Found = QList<std::pair<OccurrenceRecord::Key, OccurrenceEntry>>;

    /// Those of many occurrences that it has.
    dozely::Result<Found> findAll(const QList<OccurrenceRecord::Key> &keys);

    /// All occurrences of these schedules that are later than the date beside each.
    dozely::Result<Found> findLater(const QList<OccurrenceRecord::Key> &dates);

    /// Writes what changed, or that it is gone, and outputs, at once: on return the disk has all of it, or
    /// nothing and an error comes back. Forgets what goes beyond the limits.
    dozely::Result<void> write(const OccurrenceRecord::Changes &changes, const Needed &needed,
                               const Outputs &outputs = {},
                               const OccurrenceRecord::CalendarChanges &calendars = {});

    /// Forgets all of every schedule whose identifier `isGone` names, and what is over and older than
    /// `oldest`, except what is needed.
    dozely::Result<void> forget(const std::function<bool(const QString &)> &isGone, const QDateTime &oldest,
                                const Needed &needed);

    /// Gives back the memory that the next operation does not need.
    void rest() const;

private:
    dozely::Result<void> ensureOpen();
    dozely::Result<Sqlite> openExisting() const;
    dozely::Result<void> make(const std::optional<QDateTime> &nothingKnownBefore) const;
    dozely::Result<void> loadInto(Opened &opened, const QDateTime &now);
    dozely::Result<void> writeOutputs(const Outputs &outputs) const;
    dozely::Result<void> writeCalendars(const OccurrenceRecord::CalendarChanges &calendars) const;
    dozely::Result<Found> findEach(const char *condition, const QList<OccurrenceRecord::Key> &keys);
    dozely::Result<Found> search(const char *condition, const QList<OccurrenceRecord::Key> &keys) const;
    dozely::Result<QStringList> schedulesWithOccurrences() const;
    dozely::Result<QStringList> schedulesWithCalendars() const;
    void takeOverPropertyList(Opened &opened, const QDateTime &now);
    void moveAside() const;

    std::optional<Sqlite> m_database;
    bool m_isUnread = false; ///< There was one at the start, which could not be opened then.
    Limits m_limits;
};
