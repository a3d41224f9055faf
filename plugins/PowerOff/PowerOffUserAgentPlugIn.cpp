// SPDX-License-Identifier: MIT
#include "plugins/PowerOff/PowerOffUserAgentPlugIn.h"

void PowerOffUserAgentPlugIn::userNotificationCenterDidActivateNotification(
    NSUserNotificationCenter *, const std::shared_ptr<NSUserNotification> &)
{
    cancelEvent();
}
