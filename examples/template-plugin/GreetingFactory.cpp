// SPDX-License-Identifier: MIT
#include "GreetingFactory.h"

#include "GreetingPlugIns.h"

#include <DozelyKit/plugin/Names.h>

std::unique_ptr<WDPlugIn> GreetingFactory::make()
{
    return std::make_unique<GreetingDaemonPlugIn>();
}

std::unique_ptr<WDPlugIn> GreetingFactory::makeForRole(const QString &roleKey)
{
    if (roleKey == dozely::InfoKey::userAgentModule)
        return std::make_unique<GreetingUserAgentPlugIn>();
    return make();
}
