// SPDX-License-Identifier: MIT
#include "plugins/common/system/PowerDaemonPlugIn.h"

#include "DozelyKit/plugin/Names.h"

using namespace dozely;

PowerDaemonPlugIn::PowerDaemonPlugIn(SystemPower::Change change, const QString &name,
                                     std::function<void()> order)
    : m_order(change, name, std::move(order))
{
    connect(&m_order, &PowerOrder::ended, this, &PowerDaemonPlugIn::actionDidFinish);
}

void PowerDaemonPlugIn::actInDaemon()
{
    const bool isForced = longIntegerParameter(PowerKey::force) == 1;
    m_order.give(isForced ? PowerOrder::AtLast::Done : PowerOrder::AtLast::GivenUp);
}
