// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

/// Whether anything can ever come of a schedule, as far as that is known when it is made.
namespace Feasibility
{
/// What is looked at.
enum class Sight {
    Everything,
    /// Of programs those alone in folders that root owns and all may look into: a privileged process neither
    /// tells a stranger what lies elsewhere, nor waits for a file system of his.
    WhatAllMaySee,
};

/// Why nothing can: a sentence without a full stop. Absent when nothing is known against it. BLOCKING: looks
/// at the bundle and at the program that it is to run.
std::optional<QString> reasonAgainst(const Schedule &schedule, Sight sight = Sight::Everything);

/// Where it acts: "session" or "daemon"; null when the bundle that would decide cannot be read. BLOCKING: may
/// look at the bundle.
QString placeOf(const Schedule &schedule);

/// Whether the machine is to be woken or switched on for it, as its parameters say.
bool wakesMachine(const Schedule &schedule);

/// Whether an action that is to follow it never would, since that comes only where the machine was woken or
/// switched on for it.
bool hasIdleAfterAction(const Schedule &schedule);
} // namespace Feasibility
