// SPDX-License-Identifier: MIT
#include "plugins/Command/CommandFactory.h"

#include "DozelyKit/plugin/Names.h"
#include "plugins/Command/CommandDaemonPlugIn.h"
#include "plugins/Command/CommandUserAgentPlugIn.h"

using namespace dozely;

std::unique_ptr<WDPlugIn> CommandFactory::make()
{
    return std::make_unique<CommandDaemonPlugIn>();
}

std::unique_ptr<WDPlugIn> CommandFactory::makeForRole(const QString &roleKey)
{
    if (roleKey == InfoKey::userAgentModule)
        return std::make_unique<CommandUserAgentPlugIn>();
    return make();
}
