// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

/// What is painted below the content of a control that has a layer.
struct ZDRLayer {
    QColor backgroundColor; ///< Invalid: nothing is painted.
    QColor borderColor;     ///< Invalid or clear: no border.
    /// In points, inside the control's bounds; painted in whole pixels, at least one.
    double borderWidth = 0;
    double cornerRadius = 0;
    bool masksToBounds = false; ///< Whether content is cut off at the round corners.
};
