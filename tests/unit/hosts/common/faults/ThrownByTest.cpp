// SPDX-License-Identifier: MIT
#include "hosts/common/faults/ThrownBy.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

#include <stdexcept>

TEST(ThrownBy, StopsExceptionsOfAnyType)
{
    EXPECT_FALSE(thrownBy([] {}));
    EXPECT_EQ(thrownBy([] { throw std::runtime_error("one\ntwo"); }), "one two");
    EXPECT_EQ(thrownBy([] { throw 7; }), "an exception of an unknown type");
}
