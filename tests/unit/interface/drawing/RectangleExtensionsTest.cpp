// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/RectangleExtensions.h"
#include "DozelyKit/interface/drawing/Geometry_p.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
constexpr QRectF rect(10, 20, 100, 50);

TEST(RectangleExtensions, NamesTheNinePointsWithYGrowingUpwards)
{
    EXPECT_EQ(centerOfRect(rect), QPointF(60, 45));
    EXPECT_EQ(topCenterOfRect(rect), QPointF(60, 70));
    EXPECT_EQ(topLeftOfRect(rect), QPointF(10, 70));
    EXPECT_EQ(topRightOfRect(rect), QPointF(110, 70));
    EXPECT_EQ(leftCenterOfRect(rect), QPointF(10, 45));
    EXPECT_EQ(rightCenterOfRect(rect), QPointF(110, 45));
    EXPECT_EQ(bottomCenterOfRect(rect), QPointF(60, 20));
    EXPECT_EQ(bottomLeftOfRect(rect), QPointF(10, 20));
    EXPECT_EQ(bottomRightOfRect(rect), QPointF(110, 20));
}

TEST(RectangleExtensions, TakesNegativeAndEmptySizesAsTheyAre)
{
    EXPECT_EQ(centerOfRect(QRectF(10, 20, -4, -2)), QPointF(8, 19));
    EXPECT_EQ(topRightOfRect(QRectF(10, 20, -4, -2)), QPointF(6, 18));
    EXPECT_EQ(centerOfRect(QRectF()), QPointF(0, 0));
}

TEST(RectangleExtensions, KeepsDoublePrecision)
{
    EXPECT_EQ(centerOfRect(QRectF(1e9, 0.1, 1, 0.2)).x(), 1e9 + 0.5);
    EXPECT_EQ(centerOfRect(QRectF(1e9, 0.1, 1, 0.2)).y(), 0.1 + 0.2 * 0.5);
}

TEST(Geometry, CutsAColumnOffTheLeftThatIsNeverWiderThanTheRectangle)
{
    EXPECT_EQ(Geometry::dividedAtMinX(rect, 30).first, QRectF(10, 20, 30, 50));
    EXPECT_EQ(Geometry::dividedAtMinX(rect, 30).second, QRectF(40, 20, 70, 50));
    EXPECT_EQ(Geometry::dividedAtMinX(rect, 130).first, rect);
    EXPECT_EQ(Geometry::dividedAtMinX(rect, 130).second, QRectF(110, 20, 0, 50));
    EXPECT_EQ(Geometry::dividedAtMinX(rect, -1).second, rect);
}

TEST(Geometry, AnInsetLargerThanTheRectangleGivesNegativeSizes)
{
    EXPECT_EQ(Geometry::inset(QRectF(0, 0, 10, 8), 6), QRectF(6, 6, -2, -4));
}
} // namespace
