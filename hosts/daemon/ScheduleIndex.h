// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

#include <QList>

#include <optional>
#include <vector>

/// Finds schedules of a list by their identifiers: four bytes for each, no copy of anything.
class ScheduleIndex
{
public:
    /// `schedules` is what every find is about; another list needs a rebuild.
    void rebuild(const QList<Schedule> &schedules);

    /// The place in the list; absent for none. In the time of a binary search.
    std::optional<qint32> find(const QList<Schedule> &schedules, const QString &identifier) const;

private:
    std::vector<qint32> m_places; // by identifier
};
