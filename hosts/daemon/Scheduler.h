// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PerformanceOutcome.h"
#include "hosts/common/schedules/Schedule.h"
#include "hosts/daemon/OccurrenceRecord.h"
#include "hosts/daemon/PendingOccurrences.h"
#include "hosts/daemon/ScheduleIndex.h"

#include <QList>
#include <QSet>

#include <chrono>
#include <functional>
#include <limits>
#include <vector>

namespace dozely
{
class Clock;
} // namespace dozely

class SchedulerObserver;

/// One date at which a schedule's action is to run.
struct Occurrence {
    Schedule schedule;
    QDateTime date; ///< UTC. Differs from the schedule's own for an action that was asked for by hand.
    bool mayHaveRun = false; ///< It fell due in a time of which nothing is known.
    bool isAskedFor = false; ///< By hand, apart from all others of the schedule.

    /// The date in the schedule's time zone.
    QDateTime calendarDate() const;
};

/// The rules of the daemon: which occurrence is next, which are due, which are too late, and who has one.
/// Knows the clock and remembers; reads and writes nothing.
///
/// What is to come is kept in the order of its dates, so that one occurrence costs the same search among ten
/// thousand schedules as among ten; who keeps something about schedules is told what changes
/// (SchedulerObserver).
///
/// An occurrence is open until the record has an entry for it. It is told by schedule identifier and date, so
/// neither a restart nor a clock that is set back repeats it, and a schedule with a new date has a new one.
/// One that is asked for has an entry from then on, and is due until that says that it began.
class Scheduler
{
public:
    /// `clock` must outlive the object.
    explicit Scheduler(const dozely::Clock &clock, OccurrenceRecord record = {});
    Scheduler(const Scheduler &) = delete;
    Scheduler &operator=(const Scheduler &) = delete;

    /// Has an observer told from now on, until it is removed.
    /// @{
    void addObserver(SchedulerObserver *observer) { m_observers += observer; }
    void removeObserver(SchedulerObserver *observer) { m_observers.removeAll(observer); }
    /// @}

    /// After the record was lost: what fell due before `date` may have run.
    void setNothingKnownBefore(const QDateTime &date) { m_nothingKnownBefore = date; }

    /// While the clock is doubted nothing up to `until` comes due, nor what is asked for with such a date;
    /// null ends that.
    void setDoubted(const QDateTime &until) { m_doubtedUntil = until; }
    bool isClockDoubted() const { return m_doubtedUntil.isValid(); }

    /// What has a date up to `until` was held up for `duration`, which is no lateness of its own.
    void excuse(const QDateTime &until, std::chrono::milliseconds duration);

    void setSchedules(const QList<Schedule> &schedules);
    const QList<Schedule> &schedules() const { return m_schedules; }
    std::optional<Schedule> schedule(const QString &identifier) const;

    /// The place of a schedule among schedules(); absent for none.
    std::optional<qint32> placeOf(const QString &identifier) const;

    /// The date of the schedule's own occurrence; invalid where there is no such schedule.
    QDateTime currentDate(const QString &identifier) const;

    /// What is to come of the schedule at this place, held back or not.
    QList<Occurrence> pendingOf(qint32 place) const;

    /// What is to be performed at that very moment, held back or not, in the order of the store.
    QList<Occurrence> pendingAt(const QDateTime &moment) const;

    /// What is to be performed after `after`, up to `upTo`, and is not held back; earliest first.
    QList<Occurrence> pendingBetween(const QDateTime &after, const QDateTime &upTo) const;

    /// When there is next something to be performed after that moment that is not held back; absent when
    /// there is nothing.
    std::optional<QDateTime> nextAfter(const QDateTime &moment) const;

    /// What is to come that has this key; absent when nothing has.
    std::optional<Occurrence> pending(const OccurrenceRecord::Key &key) const;

    /// Forgets what the schedules in force, and those that are gone, make needless; true when there was
    /// something.
    bool pruneRecord(const std::function<bool(const QString &identifier)> &isGone);

    /// The date of the earliest occurrence that due will give, which may be past; absent when there is none.
    std::optional<QDateTime> nextDate() const;

    /// The open occurrences whose date has come; when there are none, those that are asked for: what somebody
    /// orders, however often, comes after what is due by its date. Earliest first, in the order of the store
    /// where dates are equal; without those that are held back. `most` of them at most.
    QList<Occurrence> due(qsizetype most = std::numeric_limits<qsizetype>::max()) const;

    /// Holds a due occurrence back, or no more.
    /// @{
    void holdBack(const OccurrenceRecord::Key &key);
    void letGo(const OccurrenceRecord::Key &key);
    /// @}

    /// Whether it is held back, or has a date that is doubted.
    bool isHeldBack(const OccurrenceRecord::Key &key) const;

    /// Whether an occurrence may still have to be performed: it is open or asked for, by the schedules in
    /// force.
    bool isToBePerformed(const OccurrenceRecord::Key &key) const;

    /// How late an occurrence is now, in whole seconds; negative before its date.
    std::chrono::seconds lateness(const Occurrence &occurrence) const;

    /// Between the two everything else waits: for the daemon's own work, or for an agent, which may take its
    /// time on purpose. Nothing is too late by that. What comes due in the same second or meanwhile is judged
    /// from the end of the wait, and what is judged meanwhile as if it were its beginning. Waits within
    /// waits, and those that follow one another closely, are one. A wait of more than a minute, in which the
    /// machine may have slept, excuses nothing.
    void beginWait();
    void endWait();

    /// Whether that is more than a plug-in's time-out (seconds, negative) allows. One that was asked for may
    /// also be five minutes late: its daemon may have had to be started again, but nobody who said "now"
    /// means the next day.
    /// Nor is anything too late by the time for which it was held up.
    bool isTooLate(const Occurrence &occurrence, qint32 timeOut,
                   std::chrono::milliseconds heldUp = std::chrono::milliseconds(0)) const;

    /// How late it may be.
    static std::chrono::milliseconds allowedLateness(const Occurrence &occurrence, qint32 timeOut);

    /// A new occurrence of a schedule for an action that is asked for now, apart from all others of it.
    Occurrence makeOccurrenceNow(const Schedule &schedule) const;

    /// Remembers that `userId` asked for an occurrence.
    void noteAsked(const Occurrence &occurrence, quint32 userId);

    /// Remembers that an occurrence is about to begin.
    void noteBegun(const Occurrence &occurrence, ActingPlace place);

    /// Remembers that one which was about to begin certainly did not: it is as it was before.
    void takeBack(const Occurrence &occurrence);

    /// Remembers how an action ended, and who still has it.
    void noteEnd(const Occurrence &occurrence, const PerformanceOutcome &outcome,
                 std::optional<quint32> handedTo = {});

    /// Remembers what becomes of an occurrence, and who has it while it is handed over.
    void note(const Occurrence &occurrence, OccurrenceState state, std::optional<quint32> handedTo = {});

    /// An occurrence that the agent of `userId` has, told by what an order carries: the bundle's full
    /// path and the date. Of several the one with equal `parameters`, else the first. Absent when that agent
    /// has none such, has had it for longer than an hour, or its schedule was disabled, removed or given
    /// another bundle.
    std::optional<Occurrence> heldByAgent(quint32 userId, const QString &bundlePath, const QDateTime &date,
                                          const QVariantMap &parameters = {}) const;

    /// An occurrence in this state that the agent of `userId` has been handed, by what the order carried.
    /// Unlike heldByAgent it matters neither how long ago that was nor what became of the schedule meanwhile,
    /// and the parameters must be equal: what happened is told, nothing is to be done.
    std::optional<Occurrence> handedOver(quint32 userId, const QString &bundlePath, const QDateTime &date,
                                         const QVariantMap &parameters, OccurrenceState state) const;

    const OccurrenceRecord &record() const { return m_record; }

    /// For what makes no difference to what is to come.
    OccurrenceRecord &record() { return m_record; }

    /// Another record altogether.
    void setRecord(OccurrenceRecord record);

private:
    using Item = PendingOccurrences::Item;

    QList<Occurrence> askedFor() const;
    bool isOpen(const Schedule &schedule) const;
    static Item itemOf(const Schedule &schedule, qint32 place);
    Occurrence occurrenceOf(const Item &item) const;
    QList<Occurrence> occurrencesOf(const QList<Item> &items) const;
    void relist(qint32 place);
    void relistAll();
    void changed(const QString &identifier);
    void hold(const OccurrenceRecord::Key &key, bool isHeldBack);
    qint64 lastDoubted() const;
    void set(const Occurrence &occurrence, const OccurrenceEntry &entry);
    QList<Occurrence> handedOut(quint32 userId, const QString &bundlePath, const QDateTime &date) const;

    const dozely::Clock &m_clock;
    OccurrenceRecord m_record;
    QList<Schedule> m_schedules;
    ScheduleIndex m_index;
    PendingOccurrences m_pending;
    std::vector<bool> m_isListed; // by place: its own occurrence is pending
    QList<SchedulerObserver *> m_observers;
    QSet<OccurrenceRecord::Key> m_heldBack;
    QDateTime m_nothingKnownBefore;
    QDateTime m_doubtedUntil;
    QDateTime m_excusedUntil;
    std::chrono::milliseconds m_excusedFor{0};
    struct Wait {
        QDateTime start;
        QDateTime end;
    };
    Wait m_wait;             // the last that ended
    QDateTime m_presentWait; // the start of the one that goes on
    int m_waits = 0;         // within one another, that go on
};
