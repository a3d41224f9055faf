// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/NetServiceExtensions.h"

#include "DozelyKit/system/network/NetServices.h"
#include "support/FakeNetServices.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

using namespace zandorSoftwaresExtensions;

namespace
{
class NetServiceExtensions : public testing::Test
{
protected:
    NetServiceExtensions() { Port<NetServices>::current() = network; }

    /// Makes the service known at these addresses.
    void find(const QList<NetServices::Address> &addresses, const QByteArray &record = {})
    {
        service.emplace("", "_dozely._tcp", "Kitchen");
        service->resolveWithTimeout(std::chrono::milliseconds(0));
        network->resolver->found({"host.local", 1, addresses, record});
    }

    std::shared_ptr<FakeNetServices> network = std::make_shared<FakeNetServices>();
    std::optional<NSNetService> service;
};
} // namespace

TEST_F(NetServiceExtensions, TellAnAddressInDottedDecimals)
{
    find({FakeNetServices::ipv4(192, 0, 2, 255, 5111)});
    EXPECT_EQ(ipAddress(*service), "192.0.2.255");
    EXPECT_EQ(portNumber(*service), 5111);
}

TEST_F(NetServiceExtensions, TellTheLastOfSeveralIPv4AddressesWithItsOwnPort)
{
    find({FakeNetServices::ipv6(1, 1), FakeNetServices::ipv4(10, 0, 0, 1, 2),
          FakeNetServices::ipv4(10, 0, 0, 2, 65535), FakeNetServices::ipv6(2, 4)});
    EXPECT_EQ(ipAddress(*service), "10.0.0.2");
    EXPECT_EQ(portNumber(*service), 65535);
}

TEST_F(NetServiceExtensions, TellNoAddressAndPort0OfAServiceWithIPv6AddressesOnly)
{
    find({FakeNetServices::ipv6(1, 5111), FakeNetServices::ipv6(2, 5111)});
    EXPECT_TRUE(ipAddress(*service).isNull());
    EXPECT_EQ(portNumber(*service), 0);
}

TEST_F(NetServiceExtensions, TellNoAddressOfAServiceThatIsNotResolved)
{
    const NSNetService unknown("", "_dozely._tcp", "Kitchen", 5111);
    EXPECT_TRUE(ipAddress(unknown).isNull());
    EXPECT_EQ(portNumber(unknown), 0);
}

TEST_F(NetServiceExtensions, MakeADictionaryTheServicesTxtRecord)
{
    NSNetService published("", "_dozely._tcp", "Kitchen", 5111);
    published.publish();
    setProtocolSpecificInformationDictionary(published,
                                             {{"a", QByteArray("1")}, {"b", QVariant()}, {"c", QString("")}});
    EXPECT_EQ(network->askedRecord, "\x03"
                                    "a=1"
                                    "\x01"
                                    "b"
                                    "\x02"
                                    "c=");
    EXPECT_EQ(protocolSpecificInformationDictionary(published),
              QVariantMap({{"a", QByteArray("1")}, {"b", QVariant()}, {"c", QByteArray("")}}));
}

TEST_F(NetServiceExtensions, ReadTheRecordOfAServiceThatWasFound)
{
    find({FakeNetServices::ipv4(10, 0, 0, 1, 1)}, "\x05"
                                                  "A=one"
                                                  "\x05"
                                                  "a=two");
    EXPECT_EQ(protocolSpecificInformationDictionary(*service), QVariantMap({{"A", QByteArray("one")}}));
}

TEST_F(NetServiceExtensions, GiveAnEmptyDictionaryForAServiceWithoutARecord)
{
    const NSNetService plain("", "_dozely._tcp", "Kitchen", 5111);
    EXPECT_EQ(protocolSpecificInformationDictionary(plain), QVariantMap());
}

TEST_F(NetServiceExtensions, ChangeNothingForADictionaryThatNoRecordCanHold)
{
    NSNetService published("", "_dozely._tcp", "Kitchen", 5111);
    setProtocolSpecificInformationDictionary(published, {{"a", QByteArray("1")}});
    setProtocolSpecificInformationDictionary(published, {{"a=", QByteArray("1")}});
    setProtocolSpecificInformationDictionary(published, {{"a", QByteArray(300, 'x')}});
    EXPECT_EQ(published.TXTRecordData(), "\x03"
                                         "a=1");
}

TEST_F(NetServiceExtensions, DoNothingWhereTxtRecordsAreNotSupported)
{
    network->supports = false;
    NSNetService published("", "_dozely._tcp", "Kitchen", 5111);
    setProtocolSpecificInformationDictionary(published, {{"a", QByteArray("1")}});
    EXPECT_FALSE(protocolSpecificInformationDictionary(published));
    network->supports = true;
    EXPECT_TRUE(published.TXTRecordData().isNull());
}
