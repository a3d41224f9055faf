// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/Shading.h"

#include <gtest/gtest.h>

#include <array>

namespace
{
using Block = std::array<float, 12>;

Block block(std::array<float, 4> first, std::array<float, 4> second)
{
    Block all{};
    for (size_t i = 0; i < 4; ++i) {
        all[i] = first[i];
        all[4 + i] = second[i];
        all[8 + i] = second[i] - first[i];
    }
    return all;
}

std::array<double, 4> at(CGFunctionEvaluateCallback evaluate, Block info, double t)
{
    std::array<double, 4> output{-1, -1, -1, -1};
    evaluate(info.data(), &t, output.data());
    return output;
}

const Block colours = block({0.1F, 0.9F, 0.3F, 0.25F}, {0.7F, 0.2F, 0.3F, 1.0F});

TEST(Shading, LinearGoesFromTheFirstColourToTheSecondInDoublePrecision)
{
    for (const double t : {0.0, 0.1, 1.0 / 3, 0.5, 0.999, 1.0}) {
        const auto output = at(linearShadedColor, colours, t);
        for (size_t i = 0; i < 4; ++i)
            EXPECT_EQ(output[i], double{colours[i]} + double{colours[8 + i]} * t) << t << ' ' << i;
    }
}

TEST(Shading, LinearKeepsWhatSinglePrecisionWouldLose)
{
    const double t = 1.0 / 3;
    const auto output = at(linearShadedColor, colours, t);
    EXPECT_NE(output[0], double{static_cast<float>(output[0])});
    EXPECT_NE(output[0], double{colours[0] + colours[8] * static_cast<float>(t)});
}

TEST(Shading, BilinearGoesToTheSecondColourAndBackInSinglePrecision)
{
    for (const double t : {0.1, 1.0 / 3, 0.499}) {
        const auto output = at(bilinearShadedColor, colours, t);
        const auto s = static_cast<float>(2 * t);
        for (size_t i = 0; i < 4; ++i) {
            const volatile float product = colours[8 + i] * s; // rounded on its own
            EXPECT_EQ(output[i], double{colours[i] + product}) << t << ' ' << i;
        }
    }
    for (const double t : {0.501, 2.0 / 3, 0.9}) {
        const auto output = at(bilinearShadedColor, colours, t);
        const float s = 2.0F - static_cast<float>(2 * t);
        for (size_t i = 0; i < 4; ++i) {
            const volatile float product = colours[8 + i] * s;
            EXPECT_EQ(output[i], double{colours[i] + product}) << t << ' ' << i;
        }
    }
}

TEST(Shading, BilinearHasTheFirstColourAtBothEndsAndExactlyTheSecondInTheMiddle)
{
    const Block exact = block({0, 0.25F, 1, 0.5F}, {1, 0.75F, 0, 1});
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(at(bilinearShadedColor, exact, 0)[i], exact[i]);
        EXPECT_EQ(at(bilinearShadedColor, exact, 0.5)[i], exact[4 + i]);
        EXPECT_EQ(at(bilinearShadedColor, exact, 1)[i], exact[i]);
    }
}

TEST(Shading, TheSecondColourItselfIsNotRead)
{
    Block changed = colours;
    for (size_t i = 4; i < 8; ++i)
        changed[i] = 99;
    EXPECT_EQ(at(linearShadedColor, changed, 0.3), at(linearShadedColor, colours, 0.3));
    EXPECT_EQ(at(bilinearShadedColor, changed, 0.7), at(bilinearShadedColor, colours, 0.7));
}
} // namespace
