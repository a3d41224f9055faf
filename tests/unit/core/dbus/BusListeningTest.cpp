// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusConnection.h"

#include "support/PrivateBus.h"
#include "support/WaitUntil.h"

#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <systemd/sd-bus.h>
#include <unistd.h>
#include <vector>

using namespace dozely;

namespace
{
using namespace std::chrono_literals;

constexpr char busService[] = "org.freedesktop.DBus";
constexpr char busPath[] = "/org/freedesktop/DBus";
constexpr char path[] = "/com/dozely/Test";
constexpr char interface[] = "com.dozely.Test";
constexpr char name[] = "com.dozely.Test.Service";

QDeadlineTimer soon()
{
    return QDeadlineTimer(10s);
}

class BusListeningTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        hearer = BusConnection::open(BusConnection::Bus::System).value();
        sender = BusConnection::open(BusConnection::Bus::System).value();
        ASSERT_TRUE(hearer && sender);
        ASSERT_TRUE(roundTrip(*sender)); // it has its unique name
    }

    /// The bus has seen everything that was sent before.
    static bool roundTrip(BusConnection &connection)
    {
        return connection.call({busService, busPath, busService, "GetId"}, "", {}, soon()).ok();
    }

    static bool own(BusConnection &connection, const QString &owned)
    {
        return connection.call({busService, busPath, busService, "RequestName"}, "su", {owned, 0U}, soon())
            .ok();
    }

    static bool release(BusConnection &connection, const QString &owned)
    {
        return connection.call({busService, busPath, busService, "ReleaseName"}, "s", {owned}, soon()).ok();
    }

    bool emitNumber(int number, BusConnection *from = nullptr)
    {
        return (from ? *from : *sender).emitSignal(path, interface, "Number", "i", {number}).ok();
    }

    /// Collects the numbers of the signals from `source`.
    std::unique_ptr<BusConnection::Subscription> collect(const BusConnection::SignalSource &source)
    {
        auto subscription = hearer->subscribe(source, [this](const BusConnection::Signal &signal) {
            numbers.push_back(signal.arguments.value(0).toInt());
            lastSender = signal.sender;
        });
        EXPECT_TRUE(roundTrip(*hearer));
        return subscription;
    }

    /// A stranger sends a signal to `hearer` alone, which needs nobody's leave.
    void sendToHearer(const char *from, const char *signalInterface, const char *signalName,
                      const QByteArrayList &texts)
    {
        sd_bus *stranger = nullptr;
        ASSERT_GE(sd_bus_open_system(&stranger), 0);
        sd_bus_message *message = nullptr;
        ASSERT_GE(sd_bus_message_new_signal(stranger, &message, from, signalInterface, signalName), 0);
        ASSERT_GE(sd_bus_message_set_destination(message, hearer->uniqueName().constData()), 0);
        for (const QByteArray &text : texts)
            ASSERT_GE(sd_bus_message_append(message, "s", text.constData()), 0);
        ASSERT_GE(sd_bus_send(stranger, message, nullptr), 0);
        // The bus has it before it answers this.
        ASSERT_GE(
            sd_bus_call_method(stranger, busService, busPath, busService, "GetId", nullptr, nullptr, ""), 0);
        sd_bus_message_unref(message);
        sd_bus_flush_close_unref(stranger);
    }

    PrivateBus bus;
    std::unique_ptr<BusConnection> hearer;
    std::unique_ptr<BusConnection> sender;
    std::vector<int> numbers;
    QByteArray lastSender;
};

const BusConnection::SignalSource anyNumber{"", path, interface, "Number"};
const BusConnection::SignalSource numberOfService{name, path, interface, "Number"};
} // namespace

TEST_F(BusListeningTest, HearsSignalsInTheirOrderWithTheirSender)
{
    const auto subscription = collect(anyNumber);
    for (int i = 0; i < 300; ++i) // more than one turn of the loop
        ASSERT_TRUE(emitNumber(i));
    ASSERT_TRUE(waitUntil([&] { return numbers.size() == 300; }));
    for (int i = 0; i < 300; ++i)
        EXPECT_EQ(numbers[static_cast<size_t>(i)], i);
    EXPECT_EQ(lastSender, sender->uniqueName());
}

TEST_F(BusListeningTest, DoesNotHearWhatItDidNotAskFor)
{
    const auto subscription = collect(anyNumber);
    ASSERT_TRUE(sender->emitSignal("/com/dozely/Other", interface, "Number", "i", {1}));
    ASSERT_TRUE(sender->emitSignal(path, "com.dozely.Other", "Number", "i", {2}));
    ASSERT_TRUE(sender->emitSignal(path, interface, "Other", "i", {3}));
    ASSERT_TRUE(emitNumber(4));
    ASSERT_TRUE(waitUntil([&] { return !numbers.empty(); }));
    EXPECT_EQ(numbers, std::vector{4});
}

TEST_F(BusListeningTest, HearsOnlyTheFirstTextItAskedFor)
{
    std::vector<QString> texts;
    const auto subscription =
        hearer->subscribe({"", path, interface, "Text", "it's"},
                          [&](const auto &signal) { texts.push_back(signal.arguments.value(1).toString()); });
    ASSERT_TRUE(roundTrip(*hearer));
    ASSERT_TRUE(sender->emitSignal(path, interface, "Text", "ss", {"other", "a"}));
    ASSERT_TRUE(sender->emitSignal(path, interface, "Text", "is", {1, "b"}));
    ASSERT_TRUE(sender->emitSignal(path, interface, "Text", "ss", {"it's", "c"}));
    ASSERT_TRUE(waitUntil([&] { return !texts.empty(); }));
    EXPECT_EQ(texts, std::vector<QString>{"c"});
}

TEST_F(BusListeningTest, HearsAFirstTextWhateverItIs)
{
    for (const char *text :
         {"", "a,b", "it's, well", "C:\\folder\\", "\\'", "'", "zu spät", "a='b',path='/'"}) {
        std::vector<QString> heard;
        const auto subscription =
            hearer->subscribe({"", path, interface, "Text", QString(text)}, [&](const auto &signal) {
                heard.push_back(signal.arguments.value(0).toString());
            });
        ASSERT_TRUE(roundTrip(*hearer));
        ASSERT_TRUE(sender->emitSignal(path, interface, "Text", "s", {"other"}));
        ASSERT_TRUE(sender->emitSignal(path, interface, "Text", "s", {QString(text)}));
        EXPECT_TRUE(waitUntil([&] { return !heard.empty(); })) << text;
        EXPECT_EQ(heard, std::vector{QString(text)});
    }
}

TEST_F(BusListeningTest, BelievesNobodyElseWhoSendsToItAlone)
{
    ASSERT_TRUE(own(*sender, name));
    std::vector<QString> texts;
    const auto keep = [&](const auto &signal) { texts.push_back(signal.arguments.value(0).toString()); };
    const auto ofService = hearer->subscribe({name, path, interface, "Text"}, keep);
    const auto ofConnection = hearer->subscribe({sender->uniqueName(), path, interface, "Other"}, keep);
    const auto ofBus = hearer->subscribe({busService, busPath, busService, "Text"}, keep);
    ASSERT_TRUE(roundTrip(*hearer));
    sendToHearer(path, interface, "Text", {"as the service"});
    sendToHearer(path, interface, "Other", {"as the connection"});
    sendToHearer(busPath, busService, "Text", {"as the bus"});
    ASSERT_TRUE(sender->emitSignal(path, interface, "Text", "s", {"true"}));
    ASSERT_TRUE(waitUntil([&] { return !texts.empty(); }));
    EXPECT_EQ(texts, std::vector<QString>{"true"});
}

TEST_F(BusListeningTest, BelievesTheBusAloneAboutAnOwner)
{
    std::vector<QByteArray> owners;
    const auto watch = hearer->watchOwner(name, [&](const QByteArray &owner) { owners.push_back(owner); });
    ASSERT_TRUE(waitUntil([&] { return owners.size() == 1; }));
    sendToHearer(busPath, busService, "NameOwnerChanged", {name, "", ":1.4711"});
    ASSERT_TRUE(own(*sender, name));
    ASSERT_TRUE(waitUntil([&] { return owners.size() == 2; }));
    EXPECT_EQ(owners[1], sender->uniqueName());
}

TEST_F(BusListeningTest, HearsNothingAnyMoreOnceTheSubscriptionHasGone)
{
    auto first = collect(anyNumber);
    auto second = collect(anyNumber);
    ASSERT_TRUE(emitNumber(1));
    ASSERT_TRUE(waitUntil([&] { return numbers.size() == 2; }));
    first.reset();
    ASSERT_TRUE(emitNumber(2));
    ASSERT_TRUE(waitUntil([&] { return numbers.size() == 3; }));
    ASSERT_TRUE(emitNumber(3));
    ASSERT_TRUE(waitUntil([&] { return numbers.size() == 4; }));
    EXPECT_EQ(numbers, (std::vector{1, 1, 2, 3}));
}

TEST_F(BusListeningTest, BelievesOnlyTheOwnerOfAName)
{
    ASSERT_TRUE(own(*sender, name));
    const auto stranger = BusConnection::open(BusConnection::Bus::System).value();
    const auto subscription = collect(numberOfService);
    // The second subscription lets the stranger's signals come in all the same.
    const auto everything = hearer->subscribe(anyNumber, [](const auto &) {});
    ASSERT_TRUE(roundTrip(*hearer));
    ASSERT_TRUE(emitNumber(1, stranger.get()));
    ASSERT_TRUE(roundTrip(*stranger));
    ASSERT_TRUE(emitNumber(2));
    ASSERT_TRUE(waitUntil([&] { return !numbers.empty(); }));
    EXPECT_EQ(numbers, std::vector{2});
}

TEST_F(BusListeningTest, FollowsANameToItsNextOwner)
{
    ASSERT_TRUE(own(*sender, name));
    const auto subscription = collect(numberOfService);
    const auto heir = BusConnection::open(BusConnection::Bus::System).value();
    ASSERT_TRUE(release(*sender, name));
    ASSERT_TRUE(own(*heir, name));
    ASSERT_TRUE(emitNumber(1)); // the former owner
    ASSERT_TRUE(roundTrip(*sender));
    ASSERT_TRUE(emitNumber(2, heir.get()));
    ASSERT_TRUE(waitUntil([&] { return !numbers.empty(); }));
    EXPECT_EQ(numbers, std::vector{2});
    EXPECT_EQ(lastSender, heir->uniqueName());
}

TEST_F(BusListeningTest, BelievesNobodyAsLongAsANameHasNoOwner)
{
    const auto subscription = collect(numberOfService);
    const auto everything = hearer->subscribe(anyNumber, [](const auto &) {});
    ASSERT_TRUE(roundTrip(*hearer));
    ASSERT_TRUE(emitNumber(1));
    ASSERT_TRUE(roundTrip(*sender));
    ASSERT_TRUE(own(*sender, name));
    ASSERT_TRUE(emitNumber(2));
    ASSERT_TRUE(waitUntil([&] { return !numbers.empty(); }));
    EXPECT_EQ(numbers, std::vector{2});
}

TEST_F(BusListeningTest, TellsTheOwnerOfANameOnceAndAtEachChange)
{
    std::vector<QByteArray> owners;
    const auto watch = hearer->watchOwner(name, [&](const QByteArray &owner) { owners.push_back(owner); });
    ASSERT_TRUE(waitUntil([&] { return owners.size() == 1; }));
    EXPECT_EQ(owners[0], "");
    ASSERT_TRUE(own(*sender, name));
    ASSERT_TRUE(waitUntil([&] { return owners.size() == 2; }));
    EXPECT_EQ(owners[1], sender->uniqueName());
    // A second one is told what is known already.
    QByteArray told = "nothing";
    const auto second = hearer->watchOwner(name, [&](const QByteArray &owner) { told = owner; });
    ASSERT_TRUE(waitUntil([&] { return told != "nothing"; }));
    EXPECT_EQ(told, sender->uniqueName());
    sender.reset();
    ASSERT_TRUE(waitUntil([&] { return owners.back().isEmpty(); }));
    EXPECT_EQ(told, "");
}

TEST_F(BusListeningTest, AnswersALaterCallFromTheEventLoop)
{
    QString id;
    hearer->callLater({busService, busPath, busService, "GetId"}, "", {}, 10s,
                      [&](const auto &reply) { id = reply->value(0).toString(); });
    EXPECT_TRUE(id.isEmpty());
    EXPECT_TRUE(waitUntil([&] { return !id.isEmpty(); }));
}

TEST_F(BusListeningTest, TellsWhyALaterCallFailed)
{
    std::vector<QByteArray> errors;
    const auto keep = [&](const auto &reply) {
        ASSERT_FALSE(reply);
        errors.push_back(reply.error().name);
    };
    hearer->callLater({busService, busPath, busService, "GetNameOwner"}, "s", {"no.such.Name"}, 10s, keep);
    ASSERT_TRUE(waitUntil([&] { return errors.size() == 1; }));
    EXPECT_EQ(errors[0], "org.freedesktop.DBus.Error.NameHasNoOwner");
    hearer->callLater({busService, busPath, busService, "GetNameOwner"}, "s", {42}, 10s, keep);
    ASSERT_TRUE(waitUntil([&] { return errors.size() == 2; }));
    EXPECT_EQ(errors[1], "org.freedesktop.DBus.Error.Failed");
}

TEST_F(BusListeningTest, GivesUpALaterCallThatNobodyAnswers)
{
    QByteArray error;
    // The other connection does not run, so that it never answers.
    hearer->callLater({sender->uniqueName(), path, interface, "Wait"}, "", {}, 20ms,
                      [&](const auto &reply) { error = reply.error().name; });
    ASSERT_TRUE(waitUntil([&] { return !error.isEmpty(); }));
    EXPECT_TRUE(error.contains("Timeout") || error.contains("NoReply")) << error.constData();
}

TEST_F(BusListeningTest, DeliversSignalsThatCameDuringACallAfterwards)
{
    const auto subscription = collect(anyNumber);
    ASSERT_TRUE(emitNumber(1));
    ASSERT_TRUE(roundTrip(*sender));
    ASSERT_TRUE(roundTrip(*hearer));
    EXPECT_TRUE(numbers.empty());
    EXPECT_TRUE(waitUntil([&] { return numbers.size() == 1; }));
}

TEST_F(BusListeningTest, LetsAHandlerCallAndDestroyTheConnection)
{
    int heard = 0;
    const auto first = hearer->subscribe(anyNumber, [&](const auto &) {
        ++heard;
        EXPECT_TRUE(roundTrip(*hearer));
        hearer.reset();
    });
    const auto second = hearer->subscribe(anyNumber, [&](const auto &) { ++heard; });
    ASSERT_TRUE(roundTrip(*hearer));
    ASSERT_TRUE(emitNumber(1));
    ASSERT_TRUE(emitNumber(2));
    ASSERT_TRUE(roundTrip(*sender));
    ASSERT_TRUE(waitUntil([&] { return heard > 0; }));
    EXPECT_FALSE(hearer);
    EXPECT_EQ(heard, 1);
}

TEST_F(BusListeningTest, TellsOnceThatTheBusHasGone)
{
    const auto subscription = collect(anyNumber);
    QByteArray owner = "unknown";
    const auto watch = hearer->watchOwner(busService, [&](const QByteArray &now) { owner = now; });
    ASSERT_TRUE(waitUntil([&] { return owner == busService; }));
    int told = 0;
    QByteArray error;
    hearer->onDisconnected([&] { ++told; });
    hearer->callLater({sender->uniqueName(), path, interface, "Wait"}, "", {}, 60s,
                      [&](const auto &reply) { error = reply.error().name; });
    ASSERT_TRUE(roundTrip(*hearer));
    bus.stop();
    ASSERT_TRUE(waitUntil([&] { return told > 0; }));
    EXPECT_EQ(told, 1);
    EXPECT_EQ(owner, "");
    EXPECT_EQ(error, "org.freedesktop.DBus.Error.NoReply");
    EXPECT_FALSE(roundTrip(*hearer));
}

TEST_F(BusListeningTest, CarriesContainersInSignals)
{
    const QVariantMap options{{"count", 3U},
                              {"name", "zu spät"},
                              {"raw", QByteArray("\x00\xff", 2)},
                              {"deep", QVariantMap{{"list", QVariantList{1, "zwei"}}}}};
    const QVariantList arguments{QVariantList{"a", "b"}, options,
                                 QVariantList{QByteArray("k=v"), QByteArray()}, QVariantList{7, "seven"},
                                 true};
    QVariantList heard;
    const auto subscription = hearer->subscribe({"", path, interface, "Mixed"},
                                                [&](const auto &signal) { heard = signal.arguments; });
    ASSERT_TRUE(roundTrip(*hearer));
    ASSERT_TRUE(sender->emitSignal(path, interface, "Mixed", "asa{sv}aay(is)v", arguments));
    ASSERT_TRUE(waitUntil([&] { return !heard.isEmpty(); }));
    EXPECT_EQ(heard, arguments);
}

TEST_F(BusListeningTest, RefusesContainersThatDoNotFitTheirSignature)
{
    const struct {
        const char *signature;
        QVariantList arguments;
    } cases[] = {{"as", {"text"}},
                 {"as", {QVariantList{"text", 1}}},
                 {"a{sv}", {QVariantList{}}},
                 {"(is)", {QVariantList{1}}},
                 {"(is)", {QVariantList{1, "a", "b"}}},
                 {"ay", {"text"}},
                 {"v", {QVariant()}},
                 {"(i", {QVariantList{1}}},
                 {"a", {QVariantList{1}}},
                 {"i", {1, 2}},
                 {"ii", {1}}};
    for (const auto &test : cases)
        EXPECT_FALSE(sender->emitSignal(path, interface, "Mixed", test.signature, test.arguments))
            << test.signature;
    EXPECT_TRUE(emitNumber(1));
}

TEST(BusDescriptorTest, ClosesItsDescriptorWithTheLastCopy)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    auto first = std::make_unique<BusDescriptor>(ends[1]);
    auto second = std::make_unique<BusDescriptor>(*first);
    first.reset();
    EXPECT_EQ(second->get(), ends[1]);
    EXPECT_NE(::fcntl(ends[1], F_GETFD), -1);
    second.reset();
    EXPECT_EQ(::fcntl(ends[1], F_GETFD), -1);
    ::close(ends[0]);
    EXPECT_EQ(BusDescriptor().get(), -1);
}
