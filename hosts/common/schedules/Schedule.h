// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/schedules/SchedulePolicies.h"
#include "hosts/common/schedules/SharedRecurrence.h"

#include <QDateTime>
#include <QString>
#include <QTimeZone>
#include <QVariantMap>

#include <chrono>
#include <optional>

/// One entry of the schedule store, a plain value.
struct Schedule {
    QString identifier;           ///< Unique in the store, never empty.
    QString name;                 ///< What the user calls it.
    bool isEnabled = true;        ///< One that is not enabled never comes due.
    QString bundlePath;           ///< A fixed path: below the root folder once joined to it.
    QVariantMap parameters;       ///< The plug-in's parameters.
    QDateTime date;               ///< UTC, whole seconds. Of the first occurrence, where it repeats.
    QString timeZone;             ///< IANA name; empty stands for UTC, or for the machine's where it repeats.
    std::optional<quint32> owner; ///< The user whose schedule it is; absent: nobody's but root's.
    bool staysWhenOver = false;   ///< Otherwise it is removed some time after its last occurrence.
    SharedRecurrence recurrence;  ///< Absent: it takes place once.
    std::optional<MissedPolicy> missedPolicy;        ///< Absent: as its bundle says.
    std::optional<std::chrono::seconds> missedLimit; ///< How late one may be that is run once.
    std::optional<OverlapPolicy> overlapPolicy;      ///< Absent: it is skipped.
    std::optional<AfterAction> afterAction;          ///< Absent: nothing.
    QVariantMap otherKeys; ///< Keys that this version does not know, kept as they were read.

    /// The entry as a schedule; an error says why it is none ("\"Date\" is not a date").
    static dozely::Result<Schedule> fromEntry(const QVariant &entry);

    /// The entry for the store: every known key and otherKeys.
    QVariantMap toEntry() const;

    /// The date in the schedule's own time zone.
    QDateTime calendarDate() const;

    /// The zone in which its wall times are meant, and its dates are told.
    QTimeZone zone() const;

    /// The bundle's path below the root folder in force.
    QString fullBundlePath() const;

    bool operator==(const Schedule &) const = default;
};
