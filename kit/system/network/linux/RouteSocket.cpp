// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/RouteSocket_p.h"

#include <algorithm>
#include <cerrno>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
constexpr timeval patience{2, 0};
constexpr qsizetype bufferSize = 64 << 10; // the kernel fills at most 32 KiB at a time
} // namespace

RouteSocket::RouteSocket() : m_descriptor(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE))
{
    if (m_descriptor >= 0)
        ::setsockopt(m_descriptor, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
}

RouteSocket::~RouteSocket()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool RouteSocket::dump(quint16 type, const QByteArray &content,
                       const std::function<void(const nlmsghdr *)> &visit)
{
    nlmsghdr header{};
    header.nlmsg_len = NLMSG_LENGTH(static_cast<quint32>(content.size()));
    header.nlmsg_type = type;
    header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    header.nlmsg_seq = ++m_sequence;
    QByteArray request(reinterpret_cast<const char *>(&header), sizeof header);
    request += content;
    sockaddr_nl kernel{};
    kernel.nl_family = AF_NETLINK;
    if (::sendto(m_descriptor, request.constData(), static_cast<size_t>(request.size()), 0,
                 reinterpret_cast<const sockaddr *>(&kernel), sizeof kernel) != request.size())
        return false;

    QByteArray buffer(bufferSize, Qt::Uninitialized);
    while (true) {
        sockaddr_nl sender{};
        socklen_t senderSize = sizeof sender;
        const ssize_t size = ::recvfrom(m_descriptor, buffer.data(), static_cast<size_t>(buffer.size()), 0,
                                        reinterpret_cast<sockaddr *>(&sender), &senderSize);
        if (size < 0 && errno == EINTR)
            continue;
        if (size <= 0)
            return false;
        if (sender.nl_pid != 0)
            continue; // another process may write to this socket; only the kernel is believed
        std::size_t place = 0;
        const auto end = static_cast<std::size_t>(size);
        while (end - place >= sizeof(nlmsghdr)) {
            const auto *message = reinterpret_cast<const nlmsghdr *>(buffer.constData() + place);
            if (message->nlmsg_len < sizeof(nlmsghdr) || message->nlmsg_len > end - place)
                return false;
            place += std::min<std::size_t>(NLMSG_ALIGN(message->nlmsg_len), end - place);
            if (message->nlmsg_seq != m_sequence)
                continue;
            if (message->nlmsg_type == NLMSG_DONE)
                return true;
            if (message->nlmsg_type == NLMSG_ERROR)
                return false;
            visit(message);
        }
    }
}
