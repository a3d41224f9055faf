// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandDaemonPlugIn.h"

#include "DozelyKit/plugin/Names.h"

using namespace dozely;

CommandDaemonPlugIn::CommandDaemonPlugIn()
{
    connect(&m_runner, &CommandRunner::finished, this, &CommandDaemonPlugIn::actionDidFinish);
}

void CommandDaemonPlugIn::actInDaemon()
{
    m_runner.setScheduleName(property(PlugInProperty::scheduleName).toString());
    m_runner.run(parameters() ? *parameters() : QVariantMap(), ProgramEnvironment::ofDaemon());
}

bool CommandDaemonPlugIn::isActing() const
{
    return m_runner.isRunning();
}
