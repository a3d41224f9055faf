// SPDX-License-Identifier: MIT
#include "hosts/agent/QuietMoment.h"

#include "support/FakeClock.h"

#include <QStringList>

#include <gtest/gtest.h>

using namespace dozely;
using namespace std::chrono_literals;

TEST(QuietMoment, IsWaitedForOnceMoreByWhateverHappensMeanwhile)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    QStringList done;
    QuietMoment quiet;
    quiet.wait([&] { done += "first"; });
    clock->advance(1s);
    quiet.wait([&] { done += "second"; });
    clock->advance(1s);
    EXPECT_EQ(done, QStringList());
    clock->advance(1s);
    EXPECT_EQ(done, QStringList("second"));
    clock->advance(1h);
    EXPECT_EQ(done, QStringList("second"));
}
