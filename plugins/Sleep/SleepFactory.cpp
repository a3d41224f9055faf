// SPDX-License-Identifier: MIT
#include "plugins/Sleep/SleepFactory.h"

#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "plugins/common/system/PowerDaemonPlugIn.h"
#include "plugins/common/system/PowerUserAgentPlugIn.h"

using namespace dozely;

std::unique_ptr<WDPlugIn> SleepFactory::make()
{
    return std::make_unique<PowerDaemonPlugIn>(SystemPower::Change::Sleep, "Sleep",
                                               &ZDRPowerManager::forceSleep);
}

std::unique_ptr<WDPlugIn> SleepFactory::makeForRole(const QString &roleKey)
{
    if (roleKey == InfoKey::userAgentModule)
        return std::make_unique<PowerUserAgentPlugIn>(SystemPower::Change::Sleep);
    return make();
}
