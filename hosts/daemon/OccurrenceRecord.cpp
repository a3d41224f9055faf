// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceRecord.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <algorithm>

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
    m_entries[key.first].insert(key.second, entry);
    noteAsked(key, entry.state == OccurrenceState::Asked);
    noteHandedOver(key, entry.handedTo.has_value());
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
    schedule->remove(date);
    if (schedule->isEmpty())
        m_entries.erase(schedule);
    noteAsked({identifier, date}, false);
    noteHandedOver({identifier, date}, false);
    m_changed.insert({identifier, date});
}

void OccurrenceRecord::noteAsked(const Key &key, bool isAsked)
{
    if (!isAsked)
        m_asked.removeOne(key);
    else if (!m_asked.contains(key))
        m_asked += key;
}

void OccurrenceRecord::noteHandedOver(const Key &key, bool isHandedOver)
{
    const qint64 date = key.second.toMSecsSinceEpoch();
    m_handedOver.remove(date, key.first);
    if (isHandedOver)
        m_handedOver.insert(date, key.first);
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

QList<OccurrenceRecord::Key>
OccurrenceRecord::interruptBegun(const std::function<bool(const Key &, const OccurrenceEntry &)> &goesOn)
{
    QList<Key> interrupted;
    for (auto schedule = m_entries.begin(); schedule != m_entries.end(); ++schedule) {
        for (auto entry = schedule->begin(); entry != schedule->end(); ++entry) {
            if (entry->state != OccurrenceState::Begun || goesOn({schedule.key(), entry.key()}, *entry))
                continue;
            entry->state = OccurrenceState::Interrupted;
            entry->handedTo.reset();
            entry->handedOver = {};
            noteHandedOver({schedule.key(), entry.key()}, false);
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

bool OccurrenceRecord::prune(const std::function<QDateTime(const QString &)> &currentDate,
                             const std::function<bool(const QString &)> &isGone)
{
    bool dropped = false;
    for (auto schedule = m_entries.begin(); schedule != m_entries.end();) {
        const QDateTime current = currentDate(schedule.key());
        if (isGone(schedule.key())) {
            for (auto entry = schedule->cbegin(); entry != schedule->cend(); ++entry)
                noteHandedOver({schedule.key(), entry.key()}, false);
            m_asked.removeIf([&](const Key &key) { return key.first == schedule.key(); });
            schedule = m_entries.erase(schedule);
            dropped = true;
            continue;
        }
        int others = static_cast<int>(schedule->size()) - (schedule->contains(current) ? 1 : 0);
        for (auto entry = schedule->begin(); entry != schedule->end() && others > remembered;) {
            if (entry.key() == current || !entry->isOver()) {
                ++entry;
                continue;
            }
            noteHandedOver({schedule.key(), entry.key()}, false);
            entry = schedule->erase(entry);
            --others;
            dropped = true;
        }
        ++schedule;
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
