// SPDX-License-Identifier: MIT
#include "DozelyKit/system/alerts/NSUserNotificationCenter.h"

#include "DozelyKit/system/alerts/UserNotificationPresenter.h"
#include "support/AlertDelegates.h"
#include "support/FakeUserNotificationPresenter.h"

#include <QCoreApplication>
#include <QEvent>

#include <gmock/gmock.h>

using namespace dozely;

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using Alert = std::shared_ptr<NSUserNotification>;

class NSUserNotificationCenterTest : public testing::Test
{
protected:
    NSUserNotificationCenterTest()
    {
        Port<UserNotificationPresenter>::current() = desktop;
        center.setDelegate(&delegate);
    }

    static Alert alertTitled(const QString &title)
    {
        auto alert = std::make_shared<NSUserNotification>();
        alert->setTitle(title);
        return alert;
    }

    /// Runs the callbacks that wait in the event loop.
    static void runEvents() { QCoreApplication::processEvents(); }

    std::shared_ptr<FakeUserNotificationPresenter> desktop =
        std::make_shared<FakeUserNotificationPresenter>();
    std::shared_ptr<FakeUserNotificationPresenter> window = std::make_shared<FakeUserNotificationPresenter>();
    FullDelegate delegate;
    NSUserNotificationCenter &center = NSUserNotificationCenter::defaultUserNotificationCenter();
    const Alert alert = alertTitled("Lights");
};

/// Raises when it is told of an activation.
class RaisingDelegate : public SilentDelegate
{
    Q_OBJECT
public:
    Q_INVOKABLE void
    userNotificationCenterDidActivateNotification(NSUserNotificationCenter *,
                                                  const std::shared_ptr<NSUserNotification> &)
    {
        throw std::runtime_error("no daemon");
    }
};
} // namespace

TEST_F(NSUserNotificationCenterTest, IsOneForTheProcess)
{
    EXPECT_EQ(&NSUserNotificationCenter::defaultUserNotificationCenter(), &center);
    EXPECT_EQ(center.delegate(), &delegate);
}

TEST_F(NSUserNotificationCenterTest, AsksTheDelegateBeforeEachDelivery)
{
    center.deliverNotification(alert);
    center.deliverNotification(alert);
    EXPECT_THAT(delegate.asked, ElementsAre("Lights", "Lights"));
    EXPECT_EQ(delegate.lastCenter, &center);
    EXPECT_THAT(desktop->shown, ElementsAre(alert, alert));
}

TEST_F(NSUserNotificationCenterTest, ShowsNothingWhenTheDelegateSaysNo)
{
    delegate.presents = false;
    center.deliverNotification(alert);
    runEvents();
    EXPECT_THAT(desktop->shown, IsEmpty());
    EXPECT_THAT(delegate.delivered, IsEmpty());
    EXPECT_THAT(center.deliveredNotifications(), IsEmpty());
}

TEST_F(NSUserNotificationCenterTest, LeavesWhatShowsAloneWhenTheDelegateRefusesItsReplacement)
{
    center.deliverNotification(alert);
    desktop->events.shown(alert);
    delegate.presents = false;
    center.deliverNotification(alert);
    EXPECT_THAT(desktop->shown, ElementsAre(alert));
    EXPECT_THAT(desktop->closed, IsEmpty());
    EXPECT_THAT(center.deliveredNotifications(), ElementsAre(alert));
}

TEST_F(NSUserNotificationCenterTest, ShowsEverythingWithoutADelegate)
{
    center.setDelegate(nullptr);
    center.deliverNotification(alert);
    EXPECT_THAT(desktop->shown, ElementsAre(alert));
}

TEST_F(NSUserNotificationCenterTest, ShowsEverythingWhenTheDelegateDoesNotImplementTheQuestion)
{
    ActivationDelegate other;
    center.setDelegate(&other);
    center.deliverNotification(alert);
    EXPECT_THAT(desktop->shown, ElementsAre(alert));
}

TEST_F(NSUserNotificationCenterTest, DoesNotTakeAnOperationWithOtherArgumentsForACallback)
{
    MistakenDelegate mistaken;
    center.setDelegate(&mistaken);
    center.deliverNotification(alert);
    ASSERT_THAT(desktop->shown, ElementsAre(alert));
    desktop->events.activated(alert);
    runEvents();
    EXPECT_THAT(mistaken.asked, IsEmpty());
    EXPECT_THAT(mistaken.activated, IsEmpty());
}

TEST_F(NSUserNotificationCenterTest, ForgetsADelegateThatIsDestroyed)
{
    {
        FullDelegate shortLived;
        shortLived.presents = false;
        center.setDelegate(&shortLived);
    }
    EXPECT_EQ(center.delegate(), nullptr);
    center.deliverNotification(alert);
    EXPECT_THAT(desktop->shown, ElementsAre(alert));
}

TEST_F(NSUserNotificationCenterTest, TellsOfADeliveryOnceItIsAccepted)
{
    center.deliverNotification(alert);
    runEvents();
    EXPECT_THAT(delegate.delivered, IsEmpty());
    EXPECT_THAT(center.deliveredNotifications(), IsEmpty());
    desktop->events.shown(alert);
    EXPECT_THAT(delegate.delivered, IsEmpty()) << "callbacks come from the event loop";
    runEvents();
    EXPECT_THAT(delegate.delivered, ElementsAre("Lights"));
    EXPECT_THAT(center.deliveredNotifications(), ElementsAre(alert));
}

TEST_F(NSUserNotificationCenterTest, TellsOfEachDeliveryOnceHoweverManyShowIt)
{
    alertWindow() = window;
    center.deliverNotification(alert);
    window->events.shown(alert);
    desktop->events.shown(alert);
    center.deliverNotification(alert);
    desktop->events.shown(alert);
    window->events.shown(alert);
    runEvents();
    EXPECT_THAT(delegate.delivered, ElementsAre("Lights", "Lights"));
}

TEST_F(NSUserNotificationCenterTest, TellsThatTheButtonWasPressed)
{
    center.deliverNotification(alert);
    desktop->events.shown(alert);
    desktop->events.activated(alert);
    EXPECT_THAT(delegate.activated, IsEmpty()) << "callbacks come from the event loop";
    runEvents();
    EXPECT_THAT(delegate.activated, ElementsAre("Lights"));
    EXPECT_EQ(alert->activationType(), NSUserNotification::ActivationType::ActionButtonClicked);
    EXPECT_THAT(center.deliveredNotifications(), IsEmpty());
}

TEST_F(NSUserNotificationCenterTest, BeginsADeliveryWithoutAnActivation)
{
    alert->setActivationType(NSUserNotification::ActivationType::ActionButtonClicked);
    center.deliverNotification(alert);
    EXPECT_EQ(alert->activationType(), NSUserNotification::ActivationType::None);
}

TEST_F(NSUserNotificationCenterTest, DoesNotTakeADismissalForThePressingOfTheButton)
{
    center.deliverNotification(alert);
    desktop->events.shown(alert);
    desktop->events.closed(alert);
    runEvents();
    EXPECT_THAT(delegate.activated, IsEmpty());
    EXPECT_THAT(center.deliveredNotifications(), IsEmpty());
}

TEST_F(NSUserNotificationCenterTest, ShowsTheAlertInTheWindowOfItsOwnAsWell)
{
    alertWindow() = window;
    center.deliverNotification(alert);
    EXPECT_THAT(desktop->shown, ElementsAre(alert));
    EXPECT_THAT(window->shown, ElementsAre(alert));
}

TEST_F(NSUserNotificationCenterTest, ClosesTheWindowWhenTheNotificationsButtonIsPressed)
{
    alertWindow() = window;
    center.deliverNotification(alert);
    desktop->events.activated(alert);
    runEvents();
    EXPECT_THAT(window->closed, ElementsAre(alert));
    EXPECT_THAT(delegate.activated, ElementsAre("Lights"));
}

TEST_F(NSUserNotificationCenterTest, ClosesTheNotificationWhenTheWindowsButtonIsPressed)
{
    alertWindow() = window;
    center.deliverNotification(alert);
    window->events.activated(alert);
    runEvents();
    EXPECT_THAT(desktop->closed, ElementsAre(alert));
    EXPECT_THAT(delegate.activated, ElementsAre("Lights"));
}

TEST_F(NSUserNotificationCenterTest, CountsThePressingOfBothButtonsAsOne)
{
    alertWindow() = window;
    center.deliverNotification(alert);
    window->events.activated(alert);
    desktop->events.activated(alert);
    runEvents();
    EXPECT_THAT(delegate.activated, ElementsAre("Lights"));
}

TEST_F(NSUserNotificationCenterTest, KeepsTheWindowWhenTheNotificationIsDismissed)
{
    alertWindow() = window;
    center.deliverNotification(alert);
    desktop->events.shown(alert);
    window->events.shown(alert);
    desktop->events.closed(alert);
    EXPECT_THAT(window->closed, IsEmpty());
    EXPECT_THAT(center.deliveredNotifications(), ElementsAre(alert));
    window->events.activated(alert);
    runEvents();
    EXPECT_THAT(delegate.activated, ElementsAre("Lights"));
}

TEST_F(NSUserNotificationCenterTest, RemovesAnAlertEverywhereAndTellsNobody)
{
    alertWindow() = window;
    center.deliverNotification(alert);
    desktop->events.shown(alert);
    runEvents();
    center.removeDeliveredNotification(alert);
    EXPECT_THAT(desktop->closed, ElementsAre(alert));
    EXPECT_THAT(window->closed, ElementsAre(alert));
    EXPECT_THAT(center.deliveredNotifications(), IsEmpty());
    desktop->events.activated(alert);
    runEvents();
    EXPECT_THAT(delegate.activated, IsEmpty()) << "it was not there any more";
}

TEST_F(NSUserNotificationCenterTest, RemovesAnAlertOutOfItsOwnList)
{
    center.deliverNotification(alert);
    desktop->events.shown(alert);
    for (const Alert &shown : center.deliveredNotifications())
        center.removeDeliveredNotification(shown);
    EXPECT_THAT(desktop->closed, ElementsAre(alert));
}

TEST_F(NSUserNotificationCenterTest, RemovesNoOtherAlert)
{
    const Alert other = alertTitled("Heating");
    center.deliverNotification(alert);
    center.deliverNotification(other);
    desktop->events.shown(alert);
    desktop->events.shown(other);
    center.removeDeliveredNotification(alert);
    center.removeDeliveredNotification(alertTitled("Heating"));
    EXPECT_THAT(desktop->closed, ElementsAre(alert));
    EXPECT_THAT(center.deliveredNotifications(), ElementsAre(other));
}

TEST_F(NSUserNotificationCenterTest, RemovesAllAlertsOfAProcessThatEnds)
{
    const Alert other = alertTitled("Heating");
    center.deliverNotification(alert);
    center.deliverNotification(other);
    desktop->events.shown(other);
    center.removeAllDeliveredNotifications();
    EXPECT_THAT(desktop->closed, ElementsAre(alert, other));
    EXPECT_THAT(center.deliveredNotifications(), IsEmpty());
}

TEST_F(NSUserNotificationCenterTest, IsHarmlessWithoutAnAlert)
{
    center.deliverNotification(nullptr);
    center.removeDeliveredNotification(nullptr);
    EXPECT_THAT(desktop->shown, IsEmpty());
    EXPECT_THAT(delegate.asked, IsEmpty());
}

TEST_F(NSUserNotificationCenterTest, LetsWhatACallbackRaisesGoToTheEventLoop)
{
    RaisingDelegate raising;
    center.setDelegate(&raising);
    center.deliverNotification(alert);
    EXPECT_NO_THROW(desktop->events.activated(alert)) << "the presenter must not see it";
    EXPECT_THROW(runEvents(), std::runtime_error);
    EXPECT_NO_THROW(runEvents());
}

#include "NSUserNotificationCenterTest.moc"
