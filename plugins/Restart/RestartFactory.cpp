// SPDX-License-Identifier: MIT
#include "plugins/Restart/RestartFactory.h"

#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "plugins/common/system/PowerDaemonPlugIn.h"
#include "plugins/common/system/PowerUserAgentPlugIn.h"

using namespace dozely;

namespace
{
void restart()
{
    ZDRLog("Restart: the machine is asked to restart.");
    if (!Port<SystemPower>::current()->restart())
        ZDRLog("Restart: the machine does not let itself be restarted.");
}
} // namespace

std::unique_ptr<WDPlugIn> RestartFactory::make()
{
    return std::make_unique<PowerDaemonPlugIn>(SystemPower::Change::PowerOff, "Restart", restart);
}

std::unique_ptr<WDPlugIn> RestartFactory::makeForRole(const QString &roleKey)
{
    if (roleKey == InfoKey::userAgentModule)
        return std::make_unique<PowerUserAgentPlugIn>(SystemPower::Change::PowerOff);
    return make();
}
