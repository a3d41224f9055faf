// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusObject.h"

#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/WaitUntil.h"

#include <chrono>
#include <gtest/gtest.h>

using namespace dozely;
using namespace std::chrono_literals;

namespace
{
constexpr char name[] = "com.dozely.Test";
constexpr char path[] = "/com/dozely/Test";
constexpr char xml[] = R"(<node>
  <interface name="com.dozely.Test">
    <method name="Twice"><arg type="s" direction="in"/><arg type="s" direction="out"/></method>
    <method name="Late"><arg type="s" name="text" direction="out"/></method>
    <method name="Forgotten"/>
    <method name="Size"><arg type="ay" direction="in"/><arg type="x" direction="out"/></method>
    <method name="Wrong"><arg type="u" direction="out"/></method>
    <method name="Refused"/>
    <signal name="Happened"><arg type="s" name="what"/></signal>
    <property name="Count" type="u" access="read"/>
    <property name="Names" type="a{sv}" access="read"/>
  </interface>
</node>
)";

class BusObjectTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        object = make();
        object->setProperties({{"Count", 1U}, {"Names", QVariantMap()}});
        object->keepThere(clock);
        ASSERT_TRUE(waitUntil([&] { return object->bus() && isOwned(); }));
    }

    std::unique_ptr<BusObject> make()
    {
        BusObject::Place place{name, path, BusDescription::fromXml(xml).value()};
        return std::make_unique<BusObject>(
            BusConnection::Bus::System, place,
            BusObject::Handlers{.call = [this](const BusCall &call,
                                               const QVariantList &arguments) { called(call, arguments); },
                                .willRead = [this] { ++reads; },
                                .refused = [this](const QString &why) { refusals += why; },
                                .closed = [this] { ++closings; }});
    }

    void called(const BusCall &call, const QVariantList &arguments)
    {
        callers += call.sender();
        if (call.method() == "Twice")
            object->answer(call, {arguments[0].toString() + arguments[0].toString()});
        else if (call.method() == "Size")
            object->answer(call, {qint64(arguments[0].toByteArray().size())});
        else if (call.method() == "Wrong")
            object->answer(call, {QVariantMap()});
        else if (call.method() == "Refused")
            call.refuse({"Not today.", "com.dozely.Error.NotPossible"});
        else if (call.method() == "Late")
            late = call;
    }

    /// What a caller from outside is answered: "NAME OF THE ERROR: TEXT" for an error.
    QString ask(const QByteArray &method, const QByteArray &signature = {},
                const QVariantList &arguments = {}, const QByteArray &interface = name,
                const QByteArray &at = path)
    {
        if (!client)
            client = BusConnection::open(BusConnection::Bus::System).value();
        QString answer;
        client->callLater({name, at, interface, method}, signature, arguments, 30s,
                          [&](const BusConnection::Reply &reply) { answer = textOf(reply); });
        EXPECT_TRUE(waitUntil([&] { return !answer.isNull(); }));
        return answer;
    }

    static QString textOf(const BusConnection::Reply &reply)
    {
        if (!reply)
            return QString::fromUtf8(reply.error().name) + ": " + reply.error().text;
        const QVariant first = reply->value(0);
        return first.isValid() ? first.toString() : QString("nothing");
    }

    bool isOwned()
    {
        const auto other = BusConnection::open(BusConnection::Bus::System);
        return other && (*other)
                            ->call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                    "GetNameOwner"},
                                   "s", {QString(name)}, QDeadlineTimer(10s))
                            .ok();
    }

    PrivateBus bus;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::unique_ptr<BusObject> object;
    std::unique_ptr<BusConnection> client;
    std::optional<BusCall> late;
    QList<QByteArray> callers;
    QStringList refusals;
    int reads = 0;
    int closings = 0;
};
} // namespace

TEST_F(BusObjectTest, HandsOnACallWithItsCallerAndAnswersIt)
{
    EXPECT_EQ(ask("Twice", "s", {"ab"}), "abab");
    EXPECT_EQ(ask("Twice", "s", {"ab"}, ""), "abab"); // the interface may be left out
    EXPECT_EQ(callers, QList<QByteArray>(2, client->uniqueName()));
}

TEST_F(BusObjectTest, AnswersLaterAndMeanwhileServesOthers)
{
    QString answer;
    ask("Twice", "s", {"x"});
    client->callLater({name, path, name, "Late"}, "", {}, 30s,
                      [&](const BusConnection::Reply &reply) { answer = textOf(reply); });
    ASSERT_TRUE(waitUntil([&] { return late.has_value(); }));
    EXPECT_EQ(ask("Twice", "s", {"y"}), "yy");
    EXPECT_TRUE(answer.isNull());
    object->answer(*late, {"now"});
    object->answer(*late, {"again"}); // which nobody hears
    EXPECT_TRUE(waitUntil([&] { return !answer.isNull(); }));
    EXPECT_EQ(answer, "now");
}

TEST_F(BusObjectTest, RefusesByNameAndText)
{
    EXPECT_EQ(ask("Refused"), "com.dozely.Error.NotPossible: Not today.");
    EXPECT_EQ(ask("Forgotten"), "org.freedesktop.DBus.Error.Failed: The call was not answered.");
    EXPECT_TRUE(ask("Wrong").startsWith("org.freedesktop.DBus.Error.Failed: ")) << "what does not fit";
}

TEST_F(BusObjectTest, RefusesWhatItsDescriptionDoesNotKnow)
{
    const QString errors = "org.freedesktop.DBus.Error.";
    EXPECT_EQ(ask("Twice", "u", {1U}),
              errors + "InvalidArgs: Twice takes arguments of the types \"s\", not \"u\".");
    EXPECT_EQ(ask("Thrice"), errors + "UnknownMethod: There is no method Thrice.");
    EXPECT_EQ(ask("Twice", "s", {"a"}, "com.dozely.Other"),
              errors + "UnknownMethod: There is no method Twice.");
    EXPECT_EQ(ask("Twice", "s", {"a"}, name, "/com/other"),
              errors + "UnknownObject: There is no object /com/other.");
    EXPECT_TRUE(callers.isEmpty());
}

TEST_F(BusObjectTest, TakesAMebibyteACallAndNoMore)
{
    EXPECT_EQ(ask("Size", "ay", {QByteArray(1'000'000, 'x')}), "1000000");
    EXPECT_TRUE(ask("Size", "ay", {QByteArray(1 << 20, 'x')})
                    .startsWith("org.freedesktop.DBus.Error.LimitsExceeded: "));
}

TEST_F(BusObjectTest, HasPropertiesThatAreReadAndTellOfTheirChanges)
{
    const char properties[] = "org.freedesktop.DBus.Properties";
    EXPECT_EQ(ask("Get", "ss", {name, "Count"}, properties), "1");
    EXPECT_EQ(reads, 1);
    EXPECT_TRUE(ask("Get", "ss", {name, "Other"}, properties).contains("UnknownProperty"));
    EXPECT_TRUE(ask("Get", "ss", {"com.other", "Count"}, properties).contains("UnknownInterface"));
    EXPECT_TRUE(ask("Set", "ssv", {name, "Count", 2U}, properties).contains("PropertyReadOnly"));

    QVariantList told;
    const auto hearing = client->subscribe({name, path, properties, "PropertiesChanged"},
                                           [&](const auto &signal) { told = signal.arguments; });
    EXPECT_EQ(ask("Get", "ss", {name, "Count"}, properties), "1"); // the bus knows of the subscription now
    object->setProperties({{"Count", 1U}, {"Names", QVariantMap{{"a", true}}}});
    ASSERT_TRUE(waitUntil([&] { return !told.isEmpty(); }));
    EXPECT_EQ(told, QVariantList({name, QVariantMap{{"Names", QVariantMap{{"a", true}}}}, QVariantList()}));
}

TEST_F(BusObjectTest, SendsSignals)
{
    ask("Twice", "s", {"x"});
    QVariantList told;
    const auto hearing = client->subscribe({name, path, name, "Happened"},
                                           [&](const auto &signal) { told = signal.arguments; });
    ask("Twice", "s", {"x"});
    object->emitSignal("Happened", {"this"});
    EXPECT_TRUE(waitUntil([&] { return !told.isEmpty(); }));
    EXPECT_EQ(told, QVariantList({"this"}));
}

TEST_F(BusObjectTest, TellsWhatItCanDo)
{
    const char introspectable[] = "org.freedesktop.DBus.Introspectable";
    const QString own = ask("Introspect", "", {}, introspectable);
    for (const char *part : {"<interface name=\"com.dozely.Test\">", "name=\"PropertiesChanged\"",
                             "<property name=\"Count\" type=\"u\" access=\"read\"/>"})
        EXPECT_TRUE(own.contains(part)) << part;
    EXPECT_TRUE(ask("Introspect", "", {}, introspectable, "/").contains("<node name=\"com\"/>"));
    EXPECT_TRUE(ask("Introspect", "", {}, introspectable, "/com/dozely").contains("<node name=\"Test\"/>"));
    EXPECT_FALSE(ask("Introspect", "", {}, introspectable, "/com/doze").contains("<node name"));
    const QString unknown = "org.freedesktop.DBus.Error.UnknownMethod: ";
    EXPECT_TRUE(ask("Inspect", "", {}, introspectable).startsWith(unknown));
    EXPECT_TRUE(ask("Introspect", "s", {"all"}, introspectable).startsWith(unknown));
}

TEST_F(BusObjectTest, IsThereAgainWhenTheBusIsBack)
{
    bus.stop();
    ASSERT_TRUE(waitUntil([&] { return closings == 1; }));
    object->setProperties({{"Count", 2U}}); // goes nowhere
    object->emitSignal("Happened", {"this"});
    bus.restart();
    ASSERT_TRUE(waitUntil([&] {
        clock->advance(5ms);
        return object->bus() && isOwned();
    }));
    client.reset();
    EXPECT_EQ(ask("Twice", "s", {"ab"}), "abab");
    EXPECT_TRUE(refusals.isEmpty());
}

TEST_F(BusObjectTest, WaitsBehindWhoHasTheName)
{
    const auto second = make();
    second->keepThere(clock);
    ASSERT_TRUE(waitUntil([&] { return !refusals.isEmpty(); }));
    EXPECT_EQ(refusals, QStringList{"another program has it"});
    object.reset();
    object = make(); // answers through it
    EXPECT_EQ(ask("Refused"), "com.dozely.Error.NotPossible: Not today.");
}

TEST(BusDescription, ReadsOneInterface)
{
    const auto description = BusDescription::fromXml(xml);
    ASSERT_TRUE(description);
    EXPECT_EQ(description->interface, "com.dozely.Test");
    EXPECT_EQ(description->methods.value("Twice").takes, "s");
    EXPECT_EQ(description->methods.value("Size").gives, "x");
    EXPECT_EQ(description->broadcasts.value("Happened"), "s");
    EXPECT_EQ(description->properties.value("Names"), "a{sv}");
}

TEST(BusDescription, RefusesWhatIsNone)
{
    for (const char *bad : {"", "<node/>", "<interface name='a'/>", "<node><interface name='a.b'>",
                            "<node><interface name='a.b'/><interface name='a.c'/></node>"})
        EXPECT_FALSE(BusDescription::fromXml(bad)) << bad;
}
