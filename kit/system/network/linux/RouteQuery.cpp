// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/RouteQuery_p.h"

#include <array>
#include <cstring>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <netinet/in.h>
#include <optional>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{
struct Question {
    nlmsghdr header;
    rtmsg route;
    std::array<char, 64> attributes; // room for an address and an interface
};

using Answer = std::array<char, 4096>;

void append(Question &question, unsigned short type, const void *value, unsigned short size)
{
    auto *attribute = reinterpret_cast<rtattr *>(reinterpret_cast<char *>(&question) +
                                                 NLMSG_ALIGN(question.header.nlmsg_len));
    attribute->rta_type = type;
    attribute->rta_len = static_cast<unsigned short>(RTA_LENGTH(size));
    std::memcpy(RTA_DATA(attribute), value, size);
    question.header.nlmsg_len = NLMSG_ALIGN(question.header.nlmsg_len) + RTA_ALIGN(attribute->rta_len);
}

/// Absent for an address of another family.
std::optional<Question> questionFor(const sockaddr &address)
{
    Question question{};
    question.header.nlmsg_len = NLMSG_LENGTH(sizeof question.route);
    question.header.nlmsg_type = RTM_GETROUTE;
    question.header.nlmsg_flags = NLM_F_REQUEST;
    question.route.rtm_family = static_cast<unsigned char>(address.sa_family);
    if (address.sa_family == AF_INET) {
        const auto &four = reinterpret_cast<const sockaddr_in &>(address);
        question.route.rtm_dst_len = 8 * sizeof four.sin_addr;
        append(question, RTA_DST, &four.sin_addr, sizeof four.sin_addr);
        return question;
    }
    if (address.sa_family == AF_INET6) {
        const auto &six = reinterpret_cast<const sockaddr_in6 &>(address);
        question.route.rtm_dst_len = 8 * sizeof six.sin6_addr;
        append(question, RTA_DST, &six.sin6_addr, sizeof six.sin6_addr);
        if (six.sin6_scope_id != 0)
            append(question, RTA_OIF, &six.sin6_scope_id, sizeof six.sin6_scope_id);
        return question;
    }
    return std::nullopt;
}

/// The kernel's answer to the question with this sequence number; null when it has none. Points into
/// `buffer`.
const nlmsghdr *receive(int socket, uint32_t sequence, Answer &buffer)
{
    for (;;) {
        sockaddr_nl sender{};
        socklen_t senderSize = sizeof sender;
        const ssize_t size = ::recvfrom(socket, buffer.data(), buffer.size(), 0,
                                        reinterpret_cast<sockaddr *>(&sender), &senderSize);
        if (size <= 0)
            return nullptr;
        if (sender.nl_pid != 0)
            continue; // another process may write to this socket; only the kernel is believed
        const auto *header = reinterpret_cast<const nlmsghdr *>(buffer.data());
        if (!NLMSG_OK(header, static_cast<size_t>(size)))
            return nullptr;
        if (header->nlmsg_seq == sequence)
            return header;
    }
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
} // namespace

RouteQuery::RouteQuery() : m_socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE))
{
    // The kernel answers within the call that asks; the limit is for the day when it does not.
    const timeval limit{2, 0};
    if (m_socket >= 0)
        ::setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
}

RouteQuery::~RouteQuery()
{
    if (m_socket >= 0)
        ::close(m_socket);
}

RouteQuery::Way RouteQuery::wayTo(const sockaddr &address)
{
    auto question = questionFor(address);
    if (!question)
        return Way::None;
    question->header.nlmsg_seq = ++m_sequence;
    const size_t size = question->header.nlmsg_len;
    if (::send(m_socket, &*question, size, 0) != static_cast<ssize_t>(size))
        return Way::None;
    alignas(nlmsghdr) Answer buffer;
    const nlmsghdr *answer = receive(m_socket, m_sequence, buffer);
    if (!answer || answer->nlmsg_type != RTM_NEWROUTE || answer->nlmsg_len < NLMSG_LENGTH(sizeof(rtmsg)))
        return Way::None; // an error: "unreachable" is one
    const auto *route = static_cast<const rtmsg *>(NLMSG_DATA(answer));
    if (route->rtm_type == RTN_LOCAL)
        return Way::Open;
    if (route->rtm_type != RTN_UNICAST)
        return Way::None;
    return hasLink(interfaceOf(answer, route)) ? Way::Open : Way::WithoutLink;
}
