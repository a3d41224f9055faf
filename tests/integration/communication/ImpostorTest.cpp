// SPDX-License-Identifier: MIT
#include "SystemFixture.h"

#include "DozelyKit/core/foundation/RootFolder.h"

#include <QDir>

#include <sys/stat.h>

namespace
{
/// A system that belongs to root, and a process of an ordinary user that serves a name which is not his.
///
/// Root makes the system in a scratch folder. A user cannot give a folder away, so he takes one that is
/// root's and that he may write.
class Impostor : public testing::Test
{
protected:
    Impostor()
    {
        const mode_t before = ::umask(0);
        EXPECT_TRUE(QDir().mkpath(folder + "/private/var/tmp/com.dozely"));
        EXPECT_TRUE(QDir().mkpath(folder + "/var/log"));
        ::umask(before);
        if (scratch)
            scratch->makeFolder("/var/log", 0777);
        QFile::remove(logPath);
    }

    ~Impostor() override
    {
        if (scratch)
            return;
        QDir(folder + "/private/var/tmp/com.dozely").removeRecursively();
        QDir(folder + "/private/var").rmpath("tmp");
        QFile::remove(logPath);
        QDir(folder).rmpath("private/var");
        QDir(folder).rmpath("var/log");
    }

    std::unique_ptr<HostProcess> start(const QString &processName, uid_t user) const
    {
        return std::make_unique<HostProcess>(folder, processName, QString::number(user));
    }

    QByteArray log() const
    {
        QFile file(logPath);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    const std::unique_ptr<ScratchRoot> scratch = ::geteuid() == 0 ? std::make_unique<ScratchRoot>() : nullptr;
    const QString folder = scratch ? scratch->path() : QStringLiteral("/var/tmp");
    const QString logPath = folder + "/var/log/dozely.log";
    const uid_t user = Identity::ordinaryUserHere();
};
} // namespace

TEST_F(Impostor, OfTheDaemonIsNoRootObject)
{
    const auto impostor = start("dozelyd", user);
    ASSERT_EQ(impostor->ask("publish"), "yes");
    const auto application = start("Dozely", user);
    EXPECT_EQ(application->ask("ping daemon"), "no");
    EXPECT_EQ(application->ask("post daemon 0 Act"), "no");
    EXPECT_EQ(log().count(" - App): Could NOT connect to Daemon\n"), 2);
}

TEST_F(Impostor, OfAnotherUsersAgentOrApplicationIsNoRootObject)
{
    // The name carries the number of its user; another user is asked for.
    const quint32 victim = user + 1;
    const auto impostor = start("Dozely Agent", user);
    const auto application = start("Dozely", user);
    ASSERT_EQ(impostor->ask("publish"), "yes");
    ASSERT_EQ(application->ask("publish"), "yes");
    const QString sockets = folder + "/private/var/tmp/com.dozely/";
    ASSERT_TRUE(QFile::rename(sockets + QStringLiteral("Dozely Agent.%1").arg(user),
                              sockets + QStringLiteral("Dozely Agent.%1").arg(victim)));
    ASSERT_TRUE(QFile::rename(sockets + QStringLiteral("Dozely.%1").arg(user),
                              sockets + QStringLiteral("Dozely.%1").arg(victim)));

    const auto asking = start("Dozely Admin", user);
    EXPECT_EQ(asking->ask(QStringLiteral("post agent %1 Act").arg(victim)), "no");
    EXPECT_EQ(log().count("Could NOT connect to Agent\n"), 1);
    EXPECT_EQ(asking->ask(QStringLiteral("ping app %1").arg(victim)), "no");
    EXPECT_EQ(log().count("Could NOT connect to PrefPane\n"), 1);
}

TEST_F(Impostor, IsNobodyWhoServesHisOwnAgent)
{
    const auto agent = start("Dozely Agent", user);
    ASSERT_EQ(agent->ask("publish"), "yes");
    const auto asking = start("Dozely", user);
    EXPECT_EQ(asking->ask(QStringLiteral("ping agent %1").arg(user)), "yes");
    EXPECT_EQ(asking->ask(QStringLiteral("post agent %1 Act").arg(user)), "yes");
    EXPECT_TRUE(agent->hears("Act"));
}
