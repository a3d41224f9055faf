// SPDX-License-Identifier: MIT
#include "plugins/Sleep/SleepDaemonPlugIn.h"

#include "system/ZDRPowerManager.h"

void SleepDaemonPlugIn::actInDaemon()
{
    ZDRPowerManager::forceSleep();
}
