// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/alerts/NSUserNotification.h"
#include "DozelyKit/system/power/SystemPower.h"

#include <memory>

class WDUserAgentPlugIn;

/// A notice beside the alert, whose own text is the same for every action: who forbids for now what was
/// announced. THREADING: the main thread.
class BlockerNotice
{
public:
    explicit BlockerNotice(dozely::SystemPower::Change change) : m_change(change) {}

    /// Shows the notice of what `plugIn` announces when somebody forbids it now. Its text is the bundle's, by
    /// the key "Forbidden by %@". BLOCKING: as SystemPower::blockers.
    void show(WDUserAgentPlugIn &plugIn);

    /// Takes the notice away, if there is one.
    void withdraw();

private:
    dozely::SystemPower::Change m_change;
    std::shared_ptr<NSUserNotification> m_notice;
};
