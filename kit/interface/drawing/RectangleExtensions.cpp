// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/RectangleExtensions.h"

namespace
{
/// The point at that part of the width, and of the height from the bottom.
QPointF pointAt(const QRectF &rect, double across, double up)
{
    return {rect.x() + rect.width() * across, rect.y() + rect.height() * up};
}
} // namespace

QPointF centerOfRect(QRectF rect)
{
    return pointAt(rect, 0.5, 0.5);
}

QPointF topCenterOfRect(QRectF rect)
{
    return pointAt(rect, 0.5, 1);
}

QPointF topLeftOfRect(QRectF rect)
{
    return pointAt(rect, 0, 1);
}

QPointF topRightOfRect(QRectF rect)
{
    return pointAt(rect, 1, 1);
}

QPointF leftCenterOfRect(QRectF rect)
{
    return pointAt(rect, 0, 0.5);
}

QPointF rightCenterOfRect(QRectF rect)
{
    return pointAt(rect, 1, 0.5);
}

QPointF bottomCenterOfRect(QRectF rect)
{
    return pointAt(rect, 0.5, 0);
}

QPointF bottomLeftOfRect(QRectF rect)
{
    return pointAt(rect, 0, 0);
}

QPointF bottomRightOfRect(QRectF rect)
{
    return pointAt(rect, 1, 0);
}
