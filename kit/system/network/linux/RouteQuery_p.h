// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/network/linux/RouteSocket_p.h"

struct sockaddr;

namespace dozely
{

/// Asks the kernel's routing table which way a packet would take. No packet is made.
class DOZELYKIT_AUTOTEST_EXPORT RouteQuery
{
public:
    enum class Way {
        None,        ///< No route, or one that refuses.
        WithoutLink, ///< Over an interface that cannot send at the moment.
        Open,
    };

    bool isOpen() const { return m_kernel.isOpen(); }

    /// The way to an IPv4 or IPv6 address; to any other, and when the kernel does not answer, none.
    Way wayTo(const sockaddr &address);

private:
    RouteSocket m_kernel;
};

} // namespace dozely
