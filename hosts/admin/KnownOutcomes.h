// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/record/RecordedOutcomes.h"
#include "hosts/common/schedules/Schedule.h"

#include <QHash>

/// What became of the schedules' occurrences, as far as the caller may know it. THREADING: one thread.
/// BLOCKING: for the disk.
class KnownOutcomes
{
public:
    KnownOutcomes();

    bool areKnown() const { return m_outcomes.ok(); }

    /// Why nothing is known; empty when something is, or when the caller simply may not.
    QString fault() const;

    /// Of what takes place once its outcome, of what repeats the latest; nothing when there is none.
    std::optional<RecordedOutcome> of(const Schedule &schedule) const;

    /// When it takes place next, postponed or not, were it enabled; nothing when it does not any more.
    std::optional<QDateTime> next(const Schedule &schedule) const;

    /// In one or two words, and why it failed.
    QString nameFor(const Schedule &schedule) const;

    /// For programs.
    QVariant describe(const Schedule &schedule) const;

private:
    dozely::Result<RecordedOutcomes> m_outcomes;
    QHash<QString, QList<RecordedOccurrence>> m_toCome; // by identifier
};
