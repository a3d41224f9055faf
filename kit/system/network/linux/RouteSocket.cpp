// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/RouteSocket_p.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace dozely
{

namespace
{
constexpr std::chrono::seconds patience{2};
constexpr qsizetype bufferSize = 64 << 10; // the kernel fills at most 32 KiB at a time

/// What comes next, from whomever; its size, or -1 when nothing came until the deadline.
ssize_t next(int descriptor, QByteArray &buffer, sockaddr_nl &sender, const QDeadlineTimer &deadline)
{
    while (true) {
        pollfd readable{descriptor, POLLIN, 0};
        const int ready = ::poll(&readable, 1, static_cast<int>(deadline.remainingTime()));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            return -1;
        socklen_t senderSize = sizeof sender;
        const ssize_t size = ::recvfrom(descriptor, buffer.data(), static_cast<size_t>(buffer.size()),
                                        MSG_DONTWAIT, reinterpret_cast<sockaddr *>(&sender), &senderSize);
        if (size >= 0 || (errno != EINTR && errno != EAGAIN))
            return size;
    }
}
} // namespace

RouteSocket::RouteSocket() : m_descriptor(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE)) {}

RouteSocket::~RouteSocket()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool RouteSocket::ask(quint16 type, const QByteArray &content, const Visitor &visit)
{
    return send(type, NLM_F_REQUEST, content) && receive([&](const nlmsghdr *message) {
               if (message->nlmsg_type == NLMSG_ERROR)
                   return Step::Failure;
               visit(message);
               return Step::End;
           });
}

bool RouteSocket::dump(quint16 type, const QByteArray &content, const Visitor &visit)
{
    return send(type, NLM_F_REQUEST | NLM_F_DUMP, content) && receive([&](const nlmsghdr *message) {
               if (message->nlmsg_type == NLMSG_DONE)
                   return Step::End;
               if (message->nlmsg_type == NLMSG_ERROR)
                   return Step::Failure;
               visit(message);
               return Step::Next;
           });
}

bool RouteSocket::send(quint16 type, quint16 flags, const QByteArray &content)
{
    nlmsghdr header{};
    header.nlmsg_len = NLMSG_LENGTH(static_cast<quint32>(content.size()));
    header.nlmsg_type = type;
    header.nlmsg_flags = flags;
    header.nlmsg_seq = ++m_sequence;
    QByteArray request(reinterpret_cast<const char *>(&header), sizeof header);
    request += content;
    sockaddr_nl kernel{};
    kernel.nl_family = AF_NETLINK;
    return ::sendto(m_descriptor, request.constData(), static_cast<size_t>(request.size()), 0,
                    reinterpret_cast<const sockaddr *>(&kernel), sizeof kernel) == request.size();
}

bool RouteSocket::receive(const std::function<Step(const nlmsghdr *)> &take)
{
    const QDeadlineTimer deadline(patience); // whatever others write meanwhile
    QByteArray buffer(bufferSize, Qt::Uninitialized);
    while (true) {
        sockaddr_nl sender{};
        const ssize_t size = next(m_descriptor, buffer, sender, deadline);
        if (size <= 0)
            return false;
        if (sender.nl_pid != 0)
            continue; // not the kernel
        std::size_t place = 0;
        const auto end = static_cast<std::size_t>(size);
        while (end - place >= sizeof(nlmsghdr)) {
            const auto *message = reinterpret_cast<const nlmsghdr *>(buffer.constData() + place);
            if (message->nlmsg_len < sizeof(nlmsghdr) || message->nlmsg_len > end - place)
                return false;
            place += std::min<std::size_t>(NLMSG_ALIGN(message->nlmsg_len), end - place);
            if (message->nlmsg_seq != m_sequence)
                continue; // of a question that was given up
            const Step step = take(message);
            if (step != Step::Next)
                return step == Step::End;
        }
    }
}

} // namespace dozely
