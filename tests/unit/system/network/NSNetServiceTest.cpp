// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/NSNetService.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/system/machine/MachineIdentity.h"
#include "DozelyKit/system/network/NetServices.h"
#include "support/FakeClock.h"
#include "support/FakeNetServices.h"
#include "support/PrintTo.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
class NamedMachine : public MachineIdentity
{
public:
    QString systemVersion() override { return {}; }
    QString computerName() override { return name; }
    QString name;
};

/// Writes down what it hears, and may do something then.
class Recorder : public NSNetServiceDelegate
{
public:
    void netServiceDidPublish(NSNetService &service) override { note("published " + service.name()); }
    void netServiceDidNotPublish(NSNetService &, const NetServices::Error &error) override
    {
        note("not published " + error.text);
    }
    void netServiceDidResolveAddress(NSNetService &service) override
    {
        note(QString("resolved %1").arg(service.addresses().size()));
    }
    void netServiceDidNotResolve(NSNetService &, const NetServices::Error &error) override
    {
        lastProblem = error.problem;
        note("not resolved");
    }
    void netServiceDidUpdateTXTRecordData(NSNetService &, const QByteArray &record) override
    {
        note("record " + QString::fromLatin1(record.mid(1)));
    }
    void netServiceDidStop(NSNetService &) override { note("stopped"); }

    QStringList calls;
    NetServices::Problem lastProblem = NetServices::Problem::Collision;
    std::function<void()> action;

private:
    void note(const QString &call)
    {
        calls += call;
        if (action)
            action();
    }
};

class NSNetServiceTest : public testing::Test
{
protected:
    NSNetServiceTest()
    {
        Port<NetServices>::current() = network;
        Port<Clock>::current() = clock;
    }

    static NetServices::Findings findings(const QByteArray &record = "\x03"
                                                                     "k=1")
    {
        return {"host.local", 5111, {FakeNetServices::ipv4(10, 0, 0, 1, 5111)}, record};
    }

    std::shared_ptr<FakeNetServices> network = std::make_shared<FakeNetServices>();
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    Recorder recorder;
};
} // namespace

TEST_F(NSNetServiceTest, PublishesWhatItWasMadeWith)
{
    NSNetService service("local.", "_dozely._tcp.", "Kitchen", 5111);
    ASSERT_TRUE(service.setTXTRecordData("\x03"
                                         "k=1"));
    service.publish();
    ASSERT_TRUE(network->publisher);
    EXPECT_EQ(network->asked.name, "Kitchen");
    EXPECT_EQ(network->asked.type, "_dozely._tcp");
    EXPECT_EQ(network->asked.domain, "local");
    EXPECT_EQ(network->askedPort, 5111);
    EXPECT_EQ(network->askedRecord, "\x03"
                                    "k=1");
    EXPECT_TRUE(network->askedMayRename);
}

TEST_F(NSNetServiceTest, TakesTheNameThatTheNetworkGaveIt)
{
    NSNetService service("", "_dozely._tcp", "Kitchen", 5111);
    service.setDelegate(&recorder);
    service.publish();
    network->publisher->published("Kitchen #2");
    EXPECT_EQ(service.name(), "Kitchen #2");
    EXPECT_EQ(recorder.calls, QStringList("published Kitchen #2"));
}

TEST_F(NSNetServiceTest, DoesNotRenameWhereThatIsNotWanted)
{
    NSNetService service("", "_dozely._tcp", "Kitchen", 5111);
    service.publish(NSNetService::NoAutoRename);
    EXPECT_FALSE(network->askedMayRename);
}

TEST_F(NSNetServiceTest, WithoutANameIsNamedAfterTheComputer)
{
    const auto machine = std::make_shared<NamedMachine>();
    machine->name = "Zo\u00eb's desk";
    Port<MachineIdentity>::current() = machine;
    NSNetService service("", "_dozely._tcp", "", 5111);
    service.publish();
    EXPECT_EQ(network->asked.name, "Zo\u00eb's desk");
}

TEST_F(NSNetServiceTest, TakesOfALongComputerNameWhatFits)
{
    const auto machine = std::make_shared<NamedMachine>();
    machine->name = QString("a") + QString("\u00e9").repeated(40); // 81 bytes
    Port<MachineIdentity>::current() = machine;
    NSNetService service("", "_dozely._tcp", "", 5111);
    service.publish();
    EXPECT_EQ(network->asked.name.toUtf8().size(), 63);
    EXPECT_TRUE(machine->name.startsWith(network->asked.name));
}

TEST_F(NSNetServiceTest, ThatFailedToPublishMayBePublishedAgain)
{
    NSNetService service("", "_dozely._tcp", "Kitchen", 5111);
    service.setDelegate(&recorder);
    service.publish();
    network->publisher->notPublished({NetServices::Problem::Collision, "taken"});
    EXPECT_EQ(recorder.calls, QStringList("not published taken"));
    EXPECT_FALSE(network->publisher);
    service.publish();
    EXPECT_TRUE(network->publisher);
}

TEST_F(NSNetServiceTest, StaysAskedForWhileThereIsNoDaemon)
{
    NSNetService service("", "_dozely._tcp", "Kitchen", 5111);
    service.setDelegate(&recorder);
    service.publish();
    network->publisher->notPublished({NetServices::Problem::Unavailable, "away"});
    ASSERT_TRUE(network->publisher);
    network->publisher->published("Kitchen");
    EXPECT_EQ(recorder.calls, QStringList({"not published away", "published Kitchen"}));
}

TEST_F(NSNetServiceTest, TellsANewRecordToTheNetworkWhilePublished)
{
    NSNetService service("", "_dozely._tcp", "Kitchen", 5111);
    service.publish();
    EXPECT_TRUE(service.setTXTRecordData("\x03"
                                         "k=2"));
    EXPECT_EQ(network->askedRecord, "\x03"
                                    "k=2");
    EXPECT_EQ(service.TXTRecordData(), "\x03"
                                       "k=2");
}

TEST_F(NSNetServiceTest, RefusesADamagedOrHugeRecord)
{
    NSNetService service("", "_dozely._tcp", "Kitchen", 5111);
    ASSERT_TRUE(service.setTXTRecordData("\x03"
                                         "k=1"));
    EXPECT_FALSE(service.setTXTRecordData("\x05"
                                          "k=1"));
    EXPECT_FALSE(service.setTXTRecordData(QByteArray("\x03"
                                                     "k=1")
                                              .repeated(400)));
    EXPECT_EQ(service.TXTRecordData(), "\x03"
                                       "k=1");
    EXPECT_TRUE(service.setTXTRecordData({}));
    EXPECT_TRUE(service.TXTRecordData().isNull());
}

TEST_F(NSNetServiceTest, IsWithdrawnWhenStoppedAndWhenDestroyed)
{
    {
        NSNetService service("", "_dozely._tcp", "Kitchen", 5111);
        service.setDelegate(&recorder);
        service.stop();
        EXPECT_TRUE(recorder.calls.isEmpty()); // there was nothing to stop
        service.publish();
        service.stop();
        EXPECT_FALSE(network->publisher);
        EXPECT_EQ(recorder.calls, QStringList("stopped"));
        service.publish();
    }
    EXPECT_FALSE(network->publisher);
}

TEST_F(NSNetServiceTest, TellsWhereAServiceIs)
{
    NSNetService service("", "_dozely._tcp", "Kitchen");
    service.setDelegate(&recorder);
    EXPECT_EQ(service.port(), -1);
    EXPECT_TRUE(service.hostName().isNull());
    service.resolveWithTimeout(5s);
    network->resolver->found(findings());
    EXPECT_EQ(recorder.calls, QStringList("resolved 1"));
    EXPECT_EQ(service.hostName(), "host.local");
    EXPECT_EQ(service.port(), 5111);
    EXPECT_EQ(service.TXTRecordData(), "\x03"
                                       "k=1");
    EXPECT_EQ(service.addresses(), findings().addresses);
}

TEST_F(NSNetServiceTest, FollowsAServiceThatItFound)
{
    NSNetService service("", "_dozely._tcp", "Kitchen");
    service.setDelegate(&recorder);
    service.resolveWithTimeout(5s);
    network->resolver->found(findings());
    network->resolver->found(findings("\x03"
                                      "k=2"));
    network->resolver->found(findings("\x03"
                                      "k=2")); // no news
    auto moved = findings("\x03"
                          "k=2");
    moved.addresses += FakeNetServices::ipv6(1, 5111);
    network->resolver->found(moved);
    EXPECT_EQ(recorder.calls, QStringList({"resolved 1", "record k=2", "resolved 2"}));
    EXPECT_EQ(service.TXTRecordData(), "\x03"
                                       "k=2");
}

TEST_F(NSNetServiceTest, GivesUpWhenNobodyAnswersInTime)
{
    NSNetService service("", "_dozely._tcp", "Kitchen");
    service.setDelegate(&recorder);
    service.resolveWithTimeout(5s);
    clock->advance(4999ms);
    EXPECT_TRUE(recorder.calls.isEmpty());
    clock->advance(1ms);
    EXPECT_EQ(recorder.calls, QStringList("not resolved"));
    EXPECT_EQ(recorder.lastProblem, NetServices::Problem::TimedOut);
    EXPECT_FALSE(network->resolver);
}

TEST_F(NSNetServiceTest, DoesNotGiveUpWhatItHasFound)
{
    NSNetService service("", "_dozely._tcp", "Kitchen");
    service.setDelegate(&recorder);
    service.resolveWithTimeout(5s);
    network->resolver->found(findings());
    clock->advance(1h);
    EXPECT_EQ(recorder.calls, QStringList("resolved 1"));
    EXPECT_TRUE(network->resolver);
}

TEST_F(NSNetServiceTest, WithoutATimeoutWaitsForEver)
{
    NSNetService service("", "_dozely._tcp", "Kitchen");
    service.setDelegate(&recorder);
    service.resolveWithTimeout(0ms);
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
    clock->advance(24h);
    EXPECT_TRUE(network->resolver);
}

TEST_F(NSNetServiceTest, KeepsWhatItKnowsWhenItStops)
{
    NSNetService service("", "_dozely._tcp", "Kitchen");
    service.resolveWithTimeout(5s);
    network->resolver->found(findings());
    service.stop();
    EXPECT_FALSE(network->resolver);
    EXPECT_EQ(service.addresses().size(), 1);
    clock->advance(1h); // the time-out is gone, too
    service.resolveWithTimeout(5s);
    EXPECT_TRUE(service.addresses().isEmpty()); // it is looked for anew
}

TEST_F(NSNetServiceTest, DoesOneThingAtATime)
{
    NSNetService service("", "_dozely._tcp", "Kitchen", 5111);
    service.publish();
    service.resolveWithTimeout(5s);
    EXPECT_FALSE(network->resolver);
    service.stop();
    service.resolveWithTimeout(5s);
    service.publish();
    EXPECT_FALSE(network->publisher);
}

TEST_F(NSNetServiceTest, MayBeDestroyedByItsDelegate)
{
    for (int at = 0; at < 5; ++at) {
        auto service = std::make_unique<NSNetService>("", "_dozely._tcp", "Kitchen", 5111);
        Recorder destroyer;
        service->setDelegate(&destroyer);
        destroyer.action = [&service] { service.reset(); };
        if (at < 2) {
            service->publish();
            if (at == 0)
                network->publisher->published("Kitchen");
            else
                network->publisher->notPublished({NetServices::Problem::BadArgument, "bad"});
        } else {
            service->resolveWithTimeout(5s);
            if (at == 2)
                network->resolver->found(findings());
            else if (at == 3)
                clock->advance(5s);
            else
                service->stop();
        }
        EXPECT_FALSE(service);
        EXPECT_EQ(destroyer.calls.size(), 1);
        EXPECT_FALSE(network->publisher || network->resolver);
    }
}

TEST_F(NSNetServiceTest, MayBeStoppedByItsDelegate)
{
    NSNetService service("", "_dozely._tcp", "Kitchen");
    service.setDelegate(&recorder);
    service.resolveWithTimeout(5s);
    network->resolver->found(findings());
    recorder.action = [&] {
        recorder.action = nullptr;
        service.stop();
    };
    auto news = findings("\x03"
                         "k=2");
    news.port = 6000;
    network->resolver->found(news); // address and record are new, but it is stopped in between
    EXPECT_EQ(recorder.calls, QStringList({"resolved 1", "resolved 1", "stopped"}));
}
