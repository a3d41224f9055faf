// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertPlacement.h"

#include <gmock/gmock.h>

using AlertPlacement::placeFor;

namespace
{
const QRect area(0, 30, 1000, 500); // below a bar of 30 points
const QSize size(300, 120);
constexpr auto fromLeft = Qt::LeftToRight;

/// Places `count` windows one after the other.
QList<QRect> placed(int count, Qt::LayoutDirection direction = fromLeft)
{
    QList<QRect> windows;
    for (int window = 0; window < count; ++window)
        windows += placeFor(size, area, windows, direction);
    return windows;
}
} // namespace

TEST(AlertPlacement, BeginsInTheMiddleBelowWhereDesktopsShowTheirOwn)
{
    EXPECT_EQ(placeFor(size, area, {}, fromLeft), QRect(349, 155, 300, 120));
    EXPECT_EQ(placeFor(size, area, {}, Qt::RightToLeft), QRect(349, 155, 300, 120));
}

TEST(AlertPlacement, GoesOnBelowAndThenBeside)
{
    EXPECT_EQ(placed(3), (QList<QRect>{{349, 155, 300, 120}, {349, 291, 300, 120}, {665, 155, 300, 120}}));
    EXPECT_EQ(placed(3, Qt::RightToLeft).last(), QRect(33, 155, 300, 120))
        << "where text runs from the right, to the left";
}

TEST(AlertPlacement, FillsAPlaceThatHasBecomeFree)
{
    QList<QRect> windows = placed(3);
    const QRect freed = windows.takeAt(1);
    EXPECT_EQ(placeFor(size, area, windows, fromLeft), freed);
}

TEST(AlertPlacement, StaysClearOfAWindowThatTheUserMoved)
{
    EXPECT_EQ(placeFor(size, area, {QRect(300, 100, 300, 120)}, fromLeft), QRect(349, 236, 300, 120));
}

TEST(AlertPlacement, CoversTheFirstOneOnAScreenThatIsFull)
{
    EXPECT_EQ(placed(5).first(), placed(5).last());
    EXPECT_EQ(placeFor({5000, 5000}, area, {}, fromLeft).size(), QSize(5000, 5000))
        << "what fits nowhere, too";
}
