// SPDX-License-Identifier: MIT
#include "DesktopSession.h"

#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"

#include <cmath>

namespace
{
/// In pixels of the display, two of which make a point.
void movePointer(int x, int y)
{
    xdotool({"mousemove", QString::number(x), QString::number(y)});
}
} // namespace

TEST_F(DesktopSession, ADragFollowsThePointerToHalvesOfPoints)
{
    ZDRBezelWindow window;
    window.setGeometry(200, 150, 240, 120);
    window.setContentView(nullptr);
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(becomesActive(window));
    const auto *const bezel = qobject_cast<ZDRBezelView *>(window.contentView());
    int expected = 200;
    // Out of the window at its left and back, with halves on the way: the last of them before the release
    // counts.
    for (const int pixels :
         {-61, 61, -125, 33, 92, -77, 77, -45, 45, -9, 9, -107, 107, -3, 3, -81, 81, -59, 59}) {
        movePointer(2 * expected + 40, 2 * 150 + 61);
        xdotool({"mousedown", "1"});
        ASSERT_TRUE(waitUntil([bezel] { return bezel->dragType() != 0; }));
        movePointer(2 * expected + 40 + pixels, 2 * 150 + 61);
        expected = static_cast<int>(std::trunc(expected + pixels / 2.0));
        EXPECT_TRUE(waitUntil([&] { return window.x() == expected; }, std::chrono::seconds(3)))
            << pixels << ": at " << window.x() << " for " << expected;
        xdotool({"mouseup", "1"});
        expected = window.x();
    }
    EXPECT_EQ(window.y(), 150);
}
