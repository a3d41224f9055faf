// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DescriptorWatch.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <array>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace dozely;

using namespace std::chrono_literals;
using std::chrono::steady_clock;

namespace
{
/// Two connected sockets, and a watch for one of them.
class DescriptorWatchTest : public testing::Test
{
protected:
    DescriptorWatchTest()
    {
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends.data()), 0);
        watch = std::make_unique<DescriptorWatch>([this] {
            ++woken;
            if (onWake)
                onWake();
        });
    }
    ~DescriptorWatchTest() override
    {
        watch.reset();
        ::close(ends[0]);
        ::close(ends[1]);
    }

    void write() const { ASSERT_EQ(::write(ends[1], "x", 1), 1); }
    void read() const
    {
        char byte = 0;
        ASSERT_EQ(::read(ends[0], &byte, 1), 1);
    }

    /// All that the loop has to say just now.
    static void turnLoop()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }

    std::array<int, 2> ends{-1, -1};
    int woken = 0;
    std::function<void()> onWake;
    std::unique_ptr<DescriptorWatch> watch;
};
} // namespace

TEST_F(DescriptorWatchTest, WakesWhenThereIsSomethingToReadAndOnlyThen)
{
    watch->watch(ends[0], POLLIN);
    turnLoop();
    EXPECT_EQ(woken, 0);
    onWake = [this] { read(); };
    write();
    EXPECT_EQ(woken, 0) << "not before the loop turns";
    EXPECT_TRUE(waitUntil([&] { return woken == 1; }));
    turnLoop();
    EXPECT_EQ(woken, 1);
}

TEST_F(DescriptorWatchTest, WakesForWritingOnlyWhileThatIsWanted)
{
    watch->watch(ends[0], POLLIN);
    turnLoop();
    EXPECT_EQ(woken, 0);
    onWake = [this] { watch->watch(ends[0], POLLIN); };
    watch->watch(ends[0], POLLIN | POLLOUT);
    EXPECT_TRUE(waitUntil([&] { return woken == 1; }));
    turnLoop();
    EXPECT_EQ(woken, 1);
}

TEST_F(DescriptorWatchTest, LooksAtNothingWhenNothingIsWanted)
{
    write();
    watch->watch(ends[0], POLLIN);
    watch->watch(ends[0], 0);
    turnLoop();
    EXPECT_EQ(woken, 0);
    watch->watch(-1, POLLIN);
    turnLoop();
    EXPECT_EQ(woken, 0);
    watch->watch(ends[0], POLLIN);
    EXPECT_TRUE(waitUntil([&] { return woken > 0; }));
}

TEST_F(DescriptorWatchTest, FollowsToAnotherDescriptor)
{
    watch->watch(ends[1], POLLIN);
    watch->watch(ends[0], POLLIN);
    onWake = [this] { read(); };
    ASSERT_EQ(::write(ends[0], "y", 1), 1); // for the former one
    turnLoop();
    EXPECT_EQ(woken, 0);
    write();
    EXPECT_TRUE(waitUntil([&] { return woken == 1; }));
}

TEST_F(DescriptorWatchTest, WakesOnceAtItsDeadlineAndNotBefore)
{
    const auto deadline = steady_clock::now() + 30ms;
    watch->setDeadline(deadline);
    EXPECT_TRUE(waitUntil([&] { return woken == 1; }));
    EXPECT_GE(steady_clock::now(), deadline);
    turnLoop();
    EXPECT_EQ(woken, 1);
}

TEST_F(DescriptorWatchTest, WakesAtTheLatestDeadlineThatItWasGiven)
{
    const auto later = steady_clock::now() + 40ms;
    watch->setDeadline(steady_clock::now() + 10ms);
    watch->setDeadline(later);
    EXPECT_TRUE(waitUntil([&] { return woken == 1; }));
    EXPECT_GE(steady_clock::now(), later);

    watch->setDeadline(steady_clock::now() + 1h);
    watch->setDeadline(DescriptorWatch::Moment::min()); // long passed
    EXPECT_EQ(woken, 1) << "not before the loop turns";
    EXPECT_TRUE(waitUntil([&] { return woken == 2; }));
}

TEST_F(DescriptorWatchTest, ForgetsADeadlineThatWasTakenBack)
{
    bool isLater = false;
    DescriptorWatch later([&] { isLater = true; });
    watch->setDeadline(steady_clock::now() + 10ms);
    watch->setDeadline(std::nullopt);
    later.setDeadline(steady_clock::now() + 30ms);
    EXPECT_TRUE(waitUntil([&] { return isLater; }));
    EXPECT_EQ(woken, 0);
}

TEST_F(DescriptorWatchTest, MayBeDestroyedFromWithinItsOwnCall)
{
    onWake = [this] { watch.reset(); };
    watch->watch(ends[0], POLLIN | POLLOUT);
    write(); // both are there at once
    EXPECT_TRUE(waitUntil([&] { return !watch; }));
    turnLoop();
    EXPECT_EQ(woken, 1);

    watch = std::make_unique<DescriptorWatch>([this] { watch.reset(); });
    watch->setDeadline(steady_clock::now());
    EXPECT_TRUE(waitUntil([&] { return !watch; }));
}
