// SPDX-License-Identifier: MIT
#include "hosts/admin/KnownOutcomes.h"

#include "hosts/admin/AdminText.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/common/record/UpcomingOccurrences.h"

using namespace dozely;

namespace
{
QDateTime now()
{
    return Port<Clock>::current()->currentDate();
}

/// "failed (exit 3)".
QString nameOf(const RecordedOutcome &outcome)
{
    constexpr qsizetype longestReason = 80; // in a column of the table
    const bool hasFailed = outcome.exitStatus.value_or(0) != 0;
    const QString reason = !outcome.failure.isEmpty()
                               ? logLabel(AdminText::reason(outcome.failure), longestReason)
                           : hasFailed ? AdminText::tr("exit %1").arg(*outcome.exitStatus)
                                       : QString();
    const QString state = AdminText::state(outcome.state);
    return reason.isEmpty() ? state : QString("%1 (%2)").arg(state, reason);
}
} // namespace

KnownOutcomes::KnownOutcomes() : m_outcomes(RecordedOutcomes::open())
{
    if (!m_outcomes)
        return;
    const auto toCome = m_outcomes->toCome(now());
    if (!toCome) {
        m_outcomes = toCome.error();
        return;
    }
    for (const RecordedOccurrence &occurrence : *toCome)
        m_toCome[occurrence.identifier] += occurrence;
}

QString KnownOutcomes::fault() const
{
    const bool mayNot = !m_outcomes && m_outcomes.error().name == RecordedOutcomes::notPermitted;
    return m_outcomes || mayNot ? QString() : AdminText::reason(m_outcomes.error());
}

std::optional<RecordedOutcome> KnownOutcomes::of(const Schedule &schedule) const
{
    if (!m_outcomes)
        return {};
    if (!schedule.recurrence) {
        const auto found = m_outcomes->find(schedule.identifier, schedule.date);
        return found ? *found : std::nullopt;
    }
    const auto latest = m_outcomes->findLatest(schedule.identifier, now());
    return latest && *latest ? std::optional((*latest)->outcome) : std::nullopt;
}

std::optional<QDateTime> KnownOutcomes::next(const Schedule &schedule) const
{
    Schedule enabled = schedule;
    enabled.isEnabled = true;
    const auto next = UpcomingOccurrences({enabled}, now(), m_toCome.value(schedule.identifier)).next();
    return next ? std::optional(next->moment) : std::nullopt;
}

QString KnownOutcomes::nameFor(const Schedule &schedule) const
{
    if (!areKnown())
        return "?";
    const auto outcome = of(schedule);
    if (!schedule.recurrence || !outcome)
        return outcome ? nameOf(*outcome) : schedule.isEnabled ? AdminText::tr("to come") : "-";
    const bool comes = schedule.isEnabled && next(schedule);
    return comes ? AdminText::tr("to come, last %1").arg(nameOf(*outcome)) : nameOf(*outcome);
}

QVariant KnownOutcomes::describe(const Schedule &schedule) const
{
    const auto outcome = of(schedule);
    if (!outcome)
        return {};
    const auto number = [](std::optional<qint64> value) { return value ? QVariant(*value) : QVariant(); };
    return QVariantMap{{"state", outcome->state},
                       {"isOver", outcome->isOver()},
                       {"begun", outcome->begun.isValid() ? QVariant(outcome->begun) : QVariant()},
                       {"ended", outcome->ended.isValid() ? QVariant(outcome->ended) : QVariant()},
                       {"lateness", number(outcome->lateness)},
                       {"exitStatus", number(outcome->exitStatus)},
                       {"failure", outcome->failure.isEmpty() ? QVariant() : outcome->failure}};
}
