// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/OccurrenceDatabase.h"
#include "hosts/daemon/Scheduler.h"

#include <QObject>
#include <QSet>

namespace dozely
{
class Clock;
} // namespace dozely

/// The daemon's memory on disk: reads the schedules and the record of occurrences into a Scheduler, and saves
/// the record. A store that is bad leaves the schedules as they were.
class ScheduleKeeper : public QObject
{
    Q_OBJECT
public:
    /// Whether an action that another daemon began in a process of its own goes on, or has left word of its
    /// end.
    using GoesOn = std::function<bool(const OccurrenceRecord::Key &)>;

    /// Opens the record; `limits` says how much of it is kept. What was begun and does not go on was
    /// interrupted; without `goesOn` nothing goes on. `clock` and `parent` must outlive the object.
    explicit ScheduleKeeper(dozely::Clock &clock, const OccurrenceDatabase::Limits &limits = {},
                            const GoesOn &goesOn = {}, QObject *parent = nullptr);

    Scheduler &scheduler() { return m_scheduler; }
    const Scheduler &scheduler() const { return m_scheduler; }

    /// After work that took memory at once: has it given back when there was none for ten seconds and nothing
    /// is due within three.
    void restSoon();

    /// Reads the store again and logs what is new about it: the number of schedules, and each fault once.
    /// What could not be read may be readable later though nothing tells of it: then storeMayBeReadable
    /// comes.
    void readStore();

    /// Why no schedules are known: the store could not be read since the daemon began. Absent once it was,
    /// though it may be unreadable by now.
    const std::optional<dozely::Error> &whyUnread() const { return m_whyUnread; }

    /// Notes an occurrence that `userId` asks for now, and blocks until the disk has it. An error, and
    /// nothing noted, when the disk refuses, or when so much of what that user asked for is not over that the
    /// record takes no more.
    dozely::Result<void> noteAsked(const Occurrence &occurrence, quint32 userId);

    /// An occurrence that is about to begin, and where.
    struct Beginning {
        Occurrence occurrence;
        ActingPlace place;
    };

    /// Notes what is about to begin, all of it at once, and blocks until the disk has it.
    void noteBegun(const QList<Beginning> &beginnings);

    /// Notes that what was about to begin certainly did not: after a restart it is as it was before.
    void takeBack(const Occurrence &occurrence);

    /// Notes what became of an occurrence; the disk has it a little later, or after flush.
    void note(const Occurrence &occurrence, OccurrenceState state, std::optional<quint32> handedTo = {});

    /// The same of occurrences of a schedule that follow one another.
    void noteRun(const Schedule &schedule, const OccurrenceSeries::Run &run,
                 OccurrenceState state = OccurrenceState::Missed);

    /// Notes that occurrences of a schedule are not to be performed, the current one and all others that are
    /// due with it, or with `upTo` all up to that date; or that one is to be performed later, and blocks
    /// until the disk has it. An error, and nothing noted, when the disk refuses.
    /// @{
    dozely::Result<void> noteRemoved(const Occurrence &occurrence, const QDateTime &upTo = {});
    dozely::Result<void> notePostponed(const Occurrence &occurrence, const QDateTime &to);
    /// @}

    /// Notes, and tells in the log, that an action was cut short and nobody knows how far it came.
    void noteInterrupted(const Occurrence &occurrence);

    /// Notes how an action has ended, and what it wrote; and who still has it, of one in a session.
    void noteEnd(const Occurrence &occurrence, const PerformanceOutcome &outcome,
                 std::optional<quint32> handedTo = {});

    /// Removes from the store what is over for 30 days and is not to stay. Nothing happens while another
    /// program changes the store. By a clock that is doubted anything may be long over: do not call it then.
    /// Blocks.
    void removeOver();

    /// Saves what is not saved yet. Blocks.
    void flush();

Q_SIGNALS:
    /// The disk has everything that was noted.
    void saved();

    /// An action is over, to whatever end; that was noted.
    void ended(const Occurrence &occurrence);

    /// An action is about to begin.
    void began(const Occurrence &occurrence);

    /// Something became of an occurrence, or of several of a schedule of which this is the last.
    void noted(const OccurrenceRecord::Key &key);

    /// The store could not be read, and it is time to try again: a second later at first, then ever more
    /// seldom, each minute at last.
    void storeMayBeReadable();

    /// The store was read for the first time, after it had been unreadable.
    void readAtLast();

private:
    void loadRecord(const GoesOn &goesOn);
    void tellInterrupted();
    void keep(QList<Schedule> schedules, const QSet<QString> &faultyIdentifiers);
    void learnAbout(const QList<Schedule> &schedules);
    QStringList takeOutBadRules(QList<Schedule> &schedules, QSet<QString> &faultyIdentifiers) const;
    void tellOfLoss(const QList<Schedule> &schedules) const;
    void dropPostponed();
    dozely::Result<void> noteForGood(const Occurrence &occurrence, const std::function<void()> &note);
    void tryAgainLater();
    bool isLongOver(qint32 place) const;
    void forgetGone(const QSet<QString> &faultyIdentifiers, bool hasUnknown);
    OccurrenceDatabase::Needed needed() const;
    void saveSoon();
    void saveAgainLater();
    bool isDueSoon() const;
    void rest();
    dozely::Result<void> save();

    dozely::Clock &m_clock;
    Scheduler m_scheduler;
    QList<OccurrenceRecord::Key> m_interrupted; // and not yet logged
    QStringList m_complaints;                   // about the store, as last logged
    QString m_saveError;                        // as last logged
    qsizetype m_scheduleCount = -1;
    bool m_wasEverRead = false; // the store
    std::optional<dozely::Error> m_whyUnread;
    std::chrono::seconds m_pause;
    quint64 m_reading = 0;
    OccurrenceDatabase m_database;
    OccurrenceDatabase::Outputs m_outputs; // not saved yet
    bool m_isSaveComing = false;
    bool m_isSaveRepeated = false; // since the disk refused
    std::chrono::seconds m_savePause;
    bool m_isRestComing = false;
    bool m_isAtWork = false;   // since rest was planned
    bool m_mayHoldGone = true; // the record, of schedules that are gone
};
