// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/NetServiceExtensions.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "LocalNetwork.h"
#include "NetServiceRecorder.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/WaitUntil.h"

#include <QJsonArray>

using namespace dozely;

using namespace std::chrono_literals;
using namespace zandorSoftwaresExtensions;

namespace
{
constexpr char type[] = "_dozely._tcp";

QStringList &lines()
{
    static QStringList list;
    return list;
}

void noteProblems()
{
    setProblemReport([](const QString &line) { lines() += line; });
}
} // namespace

TEST(NetService, IsFoundByAnotherHostAsItWasPublished)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        NetServiceRecorder recorder;
        NSNetService service("", type, "Kitchen", 5111);
        service.setDelegate(&recorder);
        setProtocolSpecificInformationDictionary(
            service, {{"state", QByteArray("\0on", 3)}, {"flag", QVariant()}, {"empty", QByteArray("")}});
        service.publish();
        EXPECT_TRUE(recorder.published.isEmpty()); // nothing waits
        ASSERT_TRUE(waitUntil([&] { return !recorder.published.isEmpty(); }));
        EXPECT_EQ(recorder.published, QStringList("Kitchen"));

        const QJsonObject found = network.found("Kitchen");
        EXPECT_EQ(found["port"].toInt(), 5111);
        EXPECT_TRUE(found["addresses"].toArray().contains(LocalNetwork::ownAddress));
        const auto record = QByteArray::fromHex(found["txt"].toString().toLatin1());
        EXPECT_EQ(NSNetService::dictionaryFromTXTRecordData(record),
                  protocolSpecificInformationDictionary(service));

        service.stop();
        EXPECT_TRUE(waitUntil([&] { return network.found("Kitchen", 2'000).isEmpty(); }));
    }));
}

TEST(NetService, HasAnEmptyRecordWhenNoneWasGiven)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        NetServiceRecorder recorder;
        NSNetService service("", type, "Kitchen", 5111);
        service.setDelegate(&recorder);
        service.publish();
        ASSERT_TRUE(waitUntil([&] { return !recorder.published.isEmpty(); }));
        EXPECT_EQ(network.found("Kitchen")["txt"].toString(), "00");
    }));
}

TEST(NetService, OfAnotherHostIsFoundWithAllItsAddressesAndItsRecord)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        const QByteArray record("\x07"
                                "state=1"
                                "\x04"
                                "flag"
                                "\x06"
                                "empty="
                                "\x07"
                                "State=2");
        ASSERT_TRUE(network
                        .neighbour({{"do", "publish"},
                                    {"name", "Cellar"},
                                    {"type", type},
                                    {"port", 65535},
                                    {"txt", QString::fromLatin1(record.toHex())},
                                    {"addresses", QJsonArray{"10.77.0.2", "10.77.0.22", "fe80::2"}}})
                        .toBool());
        NetServiceRecorder recorder;
        NSNetService service("local.", QString(type) + '.', "Cellar");
        service.setDelegate(&recorder);
        service.resolveWithTimeout(20s);
        ASSERT_TRUE(waitUntil([&] { return service.addresses().size() == 3; }));
        EXPECT_EQ(service.hostName(), "neighbour.local");
        EXPECT_EQ(service.port(), 65535);
        QString lastIPv4;
        QStringList ipv4;
        int ipv6 = 0;
        for (const NetServices::Address &address : service.addresses()) {
            EXPECT_EQ(address.port, 65535);
            if (address.family == NetServices::Address::Family::IPv6) {
                ++ipv6;
                EXPECT_EQ(address.bytes, QByteArray::fromHex("fe800000000000000000000000000002"));
                EXPECT_GT(address.scope, 0U);
                continue;
            }
            EXPECT_EQ(address.scope, 0U);
            lastIPv4 = QString("10.77.0.%1").arg(static_cast<quint8>(address.bytes.at(3)));
            ipv4 += lastIPv4;
        }
        EXPECT_EQ(ipv6, 1);
        ipv4.sort();
        EXPECT_EQ(ipv4, QStringList({"10.77.0.2", "10.77.0.22"}));
        EXPECT_EQ(ipAddress(service), lastIPv4);
        EXPECT_EQ(portNumber(service), 65535);
        EXPECT_EQ(protocolSpecificInformationDictionary(service),
                  QVariantMap({{"state", QByteArray("1")}, {"flag", QVariant()}, {"empty", QByteArray("")}}));
    }));
}

TEST(NetService, WithIPv6AddressesOnlyHasNoAddressAndPort0)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        ASSERT_TRUE(network
                        .neighbour({{"do", "publish"},
                                    {"name", "Cellar"},
                                    {"type", type},
                                    {"port", 5112},
                                    {"txt", ""},
                                    {"addresses", QJsonArray{"fe80::2"}}})
                        .toBool());
        NSNetService service("", type, "Cellar");
        service.resolveWithTimeout(20s);
        ASSERT_TRUE(waitUntil([&] { return !service.addresses().isEmpty(); }));
        EXPECT_TRUE(ipAddress(service).isNull());
        EXPECT_EQ(portNumber(service), 0);
        EXPECT_EQ(protocolSpecificInformationDictionary(service), QVariantMap());
    }));
}

TEST(NetService, ThatIsFollowedTellsEachChangeOfItsRecord)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        network.neighbour({{"do", "publish"},
                           {"name", "Cellar"},
                           {"type", type},
                           {"port", 5112},
                           {"txt", "03"
                                   "6b3d31"},
                           {"addresses", QJsonArray{"10.77.0.2"}}});
        NetServiceRecorder recorder;
        NSNetService service("", type, "Cellar");
        service.setDelegate(&recorder);
        service.resolveWithTimeout(20s);
        ASSERT_TRUE(waitUntil([&] { return recorder.resolved > 0; }));
        EXPECT_EQ(protocolSpecificInformationDictionary(service), QVariantMap({{"k", QByteArray("1")}}));
        // A record gives way to another when it is a second old, and one second later: until then, announce
        // it again.
        const auto seen = [&recorder] {
            return recorder.records.contains("\x03"
                                             "k=2");
        };
        constexpr int attempts = 10;
        for (int i = 0; i < attempts && !waitUntil(seen, 1500ms); ++i)
            ASSERT_TRUE(network
                            .neighbour({{"do", "update"},
                                        {"txt", "03"
                                                "6b3d32"}})
                            .toBool());
        ASSERT_TRUE(seen());
        EXPECT_EQ(protocolSpecificInformationDictionary(service), QVariantMap({{"k", QByteArray("2")}}));
    }));
}

TEST(NetService, TellsOthersEachChangeOfItsRecord)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        NetServiceRecorder recorder;
        NSNetService service("", type, "Kitchen", 5111);
        service.setDelegate(&recorder);
        service.publish();
        setProtocolSpecificInformationDictionary(service, {{"k", "1"}}); // on its way
        ASSERT_TRUE(waitUntil([&] { return !recorder.published.isEmpty(); }));
        EXPECT_EQ(network.found("Kitchen")["txt"].toString(), "036b3d31");
        setProtocolSpecificInformationDictionary(service, {{"k", "2"}});
        EXPECT_TRUE(waitUntil([&] { return network.found("Kitchen")["txt"].toString() == "036b3d32"; }));
        EXPECT_EQ(recorder.problems.size(), 0);
    }));
}

TEST(NetService, TakesAnotherNameWhenAnotherHostHasItsOwn)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        network.neighbour({{"do", "publish"},
                           {"name", "Kitchen"},
                           {"type", type},
                           {"port", 5112},
                           {"txt", ""},
                           {"addresses", QJsonArray{"10.77.0.2"}}});
        NetServiceRecorder recorder;
        NSNetService service("", type, "Kitchen", 5111);
        service.setDelegate(&recorder);
        service.publish();
        ASSERT_TRUE(waitUntil([&] { return !recorder.published.isEmpty(); }));
        EXPECT_EQ(recorder.published, QStringList("Kitchen #2"));
        EXPECT_EQ(service.name(), "Kitchen #2");
        EXPECT_EQ(network.found("Kitchen #2")["port"].toInt(), 5111);
    }));
}

TEST(NetService, TakesAnotherNameWhenAnotherOfThisHostHasItsOwn)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        std::array<NetServiceRecorder, 3> recorders;
        std::vector<std::unique_ptr<NSNetService>> services;
        quint16 port = 5111; // the same port would be the same service
        for (NetServiceRecorder &recorder : recorders) {
            services.push_back(std::make_unique<NSNetService>("", type, "Kitchen", port++));
            services.back()->setDelegate(&recorder);
            services.back()->publish();
            ASSERT_TRUE(waitUntil([&] { return !recorder.published.isEmpty(); }));
        }
        EXPECT_EQ(recorders[1].published, QStringList("Kitchen #2"));
        EXPECT_EQ(recorders[2].published, QStringList("Kitchen #3"));

        NetServiceRecorder stubborn;
        NSNetService service("", type, "Kitchen", port);
        service.setDelegate(&stubborn);
        service.publish(NSNetService::NoAutoRename);
        ASSERT_TRUE(waitUntil([&] { return !stubborn.problems.isEmpty(); }));
        EXPECT_EQ(stubborn.problems, QList({NetServices::Problem::Collision}));
        EXPECT_TRUE(stubborn.published.isEmpty());
    }));
}

TEST(NetService, MayBePublishedAgainUnderItsNameRightAfterItWasStopped)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        NetServiceRecorder recorder;
        NSNetService service("", type, "Kitchen", 5111);
        service.setDelegate(&recorder);
        service.publish();
        ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 1; }));
        service.stop();
        NSNetService elsewhere("", type, "Kitchen", 5112);
        elsewhere.setDelegate(&recorder);
        elsewhere.publish(NSNetService::NoAutoRename);
        ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 2; }));
        EXPECT_EQ(recorder.published, QStringList({"Kitchen", "Kitchen"}));
    }));
}

TEST(NetService, IsRefusedByTheDaemonWhenItsTypeIsNone)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        network.startAvahi();
        NetServiceRecorder recorder;
        NSNetService published("", "no type", "Kitchen", 5111);
        NSNetService resolved("", "no type", "Kitchen");
        published.setDelegate(&recorder);
        resolved.setDelegate(&recorder);
        published.publish();
        resolved.resolveWithTimeout(20s);
        ASSERT_TRUE(waitUntil([&] { return recorder.problems.size() == 2; }));
        EXPECT_EQ(recorder.problems.count(NetServices::Problem::BadArgument), 2);
    }));
}

TEST(NetService, IsPublishedAndFollowedAgainWhenTheDaemonStartsAgain)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        noteProblems();
        network.startAvahi();
        NetServiceRecorder recorder;
        NetServiceRecorder follower;
        NSNetService service("", type, "Kitchen", 5111);
        NSNetService followed("", type, "Kitchen");
        service.setDelegate(&recorder);
        followed.setDelegate(&follower);
        setProtocolSpecificInformationDictionary(service, {{"k", "1"}});
        service.publish();
        followed.resolveWithTimeout(0s);
        ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 1 && follower.resolved > 0; }));
        EXPECT_TRUE(lines().isEmpty());

        network.killAvahi();
        ASSERT_TRUE(waitUntil([&] { return !recorder.problems.isEmpty() && !follower.problems.isEmpty(); }));
        EXPECT_EQ(recorder.problems, QList({NetServices::Problem::Unavailable}));
        EXPECT_EQ(follower.problems, QList({NetServices::Problem::Unavailable}));
        EXPECT_EQ(lines().size(), 1);
        setProtocolSpecificInformationDictionary(service, {{"k", "2"}}); // told to nobody yet

        network.startAvahi();
        ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 2; }));
        EXPECT_EQ(recorder.published, QStringList({"Kitchen", "Kitchen"}));
        EXPECT_TRUE(waitUntil([&] {
            return follower.records.contains("\x03"
                                             "k=2");
        }));
        EXPECT_EQ(lines().size(), 1);
        setProblemReport({});
    }));
}

TEST(NetService, WaitsForADaemonThatIsNotThereYet)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        noteProblems();
        NetServiceRecorder recorder;
        NSNetService first("", type, "Kitchen", 5111);
        NSNetService second("", type, "Cellar", 5112);
        first.setDelegate(&recorder);
        second.setDelegate(&recorder);
        first.publish();
        second.publish();
        ASSERT_TRUE(waitUntil([&] { return recorder.problems.size() == 2; }));
        EXPECT_EQ(recorder.problems.count(NetServices::Problem::Unavailable), 2);
        ASSERT_EQ(lines().size(), 1); // for both
        EXPECT_TRUE(lines().constFirst().startsWith("Network services are neither published nor resolved"));
        network.startAvahi();
        ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 2; }));
        EXPECT_EQ(lines().size(), 1);
        setProblemReport({});
    }));
}

TEST(NetService, IsPublishedAgainOnABusThatWasStartedAgain)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        noteProblems();
        const auto clock = std::make_shared<FakeClock>();
        Port<Clock>::current() = clock;
        network.startAvahi();
        NetServiceRecorder recorder;
        NSNetService service("", type, "Kitchen", 5111);
        service.setDelegate(&recorder);
        service.publish();
        ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 1; }));
        network.bus->stop();
        ASSERT_TRUE(waitUntil([&] { return !clock->pendingDelays().isEmpty(); }));
        EXPECT_EQ(recorder.problems, QList({NetServices::Problem::Unavailable}));
        EXPECT_EQ(lines().size(), 1);
        clock->advance(10s); // there is still none
        EXPECT_EQ(clock->pendingDelays().size(), 1);
        network.bus.reset();
        network.bus = std::make_unique<PrivateBus>();
        network.killAvahi();
        network.startAvahi();
        clock->advance(10s);
        ASSERT_TRUE(waitUntil([&] { return recorder.published.size() == 2; }));
        EXPECT_EQ(lines().size(), 1);
        setProblemReport({});
    }));
}

TEST(NetService, ThatNobodyHasIsGivenUpAfterItsTimeout)
{
    EXPECT_TRUE(LocalNetwork::holds([](LocalNetwork &network) {
        const auto clock = std::make_shared<FakeClock>();
        Port<Clock>::current() = clock;
        network.startAvahi();
        NetServiceRecorder recorder;
        NSNetService service("", type, "Nobody's");
        service.setDelegate(&recorder);
        service.resolveWithTimeout(3s);
        clock->advance(3s);
        EXPECT_EQ(recorder.problems, QList({NetServices::Problem::TimedOut}));
        service.stop(); // there is nothing left to stop
        EXPECT_EQ(recorder.resolved, 0);
    }));
}
