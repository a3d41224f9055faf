// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/BezierPathExtensions.h"
#include "support/Canvas.h"

#include <gtest/gtest.h>

using zandorSoftwaresExtensions::roundRectInRect;

namespace
{
constexpr QRectF rect(0, 0, 100, 50);

/// Corners in the order origin, right of it, opposite, above it.
struct Corner {
    QPointF corner, inward;
};
const std::array<Corner, 4> corners{
    {{{0, 0}, {1, 1}}, {{100, 0}, {-1, 1}}, {{100, 50}, {-1, -1}}, {{0, 50}, {1, -1}}}};

/// Whether the corner is a quarter circle of that radius: on the diagonal, the circle lies r - r/sqrt(2) off
/// each side.
bool isRound(const QPainterPath &path, const Corner &corner, double radius)
{
    const double off = radius - radius / std::sqrt(2.0);
    return !path.contains(corner.corner + corner.inward * (off - 0.1)) &&
           path.contains(corner.corner + corner.inward * (off + 0.1));
}

bool isSquare(const QPainterPath &path, const Corner &corner)
{
    return path.contains(corner.corner + corner.inward * 0.01);
}

TEST(RoundRect, AllFourBitsRoundAllCorners)
{
    const QPainterPath path = roundRectInRect(rect, 10, 0x1111);
    for (const Corner &corner : corners)
        EXPECT_TRUE(isRound(path, corner, 10)) << corner.corner.x() << ' ' << corner.corner.y();
    EXPECT_EQ(path.boundingRect(), rect);
}

TEST(RoundRect, IsFilledWhereItsCornersOverlap)
{
    EXPECT_EQ(roundRectInRect(rect, 40, 0x1111).fillRule(), Qt::WindingFill);
}

TEST(RoundRect, TheCirclesHaveTheirCentresAtTheInnerRectanglesCorners)
{
    const QPainterPath path = roundRectInRect(rect, 10, 0x1111);
    int onTheCircles = 0;
    for (double t = 0; t < 1; t += 0.001) {
        const QPointF point = path.pointAtPercent(t);
        const QPointF centre(point.x() < 50 ? 10 : 90, point.y() < 25 ? 10 : 40);
        const QPointF from = point - centre;
        const bool inCorner = (centre.x() == 10 ? from.x() < -0.01 : from.x() > 0.01) &&
                              (centre.y() == 10 ? from.y() < -0.01 : from.y() > 0.01);
        if (!inCorner)
            continue;
        ++onTheCircles;
        EXPECT_NEAR(std::hypot(from.x(), from.y()), 10, 0.01);
    }
    EXPECT_GT(onTheCircles, 100);
}

TEST(RoundRect, TheTwoOtherBitsRoundNothing)
{
    for (const quint32 mask : {0x0000U, 0x0001U, 0x0010U, 0x0011U, 0xffffeeffU}) {
        const QPainterPath path = roundRectInRect(rect, 10, mask);
        ASSERT_EQ(path.elementCount(), 5) << mask;
        const std::array<QPointF, 5> plain{{{0, 0}, {100, 0}, {100, 50}, {0, 50}, {0, 0}}};
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(QPointF(path.elementAt(i)), plain[static_cast<size_t>(i)]) << mask;
    }
}

TEST(RoundRect, OneBitRoundsTheOriginsCornerAlone)
{
    const QPainterPath path = roundRectInRect(rect, 10, 0x0100);
    EXPECT_TRUE(isRound(path, corners[0], 10));
    for (size_t i = 1; i < 4; ++i)
        EXPECT_TRUE(isSquare(path, corners[i])) << i;
}

TEST(RoundRect, TheOtherBitRoundsTheThreeOthers)
{
    const QPainterPath path = roundRectInRect(rect, 10, 0x1000);
    EXPECT_TRUE(isSquare(path, corners[0]));
    for (size_t i = 1; i < 4; ++i)
        EXPECT_TRUE(isRound(path, corners[i], 10)) << i;
    EXPECT_EQ(QPointF(path.elementAt(0)), QPointF(0, 0));
    EXPECT_EQ(QPointF(path.elementAt(1)), QPointF(80, 0)); // the inner width, from the corner
    EXPECT_NEAR(path.elementAt(2).x, 90, 1e-9);            // the arc's joining line carries on
    EXPECT_NEAR(path.elementAt(2).y, 0, 1e-9);
    EXPECT_EQ(QPointF(path.elementAt(path.elementCount() - 1)), QPointF(0, 0));
    EXPECT_NEAR(path.elementAt(path.elementCount() - 2).y, 40, 1e-9); // closed straight down from there
}

TEST(RoundRect, AnOffsetMovesTheWholePath)
{
    const QPainterPath path = roundRectInRect(QRectF(7, -3, 100, 50), 10, 0x1111);
    EXPECT_EQ(path.boundingRect(), QRectF(7, -3, 100, 50));
}

TEST(RoundRect, ARadiusOfNothingIsAPlainRectangle)
{
    const QPainterPath path = roundRectInRect(rect, 0, 0x1111);
    EXPECT_EQ(path.boundingRect(), rect);
    for (const Corner &corner : corners)
        EXPECT_TRUE(isSquare(path, corner));
}

TEST(RoundRect, ARadiusLargerThanHalfTheSizeIsNotLimited)
{
    const QPainterPath path = roundRectInRect(QRectF(0, 0, 10, 8), 6, 0x1111);
    // The inner rectangle is (6, 6, -2, -4): the first arc ends at (6, 0), the line back leads to (4, 0), and
    // the next circle, of centre (4, 6), begins there and ends at (10, 6).
    EXPECT_EQ(QPointF(path.elementAt(0)), QPointF(0, 6));
    const QPointF lineEnd = path.elementAt(4);
    EXPECT_NEAR(lineEnd.x(), 4, 1e-9);
    EXPECT_NEAR(lineEnd.y(), 0, 1e-9);
    EXPECT_NEAR(path.boundingRect().width(), 10, 1e-9);
    EXPECT_NEAR(path.boundingRect().height(), 8, 1e-9);
}

TEST(RoundRect, TheRadiusIsWidenedFromSinglePrecision)
{
    const QPainterPath path = roundRectInRect(rect, 0.1F, 0x0100);
    EXPECT_EQ(path.elementAt(0).y, double{0.1F});
}
} // namespace
