// SPDX-License-Identifier: MIT
#include "hosts/daemon/Scheduler.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/daemon/SchedulerObserver.h"

#include <algorithm>
#include <utility>

using namespace dozely;

Scheduler::Scheduler(const Clock &clock, OccurrenceRecord record)
    : m_clock(clock), m_record(std::move(record)), m_lateness(clock, *this)
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

bool Scheduler::isToBePerformed(const OccurrenceRecord::Key &key) const
{
    return placeOf(key.first) && (pending(key) || m_record.asked().contains(key));
}
