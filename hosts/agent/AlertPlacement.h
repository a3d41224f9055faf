// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>

/// Where alerts stand on the screen, in Qt's coordinates.
namespace AlertPlacement
{
/// The place of a window of that size within `area`: in the middle of the upper half, clear of the corners
/// and edges where desktops show their own notifications; below windows that are there already; and beside
/// the first column when that is full, in the direction in which text runs. On a screen that is full it
/// covers the first one.
QRect placeFor(const QSize &size, const QRect &area, const QList<QRect> &taken,
               Qt::LayoutDirection direction);
} // namespace AlertPlacement
