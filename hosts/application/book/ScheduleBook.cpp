// SPDX-License-Identifier: MIT
#include "hosts/application/book/ScheduleBook.h"

#include "hosts/application/book/BookStep.h"
#include "hosts/application/book/ScheduleKeys.h"

#include <algorithm>

ScheduleBook::ScheduleBook(SchedulerClient &client) : m_client(client)
{
    connect(&client, &SchedulerClient::availabilityChanged, this, [this](bool isAvailable) {
        if (isAvailable)
            read();
        else if (m_state == State::Failed)
            m_state = State::Unread;
        Q_EMIT stateChanged();
    });
    connect(&client, &SchedulerClient::schedulesChanged, this, &ScheduleBook::refresh);
    // The date after this one is known to the daemon alone.
    const auto refreshOne = [this](const QString &identifier) { refresh({identifier}); };
    connect(&client, &SchedulerClient::occurrenceBegan, this, refreshOne);
    connect(&client, &SchedulerClient::occurrenceEnded, this, refreshOne);
    if (client.isAvailable())
        read();
}

ScheduleBook::~ScheduleBook() = default;

const BookEntry *ScheduleBook::entry(const QString &key) const
{
    const int row = rowOf(key);
    return row >= 0 ? &m_entries.at(row) : nullptr;
}

bool ScheduleBook::hasChanges() const
{
    return std::any_of(m_entries.cbegin(), m_entries.cend(),
                       [](const BookEntry &entry) { return entry.isChanged(); });
}

void ScheduleBook::change(const QString &key, const QVariantMap &changes, const QString &what, Step step)
{
    const BookEntry *const changed = entry(key);
    if (!changed || !changed->wanted)
        return;
    QVariantMap before;
    QVariantMap after;
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        if (changed->value(it.key()) == it.value())
            continue;
        before.insert(it.key(), changed->value(it.key()));
        after.insert(it.key(), it.value());
    }
    if (!after.isEmpty())
        m_steps.push(new ChangeStep(*this, key, before, after, what, step == Step::JoinsLast));
}

QString ScheduleBook::add(const QVariantMap &values, const QString &what)
{
    const QString key = append({});
    m_steps.push(new ReplaceStep(*this, key, std::nullopt, values, what));
    return key;
}

void ScheduleBook::remove(const QString &key, const QString &what)
{
    const BookEntry *const removed = entry(key);
    if (removed && removed->wanted)
        m_steps.push(new ReplaceStep(*this, key, removed->wanted, std::nullopt, what));
}

void ScheduleBook::revert(const QString &key, const QString &what)
{
    const BookEntry *const reverted = entry(key);
    if (reverted && reverted->isChanged())
        m_steps.push(new ReplaceStep(*this, key, reverted->wanted, reverted->applied, what));
}

void ScheduleBook::revertAll(const QString &what)
{
    if (!hasChanges())
        return;
    m_steps.beginMacro(what);
    for (const BookEntry &entry : QList<BookEntry>(m_entries))
        revert(entry.key, what);
    m_steps.endMacro();
}

void ScheduleBook::keepOwn(const QString &key)
{
    const int row = rowOf(key);
    if (row < 0)
        return;
    m_entries[row].isChangedElsewhere = false;
    tellOf(row);
}

QString ScheduleBook::append(const BookEntry &entry)
{
    appendAll({entry});
    return m_entries.last().key;
}

void ScheduleBook::appendAll(const QList<BookEntry> &entries)
{
    if (entries.isEmpty())
        return;
    Q_EMIT aboutToAppend(static_cast<int>(entries.size()));
    for (const BookEntry &entry : entries) {
        const QString key = QString::number(++m_made);
        m_rows.insert(key, count());
        m_entries += entry;
        m_entries.last().key = key;
    }
    Q_EMIT appended();
}

void ScheduleBook::tellOf(int row)
{
    Q_EMIT rowChanged(row);
    Q_EMIT changesChanged();
}

void ScheduleBook::setWanted(const QString &key, const Values &wanted)
{
    const int row = rowOf(key);
    BookEntry &entry = m_entries[row];
    entry.wanted = wanted;
    entry.failure.clear();
    if (!entry.isChanged())
        entry.isChangedElsewhere = false;
    tellOf(row);
}

void ScheduleBook::patch(const QString &key, const QVariantMap &changes)
{
    Values wanted = m_entries.at(rowOf(key)).wanted;
    if (!wanted)
        return; // somebody else has removed it
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        if (it.value().isValid())
            wanted->insert(it.key(), it.value());
        else
            wanted->remove(it.key());
    }
    setWanted(key, wanted);
}
