// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertPlacement.h"

#include <algorithm>

namespace
{
constexpr int gap = 16;

/// Whether windows at that place can be seen whole, and gaps around them.
bool fits(const QRect &place, const QRect &area)
{
    return area.adjusted(gap, gap, -gap, -gap).contains(place);
}
} // namespace

QRect AlertPlacement::placeFor(const QSize &size, const QRect &area, const QList<QRect> &taken,
                               Qt::LayoutDirection direction)
{
    const int column = size.width() + gap;
    const QRect first(QPoint(area.center().x() - size.width() / 2, area.y() + area.height() / 4), size);
    for (QRect place = first; fits(place, area);
         place.translate(direction == Qt::LeftToRight ? column : -column, 0)) {
        for (QRect row = place; fits(row, area);) {
            const auto covered =
                std::ranges::find_if(taken, [&row](const QRect &window) { return window.intersects(row); });
            if (covered == taken.end())
                return row;
            row.moveTop(covered->y() + covered->height() + gap);
        }
    }
    return first;
}
