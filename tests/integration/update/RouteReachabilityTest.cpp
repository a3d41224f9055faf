// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/linux/RouteReachability_p.h"

#include "integration/update/PrivateNetwork.h"
#include "support/WaitUntil.h"

using namespace dozely;

namespace
{
constexpr quint32 unreachable = 0;
constexpr quint32 reachable = 0x02;
constexpr quint32 connectionRequired = 0x04;
constexpr char host[] = "server.example";

std::optional<quint32> flags()
{
    return RouteReachability().flagsOfHost(host);
}

/// A network with a way to 192.0.2.0/24 and, by a router there, to everywhere.
void connect(const PrivateNetwork &network)
{
    network.ip("link add here type veth peer name there");
    network.ip("link set there up");
    network.ip("link set here up");
    network.ip("address add 192.0.2.1/24 dev here");
    network.ip("route add default via 192.0.2.254");
    network.setHosts("192.0.2.254 server.example\n");
    ASSERT_TRUE(
        waitUntil([] { return flags() == reachable; })); // the kernel looks at new links a little later
    network.setHosts("");
}
} // namespace

TEST(RouteReachability, ANameThatNobodyKnowsIsNotReachable)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        connect(network);
        EXPECT_EQ(flags(), unreachable);
        EXPECT_EQ(RouteReachability().flagsOfHost(""), unreachable);
    }));
}

TEST(RouteReachability, AnAddressToWhichNoRouteLeadsIsNotReachable)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        network.setHosts("127.0.0.1 server.example\n");
        EXPECT_EQ(flags(), unreachable); // not even this machine: nothing is up
        connect(network);
        network.ip("route del default");
        network.setHosts("198.51.100.7 server.example\n");
        EXPECT_EQ(flags(), unreachable);
    }));
}

TEST(RouteReachability, ThisMachineIsReachable)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        network.ip("link set lo up");
        network.setHosts("127.0.0.1 server.example\n");
        EXPECT_EQ(flags(), reachable);
    }));
}

TEST(RouteReachability, ANeighbourAndAHostBehindARouterAreReachable)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        connect(network);
        network.setHosts("192.0.2.55 server.example\n");
        EXPECT_EQ(flags(), reachable);
        network.setHosts("198.51.100.7 server.example\n");
        EXPECT_EQ(flags(), reachable);
    }));
}

TEST(RouteReachability, ARouteThatRefusesIsNone)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        connect(network);
        network.setHosts("198.51.100.7 server.example\n");
        for (const char *kind : {"unreachable", "blackhole", "prohibit"}) {
            network.ip(QString("route add %1 198.51.100.7").arg(kind));
            EXPECT_EQ(flags(), unreachable) << kind;
            network.ip(QString("route del %1 198.51.100.7").arg(kind));
        }
        network.setHosts("192.0.2.255 server.example\n"); // everybody
        EXPECT_EQ(flags(), unreachable);
    }));
}

TEST(RouteReachability, AWayOverAnInterfaceWithoutLinkIsStillToBeSetUp)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        connect(network);
        network.setHosts("198.51.100.7 server.example\n");
        network.ip("link set there down"); // which the kernel makes known a little later
        EXPECT_TRUE(waitUntil([] { return flags() == (reachable | connectionRequired); }));
        network.ip("link set there up");
        EXPECT_TRUE(waitUntil([] { return flags() == reachable; }));
    }));
}

TEST(RouteReachability, OneAddressOfSeveralIsEnough)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        connect(network);
        network.ip("route del default");
        network.setHosts(
            "198.51.100.7 server.example\n2001:db8::7 server.example\n192.0.2.55 server.example\n");
        EXPECT_EQ(flags(), reachable);
    }));
}

TEST(RouteReachability, AnAddressOfVersionSixIsReachableByItsOwnRoutes)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        connect(network);
        network.setHosts("2001:db8::7 server.example\n");
        EXPECT_EQ(flags(), unreachable);
        QFile file("/proc/sys/net/ipv6/conf/here/disable_ipv6");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("0");
        file.close();
        network.ip("address add 2001:db8::1/64 dev here nodad");
        EXPECT_EQ(flags(), reachable);
    }));
}

TEST(RouteReachability, NothingIsSent)
{
    EXPECT_TRUE(PrivateNetwork::holds([](const PrivateNetwork &network) {
        connect(network);
        network.setHosts("192.0.2.55 server.example\n198.51.100.7 server.example\n");
        EXPECT_EQ(flags(), reachable);
        EXPECT_EQ(network.sentBytes("here"), 0); // not even the question who has the address
        EXPECT_EQ(network.sentBytes("lo"), 0);
    }));
}
