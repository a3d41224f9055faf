// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/agent/AlertPlace.h"

#include <QList>
#include <QRect>

#include <optional>

/// Where alerts stand on the screen, in Qt's coordinates.
namespace AlertPlacement
{
/// The place of a window of that size within `area`: at `place`, as far into the area as need be; else beyond
/// windows that are there already, away from the edge that `place` counts from, and then beside them. Never
/// over the middle of the area, where people work: a place that would cover it stands for the upper corner of
/// the same side. Nothing when there is no room; the first of several alerts gets one all the same, see
/// `cornerFor`.
std::optional<QRect> placeFor(const QSize &size, const QRect &area, const QList<QRect> &taken,
                              const AlertPlace &place);

/// The upper corner of the side that `place` counts from, whatever is there or in the middle.
QRect cornerFor(const QSize &size, const QRect &area, const AlertPlace &place);

/// Where a window stands, counted from the edges that are next to it.
AlertPlace placeOf(const QRect &window, const QRect &area);
} // namespace AlertPlacement
