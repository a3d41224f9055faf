// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

using dozely::Descriptor;

namespace
{
bool isOpen(int number)
{
    return ::fcntl(number, F_GETFD) >= 0;
}

Descriptor opened()
{
    return Descriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC));
}
} // namespace

TEST(Descriptor, IsClosedAtItsEndAndWhenAnotherTakesItsPlace)
{
    int first = -1;
    int second = -1;
    {
        Descriptor descriptor = opened();
        first = descriptor.get();
        ASSERT_TRUE(isOpen(first));
        Descriptor other = opened();
        second = other.release();
        EXPECT_FALSE(other.isValid());
        descriptor.reset(second);
        EXPECT_FALSE(isOpen(first));
        EXPECT_TRUE(isOpen(second));
    }
    EXPECT_FALSE(isOpen(second));
}

TEST(Descriptor, ThatWasMovedFromOwnsNothing)
{
    Descriptor descriptor = opened();
    const int number = descriptor.get();
    {
        const Descriptor taken(std::move(descriptor));
        EXPECT_EQ(taken.get(), number);
    }
    EXPECT_FALSE(isOpen(number));
    EXPECT_FALSE(Descriptor().isValid());
}

TEST(Descriptor, OfStandardInputIsClosedLikeAnother)
{
    const Descriptor kept(::dup(STDIN_FILENO));
    ::close(STDIN_FILENO);
    {
        const Descriptor lowest = opened();
        EXPECT_EQ(lowest.get(), STDIN_FILENO);
        EXPECT_TRUE(lowest.isValid());
    }
    EXPECT_FALSE(isOpen(STDIN_FILENO));
    if (kept.isValid())
        ::dup2(kept.get(), STDIN_FILENO);
}
