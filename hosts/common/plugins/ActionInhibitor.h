// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/SystemPower.h"

#include <QVariantMap>

#include <memory>

/// Keeps the machine from falling asleep by itself while actions go on. One inhibition serves all of them.
///
/// THREADING: the main thread. BLOCKING: nothing waits; a refusal is logged by the port.
class ActionInhibitor
{
public:
    /// `reason` is shown to people who ask the machine what keeps it awake.
    explicit ActionInhibitor(QString reason = "A scheduled action is running") : m_reason(std::move(reason))
    {
    }

    /// A hold for one action, to be kept as long as it goes on. Null for a bundle whose Info dictionary says
    /// "WDInhibitsSleep" = false: one that puts the machine to sleep or switches it off.
    std::shared_ptr<const void> hold(const QVariantMap &bundleInfo);

private:
    QString m_reason;
    std::weak_ptr<dozely::SystemPower::Inhibition> m_inhibition;
};
