// SPDX-License-Identifier: MIT
#include "hosts/common/calendar/WallTime.h"

#include <tuple>

namespace
{
/// A digit stands for any; a store may have ten thousand of them to be read at once.
constexpr QLatin1StringView form("0000-00-00T00:00:00");
constexpr int lastYear = 9999;

bool hasForm(const QString &text)
{
    if (text.size() != form.size())
        return false;
    for (qsizetype i = 0; i < form.size(); ++i) {
        const char16_t letter = text.at(i).unicode();
        const bool isDigit = letter >= u'0' && letter <= u'9';
        if (form.at(i) == QLatin1Char('0') ? !isDigit : text.at(i) != form.at(i))
            return false;
    }
    return true;
}

int number(const QString &text, int from, int digits)
{
    int number = 0;
    for (int i = from; i < from + digits; ++i)
        number = 10 * number + (text.at(i).unicode() - u'0');
    return number;
}
} // namespace

WallTime WallTime::of(const QDateTime &date)
{
    const QTime time = date.time();
    return {date.date(), QTime(time.hour(), time.minute(), time.second())};
}

std::optional<WallTime> WallTime::fromString(const QString &text)
{
    if (!hasForm(text))
        return {};
    const WallTime wallTime{QDate(number(text, 0, 4), number(text, 5, 2), number(text, 8, 2)),
                            QTime(number(text, 11, 2), number(text, 14, 2), number(text, 17, 2))};
    return wallTime.isValid() ? std::optional(wallTime) : std::nullopt;
}

QString WallTime::toString() const
{
    return isValid() ? QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02d", day.year(), day.month(), day.day(),
                                         time.hour(), time.minute(), time.second())
                     : QString();
}

bool WallTime::isValid() const
{
    return day.isValid() && time.isValid() && day.year() >= 1 && day.year() <= lastYear;
}

bool WallTime::operator<(const WallTime &other) const
{
    return std::tie(day, time) < std::tie(other.day, other.time);
}
