// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/DistributedNotificationExtensions.h"

#include "DozelyKit/core/broadcast/DistributedNotifications.h"
#include "support/FakeDistributedNotifications.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

using namespace zandorSoftwaresExtensions;

namespace
{
/// A centre that writes down which operation was called, with or without the one that has options.
class NotingCenter : public NSDistributedNotificationCenter
{
public:
    explicit NotingCenter(bool hasOptions) : m_hasOptions(hasOptions) {}

    bool respondsToSelector(const QByteArray &selector) const override
    {
        return (m_hasOptions || selector != "postNotificationName") &&
               NSDistributedNotificationCenter::respondsToSelector(selector);
    }
    void postNotificationName(const QString &name, const QString &object, const QVariantMap &userInfo,
                              quint32 options) override
    {
        note("options", name, object, userInfo);
        calls += QString::number(options);
    }
    void postNotificationNameDeliverImmediately(const QString &name, const QString &object,
                                                const QVariantMap &userInfo, bool deliverImmediately) override
    {
        note("deliverImmediately", name, object, userInfo);
        calls += deliverImmediately ? "YES" : "NO";
    }

    QStringList calls;
    QVariantMap lastUserInfo;

private:
    void note(const QString &operation, const QString &name, const QString &object,
              const QVariantMap &userInfo)
    {
        calls += {operation, name, object.isNull() ? "(nil)" : object};
        lastUserInfo = userInfo;
    }
    bool m_hasOptions;
};
} // namespace

TEST(DistributedNotificationExtensions, PostWithOptions3WhereACentreHasOptions)
{
    NotingCenter center(true);
    widePostNotificationName(center, "Name", "com.example", {{"key", 1}});
    EXPECT_EQ(center.calls, QStringList({"options", "Name", "com.example", "3"}));
    EXPECT_EQ(center.lastUserInfo, QVariantMap({{"key", 1}}));
}

TEST(DistributedNotificationExtensions, PostForImmediateDeliveryWhereACentreHasNoOptions)
{
    NotingCenter center(false);
    widePostNotificationName(center, "Name", "com.example", {{"key", 1}});
    EXPECT_EQ(center.calls, QStringList({"deliverImmediately", "Name", "com.example", "YES"}));
    EXPECT_EQ(center.lastUserInfo, QVariantMap({{"key", 1}}));
}

TEST(DistributedNotificationExtensions, PostTheNameObjectAndUserInformationOfANotification)
{
    for (const bool hasOptions : {true, false}) {
        NotingCenter center(hasOptions);
        widePostNotification(center, NSNotification("Name", "com.example", {{"key", 1}}));
        EXPECT_EQ(center.calls.mid(1, 2), QStringList({"Name", "com.example"}));
        EXPECT_EQ(center.lastUserInfo, QVariantMap({{"key", 1}}));
    }
}

TEST(DistributedNotificationExtensions, PostNoObjectWhereANotificationHasNone)
{
    NotingCenter center(true);
    widePostNotification(center, NSNotification("Name"));
    EXPECT_EQ(center.calls, QStringList({"options", "Name", "(nil)", "3"}));
}

TEST(DistributedNotificationExtensions, ReachAllSessionsAtOnceThroughTheDefaultCentre)
{
    const auto bus = std::make_shared<FakeDistributedNotifications>();
    Port<DistributedNotifications>::current() = bus;
    widePostNotificationName(NSDistributedNotificationCenter::defaultCenter(), "Name", "com.example", {});
    ASSERT_EQ(bus->posts.size(), 1);
    EXPECT_EQ(bus->posts[0].reach, DistributedNotifications::Reach::AllSessions);
    EXPECT_TRUE(bus->posts[0].deliverImmediately);
}
