// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/WallTime.h"

#include "DozelyKit/core/foundation/Result.h"

#include <QList>
#include <QString>
#include <QVariantMap>

/// How a schedule repeats, as the store has it ("Recurrence Rule"): a plain value. Whether the rule itself
/// makes sense, OccurrenceSeries says.
struct Recurrence {
    QString rule;                  ///< The value of an RRULE of RFC 5545: "FREQ=WEEKLY;BYDAY=MO,TH".
    WallTime localStart;           ///< From when on the rule counts. An occurrence only if the rule gives it.
    QList<WallTime> extraDates;    ///< Occurrences beside those of the rule, in any order.
    QList<WallTime> excludedDates; ///< What is no occurrence though rule or extra dates say so.
    QVariantMap otherKeys;         ///< Keys that this version does not know, kept as they were read.

    /// The store's dictionary as a recurrence; an error says why it is none, as a clause that stands by
    /// itself:
    /// "\"Recurrence Rule\" has no \"Rule\"". Refused are also a rule of more than maximumRuleLength
    /// characters and more than maximumDates dates of one kind, which nobody writes but to keep us busy.
    static dozely::Result<Recurrence> fromDictionary(const QVariant &value);

    /// The dictionary for the store: every known key that has something to say, and otherKeys.
    QVariantMap toDictionary() const;

    static constexpr int maximumRuleLength = 4096;
    static constexpr int maximumDates = 1000; ///< Of each kind.

    bool operator==(const Recurrence &) const = default;
};
