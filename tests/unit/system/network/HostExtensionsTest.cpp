// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/HostExtensions.h"

#include "DozelyKit/system/network/PrimaryInterface.h"
#include "support/Identity.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sched.h>
#include <string>
#include <utility>

using namespace dozely;

using zandorSoftwaresExtensions::primaryMACAddress;

namespace
{
class FakePrimaryInterface : public PrimaryInterface
{
public:
    QList<QByteArray> addresses;
    QList<QByteArray> hardwareAddresses() override { return addresses; }
};

QString addressOf(const QList<QByteArray> &addresses)
{
    const auto fake = std::make_shared<FakePrimaryInterface>();
    fake->addresses = addresses;
    const auto real = std::exchange(Port<PrimaryInterface>::current(), fake);
    QString address = primaryMACAddress();
    Port<PrimaryInterface>::current() = real;
    return address;
}

bool enterNetworkOfItsOwn()
{
    return Identity::becomeRoot() && ::unshare(CLONE_NEWNET) == 0;
}

bool ip(const std::string &arguments)
{
    return std::system(("PATH=/usr/sbin:/usr/bin:/sbin:/bin ip " + arguments).c_str()) == 0;
}

/// An Ethernet interface that is up, its other end too, since a link without one carries no route.
void addInterface(const std::string &name, const std::string &address)
{
    ASSERT_TRUE(ip("link add " + name + " type veth peer name " + name + "peer"));
    ASSERT_TRUE(ip("link set " + name + " address " + address + " up"));
    ASSERT_TRUE(ip("link set " + name + "peer up"));
}

/// Runs the body in a network namespace, in a process of its own. Needs no privilege beyond a user namespace.
template<class Body>
testing::AssertionResult holdsInNetworkOfItsOwn(Body body)
{
    return Identity::holdsAs(enterNetworkOfItsOwn, body);
}
} // namespace

TEST(HostExtensions, PrintLowerCaseDigitsWithLeadingZeros)
{
    EXPECT_EQ(addressOf({QByteArray::fromHex("0A0027000005")}), "0a:00:27:00:00:05");
    EXPECT_EQ(addressOf({QByteArray::fromHex("001B63AA02FF")}), "00:1b:63:aa:02:ff");
}

TEST(HostExtensions, HaveNoAddressWithoutAPrimaryInterface)
{
    EXPECT_TRUE(addressOf({}).isNull());
}

TEST(HostExtensions, LetTheLastAddressWinAndTakeItsFirstSixBytes)
{
    EXPECT_EQ(addressOf({QByteArray::fromHex("0a0027000005"), QByteArray::fromHex("0a00270000060708")}),
              "0a:00:27:00:00:06");
    EXPECT_EQ(addressOf({QByteArray::fromHex("0a0027000005"), QByteArray::fromHex("0a")}),
              "0a:00:27:00:00:05");
}

TEST(HostExtensions, HaveNoAddressInANetworkWithoutDefaultRoute)
{
    EXPECT_TRUE(holdsInNetworkOfItsOwn([] {
        EXPECT_TRUE(primaryMACAddress().isNull());
        addInterface("v0", "0a:00:27:00:00:05");
        ASSERT_TRUE(ip("addr add 10.9.0.1/24 dev v0"));
        EXPECT_TRUE(primaryMACAddress().isNull());
    }));
}

TEST(HostExtensions, FindTheControllerOfTheDefaultRoute)
{
    EXPECT_TRUE(holdsInNetworkOfItsOwn([] {
        addInterface("v0", "0a:00:27:00:00:05");
        addInterface("v1", "0a:00:27:00:00:06");
        ASSERT_TRUE(ip("route add default dev v1"));
        EXPECT_EQ(primaryMACAddress(), "0a:00:27:00:00:06");
        ASSERT_TRUE(ip("route replace default dev v0"));
        EXPECT_EQ(primaryMACAddress(), "0a:00:27:00:00:05"); // asked afresh
    }));
}

TEST(HostExtensions, PreferTheSmallestMetric)
{
    EXPECT_TRUE(holdsInNetworkOfItsOwn([] {
        addInterface("v0", "0a:00:27:00:00:05");
        addInterface("v1", "0a:00:27:00:00:06");
        ASSERT_TRUE(ip("route add default dev v0 metric 600"));
        ASSERT_TRUE(ip("route add default dev v1 metric 100"));
        EXPECT_EQ(primaryMACAddress(), "0a:00:27:00:00:06");
    }));
}

TEST(HostExtensions, FindTheControllerOfAMachineThatKnowsIPv6Alone)
{
    EXPECT_TRUE(holdsInNetworkOfItsOwn([] {
        addInterface("v0", "0a:00:27:00:00:05");
        addInterface("v1", "0a:00:27:00:00:06");
        ASSERT_TRUE(ip("-6 route add default dev v1"));
        EXPECT_EQ(primaryMACAddress(), "0a:00:27:00:00:06");
        ASSERT_TRUE(ip("route add default dev v0"));
        EXPECT_EQ(primaryMACAddress(), "0a:00:27:00:00:05"); // IPv4 comes first
    }));
}

TEST(HostExtensions, PassOverADefaultRouteThatLeadsOverNoEthernet)
{
    EXPECT_TRUE(holdsInNetworkOfItsOwn([] {
        addInterface("v0", "0a:00:27:00:00:05");
        ASSERT_TRUE(ip("link set lo up"));
        ASSERT_TRUE(ip("route add default dev lo metric 1"));
        EXPECT_TRUE(primaryMACAddress().isNull());
        ASSERT_TRUE(ip("route add default dev v0 metric 2"));
        EXPECT_EQ(primaryMACAddress(), "0a:00:27:00:00:05");
    }));
}

TEST(HostExtensions, IgnoreRoutesToSomewhereAndRoutesThatRefuse)
{
    EXPECT_TRUE(holdsInNetworkOfItsOwn([] {
        addInterface("v0", "0a:00:27:00:00:05");
        ASSERT_TRUE(ip("route add 10.0.0.0/8 dev v0"));
        ASSERT_TRUE(ip("route add unreachable default"));
        ASSERT_TRUE(ip("route add default dev v0 table 77"));
        EXPECT_TRUE(primaryMACAddress().isNull());
    }));
}

TEST(HostExtensions, KnowEveryPathOfARouteWithSeveral)
{
    EXPECT_TRUE(holdsInNetworkOfItsOwn([] {
        addInterface("v0", "0a:00:27:00:00:05");
        addInterface("v1", "0a:00:27:00:00:06");
        ASSERT_TRUE(ip("route add default nexthop dev v0 nexthop dev v1"));
        EXPECT_EQ(Port<PrimaryInterface>::current()->hardwareAddresses().size(), 2);
        EXPECT_EQ(primaryMACAddress(), "0a:00:27:00:00:06");
    }));
}
