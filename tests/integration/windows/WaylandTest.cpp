// SPDX-License-Identifier: MIT
//
// Windows on Wayland, where the compositor has the last word on place and focus.
#include "DisplayPicture.h"
#include "Xdotool.h"

#include "DozelyKit/interface/controls/ZDRButton.h"
#include "DozelyKit/interface/lists/ZDRTableView.h"
#include "DozelyKit/interface/windows/WindowSystem_p.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"
#include "hosts/agent/AlertGround.h"
#include "hosts/agent/AlertWindowPresenter.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QStandardItemModel>

#include <gmock/gmock.h>

using namespace dozely;

namespace
{
const QColor bezelOnWhite(77, 77, 77); // black, alpha 0.7

class Wayland : public testing::Test
{
protected:
    Wayland()
    {
        QGuiApplication::setOverrideCursor(Qt::BlankCursor); // nothing but windows in the picture
        EXPECT_TRUE(waitUntil([this] { return picture.colorAt({640, 400}) == QColor(Qt::white); }));
        // It takes the pointer's place from its coming in, and then from how far it goes. Where the pointer
        // was at the start it may have missed.
        moveTo({1290, 810});
    }
    ~Wayland() override { QGuiApplication::restoreOverrideCursor(); }

    /// Where the display shows a bezel of that size, once it does; empty when it never does.
    QRect placeOfBezel(const QSize &size)
    {
        QRect place;
        const bool came = waitUntil([&] {
            place = picture.areaOf(bezelOnWhite);
            return place.size() == size;
        });
        return came ? place : QRect();
    }
    testing::AssertionResult bezelComesTo(const QRect &wanted)
    {
        QRect place;
        if (waitUntil([&] { return (place = picture.areaOf(bezelOnWhite)) == wanted; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << place.x() << ' ' << place.y() << ' ' << place.width() << ' ' << place.height() << " for "
               << wanted.x() << ' ' << wanted.y() << ' ' << wanted.width() << ' ' << wanted.height();
    }
    bool bezelIsGone()
    {
        return waitUntil([&] { return picture.areaOf(bezelOnWhite).isEmpty(); });
    }

    static void moveTo(const QPoint &point)
    {
        xdotool({"mousemove", QString::number(point.x()), QString::number(point.y())});
    }
    /// Presses the bezel there, takes it along and releases it.
    static void drag(const ZDRBezelView &bezel, const QPoint &from, const QPoint &by)
    {
        moveTo(from);
        xdotool({"mousedown", "1"});
        ASSERT_TRUE(waitUntil([&bezel] { return bezel.dragType() != 0; }));
        ASSERT_TRUE(waitUntil([&bezel] { return !bezel.underMouse(); }))
            << "the compositor has the pointer now";
        moveTo(from + by / 2);
        moveTo(from + by);
        xdotool({"mouseup", "1"});
    }

    DisplayPicture picture;
};

class WaylandWindow : public Wayland
{
protected:
    WaylandWindow()
    {
        window.setGeometry(50, 60, 300, 200);
        window.setContentView(nullptr);
        window.makeKeyAndOrderFront();
        place = placeOfBezel({300, 200});
        EXPECT_FALSE(place.isEmpty());
    }
    const ZDRBezelView &bezel() const { return *qobject_cast<ZDRBezelView *>(window.contentView()); }

    ZDRBezelWindow window;
    QRect place;
};
} // namespace

TEST_F(WaylandWindow, IsBlendedWithWhatIsBehindItAndKnowsThatItCannotPlaceItself)
{
    EXPECT_FALSE(WindowSystem::placesWindows());
    EXPECT_FALSE(WindowSystem::hasWindowOpacity());
    EXPECT_TRUE(WindowSystem::blendsWindows());
    EXPECT_FALSE(window.isOpaque());
    EXPECT_NEAR(picture.colorAt(place.center()).lightness(), bezelOnWhite.lightness(), 2);
    EXPECT_GT(picture.colorAt(place.topLeft()).lightness(), 250) << "the corners are round";
}

TEST_F(WaylandWindow, IsMovedByTheCompositorWhenTheBezelIsDragged)
{
    // The compositor has put it anywhere: into the screen.
    const QPoint by(place.center().x() > 640 ? -120 : 120, place.center().y() > 400 ? -90 : 90);
    drag(bezel(), place.center(), by);
    EXPECT_TRUE(bezelComesTo(place.translated(by)));
}

TEST_F(WaylandWindow, IsResizedByTheCompositorFromItsLowerRightCorner)
{
    drag(bezel(), place.bottomRight() - QPoint(7, 7), {-60, -40});
    EXPECT_TRUE(bezelComesTo(place.adjusted(0, 0, -60, -40)));
    EXPECT_EQ(window.size(), QSize(240, 160));
}

TEST_F(WaylandWindow, TakesANewSizeOfItsOwnAccord)
{
    window.resizeToUsingStyle({360, 260}, 0);
    EXPECT_FALSE(placeOfBezel({360, 260}).isEmpty());
}

TEST_F(WaylandWindow, GoesWhenItIsClosed)
{
    window.performClose();
    EXPECT_TRUE(waitUntil([this] { return !window.isVisible(); })) << "when it has faded";
    EXPECT_TRUE(bezelIsGone());
}

TEST_F(Wayland, AnAlertIsCancelledByThePointer)
{
    int activations = 0;
    const auto alert = std::make_shared<NSUserNotification>();
    alert->setTitle("Backup");
    alert->setInformativeText("Will run soon.");
    alert->setActionButtonTitle("Cancel");
    AlertWindowPresenter presenter;
    presenter.setEvents({.activated = [&](const auto &) { ++activations; }, .closed = {}});
    presenter.show(alert);
    const AlertWindow *const window = presenter.window(alert);
    ASSERT_NE(window, nullptr);
    QRect place;
    ASSERT_TRUE(waitUntil([&] {
        place = picture.areaOf(AlertGround::seenColor(false)).adjusted(-1, -1, 1, 1); // its edge is lighter
        return place.size() == window->size();
    }));
    const auto *const button = window->findChild<ZDRButton *>();
    ASSERT_TRUE(waitUntil([button] { return button->isEnabled(); }));
    moveTo(place.topLeft() + button->mapTo(window, button->rect().center()));
    EXPECT_TRUE(waitUntil([button] { return button->layer().borderColor == QColor(Qt::black); }))
        << "hovered";
    xdotool({"click", "1"});
    EXPECT_TRUE(waitUntil([&] { return activations == 1; }));
    EXPECT_TRUE(waitUntil([&] { return picture.areaOf(AlertGround::seenColor(false)).isEmpty(); }));
}

TEST_F(Wayland, ARowCannotBeDraggedOutAsAPromisedFile)
{
    const ScratchRoot root;
    QStandardItemModel model(2, 1);
    ZDRTableView table;
    table.setModel(&model);
    table.horizontalHeader()->hide();
    table.verticalHeader()->hide();
    table.setStyleSheet("background: rgb(77, 77, 77)");
    table.setWindowFlag(Qt::FramelessWindowHint);
    table.resize(300, 200);
    table.show();
    QRect place;
    ASSERT_TRUE(waitUntil([&] {
        place = picture.areaOf(bezelOnWhite);
        return !place.isEmpty();
    }));
    moveTo(place.topLeft() + QPoint(20, 10));
    xdotool({"click", "1"});
    EXPECT_TRUE(waitUntil(
        [&] { return root.logContent().contains("Promised file drag-and-drop is not supported."); }));
}
