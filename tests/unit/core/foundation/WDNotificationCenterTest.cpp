// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/WDNotificationCenter.h"

#include "RecordingObserver.h"

#include <gtest/gtest.h>

namespace
{
const QString actEvent = "DaemonMustActEvent";
const QString daemonSender = "com.dozely.Daemon";
} // namespace

TEST(WDNotificationCenter, DeliversTheNotificationItselfBeforePostingReturns)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", actEvent, daemonSender);
    center->postNotification(NSNotification(actEvent, daemonSender, {{"Schedule Identifier", 7}}));
    EXPECT_EQ(observer->calls, QStringList({"first DaemonMustActEvent"}));
    EXPECT_EQ(observer->last.object(), QVariant(daemonSender));
    EXPECT_EQ(observer->last.userInfo().value("Schedule Identifier"), QVariant(7));
}

TEST(WDNotificationCenter, ReachesOnlyObserversOfExactlyThatNameAndAnEqualObject)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", actEvent, daemonSender);
    center->postNotification(NSNotification(actEvent, "com.dozely.UserAgent"));
    center->postNotification(NSNotification("DaemonMustRemoveEvent", daemonSender));
    center->postNotification(NSNotification("daemonmustactevent", daemonSender));
    EXPECT_TRUE(observer->calls.isEmpty());
    center->postNotification(NSNotification(actEvent, QString("com.dozely.") + "Daemon"));
    EXPECT_EQ(observer->calls.size(), 1);
}

TEST(WDNotificationCenter, IgnoresANotificationWithoutObjectEvenWhenItsNameIsObserved)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", actEvent, daemonSender);
    center->postNotification(NSNotification(actEvent));
    EXPECT_TRUE(observer->calls.isEmpty());
}

TEST(WDNotificationCenter, IgnoresANotificationWithoutName)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", actEvent, daemonSender);
    center->addObserver(observer, "first", "", daemonSender);
    center->postNotification(NSNotification(QString(), daemonSender));
    EXPECT_TRUE(observer->calls.isEmpty());
}

TEST(WDNotificationCenter, HasNoWildcards)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", QString(), daemonSender);
    center->addObserver(observer, "first", actEvent, QVariant());
    center->addObserver(nullptr, "first", actEvent, daemonSender);
    center->postNotification(NSNotification(actEvent, daemonSender));
    center->postNotification(NSNotification(actEvent));
    EXPECT_TRUE(observer->calls.isEmpty());
}

TEST(WDNotificationCenter, KeepsOnlyTheSecondSelectorOfAnObserverRegisteredTwiceAndCallsItOnce)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", actEvent, daemonSender);
    center->addObserver(observer, "second", actEvent, daemonSender);
    center->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_EQ(observer->calls, QStringList({"second DaemonMustActEvent"}));
}

TEST(WDNotificationCenter, KeepsASelectorOfItsOwnForEachPair)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", actEvent, daemonSender);
    center->addObserver(observer, "second", actEvent, "com.dozely.UserAgent");
    center->addObserver(observer, "second", "DaemonMustRemoveEvent", daemonSender);
    center->postNotification(NSNotification(actEvent, daemonSender));
    center->postNotification(NSNotification(actEvent, "com.dozely.UserAgent"));
    center->postNotification(NSNotification("DaemonMustRemoveEvent", daemonSender));
    EXPECT_EQ(observer->calls, QStringList({"first DaemonMustActEvent", "second DaemonMustActEvent",
                                            "second DaemonMustRemoveEvent"}));
}

TEST(WDNotificationCenter, CallsBothObserversOfAPairInTheOrderOfTheirRegistration)
{
    const auto center = WDNotificationCenter::init();
    QStringList order;
    for (const QString name : {"one", "two", "three"})
        center->addObserver(std::make_shared<RecordingObserver>(name, &order), "first", actEvent,
                            daemonSender);
    center->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_EQ(order, QStringList({"one", "two", "three"}));
}

TEST(WDNotificationCenter, KeepsItsObserversAlive)
{
    const auto center = WDNotificationCenter::init();
    auto observer = std::make_shared<RecordingObserver>();
    const std::weak_ptr<RecordingObserver> watch = observer;
    center->addObserver(observer, "first", actEvent, daemonSender);
    observer.reset();
    ASSERT_FALSE(watch.expired());
    center->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_EQ(watch.lock()->calls.size(), 1);
}

TEST(WDNotificationCenter, IsMadeByDefaultCenterWhenThereIsNone)
{
    const auto center = WDNotificationCenter::defaultCenter();
    ASSERT_TRUE(center);
    EXPECT_EQ(WDNotificationCenter::defaultCenter(), center);
}

TEST(WDNotificationCenter, ASecondOneBecomesTheDefaultAndTheFirstIsNoLongerReachedThroughIt)
{
    const auto first = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    first->addObserver(observer, "first", actEvent, daemonSender);
    const auto second = WDNotificationCenter::init();
    EXPECT_NE(second, first);
    EXPECT_EQ(WDNotificationCenter::defaultCenter(), second);
    WDNotificationCenter::defaultCenter()->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_TRUE(observer->calls.isEmpty());
    first->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_EQ(observer->calls.size(), 1);
}

TEST(WDNotificationCenter, SnapshotsTheObserversSoThatOnesAddedMeanwhileHearOfTheNextPosting)
{
    const auto center = WDNotificationCenter::init();
    const auto added = std::make_shared<RecordingObserver>();
    const auto adding = std::make_shared<RecordingObserver>();
    adding->action = [&] {
        for (int i = 0; i < 100; ++i) // enough for every container to move
            center->addObserver(std::make_shared<RecordingObserver>(), "first", actEvent, QString::number(i));
        center->addObserver(added, "first", actEvent, daemonSender);
    };
    center->addObserver(adding, "first", actEvent, daemonSender);
    center->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_TRUE(added->calls.isEmpty());
    center->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_EQ(added->calls.size(), 1);
}

TEST(WDNotificationCenter, FetchesEachSelectorOnlyWhenItsObserversTurnComes)
{
    const auto center = WDNotificationCenter::init();
    const auto replacing = std::make_shared<RecordingObserver>();
    const auto replaced = std::make_shared<RecordingObserver>();
    center->addObserver(replacing, "first", actEvent, daemonSender);
    center->addObserver(replaced, "first", actEvent, daemonSender);
    replacing->action = [&] { center->addObserver(replaced, "second", actEvent, daemonSender); };
    center->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_EQ(replaced->calls, QStringList({"second DaemonMustActEvent"}));
}

TEST(WDNotificationCenter, FinishesAPostingDuringWhichItIsReplacedAndReleased)
{
    auto center = WDNotificationCenter::init();
    const auto replacing = std::make_shared<RecordingObserver>();
    const auto next = std::make_shared<RecordingObserver>();
    center->addObserver(replacing, "first", actEvent, daemonSender);
    center->addObserver(next, "first", actEvent, daemonSender);
    replacing->action = [] { WDNotificationCenter::init(); };
    WDNotificationCenter *const bare = center.get();
    center.reset();
    bare->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_EQ(next->calls.size(), 1);
}

TEST(WDNotificationCenter, ThePlatformsOwnPostingDoesNotReachObserversRegisteredHere)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", actEvent, daemonSender);
    center->postNotificationName(actEvent, daemonSender);
    NSNotificationCenter::defaultCenter().postNotificationName(actEvent, daemonSender);
    EXPECT_TRUE(observer->calls.isEmpty());
}

TEST(WDNotificationCenter, DoesNotUseThePlatformsRegistry)
{
    const auto center = WDNotificationCenter::init();
    RecordingObserver observer;
    center->NSNotificationCenter::addObserver(&observer, "first", actEvent);
    static_cast<NSNotificationCenter &>(*center).postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_TRUE(observer.calls.isEmpty());
    center->postNotificationName(actEvent, daemonSender);
    EXPECT_EQ(observer.calls.size(), 1);
}

TEST(WDNotificationCenter, CallsObserversOnThePostingThreadWhereverTheyLive)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", actEvent, daemonSender);
    const std::unique_ptr<QThread> thread(
        QThread::create([&] { center->postNotification(NSNotification(actEvent, daemonSender)); }));
    thread->start();
    thread->wait();
    EXPECT_EQ(observer->thread, thread.get());
}

TEST(WDNotificationCenter, PassesOverAnObserverWithoutTheSelectorAndSaysSoOnTheConsole)
{
    const auto center = WDNotificationCenter::init();
    const auto next = std::make_shared<RecordingObserver>();
    center->addObserver(std::make_shared<RecordingObserver>(), "third", actEvent, daemonSender);
    center->addObserver(next, "first", actEvent, daemonSender);
    testing::internal::CaptureStderr();
    center->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("third"), std::string::npos);
    EXPECT_EQ(next->calls.size(), 1);
}

TEST(WDNotificationCenter, ReportsNothingWhenNobodyObserves)
{
    testing::internal::CaptureStderr();
    WDNotificationCenter::init()->postNotification(NSNotification(actEvent, daemonSender));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(WDNotificationCenter, TellsANumberFromItsText)
{
    const auto center = WDNotificationCenter::init();
    const auto observer = std::make_shared<RecordingObserver>();
    center->addObserver(observer, "first", actEvent, 5);
    center->postNotification(NSNotification(actEvent, "5"));
    EXPECT_TRUE(observer->calls.isEmpty());
    center->postNotification(NSNotification(actEvent, qlonglong(5)));
    EXPECT_EQ(observer->calls.size(), 1);
}
