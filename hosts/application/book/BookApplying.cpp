// SPDX-License-Identifier: MIT
// How the daemon learns what is wanted.
#include "hosts/application/book/ScheduleBook.h"
#include "hosts/application/book/ScheduleKeys.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "hosts/common/words/ReasonWords.h"

#include <QPointer>

using namespace dozely;

void ScheduleBook::apply()
{
    if (m_isApplying)
        return;
    for (const BookEntry &entry : std::as_const(m_entries)) {
        if (entry.isChanged())
            m_toApply += entry.key;
    }
    m_toApplyAnyway.clear();
    beginApplying();
}

void ScheduleBook::applyAnyway(const QString &key)
{
    if (m_isApplying || !entry(key) || !entry(key)->isChanged())
        return;
    m_toApply = {key};
    m_toApplyAnyway = key;
    beginApplying();
}

void ScheduleBook::beginApplying()
{
    if (m_toApply.isEmpty())
        return;
    m_failures = 0;
    m_steps.setClean(); // what comes from now on joins no step from before
    m_isApplying = true;
    Q_EMIT changesChanged();
    applyNext();
}

void ScheduleBook::applyNext()
{
    if (m_toApply.isEmpty()) {
        m_isApplying = false;
        const bool all = std::exchange(m_allChangedMeanwhile, false);
        const QStringList some = std::exchange(m_changedMeanwhile, {});
        if (all || !some.isEmpty())
            refresh(all ? QStringList() : some);
        Q_EMIT changesChanged();
        Q_EMIT applied(m_failures);
        return;
    }
    const QString key = m_toApply.takeFirst();
    const BookEntry &entry = *this->entry(key);
    const Values sent = entry.wanted;
    const QString identifier = entry.identifier;
    const bool isAnyway = key == m_toApplyAnyway;
    const auto answered = [self = QPointer(this), key, sent, identifier](const Result<void> &done) {
        if (!self)
            return;
        const bool isGone = !sent && !done && done.error().name == ScheduleError::noSuchSchedule;
        if (done || isGone)
            self->noteApplied(key, sent, sent ? identifier : QString());
        else
            self->noteFailure(key, done.error());
        self->applyNext();
    };
    if (!entry.isChanged()) {
        applyNext(); // taken back while another one was under way
    } else if (!entry.applied) {
        QVariantMap wish = *sent;
        if (isAnyway)
            wish.insert(ScheduleKey::anyway, true);
        m_client.add(wish, [self = QPointer(this), key, sent](const Result<QString> &added) {
            if (!self)
                return;
            if (added)
                self->noteApplied(key, sent, *added);
            else
                self->noteFailure(key, added.error());
            self->applyNext();
        });
    } else if (!sent) {
        m_client.remove(identifier, answered);
    } else {
        QVariantMap changes = entry.changes();
        if (!entry.revision.isEmpty())
            changes.insert(ScheduleKey::revision, entry.revision);
        if (isAnyway)
            changes.insert(ScheduleKey::anyway, true);
        m_client.change(identifier, changes, answered);
    }
}

void ScheduleBook::noteApplied(const QString &key, const Values &sent, const QString &identifier)
{
    const int row = rowOf(key);
    BookEntry &entry = m_entries[row];
    entry.applied = sent;
    entry.identifier = identifier;
    entry.failure.clear();
    entry.isInfeasible = false;
    entry.isChangedElsewhere = false;
    entry.revision.clear();
    if (!sent)
        entry.next = {};
    // Its next date and its revision are the daemon's to say.
    if (!identifier.isEmpty())
        m_changedMeanwhile += identifier;
    tellOf(row);
}

void ScheduleBook::noteFailure(const QString &key, const Error &error)
{
    const int row = rowOf(key);
    BookEntry &entry = m_entries[row];
    Error told = error;
    entry.isInfeasible = error.name == ScheduleError::notFeasible;
    if (entry.isInfeasible && told.text.endsWith(SchedulerNames::anywayHint))
        told.text.chop(static_cast<qsizetype>(qstrlen(SchedulerNames::anywayHint))); // which is a button here
    entry.failure = ReasonWords::of(told);
    // Another one by now: what it is, the person sees before trying again.
    if ((error.name == ScheduleError::changed || error.name == ScheduleError::noSuchSchedule) &&
        !entry.identifier.isEmpty())
        m_changedMeanwhile += entry.identifier;
    ++m_failures;
    tellOf(row);
}
