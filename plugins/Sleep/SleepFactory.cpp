// SPDX-License-Identifier: MIT
#include "plugins/Sleep/SleepFactory.h"

#include "DozelyKit/plugin/Names.h"
#include "plugins/Sleep/SleepDaemonPlugIn.h"
#include "plugins/Sleep/SleepUserAgentPlugIn.h"

std::unique_ptr<WDPlugIn> SleepFactory::make()
{
    return std::make_unique<SleepDaemonPlugIn>();
}

std::unique_ptr<WDPlugIn> SleepFactory::makeForRole(const QString &roleKey)
{
    if (roleKey == dozely::InfoKey::userAgentModule)
        return std::make_unique<SleepUserAgentPlugIn>();
    return make();
}
