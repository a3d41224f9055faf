// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/admin/LogCommand.h"
#include "support/WaitUntil.h"
#include "unit/hosts/admin/AdminTool.h"

#include <QFile>
#include <QJsonDocument>

#include <gmock/gmock.h>

#include <csignal>

using testing::HasSubstr;

namespace
{
class AdminLogTest : public testing::Test
{
protected:
    ~AdminLogTest() override
    {
        follower.kill();
        follower.waitForFinished();
    }
    QString logPath() const { return tool.root.join("/var/log/dozely.log"); }
    void follow(const QStringList &more = {})
    {
        tool.prepare(follower, QStringList{"log", "--follow"} + more);
        follower.start();
    }
    bool shows(const QByteArray &text)
    {
        return waitUntil([&] {
            shown += follower.readAllStandardOutput();
            return shown.contains(text);
        });
    }

    AdminTool tool;
    QProcess follower;
    QByteArray shown;
};
} // namespace

TEST_F(AdminLogTest, ShowsTheLastTwentyLines)
{
    for (int i = 1; i <= 25; ++i)
        ZDRLogDaemon(QString("line %1").arg(i));
    const auto result = tool.run({"log"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output.count('\n'), 20);
    EXPECT_THAT(result.output.toStdString(), HasSubstr("line 6\n"));
    EXPECT_THAT(result.output.toStdString(), testing::Not(HasSubstr("line 5\n")));
}

TEST_F(AdminLogTest, ShowsAsManyLinesAsAreWanted)
{
    for (int i = 1; i <= 3; ++i)
        ZDRLogDaemon(QString("line %1").arg(i));
    EXPECT_EQ(tool.run({"log", "--lines", "1"}).output.count('\n'), 1);
    EXPECT_EQ(tool.run({"log", "--lines", "0"}).output.count('\n'), 0);
    EXPECT_EQ(tool.run({"log", "--lines", "100"}).output.count('\n'), 3);
}

TEST_F(AdminLogTest, TellsProgramsThePartsOfALine)
{
    ZDRLogUserAgent("Hello \"there\"");
    const QJsonObject line = tool.run({"log", "--json"}).json();
    EXPECT_EQ(line["role"], "User Agent");
    EXPECT_EQ(line["message"], "Hello \"there\"");
    EXPECT_EQ(line["process"].toInteger(), QCoreApplication::applicationPid());
    EXPECT_TRUE(line.contains("stamp") && line.contains("parent") && line.contains("user"));
}

TEST_F(AdminLogTest, EscapesWhatCouldSteerATerminal)
{
    // The log does not write it so; whoever may append to the file can.
    ZDRAppendStringToFile("\x1b]0;title\x07\n", tool.root.join("/var/log/dozely.log"));
    EXPECT_THAT(tool.run({"log"}).output.toStdString(), HasSubstr("\\u001b]0;title\\u0007\n"));
}

TEST_F(AdminLogTest, SaysThatThereIsNoLog)
{
    const auto result = tool.run({"log"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors.toStdString(), HasSubstr("There is no log"));
}

TEST_F(AdminLogTest, FollowShowsALineAsItComes)
{
    ZDRLogDaemon("before");
    follow();
    ASSERT_TRUE(shows("before\n"));
    ZDRLogDaemon("after");
    ASSERT_TRUE(shows("after\n"));
    ZDRLogDaemon("later still");
    ASSERT_TRUE(shows("later still\n"));
    EXPECT_EQ(shown.count('\n'), 3);
    EXPECT_EQ(follower.state(), QProcess::Running);
}

TEST_F(AdminLogTest, FollowWaitsForALogThatIsNotThereYet)
{
    follow({"--json"});
    ASSERT_TRUE(follower.waitForStarted());
    ZDRLogDaemon("first line ever");
    ASSERT_TRUE(shows("first line ever"));
    EXPECT_EQ(QJsonDocument::fromJson(shown).object()["role"], "Daemon");
}

TEST_F(AdminLogTest, FollowGoesOnWithTheFileThatTookTheLogsPlace)
{
    ZDRLogDaemon("old");
    follow();
    ASSERT_TRUE(shows("old\n"));
    ASSERT_TRUE(QFile::rename(logPath(), logPath() + ".1"));
    ZDRLogDaemon("new");
    ASSERT_TRUE(shows("new\n"));
    ZDRLogDaemon("newer");
    ASSERT_TRUE(shows("newer\n"));
    EXPECT_EQ(shown.count('\n'), 3);
}

TEST_F(AdminLogTest, FollowEndsOnSigterm)
{
    ZDRLogDaemon("x");
    follow();
    ASSERT_TRUE(shows("x\n"));
    follower.terminate();
    EXPECT_TRUE(waitUntil([&] { return follower.state() == QProcess::NotRunning; }));
}

TEST(LogCommand, TakesALineOfAnotherFormAsItIs)
{
    EXPECT_EQ(LogCommand::parts("Mar 04 09:15:02 somebody says"),
              QVariantMap({{"stamp", "Mar 04 09:15:02"}, {"message", "somebody says"}}));
    EXPECT_EQ(LogCommand::parts("no stamp"), QVariantMap({{"message", "no stamp"}}));
    EXPECT_EQ(LogCommand::parts(""), QVariantMap({{"message", ""}}));
}
