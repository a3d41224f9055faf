// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"
#include "hosts/common/performing/PerformanceOrder.h"
#include "hosts/common/plugins/PlugInLoader.h"
#include "hosts/performer/ActingRole.h"

#include <QObject>

/// Loads one bundle and performs one occurrence, in a process that exists for nothing else. What it tells
/// goes to the process that watches over this one (Report).
class Actor : public QObject
{
    Q_OBJECT
public:
    /// `go` becomes readable when it is time to act; its end without a byte means that there is nothing to
    /// do. `role` must outlive the object.
    Actor(PerformanceOrder order, ActingRole &role, dozely::Descriptor go, dozely::Descriptor report);

    /// Performs; the exit status of the process. Runs the event loop for an action that goes on after it was
    /// called.
    int perform();

private:
    bool mayGo() const;
    int handOver(WDDaemonPlugIn &plugIn) const;
    Q_SLOT void endWhenDone();
    void stop();

    PerformanceOrder m_order;
    ActingRole &m_role;
    dozely::Descriptor m_go;
    dozely::Descriptor m_report;
    PlugInLoader m_loader;
    std::shared_ptr<WDPlugIn> m_plugIn;
    bool m_isStopped = false;
};
