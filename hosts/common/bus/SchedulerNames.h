// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// What the daemon is called on the system bus, and the names of what it answers with. docs/bus.md has all of
/// it.
namespace SchedulerNames
{
inline constexpr char name[] = "com.dozely";
inline constexpr char path[] = "/com/dozely/Scheduler1";
inline constexpr char interface[] = "com.dozely.Scheduler1";

/// @name Errors
/// @{
inline constexpr char noSuchSchedule[] = "com.dozely.Error.NoSuchSchedule";
inline constexpr char invalidSchedule[] = "com.dozely.Error.InvalidSchedule";
inline constexpr char notFeasible[] = "com.dozely.Error.NotFeasible";
inline constexpr char notAllowed[] = "com.dozely.Error.NotAllowed";
inline constexpr char storeDamaged[] = "com.dozely.Error.StoreDamaged";
inline constexpr char changed[] = "com.dozely.Error.Changed";
inline constexpr char limitReached[] = "com.dozely.Error.LimitReached";
inline constexpr char notPossible[] = "com.dozely.Error.NotPossible";
/// @}

/// How a sentence under notFeasible ends, for who can say "anyway".
inline constexpr char anywayHint[] = " With \"anyway\" it is done all the same.";

/// @name Actions that polkit knows (packaging/com.dozely.policy)
/// @{
inline constexpr char manageOwn[] = "com.dozely.scheduler.manage-own";
inline constexpr char wake[] = "com.dozely.scheduler.wake";
inline constexpr char manageAll[] = "com.dozely.scheduler.manage-all";
/// @}
} // namespace SchedulerNames
