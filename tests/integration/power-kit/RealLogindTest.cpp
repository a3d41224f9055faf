// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/system/power/SystemPower.h"
#include "DozelyKit/system/power/ZDRPowerManager.h"
#include "integration/power-kit/PrivateLogind.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <gmock/gmock.h>

using namespace dozely;

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
constexpr char delayLock[] = "shutdown:sleep delay"; // in the order in which it tells them
constexpr char blockLock[] = "sleep:idle:handle-lid-switch block";
} // namespace

/// Writes down the power manager's notifications.
class PowerListener : public QObject
{
    Q_OBJECT
public:
    PowerListener() { NSNotificationCenter::defaultCenter().addObserver(this, "notice", {}); }
    Q_INVOKABLE void notice(const NSNotification &notification)
    {
        names += notification.name();
        if (action)
            action(notification.name());
    }
    QStringList names;
    std::function<void(const QString &)> action;
};

class RealLogindTest : public testing::Test
{
protected:
    RealLogindTest() { NSProcessInfo::setProcessName("dozelyd"); }

    /// Subscribes, and waits until the lock is there.
    static bool subscribe(PrivateLogind &logind)
    {
        ZDRPowerManager::sharedInstance();
        return waitUntil([&] { return logind.locks() == QStringList{delayLock}; });
    }

    ScratchRoot root;
};

TEST_F(RealLogindTest, TheMachineSleepsWhenTheObserversHaveRunAndTheLockComesBack)
{
    EXPECT_TRUE(PrivateLogind::holds([this](PrivateLogind &logind) {
        PowerListener listener;
        ASSERT_TRUE(subscribe(logind));
        listener.action = [&](const QString &name) {
            if (name != ZDRPowerManagerSystemWillSleep)
                return;
            EXPECT_THAT(logind.locks(), ElementsAre(delayLock));
            EXPECT_THAT(logind.started(), IsEmpty()) << "the machine waits for us";
        };
        for (int round = 1; round <= 3; ++round) {
            ZDRPowerManager::forceSleep();
            ASSERT_TRUE(waitUntil([&] { return listener.names.size() == 2 * round; }));
            EXPECT_THAT(logind.started(), testing::SizeIs(round));
            ASSERT_TRUE(waitUntil([&] { return logind.locks() == QStringList{delayLock}; }));
            listener.action = nullptr;
        }
        EXPECT_EQ(logind.started().first(), "suspend.target");
        EXPECT_THAT(listener.names.mid(0, 2),
                    ElementsAre(ZDRPowerManagerSystemWillSleep, ZDRPowerManagerSystemDidWake));
        EXPECT_FALSE(root.logContent().contains("Erreur"));
    }));
}

TEST_F(RealLogindTest, TheMachineGoesOffWhenTheObserversHaveRun)
{
    EXPECT_TRUE(PrivateLogind::holds([](PrivateLogind &logind) {
        PowerListener listener;
        ASSERT_TRUE(subscribe(logind));
        listener.action = [&](const QString &) { EXPECT_THAT(logind.started(), IsEmpty()); };
        EXPECT_TRUE(Port<SystemPower>::current()->powerOff());
        ASSERT_TRUE(waitUntil([&] { return !logind.started().isEmpty(); }));
        EXPECT_THAT(logind.started(), ElementsAre("poweroff.target"));
        EXPECT_THAT(listener.names, ElementsAre(ZDRPowerManagerSystemWillPowerOff));
    }));
}

TEST_F(RealLogindTest, ALockOfALogindThatCrashedIsReplacedByOneOfTheNext)
{
    EXPECT_TRUE(PrivateLogind::holds([](PrivateLogind &logind) {
        PowerListener listener;
        ASSERT_TRUE(subscribe(logind));
        const auto inhibition = Port<SystemPower>::current()->inhibitSleep("A backup runs");
        const QStringList both{delayLock, blockLock};
        ASSERT_TRUE(waitUntil([&] { return logind.locks() == both; }));
        logind.kill();
        ASSERT_TRUE(logind.start());
        ASSERT_TRUE(waitUntil([&] { return logind.locks() == both; })) << "one of each";
        ZDRPowerManager::forceSleep();
        ASSERT_TRUE(waitUntil([&] { return listener.names.size() == 2; }));
    }));
}

TEST_F(RealLogindTest, AnActionsLockDoesNotKeepRootFromForcingSleep)
{
    EXPECT_TRUE(PrivateLogind::holds([](PrivateLogind &logind) {
        PowerListener listener;
        ASSERT_TRUE(subscribe(logind));
        auto inhibition = Port<SystemPower>::current()->inhibitSleep("A backup runs");
        ASSERT_TRUE(waitUntil([&] { return logind.locks().contains(blockLock); }));
        ZDRPowerManager::forceSleep();
        ASSERT_TRUE(waitUntil([&] { return listener.names.size() == 2; }));
        EXPECT_THAT(logind.started(), ElementsAre("suspend.target"));
        inhibition.reset();
        ASSERT_TRUE(waitUntil([&] { return logind.locks() == QStringList{delayLock}; }));
    }));
}

TEST_F(RealLogindTest, NamesWhoForbidsAChangeButNotItself)
{
    EXPECT_TRUE(PrivateLogind::holds([](PrivateLogind &logind) {
        const auto power = Port<SystemPower>::current();
        const auto own = power->inhibitSleep("A backup runs");
        ASSERT_TRUE(waitUntil([&] { return logind.locks().contains(blockLock); }));
        EXPECT_THAT(power->blockers(SystemPower::Change::Sleep), IsEmpty());
        const auto bus = BusConnection::open(BusConnection::Bus::System);
        ASSERT_TRUE(bus);
        const auto take = [&](const QString &what, const QString &mode) {
            return (*bus)->call({"org.freedesktop.login1", "/org/freedesktop/login1",
                                 "org.freedesktop.login1.Manager", "Inhibit"},
                                "ssss", {what, QString("apt"), QString("Upgrades packages"), mode},
                                QDeadlineTimer(std::chrono::seconds(10)));
        };
        const auto delay = take("shutdown:sleep", "delay");
        ASSERT_TRUE(delay);
        EXPECT_THAT(power->blockers(SystemPower::Change::PowerOff), IsEmpty());
        const auto block = take("shutdown", "block");
        ASSERT_TRUE(block);
        EXPECT_THAT(power->blockers(SystemPower::Change::PowerOff), ElementsAre("apt: Upgrades packages"));
        EXPECT_THAT(power->blockers(SystemPower::Change::Sleep), IsEmpty());
        EXPECT_FALSE(power->isGoingOff());
    }));
}

TEST_F(RealLogindTest, WhoNoLongerListensHoldsNoLock)
{
    EXPECT_TRUE(PrivateLogind::holds([](PrivateLogind &logind) {
        auto listening = Port<SystemPower>::current()->listen([](quint32, void *) {});
        ASSERT_TRUE(waitUntil([&] { return logind.locks() == QStringList{delayLock}; }));
        listening.reset();
        ASSERT_TRUE(waitUntil([&] { return logind.locks().isEmpty(); }));
    }));
}

#include "RealLogindTest.moc"
