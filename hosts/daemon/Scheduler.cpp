// SPDX-License-Identifier: MIT
#include "hosts/daemon/Scheduler.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DateExtensions.h"
#include "hosts/common/orders/OrderPermissions.h"

#include <algorithm>

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

std::optional<Schedule> Scheduler::schedule(const QString &identifier) const
{
    for (const Schedule &schedule : m_schedules) {
        if (schedule.identifier == identifier)
            return schedule;
    }
    return {};
}

bool Scheduler::pruneRecord(const std::function<bool(const QString &)> &isGone)
{
    QHash<QString, QDateTime> currentDates;
    for (const Schedule &schedule : m_schedules)
        currentDates.insert(schedule.identifier, schedule.date);
    return m_record.prune(currentDates, isGone);
}

bool Scheduler::isOpen(const Schedule &schedule) const
{
    return schedule.isEnabled && !m_record.find(schedule.identifier, schedule.date);
}

std::optional<QDateTime> Scheduler::nextDate() const
{
    std::optional<QDateTime> next;
    for (const Schedule &schedule : m_schedules) {
        if ((!next || schedule.date < *next) && isOpen(schedule) &&
            !isHeldBack({schedule.identifier, schedule.date}))
            next = schedule.date;
    }
    for (const OccurrenceRecord::Key &key : m_record.asked()) {
        if ((!next || key.second < *next) && !isHeldBack(key) && schedule(key.first))
            next = key.second;
    }
    return next;
}

QList<Occurrence> Scheduler::due() const
{
    const QDateTime now = m_clock.currentDate();
    QList<Occurrence> due;
    for (const Schedule &schedule : m_schedules) {
        if (schedule.date <= now && isOpen(schedule) && !isHeldBack({schedule.identifier, schedule.date}))
            due += Occurrence{schedule, schedule.date,
                              m_nothingKnownBefore.isValid() && schedule.date < m_nothingKnownBefore};
    }
    if (due.isEmpty())
        due = askedFor();
    std::stable_sort(due.begin(), due.end(),
                     [](const Occurrence &a, const Occurrence &b) { return a.date < b.date; });
    return due;
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
    const auto schedule = this->schedule(key.first);
    return schedule &&
           ((schedule->date == key.second && isOpen(*schedule)) || m_record.asked().contains(key));
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
    m_record.set(occurrence.schedule.identifier, occurrence.date, {OccurrenceState::Asked, {}, {}, userId});
}

void Scheduler::noteBegun(const Occurrence &occurrence, ActingPlace place)
{
    auto entry = m_record.find(occurrence.schedule.identifier, occurrence.date).value_or(OccurrenceEntry());
    entry.state = OccurrenceState::Begun;
    entry.handedTo.reset();
    entry.handedOver = {};
    entry.begun = m_clock.currentDate();
    entry.lateness = occurrence.date.msecsTo(entry.begun);
    entry.place = place;
    m_record.set(occurrence.schedule.identifier, occurrence.date, entry);
}

void Scheduler::takeBack(const Occurrence &occurrence)
{
    const auto entry = m_record.find(occurrence.schedule.identifier, occurrence.date);
    if (entry && entry->askedBy)
        noteAsked(occurrence, *entry->askedBy);
    else
        m_record.remove(occurrence.schedule.identifier, occurrence.date);
}

void Scheduler::noteEnd(const Occurrence &occurrence, const PerformanceOutcome &outcome)
{
    const bool isPerformed = outcome.isPerformed();
    note(occurrence, !isPerformed          ? OccurrenceState::NotPerformed
                     : outcome.isSuccess() ? OccurrenceState::Done
                                           : OccurrenceState::Failed);
    auto entry = *m_record.find(occurrence.schedule.identifier, occurrence.date);
    if (isPerformed)
        entry.exitStatus = outcome.exitStatus;
    entry.ended = outcome.ended;
    entry.failure = outcome.failure;
    m_record.set(occurrence.schedule.identifier, occurrence.date, entry);
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
    m_record.set(occurrence.schedule.identifier, occurrence.date, entry);
}

std::optional<Occurrence> Scheduler::heldByAgent(quint32 userId, const QString &bundlePath,
                                                 const QDateTime &date, const QVariantMap &parameters) const
{
    const QDateTime now = m_clock.currentDate();
    const QDateTime utc = date.toUTC();
    std::optional<Occurrence> held;
    for (const Schedule &schedule : m_schedules) {
        const bool isWithdrawn = !schedule.isEnabled && schedule.date == utc;
        if (isWithdrawn || schedule.fullBundlePath() != bundlePath)
            continue;
        const auto entry = m_record.find(schedule.identifier, utc);
        if (!entry || !mayBeHeld(entry->state) || !OrderPermissions::mayHandBack(userId, entry->handedTo) ||
            entry->handedOver.addDuration(longestHandOver) < now)
            continue;
        if (schedule.parameters == parameters)
            return Occurrence{schedule, utc};
        if (!held)
            held = Occurrence{schedule, utc};
    }
    return held;
}

std::optional<Occurrence> Scheduler::handedOver(quint32 userId, const QString &bundlePath,
                                                const QDateTime &date, const QVariantMap &parameters,
                                                OccurrenceState state) const
{
    const QDateTime utc = date.toUTC();
    for (const Schedule &schedule : m_schedules) {
        if (schedule.fullBundlePath() != bundlePath || schedule.parameters != parameters)
            continue;
        const auto entry = m_record.find(schedule.identifier, utc);
        if (entry && entry->state == state && OrderPermissions::mayHandBack(userId, entry->handedTo))
            return Occurrence{schedule, utc};
    }
    return {};
}
