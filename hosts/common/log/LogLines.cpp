// SPDX-License-Identifier: MIT
#include "hosts/common/log/LogLines.h"

#include "hosts/common/log/LogReader.h"

#include <array>
#include <limits>

using namespace dozely;

namespace
{
constexpr qsizetype stampLength = 15; // "Mar 14 06:55:00"

/// What clocks in a zone show, written as if it were UTC.
QDateTime wallTimeAt(const QDateTime &moment, const QTimeZone &zone)
{
    const QDateTime there = moment.toTimeZone(zone);
    return {there.date(), there.time(), Qt::UTC};
}

int monthOf(QByteArrayView name)
{
    static constexpr std::array<const char *, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    for (size_t i = 0; i < months.size(); ++i) {
        if (name == months.at(i))
            return static_cast<int>(i) + 1;
    }
    return 0;
}

/// The latest such time that is not after another, but for a clock that was set.
QDateTime notAfter(const QByteArray &line, const QDateTime &later)
{
    constexpr int weeks = 60;    // days, by which a clock may have been set back
    constexpr int leapYears = 8; // in which a 29 February comes at the latest
    for (int year = later.date().year() + 1; year >= later.date().year() - leapYears; --year) {
        const QDateTime stamp = LogLines::stampOf(line, year);
        if (stamp.isValid() && stamp <= later.addDays(weeks))
            return stamp;
    }
    return {};
}

/// The time of each line; that of a line without one is not valid.
QList<QDateTime> timesOf(const QList<QByteArray> &lines, QDateTime later)
{
    QList<QDateTime> times(lines.size());
    for (qsizetype i = lines.size() - 1; i >= 0; --i) {
        times[i] = notAfter(lines.at(i), later);
        if (times.at(i).isValid())
            later = times.at(i);
    }
    return times;
}
} // namespace

QDateTime LogLines::stampOf(const QByteArray &line, int year)
{
    if (line.size() < stampLength)
        return {};
    const QByteArrayView text = QByteArrayView(line).first(stampLength);
    if (text[3] != ' ' || text[6] != ' ' || text[9] != ':' || text[12] != ':')
        return {};
    const auto number = [&](qsizetype at) {
        const int tens = text[at] - '0';
        const int ones = text[at + 1] - '0';
        const bool areDigits = tens >= 0 && tens <= 9 && ones >= 0 && ones <= 9;
        return areDigits ? 10 * tens + ones : -1;
    };
    const QDate day(year, monthOf(text.first(3)), number(4));
    const QTime time(number(7), number(10), number(13));
    return day.isValid() && time.isValid() ? QDateTime(day, time, Qt::UTC) : QDateTime();
}

Result<LogLines::Found> LogLines::between(const QString &path, const QDateTime &from, const QDateTime &until,
                                          const QDateTime &now, const QTimeZone &zone)
{
    LogReader reader(path);
    if (const auto opened = reader.open(); !opened)
        return opened.error();
    const QList<QByteArray> lines = reader.lastLines(std::numeric_limits<int>::max());
    const QList<QDateTime> times = timesOf(lines, wallTimeAt(now, zone));
    constexpr qint64 second = 1; // of which stamps say the whole ones
    const QDateTime first = wallTimeAt(from, zone).addSecs(-second);
    const QDateTime last = wallTimeAt(until, zone);
    Found found;
    bool isWithin = false;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (times.at(i).isValid())
            isWithin = first < times.at(i) && times.at(i) <= last;
        if (!isWithin)
            continue;
        if (found.lines.size() == mostLines) {
            found.hasMore = true;
            break;
        }
        found.lines += lines.at(i);
    }
    return found;
}
