// SPDX-License-Identifier: MIT
#include "GreetingPlugIns.h"

#include <DozelyKit/core/log/ZDRLog.h>

namespace
{
/// The parameter "Text", or a greeting of our own.
QString textOf(const WDPlugIn &plugIn)
{
    const auto parameters = plugIn.parameters();
    return parameters ? parameters->value("Text", "Hello").toString() : QString("Hello");
}
} // namespace

void GreetingDaemonPlugIn::actInDaemon()
{
    ZDRLog("%@: %@ from the daemon", pluginName(), textOf(*this));
}

void GreetingUserAgentPlugIn::actInUserAgent()
{
    ZDRLog("%@: %@ from the session", pluginName(), textOf(*this));
}

void GreetingUserAgentPlugIn::userNotificationCenterDidActivateNotification(
    NSUserNotificationCenter *, const std::shared_ptr<NSUserNotification> &)
{
    cancelEvent();
}
