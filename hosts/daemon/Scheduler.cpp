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

/// Nothing starts at the very millisecond: a plug-in whose time-out is nothing still gets this long.
constexpr std::chrono::milliseconds shortestTimeOut = std::chrono::seconds(1);

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
    return dozely::calendarDate(date, schedule.timeZone);
}

Scheduler::Scheduler(const Clock &clock, OccurrenceRecord record)
    : m_clock(clock), m_record(std::move(record))
{
}

void Scheduler::setSchedules(const QList<Schedule> &schedules)
{
    m_schedules = schedules;
    m_index.rebuild(m_schedules);
    relistAll();
}

void Scheduler::setRecord(OccurrenceRecord record)
{
    m_record = std::move(record);
    relistAll();
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

bool Scheduler::pruneRecord(const std::function<bool(const QString &)> &isGone)
{
    return m_record.prune([this](const QString &identifier) { return currentDate(identifier); }, isGone);
}

/// Nothing became of its occurrence yet and it is enabled.
bool Scheduler::isOpen(const Schedule &schedule) const
{
    return schedule.isEnabled && !m_record.find(schedule.identifier, schedule.date);
}

Scheduler::Item Scheduler::itemOf(const Schedule &schedule, qint32 place)
{
    const qint64 date = schedule.date.toMSecsSinceEpoch();
    return {date, place, date};
}

Occurrence Scheduler::occurrenceOf(const Item &item) const
{
    const Schedule &schedule = m_schedules.at(item.place);
    return {schedule, schedule.date, m_nothingKnownBefore.isValid() && schedule.date < m_nothingKnownBefore};
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
    const Schedule &schedule = m_schedules.at(place);
    const Item item = itemOf(schedule, place);
    const bool isToCome = isOpen(schedule);
    const bool wasToCome = m_isListed[static_cast<size_t>(place)];
    m_isListed[static_cast<size_t>(place)] = isToCome;
    if (isToCome && !wasToCome)
        m_pending.insert(item, m_heldBack.contains({schedule.identifier, schedule.date}));
    else if (wasToCome && !isToCome)
        m_pending.remove(item);
}

void Scheduler::relistAll()
{
    m_pending.clear();
    m_isListed.assign(static_cast<size_t>(m_schedules.size()), false);
    for (qint32 place = 0; place < m_schedules.size(); ++place)
        relist(place);
    for (SchedulerObserver *const observer : std::as_const(m_observers))
        observer->schedulesReplaced();
}

/// What the record says of a schedule is another now.
void Scheduler::changed(const QString &identifier)
{
    const auto place = placeOf(identifier);
    if (!place)
        return;
    relist(*place);
    for (SchedulerObserver *const observer : std::as_const(m_observers))
        observer->scheduleChanged(*place);
}

QList<Occurrence> Scheduler::pendingOf(qint32 place) const
{
    if (!m_isListed[static_cast<size_t>(place)])
        return {};
    return {occurrenceOf(itemOf(m_schedules.at(place), place))};
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
    if (place && m_schedules.at(*place).date == key.second)
        m_pending.hold(itemOf(m_schedules.at(*place), *place), isHeldBack);
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
        std::chrono::milliseconds(occurrence.date.msecsTo(m_clock.currentDate())));
}

bool Scheduler::isToBePerformed(const OccurrenceRecord::Key &key) const
{
    return placeOf(key.first) && (pending(key) || m_record.asked().contains(key));
}

std::chrono::milliseconds Scheduler::allowedLateness(const Occurrence &occurrence, qint32 timeOut)
{
    return std::max({occurrence.isAskedFor ? shortestTimeOutOfAsked : shortestTimeOut,
                     std::chrono::milliseconds(-static_cast<qint64>(timeOut) * 1000)});
}

bool Scheduler::isTooLate(const Occurrence &occurrence, qint32 timeOut,
                          std::chrono::milliseconds heldUp) const
{
    const QDateTime now = m_clock.currentDate();
    const bool isExcused = m_wait.end.isValid() && isShort(m_wait.start, m_wait.end) &&
                           occurrence.date >= startOfSecond(m_wait.start) && occurrence.date < m_wait.end;
    const bool waitsNow = m_waits > 0 && isShort(m_presentWait, now);
    const QDateTime &from = isExcused ? m_wait.end : occurrence.date;
    const bool wasHeldUp = m_excusedUntil.isValid() && occurrence.date <= m_excusedUntil;
    const auto allowed = allowedLateness(occurrence, timeOut) + heldUp +
                         (wasHeldUp ? m_excusedFor : std::chrono::milliseconds(0));
    return from.msecsTo(waitsNow ? m_presentWait : now) > allowed.count();
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
    QDateTime date = QDateTime::fromSecsSinceEpoch(m_clock.currentDate().toSecsSinceEpoch(), Qt::UTC);
    while (date == schedule.date || m_record.find(schedule.identifier, date))
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
    entry.lateness = occurrence.date.msecsTo(entry.begun);
    entry.place = place;
    set(occurrence, entry);
}

void Scheduler::takeBack(const Occurrence &occurrence)
{
    const auto entry = m_record.find(occurrence.schedule.identifier, occurrence.date);
    if (entry && entry->askedBy)
        noteAsked(occurrence, *entry->askedBy);
    else
        m_record.remove(occurrence.schedule.identifier, occurrence.date);
    changed(occurrence.schedule.identifier);
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
        entry.lateness = occurrence.date.msecsTo(now);
    set(occurrence, entry);
}

/// What agents have been handed of this bundle with this date, in the order of the store.
QList<Occurrence> Scheduler::handedOut(quint32 userId, const QString &bundlePath, const QDateTime &date) const
{
    QList<qint32> places;
    for (const QString &identifier : m_record.handedOverAt(date)) {
        const auto entry = m_record.find(identifier, date);
        const auto place = placeOf(identifier);
        if (place && entry && OrderPermissions::mayHandBack(userId, entry->handedTo) &&
            m_schedules.at(*place).fullBundlePath() == bundlePath)
            places += *place;
    }
    std::sort(places.begin(), places.end());
    QList<Occurrence> occurrences;
    for (const qint32 place : std::as_const(places))
        occurrences += Occurrence{m_schedules.at(place), date};
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
        const bool isWithdrawn = !schedule.isEnabled && schedule.date == occurrence.date;
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
