// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/schedules/Schedule.h"

#include <chrono>
#include <optional>

/// What becomes of a schedule's occurrences that are found after their time: as the schedule says, else its
/// bundle, else by the plug-in's time-out.
struct MissedRule {
    MissedPolicy policy = MissedPolicy::PlugIn;
    std::optional<std::chrono::seconds> limit = {}; ///< How late one may be that is run once; absent: any.
    qint32 timeOut = 0;                             ///< The plug-in's, seconds, negative.

    static MissedRule of(const Schedule &schedule, const QVariantMap &bundleInfo, qint32 timeOut);

    /// How late an occurrence may be that came due by its date; absent: however late. Nothing starts at the
    /// very millisecond, so a second is always allowed.
    std::optional<std::chrono::milliseconds> allowedLateness() const;
};
