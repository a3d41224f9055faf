// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "plugins/common/BlockerNotice.h"

/// The alert before the daemon puts the machine to sleep, which the user may cancel. Nothing acts in the
/// session.
class SleepUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    /// Shows the alert, and beside it who forbids the action for now.
    void anticipateBeforeSelfAction() override;
    void stopAnticipation() override;

    /// "Cancel" was pressed in the alert: the daemon is asked to drop the occurrence.
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *center,
                                                  const std::shared_ptr<NSUserNotification> &notification);

private:
    BlockerNotice m_notice{dozely::SystemPower::Change::Sleep};
};
