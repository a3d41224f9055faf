// SPDX-License-Identifier: MIT
#include "unit/communication/channel/CenterFixture.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{
class SharedCenter : public PortFixture
{
};
} // namespace

TEST_F(SharedCenter, IsTheSameAtEveryCall)
{
    const auto center = WDCommunicationCenter::sharedInstance();
    ASSERT_TRUE(center);
    EXPECT_EQ(WDCommunicationCenter::sharedInstance(), center);
}

TEST_F(SharedCenter, OutlivesThoseWhoAskedForIt)
{
    const std::weak_ptr<WDCommunicationCenter> center = WDCommunicationCenter::sharedInstance();
    EXPECT_FALSE(center.expired());
}

TEST_F(SharedCenter, IsTheOneFirstMadeAndASecondInitIsNothing)
{
    const auto first = WDCommunicationCenter::init();
    ASSERT_TRUE(first);
    EXPECT_FALSE(WDCommunicationCenter::init());
    EXPECT_EQ(WDCommunicationCenter::sharedInstance(), first);
}

TEST_F(SharedCenter, CannotBeMadeAgainByInit)
{
    const auto center = WDCommunicationCenter::sharedInstance();
    EXPECT_FALSE(WDCommunicationCenter::init());
    EXPECT_EQ(WDCommunicationCenter::sharedInstance(), center);
}

TEST_F(SharedCenter, IsBornWithEmptyLocksAndPublishesNothing)
{
    const auto center = WDCommunicationCenter::init();
    EXPECT_TRUE(center->agentsLocks().isEmpty());
    EXPECT_TRUE(center->prefPanesLocks().isEmpty());
    EXPECT_FALSE(center->daemonLock());
    EXPECT_FALSE(center->observer());
    EXPECT_FALSE(center->socketPort());
    EXPECT_FALSE(center->connection());
    EXPECT_TRUE(QDir(ZDRUnixSocketPort::socketFolder()).isEmpty());
}

TEST_F(SharedCenter, EndsWithAnInvalidConnectionAndALineOnTheConsoleAndMakesRoomForAnother)
{
    NSProcessInfo::setProcessName("dozelyd");
    QObject observer;
    auto center = WDCommunicationCenter::init();
    center->setObserver(&observer);
    center->createServerConnection();
    const auto connection = center->connection();
    ASSERT_TRUE(connection && connection->isValid());

    testing::internal::CaptureStderr();
    center.reset();
    const std::string console = testing::internal::GetCapturedStderr();

    EXPECT_THAT(console, HasSubstr("-[WDCommunicationCenter dealloc]\n"));
    EXPECT_FALSE(connection->isValid());
    EXPECT_THAT(messages(), IsEmpty()) << "its own end is not logged as a death";
    EXPECT_TRUE(WDCommunicationCenter::init());
}

TEST_F(SharedCenter, HoldsItsObserverWeakly)
{
    const auto center = WDCommunicationCenter::init();
    auto observer = std::make_unique<QObject>();
    center->setObserver(observer.get());
    EXPECT_EQ(center->observer(), observer.get());
    observer.reset();
    EXPECT_EQ(center->observer(), nullptr);
}

TEST_F(SharedCenter, KeepsTheFieldsThatItIsGiven)
{
    const auto center = WDCommunicationCenter::init();
    const auto port = ZDRUnixSocketPort::initAsServerWithName("x");
    const auto connection = NSConnection::initWithReceivePortSendPort(port, nullptr);
    const auto lock = std::make_shared<NSLock>();
    center->setSocketPort(port);
    center->setConnection(connection);
    center->setDaemonLock(lock);
    center->setAgentsLocks({{501, lock}});
    center->setPrefPanesLocks({{502, lock}});
    EXPECT_EQ(center->socketPort(), port);
    EXPECT_EQ(center->connection(), connection);
    EXPECT_EQ(center->daemonLock(), lock);
    EXPECT_EQ(center->agentsLocks().value(501), lock);
    EXPECT_EQ(center->prefPanesLocks().value(502), lock);
}

TEST_F(SharedCenter, LivesOnTheMainThreadWhicheverThreadAskedFirst)
{
    const std::unique_ptr<QThread> thread(QThread::create([] { WDCommunicationCenter::sharedInstance(); }));
    thread->start();
    thread->wait();
    EXPECT_EQ(WDCommunicationCenter::sharedInstance()->thread(), QThread::currentThread());
}

TEST_F(SharedCenter, AcceptsEveryConnection)
{
    const auto center = WDCommunicationCenter::init();
    EXPECT_TRUE(center->connectionShouldMakeNewConnection(nullptr, nullptr));
}

TEST_F(SharedCenter, MakesNoPortsWithoutAName)
{
    const auto center = WDCommunicationCenter::init();
    EXPECT_FALSE(center->serverUnixSocketPortWithName(""));
    EXPECT_FALSE(center->clientUnixSocketPortWithName(""));
    EXPECT_FALSE(center->clientUnixSocketPortWithName("dozelyd"));
    const auto server = center->serverUnixSocketPortWithName("dozelyd");
    EXPECT_TRUE(server && server->isServer());
    const auto client = center->clientUnixSocketPortWithName("dozelyd");
    EXPECT_TRUE(client && !client->isServer());
}

TEST_F(SharedCenter, ListensUnderTheNameOfItsProcessAndUser)
{
    const auto center = WDCommunicationCenter::init();
    const QString user = QString::number(::geteuid());
    const auto portNameOf = [&](const char *processName) {
        NSProcessInfo::setProcessName(processName);
        return center->portName();
    };
    EXPECT_EQ(portNameOf("dozelyd"), "dozelyd");
    EXPECT_EQ(portNameOf("lt-dozelyd-debug"), "dozelyd") << "it is enough that the name contains it";
    EXPECT_EQ(portNameOf("DOZELYD"), "DOZELYD." + user);
    EXPECT_EQ(portNameOf("Dozely Agent"), "Dozely Agent." + user);
    EXPECT_EQ(portNameOf("Dozely"), "Dozely." + user);
    EXPECT_EQ(portNameOf("Dozely Admin"), "Dozely Admin." + user);
}

TEST_F(SharedCenter, ListensAsTheDaemonWhateverItsUserId)
{
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([] {
        NSProcessInfo::setProcessName("dozelyd");
        EXPECT_EQ(WDCommunicationCenter::sharedInstance()->portName(), "dozelyd");
        NSProcessInfo::setProcessName("Dozely Agent");
        EXPECT_EQ(WDCommunicationCenter::sharedInstance()->portName(),
                  QString("Dozely Agent.%1").arg(::geteuid()));
        EXPECT_NE(::geteuid(), 0u);
    }));
}
