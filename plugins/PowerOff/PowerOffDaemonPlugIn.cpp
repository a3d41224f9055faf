// SPDX-License-Identifier: MIT
#include "plugins/PowerOff/PowerOffDaemonPlugIn.h"

#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"

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

PowerOffDaemonPlugIn::PowerOffDaemonPlugIn() : m_order(SystemPower::Change::PowerOff, "PowerOff", switchOff)
{
    connect(&m_order, &PowerOrder::ended, this, &PowerOffDaemonPlugIn::actionDidFinish);
}

void PowerOffDaemonPlugIn::actInDaemon()
{
    const bool isForced = longIntegerParameter(PowerKey::force) == 1;
    m_order.give(isForced ? PowerOrder::AtLast::Done : PowerOrder::AtLast::GivenUp);
}
