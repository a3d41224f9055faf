// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSNotificationCenter.h"

#include "Listener.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

TEST(NSNotificationCenter, CallsTheObserverBeforePostingReturns)
{
    NSNotificationCenter center;
    Listener listener;
    center.addObserver(&listener, "heard", "Sleep");
    center.postNotificationName("Sleep", "sender", {{"key", 1}});
    EXPECT_EQ(listener.names, QStringList({"Sleep"}));
    EXPECT_EQ(listener.last.object(), QVariant("sender"));
    EXPECT_EQ(listener.last.userInfo().value("key"), QVariant(1));
}

TEST(NSNotificationCenter, SelectsByNameAndObject)
{
    NSNotificationCenter center;
    Listener exact;
    Listener anyObject;
    Listener anyName;
    Listener everything;
    center.addObserver(&exact, "heard", "Sleep", "me");
    center.addObserver(&anyObject, "heard", "Sleep");
    center.addObserver(&anyName, "heard", QString(), "me");
    center.addObserver(&everything, "heard", QString());
    center.postNotificationName("Sleep", "me");
    center.postNotificationName("Sleep", "you");
    center.postNotificationName("Wake", "me");
    center.postNotification(NSNotification("Wake"));
    EXPECT_EQ(exact.names, QStringList({"Sleep"}));
    EXPECT_EQ(anyObject.names, QStringList({"Sleep", "Sleep"}));
    EXPECT_EQ(anyName.names, QStringList({"Sleep", "Wake"}));
    EXPECT_EQ(everything.names, QStringList({"Sleep", "Sleep", "Wake", "Wake"}));
}

TEST(NSNotificationCenter, TellsObjectsApartByTheirAddress)
{
    NSNotificationCenter center;
    Listener listener;
    QObject sender;
    QObject other;
    center.addObserver(&listener, "heard", "Died", QVariant::fromValue(&sender));
    center.postNotificationName("Died", QVariant::fromValue(&other));
    EXPECT_TRUE(listener.names.isEmpty());
    center.postNotificationName("Died", QVariant::fromValue(&sender));
    EXPECT_EQ(listener.names.size(), 1);
}

TEST(NSNotificationCenter, CallsObserversInTheOrderOfTheirRegistration)
{
    NSNotificationCenter center;
    QStringList order;
    Listener first;
    Listener second;
    first.action = [&] { order += "first"; };
    second.action = [&] { order += "second"; };
    center.addObserver(&second, "heard", "Sleep");
    center.addObserver(&first, "heard", "Sleep");
    center.postNotificationName("Sleep");
    EXPECT_EQ(order, QStringList({"second", "first"}));
}

TEST(NSNotificationCenter, CallsAnObserverOnceForEachOfItsRegistrations)
{
    NSNotificationCenter center;
    Listener listener;
    center.addObserver(&listener, "heard", "Sleep");
    center.addObserver(&listener, "heard", "Sleep");
    center.postNotificationName("Sleep");
    EXPECT_EQ(listener.names.size(), 2);
}

TEST(NSNotificationCenter, TakesObserversBackByNameAndObject)
{
    NSNotificationCenter center;
    Listener listener;
    center.addObserver(&listener, "heard", "Sleep", "me");
    center.addObserver(&listener, "heard", "Sleep", "you");
    center.addObserver(&listener, "heard", "Wake");
    center.removeObserver(&listener, "Sleep", "me");
    center.postNotificationName("Sleep", "me");
    EXPECT_TRUE(listener.names.isEmpty());
    center.postNotificationName("Sleep", "you");
    EXPECT_EQ(listener.names.size(), 1);
    center.removeObserver(&listener, "Sleep");
    center.postNotificationName("Sleep", "you");
    center.postNotificationName("Wake");
    EXPECT_EQ(listener.names, QStringList({"Sleep", "Wake"}));
    center.removeObserver(&listener);
    center.postNotificationName("Wake");
    EXPECT_EQ(listener.names.size(), 2);
}

TEST(NSNotificationCenter, LeavesOtherObserversRegisteredWhenOneIsTakenBack)
{
    NSNotificationCenter center;
    Listener leaving;
    Listener staying;
    center.addObserver(&leaving, "heard", "Sleep");
    center.addObserver(&staying, "heard", "Sleep");
    center.removeObserver(&leaving);
    center.postNotificationName("Sleep");
    EXPECT_TRUE(leaving.names.isEmpty());
    EXPECT_EQ(staying.names.size(), 1);
}

TEST(NSNotificationCenter, HoldsItsObserversWeakly)
{
    NSNotificationCenter center;
    auto gone = std::make_unique<Listener>();
    Listener staying;
    center.addObserver(gone.get(), "heard", "Sleep");
    center.addObserver(&staying, "heard", "Sleep");
    gone.reset();
    center.postNotificationName("Sleep");
    EXPECT_EQ(staying.names.size(), 1);
}

TEST(NSNotificationCenter, DoesNotCallAnObserverThatAnEarlierOneTookBack)
{
    NSNotificationCenter center;
    Listener first;
    Listener second;
    center.addObserver(&first, "heard", "Sleep");
    center.addObserver(&second, "heard", "Sleep");
    first.action = [&] { center.removeObserver(&second); };
    center.postNotificationName("Sleep");
    EXPECT_EQ(first.names.size(), 1);
    EXPECT_TRUE(second.names.isEmpty());
}

TEST(NSNotificationCenter, DoesNotCallAnObserverThatAnEarlierOneDestroyed)
{
    NSNotificationCenter center;
    Listener first;
    auto second = std::make_unique<Listener>();
    Listener third;
    center.addObserver(&first, "heard", "Sleep");
    center.addObserver(second.get(), "heard", "Sleep");
    center.addObserver(&third, "heard", "Sleep");
    first.action = [&] { second.reset(); };
    center.postNotificationName("Sleep");
    EXPECT_EQ(third.names.size(), 1);
}

TEST(NSNotificationCenter, LetsAnObserverTakeItselfBackWhileItIsCalled)
{
    NSNotificationCenter center;
    Listener once;
    Listener other;
    center.addObserver(&once, "heard", "Sleep");
    center.addObserver(&other, "heard", "Sleep");
    once.action = [&] { center.removeObserver(&once); };
    center.postNotificationName("Sleep");
    center.postNotificationName("Sleep");
    EXPECT_EQ(once.names.size(), 1);
    EXPECT_EQ(other.names.size(), 2);
}

TEST(NSNotificationCenter, AnObserverAddedWhilePostingHearsOfTheNextPosting)
{
    NSNotificationCenter center;
    Listener first;
    Listener added;
    center.addObserver(&first, "heard", "Sleep");
    first.action = [&] { center.addObserver(&added, "heard", "Sleep"); };
    center.postNotificationName("Sleep");
    EXPECT_TRUE(added.names.isEmpty());
    first.action = {};
    center.postNotificationName("Sleep");
    EXPECT_EQ(added.names.size(), 1);
}

TEST(NSNotificationCenter, PostsWithinAPosting)
{
    NSNotificationCenter center;
    Listener listener;
    center.addObserver(&listener, "heard", QString());
    listener.action = [&] {
        if (listener.names.size() == 1)
            center.postNotificationName("Inner");
    };
    center.postNotificationName("Outer");
    EXPECT_EQ(listener.names, QStringList({"Outer", "Inner"}));
}

TEST(NSNotificationCenter, CallsObserversOnThePostingThread)
{
    NSNotificationCenter center;
    Listener listener;
    center.addObserver(&listener, "heard", "Sleep");
    const std::unique_ptr<QThread> thread(QThread::create([&] { center.postNotificationName("Sleep"); }));
    thread->start();
    thread->wait();
    EXPECT_EQ(listener.thread, thread.get());
}

TEST(NSNotificationCenter, MayBeUsedFromSeveralThreadsAtOnce)
{
    constexpr int rounds = 500;
    NSNotificationCenter center;
    Counter counter;
    center.addObserver(&counter, "heard", "Tick");
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&center] {
            Counter own;
            for (int round = 0; round < rounds; ++round) {
                center.addObserver(&own, "heard", "Other");
                center.postNotificationName("Tick");
                center.removeObserver(&own);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(counter.count, 4 * rounds);
}

TEST(NSNotificationCenter, PassesOverAnObserverWithoutTheSelectorAndSaysSoOnTheConsole)
{
    NSNotificationCenter center;
    Listener listener;
    center.addObserver(&listener, "noSuchSelector", "Sleep");
    center.addObserver(&listener, "heard", "Sleep");
    testing::internal::CaptureStderr();
    center.postNotificationName("Sleep");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("noSuchSelector"), std::string::npos);
    EXPECT_EQ(listener.names.size(), 1);
}

TEST(NSNotificationCenter, HasOneDefaultCenterForTheProcess)
{
    Listener listener;
    NSNotificationCenter::defaultCenter().addObserver(&listener, "heard", "Sleep");
    NSNotificationCenter::defaultCenter().postNotificationName("Sleep");
    EXPECT_EQ(&NSNotificationCenter::defaultCenter(), &NSNotificationCenter::defaultCenter());
    EXPECT_EQ(listener.names.size(), 1);
}

TEST(NSNotificationCenter, TellsANumberFromItsText)
{
    NSNotificationCenter center;
    Listener listener;
    center.addObserver(&listener, "heard", "Sleep", 5);
    center.postNotificationName("Sleep", "5");
    EXPECT_TRUE(listener.names.isEmpty());
    center.removeObserver(&listener, "Sleep", "5");
    center.postNotificationName("Sleep", qlonglong(5)); // as it is after a journey over the wire
    EXPECT_EQ(listener.names.size(), 1);
}
