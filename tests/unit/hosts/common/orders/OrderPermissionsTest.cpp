// SPDX-License-Identifier: MIT
#include "hosts/common/orders/OrderPermissions.h"

#include <gtest/gtest.h>

using OrderPermissions::UserId;

namespace
{
const UserId unknown;
constexpr quint32 root = 0;
constexpr quint32 alice = 1000;
constexpr quint32 bob = 1001;
} // namespace

TEST(OrderPermissions, AnAgentObeysRootAndTheOwnerOfTheRelocatedRootAlone)
{
    struct Case {
        UserId peer, rootOwner;
        bool mayOrder;
    };
    for (const Case &c :
         {Case{root, root, true}, Case{alice, root, false}, Case{unknown, root, false},
          Case{root, alice, true}, Case{alice, alice, true}, Case{bob, alice, false},
          Case{root, unknown, true}, Case{alice, unknown, false}, Case{unknown, unknown, false}})
        EXPECT_EQ(OrderPermissions::isSystem(c.peer, c.rootOwner), c.mayOrder)
            << c.peer.value_or(-1) << " below a root of " << c.rootOwner.value_or(-1);
}

TEST(OrderPermissions, RunNowIsForTheSystemAndTheSchedulesOwner)
{
    struct Case {
        UserId peer, rootOwner, scheduleOwner;
        bool mayRun;
    };
    for (const Case &c :
         {Case{root, root, alice, true}, Case{alice, root, alice, true}, Case{bob, root, alice, false},
          Case{bob, bob, alice, true}, Case{alice, root, unknown, false}, Case{root, root, unknown, true},
          Case{alice, root, root, false}, Case{unknown, root, alice, false},
          Case{unknown, root, unknown, false}, Case{unknown, unknown, unknown, false}})
        EXPECT_EQ(OrderPermissions::mayRunNow(c.peer, c.rootOwner, c.scheduleOwner), c.mayRun)
            << c.peer.value_or(-1) << " for a schedule of " << c.scheduleOwner.value_or(-1);
}

TEST(OrderPermissions, AnOccurrenceIsHandedBackOnlyByTheUserWhoHasIt)
{
    EXPECT_TRUE(OrderPermissions::mayHandBack(alice, alice));
    EXPECT_FALSE(OrderPermissions::mayHandBack(bob, alice));
    EXPECT_FALSE(OrderPermissions::mayHandBack(root, alice));
    EXPECT_FALSE(OrderPermissions::mayHandBack(alice, unknown));
    EXPECT_FALSE(OrderPermissions::mayHandBack(unknown, alice));
    EXPECT_FALSE(OrderPermissions::mayHandBack(unknown, unknown));
}

TEST(OrderPermissions, AnOccurrenceIsDroppedForTheSystemTheOwnerAndWhoWasAlerted)
{
    struct Case {
        UserId peer, rootOwner, scheduleOwner, alerted;
        bool mayRemove;
    };
    for (const Case &c : {Case{root, root, alice, unknown, true}, Case{alice, root, alice, unknown, true},
                          Case{bob, root, alice, bob, true}, Case{bob, root, alice, unknown, false},
                          Case{bob, root, alice, alice, false}, Case{bob, bob, alice, alice, true},
                          Case{bob, root, unknown, unknown, false}, Case{unknown, root, alice, alice, false},
                          Case{unknown, unknown, unknown, unknown, false}})
        EXPECT_EQ(OrderPermissions::mayRemove(c.peer, c.rootOwner, c.scheduleOwner, c.alerted), c.mayRemove)
            << c.peer.value_or(-1) << " for a schedule of " << c.scheduleOwner.value_or(-1) << ", alerted is "
            << c.alerted.value_or(-1);
}

TEST(OrderPermissions, ATestAlertIsForTheSystemAndTheAgentsUser)
{
    EXPECT_TRUE(OrderPermissions::mayTestAlert(root, root, alice));
    EXPECT_TRUE(OrderPermissions::mayTestAlert(alice, root, alice));
    EXPECT_TRUE(OrderPermissions::mayTestAlert(bob, bob, alice)) << "the owner of a relocated root";
    EXPECT_FALSE(OrderPermissions::mayTestAlert(bob, root, alice));
    EXPECT_FALSE(OrderPermissions::mayTestAlert(unknown, root, alice));
    EXPECT_FALSE(OrderPermissions::mayTestAlert(unknown, unknown, unknown));
}
