// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <cstdint>

struct sockaddr;

/// Asks the kernel's routing table which way a packet would take. No packet is made.
class DOZELYKIT_AUTOTEST_EXPORT RouteQuery
{
public:
    enum class Way {
        None,        ///< No route, or one that refuses.
        WithoutLink, ///< Over an interface that cannot send at the moment.
        Open,
    };

    RouteQuery();
    ~RouteQuery();
    RouteQuery(const RouteQuery &) = delete;
    RouteQuery &operator=(const RouteQuery &) = delete;

    bool isOpen() const { return m_socket >= 0; }

    /// The way to an IPv4 or IPv6 address; to any other, and when the kernel does not answer, none.
    Way wayTo(const sockaddr &address);

private:
    int m_socket;
    uint32_t m_sequence = 0;
};
