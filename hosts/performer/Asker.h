// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"
#include "hosts/common/performing/PerformanceOrder.h"
#include "hosts/common/performing/PlugInAnswer.h"
#include "hosts/common/plugins/PlugInLoader.h"

/// Asks plug-ins what they answer about occurrences, for a host that watches over it: it reads an order from
/// its host and sends the answer as a packet, one after the other, until there are no more. A packet of one
/// byte says beforehand that it is there. A plug-in may hang here, or end the process.
class Asker
{
public:
    /// `host` is one end of a pair of connected sockets for packets (SOCK_SEQPACKET).
    explicit Asker(dozely::Descriptor host);

    /// The exit status of the process.
    int run();

private:
    dozely::Result<PlugInAnswer> answerTo(const PerformanceOrder &question);

    dozely::Descriptor m_host;
    PlugInLoader m_loader;
};
