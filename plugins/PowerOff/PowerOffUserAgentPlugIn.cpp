// SPDX-License-Identifier: MIT
#include "plugins/PowerOff/PowerOffUserAgentPlugIn.h"

#include "DozelyKit/plugin/Names.h"

using namespace dozely;

void PowerOffUserAgentPlugIn::anticipateBeforeSelfAction()
{
    WDUserAgentPlugIn::anticipateBeforeSelfAction();
    if (longIntegerParameter(ParameterKey::alert) != 0)
        m_notice.show(*this);
}

void PowerOffUserAgentPlugIn::stopAnticipation()
{
    WDUserAgentPlugIn::stopAnticipation();
    m_notice.withdraw();
}

void PowerOffUserAgentPlugIn::userNotificationCenterDidActivateNotification(
    NSUserNotificationCenter *, const std::shared_ptr<NSUserNotification> &)
{
    cancelEvent();
}
