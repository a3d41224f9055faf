// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// What becomes of an occurrence that is found after its time: the machine was off or asleep, or the daemon
/// away.
enum class MissedPolicy {
    PlugIn,  ///< It is skipped when it is later than its plug-in's time-out.
    Skip,    ///< It is skipped when it is later than a second.
    RunOnce, ///< Of all that were missed the latest is performed.
};

/// What becomes of an occurrence that comes due while the action of the one before it goes on.
enum class OverlapPolicy {
    Skip,
    Run,
};

/// What the machine does when an action is over for which it was woken or switched on.
enum class AfterAction {
    Nothing,
    Sleep,
    PowerOff,
};

/// Their names in the store, in bundles and on the command line; absent for what is none.
namespace SchedulePolicies
{
QString nameOf(MissedPolicy policy);
QString nameOf(OverlapPolicy policy);
QString nameOf(AfterAction action);

std::optional<MissedPolicy> missedPolicyNamed(const QString &name);
std::optional<OverlapPolicy> overlapPolicyNamed(const QString &name);
std::optional<AfterAction> afterActionNamed(const QString &name);
} // namespace SchedulePolicies
