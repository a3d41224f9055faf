// SPDX-License-Identifier: MIT
#include "hosts/daemon/HandOvers.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/common/orders/OrderPermissions.h"
#include "hosts/daemon/Scheduler.h"

#include <algorithm>
#include <utility>

using namespace dozely;

namespace
{
/// An agent that comes back later speaks of something that nobody expects any more.
constexpr auto longestHandOver = std::chrono::hours(1);

/// Whether an agent may have what is in this state.
bool mayBeHeld(OccurrenceState state)
{
    return state == OccurrenceState::Done || state == OccurrenceState::Unknown;
}
} // namespace

HandOvers::HandOvers(const Clock &clock, const Scheduler &scheduler) : m_clock(clock), m_scheduler(scheduler)
{
}

/// What agents have been handed of this bundle with this date, which is that of its moment, in the order of
/// the store.
QList<Occurrence> HandOvers::handedOut(quint32 userId, const QString &bundlePath, const QDateTime &date) const
{
    const OccurrenceRecord &record = m_scheduler.record();
    QList<std::pair<qint32, QDateTime>> found;
    for (const auto &[identifier, ownDate] : record.handedOverAt(date)) {
        const auto entry = record.find(identifier, ownDate);
        const auto place = m_scheduler.placeOf(identifier);
        if (place && entry && OrderPermissions::mayHandBack(userId, entry->handedTo) &&
            m_scheduler.schedules().at(*place).fullBundlePath() == bundlePath)
            found += {*place, ownDate};
    }
    std::sort(found.begin(), found.end());
    QList<Occurrence> occurrences;
    for (const auto &[place, ownDate] : std::as_const(found)) {
        Occurrence occurrence{m_scheduler.schedules().at(place), ownDate};
        occurrence.postponedTo = record.find(occurrence.schedule.identifier, ownDate)->postponedTo;
        occurrences += occurrence;
    }
    return occurrences;
}

std::optional<Occurrence> HandOvers::heldByAgent(quint32 userId, const QString &bundlePath,
                                                 const QDateTime &date, const QVariantMap &parameters) const
{
    const QDateTime now = m_clock.currentDate();
    std::optional<Occurrence> held;
    for (const Occurrence &occurrence : handedOut(userId, bundlePath, date.toUTC())) {
        const Schedule &schedule = occurrence.schedule;
        const auto entry = m_scheduler.record().find(schedule.identifier, occurrence.date);
        const bool isWithdrawn =
            !schedule.isEnabled && (schedule.recurrence || schedule.date == occurrence.date);
        if (isWithdrawn || !mayBeHeld(entry->state) || entry->handedOver.addDuration(longestHandOver) < now)
            continue;
        if (schedule.parameters == parameters)
            return occurrence;
        if (!held)
            held = occurrence;
    }
    return held;
}

std::optional<Occurrence> HandOvers::handedOver(quint32 userId, const QString &bundlePath,
                                                const QDateTime &date, const QVariantMap &parameters,
                                                OccurrenceState state) const
{
    for (const Occurrence &occurrence : handedOut(userId, bundlePath, date.toUTC())) {
        if (occurrence.schedule.parameters == parameters &&
            m_scheduler.record().find(occurrence.schedule.identifier, occurrence.date)->state == state)
            return occurrence;
    }
    return {};
}
