// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/performing/PerformanceOutcome.h"
#include "hosts/daemon/LatenessJudge.h"
#include "hosts/daemon/PendingOccurrences.h"
#include "hosts/daemon/ScheduleDates.h"
#include "hosts/daemon/ScheduleIndex.h"

#include <QHash>
#include <QList>
#include <QSet>

#include <functional>
#include <limits>
#include <vector>

namespace dozely
{
class Clock;
} // namespace dozely

class SchedulerObserver;

/// The rules of the daemon: which occurrence is next, which are due, and, by its LatenessJudge, which are too
/// late. Knows the clock and remembers; reads and writes nothing.
///
/// What is to come is kept in the order of its dates, so that one occurrence costs the same search among ten
/// thousand schedules as among ten; who keeps something about schedules is told what changes
/// (SchedulerObserver).
///
/// An occurrence is open until the record has an entry for it. It is told by schedule identifier and date, so
/// neither a restart nor a clock that is set back repeats it, and a schedule with a new date has a new one.
/// One that is asked for has an entry from then on, and is due until that says that it began.
///
/// A schedule that repeats has one open occurrence at a time, the current one, whose date is that of the
/// schedule here: the earliest that the record does not know, later than what is settled (CalendarEntry).
/// What is removed or postponed in advance is passed over; a postponed one is to come beside the current one.
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
    const QDateTime &nothingKnownBefore() const { return m_nothingKnownBefore; }

    /// While the clock is doubted nothing up to `until` comes due, nor what is asked for with such a date;
    /// null ends that.
    void setDoubted(const QDateTime &until);
    bool isClockDoubted() const { return m_doubtedUntil.isValid(); }

    /// What the store has. A schedule that repeats and was not seen before begins at its date, one that was
    /// disabled begins now; what it had before that is nobody's.
    void setSchedules(const QList<Schedule> &schedules);

    /// The same schedules; the date of one that repeats is that of its current occurrence, or, when it has no
    /// more, of its last.
    const QList<Schedule> &schedules() const { return m_schedules; }

    /// One of them as the store has it.
    Schedule stored(qint32 place) const;

    /// Whether the store has had exactly these.
    bool hasStored(const QList<Schedule> &schedules) const;

    /// Whether the schedule has no occurrence any more that nothing became of.
    bool isOver(qint32 place) const;

    /// The system's zone data, or the machine's zone, are others now.
    void readZonesAgain();
    std::optional<Schedule> schedule(const QString &identifier) const;

    /// The place of a schedule among schedules(); absent for none.
    std::optional<qint32> placeOf(const QString &identifier) const;

    /// The date of the schedule's own occurrence; invalid where there is no such schedule.
    QDateTime currentDate(const QString &identifier) const;

    /// Whether an occurrence may have to be told apart yet, whatever became of it: the record must not forget
    /// it.
    bool isNeeded(const QString &identifier, const QDateTime &date) const;

    /// Whether the schedule at this place has an occurrence at that date, still to come, that nothing became
    /// of yet, the current one or a later one.
    bool gives(qint32 place, const QDateTime &date) const;

    /// Whether it may stand for others that came due after it: it is the current one of a schedule that
    /// repeats.
    bool isRunOf(const Occurrence &occurrence) const;

    /// What the current occurrence stands for when its date has come: all that the schedule had from there up
    /// to now and that nothing became of.
    OccurrenceSeries::Run dueRun(const Occurrence &current) const;

    /// The same up to `date`, which may be ahead.
    OccurrenceSeries::Run runUpTo(const Occurrence &current, const QDateTime &date) const;

    /// Of these those before `date`; a count of 0 for none.
    OccurrenceSeries::Run runBefore(const Occurrence &current, const QDateTime &date) const;

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

    /// How late they are, and what is to become of those that are.
    /// @{
    LatenessJudge &lateness() { return m_lateness; }
    const LatenessJudge &lateness() const { return m_lateness; }
    /// @}

    /// A new occurrence of a schedule for an action that is asked for now, apart from all others of it, those
    /// to come included.
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

    /// Remembers that one is to be performed later.
    void notePostponed(const Occurrence &occurrence, const QDateTime &to);

    /// Remembers that occurrences of a schedule that follow one another were missed, or, at somebody's wish,
    /// removed; of a single one that it was skipped.
    void noteRun(const Schedule &schedule, const OccurrenceSeries::Run &run,
                 OccurrenceState state = OccurrenceState::Missed);

    /// Puts an occurrence, and how far its schedule has come, back to what the record had of it before;
    /// absent for nothing.
    void restore(const Occurrence &occurrence, const std::optional<OccurrenceEntry> &former,
                 const std::optional<CalendarEntry> &calendar);

    /// Remembers what becomes of an occurrence, and who has it while it is handed over.
    void note(const Occurrence &occurrence, OccurrenceState state, std::optional<quint32> handedTo = {});

    const OccurrenceRecord &record() const { return m_record; }

    /// For what makes no difference to what is to come.
    OccurrenceRecord &record() { return m_record; }

    /// Another record altogether.
    void setRecord(OccurrenceRecord record);

private:
    using Item = PendingOccurrences::Item;

    QList<Occurrence> askedFor() const;
    Item currentItem(qint32 place) const;
    Occurrence occurrenceOf(const Item &item) const;
    QList<Occurrence> occurrencesOf(const QList<Item> &items) const;
    QList<Item> itemsOf(qint32 place) const;
    ScheduleDates datesOf(const Schedule &schedule) const;
    const dozely::ZoneClock &clockOf(const Schedule &schedule) const;
    QDateTime settledOf(qint32 place) const;
    bool isToCome(qint32 place);
    bool roll(qint32 place, CalendarEntry calendar);
    void relist(qint32 place);
    void relistAll();
    void changed(const QString &identifier);
    void changedAt(qint32 place);
    void hold(const OccurrenceRecord::Key &key, bool isHeldBack);
    qint64 lastDoubted() const;
    void set(const Occurrence &occurrence, const OccurrenceEntry &entry);
    void settle(const QString &identifier, const QDateTime &upTo);

    const dozely::Clock &m_clock;
    OccurrenceRecord m_record;
    QList<Schedule> m_schedules;
    ScheduleIndex m_index;
    PendingOccurrences m_pending;
    std::vector<bool> m_isListed;           // by place: its own occurrence is pending
    QMultiHash<qint32, Item> m_postponed;   // by place
    QHash<qint32, QDateTime> m_storedDates; // by place, of those that repeat
    QSet<qint32> m_resuming;                // places of what begins again once the clock can be believed
    mutable QHash<QString, dozely::ZoneClock> m_zones; // by the name in the store
    QList<SchedulerObserver *> m_observers;
    QSet<OccurrenceRecord::Key> m_heldBack;
    QDateTime m_nothingKnownBefore;
    QDateTime m_doubtedUntil;
    LatenessJudge m_lateness;
};
