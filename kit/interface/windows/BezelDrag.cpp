// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/BezelDrag_p.h"

#include <algorithm>
#include <limits>

namespace dozely
{

namespace
{
constexpr double gripSize = 10;
constexpr int leastSize = 20;
constexpr double menuBarHeight = 22;

/// Towards zero. What no integer holds becomes the nearest one; not a number becomes 0.
int truncated(double value)
{
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    return value == value ? static_cast<int>(std::clamp(value, least, most)) : 0;
}
} // namespace

BezelDrag::Type BezelDrag::typeOfPress(const QRectF &windowFrame, const QPointF &pointer)
{
    const double left = windowFrame.x() + windowFrame.width() - gripSize;
    const double lower = windowFrame.y();
    // A pointer on the lower or right edge itself is outside: pixels lie above and to the right of their
    // numbers' lines, the pointer at their upper left.
    const bool inGrip = pointer.x() >= left && pointer.x() < left + gripSize && pointer.y() > lower &&
                        pointer.y() <= lower + gripSize;
    return inGrip ? Resize : Move;
}

QRectF BezelDrag::frameDuringDrag(Type type, const QRectF &windowFrame, const QPointF &pressed,
                                  const QPointF &pointer, double mainScreenHeight)
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    if (type == Resize) {
        x = truncated(windowFrame.x());
        width = std::max(truncated(windowFrame.width() + (pointer.x() - pressed.x())), leastSize);
        const int wanted = truncated(windowFrame.height() + (pressed.y() - pointer.y()));
        y = truncated(windowFrame.y() + (pointer.y() - pressed.y()));
        height = std::max(wanted, leastSize);
        if (height != wanted)
            y = truncated(static_cast<double>(wanted) + y - height); // the upper edge stays in place
    } else {
        width = truncated(windowFrame.width());
        height = truncated(windowFrame.height());
        x = truncated(pointer.x() - pressed.x() + windowFrame.x());
        y = truncated(windowFrame.y() - (pressed.y() - pointer.y()));
    }
    const double limit = mainScreenHeight - menuBarHeight;
    if (static_cast<double>(y) + height > limit)
        y = truncated(limit - height);
    return QRectF(x, y, width, height);
}

} // namespace dozely
