// SPDX-License-Identifier: MIT
#include "DesktopSession.h"

#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"

#include <QGuiApplication>
#include <QScreen>

namespace
{
class WindowDrag : public DesktopSession
{
protected:
    WindowDrag()
    {
        window.setGeometry(200, 150, 240, 120);
        window.setContentView(nullptr);
        window.makeKeyAndOrderFront();
        EXPECT_TRUE(becomesActive(window));
        EXPECT_TRUE(waitUntil([this] { return window.alphaValue() == 1; }));
    }
    void drag(const QPoint &from, const QPoint &to)
    {
        movePointerTo(from);
        xdotool({"mousedown", "1"});
        ASSERT_TRUE(waitUntil([this] { return bezel()->dragType() != 0; }));
        movePointerTo((from + to) / 2);
        movePointerTo(to);
        // The last step decides; the pointer is released only when it has been seen.
    }
    void release() { xdotool({"mouseup", "1"}); }
    bool comesTo(const QRect &geometry)
    {
        return waitUntil([&] { return window.geometry() == geometry; }, std::chrono::seconds(5));
    }
    ZDRBezelView *bezel() const { return qobject_cast<ZDRBezelView *>(window.contentView()); }

    ZDRBezelWindow window;
};
} // namespace

TEST_F(WindowDrag, MovesTheWindowWithThePointer)
{
    drag({260, 200}, {320, 170});
    EXPECT_TRUE(comesTo({260, 120, 240, 120})) << window.geometry().x() << ' ' << window.geometry().y();
    release();
    EXPECT_EQ(bezel()->dragType(), 2);
}

TEST_F(WindowDrag, ResizesTheWindowFromItsLowerRightCornerWithTheUpperEdgeInPlace)
{
    drag({434, 264}, {494, 324});
    EXPECT_TRUE(comesTo({200, 150, 300, 180}))
        << window.geometry().width() << ' ' << window.geometry().height();
    release();
    EXPECT_EQ(bezel()->dragType(), 1);
}

TEST_F(WindowDrag, StopsAtTwentyPointsEachWay)
{
    drag({434, 264}, {100, 60});
    EXPECT_TRUE(comesTo({200, 150, 20, 20}));
    release();
}

TEST_F(WindowDrag, StopsBelowTheUpperEdgeOfTheScreen)
{
    drag({260, 200}, {280, 10});
    EXPECT_TRUE(comesTo({220, 22, 240, 120})) << window.geometry().y();
    release();
}

TEST_F(WindowDrag, LetsTheWindowLeaveTheScreenBelow)
{
    const int height = QGuiApplication::primaryScreen()->geometry().height();
    drag({260, 160}, {260, height - 10});
    EXPECT_TRUE(comesTo({200, height - 20, 240, 120})) << window.geometry().y();
    release();
}
