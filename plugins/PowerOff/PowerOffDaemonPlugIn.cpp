// SPDX-License-Identifier: MIT
#include "plugins/PowerOff/PowerOffDaemonPlugIn.h"

#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/power/SystemPower.h"

using namespace dozely;

void PowerOffDaemonPlugIn::actInDaemon()
{
    ZDRLog("PowerOff: the machine is asked to switch itself off.");
    if (!Port<SystemPower>::current()->powerOff())
        ZDRLog("PowerOff: the machine does not let itself be switched off.");
}
