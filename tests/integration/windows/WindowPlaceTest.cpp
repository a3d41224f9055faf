// SPDX-License-Identifier: MIT
#include "DesktopSession.h"

#include "DozelyKit/interface/windows/ScreenCoordinates_p.h"
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"

#include <QGuiApplication>
#include <QScreen>

namespace
{
const QPoint middle(400, 300);

class WindowPlace : public DesktopSession
{
protected:
    WindowPlace()
    {
        showBackdrop();
        window.setGeometry(300, 200, 200, 200);
        auto *const red = new QWidget;
        red->setPalette(QPalette(Qt::red));
        red->setAutoFillBackground(true);
        window.setContentView(red);
    }
    bool isSeen() const { return colorAt(middle) == QColor(Qt::red); }
    bool comesIntoSight()
    {
        return waitUntil([this] { return window.alphaValue() == 1 && isSeen(); });
    }

    ZDRWindow window;
};
} // namespace

TEST_F(WindowPlace, StandsWhereItsFrameSays)
{
    const double height = QGuiApplication::primaryScreen()->geometry().height();
    window.setFrame({300, height - 400, 200, 200}, false);
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(comesIntoSight());
    EXPECT_EQ(window.geometry(), QRect(300, 200, 200, 200));
    EXPECT_EQ(colorAt({300, 200}), QColor(Qt::red));
    EXPECT_EQ(colorAt({499, 399}), QColor(Qt::red));
    EXPECT_EQ(colorAt({299, 300}), QColor(Qt::white)) << "without a border";
    EXPECT_EQ(colorAt({500, 300}), QColor(Qt::white));
}

TEST_F(WindowPlace, GetsTheKeysWhenItIsShown)
{
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(becomesActive(window));
}

TEST_F(WindowPlace, LeavesTheKeysWhereTheyAreWhenItIsToBeShownSo)
{
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(comesIntoSight());
    EXPECT_EQ(activeWindow(), backdrop.winId());
    EXPECT_TRUE(backdrop.isActiveWindow());
}

TEST_F(WindowPlace, FloatsAboveWindowsThatAreRaisedLater)
{
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(comesIntoSight());
    backdrop.raise();
    backdrop.activateWindow();
    ASSERT_TRUE(becomesActive(backdrop));
    QWidget later;
    later.setPalette(QPalette(Qt::blue));
    later.setGeometry(350, 250, 300, 200);
    later.show();
    ASSERT_TRUE(becomesActive(later));
    ASSERT_TRUE(waitUntil([] { return colorAt({600, 350}) == QColor(Qt::blue); }));
    EXPECT_TRUE(isSeen()) << "the later window would cover it";
}

TEST_F(WindowPlace, IsOnEveryDesktop)
{
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(comesIntoSight());
    EXPECT_EQ(cardinal(window.winId(), "_NET_WM_DESKTOP"), 0xFFFFFFFFU);
    xdotool({"set_desktop", "1"});
    ASSERT_TRUE(waitUntil([] {
        return colorAt({100, 100}) != QColor(Qt::white);
    })) << "the backdrop stayed behind";
    EXPECT_TRUE(isSeen());
    // Also when it is shown a second time: window managers forget what they knew of it.
    window.close();
    ASSERT_TRUE(waitUntil([this] { return !isSeen(); }));
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(comesIntoSight());
    xdotool({"set_desktop", "0"});
    ASSERT_TRUE(waitUntil([] { return colorAt({100, 100}) == QColor(Qt::white); }));
    EXPECT_TRUE(isSeen());
}

TEST_F(WindowPlace, StaysOnOneDesktopIfItIsTold)
{
    window.setJoinsAllDesktops(false);
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(comesIntoSight());
    xdotool({"set_desktop", "1"});
    EXPECT_TRUE(waitUntil([this] { return !isSeen(); }));
}

TEST_F(WindowPlace, StaysWhatItWasToldToBeBeforeItWasShown)
{
    setState(window.winId(), "_NET_WM_STATE_SKIP_TASKBAR");
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(comesIntoSight());
    EXPECT_TRUE(hasState(window.winId(), "_NET_WM_STATE_SKIP_TASKBAR"));
    EXPECT_TRUE(hasState(window.winId(), "_NET_WM_STATE_ABOVE"));
}

TEST_F(WindowPlace, TellsTheCompositorThatItHasNoShadow)
{
    window.awakeFromNib();
    window.show();
    EXPECT_EQ(cardinal(window.winId(), "_COMPTON_SHADOW"), 0U);
    window.setHasShadow(true);
    EXPECT_EQ(cardinal(window.winId(), "_COMPTON_SHADOW"), std::nullopt);
}

TEST_F(WindowPlace, ResizesAboutItsCentreOnTheScreen)
{
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(comesIntoSight());
    window.resizeToUsingStyle({300, 300}, ZDRWindow::AboutCenter);
    EXPECT_TRUE(waitUntil([this] { return window.geometry() == QRect(250, 150, 300, 300); }));
    EXPECT_TRUE(waitUntil([] {
        return colorAt({250, 150}) == QColor(Qt::red) && colorAt({549, 449}) == QColor(Qt::red);
    }));
}
