// SPDX-License-Identifier: MIT
#include "plugins/common/system/PowerUserAgentPlugIn.h"

#include "DozelyKit/plugin/Names.h"

using namespace dozely;

void PowerUserAgentPlugIn::anticipateBeforeSelfAction()
{
    WDUserAgentPlugIn::anticipateBeforeSelfAction();
    if (longIntegerParameter(ParameterKey::alert) != 0)
        m_notice.show(*this);
}

void PowerUserAgentPlugIn::stopAnticipation()
{
    WDUserAgentPlugIn::stopAnticipation();
    m_notice.withdraw();
}

void PowerUserAgentPlugIn::userNotificationCenterDidActivateNotification(
    NSUserNotificationCenter *, const std::shared_ptr<NSUserNotification> &)
{
    cancelEvent();
}
