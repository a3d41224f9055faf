// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/Recurrence.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QTimeZone>

#include <bitset>
#include <optional>

/// When a schedule takes place, in the terms in which a person picks it in a form. A plain value; fields that
/// its kind has no use for are as they are made, so that two that mean the same choices are equal.
struct Timing {
    enum class Kind { Once, Daily, Weekdays, Weekly, Monthly, Yearly, Distance, Expert };
    enum class End { Never, OnDay, AfterTimes };

    struct Pattern {
        Kind kind = Kind::Once;
        int interval = 1;               ///< Every so many days, weeks, months, years, minutes or hours.
        bool isHours = false;           ///< Of a distance, which is one of minutes otherwise.
        std::bitset<7> weekdays = {};   ///< Weekly; bit 0 is Monday.
        int weekStart = 0;              ///< Weekly, every second week and rarer; 0 is Monday.
        std::bitset<32> monthDays = {}; ///< Monthly, unless it has an ordinal; bit 0 is the last day.
        int ordinal = 0;   ///< Monthly: 1 to 4, or -1 for the last; 0: it goes by days of the month.
        int weekday = 0;   ///< Beside the ordinal; 0 is Monday.
        int month = 0;     ///< Yearly.
        int day = 0;       ///< Yearly.
        QString rule = {}; ///< Expert: the value of an RRULE of RFC 5545.

        bool operator==(const Pattern &) const = default;
    };

    struct Ending {
        End end = End::Never;
        QDate until = {}; ///< That day included.
        int count = 0;

        bool operator==(const Ending &) const = default;
    };

    Pattern pattern = {};
    Ending ending = {};      ///< Never for Once and Expert, whose rule says it itself.
    QDate begin = {};        ///< The day of Once; of others the one from which on they count.
    QList<QTime> times = {}; ///< In order, one at least; only kinds that go by days have more.
    QString timeZone = {};   ///< IANA name; empty: the machine's.
    QList<WallTime> excludedDates = {};
    QList<WallTime> extraDates = {};

    bool operator==(const Timing &) const = default;

    /// What a schedule says. A rule that the other kinds do not show exactly is one for experts.
    static Timing of(const QDateTime &date, const QString &timeZone,
                     const std::optional<Recurrence> &recurrence);

    /// Whether it goes by days and times of day, so that it may have several of them.
    bool isOfDays() const { return isOfDays(pattern.kind); }
    static bool isOfDays(Kind kind);

    /// The zone of a name; the machine's of an empty one.
    static QTimeZone zoneOf(const QString &timeZone);

    static constexpr int firstYear = 1800; ///< In which something may end: fields cannot show every year.
    static constexpr int mostTimes = 12;
    static constexpr int mostInterval = 9999;
    static constexpr int mostCount = 1'000'000;
};
