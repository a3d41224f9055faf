// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"
#include "unit/hosts/HostFixture.h"

/// Schedules that repeat. Their zone is UTC unless a test says otherwise.
namespace Recurring
{
/// The entry of a store for a schedule by this rule, whose first occurrence is `first`.
inline Schedule schedule(const QString &identifier, const QString &rule, const QDateTime &first)
{
    Schedule schedule;
    schedule.identifier = identifier;
    schedule.name = "Name of " + identifier;
    schedule.bundlePath = "/Library/Application Support/Dozely/PlugIns/Probe.plugin";
    schedule.timeZone = "UTC";
    schedule.owner = 501;
    schedule.date = first.toUTC();
    schedule.recurrence = Recurrence{rule, WallTime::of(first.toUTC()), {}, {}, {}};
    return schedule;
}

inline Schedule every(const QString &identifier, std::chrono::seconds interval, const QDateTime &first)
{
    return schedule(identifier, QString("FREQ=SECONDLY;INTERVAL=%1").arg(interval.count()), first);
}

inline Schedule daily(const QString &identifier, const QDateTime &first)
{
    return schedule(identifier, "FREQ=DAILY", first);
}
} // namespace Recurring
