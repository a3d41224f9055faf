// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/LinuxPrimaryInterface_p.h"

#include "DozelyKit/system/network/linux/RouteSocket_p.h"

#include <QHash>

#include <algorithm>
#include <cstring>
#include <linux/if_arp.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace dozely
{

namespace
{
constexpr qsizetype ethernetAddressSize = 6;

struct Route {
    quint32 metric = 0;
    QList<int> interfaces; // their indexes
};

template<class Value>
QByteArray bytesOf(const Value &value)
{
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

template<class Value>
Value valueOf(const rtattr *attribute)
{
    Value value{};
    std::memcpy(&value, RTA_DATA(attribute), std::min<std::size_t>(sizeof value, RTA_PAYLOAD(attribute)));
    return value;
}

/// The interfaces of a route with several paths.
QList<int> pathsOf(const rtattr *attribute)
{
    QList<int> interfaces;
    auto *path = static_cast<const rtnexthop *>(RTA_DATA(attribute));
    auto left = static_cast<int>(RTA_PAYLOAD(attribute));
    while (RTNH_OK(path, left)) {
        interfaces += path->rtnh_ifindex;
        left -= static_cast<int>(RTNH_ALIGN(path->rtnh_len));
        path = RTNH_NEXT(path);
    }
    return interfaces;
}

/// The default routes of a family, the preferred one first.
QList<Route> defaultRoutes(RouteSocket &kernel, unsigned char family)
{
    rtmsg request{};
    request.rtm_family = family;
    request.rtm_table = RT_TABLE_MAIN;
    QList<Route> routes;
    const bool complete = kernel.dump(RTM_GETROUTE, bytesOf(request), [&](const nlmsghdr *message) {
        auto left = static_cast<int>(RTM_PAYLOAD(message));
        if (message->nlmsg_type != RTM_NEWROUTE || left < 0)
            return;
        auto *entry = static_cast<rtmsg *>(NLMSG_DATA(message));
        if (entry->rtm_family != family || entry->rtm_table != RT_TABLE_MAIN || entry->rtm_dst_len != 0 ||
            entry->rtm_type != RTN_UNICAST || (entry->rtm_flags & RTNH_F_DEAD) != 0)
            return;
        Route route;
        for (const rtattr *attribute = RTM_RTA(entry); RTA_OK(attribute, left);
             attribute = RTA_NEXT(attribute, left)) {
            if (attribute->rta_type == RTA_OIF)
                route.interfaces += valueOf<int>(attribute);
            else if (attribute->rta_type == RTA_MULTIPATH)
                route.interfaces += pathsOf(attribute);
            else if (attribute->rta_type == RTA_PRIORITY)
                route.metric = valueOf<quint32>(attribute);
        }
        routes += route;
    });
    if (!complete)
        return {};
    std::stable_sort(routes.begin(), routes.end(),
                     [](const Route &a, const Route &b) { return a.metric < b.metric; });
    return routes;
}

/// The hardware addresses of all Ethernet interfaces by their index.
QHash<int, QByteArray> ethernetAddresses(RouteSocket &kernel)
{
    QHash<int, QByteArray> addresses;
    kernel.dump(RTM_GETLINK, bytesOf(ifinfomsg{}), [&](const nlmsghdr *message) {
        auto left = static_cast<int>(IFLA_PAYLOAD(message));
        if (message->nlmsg_type != RTM_NEWLINK || left < 0)
            return;
        auto *entry = static_cast<ifinfomsg *>(NLMSG_DATA(message));
        if (entry->ifi_type != ARPHRD_ETHER)
            return;
        QByteArray used;
        QByteArray permanent;
        for (const rtattr *attribute = IFLA_RTA(entry); RTA_OK(attribute, left);
             attribute = RTA_NEXT(attribute, left)) {
            const QByteArray bytes(static_cast<const char *>(RTA_DATA(attribute)),
                                   static_cast<qsizetype>(RTA_PAYLOAD(attribute)));
            if (attribute->rta_type == IFLA_ADDRESS)
                used = bytes;
            else if (attribute->rta_type == IFLA_PERM_ADDRESS)
                permanent = bytes;
        }
        const QByteArray &address = permanent.size() == ethernetAddressSize ? permanent : used;
        if (address.size() == ethernetAddressSize)
            addresses.insert(entry->ifi_index, address);
    });
    return addresses;
}
} // namespace

QList<QByteArray> LinuxPrimaryInterface::hardwareAddresses()
{
    RouteSocket kernel;
    const QHash<int, QByteArray> addresses = ethernetAddresses(kernel);
    for (const Route &route : defaultRoutes(kernel, AF_INET) + defaultRoutes(kernel, AF_INET6)) {
        QList<QByteArray> found;
        for (const int index : route.interfaces) {
            if (addresses.contains(index))
                found += addresses.value(index);
        }
        if (!found.isEmpty())
            return found;
    }
    return {};
}

template<>
std::shared_ptr<PrimaryInterface> &Port<PrimaryInterface>::current()
{
    static auto *const port =
        new std::shared_ptr<PrimaryInterface>(std::make_shared<LinuxPrimaryInterface>());
    return *port;
}

} // namespace dozely
