// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QPointF>
#include <QRectF>

namespace dozely
{

/// The one place where screen coordinates change their direction.
///
/// The kit's have their origin at the lower left corner of the main screen and y growing upwards; Qt's have y
/// growing downwards, from the upper left corner of the virtual desktop. Both are in device-independent
/// pixels, so that a fractional scale concerns nobody here. Without a screen the origin of Qt's stands for
/// the corner.
///
/// THREADING: the main thread.
namespace ScreenCoordinates
{
/// @{
DOZELYINTERFACE_AUTOTEST_EXPORT QPointF toKit(const QPointF &qtPoint);
DOZELYINTERFACE_AUTOTEST_EXPORT QRectF toKit(const QRectF &qtRect);
/// @}

/// Rounded to whole pixels, edge by edge: what is flush in the kit's coordinates stays so.
DOZELYINTERFACE_AUTOTEST_EXPORT QRect toQt(const QRectF &kitRect);

/// The main screen in the kit's coordinates; a zero rectangle without a screen.
DOZELYINTERFACE_AUTOTEST_EXPORT QRectF mainScreenFrame();
} // namespace ScreenCoordinates

} // namespace dozely
