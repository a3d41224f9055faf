// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PerformanceOrder.h"
#include "hosts/common/performing/PerformanceOutcome.h"

class WDDaemonPlugIn;

/// Handing an occurrence to the agent of the user at the console in the way of its plug-in's class.
namespace HandOver
{
/// Who is at the console is from now on whom the order says, whoever comes there meanwhile.
void holdConsole(const PerformanceOrder &order);

/// Has the plug-in do it: what became of it. Lets what it raises pass. BLOCKING: as a request of
/// WDCommunicationCenter.
PerformanceOutcome::Delivery run(WDDaemonPlugIn &plugIn, PerformanceOrder::Deed deed);

/// What became of a post that was not received, or raised.
PerformanceOutcome::Delivery ofFailedPost();
} // namespace HandOver
