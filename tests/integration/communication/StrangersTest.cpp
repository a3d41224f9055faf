// SPDX-License-Identifier: MIT
#include "SystemFixture.h"

#include <QDir>

#include <fcntl.h>
#include <sys/stat.h>

namespace
{
/// The daemon's process and an agent's, and another user who does things to their folder.
class Strangers : public SystemFixture
{
protected:
    static constexpr uid_t stranger = 4712;

    QString folder() const { return root.join("/private/var/tmp/com.dozely"); }

    /// As another user, where there is one.
    template<class Body>
    static testing::AssertionResult doAsStranger(Body body)
    {
        const bool isRoot = ::geteuid() == 0;
        return Identity::holdsAs([isRoot] { return !isRoot || Identity::becomeUser(stranger); }, body);
    }

    /// Puts a folder with something in it in the place of the socket file.
    void replaceByFolder(const QString &socket) const
    {
        EXPECT_TRUE(doAsStranger([&] {
            const QString place = folder() + "/prepared";
            ASSERT_TRUE(QDir().mkpath(place + "/inner"));
            QFile file(place + "/inner/file");
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            ASSERT_TRUE(QFile::remove(socket));
            ASSERT_TRUE(QFile::rename(place, socket));
        }));
    }

    /// What lies in the folder and beside it besides sockets.
    QStringList leftOvers() const
    {
        QStringList names =
            QDir(folder()).entryList(QDir::Dirs | QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
        if (QFile::exists(folder() + ".removed"))
            names += "com.dozely.removed";
        return names;
    }
};
} // namespace

TEST_F(Strangers, WhoReplaceAnAgentsSocketByAFolderDoNotKeepItAway)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    ASSERT_EQ(daemon->ask(command("post", "Act")), "yes");

    replaceByFolder(agentSocket());
    const auto start = HostProcess::Clock::now();
    ASSERT_TRUE(waitUntil([&] { return daemon->ask(command("ping")) == "yes"; }));
    EXPECT_LE(secondsSince(start), 1.5);
    EXPECT_EQ(daemon->ask(command("post", "Act")), "yes");
    EXPECT_TRUE(waitUntil([&] { return leftOvers().isEmpty(); })) << qPrintable(leftOvers().join(", "));
    const QByteArray told = "): User 4712: entry in a socket's place cleared away\n";
    EXPECT_EQ(root.logContent().contains(told), ::geteuid() == 0) << root.logContent().constData();
}

TEST_F(Strangers, WhoReplaceAnAgentsSocketByAFolderWhileThereIsNoDaemonDoNotKeepItAway)
{
    root.makeSocketFolder();
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    const auto asking = start("Dozely", QString::number(user));
    ASSERT_EQ(asking->ask(command("ping")), "yes");

    replaceByFolder(agentSocket());
    const auto start = HostProcess::Clock::now();
    ASSERT_TRUE(waitUntil([&] { return asking->ask(command("ping")) == "yes"; }));
    EXPECT_LE(secondsSince(start), 1.5);

    // The next daemon finds what is left.
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    EXPECT_TRUE(waitUntil([&] { return leftOvers().isEmpty(); })) << qPrintable(leftOvers().join(", "));
}

TEST_F(Strangers, WhoReplaceTheDaemonsSocketByAFolderDoNotKeepItAway)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("ping daemon"), "yes");
    replaceByFolder(folder() + "/dozelyd");
    const auto start = HostProcess::Clock::now();
    ASSERT_TRUE(waitUntil([&] { return agent->ask("ping daemon") == "yes"; }));
    EXPECT_LE(secondsSince(start), 1.5);
}

TEST_F(Strangers, DoNotHoldTheDaemonUpByTheSizeOfWhatTheyPutThere)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const QString big = folder() + "/big";
    EXPECT_TRUE(doAsStranger([&] {
        ASSERT_TRUE(QDir().mkpath(big));
        const int place = ::open(QFile::encodeName(big).constData(), O_PATH | O_DIRECTORY);
        for (int i = 0; i < 5'000; ++i)
            ASSERT_EQ(::mknodat(place, QByteArray::number(i).constData(), S_IFREG | 0600, 0), 0);
        ASSERT_TRUE(QFile::remove(folder() + "/dozelyd"));
        ASSERT_TRUE(QFile::rename(big, folder() + "/dozelyd"));
    }));
    // Questions that need the daemon's event loop and nothing else.
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder() + ".removed"); }));
    const auto begin = HostProcess::Clock::now();
    double longest = 0;
    int asked = 0;
    while (QFile::exists(folder() + ".removed")) {
        const auto start = HostProcess::Clock::now();
        ASSERT_EQ(daemon->ask("touch"), "yes");
        longest = std::max(longest, secondsSince(start));
        ++asked;
    }
    EXPECT_GE(asked, 10) << "else it was all removed at once";
    // A part of the whole: the machine may be busy, with this test's files, too.
    EXPECT_LE(longest, secondsSince(begin) / 2);
}

TEST_F(Strangers, WhoRemoveTheFolderHaveItMadeAgain)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    ASSERT_TRUE(QDir(folder()).removeRecursively()); // as an administrator may
    const auto start = HostProcess::Clock::now();
    ASSERT_TRUE(waitUntil([&] { return daemon->ask(command("ping")) == "yes"; }));
    ASSERT_TRUE(waitUntil([&] { return agent->ask("ping daemon") == "yes"; }));
    EXPECT_LE(secondsSince(start), 3);
    EXPECT_EQ(daemon->ask(command("post", "Act")), "yes");
}

TEST_F(Strangers, WhoTakeAnAgentsSocketAwayAThousandTimesASecondCostItLittle)
{
    root.makeSocketFolder();
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    EXPECT_TRUE(doAsStranger([&] {
        const auto start = HostProcess::Clock::now();
        while (secondsSince(start) < 1)
            ::unlink(QFile::encodeName(agentSocket()).constData());
    }));
    const auto start = HostProcess::Clock::now();
    const auto asking = this->start("Dozely", QString::number(user));
    ASSERT_TRUE(waitUntil([&] { return asking->ask(command("ping")) == "yes"; }));
    EXPECT_LE(secondsSince(start), 1.5);
}
