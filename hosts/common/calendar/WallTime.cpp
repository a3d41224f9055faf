// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/WallTime.h"

#include <tuple>

namespace
{
const QString form = "yyyy-MM-dd'T'HH:mm:ss";
constexpr int lastYear = 9999;
} // namespace

WallTime WallTime::of(const QDateTime &date)
{
    const QTime time = date.time();
    return {date.date(), QTime(time.hour(), time.minute(), time.second())};
}

std::optional<WallTime> WallTime::fromString(const QString &text)
{
    const QDateTime read = QDateTime::fromString(text, form);
    // Qt reads more than it writes: blanks, and years of more digits.
    const WallTime wallTime{read.date(), read.time()};
    return wallTime.isValid() && wallTime.toString() == text ? std::optional(wallTime) : std::nullopt;
}

QString WallTime::toString() const
{
    return isValid() ? QDateTime(day, time, Qt::UTC).toString(form) : QString();
}

bool WallTime::isValid() const
{
    return day.isValid() && time.isValid() && day.year() >= 1 && day.year() <= lastYear;
}

bool WallTime::operator<(const WallTime &other) const
{
    return std::tie(day, time) < std::tie(other.day, other.time);
}
