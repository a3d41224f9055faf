// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

class AdminOptions;

/// What is told of a schedule that was just added or changed.
namespace ScheduleAnswer
{
/// Prints `what`, a sentence without its full stop, with the date, or, where it repeats, with the rule in
/// words and the next three dates. With `--json` one object.
void tell(const AdminOptions &options, const Schedule &schedule, const QString &what);

/// A date in words, as the machine's clocks show it, and as those of the schedule's zone do where they
/// differ.
QString inWords(const QDateTime &date, const Schedule &schedule);
} // namespace ScheduleAnswer
