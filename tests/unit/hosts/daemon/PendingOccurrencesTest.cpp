// SPDX-License-Identifier: MIT
#include "hosts/daemon/PendingOccurrences.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

using Item = PendingOccurrences::Item;

namespace
{
constexpr Item first{1000, 7, 1000};
constexpr Item earlierInTheStore{2000, 1, 2000};
constexpr Item laterInTheStore{2000, 2, 2000};
constexpr Item postponed{2000, 3, 500};

PendingOccurrences four()
{
    PendingOccurrences pending;
    for (const Item &item : {postponed, laterInTheStore, first, earlierInTheStore})
        pending.insert(item, false);
    return pending;
}
} // namespace

TEST(PendingOccurrences, StandInTheOrderOfTheirMomentsAndThenOfTheStore)
{
    EXPECT_THAT(four().between(0, 2000), ElementsAre(first, earlierInTheStore, laterInTheStore, postponed));
    EXPECT_THAT(four().between(1000, 1999), IsEmpty());
    EXPECT_THAT(four().between(3000, 0), IsEmpty()) << "a doubted clock may be ahead of now";
    EXPECT_THAT(four().at(2000), ElementsAre(earlierInTheStore, laterInTheStore, postponed));
    EXPECT_EQ(four().nextAfter(0), 1000);
    EXPECT_EQ(four().nextAfter(1000), 2000);
    EXPECT_FALSE(four().nextAfter(2000));
}

TEST(PendingOccurrences, WhatIsHeldBackIsNotNextButStillToCome)
{
    PendingOccurrences pending = four();
    pending.hold(first, true);
    EXPECT_EQ(pending.nextAfter(0), 2000);
    EXPECT_THAT(pending.between(0, 1000), IsEmpty());
    EXPECT_THAT(pending.at(1000), ElementsAre(first));
    EXPECT_TRUE(pending.contains(first));
    pending.hold(first, false);
    EXPECT_EQ(pending.nextAfter(0), 1000);
    pending.hold({9000, 9, 9000}, true);
    EXPECT_FALSE(pending.contains({9000, 9, 9000})) << "holding back makes nothing come";
}

TEST(PendingOccurrences, WhatIsRemovedIsGoneHeldBackOrNot)
{
    PendingOccurrences pending = four();
    pending.hold(first, true);
    pending.remove(first);
    pending.remove(postponed);
    EXPECT_FALSE(pending.contains(first));
    EXPECT_THAT(pending.between(0, 9000), ElementsAre(earlierInTheStore, laterInTheStore));
}
