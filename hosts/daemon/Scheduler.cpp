// SPDX-License-Identifier: MIT
#include "hosts/daemon/Scheduler.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/common/orders/OrderPermissions.h"
#include "hosts/daemon/SchedulerObserver.h"

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
/// An agent that comes back later speaks of something that nobody expects any more.
constexpr auto longestHandOver = std::chrono::hours(1);

/// Later than any date that a schedule has.
const QDateTime endOfTime({9999, 12, 31}, {23, 59, 59}, Qt::UTC);

/// An action that is asked for is dated with one of so many seconds from now on, unless the rule of the
/// schedule gives each of them.
constexpr int secondsTried = 60;

/// Time for the daemon, or the machine, to be started again.
constexpr std::chrono::milliseconds shortestTimeOutOfAsked = std::chrono::minutes(5);

/// Waits that follow one another more closely than this are one: the daemon did nothing else in between.
constexpr qint64 longestPause = 1000; // milliseconds

/// Several requests that each take the longest time allowed; not a machine that slept.
constexpr qint64 longestWait = 60'000; // milliseconds

/// Whether an agent may have what is in this state.
bool mayBeHeld(OccurrenceState state)
{
    return state == OccurrenceState::Done || state == OccurrenceState::Unknown;
}

bool isShort(const QDateTime &start, const QDateTime &end)
{
    return start.msecsTo(end) <= longestWait;
}

/// Dates are whole seconds, and nothing begins to wait at the very millisecond.
QDateTime startOfSecond(const QDateTime &date)
{
    return QDateTime::fromSecsSinceEpoch(date.toSecsSinceEpoch(), Qt::UTC);
}
} // namespace

QDateTime Occurrence::calendarDate() const
{
    return schedule.recurrence ? moment().toTimeZone(schedule.zone())
                               : dozely::calendarDate(moment(), schedule.timeZone);
}

bool Occurrence::skipsOverlap() const
{
    const auto usual = schedule.recurrence ? OverlapPolicy::Skip : OverlapPolicy::Run;
    return !isAskedFor && schedule.overlapPolicy.value_or(usual) == OverlapPolicy::Skip;
}

Scheduler::Scheduler(const Clock &clock, OccurrenceRecord record)
    : m_clock(clock), m_record(std::move(record))
{
}

void Scheduler::setSchedules(const QList<Schedule> &schedules)
{
    m_schedules = schedules;
    m_storedDates.clear();
    for (qint32 place = 0; place < m_schedules.size(); ++place) {
        if (m_schedules.at(place).recurrence)
            m_storedDates.insert(place, m_schedules.at(place).date);
    }
    m_index.rebuild(m_schedules);
    relistAll();
}

void Scheduler::setRecord(OccurrenceRecord record)
{
    m_record = std::move(record);
    relistAll();
}

Schedule Scheduler::stored(qint32 place) const
{
    Schedule schedule = m_schedules.at(place);
    if (schedule.recurrence)
        schedule.date = m_storedDates.value(place);
    return schedule;
}

bool Scheduler::hasStored(const QList<Schedule> &schedules) const
{
    if (schedules.size() != m_schedules.size())
        return false;
    for (qint32 place = 0; place < schedules.size(); ++place) {
        const bool repeats = m_schedules.at(place).recurrence.has_value();
        if (repeats ? schedules.at(place) != stored(place) : schedules.at(place) != m_schedules.at(place))
            return false;
    }
    return true;
}

bool Scheduler::isOver(qint32 place) const
{
    const Schedule &schedule = m_schedules.at(place);
    if (!m_record.postponed(schedule.identifier).isEmpty())
        return false;
    if (schedule.recurrence)
        return schedule.isEnabled && !m_isListed[static_cast<size_t>(place)] && !m_resuming.contains(place);
    const auto entry = m_record.find(schedule.identifier, schedule.date);
    return entry && entry->isOver();
}

void Scheduler::setDoubted(const QDateTime &until)
{
    m_doubtedUntil = until;
    if (until.isValid())
        return;
    for (const qint32 place : std::exchange(m_resuming, {}))
        changedAt(place);
}

void Scheduler::readZonesAgain()
{
    m_zones.clear();
    const QList<qint32> places = m_storedDates.keys();
    for (const qint32 place : places)
        changedAt(place);
}

std::optional<qint32> Scheduler::placeOf(const QString &identifier) const
{
    return m_index.find(m_schedules, identifier);
}

std::optional<Schedule> Scheduler::schedule(const QString &identifier) const
{
    const auto place = placeOf(identifier);
    return place ? std::optional(m_schedules.at(*place)) : std::nullopt;
}

QDateTime Scheduler::currentDate(const QString &identifier) const
{
    const auto place = placeOf(identifier);
    return place ? m_schedules.at(*place).date : QDateTime();
}

bool Scheduler::isNeeded(const QString &identifier, const QDateTime &date) const
{
    const auto place = placeOf(identifier);
    if (!place)
        return false;
    return date == m_schedules.at(*place).date ||
           (m_schedules.at(*place).recurrence && date > settledOf(*place));
}

bool Scheduler::pruneRecord(const std::function<bool(const QString &)> &isGone)
{
    return m_record.prune(
        [this](const QString &identifier, const QDateTime &date) { return isNeeded(identifier, date); },
        isGone);
}

/// The clock of a schedule's zone, which takes a while to make.
const ZoneClock &Scheduler::clockOf(const Schedule &schedule) const
{
    auto zone = m_zones.find(schedule.timeZone);
    if (zone == m_zones.end())
        zone = m_zones.insert(schedule.timeZone, ZoneClock(schedule.zone()));
    return *zone;
}

ScheduleDates Scheduler::datesOf(const Schedule &schedule) const
{
    return ScheduleDates(schedule, clockOf(schedule), m_record);
}

/// Up to then nothing comes due of a schedule that repeats.
QDateTime Scheduler::settledOf(qint32 place) const
{
    const QDateTime beforeFirst = m_storedDates.value(place).addSecs(-1);
    const auto calendar = m_record.calendar(m_schedules.at(place).identifier);
    return calendar ? std::max(calendar->settled, beforeFirst) : beforeFirst;
}

bool Scheduler::gives(qint32 place, const QDateTime &date) const
{
    const Schedule &schedule = m_schedules.at(place);
    return schedule.recurrence && date > settledOf(place) && !m_record.find(schedule.identifier, date) &&
           datesOf(schedule).gives(date);
}

/// Whether the schedule's own occurrence is to come: nothing became of it yet and the schedule is enabled.
bool Scheduler::isToCome(qint32 place)
{
    const Schedule &schedule = m_schedules.at(place);
    auto calendar = m_record.calendar(schedule.identifier);
    if (!schedule.recurrence)
        return schedule.isEnabled && !m_record.find(schedule.identifier, schedule.date) &&
               (!calendar || schedule.date > calendar->settled);
    if (!calendar) {
        const QDateTime known = std::min(settledOf(place), m_clock.currentDate());
        calendar = {m_nothingKnownBefore.isValid() ? std::max(known, m_nothingKnownBefore) : known};
    }
    return roll(place, *calendar);
}

/// Gives a schedule that repeats the date of its current occurrence; false when it has none.
bool Scheduler::roll(qint32 place, CalendarEntry calendar)
{
    Schedule &schedule = m_schedules[place];
    const QDateTime now = m_clock.currentDate();
    m_resuming.remove(place);
    if (calendar.isPaused && schedule.isEnabled && isClockDoubted())
        m_resuming.insert(place);
    else if (calendar.isPaused && schedule.isEnabled)
        calendar = {std::max(calendar.settled, now)};
    else if (!schedule.isEnabled)
        calendar.isPaused = true;
    const ScheduleDates dates = datesOf(schedule);
    const QDateTime from = std::max(calendar.settled, m_storedDates.value(place).addSecs(-1));
    const auto [next, upTo] = dates.currentAfter(from, now);
    if (upTo > from)
        calendar.settled = upTo;
    m_record.setCalendar(schedule.identifier, calendar);
    schedule.date = next ? *next : dates.upTo(endOfTime).value_or(m_storedDates.value(place));
    return next && !calendar.isPaused;
}

Scheduler::Item Scheduler::currentItem(qint32 place) const
{
    const qint64 date = m_schedules.at(place).date.toMSecsSinceEpoch();
    return {date, place, date};
}

Occurrence Scheduler::occurrenceOf(const Item &item) const
{
    const QDateTime date = QDateTime::fromMSecsSinceEpoch(item.date, Qt::UTC);
    Occurrence occurrence{m_schedules.at(item.place), date};
    occurrence.schedule.date = date;
    const auto entry = m_record.find(occurrence.schedule.identifier, date);
    if (entry)
        occurrence.postponedTo = entry->postponedTo;
    else
        occurrence.mayHaveRun =
            !occurrence.schedule.recurrence && m_nothingKnownBefore.isValid() && date < m_nothingKnownBefore;
    return occurrence;
}

QList<Occurrence> Scheduler::occurrencesOf(const QList<Item> &items) const
{
    QList<Occurrence> occurrences;
    occurrences.reserve(items.size());
    for (const Item &item : items)
        occurrences += occurrenceOf(item);
    return occurrences;
}

/// Puts what is to come of a schedule where it belongs.
void Scheduler::relist(qint32 place)
{
    const auto listed = static_cast<size_t>(place);
    if (m_isListed[listed])
        m_pending.remove(currentItem(place));
    for (const Item &item : m_postponed.values(place))
        m_pending.remove(item);
    m_postponed.remove(place);

    m_isListed[listed] = isToCome(place);
    const Schedule &schedule = m_schedules.at(place);
    if (m_isListed[listed])
        m_pending.insert(currentItem(place), m_heldBack.contains({schedule.identifier, schedule.date}));
    if (!schedule.isEnabled)
        return;
    for (const QDateTime &date : m_record.postponed(schedule.identifier)) {
        if (!schedule.recurrence && date != schedule.date)
            continue;
        const QDateTime moment = m_record.find(schedule.identifier, date)->postponedTo;
        const Item item{moment.toMSecsSinceEpoch(), place, date.toMSecsSinceEpoch()};
        m_postponed.insert(place, item);
        m_pending.insert(item, m_heldBack.contains({schedule.identifier, date}));
    }
}

void Scheduler::relistAll()
{
    m_pending.clear();
    m_postponed.clear();
    m_resuming.clear();
    m_zones.clear();
    m_isListed.assign(static_cast<size_t>(m_schedules.size()), false);
    for (qint32 place = 0; place < m_schedules.size(); ++place)
        relist(place);
    for (SchedulerObserver *const observer : std::as_const(m_observers))
        observer->schedulesReplaced();
}

/// What the record says of a schedule is another now.
void Scheduler::changed(const QString &identifier)
{
    if (const auto place = placeOf(identifier))
        changedAt(*place);
}

void Scheduler::changedAt(qint32 place)
{
    relist(place);
    for (SchedulerObserver *const observer : std::as_const(m_observers))
        observer->scheduleChanged(place);
}

QList<Scheduler::Item> Scheduler::itemsOf(qint32 place) const
{
    QList<Item> items = m_postponed.values(place);
    if (m_isListed[static_cast<size_t>(place)])
        items += currentItem(place);
    std::sort(items.begin(), items.end());
    return items;
}

QList<Occurrence> Scheduler::pendingOf(qint32 place) const
{
    return occurrencesOf(itemsOf(place));
}

std::optional<Occurrence> Scheduler::pending(const OccurrenceRecord::Key &key) const
{
    const auto place = placeOf(key.first);
    if (!place)
        return {};
    for (const Occurrence &occurrence : pendingOf(*place)) {
        if (occurrence.date == key.second)
            return occurrence;
    }
    return {};
}

QList<Occurrence> Scheduler::pendingAt(const QDateTime &moment) const
{
    return occurrencesOf(m_pending.at(moment.toMSecsSinceEpoch()));
}

QList<Occurrence> Scheduler::pendingBetween(const QDateTime &after, const QDateTime &upTo) const
{
    return occurrencesOf(m_pending.between(after.toMSecsSinceEpoch(), upTo.toMSecsSinceEpoch()));
}

std::optional<QDateTime> Scheduler::nextAfter(const QDateTime &moment) const
{
    const auto next = m_pending.nextAfter(moment.toMSecsSinceEpoch());
    return next ? std::optional(QDateTime::fromMSecsSinceEpoch(*next, Qt::UTC)) : std::nullopt;
}

/// Up to then nothing comes due.
qint64 Scheduler::lastDoubted() const
{
    return m_doubtedUntil.isValid() ? m_doubtedUntil.toMSecsSinceEpoch() : std::numeric_limits<qint64>::min();
}

std::optional<QDateTime> Scheduler::nextDate() const
{
    std::optional<QDateTime> next;
    if (const auto moment = m_pending.nextAfter(lastDoubted()))
        next = QDateTime::fromMSecsSinceEpoch(*moment, Qt::UTC);
    for (const OccurrenceRecord::Key &key : m_record.asked()) {
        if ((!next || key.second < *next) && !isHeldBack(key) && placeOf(key.first))
            next = key.second;
    }
    return next;
}

QList<Occurrence> Scheduler::due(qsizetype most) const
{
    QList<Item> items = m_pending.between(lastDoubted(), m_clock.currentDate().toMSecsSinceEpoch());
    if (!items.isEmpty())
        return occurrencesOf(items.mid(0, most));
    QList<Occurrence> asked = askedFor();
    std::stable_sort(asked.begin(), asked.end(),
                     [](const Occurrence &a, const Occurrence &b) { return a.date < b.date; });
    return asked.mid(0, most);
}

void Scheduler::holdBack(const OccurrenceRecord::Key &key)
{
    m_heldBack.insert(key);
    hold(key, true);
}

void Scheduler::letGo(const OccurrenceRecord::Key &key)
{
    m_heldBack.remove(key);
    hold(key, false);
}

void Scheduler::hold(const OccurrenceRecord::Key &key, bool isHeldBack)
{
    const auto place = placeOf(key.first);
    if (!place)
        return;
    for (const Item &item : itemsOf(*place)) {
        if (item.date == key.second.toMSecsSinceEpoch())
            m_pending.hold(item, isHeldBack);
    }
}

bool Scheduler::isHeldBack(const OccurrenceRecord::Key &key) const
{
    const bool isDoubted = m_doubtedUntil.isValid() && key.second <= m_doubtedUntil;
    return isDoubted || m_heldBack.contains(key);
}

void Scheduler::excuse(const QDateTime &until, std::chrono::milliseconds duration)
{
    m_excusedUntil = until;
    m_excusedFor = duration;
}

QList<Occurrence> Scheduler::askedFor() const
{
    QList<Occurrence> asked;
    for (const OccurrenceRecord::Key &key : m_record.asked()) {
        const auto schedule = isHeldBack(key) ? std::nullopt : this->schedule(key.first);
        if (schedule)
            asked += Occurrence{*schedule, key.second, false, true};
    }
    return asked;
}

std::chrono::seconds Scheduler::lateness(const Occurrence &occurrence) const
{
    return std::chrono::floor<std::chrono::seconds>(
        std::chrono::milliseconds(occurrence.moment().msecsTo(m_clock.currentDate())));
}

bool Scheduler::isToBePerformed(const OccurrenceRecord::Key &key) const
{
    return placeOf(key.first) && (pending(key) || m_record.asked().contains(key));
}

std::optional<std::chrono::milliseconds> Scheduler::allowedLateness(const Occurrence &occurrence,
                                                                    const MissedRule &rule)
{
    if (!occurrence.isAskedFor)
        return rule.allowedLateness();
    return std::max(shortestTimeOutOfAsked,
                    std::chrono::milliseconds(-static_cast<qint64>(rule.timeOut) * 1000));
}

bool Scheduler::isTooLate(const Occurrence &occurrence, qint32 timeOut,
                          std::chrono::milliseconds heldUp) const
{
    return isLaterThan(allowedLateness(occurrence, {MissedPolicy::PlugIn, {}, timeOut}), occurrence, heldUp);
}

bool Scheduler::isLaterThan(std::optional<std::chrono::milliseconds> allowed, const Occurrence &occurrence,
                            std::chrono::milliseconds heldUp) const
{
    if (!allowed)
        return false;
    const QDateTime now = m_clock.currentDate();
    const QDateTime &moment = occurrence.moment();
    const bool isExcused = m_wait.end.isValid() && isShort(m_wait.start, m_wait.end) &&
                           moment >= startOfSecond(m_wait.start) && moment < m_wait.end;
    const bool waitsNow = m_waits > 0 && isShort(m_presentWait, now);
    const QDateTime &from = isExcused ? m_wait.end : moment;
    const bool wasHeldUp = m_excusedUntil.isValid() && moment <= m_excusedUntil;
    const auto all = *allowed + heldUp + (wasHeldUp ? m_excusedFor : std::chrono::milliseconds(0));
    return from.msecsTo(waitsNow ? m_presentWait : now) > all.count();
}

/// The last of the dates from `first` on, which is too late, that certainly are: what has an excuse that it
/// has not is judged by itself.
QDateTime Scheduler::latestTooLate(const Occurrence &first, std::chrono::milliseconds allowed) const
{
    const QDateTime now = m_clock.currentDate();
    const bool waitsNow = m_waits > 0 && isShort(m_presentWait, now);
    QDateTime latest = (waitsNow ? m_presentWait : now).addMSecs(-allowed.count() - 1);
    if (m_excusedUntil.isValid() && first.date <= m_excusedUntil)
        latest = std::min(latest.addMSecs(-m_excusedFor.count()), m_excusedUntil);
    if (m_wait.end.isValid() && first.date < startOfSecond(m_wait.start))
        latest = std::min(latest, startOfSecond(m_wait.start).addMSecs(-1));
    return std::max(latest, first.date);
}

/// Whether it may stand for others that came due after it: it is the current one of a schedule that repeats.
bool Scheduler::isRunOf(const Occurrence &occurrence) const
{
    const auto place = placeOf(occurrence.schedule.identifier);
    return place && !occurrence.isAskedFor && !occurrence.postponedTo.isValid() &&
           m_schedules.at(*place).recurrence && m_isListed[static_cast<size_t>(*place)] &&
           m_schedules.at(*place).date == occurrence.date;
}

OccurrenceSeries::Run Scheduler::dueRun(const Occurrence &current) const
{
    return runUpTo(current, m_clock.currentDate());
}

OccurrenceSeries::Run Scheduler::runUpTo(const Occurrence &current, const QDateTime &date) const
{
    const OccurrenceSeries::Run alone{current.date, current.date, 1, true};
    if (!isRunOf(current))
        return alone;
    const auto run = datesOf(current.schedule).openBetween(current.date.addMSecs(-1), date);
    return run.count > 0 ? run : alone;
}

OccurrenceSeries::Run Scheduler::runBefore(const Occurrence &current, const QDateTime &date) const
{
    if (current.date >= date)
        return {};
    return datesOf(current.schedule).openBetween(current.date.addMSecs(-1), date.addMSecs(-1));
}

/// Whether another one of the schedule has come due after `moment`, at which `due` was.
bool Scheduler::isSuperseded(const Occurrence &due, const QDateTime &moment) const
{
    const auto place = placeOf(due.schedule.identifier);
    const QDateTime now = m_clock.currentDate();
    for (const Occurrence &other : place ? pendingOf(*place) : QList<Occurrence>()) {
        if (other.date == due.date || other.moment() > now)
            continue;
        if ((isRunOf(other) ? dueRun(other).last : other.moment()) > moment)
            return true;
    }
    return false;
}

Scheduler::Verdict Scheduler::judge(const Occurrence &due, const MissedRule &rule,
                                    std::chrono::milliseconds heldUp) const
{
    const auto allowed = allowedLateness(due, rule);
    const bool isOnce = rule.policy == MissedPolicy::RunOnce && !due.isAskedFor;
    const OccurrenceSeries::Run run = isOnce ? dueRun(due) : OccurrenceSeries::Run();
    Occurrence performed = due;
    if (isOnce && isRunOf(due))
        performed.date = performed.schedule.date = run.last;
    if (isOnce && (isLaterThan(allowed, performed, heldUp) || isSuperseded(due, performed.moment())))
        return {{}, run};
    if (isOnce && performed.date == due.date)
        return {performed};
    if (isOnce)
        return {performed, runBefore(due, performed.date)};
    if (!isLaterThan(allowed, due, heldUp))
        return {due};
    return {{},
            isRunOf(due) ? runBefore(due, latestTooLate(due, *allowed + heldUp).addMSecs(1)) : dueRun(due)};
}

void Scheduler::beginWait()
{
    if (m_waits++ > 0)
        return;
    const QDateTime now = m_clock.currentDate();
    const bool goesOn = m_wait.end.isValid() && isShort(m_wait.start, m_wait.end) &&
                        std::abs(m_wait.end.msecsTo(now)) <= longestPause;
    m_presentWait = goesOn ? m_wait.start : now;
}

void Scheduler::endWait()
{
    if (--m_waits == 0)
        m_wait = {m_presentWait, m_clock.currentDate()};
}

Occurrence Scheduler::makeOccurrenceNow(const Schedule &schedule) const
{
    const auto place = placeOf(schedule.identifier);
    const QList<Occurrence> toCome = place ? pendingOf(*place) : QList<Occurrence>();
    const auto isTaken = [&](const QDateTime &date) {
        return date == schedule.date || m_record.find(schedule.identifier, date) ||
               std::any_of(toCome.cbegin(), toCome.cend(),
                           [&](const Occurrence &other) { return other.moment() == date; });
    };
    QDateTime date = QDateTime::fromSecsSinceEpoch(m_clock.currentDate().toSecsSinceEpoch(), Qt::UTC);
    if (schedule.recurrence) {
        const ScheduleDates dates = datesOf(schedule);
        QDateTime free = date;
        for (int i = 0; i < secondsTried && (isTaken(free) || dates.gives(free)); ++i)
            free = free.addSecs(1);
        // No rule gives a half second.
        date = isTaken(free) || dates.gives(free) ? date.addMSecs(500) : free;
    }
    while (isTaken(date))
        date = date.addSecs(1);
    return {schedule, date, false, true};
}

void Scheduler::noteAsked(const Occurrence &occurrence, quint32 userId)
{
    set(occurrence, {OccurrenceState::Asked, {}, {}, userId});
}

void Scheduler::noteBegun(const Occurrence &occurrence, ActingPlace place)
{
    auto entry = m_record.find(occurrence.schedule.identifier, occurrence.date).value_or(OccurrenceEntry());
    entry.state = OccurrenceState::Begun;
    entry.handedTo.reset();
    entry.handedOver = {};
    entry.exitStatus.reset();
    entry.ended = {};
    entry.begun = m_clock.currentDate();
    entry.lateness = occurrence.moment().msecsTo(entry.begun);
    entry.place = place;
    set(occurrence, entry);
}

void Scheduler::takeBack(const Occurrence &occurrence)
{
    const QString &identifier = occurrence.schedule.identifier;
    const auto entry = m_record.find(identifier, occurrence.date);
    if (entry && entry->askedBy)
        return noteAsked(occurrence, *entry->askedBy);
    if (entry && entry->postponedTo.isValid())
        return notePostponed(occurrence, entry->postponedTo);
    auto calendar = m_record.calendar(identifier);
    if (calendar && calendar->settled > occurrence.date) // what came after it is settled: it stands alone
        return notePostponed(occurrence, occurrence.date);
    if (calendar && calendar->settled == occurrence.date) {
        calendar->settled = occurrence.date.addSecs(-1);
        m_record.setCalendar(identifier, *calendar);
    }
    m_record.remove(identifier, occurrence.date);
    changed(identifier);
}

void Scheduler::notePostponed(const Occurrence &occurrence, const QDateTime &to)
{
    OccurrenceEntry entry;
    entry.state = OccurrenceState::Postponed;
    entry.postponedTo = to;
    set(occurrence, entry);
}

void Scheduler::restore(const Occurrence &occurrence, const std::optional<OccurrenceEntry> &former,
                        const std::optional<CalendarEntry> &calendar)
{
    const QString &identifier = occurrence.schedule.identifier;
    if (calendar)
        m_record.setCalendar(identifier, *calendar);
    if (former)
        return set(occurrence, *former);
    m_record.remove(identifier, occurrence.date);
    changed(identifier);
}

/// The dates up to then are no longer to come, whether the record knows each or not.
void Scheduler::settle(const QString &identifier, const QDateTime &upTo)
{
    auto calendar = m_record.calendar(identifier);
    if (!calendar || calendar->settled >= upTo)
        return;
    calendar->settled = upTo;
    m_record.setCalendar(identifier, *calendar);
}

void Scheduler::noteRun(const Schedule &schedule, const OccurrenceSeries::Run &run, OccurrenceState state)
{
    const QDateTime now = m_clock.currentDate();
    Occurrence last{schedule, run.last};
    const auto former = m_record.find(schedule.identifier, run.last);
    if (former)
        last.postponedTo = former->postponedTo;
    if (run.count == 1 && run.isCountExact)
        return note(last, state == OccurrenceState::Missed ? OccurrenceState::Skipped : state);
    OccurrenceEntry entry;
    entry.state = state;
    entry.lateness = run.last.msecsTo(now);
    entry.run = {run.first, run.count, run.isCountExact};
    settle(schedule.identifier, run.last);
    set(last, entry);
}

void Scheduler::set(const Occurrence &occurrence, const OccurrenceEntry &entry)
{
    m_record.set(occurrence.schedule.identifier, occurrence.date, entry);
    changed(occurrence.schedule.identifier);
}

void Scheduler::noteEnd(const Occurrence &occurrence, const PerformanceOutcome &outcome,
                        std::optional<quint32> handedTo)
{
    const bool isPerformed = outcome.isPerformed();
    const bool isKnown = outcome.isSuccess() || outcome.ended.isValid();
    note(occurrence,
         !isPerformed          ? OccurrenceState::NotPerformed
         : !isKnown            ? OccurrenceState::Interrupted
         : outcome.isSuccess() ? OccurrenceState::Done
                               : OccurrenceState::Failed,
         handedTo);
    auto entry = *m_record.find(occurrence.schedule.identifier, occurrence.date);
    if (isPerformed)
        entry.exitStatus = outcome.exitStatus;
    entry.ended = outcome.ended;
    entry.failure = isPerformed ? outcome.failure : outcome.reason(); // there is no status that says it
    set(occurrence, entry);
}

void Scheduler::note(const Occurrence &occurrence, OccurrenceState state, std::optional<quint32> handedTo)
{
    const QDateTime now = m_clock.currentDate();
    auto entry = m_record.find(occurrence.schedule.identifier, occurrence.date).value_or(OccurrenceEntry());
    entry.state = state;
    entry.handedTo = handedTo;
    entry.handedOver = handedTo ? now : QDateTime();
    if (state == OccurrenceState::Skipped)
        entry.lateness = occurrence.moment().msecsTo(now);
    set(occurrence, entry);
}

/// What agents have been handed of this bundle with this date, which is that of its moment, in the order of
/// the store.
QList<Occurrence> Scheduler::handedOut(quint32 userId, const QString &bundlePath, const QDateTime &date) const
{
    QList<std::pair<qint32, QDateTime>> found;
    for (const auto &[identifier, ownDate] : m_record.handedOverAt(date)) {
        const auto entry = m_record.find(identifier, ownDate);
        const auto place = placeOf(identifier);
        if (place && entry && OrderPermissions::mayHandBack(userId, entry->handedTo) &&
            m_schedules.at(*place).fullBundlePath() == bundlePath)
            found += {*place, ownDate};
    }
    std::sort(found.begin(), found.end());
    QList<Occurrence> occurrences;
    for (const auto &[place, ownDate] : std::as_const(found)) {
        Occurrence occurrence{m_schedules.at(place), ownDate};
        occurrence.postponedTo = m_record.find(occurrence.schedule.identifier, ownDate)->postponedTo;
        occurrences += occurrence;
    }
    return occurrences;
}

std::optional<Occurrence> Scheduler::heldByAgent(quint32 userId, const QString &bundlePath,
                                                 const QDateTime &date, const QVariantMap &parameters) const
{
    const QDateTime now = m_clock.currentDate();
    std::optional<Occurrence> held;
    for (const Occurrence &occurrence : handedOut(userId, bundlePath, date.toUTC())) {
        const Schedule &schedule = occurrence.schedule;
        const auto entry = m_record.find(schedule.identifier, occurrence.date);
        const bool isWithdrawn =
            !schedule.isEnabled && (schedule.recurrence || schedule.date == occurrence.date);
        if (isWithdrawn || !mayBeHeld(entry->state) || entry->handedOver.addDuration(longestHandOver) < now)
            continue;
        if (schedule.parameters == parameters)
            return occurrence;
        if (!held)
            held = occurrence;
    }
    return held;
}

std::optional<Occurrence> Scheduler::handedOver(quint32 userId, const QString &bundlePath,
                                                const QDateTime &date, const QVariantMap &parameters,
                                                OccurrenceState state) const
{
    for (const Occurrence &occurrence : handedOut(userId, bundlePath, date.toUTC())) {
        if (occurrence.schedule.parameters == parameters &&
            m_record.find(occurrence.schedule.identifier, occurrence.date)->state == state)
            return occurrence;
    }
    return {};
}
