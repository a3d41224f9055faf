// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QPointF>
#include <QRectF>

namespace dozely
{

/// The arithmetic of dragging a bezel window, in screen coordinates whose y grows upwards. It computes from
/// what was at the press, in doubles that are cut off to whole points towards zero.
namespace BezelDrag
{
enum Type : qint32 { None = 0, Resize = 1, Move = 2 };

/// What a press at `pointer` begins: resizing within the ten points at the lower-right corner, else moving.
DOZELYINTERFACE_AUTOTEST_EXPORT Type typeOfPress(const QRectF &windowFrame, const QPointF &pointer);

/// The window's frame while the pointer is at `pointer`, pressed before at `pressed`. Its upper edge stays 22
/// points below the upper edge of the main screen.
DOZELYINTERFACE_AUTOTEST_EXPORT QRectF frameDuringDrag(Type type, const QRectF &windowFrame,
                                                       const QPointF &pressed, const QPointF &pointer,
                                                       double mainScreenHeight);
} // namespace BezelDrag

} // namespace dozely
