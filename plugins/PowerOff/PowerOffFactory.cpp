// SPDX-License-Identifier: MIT
#include "plugins/PowerOff/PowerOffFactory.h"

#include "DozelyKit/plugin/Names.h"
#include "plugins/PowerOff/PowerOffDaemonPlugIn.h"
#include "plugins/PowerOff/PowerOffUserAgentPlugIn.h"

using namespace dozely;

std::unique_ptr<WDPlugIn> PowerOffFactory::make()
{
    return std::make_unique<PowerOffDaemonPlugIn>();
}

std::unique_ptr<WDPlugIn> PowerOffFactory::makeForRole(const QString &roleKey)
{
    if (roleKey == InfoKey::userAgentModule)
        return std::make_unique<PowerOffUserAgentPlugIn>();
    return make();
}
