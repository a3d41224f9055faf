// SPDX-License-Identifier: MIT
#include "unit/communication/channel/PortFixture.h"

#include "DozelyKit/core/foundation/NSProcessInfo.h"

using ZDRUnixSocketPortClient = PortFixture;
using ZDRUnixSocketPortShared = PortFixture;
using testing::IsEmpty;

TEST_F(ZDRUnixSocketPortClient, WithAnEmptyNameIsNothing)
{
    EXPECT_FALSE(ZDRUnixSocketPort::initAsClientWithName(""));
    EXPECT_FALSE(ZDRUnixSocketPort::initAsClientWithName(QString()));
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ZDRUnixSocketPortClient, WithoutASocketFileIsNothingAndLeavesNoLogLine)
{
    EXPECT_FALSE(ZDRUnixSocketPort::initAsClientWithName("dozelyd"));
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ZDRUnixSocketPortClient, OfALinkWithoutATargetIsNothing)
{
    ZDRUnixSocketPort::initAsClientWithName("first use of the class");
    ASSERT_TRUE(QFile::link(root.join("/nowhere"), path("dozelyd")));
    EXPECT_FALSE(ZDRUnixSocketPort::initAsClientWithName("dozelyd"));
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ZDRUnixSocketPortClient, KnowsThePathThatItReachesAndDescribesIt)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    const auto client = ZDRUnixSocketPort::initAsClientWithName("dozelyd");
    ASSERT_TRUE(client);
    EXPECT_FALSE(client->isServer());
    EXPECT_EQ(client->portName(), path("dozelyd"));
    EXPECT_EQ(client->description(), "1 @ " + root.join("/private/var/tmp/com.dozely/dozelyd"));
    EXPECT_EQ(client->address(), server->address());
}

TEST_F(ZDRUnixSocketPortClient, ConnectsAtItsFirstUseOnly)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    const auto client = ZDRUnixSocketPort::initAsClientWithName("dozelyd");
    ASSERT_TRUE(server && client);
    EXPECT_EQ(::accept(server->listeningDescriptor(), nullptr, nullptr), -1);
    EXPECT_EQ(errno, EAGAIN);
    EXPECT_TRUE(reaches(*client, *server));
}

TEST_F(ZDRUnixSocketPortClient, OfAServerThatDiedIsAPortWhoseFirstUseFails)
{
    ASSERT_TRUE(ZDRUnixSocketPort::initAsServerWithName("dozelyd"));
    const auto client = ZDRUnixSocketPort::initAsClientWithName("dozelyd");
    ASSERT_TRUE(client);
    EXPECT_TRUE(client->isValid());
    EXPECT_EQ(client->connectStream(), -1);
    EXPECT_EQ(errno, ECONNREFUSED);
}

TEST_F(ZDRUnixSocketPortClient, LeavesTheServersFileWhenItIsInvalidated)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    auto client = ZDRUnixSocketPort::initAsClientWithName("dozelyd");
    ASSERT_TRUE(client);
    client->invalidate();
    EXPECT_FALSE(client->isValid());
    client.reset();
    EXPECT_TRUE(isSocket(path("dozelyd")));
    EXPECT_TRUE(reaches(*ZDRUnixSocketPort::initAsClientWithName("dozelyd"), *server));
}

TEST_F(ZDRUnixSocketPortShared, ListensUnderProcessNameUserIdAndThreeLettersUpToY)
{
    NSProcessInfo::setProcessName("Dozely Agent");
    const auto port = ZDRUnixSocketPort::port();
    ASSERT_TRUE(port);
    EXPECT_TRUE(port->isServer());
    const QStringList files =
        QDir(ZDRUnixSocketPort::socketFolder()).entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot);
    ASSERT_EQ(files.size(), 1);
    EXPECT_THAT(
        files.first().toStdString(),
        testing::MatchesRegex("Dozely Agent\\." + std::to_string(::geteuid()) + "\\.[a-y][a-y][a-y]"));
    EXPECT_EQ(port->address().mid(2, QFile::encodeName(path(files.first())).size()),
              QFile::encodeName(path(files.first())));
}

TEST_F(ZDRUnixSocketPortShared, CarriesTheEffectiveUserIdWhoeverTheRealUserIs)
{
    // Only root can have two identities; for anybody else the two are one.
    const QString pattern = QString("Dozely Agent.%1.???").arg(Identity::ordinaryUserHere());
    EXPECT_TRUE(Identity::holdsAs(Identity::becomeOrdinaryUserEffectively, [&] {
        NSProcessInfo::setProcessName("Dozely Agent");
        EXPECT_TRUE(ZDRUnixSocketPort::port());
        EXPECT_EQ(QDir(ZDRUnixSocketPort::socketFolder()).entryList({pattern}, QDir::System).size(), 1);
    }));
}

TEST_F(ZDRUnixSocketPortShared, IsTheSameAtEveryCall)
{
    const auto port = ZDRUnixSocketPort::port();
    ASSERT_TRUE(port);
    EXPECT_EQ(ZDRUnixSocketPort::port(), port);
}

TEST_F(ZDRUnixSocketPortShared, ThatCannotBeMadeIsTriedAgainAtTheNextCall)
{
    QDir().rmdir(ZDRUnixSocketPort::socketFolder());
    ::chmod(qPrintable(root.join("/private/var/tmp")), 0777);
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([&] {
        EXPECT_FALSE(ZDRUnixSocketPort::port());
        root.makeSocketFolder();
        const auto port = ZDRUnixSocketPort::port();
        EXPECT_TRUE(port);
        EXPECT_EQ(ZDRUnixSocketPort::port(), port);
    }));
}
