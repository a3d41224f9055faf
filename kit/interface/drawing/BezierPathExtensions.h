// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"
#include "DozelyKit/interface/drawing/Shading.h"

#include <QColor>
#include <QPainterPath>

/// Paths in coordinates whose y grows upwards. The fills draw into the current graphics context
/// (NSGraphicsContext); without one they draw nothing. THREADING: the main thread.
namespace zandorSoftwaresExtensions
{
/// A new closed path around the rectangle. Of the corner mask two bits count: 0x100 rounds the corner at the
/// rectangle's origin, 0x1000 the three others together, so 0x1111 rounds all. The radius is not limited to
/// what fits.
DOZELYINTERFACE_EXPORT QPainterPath roundRectInRect(const QRectF &rect, float radius, quint32 corners);

/// Fills the path from the start colour at the bottom of its bounds to the end colour at their top.
DOZELYINTERFACE_EXPORT void
linearGradientFillWithStartColor(const QPainterPath &path, const QColor &startColor, const QColor &endColor);

/// Fills the path with the start colour at the bottom and the top of its bounds and the end colour in the
/// middle.
DOZELYINTERFACE_EXPORT void bilinearGradientFillWithStartColor(const QPainterPath &path,
                                                               const QColor &startColor,
                                                               const QColor &endColor);

/// Fills the path with what the evaluate function says for each row of device pixels. A colour that is none
/// (QColor()) counts as transparent black. Outputs are limited to 0 to 1.
DOZELYINTERFACE_EXPORT void customVerticalFillWithCallbacks(const QPainterPath &path,
                                                            CGFunctionCallbacks callbacks,
                                                            const QColor &firstColor,
                                                            const QColor &secondColor);
} // namespace zandorSoftwaresExtensions
