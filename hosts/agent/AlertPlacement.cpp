// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertPlacement.h"

#include <algorithm>

namespace
{
constexpr int gap = AlertPlace::gap;
constexpr int partOfMiddle = 10; // of width and height

/// What no alert covers.
QRect middleOf(const QRect &area)
{
    QRect middle(QPoint(), QSize(area.width() / partOfMiddle, area.height() / partOfMiddle));
    middle.moveCenter(area.center());
    return middle;
}

bool isFree(const QRect &place, const QRect &area)
{
    return area.contains(place) && !place.intersects(middleOf(area));
}

int within(int value, int least, int most)
{
    return std::clamp(value, least, std::max(least, most));
}

/// The window at that place, moved into the area where it would leave it.
QRect windowAt(const AlertPlace &place, const QSize &size, const QRect &area)
{
    const int left =
        place.isAtRight ? area.right() + 1 - place.fromSide - size.width() : area.x() + place.fromSide;
    const int top =
        place.isAtBottom ? area.bottom() + 1 - place.fromEdge - size.height() : area.y() + place.fromEdge;
    return {QPoint(within(left, area.x(), area.right() + 1 - size.width()),
                   within(top, area.y(), area.bottom() + 1 - size.height())),
            size};
}
} // namespace

QRect AlertPlacement::cornerFor(const QSize &size, const QRect &area, const AlertPlace &place)
{
    return windowAt({.isAtRight = place.isAtRight}, size, area);
}

std::optional<QRect> AlertPlacement::placeFor(const QSize &size, const QRect &area, const QList<QRect> &taken,
                                              const AlertPlace &place)
{
    QRect first = windowAt(place, size, area);
    bool goesUp = place.isAtBottom;
    if (!isFree(first, area)) {
        first = cornerFor(size, area, place);
        goesUp = false;
    }
    const int column = place.isAtRight ? -(size.width() + gap) : size.width() + gap;
    for (QRect beside = first; isFree(beside, area); beside.translate(column, 0)) {
        for (QRect row = beside; isFree(row, area);) {
            const auto covered =
                std::ranges::find_if(taken, [&row](const QRect &window) { return window.intersects(row); });
            if (covered == taken.end())
                return row;
            if (goesUp)
                row.moveBottom(covered->y() - 1 - gap);
            else
                row.moveTop(covered->y() + covered->height() + gap);
        }
    }
    return {};
}

AlertPlace AlertPlacement::placeOf(const QRect &window, const QRect &area)
{
    const int fromLeft = window.x() - area.x();
    const int fromRight = area.right() - window.right();
    const int fromTop = window.y() - area.y();
    const int fromBottom = area.bottom() - window.bottom();
    return {.isAtRight = fromRight < fromLeft,
            .isAtBottom = fromBottom < fromTop,
            .fromSide = std::max(0, std::min(fromLeft, fromRight)),
            .fromEdge = std::max(0, std::min(fromTop, fromBottom))};
}
