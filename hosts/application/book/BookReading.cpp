// SPDX-License-Identifier: MIT
// How a book learns what the daemon has.
#include "hosts/application/book/ScheduleBook.h"
#include "hosts/application/book/ScheduleKeys.h"
#include "hosts/common/words/ReasonWords.h"

#include <QPointer>
#include <QSet>

#include <algorithm>

using namespace dozely;

namespace
{
constexpr int mostAskedForSingly = 20; // one long answer is cheaper than many short ones
} // namespace

void ScheduleBook::read()
{
    m_client.list([self = QPointer(this)](const Result<QList<QVariantMap>> &told) {
        if (!self)
            return;
        self->m_state = told ? State::Read : State::Failed;
        self->m_failure = told ? QString() : ReasonWords::of(told.error());
        if (told)
            self->takeOverAll(*told);
        Q_EMIT self->stateChanged();
    });
}

int ScheduleBook::rowOfIdentifier(const QString &identifier) const
{
    const auto found = std::find_if(m_entries.cbegin(), m_entries.cend(),
                                    [&](const BookEntry &entry) { return entry.identifier == identifier; });
    return found == m_entries.cend() ? -1 : static_cast<int>(found - m_entries.cbegin());
}

void ScheduleBook::takeOverAll(const QList<QVariantMap> &told)
{
    QHash<QString, int> known;
    for (int row = 0; row < count(); ++row) {
        if (!at(row).identifier.isEmpty())
            known.insert(at(row).identifier, row);
    }
    QList<BookEntry>
        others; // which are added at once: a list sorts a thousand faster than one a thousand times
    for (const QVariantMap &schedule : told) {
        const auto row = known.constFind(schedule.value(ScheduleKey::identifier).toString());
        if (row == known.cend()) {
            others += BookEntry();
            others.last().takeOver(schedule);
        } else {
            m_entries[*row].takeOver(schedule);
            Q_EMIT rowChanged(*row);
            known.erase(row);
        }
    }
    appendAll(others);
    for (const int row : std::as_const(known)) {
        m_entries[row].takeOverRemoval();
        Q_EMIT rowChanged(row);
    }
    Q_EMIT changesChanged();
}

void ScheduleBook::takeOver(const QVariantMap &told)
{
    const int row = rowOfIdentifier(told.value(ScheduleKey::identifier).toString());
    if (row < 0) {
        BookEntry entry;
        entry.takeOver(told);
        append(entry);
        return;
    }
    m_entries[row].takeOver(told);
    tellOf(row);
}

void ScheduleBook::refresh(const QStringList &identifiers)
{
    if (m_isApplying) {
        // Of one that is being added, the name is not known yet.
        m_changedMeanwhile += identifiers;
        m_allChangedMeanwhile |= identifiers.isEmpty();
    } else if (identifiers.isEmpty() || identifiers.size() > mostAskedForSingly) {
        read();
    } else {
        for (const QString &identifier : QSet<QString>(identifiers.cbegin(), identifiers.cend()))
            refreshOne(identifier);
    }
}

void ScheduleBook::refreshOne(const QString &identifier)
{
    m_client.get(identifier, [self = QPointer(this), identifier](const Result<QVariantMap> &told) {
        if (!self)
            return;
        if (told) {
            self->takeOver(*told);
            return;
        }
        const int row = self->rowOfIdentifier(identifier);
        if (row < 0 || told.error().name != ScheduleError::noSuchSchedule)
            return; // what fails otherwise is told by reading all
        self->m_entries[row].takeOverRemoval();
        self->tellOf(row);
    });
}
