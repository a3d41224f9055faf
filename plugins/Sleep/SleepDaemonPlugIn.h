// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "DozelyKit/system/power/PowerOrder.h"

/// What puts the machine to sleep.
class SleepDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    SleepDaemonPlugIn();

    /// Asks for sleep and returns. While others forbid it, the action goes on for ten minutes at most; the
    /// parameter "Force" says what happens then.
    void actInDaemon() override;

    Q_INVOKABLE bool isActing() const { return m_order.isWaiting(); }

Q_SIGNALS:
    void actionDidFinish();

private:
    dozely::PowerOrder m_order;
};
