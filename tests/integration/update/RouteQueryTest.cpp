// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/RouteQuery_p.h"

#include "integration/update/PrivateNetwork.h"

#include <arpa/inet.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace dozely;

namespace
{
RouteQuery::Way wayTo(RouteQuery &routes, const char *host)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    EXPECT_EQ(::inet_pton(AF_INET, host, &address.sin_addr), 1);
    return routes.wayTo(reinterpret_cast<const sockaddr &>(address));
}

/// The addresses of the sockets that speak to the routing table of this network.
QList<quint32> routeSockets()
{
    QFile file("/proc/self/net/netlink");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QList<quint32> sockets;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' '); // socket, protocol, address, ...
        if (words.value(1) == QByteArray::number(NETLINK_ROUTE) && words.value(2).toUInt() != 0)
            sockets += words.value(2).toUInt();
    }
    return sockets;
}

/// A process other than the kernel that answers questions of this network.
class Forger
{
public:
    Forger() : m_socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE)) {}
    ~Forger() { ::close(m_socket); }
    Forger(const Forger &) = delete;
    Forger &operator=(const Forger &) = delete;

    /// Says that what is asked with this number is this machine itself.
    void answer(quint32 socket, quint32 sequence) const
    {
        struct {
            nlmsghdr header;
            rtmsg route;
        } answer{};
        answer.header.nlmsg_len = sizeof answer;
        answer.header.nlmsg_type = RTM_NEWROUTE;
        answer.header.nlmsg_seq = sequence;
        answer.header.nlmsg_pid = socket;
        answer.route.rtm_family = AF_INET;
        answer.route.rtm_type = RTN_LOCAL;
        sockaddr_nl receiver{};
        receiver.nl_family = AF_NETLINK;
        receiver.nl_pid = socket;
        EXPECT_EQ(::sendto(m_socket, &answer, sizeof answer, 0, reinterpret_cast<const sockaddr *>(&receiver),
                           sizeof receiver),
                  static_cast<ssize_t>(sizeof answer));
    }

private:
    int m_socket;
};
} // namespace

TEST(RouteQuery, BelievesTheKernelAlone)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        network.ip("link set lo up");
        RouteQuery routes;
        ASSERT_EQ(wayTo(routes, "127.0.0.1"), RouteQuery::Way::Open);
        const QList<quint32> sockets = routeSockets();
        ASSERT_EQ(sockets.size(), 1);
        const Forger forger;
        for (quint32 sequence = 0; sequence < 10; ++sequence) // the numbers are easily guessed
            forger.answer(sockets.constFirst(), sequence);
        EXPECT_EQ(wayTo(routes, "198.51.100.7"), RouteQuery::Way::None);
        EXPECT_EQ(wayTo(routes, "127.0.0.1"), RouteQuery::Way::Open); // and the kernel is still heard
    }));
}
