// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "DozelyKit/system/power/KeyEventDriver.h"
#include "DozelyKit/system/power/PowerEventScheduler.h"
#include "hosts/daemon/DaemonController.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "support/FakeClock.h"
#include "support/FakeConsoleUser.h"
#include "support/PrintTo.h"
#include "support/TestPort.h"
#include "unit/hosts/daemon/PerformingFixture.h"

#include <unistd.h>

using namespace dozely;

using namespace std::chrono_literals;

/// Posts what it is asked to, as the centre of a host does for the processes that call it.
class OrderTaker : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE bool postNotification(const NSNotification &order)
    {
        WDNotificationCenter::defaultCenter()->postNotification(order);
        return true;
    }
};

/// A daemon with an alert to announce to the user at the console, who has no agent: each attempt is a line.
class AgentOrdersTest : public PerformingFixture
{
protected:
    AgentOrdersTest()
    {
        Port<PowerEventScheduler>::current() = std::make_shared<ScheduledEvents>();
        Port<KeyEventDriver>::current() = std::make_shared<NoKeys>();
        makeProbe();
        const QVariantMap a =
            changed(entry("a", noon().addSecs(3600)), "Parameters",
                    QVariantMap{{"Acts In User Agent", 0LL}, {"Alert", 1LL}, {"Delay before alert", 3600LL}});
        writeStore({a});
        console->user = ConsoleUser::User{"alice", ::geteuid()};
        daemon = std::make_unique<DaemonController>(clock, std::make_shared<PinnedConsoleUser>(console));
        waitForAnswers(daemon->plugIns(), *Schedule::fromEntry(a));
        clock.advance(0ms);

        server = NSConnection::initWithReceivePortSendPort(TestPort::server(root.join("/orders")), nullptr);
        server->setRootObject(&taker);
    }

    qsizetype attempts() const { return messages().filter("was not announced").size(); }

    /// The order of a process of whoever runs this test.
    void order(const QString &name)
    {
        const auto connection =
            NSConnection::connectionWithReceivePortSendPort(nullptr, TestPort::client(root.join("/orders")));
        const NSNotification notification(name, "com.dozely.UserAgent", {});
        ASSERT_EQ(connection->rootProxy()->invoke("postNotification", {QVariant::fromValue(notification)}),
                  QVariant(true));
        obey();
    }

    /// Lets the daemon do what it was ordered and what that makes due.
    void obey()
    {
        QCoreApplication::processEvents();
        clock.advance(0ms);
    }

    FakeClock clock{noon()};
    std::shared_ptr<FakeConsoleUser> console = std::make_shared<FakeConsoleUser>();
    std::unique_ptr<DaemonController> daemon;
    OrderTaker taker;
    std::shared_ptr<NSConnection> server;
};

TEST_F(AgentOrdersTest, AlertsAreAnnouncedAgainToTheAgentOfTheUserAtTheConsoleAlone)
{
    ASSERT_EQ(attempts(), 1);
    order("DaemonMustAnticipateAgainEvent");
    EXPECT_EQ(attempts(), 2);

    console->user = ConsoleUser::User{"bob", ::geteuid() + 1};
    order("DaemonMustAnticipateAgainEvent");
    EXPECT_EQ(attempts(), 2) << "there is nothing to announce where nobody is";
    console->user.reset();
    order("DaemonMustAnticipateAgainEvent");
    EXPECT_EQ(attempts(), 2);

    console->user = ConsoleUser::User{"alice", ::geteuid()};
    WDNotificationCenter::defaultCenter()->postNotification(
        NSNotification("DaemonMustAnticipateAgainEvent", "com.dozely.UserAgent", {}));
    obey();
    EXPECT_EQ(attempts(), 2) << "of nobody";
    order("DaemonMustAnticipateAgainEvent");
    EXPECT_EQ(attempts(), 3);
}

#include "AgentOrdersTest.moc"
