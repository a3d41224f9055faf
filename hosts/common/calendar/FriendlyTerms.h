// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <chrono>
#include <optional>

/// What people write for times, days and repetitions. Nothing that can be read in two ways is guessed at: an
/// error is a clause that says both readings, or what would have been understood.
namespace FriendlyTerms
{
/// "22:00", "7:00", "06:55:30", "7 pm". With minutes, and without am and pm, clocks have 24 hours.
dozely::Result<QTime> time(const QString &text);

/// Every time of day that a text can mean, in order; none for what is no time.
QList<QTime> timesIn(const QString &text);

/// What DateTerms reads.
struct Date {
    QDate day;
    std::optional<QTime> time;                  ///< Absent: the text names a day alone.
    std::optional<std::chrono::seconds> offset; ///< From UTC, where the text says it; never without a time.
};

/// "90", "90s", "10m", "6h", "2d"; a number alone is seconds. At most a hundred years.
dozely::Result<std::chrono::seconds> duration(const QString &text);

/// How often, as the parts of a rule of RFC 5545 that say so: "weekday" is
/// "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR". Known are day, weekday, week, month and year, days of the week with
/// commas between them, and distances (30s, 15m, 2h).
dozely::Result<QString> repetition(const QString &text);

/// Days of a month, "1,15,last", as RFC 5545 has them: the last is -1.
dozely::Result<QList<int>> monthDays(const QString &text);

/// The moments at which clocks of a zone show a wall time: none when it is skipped, two, in order, when it
/// occurs twice. UTC.
QList<QDateTime> momentsOf(const QDate &day, const QTime &time, const QTimeZone &zone);
} // namespace FriendlyTerms
