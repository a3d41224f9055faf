// SPDX-License-Identifier: MIT
#include "SystemFixture.h"

#include <QDir>

using PublicationTimes = SystemFixture;
using testing::AllOf;
using testing::Ge;
using testing::Le;

// The bounds below leave a loaded machine some room above, and a timer its last millisecond below.

TEST_F(PublicationTimes, AnAgentWithoutTheFolderTriesAgainAfterOneSecond)
{
    const auto agent = startAgent();
    const auto start = HostProcess::Clock::now();
    ASSERT_EQ(agent->ask("publish"), "no");
    root.makeSocketFolder();
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(agentSocket()); }));
    EXPECT_THAT(secondsSince(start), AllOf(Ge(0.99), Le(1.9)));
}

TEST_F(PublicationTimes, AnAgentWhoseFileIsGonePublishesAgainAtItsCheckAfterTenSecondsAndATenth)
{
    root.makeSocketFolder();
    const auto agent = startAgent();
    const auto start = HostProcess::Clock::now();
    ASSERT_EQ(agent->ask("publish"), "yes");
    ASSERT_TRUE(QFile::remove(agentSocket()));
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(agentSocket()); }));
    EXPECT_THAT(secondsSince(start), AllOf(Ge(10.09), Le(10.9)));
}

TEST_F(PublicationTimes, EveryAgentIsReachableWithinTenPointThreeSecondsOfTheDaemonsReturn)
{
    auto daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    ASSERT_EQ(daemon->ask(command("post", "Act")), "yes");

    daemon->killHard();
    daemon = startDaemon();
    ASSERT_EQ(daemon->ask("publish"), "yes");
    const auto start = HostProcess::Clock::now();
    EXPECT_FALSE(QFile::exists(agentSocket())) << "the daemon's start cleared the folder";
    EXPECT_EQ(daemon->ask(command("post", "Act")), "no");
    ASSERT_TRUE(waitUntil([&] { return daemon->ask(command("ping")) == "yes"; }));
    EXPECT_LE(secondsSince(start), 10.3);
    EXPECT_EQ(daemon->ask(command("post", "Act")), "yes");
}
