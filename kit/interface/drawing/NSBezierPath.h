// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QPainterPath>

class QColor;
class QPen;

/// What the path class holds beside paths, which are QPainterPath: the defaults with which lines are drawn,
/// one set for the whole process, and arcs as they are counted where y grows upwards.
///
/// THREADING: the main thread.
class DOZELYINTERFACE_EXPORT NSBezierPath
{
public:
    NSBezierPath() = delete;

    /// How a line ends.
    enum LineCapStyle {
        ButtLineCapStyle = 0,
        RoundLineCapStyle = 1,
        SquareLineCapStyle = 2,
    };

    /// The default line cap style, ButtLineCapStyle until it is set, and the default line width in
    /// points, 1.0 until it is set. Whoever sets them sets them for every later line of the process.
    /// @{
    static void setDefaultLineCapStyle(LineCapStyle style);
    static LineCapStyle defaultLineCapStyle();
    static void setDefaultLineWidth(double width);
    static double defaultLineWidth();
    /// @}

    /// A pen of that colour with the defaults as they are now.
    static QPen pen(const QColor &color);

    /// Draws a straight line with such a pen into the current graphics context; without one, nothing.
    static void strokeLineFromPointToPoint(const QPointF &from, const QPointF &to, const QColor &color);

    /// Adds an arc to the path, from one angle to another in degrees, 0 at the right and 90 at the side where
    /// y is larger: counter-clockwise where y points up. An end before the start, in the direction taken, is
    /// reached beyond a full turn; more than one turn is one. A straight line joins the arc to the path's
    /// current point unless it starts there.
    static void appendArc(QPainterPath &path, const QPointF &center, double radius, double startAngle,
                          double endAngle, bool clockwise = false);
};
