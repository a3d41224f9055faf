// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/Result.h"

#include <gtest/gtest.h>

#include <memory>

using namespace dozely;

namespace
{
Result<int> half(int number)
{
    if (number % 2 != 0)
        return Error{"it is odd", "com.dozely.Odd"};
    return number / 2;
}

Result<void> mustBeEven(int number)
{
    const Result<int> result = half(number);
    if (!result)
        return result.error();
    return {};
}
} // namespace

TEST(Result, HoldsTheValueOfASuccess)
{
    const Result<int> result = half(8);
    ASSERT_TRUE(result.ok());
    EXPECT_TRUE(result);
    EXPECT_EQ(*result, 4);
    EXPECT_THROW(static_cast<void>(result.error()), std::bad_variant_access);
}

TEST(Result, HoldsTheReasonOfAFailure)
{
    const Result<int> result = half(7);
    ASSERT_FALSE(result.ok());
    EXPECT_FALSE(result);
    EXPECT_EQ(result.error().text, QString("it is odd"));
    EXPECT_EQ(result.error().name, QByteArray("com.dozely.Odd"));
    EXPECT_THROW(static_cast<void>(result.value()), std::bad_variant_access);
}

TEST(Result, OfNothingIsASuccessUnlessAnErrorIsGiven)
{
    EXPECT_TRUE(mustBeEven(2));
    EXPECT_FALSE(mustBeEven(3));
    EXPECT_EQ(mustBeEven(3).error().text, QString("it is odd"));
    EXPECT_THROW(static_cast<void>(mustBeEven(2).error()), std::bad_optional_access);
}

TEST(Result, GivesAwayAValueThatCannotBeCopied)
{
    Result<std::unique_ptr<int>> result = std::make_unique<int>(5);
    EXPECT_EQ(**result, 5);
    const std::unique_ptr<int> taken = *std::move(result);
    EXPECT_EQ(*taken, 5);
}
