// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PerformanceOrder.h"

/// How a host talks to the performer that it has started, over a pair of connected sockets (socketpair(2),
/// streams) of which the performer has one end as its standard input: first the order, as a file in memory
/// that is handed over, then, when it is time to act, one byte. A host that ends before that byte has called
/// it off.
namespace OrderStream
{
/// Sends an order. Never blocks. An error with the machine's reason.
dozely::Result<void> send(int socket, const PerformanceOrder &order);

/// Lets the performer act. Never blocks; false when there is none any more.
bool go(int socket);

/// Waits for the order. An error when none comes, or one that means nothing.
dozely::Result<PerformanceOrder> read(int socket);
} // namespace OrderStream
