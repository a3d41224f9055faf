// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/OccurrenceSeries.h"
#include "hosts/common/performing/PerformanceOutcome.h"
#include "hosts/common/schedules/Schedule.h"
#include "hosts/daemon/MissedRule.h"
#include "hosts/daemon/OccurrenceRecord.h"
#include "hosts/daemon/PendingOccurrences.h"
#include "hosts/daemon/ScheduleDates.h"
#include "hosts/daemon/ScheduleIndex.h"

#include <QHash>
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
    bool mayHaveRun = false;    ///< It fell due in a time of which nothing is known.
    bool isAskedFor = false;    ///< By hand, apart from all others of the schedule.
    QDateTime postponedTo = {}; ///< UTC; invalid for one that is not postponed.

    /// When it is to be performed, UTC: its date, or what it is postponed to.
    const QDateTime &moment() const { return postponedTo.isValid() ? postponedTo : date; }

    /// Whether it is not to be performed while another action of the schedule goes on. What is asked for is,
    /// and so is what a schedule that does not repeat has, unless it says otherwise.
    bool skipsOverlap() const;

    /// The moment in the schedule's time zone: what plug-ins and agents are told, and tell it by.
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

    /// What has a date up to `until` was held up for `duration`, which is no lateness of its own.
    void excuse(const QDateTime &until, std::chrono::milliseconds duration);

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

    /// How late an occurrence is now, in whole seconds; negative before its date.
    std::chrono::seconds lateness(const Occurrence &occurrence) const;

    /// Between the two everything else waits: for the daemon's own work, or for an agent, which may take its
    /// time on purpose. Nothing is too late by that. What comes due in the same second or meanwhile is judged
    /// from the end of the wait, and what is judged meanwhile as if it were its beginning. Waits within
    /// waits, and those that follow one another closely, are one. A wait of more than a minute, in which the
    /// machine may have slept, excuses nothing.
    void beginWait();
    void endWait();

    /// What is to become of one that is due: of several that a schedule has missed, all at once.
    struct Verdict {
        std::optional<Occurrence> performed = {}; ///< Absent when none is.
        OccurrenceSeries::Run missed = {};        ///< Too late; a count of 0 for none.
    };
    /// `heldUp` is the time for which `due` was held up.
    Verdict judge(const Occurrence &due, const MissedRule &rule,
                  std::chrono::milliseconds heldUp = std::chrono::milliseconds(0)) const;

    /// Whether that is more than a plug-in's time-out (seconds, negative) allows. One that was asked for may
    /// also be five minutes late: its daemon may have had to be started again, but nobody who said "now"
    /// means the next day.
    /// Nor is anything too late by the time for which it was held up.
    bool isTooLate(const Occurrence &occurrence, qint32 timeOut,
                   std::chrono::milliseconds heldUp = std::chrono::milliseconds(0)) const;

    /// How late it may be; absent for however late.
    static std::optional<std::chrono::milliseconds> allowedLateness(const Occurrence &occurrence,
                                                                    const MissedRule &rule);

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
    QList<Occurrence> handedOut(quint32 userId, const QString &bundlePath, const QDateTime &date) const;
    bool isRunOf(const Occurrence &occurrence) const;
    bool isSuperseded(const Occurrence &due, const QDateTime &moment) const;
    bool isLaterThan(std::optional<std::chrono::milliseconds> allowed, const Occurrence &occurrence,
                     std::chrono::milliseconds heldUp) const;
    QDateTime latestTooLate(const Occurrence &first, std::chrono::milliseconds allowed) const;

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
