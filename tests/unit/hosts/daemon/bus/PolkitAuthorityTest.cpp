// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/PolkitAuthority.h"

#include "DozelyKit/core/dbus/BusObject.h"
#include "hosts/common/bus/SchedulerNames.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace dozely;
using namespace std::chrono_literals;

namespace
{
constexpr char polkit[] = "org.freedesktop.PolicyKit1";
constexpr char polkitPath[] = "/org/freedesktop/PolicyKit1/Authority";
constexpr char xml[] = R"xml(<node>
  <interface name="org.freedesktop.PolicyKit1.Authority">
    <method name="CheckAuthorization">
      <arg type="(sa{sv})" direction="in"/><arg type="s" direction="in"/><arg type="a{ss}" direction="in"/>
      <arg type="u" direction="in"/><arg type="s" direction="in"/><arg type="(bba{ss})" direction="out"/>
    </method>
    <method name="CancelCheckAuthorization"><arg type="s" direction="in"/></method>
  </interface>
</node>
)xml";
constexpr quint32 alice = 12345;
constexpr quint32 bob = 12346;

/// Of somebody who is no root; each question stays open until the test answers it.
class PolkitAuthorityTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        startPolkit();
        connection = BusConnection::open(BusConnection::Bus::System).value();
        authority.setBus(connection.get());
    }

    void startPolkit()
    {
        object = std::make_unique<BusObject>(
            BusConnection::Bus::System,
            BusObject::Place{polkit, polkitPath, BusDescription::fromXml(xml).value()},
            BusObject::Handlers{.call = [this](const BusCall &call, const QVariantList &arguments) {
                if (call.method() == "CancelCheckAuthorization") {
                    cancelled += arguments[0].toString();
                    object->answer(call);
                } else {
                    calls.push_back(call);
                    questions.append(arguments);
                }
            }});
        object->keepThere(clock);
        ASSERT_TRUE(waitUntil([this] { return owner() != QString(); }));
    }

    /// The unique name of who is polkit.
    static QString owner()
    {
        const auto other = BusConnection::open(BusConnection::Bus::System).value();
        return BusConnection::firstOf(other->call({"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                   "org.freedesktop.DBus", "GetNameOwner"},
                                                  "s", {QString(polkit)}, QDeadlineTimer(10s)))
            .toString();
    }

    /// Somebody on the bus, as long as the connection lives.
    static std::unique_ptr<BusConnection> somebody()
    {
        auto result = BusConnection::open(BusConnection::Bus::System).value();
        EXPECT_TRUE(
            result
                ->call({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId"}, "",
                       {}, QDeadlineTimer(10s))
                .ok());
        return result;
    }

    void ask(const BusCaller &caller, const QByteArray &action = SchedulerNames::manageOwn)
    {
        authority.ask(caller, action, [this](const Result<void> &allowed) {
            verdicts += allowed ? QString("yes")
                                : QString::fromUtf8(allowed.error().name) + ": " + allowed.error().text;
        });
    }

    bool areAsked(qsizetype count)
    {
        return waitUntil([this, count] { return questions.size() >= count; });
    }

    void answer(qsizetype question, bool yes)
    {
        object->answer(calls.at(static_cast<std::size_t>(question)),
                       {QVariant(QVariantList{yes, false, QVariantMap()})});
    }

    bool isTold(qsizetype count)
    {
        return waitUntil([this, count] { return verdicts.size() >= count; });
    }

    /// Whether a look was answered, for each question of it the same.
    bool look(const BusCaller &caller, bool ofOwn, bool ofAll)
    {
        const qsizetype before = questions.size();
        bool isKnown = false;
        authority.look(caller, [&isKnown] { isKnown = true; });
        if (!areAsked(before + 2))
            return false;
        for (qsizetype number = before; number < before + 2; ++number)
            answer(number, questions[number].value(1) == SchedulerNames::manageOwn ? ofOwn : ofAll);
        return waitUntil([&isKnown] { return isKnown; });
    }

    PrivateBus bus;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::unique_ptr<BusObject> object;
    std::unique_ptr<BusConnection> connection;
    std::vector<BusCall> calls;
    QList<QVariantList> questions;
    QStringList cancelled;
    QStringList verdicts;
    PolkitAuthority authority{*clock};
};
} // namespace

TEST_F(PolkitAuthorityTest, AsksAboutAConnectionAndLetsThePersonBeAsked)
{
    const auto caller = somebody();
    ask({caller->uniqueName(), alice}, SchedulerNames::wake);
    ASSERT_TRUE(areAsked(1));
    const QVariantList question = questions[0];
    EXPECT_EQ(question.value(0).toList(),
              QVariantList({"system-bus-name", QVariantMap{{"name", QString(caller->uniqueName())}}}));
    EXPECT_EQ(question.value(1), "com.dozely.scheduler.wake");
    EXPECT_EQ(question.value(3), 1U);
    EXPECT_FALSE(question.value(4).toString().isEmpty());
    EXPECT_EQ(verdicts, QStringList());
    answer(0, true);
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(verdicts, QStringList("yes"));
    EXPECT_EQ(cancelled, QStringList());
}

TEST_F(PolkitAuthorityTest, SaysWhoMayNotAndWhyNobodyMay)
{
    const auto caller = somebody();
    ask({caller->uniqueName(), alice});
    ASSERT_TRUE(areAsked(1));
    answer(0, false);
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(verdicts[0], "com.dozely.Error.NotAllowed: You are not allowed to do this.");
    ask({caller->uniqueName(), alice});
    ASSERT_TRUE(areAsked(2));
    calls[1].refuse({"It is out of order.", "com.dozely.Error.NotPossible"});
    ASSERT_TRUE(isTold(2));
    EXPECT_EQ(verdicts[1], "com.dozely.Error.NotAllowed: Nobody but root may do this here: polkit, which "
                           "decides about others, cannot be asked (It is out of order.).");
}

TEST_F(PolkitAuthorityTest, DoesNotAskAboutRoot)
{
    ask({":1.1", 0});
    EXPECT_EQ(verdicts, QStringList("yes")); // at once
    const auto standing = authority.standing({":1.1", 0});
    ASSERT_TRUE(standing);
    EXPECT_TRUE(standing->ofOwn && standing->ofAll);
    const auto caller = somebody();
    ask({caller->uniqueName(), alice});
    ASSERT_TRUE(areAsked(1));
    EXPECT_EQ(questions.size(), 1);
}

TEST_F(PolkitAuthorityTest, KeepsTenQuestionsOfAUserOpenAndFiftyOfAll)
{
    const auto caller = somebody();
    const BusCaller caller1{caller->uniqueName(), alice};
    const QString refusal = "com.dozely.Error.LimitReached: Too many questions are open that somebody has to "
                            "answer first.";
    for (int number = 0; number < 10; ++number)
        ask(caller1);
    EXPECT_EQ(verdicts, QStringList());
    ask(caller1);
    EXPECT_EQ(verdicts, QStringList(refusal));
    for (quint32 user = bob; user < bob + 4; ++user) {
        for (int number = 0; number < 10; ++number)
            ask({caller->uniqueName(), user});
    }
    EXPECT_EQ(verdicts.size(), 1);
    ask({caller->uniqueName(), bob + 4});
    EXPECT_EQ(verdicts, QStringList({refusal, refusal}));
    ASSERT_TRUE(areAsked(50));
    answer(0, true);
    ASSERT_TRUE(isTold(3));
    ask(caller1); // there is room for one again
    ASSERT_TRUE(areAsked(51));
    EXPECT_EQ(verdicts.size(), 3);
}

TEST_F(PolkitAuthorityTest, TakesTheQuestionsBackOfWhoHasLeft)
{
    auto leaving = somebody();
    const auto staying = somebody();
    ask({staying->uniqueName(), alice});
    ask({leaving->uniqueName(), alice});
    ASSERT_TRUE(areAsked(2));
    leaving.reset();
    ASSERT_TRUE(isTold(1));
    EXPECT_EQ(verdicts, QStringList("com.dozely.Error.NotAllowed: Nobody has answered whether you may do "
                                    "this."));
    ASSERT_TRUE(waitUntil([this] { return !cancelled.isEmpty(); }));
    EXPECT_EQ(cancelled, QStringList(questions[1].value(4).toString()));
    answer(1, true); // too late
    answer(0, true);
    ASSERT_TRUE(isTold(2));
    EXPECT_EQ(verdicts[1], "yes");
}

TEST_F(PolkitAuthorityTest, ForgetsWithItsBusWhatWasOpenAndWhatWasKnown)
{
    const auto caller = somebody();
    const BusCaller known{caller->uniqueName(), alice};
    for (int number = 0; number < 10; ++number)
        ask(known);
    ASSERT_TRUE(areAsked(10));
    ASSERT_TRUE(look({":1.9999", bob}, true, true));
    ASSERT_TRUE(authority.standing({":1.9999", bob}));
    authority.setBus(nullptr);
    connection.reset();
    EXPECT_FALSE(authority.standing({":1.9999", bob})) << "another bus gives the name to somebody else";
    ask(known);
    EXPECT_EQ(verdicts.size(), 1); // nobody can be asked
    bool isTold = false;
    authority.look(known, [&isTold] { isTold = true; });
    connection = BusConnection::open(BusConnection::Bus::System).value();
    authority.setBus(connection.get());
    ask(known);
    ASSERT_TRUE(areAsked(13));
    EXPECT_EQ(verdicts.size(), 1) << "the questions of before are open no more";
    EXPECT_FALSE(isTold);
}

TEST_F(PolkitAuthorityTest, BelievesForTwoSecondsWhatSomebodyMayDo)
{
    const auto caller = somebody();
    const BusCaller known{caller->uniqueName(), alice};
    EXPECT_FALSE(authority.standing(known));
    ASSERT_TRUE(look(known, true, false));
    EXPECT_EQ(questions[0].value(3), 0U) << "and no person is asked";
    EXPECT_EQ(questions[1].value(3), 0U);
    auto standing = authority.standing(known);
    ASSERT_TRUE(standing);
    EXPECT_TRUE(standing->ofOwn);
    EXPECT_FALSE(standing->ofAll);
    EXPECT_FALSE(authority.standing({":1.9999", alice})) << "it is of a connection, not of a user";
    clock->advance(1999ms);
    EXPECT_TRUE(authority.standing(known));
    clock->advance(1ms);
    EXPECT_FALSE(authority.standing(known));
    ASSERT_TRUE(look(known, false, true));
    standing = authority.standing(known);
    ASSERT_TRUE(standing);
    EXPECT_FALSE(standing->ofOwn);
    EXPECT_TRUE(standing->ofAll);
}

TEST_F(PolkitAuthorityTest, AsksOnceForAllWhoWaitForTheSame)
{
    const auto caller = somebody();
    const BusCaller known{caller->uniqueName(), alice};
    int told = 0;
    authority.look(known, [&told] { ++told; });
    authority.look(known, [&told] { ++told; });
    ASSERT_TRUE(areAsked(2));
    EXPECT_FALSE(authority.standing(known));
    answer(0, true);
    answer(1, true);
    ASSERT_TRUE(waitUntil([&told] { return told == 2; }));
    EXPECT_EQ(questions.size(), 2);
    EXPECT_TRUE(authority.standing(known));
}

TEST_F(PolkitAuthorityTest, KnowsFiveHundredAndTwelveAndThenBeginsAnew)
{
    const auto caller = [](int number) { return BusCaller{":9." + QByteArray::number(number), alice}; };
    for (int number = 0; number < 512; ++number)
        ASSERT_TRUE(look(caller(number), true, true));
    EXPECT_TRUE(authority.standing(caller(0)));
    ASSERT_TRUE(look(caller(512), true, true));
    EXPECT_FALSE(authority.standing(caller(0)));
    EXPECT_FALSE(authority.standing(caller(511)));
    EXPECT_TRUE(authority.standing(caller(512)));
}
