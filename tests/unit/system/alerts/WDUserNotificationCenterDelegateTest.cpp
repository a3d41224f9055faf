// SPDX-License-Identifier: MIT
#include "DozelyKit/system/alerts/WDUserNotificationCenterDelegate.h"

#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/system/alerts/UserNotificationPresenter.h"
#include "support/AlertDelegates.h"
#include "support/FakeUserNotificationPresenter.h"
#include "support/ScratchRoot.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

using namespace dozely;

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using zandorSoftwareExtensions::isEqualToUserNotification;
using Alert = std::shared_ptr<NSUserNotification>;

Alert makeAlert(const QString &identifier, const QString &title)
{
    auto alert = std::make_shared<NSUserNotification>();
    alert->setIdentifier(identifier);
    alert->setTitle(title);
    return alert;
}

/// Enters many alerts when it is told of an activation, so that the table moves.
class EnteringDelegate : public SilentDelegate
{
    Q_OBJECT
public:
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *,
                                                  const std::shared_ptr<NSUserNotification> &)
    {
        for (int i = 0; i < 100; ++i)
            WDUserNotificationCenterDelegate::sharedInstance()->setDelegateForUserNotification(
                std::make_shared<SilentDelegate>(), makeAlert(QString::number(i), {}));
    }
};

class WDUserNotificationCenterDelegateTest : public testing::Test
{
protected:
    WDUserNotificationCenterDelegateTest() { Port<UserNotificationPresenter>::current() = desktop; }

    bool isPresented(const Alert &alert) const
    {
        return multiplexer->userNotificationCenterShouldPresentNotification(&center, alert);
    }
    void activate(const Alert &alert) const
    {
        multiplexer->userNotificationCenterDidActivateNotification(&center, alert);
    }
    void deliver(const Alert &alert) const
    {
        multiplexer->userNotificationCenterDidDeliverNotification(&center, alert);
    }

    const ScratchRoot root;
    std::shared_ptr<FakeUserNotificationPresenter> desktop =
        std::make_shared<FakeUserNotificationPresenter>();
    NSUserNotificationCenter &center = NSUserNotificationCenter::defaultUserNotificationCenter();
    const std::shared_ptr<WDUserNotificationCenterDelegate> multiplexer =
        WDUserNotificationCenterDelegate::sharedInstance();
    const Alert alert = makeAlert("<lights>|<6:55>", "Lights");
    const Alert twin = makeAlert("<lights>|<6:55>", "Another title");
    const Alert other = makeAlert("<heating>|<6:55>", "Heating");
};
} // namespace

TEST_F(WDUserNotificationCenterDelegateTest, IsTheDelegateOfTheDefaultCentre)
{
    EXPECT_EQ(center.delegate(), multiplexer.get());
}

TEST_F(WDUserNotificationCenterDelegateTest, IsMadeOnce)
{
    EXPECT_EQ(WDUserNotificationCenterDelegate::init(), multiplexer);
    EXPECT_EQ(WDUserNotificationCenterDelegate::init(), multiplexer);
    EXPECT_EQ(WDUserNotificationCenterDelegate::sharedInstance(), multiplexer);
}

TEST_F(WDUserNotificationCenterDelegateTest, KeepsItsTableWhenItIsAskedForAgain)
{
    multiplexer->setDelegateForUserNotification(std::make_shared<SilentDelegate>(), alert);
    const auto table = multiplexer->mapTable();
    WDUserNotificationCenterDelegate::init();
    EXPECT_EQ(multiplexer->mapTable(), table);
    EXPECT_EQ(table->size(), 1);
}

TEST_F(WDUserNotificationCenterDelegateTest, WritesToTheSharedLogWhatThePortsTell)
{
    NSProcessInfo::setProcessName("Dozely Agent");
    reportProblem("50% of an alert was not shown");
    ASSERT_EQ(root.logLines().size(), 1);
    EXPECT_TRUE(root.logLines().constFirst().endsWith(": 50% of an alert was not shown"));
}

TEST_F(WDUserNotificationCenterDelegateTest, PassesEachCallbackOnWithTheSameCentreAndAlert)
{
    const auto delegate = std::make_shared<FullDelegate>();
    multiplexer->setDelegateForUserNotification(delegate, alert);
    deliver(alert);
    EXPECT_EQ(std::exchange(delegate->lastCenter, nullptr), &center);
    activate(alert);
    EXPECT_EQ(std::exchange(delegate->lastCenter, nullptr), &center);
    isPresented(alert);
    EXPECT_EQ(delegate->lastCenter, &center);
    EXPECT_THAT(delegate->delivered, ElementsAre("Lights"));
    EXPECT_THAT(delegate->activated, ElementsAre("Lights"));
    EXPECT_THAT(delegate->asked, ElementsAre("Lights"));
}

TEST_F(WDUserNotificationCenterDelegateTest, PassesOnTheAlertThatItWasCalledWithNotTheKey)
{
    const auto delegate = std::make_shared<FullDelegate>();
    multiplexer->setDelegateForUserNotification(delegate, alert);
    activate(twin);
    EXPECT_THAT(delegate->activated, ElementsAre("Another title"));
}

TEST_F(WDUserNotificationCenterDelegateTest, AnswersWhatTheDelegateAnswers)
{
    const auto delegate = std::make_shared<FullDelegate>();
    multiplexer->setDelegateForUserNotification(delegate, alert);
    EXPECT_TRUE(isPresented(alert));
    delegate->presents = false;
    EXPECT_FALSE(isPresented(alert));
}

TEST_F(WDUserNotificationCenterDelegateTest, DoesNothingForAnAlertThatMatchesNoKey)
{
    const auto delegate = std::make_shared<FullDelegate>();
    delegate->presents = false;
    multiplexer->setDelegateForUserNotification(delegate, alert);
    deliver(other);
    activate(other);
    EXPECT_TRUE(isPresented(other));
    EXPECT_THAT(delegate->delivered + delegate->activated + delegate->asked, IsEmpty());
}

TEST_F(WDUserNotificationCenterDelegateTest, SaysYesForADelegateThatOnlyHearsActivations)
{
    const auto delegate = std::make_shared<ActivationDelegate>();
    multiplexer->setDelegateForUserNotification(delegate, alert);
    EXPECT_TRUE(isPresented(alert));
    deliver(alert);
    activate(alert);
    EXPECT_THAT(delegate->activated, ElementsAre("Lights"));
}

TEST_F(WDUserNotificationCenterDelegateTest, ConsultsOnlyTheFirstOfTwoKeysWithEqualIdentifiers)
{
    const auto first = std::make_shared<ActivationDelegate>();
    const auto second = std::make_shared<FullDelegate>();
    second->presents = false;
    multiplexer->setDelegateForUserNotification(first, alert);
    multiplexer->setDelegateForUserNotification(second, twin);
    deliver(twin);
    activate(twin);
    EXPECT_TRUE(isPresented(twin)) << "the first does not implement the question, the second is not asked";
    EXPECT_THAT(first->activated, ElementsAre("Another title"));
    EXPECT_THAT(second->delivered + second->activated + second->asked, IsEmpty());
}

TEST_F(WDUserNotificationCenterDelegateTest, StopsAtTheFirstMatchEvenWhenItHasNoDelegate)
{
    const auto second = std::make_shared<FullDelegate>();
    second->presents = false;
    multiplexer->setDelegateForUserNotification(nullptr, alert);
    multiplexer->setDelegateForUserNotification(second, twin);
    EXPECT_TRUE(isPresented(alert));
    EXPECT_THAT(second->asked, IsEmpty());
}

TEST_F(WDUserNotificationCenterDelegateTest, ReplacesTheDelegateOfTheSameAlertInItsPlace)
{
    const auto first = std::make_shared<FullDelegate>();
    const auto replacement = std::make_shared<FullDelegate>();
    const auto third = std::make_shared<FullDelegate>();
    multiplexer->setDelegateForUserNotification(first, alert);
    multiplexer->setDelegateForUserNotification(third, twin);
    multiplexer->setDelegateForUserNotification(replacement, alert);
    EXPECT_EQ(multiplexer->mapTable()->size(), 2);
    activate(twin);
    EXPECT_THAT(replacement->activated, ElementsAre("Another title"));
    EXPECT_THAT(first->activated + third->activated, IsEmpty());
}

TEST_F(WDUserNotificationCenterDelegateTest, HoldsAlertsAndDelegatesForGood)
{
    auto delegate = std::make_shared<FullDelegate>();
    auto shortLived = makeAlert("<short>|<6:55>", "Short");
    const std::weak_ptr<FullDelegate> watchedDelegate = delegate;
    const std::weak_ptr<NSUserNotification> watchedAlert = shortLived;
    multiplexer->setDelegateForUserNotification(delegate, shortLived);
    center.deliverNotification(shortLived);
    center.removeDeliveredNotification(shortLived);
    desktop->shown.clear();
    desktop->closed.clear();
    delegate.reset();
    shortLived.reset();
    EXPECT_FALSE(watchedDelegate.expired());
    EXPECT_FALSE(watchedAlert.expired());
}

TEST_F(WDUserNotificationCenterDelegateTest, WorksWithTheTableThatItIsGiven)
{
    const auto delegate = std::make_shared<FullDelegate>();
    delegate->presents = false;
    const auto table = std::make_shared<WDUserNotificationCenterDelegate::MapTable>();
    multiplexer->setMapTable(table);
    EXPECT_EQ(multiplexer->mapTable(), table);
    table->append({alert, delegate});
    EXPECT_FALSE(isPresented(alert));
    multiplexer->setMapTable(nullptr);
    multiplexer->setDelegateForUserNotification(delegate, alert);
    EXPECT_TRUE(isPresented(alert));
    EXPECT_EQ(multiplexer->mapTable(), nullptr);
}

TEST_F(WDUserNotificationCenterDelegateTest, LetsADelegateEnterAlertsFromWithinItsCallback)
{
    multiplexer->setDelegateForUserNotification(std::make_shared<EnteringDelegate>(), alert);
    activate(alert);
    EXPECT_EQ(multiplexer->mapTable()->size(), 101);
}

TEST_F(WDUserNotificationCenterDelegateTest, HearsTheDefaultCentre)
{
    const auto delegate = std::make_shared<FullDelegate>();
    const auto refusing = std::make_shared<FullDelegate>();
    refusing->presents = false;
    multiplexer->setDelegateForUserNotification(delegate, alert);
    multiplexer->setDelegateForUserNotification(refusing, other);
    center.deliverNotification(alert);
    center.deliverNotification(other);
    EXPECT_THAT(desktop->shown, ElementsAre(alert));
    desktop->events.shown(alert);
    desktop->events.activated(alert);
    QCoreApplication::processEvents();
    EXPECT_THAT(delegate->delivered, ElementsAre("Lights"));
    EXPECT_THAT(delegate->activated, ElementsAre("Lights"));
    EXPECT_THAT(refusing->asked, ElementsAre("Heating"));
    EXPECT_THAT(refusing->activated, IsEmpty());
}

TEST(IsEqualToUserNotification, ComparesIdentifiersAlone)
{
    EXPECT_TRUE(isEqualToUserNotification(*makeAlert("a", "Lights"), *makeAlert("a", "Heating")));
    EXPECT_FALSE(isEqualToUserNotification(*makeAlert("a", "Lights"), *makeAlert("A", "Lights")));
    EXPECT_FALSE(isEqualToUserNotification(*makeAlert("a", "Lights"), *makeAlert("b", "Lights")));
}

TEST(IsEqualToUserNotification, ComparesCodeForCode)
{
    // The same letter, composed and decomposed.
    EXPECT_FALSE(isEqualToUserNotification(*makeAlert(u"\u00e9"_qs, {}), *makeAlert(u"e\u0301"_qs, {})));
}

TEST(IsEqualToUserNotification, IsFalseForAReceiverWithoutIdentifier)
{
    EXPECT_FALSE(isEqualToUserNotification(*makeAlert({}, "Lights"), *makeAlert({}, "Lights")));
    EXPECT_FALSE(isEqualToUserNotification(*makeAlert({}, "Lights"), *makeAlert("", "Lights")));
    EXPECT_FALSE(isEqualToUserNotification(*makeAlert("", "Lights"), *makeAlert({}, "Lights")));
    EXPECT_TRUE(isEqualToUserNotification(*makeAlert("", "Lights"), *makeAlert("", "Heating")));
}

#include "WDUserNotificationCenterDelegateTest.moc"
