// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/Shading.h"

namespace
{
constexpr int components = 4;
constexpr int firstDifference = 2 * components; // behind the two colours
} // namespace

void linearShadedColor(void *info, const double *input, double *output)
{
    const auto *block = static_cast<const float *>(info);
    for (int i = 0; i < components; ++i)
        output[i] = static_cast<double>(block[i]) + static_cast<double>(block[firstDifference + i]) * *input;
}

void bilinearShadedColor(void *info, const double *input, double *output)
{
    const auto *block = static_cast<const float *>(info);
    auto part = static_cast<float>(2 * *input);
    if (*input > 0.5)
        part = 2.0F - part;
    for (int i = 0; i < components; ++i) {
        const float component = block[i] + block[firstDifference + i] * part;
        output[i] = component;
    }
}
