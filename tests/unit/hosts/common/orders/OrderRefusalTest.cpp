// SPDX-License-Identifier: MIT
#include "hosts/common/orders/OrderRefusal.h"

#include <gtest/gtest.h>

using enum OrderRefusal::Kind;

TEST(OrderRefusal, IsToldByTheNameThatTravels)
{
    for (const auto kind : {NotPermitted, Impossible}) {
        const OrderRefusal refusal(kind, "it is late");
        EXPECT_EQ(OrderRefusal::kindOf(NSException(refusal.name(), refusal.reason())), kind);
        EXPECT_EQ(refusal.reason(), "it is late");
    }
    EXPECT_EQ(OrderRefusal(NotPermitted, {}).name(), "DozelyOrderNotPermittedException");
    EXPECT_EQ(OrderRefusal(Impossible, {}).name(), "DozelyOrderRefusedException");
}

TEST(OrderRefusal, IsNoOtherException)
{
    EXPECT_FALSE(OrderRefusal::kindOf(NSException(NSPortTimeoutException, "it is late")));
}
