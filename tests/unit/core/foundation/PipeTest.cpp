// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Pipe.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace dozely;

TEST(Pipe, BringsBytesFromOneEndToTheOtherAndToNoOtherProgram)
{
    auto pipe = Pipe::make();
    ASSERT_TRUE(pipe);
    EXPECT_EQ(::write(pipe->writeEnd.get(), "x", 1), 1);
    pipe->writeEnd.reset();
    char bytes[2];
    EXPECT_EQ(::read(pipe->readEnd.get(), bytes, sizeof bytes), 1);
    EXPECT_EQ(::read(pipe->readEnd.get(), bytes, sizeof bytes), 0) << "the other end is closed";
    EXPECT_EQ(::fcntl(pipe->readEnd.get(), F_GETFD), FD_CLOEXEC);
}

TEST(Pipe, SaysThatNoDescriptorIsLeft)
{
    rlimit former{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &former), 0);
    const rlimit none{0, former.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const auto pipe = Pipe::make();
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &former), 0);
    ASSERT_FALSE(pipe);
    EXPECT_EQ(pipe.error().name, "pipe2");
    EXPECT_EQ(pipe.error().text, "Too many open files");
}
