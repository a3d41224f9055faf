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
        /// Since the daemon before this one: what has not begun or is not over, and what was handed to an
        /// agent that may still hand it back.
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

    /// The date at which a schedule is to run, whose occurrence is never forgotten; invalid for none.
    using CurrentDate = std::function<QDateTime(const QString &identifier)>;

    /// What actions wrote last, by occurrence.
    using Outputs = QHash<OccurrenceRecord::Key, QByteArray>;

    /// Outputs of so many occurrences of a schedule are kept, the latest ones.
    static constexpr qint64 outputsOfASchedule = 10;

    /// Writes what changed, or that it is gone, and outputs, at once: on return the disk has all of it, or
    /// nothing and an error comes back. Forgets what goes beyond the limits.
    dozely::Result<void> write(const OccurrenceRecord::Changes &changes, const CurrentDate &currentDate,
                               const Outputs &outputs = {});

    /// Forgets all of every schedule whose identifier `isGone` names, and what is over and older than
    /// `oldest`, except a schedule's current date.
    dozely::Result<void> forget(const std::function<bool(const QString &)> &isGone, const QDateTime &oldest,
                                const CurrentDate &currentDate);

    /// Gives back the memory that the next operation does not need.
    void rest() const;

private:
    dozely::Result<void> ensureOpen();
    dozely::Result<Sqlite> openExisting() const;
    dozely::Result<void> make(const std::optional<QDateTime> &nothingKnownBefore) const;
    dozely::Result<void> loadInto(Opened &opened, const QDateTime &now);
    dozely::Result<void> writeOutputs(const Outputs &outputs) const;
    void takeOverPropertyList(Opened &opened, const QDateTime &now);
    void moveAside() const;

    std::optional<Sqlite> m_database;
    bool m_isUnread = false; ///< There was one at the start, which could not be opened then.
    Limits m_limits;
};
