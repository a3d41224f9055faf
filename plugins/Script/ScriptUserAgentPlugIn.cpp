// SPDX-License-Identifier: MIT
#include "plugins/Script/ScriptUserAgentPlugIn.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "plugins/Script/ScriptOrder.h"

using namespace dozely;

ScriptUserAgentPlugIn::ScriptUserAgentPlugIn()
{
    connect(&m_runner, &CommandRunner::finished, this, &ScriptUserAgentPlugIn::actionDidFinish);
}

void ScriptUserAgentPlugIn::actInUserAgent()
{
    const auto order = ScriptOrder::fromParameters(parameters() ? *parameters() : QVariantMap());
    if (!order) {
        m_failure = order.error().text;
        ZDRLog("Script: nothing was run, %@.", order.error().text);
        return;
    }
    m_runner.run({{CommandKey::program, RootFolder::join("/usr/bin/osascript")},
                  {CommandKey::arguments, QVariant(QStringList("--log") + order->arguments).toList()}},
                 ProgramEnvironment::ofSession());
}

void ScriptUserAgentPlugIn::stopAction()
{
    m_runner.stop();
}

bool ScriptUserAgentPlugIn::isActing() const
{
    return m_runner.isRunning();
}

void ScriptUserAgentPlugIn::userNotificationCenterDidActivateNotification(
    NSUserNotificationCenter *, const std::shared_ptr<NSUserNotification> &)
{
    cancelEvent();
}
