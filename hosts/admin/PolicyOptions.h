// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

class AdminOptions;

/// The options that say what becomes of what was missed, of what overlaps, and of the machine afterwards.
namespace PolicyOptions
{
/// Gives a schedule, which is otherwise as the options want it, what `--missed`, `--overlap` and `--after`
/// say. Raises AdminError when they are wrong or make no sense with the rest.
void apply(const AdminOptions &options, Schedule &schedule);
} // namespace PolicyOptions
