// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

/// Whether anything can ever come of a schedule, as far as that is known when it is made.
namespace Feasibility
{
/// Why nothing can: a sentence without a full stop. Absent when nothing is known against it. BLOCKING: looks
/// at the bundle and at the program that it is to run.
std::optional<QString> reasonAgainst(const Schedule &schedule);
} // namespace Feasibility
