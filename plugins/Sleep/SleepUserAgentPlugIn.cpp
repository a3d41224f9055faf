// SPDX-License-Identifier: MIT
#include "plugins/Sleep/SleepUserAgentPlugIn.h"

void SleepUserAgentPlugIn::userNotificationCenterDidActivateNotification(
    NSUserNotificationCenter *, const std::shared_ptr<NSUserNotification> &)
{
    cancelEvent();
}
