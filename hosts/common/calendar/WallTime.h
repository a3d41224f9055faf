// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

#include <compare>
#include <optional>

/// A time as clocks show it, in no zone: years 1 to 9999, whole seconds. A plain value.
struct WallTime {
    QDate day;
    QTime time;

    /// What clocks in the zone of the date itself show at it; a fraction of a second is cut off. An invalid
    /// date gives an invalid time.
    static WallTime of(const QDateTime &date);

    /// The reverse of toString(); nothing for any other form, and for times that there are not, such as a
    /// thirtieth of February or a second 60.
    static std::optional<WallTime> fromString(const QString &text);

    /// "2026-03-14T06:55:00"; empty for what is not valid.
    QString toString() const;

    /// Whether there is such a day in the years 1 to 9999 and such a time of day.
    bool isValid() const;

    bool operator==(const WallTime &) const = default;
    bool operator<(const WallTime &other) const;
};
