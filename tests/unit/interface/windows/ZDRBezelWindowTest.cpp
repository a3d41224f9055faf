// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"

#include "DozelyKit/interface/windows/ScreenCoordinates_p.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "support/Canvas.h"
#include "support/PaintCounter.h"

#include <QHBoxLayout>
#include <QTest>

#include <gmock/gmock.h>

#include <cmath>

using namespace dozely;

namespace
{
class ZDRBezelWindowTest : public testing::Test
{
protected:
    ZDRBezelWindowTest()
    {
        window.setFrame({100, 200, 300, 150}, false);
        window.setContentView(nullptr);
        window.show();
    }
    ZDRBezelView *bezel() const { return qobject_cast<ZDRBezelView *>(window.contentView()); }

    /// A mouse event at a point of the screen, in the kit's coordinates.
    void send(QEvent::Type type, const QPointF &point, Qt::MouseButton button = Qt::LeftButton)
    {
        const QPointF global(point.x(), ScreenCoordinates::mainScreenFrame().height() - point.y());
        const bool down = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, bezel()->mapFromGlobal(global), global,
                          type == QEvent::MouseMove ? Qt::NoButton : button,
                          down ? Qt::MouseButtons(button) : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(bezel(), &event);
    }
    void press(const QPointF &point) { send(QEvent::MouseButtonPress, point); }
    void drag(const QPointF &point) { send(QEvent::MouseMove, point); }
    void release(const QPointF &point) { send(QEvent::MouseButtonRelease, point); }

    ZDRBezelWindow window;
};

/// Remembers how large each child of a widget is when it becomes one.
class SizesOfNewChildren : public QObject
{
public:
    explicit SizesOfNewChildren(QWidget &parent) { parent.installEventFilter(this); }
    QList<QSize> sizes;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::ChildAdded)
            sizes += static_cast<QWidget *>(static_cast<QChildEvent *>(event)->child())->size();
        return false;
    }
};
} // namespace

TEST_F(ZDRBezelWindowTest, IsBorderlessWhateverStyleItIsMadeWith)
{
    constexpr quint64 titledClosableResizable = 1 | 2 | 8;
    const auto made =
        ZDRBezelWindow::initWithContentRect({30, 40, 200, 100}, titledClosableResizable, 2, true);
    EXPECT_EQ(made->frame(), QRectF(30, 40, 200, 100));
    EXPECT_EQ(made->styleMask(), 0U);
    EXPECT_TRUE(made->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_FALSE(made->isVisible());
    made->setContentView(nullptr);
    EXPECT_TRUE(qobject_cast<ZDRBezelView *>(made->contentView())) << "it is a bezel window";
}

TEST_F(ZDRBezelWindowTest, HasABezelViewThatFillsIt)
{
    ASSERT_TRUE(bezel());
    EXPECT_EQ(bezel()->geometry(), QRect(0, 0, 300, 150));
    EXPECT_TRUE(bezel()->acceptsFirstMouse());
    EXPECT_EQ(bezel()->dragType(), 0);
}

TEST_F(ZDRBezelWindowTest, MakesTheBezelViewAsLargeAsTheFirstViewBeforeItFillsTheWindow)
{
    ZDRBezelWindow other;
    other.setFrame({0, 0, 200, 80}, false);
    auto *const view = new QWidget;
    view->resize(70, 30);
    SizesOfNewChildren first(other);
    other.setContentView(view);
    EXPECT_EQ(first.sizes, QList<QSize>{QSize(70, 30)}) << "the bezel view, as it came";
    ZDRBezelWindow empty;
    SizesOfNewChildren withoutView(empty);
    empty.setContentView(nullptr);
    EXPECT_EQ(withoutView.sizes, QList<QSize>{QSize(0, 0)});
    EXPECT_TRUE(qobject_cast<ZDRBezelView *>(other.contentView()));
    EXPECT_EQ(view->parentWidget(), other.contentView());
    EXPECT_EQ(view->geometry(), other.contentView()->rect());
    EXPECT_EQ(view->geometry(), QRect(0, 0, 200, 80));
}

TEST_F(ZDRBezelWindowTest, StacksASecondContentViewAboveTheFirst)
{
    auto *const first = new QWidget;
    auto *const second = new QWidget;
    window.setContentView(first);
    const auto *const view = bezel();
    window.setContentView(second);
    EXPECT_EQ(bezel(), view) << "the same bezel view";
    EXPECT_EQ(first->parentWidget(), view);
    EXPECT_EQ(second->parentWidget(), view);
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(first->geometry(), view->rect());
    EXPECT_EQ(second->geometry(), view->rect());
    EXPECT_EQ(view->children(), (QObjectList{first, second})) << "the later one is above";
    EXPECT_EQ(view->childAt(50, 50), second);
    window.setContentView(first);
    EXPECT_EQ(view->children(), (QObjectList{second, first})) << "given again it comes to the top";
    EXPECT_EQ(view->childAt(50, 50), first);
}

TEST_F(ZDRBezelWindowTest, FillsItselfAgainWithAContentViewThatWasPlacedElsewhere)
{
    auto *const view = new QWidget;
    window.setContentView(view);
    view->setGeometry(1, 2, 3, 4);
    window.setContentView(view);
    EXPECT_EQ(view->geometry(), QRect(0, 0, 300, 150));
    view->setGeometry(1, 2, 3, 4);
    window.setFrame({100, 200, 320, 170}, false);
    EXPECT_EQ(view->geometry(), QRect(1, 2, 3, 4));
}

TEST_F(ZDRBezelWindowTest, PutsALayoutFromAnInterfaceFileOnTheBezel)
{
    ZDRBezelWindow laidOut;
    laidOut.resize(200, 100);
    auto *const row = new QHBoxLayout(&laidOut);
    row->setContentsMargins(10, 10, 10, 10);
    auto *const left = new QWidget;
    auto *const right = new QWidget;
    row->addWidget(left);
    row->addWidget(right);
    auto *const free = new QWidget(&laidOut); // which the layout does not place
    free->setGeometry(1, 2, 3, 4);
    laidOut.awakeFromNib();
    const auto *const view = qobject_cast<ZDRBezelView *>(laidOut.contentView());
    ASSERT_TRUE(view);
    EXPECT_EQ(laidOut.layout(), nullptr);
    EXPECT_EQ(left->parentWidget()->parentWidget(), view);
    EXPECT_EQ(left->parentWidget()->layout(), row);
    EXPECT_EQ(right->parentWidget(), left->parentWidget());
    EXPECT_EQ(free->parentWidget(), left->parentWidget());
    EXPECT_FALSE(laidOut.hasShadow());
    laidOut.resize(320, 120);
    laidOut.show();
    EXPECT_EQ(view->geometry(), QRect(0, 0, 320, 120));
    EXPECT_TRUE(left->isVisible() && right->isVisible() && free->isVisible());
    EXPECT_EQ(left->mapTo(&laidOut, QPoint()), QPoint(10, 10));
    EXPECT_EQ(right->mapTo(&laidOut, QPoint(right->width(), right->height())), QPoint(310, 110));
    EXPECT_EQ(free->geometry(), QRect(1, 2, 3, 4));
}

TEST_F(ZDRBezelWindowTest, IsAsLargeAsItsLayoutWantsWhenTheInterfaceFileGivesNoSize)
{
    ZDRBezelWindow laidOut;
    auto *const row = new QHBoxLayout(&laidOut);
    row->setContentsMargins(10, 10, 10, 10);
    auto *const inside = new QWidget;
    inside->setMinimumSize(230, 90);
    row->addWidget(inside);
    laidOut.awakeFromNib();
    EXPECT_EQ(laidOut.size(), QSize(250, 110));
}

TEST_F(ZDRBezelWindowTest, PutsAllWidgetsFromAnInterfaceFileOnTheBezelWhereTheyAre)
{
    ZDRBezelWindow other;
    other.resize(200, 100);
    auto *const first = new QWidget(&other);
    auto *const second = new QWidget(&other);
    auto *const hidden = new QWidget(&other);
    auto *const dialog = new QWidget(&other, Qt::Dialog);
    first->setGeometry(10, 20, 100, 40);
    second->setGeometry(50, 30, 100, 40);
    hidden->hide();
    other.awakeFromNib();
    const auto *const view = qobject_cast<ZDRBezelView *>(other.contentView());
    ASSERT_TRUE(view);
    other.show();
    EXPECT_TRUE(first->isVisible() && second->isVisible());
    EXPECT_FALSE(hidden->isVisible());
    EXPECT_TRUE(view->isAncestorOf(first) && view->isAncestorOf(hidden));
    EXPECT_EQ(first->mapTo(&other, QPoint()), QPoint(10, 20));
    EXPECT_EQ(view->childAt(60, 40), second) << "one above the other as before";
    EXPECT_EQ(view->childAt(20, 25), first);
    EXPECT_EQ(dialog->parentWidget(), &other) << "a window of its own";
    EXPECT_EQ(other.findChildren<ZDRBezelView *>().size(), 1);
}

TEST_F(ZDRBezelWindowTest, KeepsTheBezelViewThatAnInterfaceFilePutIntoIt)
{
    ZDRBezelWindow other;
    auto *const view = new ZDRBezelView(&other);
    other.awakeFromNib();
    EXPECT_EQ(other.contentView(), view);
    EXPECT_EQ(other.findChildren<ZDRBezelView *>().size(), 1) << "not one on the other";
    ZDRBezelWindow empty;
    empty.awakeFromNib();
    EXPECT_TRUE(qobject_cast<ZDRBezelView *>(empty.contentView()));
}

TEST_F(ZDRBezelWindowTest, PaintsItsBezelAtOnceWhenItIsPressedAndReleased)
{
    PaintCounter paints(*bezel());
    ASSERT_TRUE(paints.isShown());
    press({150, 300});
    EXPECT_EQ(paints.count(), 1);
    release({150, 300});
    EXPECT_EQ(paints.count(), 2);
}

TEST_F(ZDRBezelWindowTest, LetsItsContentGoOnFillingItUntilItIsPlacedElsewhere)
{
    auto *const filling = new QWidget;
    auto *const placed = new QWidget;
    window.setContentView(filling);
    window.setContentView(placed);
    placed->setGeometry(1, 2, 3, 4);
    auto *const besides = new QWidget(bezel());
    besides->setGeometry(bezel()->rect());
    window.setFrame({100, 200, 320, 170}, false);
    EXPECT_EQ(filling->geometry(), QRect(0, 0, 320, 170));
    EXPECT_EQ(placed->geometry(), QRect(1, 2, 3, 4));
    EXPECT_EQ(besides->geometry(), QRect(0, 0, 300, 150));
    placed->setParent(nullptr);
    delete filling;
    window.setFrame({100, 200, 330, 180}, false);
    EXPECT_EQ(placed->geometry(), QRect(1, 2, 3, 4));
    delete placed;
}

TEST_F(ZDRBezelWindowTest, IsFilledWhenItIsShownForTheFirstTimeAfterItWasResized)
{
    ZDRBezelWindow other;
    auto *const view = new QWidget;
    other.setContentView(view);
    other.setFrame({0, 0, 210, 90}, false);
    other.show();
    EXPECT_EQ(view->geometry(), QRect(0, 0, 210, 90));
}

TEST_F(ZDRBezelWindowTest, MovesWithThePointer)
{
    press({150, 300});
    EXPECT_EQ(bezel()->dragType(), 2);
    drag({170, 290});
    EXPECT_EQ(window.frame(), QRectF(120, 190, 300, 150));
    drag({155.9, 300.9});
    EXPECT_EQ(window.frame(), QRectF(105, 200, 300, 150)) << "from what was at the press, cut off";
    release({155.9, 300.9});
    EXPECT_EQ(bezel()->dragType(), 2) << "until the next press";
}

TEST_F(ZDRBezelWindowTest, ResizesFromItsLowerRightCorner)
{
    press({395, 205});
    EXPECT_EQ(bezel()->dragType(), 1);
    drag({445, 155});
    EXPECT_EQ(window.frame(), QRectF(100, 150, 350, 200)) << "the upper edge stays at 350";
    EXPECT_EQ(bezel()->geometry(), QRect(0, 0, 350, 200));
    drag({-500, 900});
    EXPECT_EQ(window.frame(), QRectF(100, 330, 20, 20));
    release({-500, 900});
}

TEST_F(ZDRBezelWindowTest, MovesWhenPressedJustBesideTheGrip)
{
    press({389.5, 205});
    EXPECT_EQ(bezel()->dragType(), 2);
    release({389.5, 205});
    press({395, 210.5});
    EXPECT_EQ(bezel()->dragType(), 2);
    release({395, 210.5});
    press({390, 210});
    EXPECT_EQ(bezel()->dragType(), 1);
}

TEST_F(ZDRBezelWindowTest, StopsTwentyTwoPointsBelowTheUpperEdgeOfTheScreen)
{
    const double limit = ScreenCoordinates::mainScreenFrame().height() - 22;
    press({150, 300});
    drag({150, 5000});
    EXPECT_EQ(window.frame(), QRectF(100, limit - 150, 300, 150));
    EXPECT_EQ(window.geometry().y(), 22);
}

TEST_F(ZDRBezelWindowTest, CanBeDraggedOffTheOtherEdges)
{
    press({150, 300});
    drag({-1000, -1000});
    EXPECT_EQ(window.frame(), QRectF(-1050, -1100, 300, 150));
    drag({9000, 300});
    EXPECT_EQ(window.frame(), QRectF(8950, 200, 300, 150));
}

TEST_F(ZDRBezelWindowTest, IsDraggedByTheLeftButtonAlone)
{
    send(QEvent::MouseButtonPress, {150, 300}, Qt::RightButton);
    send(QEvent::MouseMove, {170, 300}, Qt::RightButton);
    EXPECT_EQ(window.frame(), QRectF(100, 200, 300, 150));
    EXPECT_EQ(bezel()->dragType(), 0);
    drag({170, 300});
    EXPECT_EQ(window.frame(), QRectF(100, 200, 300, 150)) << "without a press there is no drag";
}

TEST_F(ZDRBezelWindowTest, LeavesClicksOnWidgetsToThem)
{
    class Taking : public QWidget
    {
    public:
        using QWidget::QWidget;
        void mousePressEvent(QMouseEvent *) override { ++presses; }
        int presses = 0;
    };
    auto *const taking = new Taking;
    window.setContentView(taking);
    QTest::mousePress(taking, Qt::LeftButton);
    EXPECT_EQ(taking->presses, 1);
    EXPECT_EQ(bezel()->dragType(), 0);
    auto *const ignoring = new QWidget;
    window.setContentView(ignoring);
    QTest::mousePress(ignoring, Qt::LeftButton, {}, {20, 20});
    EXPECT_EQ(bezel()->dragType(), 2) << "what the content does not take drags the window";
}

TEST_F(ZDRBezelWindowTest, TellsAZeroFrameWithoutAWindow)
{
    ZDRBezelView alone;
    alone.setGeometry(100, 100, 50, 50);
    QTest::mousePress(&alone, Qt::LeftButton, {}, {25, 25});
    EXPECT_EQ(alone.dragType(), 2);
    QTest::mouseMove(&alone, {30, 30});
    EXPECT_EQ(alone.geometry(), QRect(100, 100, 50, 50)) << "there is no window to move";
}

TEST_F(ZDRBezelWindowTest, DrawsARoundPanelOfTranslucentBlack)
{
    ZDRBezelView view;
    view.resize(100, 60);
    const QImage image = Canvas(100, 60).unflipped([&view] { view.drawRect({50, 50, 1, 1}); });
    EXPECT_EQ(image.pixel(50, 30), QColor::fromRgbF(0, 0, 0, 0.7F).rgba())
        << "the dirty rectangle does not count";
    EXPECT_EQ(image.pixelColor(50, 0).alpha(), 179);
    for (const QPoint &corner :
         {QPoint(0, 0), QPoint(99, 0), QPoint(0, 59), QPoint(99, 59), QPoint(1, 1), QPoint(98, 58)})
        EXPECT_EQ(image.pixelColor(corner).alpha(), 0) << corner.x() << ' ' << corner.y();
    EXPECT_EQ(image.pixelColor(10, 0).alpha(), 179) << "the radius is ten";
    EXPECT_EQ(image.pixelColor(0, 10).alpha(), 179);
    EXPECT_EQ(image.pixelColor(3, 3).alpha(), 179) << "inside the arc";
    view.drawRect({0, 0, 100, 60}); // and nothing without a context
}

TEST_F(ZDRBezelWindowTest, FollowsThePointerToHalvesOfPointsOnBothSidesOfItself)
{
    // As on a screen of two pixels a point: Qt says whole points of the screen, rounded, and halves of them
    // in the window.
    const QPoint corner = window.geometry().topLeft();
    const auto sendInWindow = [&](QEvent::Type type, const QPointF &inWindow) {
        const QPointF global(QPointF(QPointF(corner) + inWindow).toPoint());
        QMouseEvent event(type, inWindow, inWindow, global,
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(bezel(), &event);
    };
    for (double by = -120; by <= 120; by += 0.5) {
        window.setFrame({100, 200, 300, 150}, false);
        sendInWindow(QEvent::MouseButtonPress, {20, 30});
        // Events tell where the pointer is in the window that has not moved yet.
        sendInWindow(QEvent::MouseMove, {20 + by, 30});
        EXPECT_EQ(window.frame().x(), std::trunc(100 + by)) << by;
        window.setFrame({100, 200, 300, 150}, false);
        sendInWindow(QEvent::MouseButtonPress, {20, 30});
        sendInWindow(QEvent::MouseMove, {20, 30 + by});
        EXPECT_EQ(window.frame().y(), std::trunc(200 - by)) << by;
    }
    window.setFrame({100, 200, 300, 150}, false);
    sendInWindow(QEvent::MouseButtonPress, {20, 30});
    sendInWindow(QEvent::MouseMove, {-150.5, 30}); // the screen's negative side, too
    EXPECT_EQ(window.frame().x(), -70);
}
