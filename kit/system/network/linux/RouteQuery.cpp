// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/RouteQuery_p.h"

#include <cstring>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace dozely
{

namespace
{
/// Both kinds of values that a question has, addresses and numbers, fill whole words, as attributes must.
template<class Value>
void append(QByteArray &question, unsigned short type, const Value &value)
{
    static_assert(sizeof value % RTA_ALIGNTO == 0);
    const rtattr attribute{RTA_LENGTH(sizeof value), type};
    question.append(reinterpret_cast<const char *>(&attribute), sizeof attribute);
    question.append(reinterpret_cast<const char *>(&value), sizeof value);
}

QByteArray headOf(const sockaddr &address, size_t size)
{
    rtmsg route{};
    route.rtm_family = static_cast<unsigned char>(address.sa_family);
    route.rtm_dst_len = static_cast<unsigned char>(8 * size);
    return QByteArray(reinterpret_cast<const char *>(&route), sizeof route);
}

/// Null for an address of another family.
QByteArray questionFor(const sockaddr &address)
{
    if (address.sa_family == AF_INET) {
        const auto &four = reinterpret_cast<const sockaddr_in &>(address);
        QByteArray question = headOf(address, sizeof four.sin_addr);
        append(question, RTA_DST, four.sin_addr);
        return question;
    }
    if (address.sa_family == AF_INET6) {
        const auto &six = reinterpret_cast<const sockaddr_in6 &>(address);
        QByteArray question = headOf(address, sizeof six.sin6_addr);
        append(question, RTA_DST, six.sin6_addr);
        if (six.sin6_scope_id != 0)
            append(question, RTA_OIF, six.sin6_scope_id);
        return question;
    }
    return {};
}

/// The interface that a route leaves by, 0 when the answer names none.
unsigned interfaceOf(const nlmsghdr *answer, const rtmsg *route)
{
    auto left = static_cast<int>(answer->nlmsg_len - NLMSG_LENGTH(sizeof *route));
    for (const rtattr *attribute = RTM_RTA(route); RTA_OK(attribute, left);
         attribute = RTA_NEXT(attribute, left)) {
        unsigned index = 0;
        if (attribute->rta_type == RTA_OIF && RTA_PAYLOAD(attribute) == sizeof index) {
            std::memcpy(&index, RTA_DATA(attribute), sizeof index);
            return index;
        }
    }
    return 0;
}

bool hasLink(unsigned index)
{
    ifreq request{};
    if (index == 0 || !::if_indextoname(index, request.ifr_name))
        return false;
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0); // for the question alone
    if (socket < 0)
        return false;
    const bool known = ::ioctl(socket, SIOCGIFFLAGS, &request) == 0;
    ::close(socket);
    return known && (request.ifr_flags & IFF_UP) != 0 && (request.ifr_flags & IFF_RUNNING) != 0;
}

RouteQuery::Way wayIn(const nlmsghdr *answer)
{
    if (answer->nlmsg_type != RTM_NEWROUTE || answer->nlmsg_len < NLMSG_LENGTH(sizeof(rtmsg)))
        return RouteQuery::Way::None;
    const auto *route = static_cast<const rtmsg *>(NLMSG_DATA(answer));
    if (route->rtm_type == RTN_LOCAL)
        return RouteQuery::Way::Open;
    if (route->rtm_type != RTN_UNICAST)
        return RouteQuery::Way::None;
    return hasLink(interfaceOf(answer, route)) ? RouteQuery::Way::Open : RouteQuery::Way::WithoutLink;
}
} // namespace

RouteQuery::Way RouteQuery::wayTo(const sockaddr &address)
{
    const QByteArray question = questionFor(address);
    Way way = Way::None; // an error, too: "unreachable" is one
    if (!question.isNull())
        m_kernel.ask(RTM_GETROUTE, question, [&way](const nlmsghdr *answer) { way = wayIn(answer); });
    return way;
}

} // namespace dozely
