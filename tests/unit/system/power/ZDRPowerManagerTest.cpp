// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/ZDRPowerManager_p.h"
#include "unit/system/power/PowerFixture.h"

#include <atomic>
#include <csignal>
#include <stdexcept>
#include <thread>
#include <unistd.h>

using testing::ElementsAre;
using testing::IsEmpty;

class ZDRPowerManagerTest : public PowerFixture
{
protected:
    ZDRPowerManagerTest() { manager = ZDRPowerManager::sharedInstance(); }
    std::shared_ptr<ZDRPowerManager> manager;
};

TEST_F(PowerFixture, TheFirstUseOfTheClassSubscribes)
{
    ZDRPowerManager::removeWakeDate();
    EXPECT_THAT(story, ElementsAre("listen"));
}

TEST_F(PowerFixture, ForcingSleepAsTheFirstUseSubscribesFirst)
{
    ZDRPowerManager::forceSleep();
    EXPECT_THAT(story, ElementsAre("listen", "canSleep", "sleep"));
}

TEST_F(PowerFixture, ItsFieldsListenAsLongAsTheyLive)
{
    auto fields = std::make_unique<ZDRPowerManagerFields>(power, [](quint32, void *) {});
    EXPECT_THAT(story, ElementsAre("listen"));
    EXPECT_EQ(fields->root_port, power);
    ASSERT_TRUE(fields->_events);
    EXPECT_TRUE(fields->_events->isEmpty());
    takeStory();
    fields.reset();
    EXPECT_THAT(story, ElementsAre("listen no longer"));
}

TEST_F(ZDRPowerManagerTest, NeverMakesASecondInstanceOrSubscription)
{
    EXPECT_EQ(ZDRPowerManager::init(), manager);
    ZDRPowerManager::initialize();
    EXPECT_EQ(ZDRPowerManager::sharedInstance(), manager);
    EXPECT_EQ(story.count("listen"), 1);
}

TEST_F(ZDRPowerManagerTest, NamesItsNotificationsAfterThemselves)
{
    EXPECT_EQ(ZDRPowerManagerSystemWillSleep, "ZDRPowerManagerSystemWillSleep");
    EXPECT_EQ(ZDRPowerManagerSystemDidWake, "ZDRPowerManagerSystemDidWake");
    EXPECT_EQ(ZDRPowerManagerSystemWillPowerOff, "ZDRPowerManagerSystemWillPowerOff");
}

TEST_F(ZDRPowerManagerTest, ConsentsToSleepAfterTheObserversHaveRun)
{
    takeStory();
    power->send(0xE0000280, 5);
    EXPECT_THAT(story, ElementsAre("ZDRPowerManagerSystemWillSleep", "allow 5"));
    EXPECT_FALSE(observer.last.object().isValid());
    EXPECT_TRUE(observer.last.userInfo().isEmpty());
}

TEST_F(ZDRPowerManagerTest, ConsentsToPowerOffAfterTheObserversHaveRun)
{
    takeStory();
    power->send(0xE0000250, 6);
    EXPECT_THAT(story, ElementsAre("ZDRPowerManagerSystemWillPowerOff", "allow 6"));
}

TEST_F(ZDRPowerManagerTest, PostsAKeyBeforeTheWakeAndConsentsAfterIt)
{
    takeStory();
    power->send(0xE0000300, 7);
    EXPECT_THAT(story, ElementsAre("open", "post", "ZDRPowerManagerSystemDidWake", "allow 7"));
    ASSERT_EQ(keys->records.size(), 1);
    EXPECT_EQ(keys->records.first().toHex().left(16), "00000800000aff00");
}

TEST_F(ZDRPowerManagerTest, AKeyThatCannotBePostedDoesNotLoseTheWake)
{
    takeStory();
    keys->refuses = true;
    power->send(0xE0000300, 7);
    EXPECT_THAT(story.mid(story.size() - 2), ElementsAre("ZDRPowerManagerSystemDidWake", "allow 7"));
    EXPECT_THAT(log(), ElementsAre("The key event after waking failed: KERN_SUCCESS"));
}

TEST_F(ZDRPowerManagerTest, OnlyConsentsToEveryOtherMessage)
{
    for (const quint32 type : {0xE0000270U, 0xE0000290U, 0xE0000320U, 0xE0000260U, 0U, 1U, 0xFFFFFFFFU}) {
        takeStory();
        power->send(type, 8);
        EXPECT_THAT(story, ElementsAre("allow 8")) << type;
    }
}

TEST_F(ZDRPowerManagerTest, TakesTheCallbacksMessageWhateverReferenceAndServiceAre)
{
    takeStory();
    systemPowerHasChangedCallback(nullptr, 0, 0xE0000280, nullptr);
    EXPECT_THAT(story, ElementsAre("ZDRPowerManagerSystemWillSleep", "allow 0"));
}

TEST_F(ZDRPowerManagerTest, TheTerminationSignalIsTakenForPowerOff)
{
    takeStory();
    quit_message(15);
    EXPECT_THAT(log(), ElementsAre("SIG 15 recu."));
    EXPECT_THAT(story, ElementsAre("ZDRPowerManagerSystemWillPowerOff", "allow 0"));
}

TEST_F(ZDRPowerManagerTest, AnyOtherSignalIsOnlyLogged)
{
    takeStory();
    quit_message(2);
    EXPECT_THAT(log(), ElementsAre("SIG 2 recu."));
    EXPECT_THAT(story, IsEmpty());
}

TEST_F(ZDRPowerManagerTest, ASignalToTheProcessReachesItFromTheEventLoop)
{
    takeStory();
    std::raise(SIGTERM);
    EXPECT_THAT(story, IsEmpty()) << "the handler itself does nothing";
    ASSERT_TRUE(waitUntil([this] { return !story.isEmpty(); }));
    EXPECT_THAT(story, ElementsAre("ZDRPowerManagerSystemWillPowerOff", "allow 0"));
    EXPECT_THAT(log(), ElementsAre("SIG 15 recu."));
}

TEST_F(ZDRPowerManagerTest, NoOtherSignalIsHandled)
{
    const auto handlerOf = [](int number) {
        struct sigaction action = {};
        EXPECT_EQ(::sigaction(number, nullptr, &action), 0);
        return action.sa_handler;
    };
    const auto ours = handlerOf(SIGTERM);
    ASSERT_NE(ours, SIG_DFL);
    ASSERT_NE(ours, SIG_IGN);
    for (int number = 1; number < 32; ++number) {
        if (number != SIGTERM) {
            EXPECT_NE(handlerOf(number), ours) << number;
        }
    }
}

TEST_F(ZDRPowerManagerTest, SurvivesAStormOfSignalsAndNoticesTheLastOne)
{
    takeStory();
    constexpr int signals = 10'000;
    std::atomic<bool> isOver = false;
    // To the process: whatever the main thread does just then is interrupted, in the log's locks and in
    // malloc.
    std::thread storm([&] {
        for (int i = 0; i < signals; ++i)
            ::kill(::getpid(), SIGTERM);
        isOver = true;
    });
    ASSERT_TRUE(waitUntil([&] { return isOver.load(); }));
    storm.join();
    QCoreApplication::processEvents(); // what the storm has left
    takeStory();
    std::raise(SIGTERM);
    ASSERT_TRUE(waitUntil([this] { return story.contains("ZDRPowerManagerSystemWillPowerOff"); }));
}

TEST_F(ZDRPowerManagerTest, ASignalDuringItsOwnHandlingIsNotLost)
{
    takeStory();
    int seen = 0;
    observer.action = [&] {
        if (++seen == 1)
            std::raise(SIGTERM);
    };
    std::raise(SIGTERM);
    ASSERT_TRUE(waitUntil([&] { return seen == 2; }));
}

TEST_F(ZDRPowerManagerTest, AnObserverThatThrowsDoesNotEndTheEventLoop)
{
    int seen = 0;
    observer.action = [&] {
        if (++seen == 1)
            throw std::runtime_error("no");
    };
    std::raise(SIGTERM);
    ASSERT_TRUE(waitUntil([&] { return seen == 1; }));
    std::raise(SIGTERM);
    ASSERT_TRUE(waitUntil([&] { return seen == 2; }));
}

TEST_F(ZDRPowerManagerTest, ForcesSleepWithoutAskingTwice)
{
    takeStory();
    ZDRPowerManager::forceSleep();
    EXPECT_THAT(story, ElementsAre("canSleep", "sleep"));
    EXPECT_THAT(log(), ElementsAre("Mise en veille forcee."));
}

TEST_F(ZDRPowerManagerTest, ForcesSleepThroughThePortThatItListensTo)
{
    takeStory();
    Story ofAnother;
    dozely::Port<dozely::SystemPower>::current() = std::make_shared<FakePower>(ofAnother);
    ZDRPowerManager::forceSleep();
    EXPECT_THAT(story, ElementsAre("canSleep", "sleep"));
    EXPECT_THAT(ofAnother, IsEmpty());
}

TEST_F(ZDRPowerManagerTest, SaysNothingMoreWhenNothingManagesPower)
{
    takeStory();
    power->isManaged = false;
    ZDRPowerManager::forceSleep();
    EXPECT_THAT(story, ElementsAre("canSleep"));
    EXPECT_THAT(log(), ElementsAre("Mise en veille forcee."));
}

TEST_F(ZDRPowerManagerTest, LogsThatSleepWasRefused)
{
    power->refusesSleep = true;
    ZDRPowerManager::forceSleep();
    EXPECT_THAT(log(), ElementsAre("Mise en veille forcee.", "Erreur lors de la mise en veille forcee"));
}
