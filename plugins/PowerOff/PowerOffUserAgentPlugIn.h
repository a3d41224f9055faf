// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"

/// The alert before the daemon switches the machine off, which the user may cancel. Nothing acts in the
/// session.
class PowerOffUserAgentPlugIn : public WDUserAgentPlugIn
{
    Q_OBJECT
public:
    /// "Cancel" was pressed in the alert: the daemon is asked to drop the occurrence.
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *center,
                                                  const std::shared_ptr<NSUserNotification> &notification);
};
