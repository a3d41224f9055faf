// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "DozelyKit/system/power/PowerOrder.h"

/// What switches the machine off.
class PowerOffDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    PowerOffDaemonPlugIn();

    /// Asks for the end and returns; the machine is off once everybody has consented. While others forbid it,
    /// the action goes on for ten minutes at most; the parameter "Force" says what happens then.
    void actInDaemon() override;

    Q_INVOKABLE bool isActing() const { return m_order.isWaiting(); }

Q_SIGNALS:
    void actionDidFinish();

private:
    dozely::PowerOrder m_order;
};
