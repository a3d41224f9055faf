// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/calendar/DateTerms.h"
#include "hosts/common/schedules/Schedule.h"

class AdminOptions;

/// The option that says which occurrence of a schedule is meant.
namespace OccurrenceOptions
{
/// `--date`, in the zone of `--time-zone` or else of the schedule, UTC; a day alone is the only occurrence on
/// it, and what leaves
/// the day open is that way from now. Nothing without the option. Raises AdminError when it names none, or
/// one of several.
std::optional<QDateTime> read(const AdminOptions &options, const Schedule &schedule,
                              DateTerms::Towards towards);
} // namespace OccurrenceOptions
