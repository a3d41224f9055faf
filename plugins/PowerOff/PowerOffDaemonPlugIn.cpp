// SPDX-License-Identifier: MIT
#include "plugins/PowerOff/PowerOffDaemonPlugIn.h"

#include "core/ZDRLog.h"
#include "platform/Platform.h"
#include "platform/SystemPower.h"

void PowerOffDaemonPlugIn::actInDaemon()
{
    ZDRLog("PowerOff: the machine is asked to switch itself off.");
    if (Platform::current().systemPower->powerOff() != 0)
        ZDRLog("PowerOff: the machine does not let itself be switched off.");
}
