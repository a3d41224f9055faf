// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QFont>

/// The fonts of the platform. Sizes are device-independent pixels. THREADING: the main thread.
class DOZELYINTERFACE_EXPORT NSFont
{
public:
    NSFont() = delete;

    /// smallSystemFontSize where nobody has made fonts larger.
    static constexpr double usualSmallSystemFontSize = 11;

    /// 11 beside an application font of up to 13, larger in proportion beside a larger one.
    static double smallSystemFontSize();

    /// The user's font, which is the application's, upright and of normal weight, at that size.
    static QFont userFontOfSize(double size);
};
