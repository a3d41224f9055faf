// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/Occurrence.h"

#include <QList>

#include <optional>

namespace dozely
{
class Clock;
} // namespace dozely

class Scheduler;

/// Which occurrences agents have been handed, by what the record says and by what an order carries: the
/// bundle's full path and the date. Looks, and remembers nothing of its own.
class HandOvers
{
public:
    /// Both must outlive the object.
    HandOvers(const dozely::Clock &clock, const Scheduler &scheduler);

    /// An occurrence that the agent of `userId` has. Of several the one with equal `parameters`, else the
    /// first. Absent when that agent has none such, has had it for longer than an hour, or its schedule was
    /// disabled, removed or given another bundle.
    std::optional<Occurrence> heldByAgent(quint32 userId, const QString &bundlePath, const QDateTime &date,
                                          const QVariantMap &parameters = {}) const;

    /// An occurrence in this state that the agent of `userId` has been handed. Unlike heldByAgent it matters
    /// neither how long ago that was nor what became of the schedule meanwhile, and the parameters must be
    /// equal: what happened is told, nothing is to be done.
    std::optional<Occurrence> handedOver(quint32 userId, const QString &bundlePath, const QDateTime &date,
                                         const QVariantMap &parameters, OccurrenceState state) const;

private:
    QList<Occurrence> handedOut(quint32 userId, const QString &bundlePath, const QDateTime &date) const;

    const dozely::Clock &m_clock;
    const Scheduler &m_scheduler;
};
