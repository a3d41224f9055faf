// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/admin/StartOptions.h"
#include "hosts/common/calendar/RuleParts.h"
#include "hosts/common/schedules/SharedRecurrence.h"

/// The options that make up a rule: `--every` and `--on`, or `--rule`, with `--at`, `--until` and `--count`.
struct RuleOptions {
    /// What the options leave open.
    struct Former {
        SharedRecurrence recurrence; ///< Absent: it does not repeat yet.
        std::optional<QTime> time;   ///< The time of day of what takes place once.
    };

    RuleParts parts;
    bool isNew = false;       ///< A repetition is named, and not only something about it.
    QTime time = QTime(0, 0); ///< Of a rule of days: that of its start.
    QTime lastTime = time;    ///< Of a rule of days: no time of a day is later.
    QStringList remarks = {}; ///< Sentences for the person.

    /// What the options make of the former. Raises AdminError when they are wrong, do not fit together or can
    /// be read in two ways.
    static RuleOptions read(const AdminOptions &options, const Former &former, const StartOptions &start,
                            const QTimeZone &zone);
};
