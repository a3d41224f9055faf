// SPDX-License-Identifier: MIT
#include "NotificationFixture.h"

#include <malloc.h>

namespace
{
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char lost[] = "The notification server has ended or been replaced: its alerts are gone";
constexpr char noButtons[] =
    "The notification server offers no buttons: alerts cannot be cancelled from there";

class ServerFaults : public NotificationFixture
{
protected:
    /// Bytes that this process has allocated.
    static size_t allocated()
    {
        const auto heap = ::mallinfo2();
        return heap.uordblks + heap.hblkhd;
    }
    /// What buffers of the bus and a few alerts of our own may add, however long a flood lasts.
    static constexpr size_t roomForBuffers = 64 * 1024;

    MockProcess server;
};
} // namespace

TEST_F(ServerFaults, WithoutActionsTheAlertIsShownAndTheLogSaysOnceThatItCannotBeCancelled)
{
    startServer(server, "body");
    const Alert alert = shown("Lights");
    show(alert);
    shown("Heating");
    EXPECT_THAT(calls("Notify").value(0).value(5).toList(), IsEmpty());
    EXPECT_THAT(logged(), ElementsAre(noButtons));
}

TEST_F(ServerFaults, CapabilitiesAreReadAnewFromEachServer)
{
    startServer(server, "body");
    const Alert alert = shown("Lights");
    endServer(server);
    startServer(server, "body actions");
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    show(alert);
    EXPECT_EQ(calls("Notify").value(0).value(5).toStringList(), (QStringList{"cancel", "Cancel"}));
    EXPECT_THAT(logged(), ElementsAre(noButtons, lost));
}

TEST_F(ServerFaults, AServerThatTakesTheNameOverIsAskedWhatItCanDo)
{
    startServer(server, "body");
    const QByteArray old = owner(service);
    const Alert alert = shown("Lights");
    MockProcess newServer;
    startServer(newServer, "body actions");
    ASSERT_TRUE(waitUntil([&] { return owner(service) != old; }));
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    show(alert);
    EXPECT_EQ(calls("Notify").value(0).value(5).toStringList(), (QStringList{"cancel", "Cancel"}));
    EXPECT_THAT(logged(), ElementsAre(noButtons, lost));
}

TEST_F(ServerFaults, WithoutAServerEachDeliveryIsOneLineAndTheNextTriesAgain)
{
    const Alert alert = makeAlert("Lights");
    center.deliverNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return logged().size() == 1; }));
    EXPECT_THAT(logged()[0], HasSubstr("An alert was not shown: no notification server: "));
    EXPECT_THAT(center.deliveredNotifications(), IsEmpty());
    center.deliverNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return logged().size() == 2; }));
    startServer(server);
    show(alert);
    EXPECT_THAT(logged(), SizeIs(2));
    EXPECT_EQ(calls("Notify").value(0).value(1), QVariant(0U));
}

TEST_F(ServerFaults, WithoutABusTheDeliveryIsOneLine)
{
    bus.stop();
    center.deliverNotification(makeAlert("Lights"));
    ASSERT_THAT(logged(), SizeIs(1));
    EXPECT_THAT(logged()[0], HasSubstr("An alert was not shown: no session bus: "));
    EXPECT_THAT(center.deliveredNotifications(), IsEmpty());
}

TEST_F(ServerFaults, ABusThatGoesAwayTakesTheAlertsWithIt)
{
    startServer(server);
    const Alert alert = shown("Lights");
    bus.stop();
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    EXPECT_THAT(logged(), ElementsAre(lost));
    center.removeDeliveredNotification(alert);
    center.deliverNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return logged().size() == 2; }));
    EXPECT_THAT(logged()[1], HasSubstr("An alert was not shown: "));
}

TEST_F(ServerFaults, ARefusedDeliveryIsOneLineAndTheNextTriesAgain)
{
    startServer(server);
    settle();
    teach("Notify", "susssasa{sv}i", "u",
          "raise dbus.exceptions.DBusException('too\\nmany\\x1b[1m', "
          "name='org.freedesktop.Notifications.Error.ExcessNotificationGeneration')");
    const Alert alert = makeAlert("Lights");
    center.deliverNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return !logged().empty(); }));
    EXPECT_THAT(logged(), ElementsAre("An alert was not shown: too many [1m"));
    EXPECT_EQ(plugIn->delivered.count("Lights"), 0);
    EXPECT_THAT(center.deliveredNotifications(), SizeIs(1)) << "the sentinel's alone";
    teach("Notify", "susssasa{sv}i", "u", "ret = 40");
    show(alert);
    EXPECT_THAT(logged(), SizeIs(1));
}

TEST_F(ServerFaults, ARefusedReplacementLeavesWhatShowsAndCanBeWithdrawn)
{
    startServer(server);
    const Alert alert = shown("Lights");
    teach("Notify", "susssasa{sv}i", "u", "raise dbus.exceptions.DBusException('no', name='com.example.No')");
    center.deliverNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return !logged().empty(); }));
    EXPECT_THAT(center.deliveredNotifications(), ElementsAre(alert));
    center.removeDeliveredNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return calls("CloseNotification").size() == 1; }));
    EXPECT_EQ(calls("CloseNotification").value(0).value(0).toInt(), 1);
}

TEST_F(ServerFaults, AnAnswerWithoutAnIdIsARefusal)
{
    startServer(server);
    teach("Notify", "susssasa{sv}i", "u", "ret = 0");
    center.deliverNotification(makeAlert("Lights"));
    ASSERT_TRUE(waitUntil([&] { return !logged().empty(); }));
    EXPECT_THAT(logged(), ElementsAre("An alert was not shown: the notification server gave it no id"));
    teach("Notify", "susssasa{sv}i", "s", "ret = 'one'");
    center.deliverNotification(makeAlert("Heating"));
    ASSERT_TRUE(waitUntil([&] { return logged().size() == 2; }));
    EXPECT_THAT(center.deliveredNotifications(), IsEmpty());
}

TEST_F(ServerFaults, ARefusedWithdrawalIsOneLine)
{
    startServer(server);
    const Alert alert = shown("Lights");
    teach("CloseNotification", "u", "", "raise dbus.exceptions.DBusException('no', name='com.example.No')");
    center.removeDeliveredNotification(alert);
    ASSERT_TRUE(waitUntil([&] { return !logged().empty(); }));
    EXPECT_THAT(logged(), ElementsAre("An alert was not withdrawn: no"));
    const Alert cancelled = shown("Heating");
    emitAction(2);
    ASSERT_TRUE(waitUntil([&] { return calls("CloseNotification").size() == 2; }));
    settle();
    EXPECT_THAT(plugIn->activated, ElementsAre("Heating"));
    EXPECT_THAT(logged(), SizeIs(1)) << "an alert whose button was pressed has mostly closed by itself";
}

TEST_F(ServerFaults, AServerThatDoesNotSayWhatItCanShowsTheAlertAllTheSame)
{
    startServer(server);
    teach("GetCapabilities", "", "as", "raise dbus.exceptions.DBusException('no', name='com.example.No')");
    shown("Lights");
    EXPECT_THAT(logged(), ElementsAre("The notification server does not say what it can do: no"));
    emitAction(1);
    ASSERT_TRUE(waitUntil([&] { return !plugIn->activated.isEmpty(); }));
}

TEST_F(ServerFaults, AServerThatEndsTakesItsAlertsWithItInOneLine)
{
    startServer(server);
    shown("Lights");
    shown("Heating");
    endServer(server);
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    EXPECT_THAT(logged(), ElementsAre(lost));
    EXPECT_THAT(plugIn->activated, IsEmpty());
}

TEST_F(ServerFaults, AServerThatEndsBeforeItAnswersCostsOneLine)
{
    startServer(server);
    settle();
    server.hold();
    const Alert alert = makeAlert("Lights");
    center.deliverNotification(alert);
    endServer(server);
    ASSERT_TRUE(waitUntil([&] { return !logged().empty(); }));
    startServer(server);
    show(alert);
    EXPECT_EQ(calls("Notify").value(0).value(1), QVariant(0U));
    EXPECT_THAT(logged(), ElementsAre(lost));
}

TEST_F(ServerFaults, AServerWithoutAlertsOfOursEndsUnnoticed)
{
    startServer(server);
    center.removeDeliveredNotification(shown("Lights"));
    endServer(server);
    startServer(server);
    settle();
    EXPECT_THAT(logged(), IsEmpty());
}

TEST_F(ServerFaults, ANewServerIsNotAskedUntilThereIsAnAlertForIt)
{
    startServer(server);
    shown("Lights");
    endServer(server);
    startServer(server);
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    QCoreApplication::processEvents(); // of the new one, too
    EXPECT_THAT(calls("GetCapabilities"), IsEmpty()) << "it would be again of one that dies of being asked";
    settle();
    EXPECT_THAT(calls("GetCapabilities"), SizeIs(1));
}

TEST_F(ServerFaults, IdsThatANewServerUsesAgainMeanItsOwnAlerts)
{
    startServer(server);
    const Alert old = shown("Lights");
    endServer(server);
    startServer(server);
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    shown("Heating"); // gets the id 1, as the other did from the old server
    emitAction(1);
    ASSERT_TRUE(waitUntil([&] { return !plugIn->activated.isEmpty(); }));
    EXPECT_THAT(plugIn->activated, ElementsAre("Heating"));
    show(old);
    EXPECT_EQ(calls("Notify").value(1).value(1), QVariant(0U)) << "the old id would replace somebody else's";
}

TEST_F(ServerFaults, AnIdOfTheOldServerInvokesNothingAtTheNewOne)
{
    startServer(server);
    shown("Lights");
    endServer(server);
    startServer(server);
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    emitAction(1);
    shown("Heating"); // everything up to here was heard
    EXPECT_THAT(plugIn->activated, IsEmpty());
}

TEST_F(ServerFaults, AServerThatWasReplacedIsNotHeardAnyMore)
{
    startServer(server);
    const QByteArray oldOwner = owner(service);
    const Alert alert = shown("Lights");
    // It gives up the name and stays on the bus.
    teach("GiveUp", "", "", "self.connection.release_name('org.freedesktop.Notifications')");
    call(service, service, "GiveUp", "", {});
    MockProcess newServer;
    startServer(newServer);
    ASSERT_NE(owner(service), oldOwner);
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    show(alert); // has the id 1 at the new server, too
    emitFrom(oldOwner, "ActionInvoked", "us", {1U, "cancel"});
    emitFrom(oldOwner, "NotificationClosed", "uu", {1U, 2U});
    settle();
    EXPECT_THAT(plugIn->activated, IsEmpty());
    EXPECT_THAT(center.deliveredNotifications(), SizeIs(2));
    EXPECT_THAT(logged(), ElementsAre(lost));
}

TEST_F(ServerFaults, ALateActionOfAnAlertThatIsGoneInvokesNothing)
{
    startServer(server);
    const Alert withdrawn = shown("Lights");
    const Alert dismissed = shown("Heating");
    center.removeDeliveredNotification(withdrawn);
    emitClosed(2);
    ASSERT_TRUE(waitUntil([&] { return center.deliveredNotifications().isEmpty(); }));
    emitAction(1);
    emitAction(2);
    settle();
    EXPECT_THAT(plugIn->activated, IsEmpty());
}

TEST_F(ServerFaults, TheIdOfAForeignAlertInvokesNothing)
{
    startServer(server);
    const Alert alert = shown("Lights");
    for (const quint32 id : {0U, 2U, 999U, 0xffffffffU}) {
        emitAction(id);
        emitClosed(id);
    }
    shown("Heating");
    EXPECT_THAT(plugIn->activated, IsEmpty());
    EXPECT_THAT(center.deliveredNotifications(), SizeIs(2));
}

TEST_F(ServerFaults, AStrangerIsNotHeardNeitherInPublicNorInPrivate)
{
    startServer(server);
    shown("Lights");
    MockProcess stranger;
    startStranger(stranger);
    emitFrom("com.example.Stranger", "ActionInvoked", "us", {1U, "cancel"});
    for (const QString &to : {QString::fromLatin1(ownName()), QString()}) {
        const QVariantMap details = to.isEmpty() ? QVariantMap() : QVariantMap{{"destination", to}};
        call("com.example.Stranger", "org.freedesktop.DBus.Mock", "EmitSignalDetailed", "sssava{sv}",
             {QString(service), "ActionInvoked", "us", QVariantList{1U, "cancel"}, details});
        call("com.example.Stranger", "org.freedesktop.DBus.Mock", "EmitSignalDetailed", "sssava{sv}",
             {QString(service), "NotificationClosed", "uu", QVariantList{1U, 2U}, details});
    }
    settle();
    EXPECT_THAT(plugIn->activated, IsEmpty());
    EXPECT_THAT(center.deliveredNotifications(), SizeIs(2));
    // The very same, in private, from the server itself is heard.
    call(service, "org.freedesktop.DBus.Mock", "EmitSignalDetailed", "sssava{sv}",
         {QString(service), "ActionInvoked", "us", QVariantList{1U, "cancel"},
          QVariantMap{{"destination", QString::fromLatin1(ownName())}}});
    ASSERT_TRUE(waitUntil([&] { return !plugIn->activated.isEmpty(); }));
}

TEST_F(ServerFaults, TenThousandSignalsLeaveNoTrace)
{
    startServer(server);
    shown("Lights");
    teach(
        "Flood", "", "",
        "from dbus.lowlevel import SignalMessage\n"
        "for i in range(5000):\n"
        "    for name in ('NotificationClosed', 'ActionInvoked'):\n"
        "        m = SignalMessage('/org/freedesktop/Notifications', 'org.freedesktop.Notifications', name)\n"
        "        if name == 'ActionInvoked':\n"
        "            m.append(1000 + i, 'cancel', signature='us')\n"
        "        else:\n"
        "            m.append(1000 + i, 2, signature='uu')\n"
        "        self.connection.send_message(m)\n");
    const auto flood = [&] {
        call(service, service, "Flood", "", {});
        const Alert sentinel = shown("Sentinel");
        center.removeDeliveredNotification(sentinel);
        settle();
    };
    flood(); // buffers grow to their size
    const size_t before = allocated();
    for (int i = 0; i < 3; ++i)
        flood();
    EXPECT_LT(allocated(), before + roomForBuffers);
    EXPECT_THAT(plugIn->activated, IsEmpty());
    EXPECT_THAT(logged(), IsEmpty());
    emitAction(1);
    ASSERT_TRUE(waitUntil([&] { return !plugIn->activated.isEmpty(); }));
    EXPECT_THAT(plugIn->activated, ElementsAre("Lights"));
}

TEST_F(ServerFaults, AnotherClientsFloodOfNotificationsLeavesNoTrace)
{
    startServer(server);
    shown("Lights");
    const auto flood = [&] {
        QProcess client;
        client.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        client.start(DOZELY_PYTHON, {FLOOD_CLIENT, "1000"});
        ASSERT_TRUE(waitUntil([&] { return client.state() == QProcess::NotRunning; }));
        ASSERT_EQ(client.exitStatus(), QProcess::NormalExit);
        ASSERT_EQ(client.exitCode(), 0);
        settle();
    };
    flood();
    const size_t before = allocated();
    flood();
    flood();
    EXPECT_LT(allocated(), before + roomForBuffers);
    EXPECT_THAT(plugIn->activated, IsEmpty());
    EXPECT_THAT(logged(), IsEmpty());
    emitAction(1);
    ASSERT_TRUE(waitUntil([&] { return !plugIn->activated.isEmpty(); }));
    EXPECT_THAT(plugIn->activated, ElementsAre("Lights"));
}
