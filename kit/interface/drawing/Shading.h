// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

/// The functions behind a vertical fill (BezierPathExtensions.h): what colour it has at which height.
///
/// An evaluate function gets the shading block as `info`, twelve single-precision numbers: red, green, blue
/// and alpha of the first colour, those of the second one, then the four differences second - first. `input`
/// points to one number from 0 (the bottom of the path's bounds) to 1 (their top), `output` to four numbers
/// to be set: red, green, blue, alpha. It is called once for each row of device pixels, on the thread that
/// draws.
using CGFunctionEvaluateCallback = void (*)(void *info, const double *input, double *output);
using CGFunctionReleaseInfoCallback = void (*)(void *info);

/// The functions of one kind of shading.
struct CGFunctionCallbacks {
    unsigned int version = 0; ///< 0.
    CGFunctionEvaluateCallback evaluate = nullptr;
    CGFunctionReleaseInfoCallback releaseInfo =
        nullptr; ///< Called with the shading block after drawing; may be null.
};

extern "C" {
/// first + difference * t, in double precision.
DOZELYINTERFACE_EXPORT void linearShadedColor(void *info, const double *input, double *output);

/// Up to t = 0.5 from the first colour to the second, from there back, in single precision.
DOZELYINTERFACE_EXPORT void bilinearShadedColor(void *info, const double *input, double *output);
}
