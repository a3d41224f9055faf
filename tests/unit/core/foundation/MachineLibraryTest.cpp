// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/linux/MachineLibrary_p.h"

#include <gtest/gtest.h>

using namespace dozely;

TEST(MachineLibrary, GivesWhatTheLibraryCallsByThatName)
{
    double (*cosine)(double) = nullptr;
    ASSERT_TRUE(MachineLibrary("libm.so.6").find(cosine, "cos"));
    EXPECT_EQ(cosine(0), 1);
}

TEST(MachineLibrary, HasNothingThatTheLibraryDoesNotHave)
{
    double (*function)(double) = [](double number) { return number; };
    EXPECT_FALSE(MachineLibrary("libm.so.6").find(function, "no such function"));
    EXPECT_EQ(function, nullptr);
}

TEST(MachineLibrary, HasNothingWhenTheMachineHasNotTheLibrary)
{
    double (*function)(double) = nullptr;
    EXPECT_FALSE(MachineLibrary("libno-such-library.so.1").find(function, "cos"));
}
