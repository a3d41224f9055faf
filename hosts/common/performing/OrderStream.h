// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PerformanceOrder.h"

/// How a host talks to the performer that it has started, over a pair of connected sockets (socketpair(2),
/// streams) of which the performer has one end as its standard input: first the order, as a file in memory
/// that is handed over, then, when it is time to act, one byte. A host that ends before that byte has called
/// it off. The performer answers with one byte when the action has begun, and with its own end.
namespace OrderStream
{
/// The name of the error for an order that no machine could send.
inline constexpr char unsendable[] = "unsendable";

/// Sends an order. Never blocks. An error with the machine's reason, or named `unsendable`.
dozely::Result<void> send(int socket, const PerformanceOrder &order);

/// Lets the performer act. Never blocks; false when there is none any more.
bool go(int socket);

/// What a host hears. Of one that has ended unheard something that was sent was never read: it has not begun.
enum class News { None, Begun, Ended, EndedUnheard };

/// What the performer says. Never blocks.
News hear(int socket);

/// Tells the host that the action has begun. Never blocks; a host that has ended hears nothing.
void tellBegun(int socket);

/// Waits for the order. An error when none comes, or one that means nothing.
dozely::Result<PerformanceOrder> read(int socket);
} // namespace OrderStream
