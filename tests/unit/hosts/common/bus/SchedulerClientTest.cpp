// SPDX-License-Identifier: MIT
#include "hosts/common/bus/BusSchedulerClient.h"

#include "DozelyKit/core/dbus/BusObject.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/WaitUntil.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace dozely;
using namespace std::chrono_literals;

namespace
{
/// Answers like a daemon: with its own arguments where they fit, with an error for what is called "bad".
class StandInDaemon
{
public:
    explicit StandInDaemon(const std::shared_ptr<Clock> &clock)
    {
        QFile file(SCHEDULER_XML);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const auto description = BusDescription::fromXml(file.readAll());
        object = std::make_unique<BusObject>(
            BusConnection::Bus::System,
            BusObject::Place{"com.dozely", "/com/dozely/Scheduler1", *description},
            BusObject::Handlers{.call = [this](const BusCall &call, const QVariantList &arguments) {
                calls += QString::fromLatin1(call.method()) + QString(" %1").arg(arguments.size());
                const QByteArray gives = description_.methods.value(call.method()).gives;
                if (arguments.value(0) == QVariant("bad"))
                    return call.refuse({"Not so.", "com.dozely.Error.NotAllowed"});
                const QVariantMap one{{"name", "Water"}};
                const QVariant value = gives == "aa{sv}"  ? QVariant(QVariantList{one, one})
                                       : gives == "a{sv}" ? QVariant(one)
                                                          : QVariant("text");
                object->answer(call, gives.isEmpty() ? QVariantList() : QVariantList{value});
            }});
        description_ = *description;
        object->setProperties({{"Version", "1.2.3"},
                               {"AgentOfConsoleUser", QVariantMap()},
                               {"WakeClock", QVariantMap{{"isSupported", false}}},
                               {"NextOccurrence", QVariantMap()}});
        object->keepThere(clock);
    }

    std::unique_ptr<BusObject> object;
    BusDescription description_;
    QStringList calls;
};

class SchedulerClientTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        daemon = std::make_unique<StandInDaemon>(clock);
        client = std::make_unique<BusSchedulerClient>(BusConnection::Bus::System, clock);
        ASSERT_TRUE(waitUntil([&] { return client->isAvailable(); }));
    }

    template<class T>
    SchedulerClient::Answer<T> into(std::optional<Result<T>> &answer)
    {
        return [&answer](const Result<T> &value) { answer = value; };
    }

    PrivateBus bus;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::unique_ptr<StandInDaemon> daemon;
    std::unique_ptr<BusSchedulerClient> client;
};
} // namespace

TEST_F(SchedulerClientTest, AsksForEverythingAndUnderstandsTheAnswers)
{
    std::optional<Result<QList<QVariantMap>>> list, next, history;
    std::optional<Result<QVariantMap>> got;
    std::optional<Result<QString>> added, skipped, postponed;
    std::optional<Result<void>> changed, removed, enabled, ran;
    client->list(into(list));
    client->get("a", into(got));
    client->add({{"name", "Water"}}, into(added));
    client->change("a", {{"name", "Plants"}}, into(changed));
    client->remove("a", into(removed));
    client->setEnabled("a", true, into(enabled));
    client->runNow("a", into(ran));
    client->skip("a", "", into(skipped));
    client->postpone("a", "", 60s, into(postponed));
    client->next("a", "", "", 5, into(next));
    client->history("a", 5, into(history));
    EXPECT_FALSE(list) << "it was answered before it returned";
    ASSERT_TRUE(waitUntil([&] { return history.has_value(); }));
    const QVariantMap one{{"name", "Water"}};
    EXPECT_EQ(list->value(), (QList<QVariantMap>{one, one}));
    EXPECT_EQ(next->value().size(), 2);
    EXPECT_EQ(history->value().size(), 2);
    EXPECT_EQ(got->value(), one);
    for (const auto *text : {&added, &skipped, &postponed})
        EXPECT_EQ((*text)->value(), "text");
    for (const auto *nothing : {&changed, &removed, &enabled, &ran})
        EXPECT_TRUE((*nothing)->ok());
    EXPECT_EQ(daemon->calls, (QStringList{"List 0", "Get 1", "Add 1", "Change 2", "Remove 1", "SetEnabled 2",
                                          "RunNow 1", "Skip 2", "Postpone 3", "Next 4", "History 2"}));
}

TEST_F(SchedulerClientTest, TellsErrorsByNameAndText)
{
    std::optional<Result<void>> answer;
    client->remove("bad", into(answer));
    ASSERT_TRUE(waitUntil([&] { return answer.has_value(); }));
    ASSERT_FALSE(*answer);
    EXPECT_EQ(answer->error().name, "com.dozely.Error.NotAllowed");
    EXPECT_EQ(answer->error().text, "Not so.");
}

TEST_F(SchedulerClientTest, HearsWhatHappens)
{
    QStringList heard;
    QObject::connect(client.get(), &SchedulerClient::schedulesChanged,
                     [&](const QStringList &identifiers) { heard += "changed " + identifiers.join(','); });
    QObject::connect(client.get(), &SchedulerClient::occurrenceBegan,
                     [&](const QString &identifier, const QString &date, const QVariantMap &occurrence) {
                         heard += "began " + identifier + date + occurrence["name"].toString();
                     });
    QObject::connect(client.get(), &SchedulerClient::occurrenceEnded,
                     [&](const QString &identifier) { heard += "ended " + identifier; });
    QObject::connect(client.get(), &SchedulerClient::occurrenceAnnounced,
                     [&](const QString &identifier) { heard += "announced " + identifier; });
    QObject::connect(client.get(), &SchedulerClient::propertiesChanged,
                     [&] { heard += "version " + client->properties()["Version"].toString(); });
    daemon->object->emitSignal("SchedulesChanged", {QStringList{"a", "b"}});
    daemon->object->emitSignal("OccurrenceAnnounced", {"a", "1", QVariantMap()});
    daemon->object->emitSignal("OccurrenceBegan", {"a", "1", QVariantMap{{"name", "Water"}}});
    daemon->object->emitSignal("OccurrenceEnded", {"a", "1", QVariantMap()});
    daemon->object->setProperties({{"Version", "2"}});
    ASSERT_TRUE(waitUntil([&] { return heard.size() == 5; }));
    EXPECT_EQ(heard, (QStringList{"changed a,b", "announced a", "began a1Water", "ended a", "version 2"}));
    EXPECT_EQ(client->properties()["WakeClock"].toMap(), (QVariantMap{{"isSupported", false}}));
}

TEST_F(SchedulerClientTest, NoticesThatTheDaemonGoesAndComes)
{
    QList<bool> told;
    QObject::connect(client.get(), &SchedulerClient::availabilityChanged, [&](bool is) { told += is; });
    daemon.reset();
    ASSERT_TRUE(waitUntil([&] { return !client->isAvailable(); }));
    EXPECT_TRUE(client->properties().isEmpty());
    std::optional<Result<QList<QVariantMap>>> list;
    client->list(into(list));
    ASSERT_TRUE(waitUntil([&] { return list.has_value(); }));
    EXPECT_FALSE(*list);
    daemon = std::make_unique<StandInDaemon>(clock);
    ASSERT_TRUE(waitUntil([&] { return client->isAvailable(); }));
    EXPECT_EQ(told, (QList<bool>{false, true}));
}

TEST_F(SchedulerClientTest, FailsWhereThereIsNoBusAndIsBackWithIt)
{
    bus.stop();
    ASSERT_TRUE(waitUntil([&] { return !client->isAvailable(); }));
    std::optional<Result<QVariantMap>> got;
    client->get("a", into(got));
    ASSERT_TRUE(waitUntil([&] { return got.has_value(); }));
    EXPECT_FALSE(*got);
    bus.restart();
    ASSERT_TRUE(waitUntil([&] {
        clock->advance(5ms);
        return client->isAvailable();
    }));
}
