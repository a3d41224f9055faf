// SPDX-License-Identifier: MIT
#include "plugins/Sleep/SleepDaemonPlugIn.h"

#include "DozelyKit/system/power/ZDRPowerManager.h"

void SleepDaemonPlugIn::actInDaemon()
{
    ZDRPowerManager::forceSleep();
}
