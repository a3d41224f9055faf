// SPDX-License-Identifier: MIT
#include "plugins/Sleep/SleepDaemonPlugIn.h"

#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"

using namespace dozely;

SleepDaemonPlugIn::SleepDaemonPlugIn()
    : m_order(SystemPower::Change::Sleep, "Sleep", &ZDRPowerManager::forceSleep)
{
    connect(&m_order, &PowerOrder::ended, this, &SleepDaemonPlugIn::actionDidFinish);
}

void SleepDaemonPlugIn::actInDaemon()
{
    const bool isForced = longIntegerParameter(PowerKey::force) == 1;
    m_order.give(isForced ? PowerOrder::AtLast::Done : PowerOrder::AtLast::GivenUp);
}
