// SPDX-License-Identifier: MIT
#include "plugins/Sleep/SleepUserAgentPlugIn.h"

#include "DozelyKit/plugin/Names.h"

using namespace dozely;

void SleepUserAgentPlugIn::anticipateBeforeSelfAction()
{
    WDUserAgentPlugIn::anticipateBeforeSelfAction();
    if (longIntegerParameter(ParameterKey::alert) != 0)
        m_notice.show(*this);
}

void SleepUserAgentPlugIn::stopAnticipation()
{
    WDUserAgentPlugIn::stopAnticipation();
    m_notice.withdraw();
}

void SleepUserAgentPlugIn::userNotificationCenterDidActivateNotification(
    NSUserNotificationCenter *, const std::shared_ptr<NSUserNotification> &)
{
    cancelEvent();
}
