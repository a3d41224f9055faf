// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QRectF>

#include <chrono>

namespace dozely
{

/// The arithmetic of resizing a window, with y growing upwards.
namespace WindowResize
{
/// The frame with another size; `style` says what stays in place (ZDRWindow::ResizeStyle). Sizes and their
/// differences are taken in single precision.
DOZELYINTERFACE_AUTOTEST_EXPORT QRectF resized(const QRectF &frame, const QSizeF &size, qint32 style);

/// What the platform takes to animate that change: 0.2 s for each 150 points.
DOZELYINTERFACE_AUTOTEST_EXPORT std::chrono::duration<double> standardTime(const QRectF &from,
                                                                           const QRectF &to);

/// The frame on the way from one to another, at a progress from 0 to 1.
DOZELYINTERFACE_AUTOTEST_EXPORT QRectF between(const QRectF &from, const QRectF &to, double progress);
} // namespace WindowResize

} // namespace dozely
