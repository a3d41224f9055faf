// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "DozelyKit/system/power/PowerOrder.h"

/// What puts the machine to sleep, switches it off or restarts it.
class PowerDaemonPlugIn : public WDDaemonPlugIn
{
    Q_OBJECT
public:
    /// As PowerOrder: what others may forbid, the name in the log, and what is done.
    PowerDaemonPlugIn(dozely::SystemPower::Change change, const QString &name, std::function<void()> order);

    /// Asks for the change and returns; it comes once everybody has consented. While others forbid it, the
    /// action goes on for ten minutes at most; the parameter "Force" says what happens then.
    void actInDaemon() override;

    Q_INVOKABLE bool isActing() const { return m_order.isWaiting(); }

Q_SIGNALS:
    void actionDidFinish();

private:
    dozely::PowerOrder m_order;
};
