// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "plugins/common/system/BlockerNotice.h"

/// The alert before the daemon does something to the machine, which the user may cancel. Nothing acts in the
/// session.
class PowerUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    explicit PowerUserAgentPlugIn(dozely::SystemPower::Change change) : m_notice(change) {}

    /// Shows the alert, and beside it who forbids the action for now.
    void anticipateBeforeSelfAction() override;
    void stopAnticipation() override;

    /// "Cancel" was pressed in the alert: the daemon is asked to drop the occurrence.
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *center,
                                                  const std::shared_ptr<NSUserNotification> &notification);

private:
    BlockerNotice m_notice;
};
