// SPDX-License-Identifier: MIT
#include "hosts/daemon/ScheduleIndex.h"

#include <algorithm>
#include <numeric>

void ScheduleIndex::rebuild(const QList<Schedule> &schedules)
{
    m_places.resize(static_cast<size_t>(schedules.size()));
    m_places.shrink_to_fit();
    std::iota(m_places.begin(), m_places.end(), 0);
    std::sort(m_places.begin(), m_places.end(), [&](qint32 a, qint32 b) {
        const int order = schedules.at(a).identifier.compare(schedules.at(b).identifier);
        return order != 0 ? order < 0 : a < b;
    });
}

std::optional<qint32> ScheduleIndex::find(const QList<Schedule> &schedules, const QString &identifier) const
{
    const auto found = std::lower_bound(
        m_places.cbegin(), m_places.cend(), identifier,
        [&](qint32 place, const QString &text) { return schedules.at(place).identifier < text; });
    return found != m_places.cend() && schedules.at(*found).identifier == identifier ? std::optional(*found)
                                                                                     : std::nullopt;
}
