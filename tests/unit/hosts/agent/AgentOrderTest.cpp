// SPDX-License-Identifier: MIT
#include "hosts/agent/AgentOrder.h"

#include "hosts/common/orders/OrderReceiver.h"
#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

using namespace dozely;

class AgentOrderTest : public HostFixture
{
protected:
    static Result<AgentOrder> read(const QVariantMap &userInfo, OrderPermissions::UserId peer = ::geteuid())
    {
        return AgentOrder::in({"UserAgentMustActEvent", userInfo, peer});
    }
    /// Why the order is refused; empty when it is not.
    static std::string refusal(const QString &key, const QVariant &value)
    {
        QVariantMap userInfo = whole();
        userInfo.insert(key, value);
        const auto order = read(userInfo);
        return order ? std::string() : order.error().text.toStdString();
    }
    static QVariantMap whole()
    {
        return {{"Schedule Bundle Path", "/PlugIns/Probe.plugin"},
                {"Schedule Date", noon()},
                {"Schedule Parameters", QVariantMap{{"Alert", 1}}}};
    }
};

TEST_F(AgentOrderTest, SaysWhatTheDaemonSent)
{
    const auto order = read(whole());
    ASSERT_TRUE(order);
    EXPECT_EQ(order->bundlePath, "/PlugIns/Probe.plugin");
    EXPECT_EQ(order->date, noon());
    EXPECT_EQ(order->parameters, (QVariantMap{{"Alert", 1}}));
}

TEST_F(AgentOrderTest, MayNameTheSchedule)
{
    EXPECT_EQ(read(whole())->schedule, "");
    QVariantMap userInfo = whole();
    userInfo.insert("Schedule Name", "Backup");
    EXPECT_EQ(read(userInfo)->schedule, "Backup");
}

TEST_F(AgentOrderTest, IsTakenFromTheSystemAlone)
{
    EXPECT_TRUE(read(whole(), 0u));
    EXPECT_EQ(read(whole(), 12345u).error().text, "it comes from user 12345, not from the daemon");
    EXPECT_EQ(read(whole(), std::nullopt).error().text, "it comes from an unknown user, not from the daemon");
}

TEST_F(AgentOrderTest, NeedsNoParameters)
{
    QVariantMap userInfo = whole();
    userInfo.remove("Schedule Parameters");
    const auto order = read(userInfo);
    ASSERT_TRUE(order);
    EXPECT_TRUE(order->parameters.isEmpty());
}

TEST_F(AgentOrderTest, IsRefusedWhenItNamesNoDateThatThereIs)
{
    EXPECT_EQ(refusal("Schedule Date", "2026-03-14"), "it names no date");
    EXPECT_EQ(refusal("Schedule Date", QDateTime()), "it names no date");
}

TEST_F(AgentOrderTest, IsRefusedWithoutTheTextOfAPath)
{
    EXPECT_EQ(refusal("Schedule Bundle Path", QVariant()), "it names no bundle");
    EXPECT_EQ(refusal("Schedule Bundle Path", 5), "it names no bundle");
}

TEST_F(AgentOrderTest, IsNotPerformedWithoutTheParametersThatWereMeant)
{
    EXPECT_EQ(refusal("Schedule Parameters", "Alert"), "its parameters are no dictionary");
    EXPECT_EQ(refusal("Schedule Parameters", QVariantList{1}), "its parameters are no dictionary");
}
