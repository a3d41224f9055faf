// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/NSBezierPath.h"
#include "support/Canvas.h"

#include <QPen>

#include <gtest/gtest.h>

namespace
{
TEST(NSBezierPath, BeginsWithButtCapsAndWidthOne)
{
    EXPECT_EQ(NSBezierPath::defaultLineCapStyle(), NSBezierPath::ButtLineCapStyle);
    EXPECT_EQ(NSBezierPath::defaultLineWidth(), 1.0);
    EXPECT_EQ(NSBezierPath::pen(Qt::red).capStyle(), Qt::FlatCap);
}

TEST(NSBezierPath, DefaultsThatSomebodySetHoldForEveryLaterLine)
{
    NSBezierPath::setDefaultLineCapStyle(NSBezierPath::RoundLineCapStyle);
    NSBezierPath::setDefaultLineWidth(6);
    EXPECT_EQ(NSBezierPath::pen(Qt::red).capStyle(), Qt::RoundCap);
    Canvas canvas(40, 20);
    canvas.flipped([] { NSBezierPath::strokeLineFromPointToPoint({10, 10}, {30, 10}, Qt::black); });
    EXPECT_EQ(inkOf(canvas.image()), QRect(7, 7, 26, 6)); // three points beyond either end

    NSBezierPath::setDefaultLineCapStyle(NSBezierPath::ButtLineCapStyle);
    Canvas butt(40, 20);
    butt.flipped([] { NSBezierPath::strokeLineFromPointToPoint({10, 10}, {30, 10}, Qt::black); });
    EXPECT_EQ(inkOf(butt.image()), QRect(10, 7, 20, 6));
}

TEST(NSBezierPath, WithoutAContextNoLineIsDrawn)
{
    Canvas canvas(20, 20);
    QPainter painter(&const_cast<QImage &>(canvas.image()));
    NSBezierPath::strokeLineFromPointToPoint({0, 10}, {20, 10}, Qt::black);
    painter.end();
    EXPECT_TRUE(inkOf(canvas.image()).isNull());
}

QPointF middle(double start, double end, bool clockwise)
{
    QPainterPath path;
    NSBezierPath::appendArc(path, {0, 0}, 10, start, end, clockwise);
    return path.pointAtPercent(0.5);
}

TEST(NSBezierPath, ArcsGoCounterClockwiseWhereYPointsUp)
{
    EXPECT_NEAR(middle(0, 180, false).y(), 10, 0.01);
    EXPECT_NEAR(middle(0, 180, true).y(), -10, 0.01);
    EXPECT_NEAR(middle(270, 90, false).x(), 10, 0.01); // beyond the full turn
    EXPECT_NEAR(middle(90, 180, true).x(), 10 * std::sqrt(0.5), 0.01);
}

TEST(NSBezierPath, AFullTurnIsAFullCircleAndMoreIsNoMore)
{
    for (const double end : {450.0, 900.0}) {
        QPainterPath path;
        NSBezierPath::appendArc(path, {0, 0}, 10, 90, end);
        EXPECT_NEAR(path.length(), 2 * M_PI * 10, 0.2);
    }
}

TEST(NSBezierPath, WholeTurnsAgainstTheDirectionAreNoArc)
{
    for (const double end : {450.0, 810.0, 90.0}) {
        QPainterPath path;
        NSBezierPath::appendArc(path, {0, 0}, 10, 90, end, true);
        EXPECT_EQ(path.length(), 0) << end;
    }
    QPainterPath path;
    NSBezierPath::appendArc(path, {0, 0}, 10, 90, -270, true);
    EXPECT_NEAR(path.length(), 2 * M_PI * 10, 0.2);
}

TEST(NSBezierPath, AnArcIsJoinedByALine)
{
    QPainterPath path;
    path.moveTo(0, 0);
    NSBezierPath::appendArc(path, {0, 0}, 10, 0, 90);
    EXPECT_EQ(path.elementAt(1).type, QPainterPath::LineToElement);
    EXPECT_EQ(QPointF(path.elementAt(1)), QPointF(10, 0));
}
} // namespace
