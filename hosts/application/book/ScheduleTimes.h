// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/Recurrence.h"

#include <QDateTime>
#include <QString>
#include <QVariantMap>

#include <optional>

/// When a schedule takes place, in the form of the calendar's code; a plain value.
struct ScheduleTimes {
    QDateTime date;                       ///< Of what repeats the first occurrence.
    QString timeZone;                     ///< IANA name; empty: the machine's.
    std::optional<Recurrence> recurrence; ///< Absent: once.

    /// That of a schedule's values, whose keys are those of ScheduleKey; what cannot be read is left out.
    static ScheduleTimes of(const QVariantMap &values);

    /// As values for a schedule; an invalid one stands for a key that is not there.
    QVariantMap toValues() const;

    bool operator==(const ScheduleTimes &) const = default;
};
