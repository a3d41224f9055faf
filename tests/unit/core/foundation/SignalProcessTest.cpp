// SPDX-License-Identifier: MIT
#include "support/SignalProcess.h"

#include "support/Identity.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace
{
volatile std::sig_atomic_t heard = 0;

/// In a process and a group of its own, which a signal for the whole group would reach.
testing::AssertionResult holdsInAGroup(void (*body)())
{
    const auto leaveForAGroup = [] {
        return ::setpgid(0, 0) == 0 && std::signal(SIGUSR1, [](int) { heard = heard + 1; }) != SIG_ERR;
    };
    return Identity::holdsAs(leaveForAGroup, body);
}
} // namespace

TEST(SignalProcess, ReachesOneProcess)
{
    EXPECT_TRUE(holdsInAGroup([] {
        EXPECT_TRUE(signalProcess(::getpid(), SIGUSR1));
        EXPECT_EQ(heard, 1);
        EXPECT_TRUE(signalProcess(::getpid(), 0));
        EXPECT_EQ(heard, 1);
    }));
}

TEST(SignalProcess, ReachesNoGroupOfProcesses)
{
    EXPECT_TRUE(holdsInAGroup([] {
        EXPECT_FALSE(signalProcess(0, SIGUSR1));
        EXPECT_EQ(errno, ESRCH);
        EXPECT_FALSE(signalProcess(-::getpgrp(), SIGUSR1));
        EXPECT_EQ(heard, 0);
    }));
}
