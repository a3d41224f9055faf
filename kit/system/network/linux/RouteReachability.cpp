// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/RouteReachability_p.h"

#include "DozelyKit/system/network/linux/RouteQuery_p.h"

#include <memory>
#include <netdb.h>

namespace dozely
{

namespace
{
struct FreeAddresses {
    void operator()(addrinfo *list) const { ::freeaddrinfo(list); }
};
using Addresses = std::unique_ptr<addrinfo, FreeAddresses>;

/// Null when the name is unknown.
Addresses addressesOf(const QString &host)
{
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM; // each address once
    addrinfo *list = nullptr;
    const int status = ::getaddrinfo(host.toUtf8().constData(), nullptr, &hints, &list);
    return Addresses(status == 0 ? list : nullptr);
}
} // namespace

std::optional<quint32> RouteReachability::flagsOfHost(const QString &host)
{
    const Addresses addresses = addressesOf(host);
    RouteQuery routes;
    if (addresses && !routes.isOpen())
        return std::nullopt;
    quint32 best = 0;
    for (const addrinfo *entry = addresses.get(); entry; entry = entry->ai_next) {
        switch (routes.wayTo(*entry->ai_addr)) {
        case RouteQuery::Way::Open:
            return Reachable;
        case RouteQuery::Way::WithoutLink:
            best = Reachable | ConnectionRequired;
            break;
        case RouteQuery::Way::None:
            break;
        }
    }
    return best;
}

template<>
std::shared_ptr<Reachability> &Port<Reachability>::current()
{
    static auto *const port = new std::shared_ptr<Reachability>(std::make_shared<RouteReachability>());
    return *port;
}

} // namespace dozely
