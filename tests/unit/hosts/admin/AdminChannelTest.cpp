// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/WDNotificationCenter.h"
#include "hosts/common/orders/OrderRefusal.h"
#include "hosts/common/program/HostRootObject.h"
#include "unit/hosts/admin/AdminTool.h"

#include <QDir>
#include <QFileInfo>

#include <gmock/gmock.h>

#include <unistd.h>

using testing::HasSubstr;

/// Keeps what the daemon is asked, and by whom.
class RunNowReceiver : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void daemonMustRunNow(const NSNotification &notification)
    {
        identifiers += notification.userInfo().value("Schedule Identifier").toString();
        const auto peer = NSConnection::currentPeer();
        users += peer ? static_cast<qint64>(peer->userId) : -1;
        if (refusal)
            throw OrderRefusal(*refusal, "it is not to be");
    }
    std::optional<OrderRefusal::Kind> refusal;
    QStringList identifiers;
    QList<qint64> users;
};

/// Keeps what the daemon is asked about single occurrences.
class WishReceiver : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void hear(const NSNotification &notification)
    {
        orders += {notification.name(), notification.userInfo()};
        if (refusal)
            throw OrderRefusal(*refusal, "there is nothing to come");
    }
    std::optional<OrderRefusal::Kind> refusal;
    QList<std::pair<QString, QVariantMap>> orders;
};

namespace
{
/// This process plays the part that the tool talks to.
class AdminChannelTest : public testing::Test
{
protected:
    AdminChannelTest()
    {
        ::unsetenv("SUDO_UID");
        if (::geteuid() != 0)
            tool.root.makeSocketFolder();
    }
    ~AdminChannelTest() override { center().setObserver(nullptr); }

    static WDCommunicationCenter &center() { return *WDCommunicationCenter::sharedInstance(); }
    void publishAs(const QString &processName)
    {
        NSProcessInfo::setProcessName(processName);
        center().setObserver(&rootObject);
        center().createServerConnection();
        ASSERT_TRUE(center().connection());
    }
    QStringList socketFiles() const
    {
        return QDir(tool.root.join("/private/var/tmp/com.dozely")).entryList(QDir::System | QDir::Files);
    }
    static QString me() { return QString::number(::geteuid()); }

    AdminTool tool;
    HostRootObject rootObject;
};
} // namespace

TEST_F(AdminChannelTest, ADaemonThatIsAliveAnswersAPing)
{
    publishAs("dozelyd");
    const auto forPeople = tool.run({"ping", "daemon"});
    EXPECT_EQ(forPeople.status, 0) << forPeople.errors.constData();
    EXPECT_EQ(forPeople.output, "The daemon is alive.\n");
    EXPECT_EQ(tool.run({"ping", "daemon", "--json"}).json(),
              QJsonObject({{"target", "daemon"}, {"answered", true}}));
}

TEST_F(AdminChannelTest, APingByRootLeavesTheSocketsOfOthersAlone)
{
    publishAs("dozelyd");
    ASSERT_EQ(tool.run({"ping", "daemon"}).status, 0);
    ASSERT_EQ(tool.run({"ping", "agent"}).status, 1);
    EXPECT_TRUE(socketFiles().contains("dozelyd"));
    EXPECT_EQ(tool.run({"ping", "daemon"}).status, 0);
}

TEST_F(AdminChannelTest, AMissingDaemonFailsAPing)
{
    const auto forPeople = tool.run({"ping", "daemon"});
    EXPECT_EQ(forPeople.status, 1);
    EXPECT_THAT(forPeople.errors.toStdString(), HasSubstr("The daemon does not answer."));
    const auto forPrograms = tool.run({"ping", "daemon", "--json"});
    EXPECT_EQ(forPrograms.status, 1);
    EXPECT_EQ(forPrograms.json(), QJsonObject({{"target", "daemon"}, {"answered", false}}));
}

TEST_F(AdminChannelTest, AnAgentIsReachedByItsUser)
{
    publishAs("Dozely Agent");
    EXPECT_EQ(tool.run({"ping", "agent"}).status, 0);
    EXPECT_EQ(tool.run({"ping", "agent", me()}).status, 0);
    EXPECT_EQ(tool.run({"ping", "agent", me(), "--json"}).json()["user"].toInteger(), me().toLongLong());
    EXPECT_EQ(tool.run({"ping", "agent", "4711"}).status, 1);
    EXPECT_EQ(tool.run({"ping", "application", me()}).status, 1);
}

TEST_F(AdminChannelTest, APingLeavesNoSocketFileOfItsOwn)
{
    publishAs("Dozely Agent");
    const QStringList before = socketFiles();
    EXPECT_EQ(before, QStringList("Dozely Agent." + me()));
    ASSERT_EQ(tool.run({"ping", "agent"}).status, 0);
    EXPECT_EQ(socketFiles(), before);
}

TEST_F(AdminChannelTest, AnApplicationIsReachedByItsUser)
{
    publishAs("Dozely");
    EXPECT_EQ(tool.run({"ping", "application"}).status, 0);
    EXPECT_EQ(tool.run({"ping", "application", me()}).status, 0);
    EXPECT_EQ(tool.run({"ping", "agent", me()}).status, 1);
}

TEST_F(AdminChannelTest, AUserWhoDoesNotExistIsTold)
{
    const auto result = tool.run({"ping", "agent", "no such user"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors.toStdString(), HasSubstr("There is no user \"no such user\"."));
}

TEST_F(AdminChannelTest, RunAsksTheDaemonInTheOwnersName)
{
    publishAs("dozelyd");
    const auto receiver = std::make_shared<RunNowReceiver>();
    WDNotificationCenter::defaultCenter()->addObserver(receiver, "daemonMustRunNow", "DaemonMustRunNowEvent",
                                                       "com.dozely.Admin");
    const QString ours = tool.add("Ours", {"--owner", me()});
    EXPECT_EQ(tool.run({"run", "Ours"}).status, 0);
    const auto result = tool.run({"run", ours, "--json"});
    EXPECT_EQ(result.json(), QJsonObject({{"identifier", ours}, {"received", true}}));
    EXPECT_EQ(receiver->identifiers, QStringList({ours, ours}));
    const qint64 self = ::geteuid();
    EXPECT_EQ(receiver->users, QList<qint64>({self, self}));
    EXPECT_TRUE(socketFiles().contains("dozelyd"));
    if (self == 0) { // root asks in the name of whose schedule it is
        tool.add("Theirs", {"--owner", "4711"});
        EXPECT_EQ(tool.run({"run", "Theirs"}).status, 0);
        EXPECT_EQ(receiver->users, QList<qint64>({0, 0, 4711}));
    }
}

TEST_F(AdminChannelTest, RunSaysWhatTheDaemonRefuses)
{
    publishAs("dozelyd");
    const auto receiver = std::make_shared<RunNowReceiver>();
    WDNotificationCenter::defaultCenter()->addObserver(receiver, "daemonMustRunNow", "DaemonMustRunNowEvent",
                                                       "com.dozely.Admin");
    tool.add("Ours", {"--owner", me()});
    for (const auto &[kind, status] :
         {std::pair(OrderRefusal::Kind::Impossible, 1), std::pair(OrderRefusal::Kind::NotPermitted, 3)}) {
        receiver->refusal = kind;
        const auto result = tool.run({"run", "Ours", "--json"});
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.errors.toStdString(), HasSubstr("The daemon refuses: it is not to be."));
    }
}

TEST_F(AdminChannelTest, RunFailsWithoutADaemon)
{
    tool.add("Ours");
    const auto result = tool.run({"run", "Ours"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors.toStdString(), HasSubstr("The daemon does not answer."));
}

TEST_F(AdminChannelTest, RunOfSomebodyElsesScheduleIsNotPermitted)
{
    publishAs("dozelyd");
    const auto receiver = std::make_shared<RunNowReceiver>();
    WDNotificationCenter::defaultCenter()->addObserver(receiver, "daemonMustRunNow", "DaemonMustRunNowEvent",
                                                       "com.dozely.Admin");
    tool.add("Theirs", {"--owner", "4711"});
    const bool isRoot = ::geteuid() == 0;
    const auto result = tool.run({"run", "Theirs"}, true);
    // Without root there is one user here: the owner of the root folder, who may run everything.
    EXPECT_EQ(result.status, isRoot ? 3 : 0);
    EXPECT_EQ(receiver->identifiers.size(), isRoot ? 0 : 1);
}

TEST_F(AdminChannelTest, SkipAndPostponeAskTheDaemonForOneOccurrence)
{
    publishAs("dozelyd");
    const auto receiver = std::make_shared<WishReceiver>();
    for (const char *name : {"DaemonMustSkipEvent", "DaemonMustPostponeEvent"})
        WDNotificationCenter::defaultCenter()->addObserver(receiver, "hear", name, "com.dozely.Admin");
    const auto added = tool.run({"add", "Daily", "--program", "/bin/true", "--every", "day", "--at", "03:00",
                                 "--from", "2060-03-14", "--time-zone", "Europe/Paris", "--json"});
    ASSERT_EQ(added.status, 0) << added.errors.constData();
    const QString daily = added.json()["schedule"].toObject()["identifier"].toString();
    const QDateTime march15({2060, 3, 15}, {2, 0}, Qt::UTC);

    EXPECT_EQ(tool.run({"skip", "Daily"}).output, "\"Daily\" is left out: its next time.\n");
    EXPECT_EQ(tool.run({"skip", "Daily", "--date", "2060-03-15", "--json"}).json(),
              QJsonObject({{"identifier", daily}, {"date", "2060-03-15T02:00:00Z"}, {"received", true}}));
    EXPECT_EQ(tool.run({"postpone", "Daily", "10m"}).output,
              "\"Daily\" is postponed by 10 min: its next time.\n");
    EXPECT_EQ(tool.run({"postpone", daily, "90", "--date", "2060-03-15 03:00"}).status, 0);
    EXPECT_EQ(tool.run({"postpone", daily, "1"}).status, 0);
    EXPECT_EQ(tool.run({"postpone", daily, "0"}).status, 2);
    ASSERT_EQ(receiver->orders.size(), 5);
    EXPECT_EQ(receiver->orders[0].first, "DaemonMustSkipEvent");
    EXPECT_EQ(receiver->orders[0].second, QVariantMap({{"Schedule Identifier", daily}}));
    EXPECT_EQ(receiver->orders[1].second["Schedule Date"].toDateTime(), march15);
    EXPECT_EQ(receiver->orders[2].first, "DaemonMustPostponeEvent");
    EXPECT_EQ(receiver->orders[2].second,
              QVariantMap({{"Schedule Identifier", daily}, {"Schedule Delay", 600LL}}));
    EXPECT_EQ(receiver->orders[3].second["Schedule Delay"], 90LL);
    EXPECT_EQ(receiver->orders[3].second["Schedule Date"].toDateTime(), march15);
    EXPECT_EQ(receiver->orders[4].second["Schedule Delay"], 1LL);
    for (const QString word : {"skip", "postpone"}) {
        receiver->refusal = OrderRefusal::Kind::Impossible;
        QStringList command{word, "Daily"};
        if (word == "postpone")
            command += "10m";
        const auto refused = tool.run(command);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.output, "");
        EXPECT_THAT(refused.errors.toStdString(), HasSubstr("The daemon refuses: there is nothing to come."));
        receiver->refusal = OrderRefusal::Kind::NotPermitted;
        EXPECT_EQ(tool.run(command).status, 3);
    }
}

TEST_F(AdminChannelTest, ADayIsThatFromItsFirstSecondOn)
{
    publishAs("dozelyd");
    ASSERT_EQ(tool.run({"add", "Late", "--program", "/bin/true", "--every", "day", "--at", "23:59:59",
                        "--from", "2060-03-13", "--time-zone", "UTC"})
                  .status,
              0);
    EXPECT_EQ(tool.run({"skip", "Late", "--date", "2060-03-15", "--json"}).json()["date"],
              "2060-03-15T23:59:59Z");
}

TEST_F(AdminChannelTest, SkipAndPostponeSayWhatIsWrongWithTheDate)
{
    const QStringList daily{"add",     "Daily",   "--program", "/bin/true",
                            "--every", "weekday", "--from",    "2060-03-15"};
    ASSERT_EQ(tool.run(daily + QStringList{"--at", "03:00", "--at", "15:00", "--time-zone", "UTC"}).status,
              0);
    const QList<std::tuple<const char *, int, const char *>> cases{
        {"2060-03-15", 2, "\"Daily\" takes place at 03:00, at 15:00 and so on that day: say at which"},
        {"2060-03-14", 2, "\"Daily\" does not take place on 14 March 2060"},
        {"03/04/2060", 2, "\"03/04/2060\" can be 2060-04-03 or 2060-03-04."},
        {"2060-03-15 03:00", 1, "The daemon does not answer."},
    };
    for (const auto &[date, status, complaint] : cases) {
        const auto result = tool.run({"skip", "Daily", "--date", date});
        EXPECT_EQ(result.status, status) << date;
        EXPECT_THAT(result.errors.toStdString(), HasSubstr(complaint));
    }
}

#include "AdminChannelTest.moc"
