// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/RecurrenceRule.h"

#include <QtGlobal>

/// A day of the Gregorian calendar with what rules ask of it. Days are numbered from 1970-01-01, day 0.
struct CalendarDay {
    qint64 number = 0;
    int year = 1970;
    int month = 1;
    int day = 1;
    int weekday = 3; ///< 0 is Monday.
    int yearDay = 1;
    int daysInMonth = 31;
    int daysInYear = 365;

    static constexpr qint64 seconds = 86400;
    static constexpr qint64 first = -719162; ///< 0001-01-01
    static constexpr qint64 last = 2932896;  ///< 9999-12-31

    static CalendarDay of(qint64 number);
    static bool exists(int year, int month, int day);
    static qint64 numberOf(int year, int month, int day);

    /// The year whose week this day is in, when weeks begin on that day and the first one is that which has
    /// four days or more of its year.
    int weekYear(int weekStart) const;
    /// The first day of the first week of a year.
    static qint64 firstWeekOf(int year, int weekStart);

    /// The day after it.
    CalendarDay next() const;

    /// Whether BYMONTH, BYWEEKNO, BYYEARDAY, BYMONTHDAY and BYDAY of a rule all let it pass.
    bool matches(const RecurrenceRule &rule) const;

private:
    bool matchesWeek(const RecurrenceRule &rule) const;
    bool matchesWeekday(const RecurrenceRule &rule) const;
};
