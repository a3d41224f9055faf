// SPDX-License-Identifier: MIT
#include "plugins/Sleep/SleepFactory.h"

#include "DozelyKit/plugin/Names.h"
#include "plugins/Sleep/SleepDaemonPlugIn.h"
#include "plugins/Sleep/SleepUserAgentPlugIn.h"

using namespace dozely;

std::unique_ptr<WDPlugIn> SleepFactory::make()
{
    return std::make_unique<SleepDaemonPlugIn>();
}

std::unique_ptr<WDPlugIn> SleepFactory::makeForRole(const QString &roleKey)
{
    if (roleKey == InfoKey::userAgentModule)
        return std::make_unique<SleepUserAgentPlugIn>();
    return make();
}
