// SPDX-License-Identifier: MIT
#include "plugins/PowerOff/PowerOffFactory.h"

#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "plugins/common/system/PowerDaemonPlugIn.h"
#include "plugins/common/system/PowerUserAgentPlugIn.h"

using namespace dozely;

namespace
{
void switchOff()
{
    ZDRLog("PowerOff: the machine is asked to switch itself off.");
    if (!Port<SystemPower>::current()->powerOff())
        ZDRLog("PowerOff: the machine does not let itself be switched off.");
}
} // namespace

std::unique_ptr<WDPlugIn> PowerOffFactory::make()
{
    return std::make_unique<PowerDaemonPlugIn>(SystemPower::Change::PowerOff, "PowerOff", switchOff);
}

std::unique_ptr<WDPlugIn> PowerOffFactory::makeForRole(const QString &roleKey)
{
    if (roleKey == InfoKey::userAgentModule)
        return std::make_unique<PowerUserAgentPlugIn>(SystemPower::Change::PowerOff);
    return make();
}
