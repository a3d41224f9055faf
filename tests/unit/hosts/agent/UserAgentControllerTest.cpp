// SPDX-License-Identifier: MIT
#include "hosts/agent/UserAgentController.h"

#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/foundation/Port.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "support/FakeClock.h"
#include "support/FakeUserNotificationPresenter.h"
#include "support/PrintTo.h"
#include "support/TestPort.h"
#include "support/WaitUntil.h"
#include "unit/hosts/BundleFixture.h"

using namespace dozely;

using testing::HasSubstr;

namespace
{
void post(const NSNotification &notification)
{
    WDNotificationCenter::defaultCenter()->postNotification(notification);
}

/// What the kernel tells of who calls it, whoever receives the order is told.
class Poster : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE bool postNotification(const NSNotification &notification)
    {
        post(notification);
        return true;
    }
};

/// At noon.
class UserAgentControllerTest : public BundleFixture
{
protected:
    UserAgentControllerTest()
    {
        Port<Clock>::current() = clock;
        Port<UserNotificationPresenter>::current() = desktop;
        makeProbe();
        controller = std::make_unique<UserAgentController>();
        server->setRootObject(&poster);
    }

    NSNotification order(const char *name, const QVariantMap &more = {},
                         const QDateTime &date = noon().addSecs(60)) const
    {
        QVariantMap parameters = more;
        parameters.insert("Text", "hello");
        return NSNotification(name, "com.dozely.UserAgent",
                              {{"Schedule Date", date},
                               {"Schedule Bundle Path", schedule("a").fullBundlePath()},
                               {"Schedule Parameters", parameters},
                               {"Schedule Name", "Backup"}});
    }
    /// As the daemon does; returns once the order was obeyed, or refused.
    void postAsTheSystem(const NSNotification &order) const
    {
        const auto connection =
            NSConnection::connectionWithReceivePortSendPort(nullptr, TestPort::client(root.join("/socket")));
        EXPECT_EQ(connection->rootProxy()->invoke("postNotification", {QVariant::fromValue(order)}),
                  QVariant(true));
        letItObey();
    }
    /// From nobody knows whom.
    static void postAsAStranger(const NSNotification &order)
    {
        post(order);
        letItObey();
    }
    static void letItObey()
    {
        QObject after;
        bool isOver = false;
        QMetaObject::invokeMethod(
            &after, [&] { isOver = true; }, Qt::QueuedConnection);
        EXPECT_TRUE(waitUntil([&] { return isOver; }));
    }
    qsizetype countOf(const QString &text) const { return messages().filter(text).size(); }
    std::string log() const { return messages().join('\n').toStdString(); }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>(noon());
    std::shared_ptr<FakeUserNotificationPresenter> desktop =
        std::make_shared<FakeUserNotificationPresenter>();
    Poster poster;
    std::shared_ptr<NSConnection> server =
        NSConnection::initWithReceivePortSendPort(TestPort::server(root.join("/socket")), nullptr);
    std::unique_ptr<UserAgentController> controller;
};
} // namespace

TEST_F(UserAgentControllerTest, AnnouncesWhatIsToComeAndWithdrawsItOnce)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent"));
    EXPECT_THAT(log(), HasSubstr("Probe.plugin announces an action of "));
    EXPECT_EQ(countOf("Probe announces: hello"), 1);
    postAsTheSystem(order("UserAgentMustWithdrawEvent"));
    postAsTheSystem(order("UserAgentMustWithdrawEvent"));
    EXPECT_EQ(countOf("Probe withdraws: hello"), 1);
}

TEST_F(UserAgentControllerTest, AnnouncesTheSameOccurrenceAgainByTheSamePlugIn)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent"));
    postAsTheSystem(order("UserAgentMustAnticipateEvent"));
    EXPECT_EQ(countOf("Probe announces: hello"), 2);
    postAsTheSystem(order("UserAgentMustWithdrawEvent"));
    EXPECT_EQ(countOf("Probe withdraws: hello"), 1);
}

TEST_F(UserAgentControllerTest, AnnouncesNothingWhoseTimeHasCome)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent", {}, noon()));
    EXPECT_THAT(log(), HasSubstr("The action was not announced: its time has come"));
    EXPECT_EQ(countOf("Probe announces"), 0);
}

TEST_F(UserAgentControllerTest, SaysWhyNothingCanBeAnnounced)
{
    EXPECT_TRUE(QDir(schedule("a").fullBundlePath()).removeRecursively());
    postAsTheSystem(order("UserAgentMustAnticipateEvent"));
    EXPECT_THAT(log(), HasSubstr("The action was not announced: There is no bundle"));
}

TEST_F(UserAgentControllerTest, ForgetsAPlugInThatRaisesWhenItAnnounces)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent", {{"Announcing", "throws"}}));
    EXPECT_THAT(log(), HasSubstr("Probe.plugin raised: the probe was told to"));
    postAsTheSystem(order("UserAgentMustWithdrawEvent"));
    EXPECT_EQ(countOf("Probe withdraws"), 0);
}

TEST_F(UserAgentControllerTest, KeepsWhatIsAnnouncedAlreadyWhereItsPlugInRaisesTheNextTime)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent"));
    postAsTheSystem(order("UserAgentMustAnticipateEvent", {{"Announcing", "throws"}}));
    EXPECT_THAT(log(), HasSubstr("Probe.plugin raised: the probe was told to"));
    postAsTheSystem(order("UserAgentMustWithdrawEvent"));
    EXPECT_EQ(countOf("Probe withdraws"), 1);
}

TEST_F(UserAgentControllerTest, WithdrawsTheAlertOfWhatIsPerformed)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent"));
    postAsTheSystem(order("UserAgentMustActEvent", {}, noon().addSecs(61)));
    EXPECT_EQ(countOf("Probe withdraws"), 0) << "that is another one";
    postAsTheSystem(order("UserAgentMustActEvent"));
    EXPECT_EQ(countOf("Probe withdraws"), 1) << "the date is still to come";
}

TEST_F(UserAgentControllerTest, WithdrawsAllAlertsAtItsEnd)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent"));
    controller.reset();
    EXPECT_EQ(countOf("Probe withdraws"), 1);
}

TEST_F(UserAgentControllerTest, ObeysNobodyButTheSystem)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent"));
    for (const char *name : {"UserAgentMustActEvent", "UserAgentMustPrepareEvent",
                             "UserAgentMustAnticipateEvent", "UserAgentMustWithdrawEvent"}) {
        const qsizetype before = messages().size();
        postAsAStranger(order(name));
        ASSERT_EQ(messages().size(), before + 1) << name;
        EXPECT_THAT(messages().last().toStdString(),
                    HasSubstr("it comes from an unknown user, not from the daemon"))
            << name;
    }
    EXPECT_EQ(countOf("Probe announces"), 1);
    EXPECT_EQ(countOf("Probe withdraws"), 0);
}

TEST_F(UserAgentControllerTest, TellsOfFailuresThatTheSystemTellsOf)
{
    const NSNotification failure("UserAgentMustTellFailureEvent", "com.dozely.UserAgent",
                                 {{"Schedule Name", "Backup"}, {"Schedule Failure", "the disk is full"}});
    postAsAStranger(failure);
    EXPECT_TRUE(desktop->shown.isEmpty());
    EXPECT_THAT(log(), HasSubstr("UserAgentMustTellFailureEvent refused: it comes not from the daemon"));
    postAsTheSystem(failure);
    ASSERT_EQ(desktop->shown.size(), 1);
    EXPECT_EQ(desktop->shown[0]->title(), "Backup");
    EXPECT_TRUE(desktop->shown[0]->informativeText().endsWith("the disk is full"));
    EXPECT_THAT(log(), HasSubstr("The user is told of schedule \"Backup\": the disk is full"));
}

TEST_F(UserAgentControllerTest, ShowsATestAlertForItsOwnUserAndTheSystem)
{
    const NSNotification test("UserAgentMustTestAlertEvent", "com.dozely.App", {});
    postAsAStranger(test);
    EXPECT_TRUE(desktop->shown.isEmpty());
    EXPECT_THAT(log(), HasSubstr("UserAgentMustTestAlertEvent refused: it comes from another user"));
    postAsTheSystem(test);
    EXPECT_EQ(desktop->shown.size(), 1);
    EXPECT_EQ(countOf("An alert is shown as a test"), 1);
}

TEST_F(UserAgentControllerTest, KnowsWhatAnAlertOfItsAnnouncesAsLongAsThatIsToCome)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent", {{"Announcing", "shows"}, {"Alert", 1LL}}));
    ASSERT_EQ(desktop->shown.size(), 1);
    const auto alert = desktop->shown[0];
    EXPECT_TRUE(controller->mayBePutOff(alert));
    EXPECT_EQ(controller->detailsOf(alert).schedule, "Backup");
    clock->advance(std::chrono::minutes(1));
    EXPECT_FALSE(controller->mayBePutOff(alert));
    EXPECT_EQ(controller->detailsOf(alert).schedule, "");
}

TEST_F(UserAgentControllerTest, KeepsTheAlertOfWhatCannotBePutOff)
{
    postAsTheSystem(order("UserAgentMustAnticipateEvent", {{"Announcing", "shows"}, {"Alert", 1LL}}));
    ASSERT_EQ(desktop->shown.size(), 1);
    EXPECT_FALSE(controller->putOff(desktop->shown[0], Postponement::Hour)) << "there is no daemon";
    EXPECT_EQ(countOf("The action of Probe.plugin was not put off: the daemon did not take the order"), 1);
    EXPECT_EQ(countOf("Probe withdraws"), 0);
    EXPECT_TRUE(controller->mayBePutOff(desktop->shown[0]));
}

TEST_F(UserAgentControllerTest, PutsNothingOffThatItDidNotAnnounce)
{
    const auto alert = std::make_shared<NSUserNotification>();
    EXPECT_FALSE(controller->mayBePutOff(alert));
    EXPECT_FALSE(controller->putOff(alert, Postponement::Hour));
    EXPECT_EQ(controller->detailsOf(alert).schedule, "");
}

#include "UserAgentControllerTest.moc"
