// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QRectF>

#include <utility>

namespace dozely
{

/// Rectangles as the kit means them: an origin and a size in double precision, y growing upwards. A QRectF
/// holds them, of which only x(), y(), width() and height() are used: top() and bottom() would say the
/// opposite.
///
/// Within a view, y changes its direction in NSGraphicsContext; on the screen, in ScreenCoordinates.
namespace Geometry
{
/// Cuts a column of that width off the left; columns are never wider than the rectangle. The column and the
/// rest.
DOZELYINTERFACE_AUTOTEST_EXPORT std::pair<QRectF, QRectF> dividedAtMinX(const QRectF &rect, double width);

/// Inset on every side; a size may become negative.
DOZELYINTERFACE_AUTOTEST_EXPORT QRectF inset(const QRectF &rect, double by);
} // namespace Geometry

} // namespace dozely
