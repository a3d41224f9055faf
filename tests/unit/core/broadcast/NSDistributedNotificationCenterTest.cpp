// SPDX-License-Identifier: MIT
#include "DozelyKit/core/broadcast/NSDistributedNotificationCenter.h"

#include "DozelyKit/core/broadcast/DistributedNotifications.h"
#include "support/FakeDistributedNotifications.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace dozely;

namespace
{
class Observer : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void heard(const NSNotification &notification)
    {
        names += notification.name();
        last = notification;
        sender = NSDistributedNotificationCenter::currentSender();
        if (action)
            action();
    }

    QStringList names;
    NSNotification last;
    std::optional<quint32> sender;
    std::function<void()> action;
};

class NSDistributedNotificationCenterTest : public testing::Test
{
protected:
    NSDistributedNotificationCenterTest() { Port<DistributedNotifications>::current() = bus; }

    void hear(const QString &name, const QVariant &object = "sender", bool immediately = true,
              std::optional<quint32> user = 1000)
    {
        ASSERT_TRUE(bus->hear) << "nobody listens";
        const auto handler = bus->hear;
        handler({NSNotification(name, object, {{"key", 1}}), immediately, user});
    }

    std::shared_ptr<FakeDistributedNotifications> bus = std::make_shared<FakeDistributedNotifications>();
    NSDistributedNotificationCenter &center = NSDistributedNotificationCenter::defaultCenter();
    Observer observer;
};
} // namespace

TEST_F(NSDistributedNotificationCenterTest, IsOneAProcess)
{
    EXPECT_EQ(&NSDistributedNotificationCenter::defaultCenter(), &center);
}

TEST_F(NSDistributedNotificationCenterTest, PostsWithOptionsToThisSessionOrToAll)
{
    using Reach = DistributedNotifications::Reach;
    const std::vector<std::pair<Reach, bool>> expected{{Reach::Session, false},
                                                       {Reach::Session, true},
                                                       {Reach::AllSessions, false},
                                                       {Reach::AllSessions, true}};
    for (quint32 options = 0; options < 4; ++options) {
        center.postNotificationName("Name", "sender", {{"key", options}}, options);
        ASSERT_EQ(bus->posts.size(), int(options) + 1);
        EXPECT_EQ(bus->posts.last().reach, expected[options].first) << options;
        EXPECT_EQ(bus->posts.last().deliverImmediately, expected[options].second) << options;
        EXPECT_EQ(bus->posts.last().notification.name(), "Name");
        EXPECT_EQ(bus->posts.last().notification.object(), QVariant("sender"));
        EXPECT_EQ(bus->posts.last().notification.userInfo(), QVariantMap({{"key", options}}));
    }
}

TEST_F(NSDistributedNotificationCenterTest, PostsWithoutOptionsToThisSession)
{
    center.postNotificationNameDeliverImmediately("Name", {}, {}, true);
    center.postNotificationNameDeliverImmediately("Name", "", {}, false);
    ASSERT_EQ(bus->posts.size(), 2);
    EXPECT_EQ(bus->posts[0].reach, DistributedNotifications::Reach::Session);
    EXPECT_TRUE(bus->posts[0].deliverImmediately);
    EXPECT_FALSE(bus->posts[0].notification.object().isValid()); // no sender is not an empty one
    EXPECT_FALSE(bus->posts[1].deliverImmediately);
    EXPECT_EQ(bus->posts[1].notification.object(), QVariant(""));
}

TEST_F(NSDistributedNotificationCenterTest, CallsObserversByNameAndSender)
{
    center.addObserver(&observer, "heard", "Name", "sender");
    hear("Name");
    hear("Name", "another");
    hear("Name", QVariant());
    hear("Another");
    EXPECT_EQ(observer.names, QStringList("Name"));
    EXPECT_EQ(observer.last.object(), QVariant("sender"));
    EXPECT_EQ(observer.last.userInfo(), QVariantMap({{"key", 1}}));
}

TEST_F(NSDistributedNotificationCenterTest, TakesANullNameForEveryName)
{
    center.addObserver(&observer, "heard", {}, "sender");
    EXPECT_TRUE(bus->everyName);
    hear("One");
    hear("Two");
    hear("Three", "another");
    EXPECT_EQ(observer.names, QStringList({"One", "Two"}));
}

TEST_F(NSDistributedNotificationCenterTest, TakesANullObjectForEverySender)
{
    center.addObserver(&observer, "heard", "Name");
    hear("Name", "one");
    hear("Name", "");
    hear("Name", QVariant());
    hear("Another", "one");
    EXPECT_EQ(observer.names, QStringList({"Name", "Name", "Name"}));
}

TEST_F(NSDistributedNotificationCenterTest, TellsAnEmptySenderFromNone)
{
    center.addObserver(&observer, "heard", "Name", "");
    hear("Name", "");
    hear("Name", QVariant());
    hear("Name", "x");
    EXPECT_EQ(observer.names.size(), 1);
}

TEST_F(NSDistributedNotificationCenterTest, ListensToTheNamesThatAreWantedAndNoOthers)
{
    EXPECT_FALSE(bus->hear);
    center.addObserver(&observer, "heard", "One");
    center.addObserver(&observer, "heard", "Two", "sender");
    center.addObserver(&observer, "heard", "Two", "another");
    EXPECT_EQ(bus->names, QStringList({"One", "Two"}));
    EXPECT_FALSE(bus->everyName);
    center.removeObserver(&observer, "Two", "another");
    EXPECT_EQ(bus->names, QStringList({"One", "Two"}));
    center.removeObserver(&observer, "One");
    EXPECT_EQ(bus->names, QStringList("Two"));
    center.removeObserver(&observer);
    EXPECT_FALSE(bus->hear);
}

TEST_F(NSDistributedNotificationCenterTest, CallsAnObserverNoMoreThatIsTakenBackWhileAnotherStays)
{
    Observer another;
    for (Observer *each : {&observer, &another}) {
        center.addObserver(each, "heard", "One");
        center.addObserver(each, "heard", "Two", "sender");
    }
    center.removeObserver(&observer, "Two", "another");
    hear("Two");
    EXPECT_EQ(observer.names, QStringList("Two"));
    center.removeObserver(&observer, "Two", "sender");
    hear("Two");
    EXPECT_EQ(observer.names, QStringList("Two"));
    center.removeObserver(&observer);
    hear("One");
    EXPECT_EQ(observer.names, QStringList("Two"));
    EXPECT_EQ(another.names, QStringList({"Two", "Two", "One"}));
    center.removeObserver(&another);
}

TEST_F(NSDistributedNotificationCenterTest, ForgetsAnObserverThatIsDestroyed)
{
    auto passing = std::make_unique<Observer>();
    center.addObserver(passing.get(), "heard", "One");
    passing.reset();
    hear("One");
    center.addObserver(&observer, "heard", "Two");
    EXPECT_EQ(bus->names, QStringList("Two"));
}

TEST_F(NSDistributedNotificationCenterTest, LetsAnObserverTakeItselfBackWhileItIsCalled)
{
    observer.action = [this] { center.removeObserver(&observer); };
    center.addObserver(&observer, "heard", "Name");
    hear("Name");
    EXPECT_EQ(observer.names.size(), 1);
    EXPECT_FALSE(bus->hear);
}

TEST_F(NSDistributedNotificationCenterTest, TellsTheSendersUserIdWhileAnObserverIsCalled)
{
    center.addObserver(&observer, "heard", "Name");
    EXPECT_FALSE(NSDistributedNotificationCenter::currentSender());
    hear("Name", "sender", true, 1001);
    EXPECT_EQ(observer.sender, 1001U);
    hear("Name", "sender", true, 0);
    EXPECT_EQ(observer.sender, 0U);
    hear("Name", "sender", true, std::nullopt);
    EXPECT_FALSE(observer.sender); // unknown is not root
    EXPECT_FALSE(NSDistributedNotificationCenter::currentSender());
}

TEST_F(NSDistributedNotificationCenterTest, TellsTheSenderOfTheInnerNotificationWithinIt)
{
    std::optional<quint32> afterwards;
    observer.action = [&] {
        observer.action = nullptr;
        hear("Name", "sender", true, 2);
        EXPECT_EQ(observer.sender, 2U);
        afterwards = NSDistributedNotificationCenter::currentSender();
    };
    center.addObserver(&observer, "heard", "Name");
    hear("Name", "sender", true, 1);
    EXPECT_EQ(observer.names.size(), 2);
    EXPECT_EQ(afterwards, 1U);
}

TEST_F(NSDistributedNotificationCenterTest, ForgetsTheSenderAlsoWhenAnObserverThrows)
{
    observer.action = [] { throw std::runtime_error("observer"); };
    center.addObserver(&observer, "heard", "Name");
    EXPECT_THROW(hear("Name"), std::runtime_error);
    EXPECT_FALSE(NSDistributedNotificationCenter::currentSender());
}

TEST_F(NSDistributedNotificationCenterTest, HoldsBackWhileSuspendedWhatIsNotToBeDeliveredImmediately)
{
    center.addObserver(&observer, "heard", {});
    center.setSuspended(true);
    EXPECT_TRUE(center.suspended());
    hear("Later", "sender", false, 7);
    hear("Now", "sender", true);
    EXPECT_EQ(observer.names, QStringList("Now"));
    center.setSuspended(false);
    EXPECT_EQ(observer.names, QStringList({"Now", "Later"}));
    EXPECT_EQ(observer.sender, 7U);
}

TEST_F(NSDistributedNotificationCenterTest, HoldsTheLatestOfEachNameAndSender)
{
    center.addObserver(&observer, "heard", {});
    center.setSuspended(true);
    hear("One", "a", false);
    hear("Two", "a", false);
    hear("One", "b", false);
    hear("One", "a", false);
    center.setSuspended(false);
    EXPECT_EQ(observer.names, QStringList({"Two", "One", "One"}));
    EXPECT_EQ(observer.last.object(), QVariant("a"));
}

TEST_F(NSDistributedNotificationCenterTest, HoldsNoMoreThanItsMeasureHoweverManyNamesAreInvented)
{
    center.addObserver(&observer, "heard", {});
    center.setSuspended(true);
    for (int i = 0; i < 1000; ++i)
        hear(QString("Name %1").arg(i), "a", false);
    center.setSuspended(false);
    EXPECT_EQ(observer.names.size(), 256);
}

TEST_F(NSDistributedNotificationCenterTest, AnswersItsOperationsByName)
{
    EXPECT_TRUE(center.respondsToSelector("postNotificationName"));
    EXPECT_TRUE(center.respondsToSelector("postNotificationNameDeliverImmediately"));
    EXPECT_FALSE(center.respondsToSelector("postNotificationNameOptions"));
}

#include "NSDistributedNotificationCenterTest.moc"
