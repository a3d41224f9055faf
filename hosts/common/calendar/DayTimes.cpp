// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/DayTimes.h"

namespace
{
constexpr qint64 minuteLength = 60; // seconds
constexpr qint64 hourLength = 60 * minuteLength;

template<size_t Size>
int nth(const std::bitset<Size> &set, qint64 index)
{
    int found = nextIn(set, 0);
    for (; index > 0; --index)
        found = nextIn(set, found + 1);
    return found;
}

template<size_t Size>
qint64 countOf(const std::bitset<Size> &set)
{
    return static_cast<qint64>(set.count());
}

int hourOf(qint64 second)
{
    return static_cast<int>(second / hourLength);
}

int minuteOf(qint64 second)
{
    return static_cast<int>(second / minuteLength % 60);
}

int secondOf(qint64 second)
{
    return static_cast<int>(second % minuteLength);
}
} // namespace

DayTimes::DayTimes(const RecurrenceRule &rule)
    : m_hours(rule.hours),
      m_minutes(rule.minutes),
      m_seconds(rule.seconds),
      m_count(countOf(m_hours) * countOf(m_minutes) * countOf(m_seconds))
{
}

qint64 DayTimes::at(qint64 index) const
{
    const qint64 inMinute = countOf(m_seconds);
    const qint64 inHour = countOf(m_minutes) * inMinute;
    return nth(m_hours, index / inHour) * hourLength +
           nth(m_minutes, index % inHour / inMinute) * minuteLength + nth(m_seconds, index % inMinute);
}

qint64 DayTimes::countBefore(qint64 second) const
{
    const auto below = [](const auto &set, int limit) {
        qint64 count = 0;
        for (int i = nextIn(set, 0); i >= 0 && i < limit; i = nextIn(set, i + 1))
            ++count;
        return count;
    };
    qint64 count = below(m_hours, hourOf(second)) * countOf(m_minutes);
    if (!m_hours[static_cast<size_t>(hourOf(second))])
        return count * countOf(m_seconds);
    count = (count + below(m_minutes, minuteOf(second))) * countOf(m_seconds);
    return m_minutes[static_cast<size_t>(minuteOf(second))] ? count + below(m_seconds, secondOf(second))
                                                            : count;
}

std::optional<qint64> DayTimes::from(qint64 second) const
{
    // The same hour and minute first, then the next minute of the hour, then the next hour.
    const int hour = hourOf(second);
    if (m_hours[static_cast<size_t>(hour)]) {
        const int minute = minuteOf(second);
        if (m_minutes[static_cast<size_t>(minute)]) {
            if (const int found = nextIn(m_seconds, secondOf(second)); found >= 0)
                return hour * hourLength + minute * minuteLength + found;
        }
        if (const int found = nextIn(m_minutes, minute + 1); found >= 0)
            return hour * hourLength + found * minuteLength + nextIn(m_seconds, 0);
    }
    const int found = nextIn(m_hours, hour + 1);
    if (found < 0)
        return {};
    return found * hourLength + nextIn(m_minutes, 0) * minuteLength + nextIn(m_seconds, 0);
}

std::optional<qint64> DayTimes::upTo(qint64 second) const
{
    constexpr int last = 59;
    const int hour = hourOf(second);
    if (m_hours[static_cast<size_t>(hour)]) {
        const int minute = minuteOf(second);
        if (m_minutes[static_cast<size_t>(minute)]) {
            if (const int found = previousIn(m_seconds, secondOf(second)); found >= 0)
                return hour * hourLength + minute * minuteLength + found;
        }
        if (const int found = previousIn(m_minutes, minute - 1); found >= 0)
            return hour * hourLength + found * minuteLength + previousIn(m_seconds, last);
    }
    const int found = previousIn(m_hours, hour - 1);
    if (found < 0)
        return {};
    return found * hourLength + previousIn(m_minutes, last) * minuteLength + previousIn(m_seconds, last);
}
