// SPDX-License-Identifier: MIT
#include "SystemFixture.h"

#include <QDir>

#include <sys/stat.h>

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

TEST_F(PublicationTimes, AnAgentWhoseFileIsGonePublishesAgainATenthOfASecondAfterTheFolderToldIt)
{
    root.makeSocketFolder();
    const auto agent = startAgent();
    ASSERT_EQ(agent->ask("publish"), "yes");
    ASSERT_TRUE(QFile::remove(agentSocket()));
    const auto start = HostProcess::Clock::now();
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(agentSocket()); }));
    EXPECT_THAT(secondsSince(start), AllOf(Ge(0.09), Le(0.9)));
}

TEST_F(PublicationTimes, AnAgentThatCannotBeReachedPublishesAgainAtItsCheckAfterTenSecondsAndATenth)
{
    root.makeSocketFolder();
    const auto agent = startAgent();
    const auto start = HostProcess::Clock::now();
    ASSERT_EQ(agent->ask("publish"), "yes");
    // The folder has nothing to tell: the file stays, but nobody may connect.
    ASSERT_EQ(::chmod(QFile::encodeName(agentSocket()).constData(), 0), 0);
    const auto isOpen = [this] { return QFile(agentSocket()).permissions().testFlag(QFile::WriteOther); };
    ASSERT_FALSE(isOpen());
    ASSERT_TRUE(waitUntil(isOpen));
    EXPECT_THAT(secondsSince(start), AllOf(Ge(10.09), Le(10.9)));
}

TEST_F(PublicationTimes, EveryAgentIsReachableWithinASecondOrTwoOfTheDaemonsReturn)
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
    ASSERT_TRUE(waitUntil([&] { return daemon->ask(command("ping")) == "yes"; }));
    EXPECT_LE(secondsSince(start), 1.9);
    EXPECT_EQ(daemon->ask(command("post", "Act")), "yes");
}
