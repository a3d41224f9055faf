// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

/// Dates as people say them, in their own language and their locale's forms.
class DateInWords
{
    Q_DECLARE_TR_FUNCTIONS(DateInWords)
public:
    /// "today 22:00", "tomorrow 06:55", "yesterday 06:55", of the next six days "Friday 22:00", else
    /// "14 March 2027, 06:55": by what clocks in `zone` show at the moment and at `now`. Empty for what is no
    /// date.
    static QString of(const QDateTime &moment, const QDateTime &now, const QTimeZone &zone,
                      const QLocale &locale);

    /// "14 March 2027".
    static QString of(QDate day, const QLocale &locale);

    /// Whether the locale says the day before the month.
    static bool isDayFirst(const QLocale &locale);

    /// "22:00", "10:00 PM"; with seconds where there are some.
    static QString of(QTime time, const QLocale &locale);

    /// The format of a time for QLocale and QTimeEdit, with seconds where the time has some.
    static QString format(QTime time, const QLocale &locale);
};
