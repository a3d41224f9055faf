// SPDX-License-Identifier: MIT
//
// Whatever happens to a machine, each occurrence is performed, skipped, missed or removed, exactly one of
// these, and the record says which. Random sequences of what may happen are played to the daemon's rules,
// with a disk that has what was saved and nothing else.
//
// DOZELY_SEQUENCES_SEED takes another seed than the fixed one, DOZELY_SEQUENCES another number than 10,000. A
// sequence that fails names its own seed, with which a number of 1 plays it alone.
#include "hosts/daemon/Scheduler.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "unit/hosts/daemon/RecurringFixture.h"

#include <random>

using namespace std::chrono_literals;

using Key = OccurrenceRecord::Key;

namespace
{
/// What a schedule is expected to have, and had, since its rule, its zone or the store's wish last changed.
struct Epoch {
    Schedule schedule; ///< As the store had it.
    QByteArray zone;   ///< The machine's.
    QDateTime from;    ///< Later than that; invalid for one that takes place once.
    QDateTime upTo;    ///< The latest time at which the daemon had done all that was due.
};

class Machine
{
public:
    explicit Machine(quint64 seed) : m_random(seed) { makeStore(); }

    /// Plays a sequence; why it is not as it has to be, empty when it is.
    std::string play()
    {
        start();
        const int events = 10 + dice(20);
        for (int i = 0; i < events && m_fault.empty(); ++i)
            letSomethingHappen();
        if (m_fault.empty())
            end();
        return m_fault;
    }

private:
    int dice(int sides) { return static_cast<int>(m_random() % static_cast<quint64>(sides)); }
    bool happens(int percent) { return dice(100) < percent; }
    QDateTime now() const { return m_clock.currentDate(); }

    void fail(const QString &what, const Key &key)
    {
        if (m_fault.empty())
            m_fault = QString("%1: %2 at %3, by the clock %4")
                          .arg(what, key.first, key.second.toString(Qt::ISODateWithMs),
                               now().toString(Qt::ISODateWithMs))
                          .toStdString();
    }

    // The store

    Schedule makeSchedule(const QString &identifier)
    {
        static const QStringList rules{"FREQ=SECONDLY;INTERVAL=97",
                                       "FREQ=MINUTELY;INTERVAL=5",
                                       "FREQ=MINUTELY;INTERVAL=25;BYSECOND=0,30",
                                       "FREQ=HOURLY",
                                       "FREQ=DAILY",
                                       "FREQ=DAILY;COUNT=3",
                                       "FREQ=WEEKLY;BYDAY=MO,TU,SA;BYHOUR=2,14"};
        const QDateTime first =
            QDateTime::fromSecsSinceEpoch(now().toSecsSinceEpoch() + dice(3600) - 600, Qt::UTC);
        Schedule schedule = Recurring::schedule(identifier, rules[dice(int(rules.size()))], first);
        if (happens(15))
            schedule.recurrence.reset();
        else if (happens(50))
            schedule.timeZone.clear();
        const auto policies = {MissedPolicy::PlugIn, MissedPolicy::Skip, MissedPolicy::RunOnce};
        schedule.missedPolicy = *(policies.begin() + dice(3));
        if (happens(30))
            schedule.missedLimit = std::chrono::seconds(dice(7200));
        if (happens(40))
            schedule.overlapPolicy = happens(50) ? OverlapPolicy::Run : OverlapPolicy::Skip;
        return schedule;
    }

    void makeStore()
    {
        for (int i = 1 + dice(4); i > 0; --i)
            m_store += makeSchedule(QString("s%1").arg(++m_made));
    }

    void changeStore()
    {
        Schedule &schedule = m_store[dice(int(m_store.size()))];
        switch (dice(4)) {
        case 0:
            m_store += makeSchedule(QString("s%1").arg(++m_made));
            break;
        case 1:
            if (m_store.size() > 1)
                m_store.removeAt(dice(int(m_store.size())));
            break;
        case 2:
            schedule.isEnabled = !schedule.isEnabled;
            break;
        default:
            schedule = makeSchedule(schedule.identifier);
        }
        if (m_scheduler)
            readStore();
    }

    void readStore()
    {
        m_scheduler->setSchedules(m_store);
        for (const Key &key : m_scheduler->record().postponed()) { // as the keeper does
            const auto schedule = m_scheduler->schedule(key.first);
            if (schedule &&
                (!schedule->isEnabled || (!schedule->recurrence && schedule->date != key.second))) {
                m_scheduler->note({*schedule, key.second}, OccurrenceState::Removed);
                cover(key);
            }
        }
        const auto isGone = [this](const QString &identifier) { return !m_scheduler->placeOf(identifier); };
        save(); // what the disk does not have yet is not dropped from memory
        m_scheduler->pruneRecord(isGone);
        m_rows.removeIf([&](const auto &row) { return isGone(row.key().first); });
        m_calendars.removeIf([&](const auto &row) { return isGone(row.key()); });
        m_covered.removeIf([&](const auto &row) { return isGone(row.key().first); });
        m_epochs.removeIf([&](const auto &epoch) { return isGone(epoch.key()); });
        noteEpochs();
    }

    void noteEpochs()
    {
        for (const Schedule &schedule : std::as_const(m_store)) {
            const QByteArray zone = schedule.timeZone.isEmpty() ? qgetenv("TZ") : QByteArray();
            Epoch &epoch = m_epochs[schedule.identifier];
            if (epoch.schedule == schedule && epoch.zone == zone)
                continue;
            const auto calendar = m_scheduler->record().calendar(schedule.identifier);
            epoch = {schedule, zone, {}, {}};
            if (schedule.recurrence)
                epoch.from = std::max(calendar->settled, schedule.date.addSecs(-1));
            else if (calendar)
                epoch.from = calendar->settled;
        }
    }

    // The disk

    void save()
    {
        const auto changes = m_scheduler->record().changes();
        for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
            if (*change)
                m_rows.insert(change.key(), **change);
            else
                m_rows.remove(change.key());
        }
        m_calendars.insert(m_scheduler->record().calendarChanges());
        m_scheduler->record().pruneChanged(
            [this](const QString &identifier, const QDateTime &date) {
                return m_scheduler->isNeeded(identifier, date);
            },
            now().addSecs(-3600));
        m_scheduler->record().forgetChanges();
        m_log.insert(std::exchange(m_lines, {}));
        for (const Key &key : std::exchange(m_coveredSoon, {})) {
            if (++m_covered[key] > 1)
                fail("twice", key);
        }
    }

    /// What the database has in memory from the start, and what the keeper learns of new schedules.
    OccurrenceRecord load() const
    {
        OccurrenceRecord record;
        for (auto calendar = m_calendars.cbegin(); calendar != m_calendars.cend(); ++calendar)
            record.restoreCalendar(calendar.key(), *calendar);
        QHash<QString, Schedule> schedules;
        for (const Schedule &schedule : m_store)
            schedules.insert(schedule.identifier, schedule);
        for (auto row = m_rows.cbegin(); row != m_rows.cend(); ++row) {
            const auto calendar = record.calendar(row.key().first);
            const Schedule schedule = schedules.value(row.key().first);
            const bool isCurrent = !schedule.recurrence && schedule.date == row.key().second;
            const bool isNew = schedule.recurrence && !calendar && row.key().second >= schedule.date;
            const bool isAhead = calendar && row.key().second > calendar->settled;
            if (!row->isOver() || isCurrent || isNew || isAhead)
                record.restore(row.key(), *row);
        }
        return record;
    }

    // The daemon

    void start()
    {
        OccurrenceRecord record = load();
        for (const Key &key : record.interruptBegun(
                 [this](const Key &key, const OccurrenceEntry &) { return m_acting.contains(key); }))
            m_log.insert(key, OccurrenceState::Interrupted);
        m_scheduler = std::make_unique<Scheduler>(m_clock, record);
        readStore();
    }

    void kill()
    {
        m_coveredSoon.clear();
        m_lines.clear();
        m_waiting.clear();
        m_scheduler.reset();
    }

    void cover(const Key &key) { m_coveredSoon += key; }

    /// What a run stands for: as many as it says, and none of which anything became.
    void coverRun(const Schedule &schedule, const OccurrenceSeries::Run &run, OccurrenceState state)
    {
        m_lines.insert({schedule.identifier, run.last}, run.count == 1 ? OccurrenceState::Skipped : state);
        if (!schedule.recurrence)
            return cover({schedule.identifier, run.last});
        if (run.count == 1) // it may be one that the rule gave before it was changed
            return cover({schedule.identifier, run.first});
        const auto series = OccurrenceSeries::of(*schedule.recurrence, schedule.zone());
        qint64 count = 0;
        for (auto date = series->after(run.first.addMSecs(-1)); date && *date <= run.last;
             date = series->after(*date)) {
            const Key key(schedule.identifier, *date);
            if (m_covered.value(key) > 0 || m_rows.value(key).state == OccurrenceState::Postponed ||
                m_coveredSoon.contains(key))
                continue;
            ++count;
            cover(key);
        }
        if (run.isCountExact ? count != run.count : count < run.count)
            fail(QString("a run of %1 is said to be one of %2").arg(count).arg(run.count),
                 {schedule.identifier, run.first});
    }

    bool isGoingOn(const QString &identifier) const
    {
        return std::any_of(m_acting.keyBegin(), m_acting.keyEnd(),
                           [&](const Key &key) { return key.first == identifier; }) ||
               std::any_of(m_waiting.cbegin(), m_waiting.cend(), [&](const Occurrence &occurrence) {
                   return occurrence.schedule.identifier == identifier;
               });
    }

    /// What OccurrencePerformer::decide does.
    void drain()
    {
        for (int turn = 0; m_scheduler && m_fault.empty(); ++turn) {
            if (turn > 2000)
                return fail("it never ends", {});
            const QList<Occurrence> due = m_scheduler->due(1000);
            if (due.isEmpty())
                break;
            QList<Occurrence> begun;
            decide(due, begun);
            if (happens(2))
                return kill();
            save();
            if (happens(2))
                return kill(); // what has begun is interrupted
            for (const Occurrence &occurrence : std::as_const(begun))
                perform(occurrence);
        }
        for (Epoch &epoch : m_epochs) {
            if (m_scheduler && (!epoch.upTo.isValid() || epoch.upTo < now()))
                epoch.upTo = now();
        }
    }

    void decide(const QList<Occurrence> &due, QList<Occurrence> &begun)
    {
        for (const Occurrence &occurrence : due) {
            const QString &identifier = occurrence.schedule.identifier;
            const auto verdict = m_scheduler->lateness().judge(
                occurrence, MissedRule::of(occurrence.schedule, {}, occurrence.isAskedFor ? -300 : -20));
            const bool isAnotherBegun =
                std::any_of(begun.cbegin(), begun.cend(),
                            [&](const Occurrence &other) { return other.schedule.identifier == identifier; });
            if (verdict.performed && occurrence.skipsOverlap() && (isAnotherBegun || isGoingOn(identifier))) {
                const auto run = m_scheduler->dueRun(occurrence);
                coverRun(m_scheduler->stored(*m_scheduler->placeOf(identifier)), run,
                         OccurrenceState::Missed);
                m_scheduler->noteRun(occurrence.schedule, run);
                continue;
            }
            if (verdict.missed.count > 0) {
                coverRun(m_scheduler->stored(*m_scheduler->placeOf(identifier)), verdict.missed,
                         OccurrenceState::Missed);
                m_scheduler->noteRun(occurrence.schedule, verdict.missed);
            }
            if (!verdict.performed)
                continue;
            m_scheduler->noteBegun(*verdict.performed, ActingPlace::Daemon);
            cover({identifier, verdict.performed->date});
            m_lines.insert({identifier, verdict.performed->date}, OccurrenceState::Begun);
            begun += *verdict.performed;
        }
    }

    void perform(const Occurrence &occurrence)
    {
        const Key key(occurrence.schedule.identifier, occurrence.date);
        if (happens(10)) { // it will turn out that its agent cannot be reached
            m_waiting += occurrence;
            return;
        }
        if (m_performed.contains(key))
            fail("performed twice", key);
        m_performed.insert(key);
        m_acting.insert(key, now().addSecs(dice(40)));
    }

    void takeBack()
    {
        for (const Occurrence &occurrence : std::exchange(m_waiting, {})) {
            const Key key(occurrence.schedule.identifier, occurrence.date);
            if (!m_scheduler->placeOf(key.first))
                continue;
            m_scheduler->takeBack(occurrence);
            save();
            m_covered.remove(key);
            m_log.remove(key);
        }
    }

    void letActionsEnd()
    {
        if (m_scheduler && (m_isEnding || happens(50)))
            takeBack();
        for (const Key &key : m_acting.keys()) {
            if (m_acting.value(key) > now() || !m_scheduler)
                continue; // else the next daemon finds what became of it
            m_acting.remove(key);
            const auto schedule = m_scheduler->schedule(key.first);
            if (!schedule)
                continue;
            m_scheduler->note({*schedule, key.second}, OccurrenceState::Done);
            m_lines.insert(key, OccurrenceState::Done);
        }
        if (m_scheduler)
            save();
    }

    void wish()
    {
        const auto place = dice(int(m_scheduler->schedules().size()));
        const QList<Occurrence> pending = m_scheduler->pendingOf(place);
        if (pending.isEmpty())
            return;
        const Occurrence occurrence = pending.at(dice(int(pending.size())));
        const OccurrenceSeries::Run run = m_scheduler->dueRun(occurrence);
        const Schedule stored = m_scheduler->stored(place);
        if (happens(40)) {
            coverRun(stored, run, OccurrenceState::Removed);
            m_lines.insert({stored.identifier, run.last}, OccurrenceState::Removed);
            m_scheduler->noteRun(occurrence.schedule, run, OccurrenceState::Removed);
        } else if (happens(50) && stored.recurrence) {
            QDateTime ahead = occurrence.moment().addSecs(1 + dice(10));
            for (int i = 0; i < 100 && !m_scheduler->gives(place, ahead); ++i)
                ahead = ahead.addSecs(1);
            if (ahead <= now() || !m_scheduler->gives(place, ahead))
                return;
            cover({stored.identifier, ahead});
            m_lines.insert({stored.identifier, ahead}, OccurrenceState::Removed);
            m_scheduler->note({stored, ahead}, OccurrenceState::Removed);
        } else {
            Occurrence latest = occurrence;
            latest.date = run.last;
            const auto earlier = m_scheduler->runBefore(occurrence, run.last);
            const qint64 second = std::max(latest.moment(), now()).toMSecsSinceEpoch() / 1000;
            m_scheduler->notePostponed(latest,
                                       QDateTime::fromSecsSinceEpoch(second + 1 + dice(600), Qt::UTC));
            if (earlier.count > 0) {
                coverRun(stored, earlier, OccurrenceState::Missed);
                m_scheduler->noteRun(occurrence.schedule, earlier);
            }
        }
        save();
    }

    void letSomethingHappen()
    {
        static const QList<QByteArray> zones{"Europe/Paris", "America/New_York", "Asia/Kathmandu", "UTC"};
        switch (dice(12)) {
        case 0:
            m_clock.sleep(std::chrono::seconds(dice(100000)));
            break;
        case 1:
            m_clock.jumpTo(now().addSecs(-dice(20000)));
            break;
        case 2:
            m_clock.jumpTo(now().addSecs(dice(20000)));
            break;
        case 3:
            qputenv("TZ", zones[dice(int(zones.size()))]);
            if (m_scheduler) {
                m_scheduler->readZonesAgain();
                save();
                noteEpochs();
            }
            break;
        case 4:
            kill();
            break;
        case 5:
            changeStore();
            break;
        case 6:
        case 7:
            if (m_scheduler)
                wish();
            break;
        default: // the next thing comes due, or time passes
            if (const auto next = m_scheduler ? m_scheduler->nextDate() : std::nullopt;
                next && *next > now() && happens(80))
                m_clock.jumpTo(next->addMSecs(dice(500)));
            else
                m_clock.advance(std::chrono::milliseconds(dice(30000)));
        }
        letActionsEnd();
        if (!m_scheduler && happens(50))
            start();
        drain();
    }

    void end()
    {
        m_isEnding = true;
        for (int i = 0; i < 100 && m_fault.empty(); ++i) {
            if (!m_scheduler)
                start();
            letActionsEnd();
            drain();
            if (m_scheduler && m_scheduler->due().isEmpty() && m_waiting.isEmpty())
                break;
        }
        m_clock.advance(1min);
        if (!m_scheduler)
            return; // killed again and again
        letActionsEnd();
        for (auto epoch = m_epochs.cbegin(); epoch != m_epochs.cend() && m_fault.empty(); ++epoch)
            check(*epoch);
        compareLogAndRecord();
    }

    /// All that was due of a schedule is covered, or still postponed.
    void check(const Epoch &epoch)
    {
        const Schedule &schedule = epoch.schedule;
        if (!schedule.isEnabled || !epoch.upTo.isValid())
            return;
        const auto isDecided = [&](const QDateTime &date) {
            const Key key(schedule.identifier, date);
            const bool isToComeAgain =
                date > now() && m_scheduler->pending(key); // taken back, by an earlier clock
            return m_covered.value(key) == 1 || isToComeAgain ||
                   m_rows.value(key).state == OccurrenceState::Postponed;
        };
        if (!schedule.recurrence) {
            const bool isExpected = !epoch.from.isValid() || schedule.date > epoch.from;
            if (isExpected && schedule.date <= epoch.upTo && !isDecided(schedule.date))
                fail("nothing became of what takes place once", {schedule.identifier, schedule.date});
            return;
        }
        const auto series = OccurrenceSeries::of(*schedule.recurrence, schedule.zone());
        for (auto date = series->after(epoch.from); date && *date <= epoch.upTo;
             date = series->after(*date)) {
            if (!isDecided(*date))
                return fail("nothing became of it", {schedule.identifier, *date});
        }
    }

    void compareLogAndRecord()
    {
        for (auto line = m_log.cbegin(); line != m_log.cend(); ++line) {
            const auto row = m_rows.constFind(line.key());
            if (row == m_rows.cend() && !m_covered.contains(line.key()))
                continue; // the daemon was killed before it was on disk, or the schedule is gone
            const bool hasBegun = *line == OccurrenceState::Begun || *line == OccurrenceState::Interrupted ||
                                  *line == OccurrenceState::Done;
            if (row == m_rows.cend())
                fail("the log has what the record has not", line.key());
            else if (hasBegun != row->begun.isValid() && row->state != OccurrenceState::Removed)
                fail("log and record tell different things", line.key());
        }
        for (auto row = m_rows.cbegin(); row != m_rows.cend(); ++row) {
            if (row->isOver() && m_covered.value(row.key()) != 1 && m_epochs.contains(row.key().first))
                fail("the record has what nobody told", row.key());
        }
    }

    std::mt19937_64 m_random;
    FakeClock m_clock{QDateTime({2026, 3, 27}, {22, 0}, Qt::UTC)}; // a change of clocks is near
    QList<Schedule> m_store;
    int m_made = 0;
    QHash<Key, OccurrenceEntry> m_rows; // the disk
    QHash<QString, CalendarEntry> m_calendars;
    std::unique_ptr<Scheduler> m_scheduler; // the daemon's; null while there is none
    QHash<Key, QDateTime> m_acting;         // until when
    QList<Occurrence> m_waiting;            // recorded as begun, to be taken back
    QSet<Key> m_performed;
    QList<Key> m_coveredSoon; // once it is saved
    QHash<Key, int> m_covered;
    QHash<Key, OccurrenceState> m_log;
    QHash<Key, OccurrenceState> m_lines; // for the log, once it is saved
    QHash<QString, Epoch> m_epochs;
    bool m_isEnding = false;
    std::string m_fault;
};
} // namespace

/// In parts, each of which is soon played also on a machine that has much else to do.
class RandomSequences : public testing::TestWithParam<int>
{
public:
    static constexpr int parts = 8;
};

TEST_P(RandomSequences, OfEachOccurrenceExactlyOneThingBecomes)
{
    constexpr quint64 usualSeed = 17;
    const bool isGiven = qEnvironmentVariableIsSet("DOZELY_SEQUENCES_SEED");
    const quint64 seed = isGiven ? qEnvironmentVariable("DOZELY_SEQUENCES_SEED").toULongLong() : usualSeed;
    const int count = qEnvironmentVariableIsSet("DOZELY_SEQUENCES")
                          ? qEnvironmentVariableIntValue("DOZELY_SEQUENCES")
                          : 10'000;
    int faults = 0;
    for (int i = GetParam(); i < count && faults < 5; i += parts) {
        qputenv("TZ", "Europe/Paris");
        const quint64 own = seed + static_cast<quint64>(i);
        const std::string fault = Machine(own).play();
        EXPECT_EQ(fault, "") << "DOZELY_SEQUENCES_SEED=" << own << " DOZELY_SEQUENCES=1";
        faults += fault.empty() ? 0 : 1;
    }
}

INSTANTIATE_TEST_SUITE_P(Parts, RandomSequences, testing::Range(0, RandomSequences::parts));
