// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandUserAgentPlugIn.h"

#include "DozelyKit/plugin/Names.h"

using namespace dozely;

CommandUserAgentPlugIn::CommandUserAgentPlugIn()
{
    connect(&m_runner, &CommandRunner::finished, this, &CommandUserAgentPlugIn::actionDidFinish);
}

void CommandUserAgentPlugIn::actInUserAgent()
{
    m_runner.setScheduleName(property(PlugInProperty::scheduleName).toString());
    m_runner.run(parameters() ? *parameters() : QVariantMap(), ProgramEnvironment::ofSession());
}

void CommandUserAgentPlugIn::stopAction()
{
    m_runner.stop();
}

bool CommandUserAgentPlugIn::isActing() const
{
    return m_runner.isRunning();
}

void CommandUserAgentPlugIn::userNotificationCenterDidActivateNotification(
    NSUserNotificationCenter *, const std::shared_ptr<NSUserNotification> &)
{
    cancelEvent();
}
