// SPDX-License-Identifier: MIT
#include "unit/communication/channel/PortFixture.h"

using ZDRUnixSocketPortServer = PortFixture;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(ZDRUnixSocketPortServer, ListensOnTheSocketFileOfItsName)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    ASSERT_TRUE(server);
    EXPECT_TRUE(server->isValid());
    EXPECT_TRUE(server->isServer());
    EXPECT_TRUE(isSocket(root.join("/private/var/tmp/com.dozely/dozelyd")));
    const auto client = ZDRUnixSocketPort::initAsClientWithName("dozelyd");
    ASSERT_TRUE(client);
    EXPECT_TRUE(reaches(*client, *server));
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ZDRUnixSocketPortServer, TakesANameWithBlanksAndPointsAsItStands)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("Dozely Agent.501");
    ASSERT_TRUE(server);
    EXPECT_TRUE(isSocket(path("Dozely Agent.501")));
    EXPECT_TRUE(reaches(*ZDRUnixSocketPort::initAsClientWithName("Dozely Agent.501"), *server));
}

TEST_F(ZDRUnixSocketPortServer, WithAnEmptyNameIsNothingAndLeavesNoLogLine)
{
    EXPECT_FALSE(ZDRUnixSocketPort::initAsServerWithName(""));
    EXPECT_FALSE(ZDRUnixSocketPort::initAsServerWithName(QString()));
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ZDRUnixSocketPortServer, HandsOverARecordOf106BytesWithLengthFamilyAndPath)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName(QStringLiteral("é1"));
    ASSERT_TRUE(server);
    const QByteArray record = server->address();
    const QByteArray expectedPath = path("").toUtf8() + "\xC3\xA9"
                                                        "1";
    ASSERT_EQ(record.size(), 106);
    EXPECT_EQ(static_cast<quint8>(record[0]), expectedPath.size() + 2);
    EXPECT_EQ(static_cast<quint8>(record[1]), 1);
    EXPECT_EQ(record.mid(2, expectedPath.size()), expectedPath);
    EXPECT_EQ(record.mid(2 + expectedPath.size()), QByteArray(104 - expectedPath.size(), '\0'));
}

TEST_F(ZDRUnixSocketPortServer, OfAPathOf103BytesStillHasATerminatingZero)
{
    const QString name = nameForPathOf(103);
    const auto server = ZDRUnixSocketPort::initAsServerWithName(name);
    ASSERT_TRUE(server);
    EXPECT_EQ(static_cast<quint8>(server->address()[0]), 105);
    EXPECT_EQ(server->address().right(2), QByteArray("n\0", 2));
    EXPECT_TRUE(reaches(*ZDRUnixSocketPort::initAsClientWithName(name), *server));
}

TEST_F(ZDRUnixSocketPortServer, OfAPathOf104BytesHasNoTerminatingZeroAndIsReachedAllTheSame)
{
    const QString name = nameForPathOf(104);
    const auto server = ZDRUnixSocketPort::initAsServerWithName(name);
    ASSERT_TRUE(server);
    ASSERT_EQ(server->address().size(), 106);
    EXPECT_EQ(server->address().right(1), "n");
    EXPECT_TRUE(isSocket(path(name)));
    EXPECT_TRUE(reaches(*ZDRUnixSocketPort::initAsClientWithName(name), *server));
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(ZDRUnixSocketPortServer, OfALongerPathBindsTheCutOneAndFailsToSetTheMode)
{
    const QString name = nameForPathOf(105);
    EXPECT_FALSE(ZDRUnixSocketPort::initAsServerWithName(name));
    EXPECT_THAT(messages(), ElementsAre("Could not chmod 0666 socket file at path: " + path(name)));
    EXPECT_TRUE(isSocket(path(name.chopped(1)))) << "the file stays";

    EXPECT_FALSE(ZDRUnixSocketPort::initAsServerWithName(name));
    EXPECT_EQ(messages().size(), 1) << "the cut path is in use, which leaves no line";
}

TEST_F(ZDRUnixSocketPortServer, OfANameThatNoFileCanHaveIsNothing)
{
    const QString name(300, 'n');
    EXPECT_FALSE(ZDRUnixSocketPort::initAsServerWithName(name));
    EXPECT_THAT(messages(), ElementsAre("Could not chmod 0666 socket file at path: " + path(name)));
}

TEST_F(ZDRUnixSocketPortServer, GivesItsFileMode0666WhateverTheUmask)
{
    const mode_t before = ::umask(0777);
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    ::umask(before);
    ASSERT_TRUE(server);
    EXPECT_EQ(modeOf(path("dozelyd")), 0666u);
}

TEST_F(ZDRUnixSocketPortServer, ReplacesAStaleSocketFile)
{
    ASSERT_TRUE(ZDRUnixSocketPort::initAsServerWithName("dozelyd"));
    ASSERT_TRUE(isSocket(path("dozelyd"))) << "left by the port that has gone";
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    ASSERT_TRUE(server);
    EXPECT_TRUE(reaches(*ZDRUnixSocketPort::initAsClientWithName("dozelyd"), *server));
}

TEST_F(ZDRUnixSocketPortServer, ReplacesAFileThatIsNoSocket)
{
    ZDRUnixSocketPort::initAsClientWithName("first use of the class");
    writeFile(path("dozelyd"));
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    ASSERT_TRUE(server);
    EXPECT_TRUE(isSocket(path("dozelyd")));
}

TEST_F(ZDRUnixSocketPortServer, ReplacesAFolderWithEverythingInIt)
{
    ZDRUnixSocketPort::initAsClientWithName("first use of the class");
    ASSERT_TRUE(QDir().mkpath(path("dozelyd/inner/innermost")));
    writeFile(path("dozelyd/inner/file"));
    ASSERT_TRUE(ZDRUnixSocketPort::initAsServerWithName("dozelyd"));
    EXPECT_TRUE(isSocket(path("dozelyd")));
}

TEST_F(ZDRUnixSocketPortServer, ReplacesASymbolicLinkAndNeverFollowsIt)
{
    ZDRUnixSocketPort::initAsClientWithName("first use of the class");
    const QString target = root.join("/secret");
    writeFile(target);
    ::chmod(qPrintable(target), 0600);
    ASSERT_TRUE(QFile::link(target, path("dozelyd")));
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    ASSERT_TRUE(server);
    EXPECT_TRUE(isSocket(path("dozelyd")));
    EXPECT_EQ(modeOf(target), 0600u);
    EXPECT_EQ(statusOf(target).st_size, 7);
}

TEST_F(ZDRUnixSocketPortServer, ReplacesASymbolicLinkWithoutATarget)
{
    ZDRUnixSocketPort::initAsClientWithName("first use of the class");
    ASSERT_TRUE(QFile::link(root.join("/nowhere"), path("dozelyd")));
    ASSERT_TRUE(ZDRUnixSocketPort::initAsServerWithName("dozelyd"));
    EXPECT_TRUE(isSocket(path("dozelyd")));
    EXPECT_FALSE(QFile::exists(root.join("/nowhere")));
}

TEST_F(ZDRUnixSocketPortServer, OfTheSameNameTakesTheFileFromTheFirstWhichKeepsRunning)
{
    const auto first = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    const auto client = ZDRUnixSocketPort::initAsClientWithName("dozelyd");
    const auto second = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    ASSERT_TRUE(first && second);
    EXPECT_TRUE(first->isValid());
    EXPECT_TRUE(reaches(*client, *second));
    EXPECT_EQ(::accept(first->listeningDescriptor(), nullptr, nullptr), -1);
    EXPECT_EQ(errno, EAGAIN) << "it listens still, and nobody came";
}

TEST_F(ZDRUnixSocketPortServer, WithoutTheFolderIsNothingAndLeavesNoLogLine)
{
    QDir().rmdir(ZDRUnixSocketPort::socketFolder());
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([&] {
        EXPECT_FALSE(ZDRUnixSocketPort::initAsServerWithName("dozelyd"));
        EXPECT_FALSE(QFile::exists(ZDRUnixSocketPort::socketFolder()));
        EXPECT_THAT(root.logLines(), IsEmpty());
    }));
}

TEST_F(ZDRUnixSocketPortServer, InAFolderThatCannotBeWrittenIsNothingAndLeavesNoLogLine)
{
    root.makeFolder("/private/var/tmp/com.dozely", 0555);
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([&] {
        EXPECT_FALSE(ZDRUnixSocketPort::initAsServerWithName("dozelyd"));
        EXPECT_THAT(root.logLines(), IsEmpty());
    }));
}

TEST_F(ZDRUnixSocketPortServer, WhoseEarlierFileCannotBeRemovedLogsThatAndIsNothing)
{
    writeFile(path("Dozely Agent.501"));
    root.makeFolder("/private/var/tmp/com.dozely", 0555);
    EXPECT_TRUE(Identity::holdsAsOrdinaryUser([&] {
        EXPECT_FALSE(ZDRUnixSocketPort::initAsServerWithName("Dozely Agent.501"));
        EXPECT_THAT(messages(),
                    ElementsAre("Could not remove previous socket file: " + path("Dozely Agent.501")));
        EXPECT_EQ(statusOf(path("Dozely Agent.501")).st_size, 7);
    }));
}

TEST_F(ZDRUnixSocketPortServer, DescribesItselfWithTypeZeroAndAnEmptyName)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    ASSERT_TRUE(server);
    EXPECT_EQ(server->description(), "0 @ (null)");
    EXPECT_TRUE(server->portName().isEmpty());
}

TEST_F(ZDRUnixSocketPortServer, LeavesItsSocketFileWhenItIsInvalidated)
{
    const auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    ASSERT_TRUE(server);
    server->invalidate();
    EXPECT_FALSE(server->isValid());
    EXPECT_TRUE(isSocket(path("dozelyd")));
    server->invalidate();
    EXPECT_FALSE(server->isValid());
}

TEST_F(ZDRUnixSocketPortServer, IsInvalidatedByItsDestructionAndLeavesItsSocketFile)
{
    auto server = ZDRUnixSocketPort::initAsServerWithName("dozelyd");
    ASSERT_TRUE(server);
    int invalidations = 0;
    server->setInvalidationHandler([&] { ++invalidations; });
    server.reset();
    EXPECT_EQ(invalidations, 1);
    EXPECT_TRUE(isSocket(path("dozelyd")));
}
