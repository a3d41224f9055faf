// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>

/// Schedules as a calendar of RFC 5545, for programs that show calendars.
namespace CalendarFile
{
/// An event for each schedule, made at `now`; one that is disabled is cancelled. Times are those of the
/// schedule's zone, whose changes of clocks are told from a year before its first date on, for thirty years
/// or as far as they are known; what goes with the machine is in no zone.
QByteArray of(const QList<Schedule> &schedules, const QDateTime &now);
} // namespace CalendarFile
