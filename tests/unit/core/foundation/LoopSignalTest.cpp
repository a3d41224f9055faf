// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/LoopSignal.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>

using namespace dozely;

TEST(LoopSignal, TellsOfEachOfItsSignalsInTheEventLoop)
{
    int told = 0;
    const LoopSignal signal({SIGTERM, SIGINT}, [&] { ++told; });
    ASSERT_EQ(std::raise(SIGTERM), 0);
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(waitUntil([&] { return told == 1; }));
    ASSERT_EQ(std::raise(SIGINT), 0);
    EXPECT_TRUE(waitUntil([&] { return told == 2; }));
}

TEST(LoopSignal, TellsOnceOfSignalsThatCameTogetherAndAgainOfALaterOne)
{
    int told = 0;
    const LoopSignal signal({SIGTERM}, [&] {
        if (++told == 1)
            std::raise(SIGTERM); // while it is told of the first ones
    });
    std::raise(SIGTERM);
    std::raise(SIGTERM);
    EXPECT_TRUE(waitUntil([&] { return told == 2; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 2);
}

TEST(LoopSignal, KeepsSignalsOfDifferentObjectsApart)
{
    int terminated = 0;
    int interrupted = 0;
    const LoopSignal termination({SIGTERM}, [&] { ++terminated; });
    const LoopSignal interruption({SIGINT}, [&] { ++interrupted; });
    std::raise(SIGTERM);
    EXPECT_TRUE(waitUntil([&] { return terminated == 1; }));
    EXPECT_EQ(interrupted, 0);
    std::raise(SIGINT);
    EXPECT_TRUE(waitUntil([&] { return interrupted == 1; }));
    EXPECT_EQ(terminated, 1);
}

TEST(LoopSignal, GivesTheFormerHandlersBack)
{
    const auto former = std::signal(SIGTERM, SIG_IGN);
    {
        const LoopSignal signal({SIGTERM}, [] {});
    }
    EXPECT_EQ(std::signal(SIGTERM, former), SIG_IGN);
}

TEST(LoopSignal, GivesASignalBackToTheObjectThatHadItBefore)
{
    int outer = 0;
    int inner = 0;
    const LoopSignal first({SIGTERM}, [&] { ++outer; });
    {
        const LoopSignal second({SIGTERM}, [&] { ++inner; });
        std::raise(SIGTERM);
        EXPECT_TRUE(waitUntil([&] { return inner == 1; }));
    }
    std::raise(SIGTERM);
    EXPECT_TRUE(waitUntil([&] { return outer == 1; }));
    EXPECT_EQ(inner, 1);
}

TEST(LoopSignal, OutlivesWhatItsHandlerThrows)
{
    int told = 0;
    const LoopSignal signal({SIGTERM}, [&] {
        ++told;
        throw std::runtime_error("no");
    });
    std::raise(SIGTERM);
    EXPECT_TRUE(waitUntil([&] { return told == 1; }));
    std::raise(SIGTERM);
    EXPECT_TRUE(waitUntil([&] { return told == 2; }));
}
