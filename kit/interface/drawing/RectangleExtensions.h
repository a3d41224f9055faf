// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QRectF>

/// The nine points of a rectangle whose y grows upwards: "bottom" is its y, "top" its y + height. The
/// functions do not look at where it is drawn.
/// @{
DOZELYINTERFACE_EXPORT QPointF centerOfRect(QRectF rect);
DOZELYINTERFACE_EXPORT QPointF topCenterOfRect(QRectF rect);
DOZELYINTERFACE_EXPORT QPointF topLeftOfRect(QRectF rect);
DOZELYINTERFACE_EXPORT QPointF topRightOfRect(QRectF rect);
DOZELYINTERFACE_EXPORT QPointF leftCenterOfRect(QRectF rect);
DOZELYINTERFACE_EXPORT QPointF rightCenterOfRect(QRectF rect);
DOZELYINTERFACE_EXPORT QPointF bottomCenterOfRect(QRectF rect);
DOZELYINTERFACE_EXPORT QPointF bottomLeftOfRect(QRectF rect);
DOZELYINTERFACE_EXPORT QPointF bottomRightOfRect(QRectF rect);
/// @}
