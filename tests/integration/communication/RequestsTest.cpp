// SPDX-License-Identifier: MIT
#include "SystemFixture.h"

#include "support/SignalProcess.h"

#include <csignal>

using RequestsBetweenProcesses = SystemFixture;
using testing::AllOf;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;

namespace
{
double seconds(HostProcess::Clock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}
} // namespace

TEST_F(RequestsBetweenProcesses, ReachDaemonAgentAndApplication)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    const auto application = start("Dozely", QString::number(user));
    ASSERT_EQ(application->ask("publish"), "yes");

    EXPECT_EQ(daemon->ask(command("ping")), "yes");
    EXPECT_EQ(daemon->ask(QStringLiteral("ping app %1").arg(user)), "yes");
    EXPECT_EQ(agent->ask("ping daemon"), "yes");
    EXPECT_EQ(application->ask(command("ping")), "yes");
    EXPECT_EQ(application->ask("ping daemon"), "yes");

    EXPECT_EQ(daemon->ask(command("post", "Act")), "yes");
    EXPECT_TRUE(agent->hears("Act"));
    EXPECT_EQ(agent->ask("post daemon 0 Act"), "yes");
    EXPECT_TRUE(daemon->hears("Act"));
    EXPECT_EQ(daemon->ask(QStringLiteral("post app %1 Act").arg(user)), "yes");
    EXPECT_TRUE(application->hears("Act"));
}

TEST_F(RequestsBetweenProcesses, FailAtOnceWithoutALineWhenNobodyRuns)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    EXPECT_EQ(daemon->ask(command("ping")), "no");
    EXPECT_EQ(daemon->ask(command("post", "Act")), "no");
    EXPECT_LE(seconds(daemon->elapsed()), 4.0);
    EXPECT_EQ(root.logLines().filter("Could NOT").size(), 0);
}

TEST_F(RequestsBetweenProcesses, SucceedAtOnceAfterTheAgentWasKilledAndStartedAgain)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    ASSERT_EQ(daemon->ask(command("post", "Act")), "yes");

    agent->killHard();
    EXPECT_EQ(daemon->ask(command("post", "Act")), "no") << "its socket file is there, nobody behind it";
    agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    EXPECT_EQ(daemon->ask(command("post", "Act")), "yes");
    EXPECT_TRUE(agent->hears("Act"));
}

TEST_F(RequestsBetweenProcesses, FailWhileTheDaemonIsAwayAndSucceedWhenItIsBack)
{
    auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("ping daemon"), "yes");
    daemon->killHard();
    EXPECT_EQ(agent->ask("ping daemon"), "no");
    EXPECT_EQ(agent->ask("post daemon 0 Act"), "no");
    daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    EXPECT_EQ(agent->ask("post daemon 0 Act"), "yes");
}

TEST_F(RequestsBetweenProcesses, RaiseAfterAReplyTimeOutOfFiveSecondsAndLeaveTheLockTaken)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");

    EXPECT_EQ(daemon->ask(command("post", "Hang")), "raised NSPortTimeoutException");
    EXPECT_THAT(seconds(daemon->elapsed()), AllOf(Ge(4.99), Le(9.9)));
    EXPECT_TRUE(agent->hears("Hang"));

    agent->killHard();
    agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    EXPECT_EQ(daemon->ask(command("post", "Act")), "no") << "the lock is taken still";
    EXPECT_THAT(seconds(daemon->elapsed()), AllOf(Ge(4.99), Le(9.9)));
    daemon->ask(command("unlock"));
    EXPECT_EQ(daemon->ask(command("post", "Act")), "yes");
}

TEST_F(RequestsBetweenProcesses, RaiseAtOnceWhenTheTargetDiesInTheMiddleAndLeaveTheLockTaken)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    EXPECT_EQ(daemon->ask(command("post", "Die")), "raised NSInvalidSendPortException");
    EXPECT_LE(seconds(daemon->elapsed()), 4.0);
    EXPECT_EQ(daemon->ask(command("ping")), "no");
    EXPECT_THAT(seconds(daemon->elapsed()), AllOf(Ge(4.99), Le(9.9))) << "it waited for the lock";
}

TEST_F(RequestsBetweenProcesses, ToAStoppedProcessAreGivenUpAfterTheRequestTimeOut)
{
    const auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    ASSERT_TRUE(signalProcess(agent->processId(), SIGSTOP));
    EXPECT_EQ(daemon->ask(command("ping")), "no");
    EXPECT_THAT(seconds(daemon->elapsed()), AllOf(Ge(4.99), Le(9.9)));
    ASSERT_TRUE(signalProcess(agent->processId(), SIGCONT));
    EXPECT_EQ(daemon->ask(command("ping")), "yes") << "a ping gives its lock back";
}
