// SPDX-License-Identifier: MIT
//
// Says of recurrences on the standard input when they come due. A line has, separated by tabs: rule, local
// start, zone, extra dates, excluded dates (both separated by commas), two moments in seconds since 1970 and
// a number. The answer is a line: the occurrences later than the first moment up to the second, at most that
// many of them, in seconds since 1970; or "refused: " and why. What is asked in the other direction and of
// whole runs must agree with it, otherwise the line begins with "contradiction: ".
#include "hosts/common/calendar/OccurrenceSeries.h"

#include <cstdio>
#include <iostream>
#include <string>

namespace
{
QList<WallTime> dates(const QString &list)
{
    QList<WallTime> result;
    for (const QString &text : list.split(',', Qt::SkipEmptyParts))
        result.append(WallTime::fromString(text).value_or(WallTime()));
    return result;
}

QDateTime moment(const QString &seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds.toLongLong(), Qt::UTC);
}

/// Why the series contradicts what it said when it was asked for one after the other; empty when it does not.
QString contradiction(const OccurrenceSeries &series, const QList<QDateTime> &found, const QDateTime &after)
{
    if (found.isEmpty())
        return {};
    const OccurrenceSeries::Run run = series.between(after, found.last());
    if (run.first != found.first() || run.last != found.last() ||
        (run.isCountExact ? run.count != found.size() : run.count > found.size()))
        return QString("a run of %1 up to %2").arg(run.count).arg(run.last.toString(Qt::ISODate));
    std::optional<QDateTime> back = found.last();
    for (auto date = found.rbegin(); date != found.rend(); ++date) {
        back = series.upTo(*back);
        if (back != *date)
            return QString("up to %1").arg(date->toString(Qt::ISODate));
        back = back->addSecs(-1);
    }
    back = series.upTo(*back);
    return back && *back > after ? QString("before all %1").arg(back->toString(Qt::ISODate)) : QString();
}

QString answer(const QStringList &asked)
{
    Recurrence recurrence;
    recurrence.rule = asked.at(0);
    recurrence.localStart = WallTime::fromString(asked.at(1)).value_or(WallTime());
    recurrence.extraDates = dates(asked.at(3));
    recurrence.excludedDates = dates(asked.at(4));
    const auto series = OccurrenceSeries::of(recurrence, QTimeZone(asked.at(2).toUtf8()));
    if (!series)
        return "refused: " + series.error().text;
    const QDateTime after = moment(asked.at(5));
    const QDateTime upTo = moment(asked.at(6));
    QList<QDateTime> found;
    QStringList written;
    for (auto date = series->after(after); date && *date <= upTo && found.size() < asked.at(7).toInt();
         date = series->after(*date)) {
        found.append(*date);
        written.append(QString::number(date->toSecsSinceEpoch()));
    }
    const QString fault = contradiction(*series, found, after);
    return fault.isEmpty() ? written.join(' ') : "contradiction: " + fault;
}
} // namespace

int main()
{
    std::string line;
    while (std::getline(std::cin, line)) {
        const QStringList asked = QString::fromStdString(line).split('\t');
        std::puts(qPrintable(asked.size() == 8 ? answer(asked) : QString("refused: no case")));
    }
    return 0;
}
