// SPDX-License-Identifier: MIT
#include "NotificationFixture.h"

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class AlertDelivery : public NotificationFixture
{
protected:
    MockProcess server;
};
} // namespace

TEST_F(AlertDelivery, OffersTheCancelActionAndNoOther)
{
    startServer(server);
    const Alert alert = shown("Lights");
    const auto calls = this->calls("Notify");
    ASSERT_THAT(calls, SizeIs(1));
    EXPECT_EQ(calls[0].value(0), QVariant("Dozely"));
    EXPECT_EQ(calls[0].value(1), QVariant(0U));
    EXPECT_EQ(calls[0].value(3), QVariant("Lights"));
    EXPECT_EQ(calls[0].value(4), QVariant("Will run soon."));
    EXPECT_EQ(calls[0].value(5).toStringList(), (QStringList{"cancel", "Cancel"}));
    EXPECT_EQ(calls[0].value(6).toMap().value("urgency"), QVariant::fromValue<uchar>(2));
    EXPECT_EQ(calls[0].value(7), QVariant(0)) << "it stays until it is withdrawn";
    EXPECT_THAT(center.deliveredNotifications(), ElementsAre(alert));
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(AlertDelivery, OffersNoActionForAnAlertWithoutAButton)
{
    startServer(server);
    const Alert alert = makeAlert("Lights");
    alert->setActionButtonTitle({});
    show(alert);
    EXPECT_THAT(calls("Notify").value(0).value(5).toList(), IsEmpty());
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(AlertDelivery, CallsNobodyWhenTheDelegateSaysNo)
{
    startServer(server);
    const Alert alert = makeAlert("Lights");
    plugIn->presents = false;
    center.deliverNotification(alert);
    plugIn->presents = true;
    settle();
    EXPECT_THAT(calls("Notify"), SizeIs(1)) << "the sentinel's alone";
    EXPECT_THAT(plugIn->asked, ElementsAre("Lights", "Sentinel"));
}

TEST_F(AlertDelivery, EscapesTheTextForAServerThatReadsMarkup)
{
    startServer(server, "body body-markup actions");
    show(makeAlert("Fish & chips", "<b>5 > 4</b> & \"so\""));
    EXPECT_EQ(calls("Notify").value(0).value(3), QVariant("Fish & chips")) << "titles have no markup";
    EXPECT_EQ(calls("Notify").value(0).value(4),
              QVariant("&lt;b&gt;5 &gt; 4&lt;/b&gt; &amp; &quot;so&quot;"));
}

TEST_F(AlertDelivery, LeavesTheTextAsItIsForAServerThatReadsNone)
{
    startServer(server);
    show(makeAlert("Fish & chips", "<b>5 > 4</b>"));
    EXPECT_EQ(calls("Notify").value(0).value(4), QVariant("<b>5 > 4</b>"));
}

TEST_F(AlertDelivery, ReplacesWhatIsShownOfTheSameObject)
{
    startServer(server);
    const Alert alert = shown("Lights");
    alert->setInformativeText("Will run sooner.");
    show(alert);
    const auto calls = this->calls("Notify");
    ASSERT_THAT(calls, SizeIs(2));
    EXPECT_EQ(calls[1].value(1), QVariant(1U));
    EXPECT_EQ(calls[1].value(4), QVariant("Will run sooner."));
    EXPECT_THAT(center.deliveredNotifications(), ElementsAre(alert));
    EXPECT_THAT(this->calls("CloseNotification"), IsEmpty());
}

TEST_F(AlertDelivery, ReplacesNothingForAnotherObjectOfTheSameIdentifier)
{
    startServer(server);
    shown("Lights");
    shown("Lights");
    EXPECT_EQ(calls("Notify").value(1).value(1), QVariant(0U));
    EXPECT_THAT(center.deliveredNotifications(), SizeIs(2));
}

TEST_F(AlertDelivery, ReplacesOnlyOnceItKnowsTheId)
{
    startServer(server);
    settle(); // gets the id 1
    const Alert alert = makeAlert("Lights");
    server.hold();
    center.deliverNotification(alert);
    alert->setInformativeText("Second.");
    center.deliverNotification(alert);
    alert->setInformativeText("Third.");
    center.deliverNotification(alert);
    alert->setInformativeText("Never delivered.");
    server.letGo();
    ASSERT_TRUE(waitUntil([&] { return plugIn->delivered.count("Lights") == 2; }));
    const auto calls = this->calls("Notify");
    ASSERT_THAT(calls, SizeIs(3));
    EXPECT_EQ(calls[1].value(4), QVariant("Will run soon."));
    EXPECT_EQ(calls[2].value(1), QVariant(2U));
    EXPECT_EQ(calls[2].value(4), QVariant("Third."));
}

TEST_F(AlertDelivery, ClosesTheOldOneWhereTheServerDoesNotReplace)
{
    startServer(server);
    const Alert alert = shown("Lights");
    teach("Notify", "susssasa{sv}i", "u", "ret = 77");
    show(alert);
    ASSERT_TRUE(waitUntil([&] { return calls("CloseNotification").size() == 1; }));
    EXPECT_EQ(calls("CloseNotification").value(0).value(0).toInt(), 1);
    emitAction(77);
    ASSERT_TRUE(waitUntil([&] { return !plugIn->activated.isEmpty(); }));
}

TEST_F(AlertDelivery, HearsThatCancelWasPressed)
{
    startServer(server);
    const Alert other = shown("Heating");
    const Alert alert = shown("Lights");
    emitAction(2);
    ASSERT_TRUE(waitUntil([&] { return !plugIn->activated.isEmpty(); }));
    EXPECT_THAT(plugIn->activated, ElementsAre("Lights"));
    EXPECT_EQ(alert->activationType(), NSUserNotification::ActivationType::ActionButtonClicked);
    EXPECT_THAT(center.deliveredNotifications(), ElementsAre(other));
    ASSERT_TRUE(waitUntil([&] { return calls("CloseNotification").size() == 1; }))
        << "some servers leave it open";
    EXPECT_EQ(calls("CloseNotification").value(0).value(0).toInt(), 2);
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(AlertDelivery, HearsNoActionThatItDidNotOffer)
{
    startServer(server);
    shown("Lights");
    emitAction(1, "default");
    emitAction(1, "");
    emitFrom(service, "ActionInvoked", "su", {"cancel", 1U});
    emitFrom(service, "ActionInvoked", "u", {1U});
    emitFrom(service, "ActivationToken", "us", {1U, "cancel"});
    settle();
    EXPECT_THAT(plugIn->activated, IsEmpty());
    EXPECT_THAT(center.deliveredNotifications(), SizeIs(2));
}

TEST_F(AlertDelivery, TakesADismissalForNoCancel)
{
    startServer(server);
    shown("Lights");
    emitClosed(1);
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    settle();
    EXPECT_THAT(plugIn->activated, IsEmpty());
    EXPECT_THAT(calls("CloseNotification"), IsEmpty());
}

TEST_F(AlertDelivery, ShowsADismissedAlertAfreshWhenItIsDeliveredAgain)
{
    startServer(server);
    const Alert alert = shown("Lights");
    emitClosed(1);
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    show(alert);
    EXPECT_EQ(calls("Notify").value(1).value(1), QVariant(0U));
    EXPECT_THAT(center.deliveredNotifications(), ElementsAre(alert));
}

TEST_F(AlertDelivery, WithdrawsAnAlert)
{
    startServer(server);
    const Alert alert = shown("Lights");
    center.removeDeliveredNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return calls("CloseNotification").size() == 1; }));
    EXPECT_EQ(calls("CloseNotification").value(0).value(0).toInt(), 1);
    settle();
    EXPECT_THAT(plugIn->activated, IsEmpty());
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(AlertDelivery, WithdrawsAnAlertWhoseIdIsStillToCome)
{
    startServer(server);
    settle();
    const Alert alert = makeAlert("Lights");
    server.hold();
    center.deliverNotification(alert);
    center.removeDeliveredNotification(alert);
    server.letGo();
    ASSERT_TRUE(waitUntil([&] { return calls("CloseNotification").size() == 1; }));
    EXPECT_EQ(calls("CloseNotification").value(0).value(0).toInt(), 2);
    emitAction(2);
    settle();
    EXPECT_THAT(plugIn->activated, IsEmpty());
    EXPECT_EQ(plugIn->delivered.count("Lights"), 0);
}

TEST_F(AlertDelivery, SendsNothingOfAnAlertThatIsWithdrawnBeforeTheServerIsFound)
{
    startServer(server);
    const Alert alert = makeAlert("Lights");
    center.deliverNotification(alert);
    center.removeDeliveredNotification(alert);
    settle();
    EXPECT_THAT(calls("Notify"), SizeIs(1)) << "the sentinel's alone";
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(AlertDelivery, WithdrawsWhatReplacesAnAlertThatWasCancelledMeanwhile)
{
    startServer(server);
    const Alert alert = shown("Lights");
    emitAction(1); // on its way to us
    center.deliverNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return !plugIn->activated.isEmpty(); }));
    ASSERT_TRUE(waitUntil([&] { return calls("CloseNotification").size() == 2; }));
    settle();
    EXPECT_THAT(plugIn->activated, ElementsAre("Lights"));
    EXPECT_EQ(plugIn->delivered.count("Lights"), 1);
    EXPECT_EQ(center.deliveredNotifications().size(), 1) << "the sentinel's alone";
}

TEST_F(AlertDelivery, WithdrawsAllAlertsOfAProcessThatEnds)
{
    startServer(server);
    shown("Lights");
    shown("Heating");
    center.removeAllDeliveredNotifications();
    ASSERT_TRUE(waitUntil([&] { return calls("CloseNotification").size() == 2; }));
}

TEST_F(AlertDelivery, LetsTheBusStartTheServer)
{
    // A session bus of the usual kind, which knows how to start services.
    const QTemporaryDir folder("/tmp/dzses-XXXXXX");
    const auto write = [&](const QString &name, const QString &text) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
    };
    write("notifications.service",
          QString("[D-BUS Service]\nName=%1\nExec=%2 -m dbusmock --session -l /dev/null "
                  "--template notification_daemon\n")
              .arg(service, DOZELY_PYTHON));
    write("bus.conf", QString("<busconfig><type>session</type><listen>unix:path=%1/bus</listen>"
                              "<servicedir>%1</servicedir><policy context='default'>"
                              "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/><allow "
                              "own='*'/></policy></busconfig>")
                          .arg(folder.path()));
    QProcess daemon;
    daemon.setStandardOutputFile(QProcess::nullDevice()); // the server inherits it
    daemon.start("dbus-daemon", {"--config-file=" + folder.filePath("bus.conf"), "--nofork", "--nopidfile"});
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder.filePath("bus")); }));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + folder.filePath("bus").toUtf8());
    ASSERT_TRUE(waitUntil([&] { return connect(); }));
    shown("Lights");
    EXPECT_THAT(calls("Notify"), SizeIs(1));
    EXPECT_THAT(logged(), ElementsAre("The notification server offers no buttons: alerts cannot be cancelled "
                                      "from there"));
    daemon.kill(); // the server ends with its bus
    daemon.waitForFinished();
}
