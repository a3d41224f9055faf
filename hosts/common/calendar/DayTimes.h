// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/RecurrenceRule.h"

#include <QtGlobal>

#include <optional>

/// The first number of a set that is not below `from`; -1 when there is none.
template<size_t Size>
int nextIn(const std::bitset<Size> &set, int from)
{
    for (size_t i = static_cast<size_t>(from); i < Size; ++i) {
        if (set[i])
            return static_cast<int>(i);
    }
    return -1;
}

/// The last number of a set that is not above `from`; -1 when there is none.
template<size_t Size>
int previousIn(const std::bitset<Size> &set, int from)
{
    for (int i = from; i >= 0; --i) {
        if (set[static_cast<size_t>(i)])
            return i;
    }
    return -1;
}

/// The times of day that a rule has on each of its days, in seconds since midnight: every hour of it with
/// every minute and every second. None of the three sets is empty.
class DayTimes
{
public:
    explicit DayTimes(const RecurrenceRule &rule);

    qint64 count() const { return m_count; }

    /// The one with that many before it.
    qint64 at(qint64 index) const;

    /// How many there are before `second`.
    qint64 countBefore(qint64 second) const;

    /// The first not before `second`; nothing when the day has none.
    std::optional<qint64> from(qint64 second) const;

    /// The last not after `second`; nothing when the day has none.
    std::optional<qint64> upTo(qint64 second) const;

private:
    std::bitset<24> m_hours;
    std::bitset<60> m_minutes, m_seconds;
    qint64 m_count;
};
