// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/Geometry_p.h"

#include <algorithm>

namespace dozely
{

std::pair<QRectF, QRectF> Geometry::dividedAtMinX(const QRectF &rect, double width)
{
    const double cut = std::clamp(width, 0.0, std::max(rect.width(), 0.0));
    return {QRectF(rect.x(), rect.y(), cut, rect.height()),
            QRectF(rect.x() + cut, rect.y(), rect.width() - cut, rect.height())};
}

QRectF Geometry::inset(const QRectF &rect, double by)
{
    return {rect.x() + by, rect.y() + by, rect.width() - 2 * by, rect.height() - 2 * by};
}

} // namespace dozely
