// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceRecord.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
constexpr qint64 formatVersion = 1;

/// How many occurrences besides the current one are remembered for a schedule: enough for dates that are
/// changed to and fro, and a bound for the file.
constexpr int remembered = 2;

struct StateName {
    OccurrenceState state;
    const char *name;
};
constexpr StateName stateNames[] = {
    {OccurrenceState::Asked, "asked"},
    {OccurrenceState::Begun, "begun"},
    {OccurrenceState::Done, "done"},
    {OccurrenceState::Skipped, "skipped"},
    {OccurrenceState::NotPerformed, "not performed"},
    {OccurrenceState::Removed, "removed"},
    {OccurrenceState::Interrupted, "interrupted"},
    {OccurrenceState::Unknown, "unknown"},
    {OccurrenceState::Failed, "failed"},
    {OccurrenceState::Missed, "missed"},
    {OccurrenceState::Postponed, "postponed"},
};

/// Absent for what is no number of a user.
std::optional<quint32> userIn(const QVariant &value)
{
    bool isNumber = false;
    const qlonglong user = value.toLongLong(&isNumber);
    if (!isNumber || user < 0 || user > 0xffffffffLL)
        return {};
    return static_cast<quint32>(user);
}

/// Absent for what is no occurrence.
std::optional<OccurrenceEntry> entryIn(const QVariantMap &map)
{
    const auto state = OccurrenceRecord::stateNamed(map.value("State").toString());
    if (!state || map.value("State").typeId() != QMetaType::QString ||
        map.value("Identifier").typeId() != QMetaType::QString ||
        map.value("Date").typeId() != QMetaType::QDateTime)
        return {};
    OccurrenceEntry entry{*state, {}, {}};
    if (map.contains("Asked By")) {
        entry.askedBy = userIn(map.value("Asked By"));
        if (!entry.askedBy)
            return {};
    }
    if (!map.contains("Handed To"))
        return entry;
    entry.handedTo = userIn(map.value("Handed To"));
    if (!entry.handedTo || map.value("Handed Over").typeId() != QMetaType::QDateTime)
        return {};
    entry.handedOver = map.value("Handed Over").toDateTime().toUTC();
    return entry;
}
} // namespace

QString OccurrenceRecord::nameOf(OccurrenceState state)
{
    for (const StateName &candidate : stateNames) {
        if (candidate.state == state)
            return candidate.name;
    }
    Q_UNREACHABLE();
}

std::optional<OccurrenceState> OccurrenceRecord::stateNamed(const QString &name)
{
    for (const StateName &candidate : stateNames) {
        if (name == candidate.name)
            return candidate.state;
    }
    return {};
}

std::optional<OccurrenceEntry> OccurrenceRecord::find(const QString &identifier, const QDateTime &date) const
{
    const auto schedule = m_entries.constFind(identifier);
    if (schedule == m_entries.cend() || !schedule->contains(date))
        return {};
    return schedule->value(date);
}

void OccurrenceRecord::set(const QString &identifier, const QDateTime &date, const OccurrenceEntry &entry)
{
    restore({identifier, date}, entry);
    m_changed.insert({identifier, date});
}

void OccurrenceRecord::restore(const Key &key, const OccurrenceEntry &entry)
{
    Entries &entries = m_entries[key.first];
    if (const auto former = entries.constFind(key.second); former != entries.cend()) {
        // In its place among what is asked for it stays.
        if (former->state != OccurrenceState::Asked || entry.state != OccurrenceState::Asked)
            unindex(key, *former);
    }
    entries.insert(key.second, entry);
    index(key, entry);
}

void OccurrenceRecord::index(const Key &key, const OccurrenceEntry &entry)
{
    if (entry.state == OccurrenceState::Asked && !m_asked.contains(key))
        m_asked += key;
    if (entry.state == OccurrenceState::Postponed)
        m_postponed.insert(key.first, key.second);
    if (entry.handedTo)
        m_handedOver.insert(entry.momentOf(key.second).toMSecsSinceEpoch(), key);
}

void OccurrenceRecord::unindex(const Key &key, const OccurrenceEntry &entry)
{
    if (entry.state == OccurrenceState::Asked)
        m_asked.removeOne(key);
    if (entry.state == OccurrenceState::Postponed)
        m_postponed.remove(key.first, key.second);
    if (entry.handedTo)
        m_handedOver.remove(entry.momentOf(key.second).toMSecsSinceEpoch(), key);
}

QList<QDateTime> OccurrenceRecord::postponed(const QString &identifier) const
{
    return m_postponed.values(identifier);
}

QList<OccurrenceRecord::Key> OccurrenceRecord::postponed() const
{
    QList<Key> keys;
    for (auto date = m_postponed.cbegin(); date != m_postponed.cend(); ++date)
        keys += Key(date.key(), *date);
    return keys;
}

std::optional<CalendarEntry> OccurrenceRecord::calendar(const QString &identifier) const
{
    const auto entry = m_calendars.constFind(identifier);
    return entry != m_calendars.cend() ? std::optional(*entry) : std::nullopt;
}

void OccurrenceRecord::setCalendar(const QString &identifier, const CalendarEntry &entry)
{
    if (calendar(identifier) == entry)
        return;
    m_calendars.insert(identifier, entry);
    m_changedCalendars.insert(identifier);
}

void OccurrenceRecord::restoreCalendar(const QString &identifier, const CalendarEntry &entry)
{
    m_calendars.insert(identifier, entry);
}

OccurrenceRecord::CalendarChanges OccurrenceRecord::calendarChanges() const
{
    CalendarChanges changes;
    for (const QString &identifier : m_changedCalendars)
        changes.insert(identifier, m_calendars.value(identifier));
    return changes;
}

void OccurrenceRecord::forgetChanges()
{
    m_changed.clear();
    m_changedCalendars.clear();
}

OccurrenceRecord::Changes OccurrenceRecord::changes() const
{
    Changes changes;
    for (const Key &key : m_changed)
        changes.insert(key, find(key.first, key.second));
    return changes;
}

void OccurrenceRecord::remove(const QString &identifier, const QDateTime &date)
{
    const auto schedule = m_entries.find(identifier);
    if (schedule == m_entries.end())
        return;
    if (const auto entry = schedule->constFind(date); entry != schedule->cend())
        unindex({identifier, date}, *entry);
    schedule->remove(date);
    if (schedule->isEmpty())
        m_entries.erase(schedule);
    m_changed.insert({identifier, date});
}

bool OccurrenceRecord::makeRoom(quint32 userId, qsizetype most)
{
    qsizetype count = 0;
    QList<Key> over;
    for (auto schedule = m_entries.cbegin(); schedule != m_entries.cend(); ++schedule) {
        for (auto entry = schedule->cbegin(); entry != schedule->cend(); ++entry) {
            if (entry->askedBy != userId)
                continue;
            ++count;
            if (entry->isOver())
                over += {schedule.key(), entry.key()};
        }
    }
    std::sort(over.begin(), over.end(), [](const Key &a, const Key &b) { return a.second < b.second; });
    for (const auto &[identifier, date] : over) {
        if (count < most)
            break;
        remove(identifier, date);
        --count;
    }
    return count < most;
}

QList<QDateTime> OccurrenceRecord::dates(const QString &identifier) const
{
    return m_entries.value(identifier).keys();
}

QList<QDateTime> OccurrenceRecord::datesBetween(const QString &identifier, const QDateTime &after,
                                                const QDateTime &before) const
{
    QList<QDateTime> dates;
    const auto schedule = m_entries.constFind(identifier);
    if (schedule == m_entries.cend())
        return dates;
    for (auto entry = schedule->upperBound(after); entry != schedule->cend() && entry.key() < before; ++entry)
        dates += entry.key();
    return dates;
}

QList<OccurrenceRecord::Key>
OccurrenceRecord::interruptBegun(const std::function<bool(const Key &, const OccurrenceEntry &)> &goesOn)
{
    QList<Key> interrupted;
    for (auto schedule = m_entries.begin(); schedule != m_entries.end(); ++schedule) {
        for (auto entry = schedule->begin(); entry != schedule->end(); ++entry) {
            if (entry->state != OccurrenceState::Begun || goesOn({schedule.key(), entry.key()}, *entry))
                continue;
            unindex({schedule.key(), entry.key()}, *entry);
            entry->state = OccurrenceState::Interrupted;
            entry->handedTo.reset();
            entry->handedOver = {};
            m_changed.insert({schedule.key(), entry.key()});
            interrupted += {schedule.key(), entry.key()};
        }
    }
    return interrupted;
}

QList<OccurrenceRecord::Key> OccurrenceRecord::begunInDaemon() const
{
    QList<Key> begun;
    for (auto schedule = m_entries.cbegin(); schedule != m_entries.cend(); ++schedule) {
        for (auto entry = schedule->cbegin(); entry != schedule->cend(); ++entry) {
            if (entry->state == OccurrenceState::Begun && entry->place == ActingPlace::Daemon)
                begun += {schedule.key(), entry.key()};
        }
    }
    return begun;
}

bool OccurrenceRecord::prune(const IsNeeded &isNeeded, const std::function<bool(const QString &)> &isGone,
                             const QDateTime &handedOverBefore)
{
    bool dropped = false;
    for (auto schedule = m_entries.begin(); schedule != m_entries.end();) {
        if (isGone(schedule.key())) {
            for (auto entry = schedule->cbegin(); entry != schedule->cend(); ++entry)
                unindex({schedule.key(), entry.key()}, *entry);
            schedule = m_entries.erase(schedule);
            dropped = true;
            continue;
        }
        dropped |= pruneOne(schedule.key(), *schedule, isNeeded, handedOverBefore);
        ++schedule;
    }
    m_calendars.removeIf([&](const auto &calendar) { return isGone(calendar.key()); });
    m_changedCalendars.removeIf([&](const QString &identifier) { return isGone(identifier); });
    return dropped;
}

void OccurrenceRecord::pruneChanged(const IsNeeded &isNeeded, const QDateTime &handedOverBefore)
{
    for (const Key &key : std::as_const(m_changed)) {
        const auto schedule = m_entries.find(key.first);
        if (schedule != m_entries.end())
            pruneOne(key.first, *schedule, isNeeded, handedOverBefore);
    }
}

bool OccurrenceRecord::pruneOne(const QString &identifier, Entries &entries, const IsNeeded &isNeeded,
                                const QDateTime &handedOverBefore)
{
    const auto mayGo = [&](const Entries::iterator &entry) {
        return entry->isOver() && !isNeeded(identifier, entry.key()) &&
               (!entry->handedTo || !handedOverBefore.isValid() || entry->handedOver < handedOverBefore);
    };
    auto others = entries.size();
    bool dropped = false;
    for (auto entry = entries.begin(); entry != entries.end() && others > 0; ++entry)
        others -= isNeeded(identifier, entry.key()) ? 1 : 0;
    for (auto entry = entries.begin(); entry != entries.end() && others > remembered;) {
        if (!mayGo(entry)) {
            ++entry;
            continue;
        }
        unindex({identifier, entry.key()}, *entry);
        entry = entries.erase(entry);
        --others;
        dropped = true;
    }
    return dropped;
}

Result<OccurrenceRecord> OccurrenceRecord::fromData(const QByteArray &data)
{
    const auto list = PropertyList::fromData(data);
    if (!list)
        return list.error();
    const QVariantMap root = list->toMap();
    if (root.value("Format").toLongLong() != formatVersion)
        return Error{"its format is not known"};
    if (root.value("Occurrences").typeId() != QMetaType::QVariantList)
        return Error{"it holds no list of occurrences"};
    OccurrenceRecord record;
    for (const QVariant &occurrence : root.value("Occurrences").toList()) {
        const QVariantMap map = occurrence.toMap();
        const auto entry = entryIn(map);
        if (!entry)
            return Error{"it holds an occurrence that cannot be read"};
        record.set(map.value("Identifier").toString(), map.value("Date").toDateTime().toUTC(), *entry);
    }
    return record;
}
