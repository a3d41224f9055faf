// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/system/machine/ProgramLimits.h"

#include <QString>
#include <QVariantMap>

#include <chrono>

/// Within which limits an action goes on: what it may take of the machine, and of time. A plain value.
struct ActionLimits {
    /// So long, unless somebody says otherwise, may an action take to end once it was asked to.
    static constexpr std::chrono::seconds usualTimeToEnd{90};

    dozely::ProgramLimits program = {};
    std::chrono::seconds longest{0};                ///< It is ended after so long; 0 for never.
    std::chrono::seconds timeToEnd{usualTimeToEnd}; ///< From being asked to end to being killed.

    /// As a schedule's parameters have it and, where they have nothing, its bundle's Info dictionary: the
    /// keys of LimitKey. A value of a wrong type or out of its range counts as none and costs one log line,
    /// which names the schedule or the bundle.
    static ActionLimits read(const QString &schedule, const QVariantMap &parameters,
                             const QString &bundlePath, const QVariantMap &info);

    /// Between the value and what a property list holds. An error for what toMap has not made.
    /// @{
    QVariantMap toMap() const;
    static dozely::Result<ActionLimits> fromMap(const QVariantMap &map);
    /// @}

    bool operator==(const ActionLimits &) const = default;
};
