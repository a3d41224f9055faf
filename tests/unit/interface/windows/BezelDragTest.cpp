// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/BezelDrag_p.h"
#include "DozelyKit/interface/windows/WindowResize_p.h"
#include "DozelyKit/interface/windows/ZDRWindow.h"

#include <gmock/gmock.h>

#include <limits>

using namespace dozely;

using BezelDrag::frameDuringDrag;
using BezelDrag::typeOfPress;

namespace
{
const QRectF frame(100, 200, 300, 150); // its upper edge is at 350
constexpr double screen = 800;

QRectF moved(double byX, double byY, const QRectF &from = frame)
{
    return frameDuringDrag(BezelDrag::Move, from, {50, 60}, {50 + byX, 60 + byY}, screen);
}

QRectF resized(double byX, double byY, const QRectF &from = frame)
{
    return frameDuringDrag(BezelDrag::Resize, from, {395, 205}, {395 + byX, 205 + byY}, screen);
}
} // namespace

TEST(BezelDrag, ResizesFromTheTenPointsAtTheLowerRightCorner)
{
    EXPECT_EQ(typeOfPress(frame, {395, 205}), BezelDrag::Resize);
    EXPECT_EQ(typeOfPress(frame, {390, 205}), BezelDrag::Resize) << "the left edge of the grip belongs to it";
    EXPECT_EQ(typeOfPress(frame, {389.5, 205}), BezelDrag::Move) << "10.5 points from the right edge";
    EXPECT_EQ(typeOfPress(frame, {395, 210}), BezelDrag::Resize) << "and so does its upper edge";
    EXPECT_EQ(typeOfPress(frame, {395, 210.5}), BezelDrag::Move);
    EXPECT_EQ(typeOfPress(frame, {395, 200}), BezelDrag::Move) << "its lower and right edges do not";
    EXPECT_EQ(typeOfPress(frame, {400, 205}), BezelDrag::Move);
    EXPECT_EQ(typeOfPress(frame, {110, 205}), BezelDrag::Move) << "the other corners move";
    EXPECT_EQ(typeOfPress(frame, {395, 345}), BezelDrag::Move);
}

TEST(BezelDrag, MovesByWhatThePointerMoved)
{
    EXPECT_EQ(moved(0, 0), frame);
    EXPECT_EQ(moved(30, -40), QRectF(130, 160, 300, 150));
    EXPECT_EQ(moved(-500, -500), QRectF(-400, -300, 300, 150)) << "out of the screen on three sides";
    EXPECT_EQ(moved(5000, 0), QRectF(5100, 200, 300, 150));
}

TEST(BezelDrag, CutsFractionsOffTowardsZero)
{
    EXPECT_EQ(moved(0.9, 0.9), frame);
    EXPECT_EQ(moved(-0.1, -0.1), QRectF(99, 199, 300, 150));
    EXPECT_EQ(moved(-100.9, -200.9), QRectF(0, 0, 300, 150)) << "-0.9 is 0";
    EXPECT_EQ(moved(-101.9, -201.9), QRectF(-1, -1, 300, 150));
    EXPECT_EQ(moved(0, 0, {10.7, 20.7, 300.7, 150.7}), QRectF(10, 20, 300, 150));
}

TEST(BezelDrag, StopsTheUpperEdgeBelowTheMenuBar)
{
    EXPECT_EQ(moved(0, 428), QRectF(100, 628, 300, 150)) << "exactly at 778";
    EXPECT_EQ(moved(0, 429), QRectF(100, 628, 300, 150));
    EXPECT_EQ(moved(7, 5000), QRectF(107, 628, 300, 150));
    EXPECT_EQ(frameDuringDrag(BezelDrag::Move, frame, {0, 0}, {0, 0}, 0), QRectF(100, -172, 300, 150))
        << "without a screen its height is 0";
}

TEST(BezelDrag, ResizesWithTheUpperEdgeInPlace)
{
    EXPECT_EQ(resized(20, -30), QRectF(100, 170, 320, 180)) << "dragged down it becomes taller";
    EXPECT_EQ(resized(-20, 30), QRectF(100, 230, 280, 120));
    EXPECT_EQ(resized(0, 0), frame);
}

TEST(BezelDrag, StopsAtTwentyPointsEachWayWithTheUpperEdgeInPlace)
{
    EXPECT_EQ(resized(-280, 0).width(), 20);
    EXPECT_EQ(resized(-281, 0).width(), 20);
    EXPECT_EQ(resized(-1000, 0), QRectF(100, 200, 20, 150));
    EXPECT_EQ(resized(0, 130), QRectF(100, 330, 300, 20));
    EXPECT_EQ(resized(0, 131), QRectF(100, 330, 300, 20));
    EXPECT_EQ(resized(0, 600), QRectF(100, 330, 300, 20)) << "the upper edge stays at 350";
    EXPECT_EQ(resized(-1000, 600), QRectF(100, 330, 20, 20));
}

TEST(BezelDrag, KeepsAResizedWindowBelowTheMenuBarToo)
{
    EXPECT_EQ(resized(0, 0, {100, 700, 300, 150}), QRectF(100, 628, 300, 150));
}

TEST(BezelDrag, SurvivesWhatNoIntegerHolds)
{
    constexpr double huge = 1e300;
    constexpr double most = std::numeric_limits<int>::max();
    EXPECT_EQ(moved(huge, 0).x(), most);
    EXPECT_EQ(moved(std::numeric_limits<double>::quiet_NaN(), 0).x(), 0);
    EXPECT_EQ(resized(huge, -huge).width(), most);
    EXPECT_EQ(resized(0, huge).height(), 20);
}

TEST(WindowResize, KeepsTheCentreInStyleZero)
{
    EXPECT_EQ(WindowResize::resized({500, 400, 200, 100}, {300, 150}, 0), QRectF(450, 375, 300, 150));
    EXPECT_EQ(WindowResize::resized({500, 400, 300, 150}, {200, 100}, 0), QRectF(550, 425, 200, 100));
    EXPECT_EQ(WindowResize::resized({0, 0, 101, 100}, {100, 100}, 0), QRectF(0.5, 0, 100, 100));
}

TEST(WindowResize, KeepsTheUpperRightCornerInStyleOne)
{
    EXPECT_EQ(WindowResize::resized({500, 400, 200, 100}, {300, 150}, 1), QRectF(400, 350, 300, 150));
}

TEST(WindowResize, KeepsTheLowerLeftCornerInStyleTwo)
{
    EXPECT_EQ(WindowResize::resized({500, 400, 200, 100}, {300, 150}, 2), QRectF(500, 400, 300, 150));
}

TEST(WindowResize, ChangesNothingInAnyOtherStyle)
{
    for (const qint32 style : {-1, 3, 4, std::numeric_limits<qint32>::max()})
        EXPECT_EQ(WindowResize::resized({500, 400, 200, 100}, {300, 150}, style), QRectF(500, 400, 200, 100));
}

TEST(WindowResize, TakesSizesInSinglePrecision)
{
    const double fine = 100.00000001;
    EXPECT_EQ(WindowResize::resized({0, 0, 50, 50}, {fine, fine}, 2).size(), QSizeF(100, 100));
    // The difference is narrowed as well: 1 - 0.1 is not what it is in double precision.
    EXPECT_EQ(WindowResize::resized({0, 0, 0.1, 0.1}, {1, 1}, 1).x(),
              -static_cast<double>(static_cast<float>(1 - 0.1)));
}

TEST(WindowResize, TakesAFifthOfASecondForAHundredAndFiftyPointsOfTheLargestChange)
{
    const QRectF from(0, 0, 100, 100);
    EXPECT_DOUBLE_EQ(WindowResize::standardTime(from, {0, 0, 250, 100}).count(), 0.2);
    EXPECT_DOUBLE_EQ(WindowResize::standardTime(from, {0, 0, 110, 400}).count(), 0.4);
    EXPECT_DOUBLE_EQ(WindowResize::standardTime(from, {0, 0, 25, 100}).count(), 0.1)
        << "smaller takes as long";
    EXPECT_DOUBLE_EQ(WindowResize::standardTime(from, {-75, 0, 100, 100}).count(), 0.1)
        << "and so does moving";
    EXPECT_EQ(WindowResize::standardTime(from, from).count(), 0);
}
