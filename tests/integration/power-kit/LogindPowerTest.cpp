// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "integration/power-kit/PowerRecorder.h"
#include "support/FakeClock.h"
#include "support/PrintTo.h"
#include "support/PrivateBus.h"
#include "support/WaitUntil.h"

#include <gmock/gmock.h>

#include <atomic>
#include <stdexcept>
#include <thread>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A login manager that does what the test says, and a clock that stands still.
class LogindPowerTest : public testing::Test
{
protected:
    LogindPowerTest()
    {
        Port<Clock>::current() = clock;
        setProblemReport([this](const QString &sentence) { problems += sentence; });
    }
    ~LogindPowerTest() override { setProblemReport({}); }
    void SetUp() override { ASSERT_TRUE(bus.isRunning()); }

    /// The usual start: the manager is there, and we listen.
    void start()
    {
        logind.appear();
        recorder.listen();
        logind.settle();
    }
    bool holdsOneDelayLock() const { return logind.held("delay").size() == 1 && power.holdsDelayLock(); }
    bool holdsNoDelayLock() const { return logind.held("delay").isEmpty() && !power.holdsDelayLock(); }
    void pass(std::chrono::seconds time)
    {
        clock->advance(time);
        logind.settle();
    }

    PrivateBus bus;
    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    QStringList problems;
    FakeLogind logind;
    QStringList prepared;
    LogindPower power{[this](quint32 type) { prepared += PowerRecorder::nameOf(type); }};
    PowerRecorder recorder{power};
};

TEST_F(LogindPowerTest, HoldsOneDelayLockWhileSomebodyListens)
{
    start();
    ASSERT_THAT(logind.held("delay"), SizeIs(1));
    const FakeLogind::Lock lock = logind.held("delay").first();
    EXPECT_EQ(lock.what, "sleep:shutdown");
    EXPECT_EQ(lock.who, "com.dozely");
    EXPECT_FALSE(lock.why.isEmpty());
    EXPECT_TRUE(recorder.isListening());
    recorder.stopListening();
    EXPECT_TRUE(holdsNoDelayLock());
}

TEST_F(LogindPowerTest, OneListensAtATime)
{
    start();
    EXPECT_FALSE(power.listen([](quint32, void *) { FAIL(); }));
    logind.prepareForSleep(true);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep"));
    EXPECT_EQ(logind.mostHeld, 1);
}

TEST_F(LogindPowerTest, TellsSleepAndWakeAndTakesTheLockAgain)
{
    start();
    recorder.before = [this] { EXPECT_TRUE(recorder.messages.last() == "wake" || holdsOneDelayLock()); };
    recorder.after = [this] { EXPECT_TRUE(holdsNoDelayLock()) << "consent releases it at once"; };
    logind.prepareForSleep(true);
    logind.settle();
    EXPECT_TRUE(holdsNoDelayLock());
    logind.prepareForSleep(false);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "wake"));
    EXPECT_TRUE(holdsOneDelayLock());
    EXPECT_EQ(logind.asked, 2);
}

TEST_F(LogindPowerTest, PreparesForSleepAfterTheObserversAndForWakingBeforeThem)
{
    start();
    recorder.before = [this] { prepared += "observers"; };
    logind.prepareForSleep(true);
    logind.settle();
    logind.prepareForSleep(false);
    logind.settle();
    logind.prepareForShutdown(true);
    logind.settle();
    EXPECT_THAT(prepared, ElementsAre("observers", "sleep", "wake", "observers", "observers", "off"));
}

TEST_F(LogindPowerTest, HoldsTheLockUntilConsentIsGiven)
{
    start();
    recorder.consents = false;
    logind.prepareForSleep(true);
    logind.settle();
    EXPECT_TRUE(holdsOneDelayLock());
    void *const change = recorder.lastChange;
    power.allow(nullptr);
    power.allow(static_cast<char *>(change) + 1);
    EXPECT_TRUE(holdsOneDelayLock()) << "neither is consent to this change";
    power.allow(change);
    EXPECT_TRUE(holdsNoDelayLock());
    power.allow(change);
    EXPECT_THAT(prepared, ElementsAre("sleep")) << "once";
}

TEST_F(LogindPowerTest, ConsentThatComesAfterTheWakeReleasesNothing)
{
    start();
    recorder.consents = false;
    logind.prepareForSleep(true);
    logind.settle();
    void *const change = recorder.lastChange;
    logind.prepareForSleep(false);
    logind.settle();
    power.allow(change);
    EXPECT_TRUE(holdsOneDelayLock());
}

TEST_F(LogindPowerTest, AnObserverThatThrowsDoesNotHoldTheMachineUp)
{
    start();
    recorder.before = [] { throw std::runtime_error("no"); };
    logind.prepareForSleep(true);
    logind.settle();
    EXPECT_TRUE(holdsNoDelayLock());
    EXPECT_THAT(problems, ElementsAre("Handling a power message failed: no"));
}

TEST_F(LogindPowerTest, TellsPowerOff)
{
    start();
    logind.prepareForShutdown(true);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("off"));
    EXPECT_TRUE(holdsNoDelayLock());
}

TEST_F(LogindPowerTest, TakesTheLockAgainWhenPowerOffDoesNotHappen)
{
    start();
    logind.prepareForShutdown(true);
    logind.settle();
    logind.prepareForShutdown(false);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("off", "stay"));
    EXPECT_TRUE(holdsOneDelayLock());
}

TEST_F(LogindPowerTest, DoubledSignalsAreOne)
{
    start();
    for (const bool begins : {true, false}) {
        logind.prepareForSleep(begins);
        logind.emitSignal("PrepareForSleep", begins);
        logind.emitSignal("PrepareForSleep", begins);
        logind.settle();
    }
    logind.prepareForShutdown(true);
    logind.emitSignal("PrepareForShutdown", true);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "wake", "off"));
    EXPECT_EQ(logind.mostHeld, 1);
}

TEST_F(LogindPowerTest, TellsAWakeWhoseSleepItNeverHeardOf)
{
    start();
    logind.prepareForSleep(true, false);
    logind.prepareForSleep(false);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("wake"));
    EXPECT_TRUE(holdsOneDelayLock());
    EXPECT_EQ(logind.asked, 1);
}

TEST_F(LogindPowerTest, FindsOutAWakeThatItWasNotToldOf)
{
    start();
    logind.prepareForSleep(true);
    logind.settle();
    pass(31s);
    EXPECT_THAT(recorder.messages, ElementsAre("sleep")) << "it is not over yet";
    logind.prepareForSleep(false, false);
    pass(31s);
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "wake"));
    EXPECT_TRUE(holdsOneDelayLock());
    pass(120s);
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "wake"));
}

TEST_F(LogindPowerTest, ANewSleepIsToldEvenWhenTheLastWakeWasNot)
{
    start();
    logind.prepareForSleep(true);
    logind.settle();
    logind.prepareForSleep(false, false);
    clock->jumpTo(clock->currentDate().addSecs(3600)); // asleep, so that no timer ran
    logind.prepareForSleep(true);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "sleep"));
    EXPECT_TRUE(holdsNoDelayLock());
}

TEST_F(LogindPowerTest, IgnoresSignalsThatSayNothing)
{
    start();
    logind.emitNonsense("PrepareForSleep");
    logind.emitNonsense("PrepareForShutdown");
    logind.settle();
    EXPECT_THAT(recorder.messages, IsEmpty());
}

TEST_F(LogindPowerTest, OnlyTheManagerItselfIsBelieved)
{
    start();
    FakeLogind impostor; // without the name
    impostor.prepareForSleep(true);
    impostor.settle();
    logind.settle();
    EXPECT_THAT(recorder.messages, IsEmpty());
    EXPECT_TRUE(holdsOneDelayLock());
}

TEST_F(LogindPowerTest, AsksAgainAfterTheOperationThatALockWasRefusedFor)
{
    logind.appear();
    logind.prepareForSleep(true); // before anybody listens
    recorder.listen();
    logind.settle();
    EXPECT_TRUE(holdsNoDelayLock());
    EXPECT_THAT(problems, IsEmpty()) << "nothing that a person must know";
    logind.prepareForSleep(false);
    logind.settle();
    EXPECT_TRUE(holdsOneDelayLock());
    EXPECT_THAT(recorder.messages, ElementsAre("wake"));
}

TEST_F(LogindPowerTest, AsksAgainOnItsOwnWhenNothingTellsTheEnd)
{
    logind.appear();
    logind.prepareForSleep(true, false);
    recorder.listen();
    logind.settle();
    logind.prepareForSleep(false, false);
    pass(59s);
    EXPECT_TRUE(holdsNoDelayLock());
    pass(1s);
    EXPECT_TRUE(holdsOneDelayLock());
}

TEST_F(LogindPowerTest, SaysOnceThatALockIsRefused)
{
    logind.refusal = "org.freedesktop.DBus.Error.AccessDenied";
    start();
    pass(60s);
    pass(60s);
    EXPECT_THAT(problems, SizeIs(1));
    EXPECT_EQ(logind.asked, 3);
    logind.refusal.clear();
    pass(60s);
    EXPECT_TRUE(holdsOneDelayLock());
}

TEST_F(LogindPowerTest, TellsSleepWithoutALockToo)
{
    logind.refusal = "org.freedesktop.DBus.Error.AccessDenied";
    start();
    logind.prepareForSleep(true);
    logind.settle();
    logind.prepareForSleep(false);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "wake"));
}

TEST_F(LogindPowerTest, ALockThatIsGrantedTooLateIsGivenBack)
{
    start();
    logind.prepareForSleep(true);
    logind.settle();
    logind.onAsk = [this] {
        // The machine goes to sleep again just as the lock is granted; the answer arrives after that.
        logind.onAsk = nullptr;
        logind.emitSignal("PrepareForSleep", true);
    };
    logind.prepareForSleep(false);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "wake", "sleep"));
    EXPECT_TRUE(holdsNoDelayLock());
}

TEST_F(LogindPowerTest, FindsAManagerThatComesLate)
{
    recorder.listen();
    logind.settle();
    EXPECT_TRUE(holdsNoDelayLock());
    logind.appear();
    logind.settle();
    EXPECT_TRUE(holdsOneDelayLock());
    EXPECT_THAT(problems, IsEmpty());
    logind.prepareForSleep(true);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep"));
}

TEST_F(LogindPowerTest, SaysOnceThatThereIsNoManagerAndThatItIsBack)
{
    recorder.listen();
    logind.settle();
    pass(9s);
    EXPECT_THAT(problems, IsEmpty());
    pass(100s);
    EXPECT_THAT(problems, SizeIs(1));
    logind.appear();
    logind.settle();
    EXPECT_THAT(problems, SizeIs(2));
    logind.vanish();
    logind.settle();
    pass(10s);
    EXPECT_THAT(problems, SizeIs(3));
}

TEST_F(LogindPowerTest, ARestartIsNobodysBusinessAndKeepsOneLock)
{
    start();
    for (int i = 0; i < 5; ++i) {
        logind.vanish();
        logind.settle();
        EXPECT_TRUE(holdsNoDelayLock()) << "that of a manager which is gone";
        logind.appear();
        logind.settle();
        EXPECT_TRUE(holdsOneDelayLock());
    }
    pass(60s);
    EXPECT_THAT(problems, IsEmpty());
    EXPECT_EQ(logind.mostHeld, 1);
    logind.prepareForSleep(true);
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep")) << "one subscription";
}

TEST_F(LogindPowerTest, AManagerThatRestartsDuringSleepStillBringsTheWake)
{
    start();
    logind.prepareForSleep(true);
    logind.settle();
    logind.vanish();
    logind.appear();
    logind.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep", "wake"));
    EXPECT_TRUE(holdsOneDelayLock());
}

TEST_F(LogindPowerTest, AnotherManagerMayTakeTheNameOver)
{
    start();
    FakeLogind next;
    logind.vanish();
    next.appear();
    logind.settle();
    next.settle();
    EXPECT_THAT(logind.held("delay"), IsEmpty());
    EXPECT_THAT(next.held("delay"), SizeIs(1));
    next.prepareForSleep(true);
    next.settle();
    EXPECT_THAT(recorder.messages, ElementsAre("sleep"));
}

TEST_F(LogindPowerTest, ALockOfAManagerThatIsGoneIsNotTakenForOneOfTheNext)
{
    logind.takesItsTime = true;
    start();
    FakeLogind next;
    logind.vanish();
    next.appear();
    next.settle();
    EXPECT_THAT(next.held("delay"), SizeIs(1));
    logind.answerDeferred();
    logind.settle();
    EXPECT_THAT(logind.held("delay"), IsEmpty());
    EXPECT_THAT(next.held("delay"), SizeIs(1));
    EXPECT_TRUE(power.holdsDelayLock());
}

TEST_F(LogindPowerTest, ActionsHoldABlockLockForAsLongAsTheyRun)
{
    start();
    auto first = power.inhibitSleep("A backup runs");
    const auto second = power.inhibitSleep("Another one runs");
    logind.settle();
    ASSERT_THAT(logind.held("block"), SizeIs(2));
    const FakeLogind::Lock lock = logind.held("block").first();
    EXPECT_EQ(lock.what, "sleep:idle:handle-lid-switch");
    EXPECT_EQ(lock.who, "com.dozely");
    EXPECT_EQ(lock.why, "A backup runs");
    first.reset();
    EXPECT_THAT(logind.held("block"), SizeIs(1));
    EXPECT_TRUE(holdsOneDelayLock());
}

TEST_F(LogindPowerTest, ActionsLocksNeedNoRegistration)
{
    logind.appear();
    const auto inhibition = power.inhibitSleep("A backup runs");
    logind.settle();
    EXPECT_THAT(logind.held("block"), SizeIs(1));
    EXPECT_THAT(logind.held("delay"), IsEmpty());
}

TEST_F(LogindPowerTest, AnActionThatEndsBeforeItsLockIsGrantedLeavesNone)
{
    start();
    power.inhibitSleep("A moment").reset();
    logind.settle();
    EXPECT_THAT(logind.held("block"), IsEmpty());
}

TEST_F(LogindPowerTest, ActionsLocksComeBackWithTheManager)
{
    start();
    const auto inhibition = power.inhibitSleep("A backup runs");
    logind.settle();
    logind.vanish();
    logind.settle();
    EXPECT_THAT(logind.held("block"), IsEmpty());
    logind.appear();
    logind.settle();
    EXPECT_THAT(logind.held("block"), SizeIs(1));
}

TEST_F(LogindPowerTest, AnActionsLockMayOutliveThePort)
{
    logind.appear();
    auto other = std::make_unique<LogindPower>();
    auto inhibition = other->inhibitSleep("A backup runs");
    logind.settle();
    other.reset();
    EXPECT_THAT(logind.held("block"), IsEmpty());
    inhibition.reset();
}

TEST_F(LogindPowerTest, OrdersSleepPowerOffAndRestartWithoutAskingAPerson)
{
    // They wait for an answer: this thread cannot give it.
    logind.appear();
    logind.settle();
    const auto whileServed = [this](auto order) {
        bool result = false;
        std::atomic<bool> isDone = false;
        std::thread caller([&] {
            result = order();
            isDone = true;
        });
        EXPECT_TRUE(waitUntil([&] { return isDone.load(); }));
        caller.join();
        return result;
    };
    EXPECT_TRUE(whileServed([this] { return power.canSleep(); }));
    EXPECT_TRUE(whileServed([this] { return power.sleep(); }));
    EXPECT_TRUE(whileServed([this] { return power.powerOff(); }));
    EXPECT_TRUE(whileServed([this] { return power.restart(); }));
    EXPECT_THAT(logind.orders, ElementsAre("Suspend false", "PowerOff false", "Reboot false"));
    logind.orderRefusal = "org.freedesktop.login1.SleepVerbNotSupported";
    EXPECT_FALSE(whileServed([this] { return power.sleep(); }));
    EXPECT_FALSE(whileServed([this] { return power.powerOff(); }));
    EXPECT_FALSE(whileServed([this] { return power.restart(); }));
}

TEST_F(LogindPowerTest, FindsNothingToOrderWithoutAManagerOrABus)
{
    EXPECT_FALSE(power.canSleep());
    bus.stop();
    EXPECT_FALSE(power.canSleep());
    EXPECT_FALSE(power.sleep());
}
