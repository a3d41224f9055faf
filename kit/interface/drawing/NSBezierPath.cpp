// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/NSBezierPath.h"

#include "DozelyKit/interface/drawing/NSGraphicsContext.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double fullTurn = 360;

NSBezierPath::LineCapStyle lineCapStyle = NSBezierPath::ButtLineCapStyle;
double lineWidth = 1;

Qt::PenCapStyle penCap(NSBezierPath::LineCapStyle style)
{
    switch (style) {
    case NSBezierPath::RoundLineCapStyle:
        return Qt::RoundCap;
    case NSBezierPath::SquareLineCapStyle:
        return Qt::SquareCap;
    case NSBezierPath::ButtLineCapStyle:
        break;
    }
    return Qt::FlatCap;
}

/// How far the arc goes: positive counter-clockwise, at most one turn.
double sweep(double start, double end, bool clockwise)
{
    if (clockwise)
        return -sweep(-start, -end, false);
    const double way = end - start;
    if (way >= 0)
        return std::min(way, fullTurn);
    // Whole turns back lead to where the arc starts: there is nothing between.
    const double beyond = std::fmod(way, fullTurn);
    return beyond < 0 ? beyond + fullTurn : 0;
}
} // namespace

void NSBezierPath::setDefaultLineCapStyle(LineCapStyle style)
{
    lineCapStyle = style;
}

NSBezierPath::LineCapStyle NSBezierPath::defaultLineCapStyle()
{
    return lineCapStyle;
}

void NSBezierPath::setDefaultLineWidth(double width)
{
    lineWidth = width;
}

double NSBezierPath::defaultLineWidth()
{
    return lineWidth;
}

QPen NSBezierPath::pen(const QColor &color)
{
    return {color, lineWidth, Qt::SolidLine, penCap(lineCapStyle), Qt::MiterJoin};
}

void NSBezierPath::strokeLineFromPointToPoint(const QPointF &from, const QPointF &to, const QColor &color)
{
    const NSGraphicsContext *context = NSGraphicsContext::currentContext();
    if (!context)
        return;
    QPainter *painter = context->graphicsPort();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(pen(color));
    painter->drawLine(from, to);
    painter->restore();
}

void NSBezierPath::appendArc(QPainterPath &path, const QPointF &center, double radius, double startAngle,
                             double endAngle, bool clockwise)
{
    const QRectF circle(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius);
    if (circle.isNull()) { // Qt adds nothing at all for it, but the point must be reached
        if (path.elementCount() == 0)
            path.moveTo(center);
        else
            path.lineTo(center);
        return;
    }
    if (path.elementCount() == 0)
        path.arcMoveTo(circle, -startAngle);
    // Qt counts angles the other way round, since its y points down.
    path.arcTo(circle, -startAngle, -sweep(startAngle, endAngle, clockwise));
}
