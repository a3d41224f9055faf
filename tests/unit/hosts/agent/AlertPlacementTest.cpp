// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertPlacement.h"

#include <gmock/gmock.h>

using AlertPlacement::cornerFor;
using AlertPlacement::placeFor;
using AlertPlacement::placeOf;

namespace
{
const QRect area(0, 30, 1000, 500); // below a bar of 30 points
const QSize size(300, 120);
const QPoint middle(500, 280);
constexpr AlertPlace atLeft{.isAtRight = false};
constexpr AlertPlace atBottom{.isAtBottom = true};

/// Places `count` windows one after the other, as long as there is room.
QList<QRect> placed(int count, const AlertPlace &place = {}, const QRect &where = area)
{
    QList<QRect> windows;
    for (int window = 0; window < count; ++window) {
        if (const auto room = placeFor(size, where, windows, place))
            windows += *room;
    }
    return windows;
}
} // namespace

TEST(AlertPlacement, BeginsInTheUpperCornerOfItsSide)
{
    EXPECT_EQ(placeFor(size, area, {}, {}), QRect(684, 46, 300, 120));
    EXPECT_EQ(placeFor(size, area, {}, atLeft), QRect(16, 46, 300, 120));
}

TEST(AlertPlacement, GoesOnBelowAndThenBesideButNeverOverTheMiddle)
{
    EXPECT_EQ(placed(3), (QList<QRect>{{684, 46, 300, 120}, {684, 182, 300, 120}, {684, 318, 300, 120}}));
    EXPECT_EQ(placed(4).last(), QRect(368, 46, 300, 120)) << "beside, above the middle";
    for (const AlertPlace &place : {AlertPlace(), atLeft, atBottom}) {
        const QList<QRect> windows = placed(20, place);
        EXPECT_LT(windows.size(), 20) << "there is no more room";
        for (const QRect &window : windows)
            EXPECT_FALSE(window.contains(middle));
    }
}

TEST(AlertPlacement, GoesUpwardsFromTheLowerEdge)
{
    EXPECT_EQ(placed(2, atBottom), (QList<QRect>{{684, 394, 300, 120}, {684, 258, 300, 120}}));
}

TEST(AlertPlacement, FillsAPlaceThatHasBecomeFree)
{
    QList<QRect> windows = placed(3);
    const QRect freed = windows.takeAt(1);
    EXPECT_EQ(placeFor(size, area, windows, {}), freed);
}

TEST(AlertPlacement, StaysClearOfAWindowThatTheUserMoved)
{
    EXPECT_EQ(placeFor(size, area, {QRect(600, 20, 300, 120)}, {}), QRect(684, 156, 300, 120));
}

TEST(AlertPlacement, ComesBackToWhereAWindowWasDragged)
{
    for (const QRect &window : {QRect(30, 50, 300, 120), QRect(650, 390, 300, 120), QRect(600, 60, 300, 120)})
        EXPECT_EQ(placeFor(size, area, {}, placeOf(window, area)), window);
    const AlertPlace place = placeOf({650, 390, 300, 120}, area);
    EXPECT_FALSE(placeOf({650, 220, 300, 120}, area).isAtBottom) << "as far from both";
    EXPECT_FALSE(placeOf({350, 220, 300, 120}, area).isAtRight);
    EXPECT_EQ(placeFor({340, 200}, area, {}, place), QRect(610, 310, 340, 200)) << "by the nearest edges";
    EXPECT_EQ(placeFor(size, {2000, 0, 1280, 800}, {}, place), QRect(2930, 660, 300, 120))
        << "on another screen, too";
}

TEST(AlertPlacement, DoesNotComeBackToTheMiddleNorLeaveTheScreen)
{
    EXPECT_EQ(placeFor(size, area, {}, placeOf({400, 200, 300, 120}, area)), QRect(684, 46, 300, 120));
    EXPECT_EQ(placeFor(size, area, {}, placeOf({300, 200, 300, 120}, area)), QRect(16, 46, 300, 120));
    EXPECT_EQ(placeFor(size, area, {}, placeOf({-200, 600, 300, 120}, area)), QRect(0, 410, 300, 120));
    EXPECT_EQ(placeFor(size, area, {}, {.fromSide = 90000, .fromEdge = 90000}), QRect(0, 410, 300, 120));
}

TEST(AlertPlacement, HasNoRoomOnAScreenThatIsTooSmall)
{
    const QRect small(0, 0, 320, 200);
    EXPECT_EQ(placeFor(size, small, {}, {}), std::nullopt);
    EXPECT_EQ(cornerFor(size, small, {}), QRect(4, 16, 300, 120)) << "for who must have a place";
    EXPECT_EQ(cornerFor({5000, 5000}, small, {}).topLeft(), QPoint(0, 0));
}
