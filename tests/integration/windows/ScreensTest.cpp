// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/ScreenCoordinates_p.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"
#include "hosts/agent/AlertWindowPresenter.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>

#include <gmock/gmock.h>

using namespace dozely;

TEST(Screens, CountFromTheMainOneAlone)
{
    ASSERT_EQ(QGuiApplication::screens().size(), 2);
    ASSERT_EQ(QGuiApplication::primaryScreen()->geometry(), QRect(1000, 200, 800, 600));
    EXPECT_EQ(ScreenCoordinates::mainScreenFrame(), QRectF(0, 0, 800, 600));
    EXPECT_EQ(ScreenCoordinates::toKit(QPointF(1000, 800)), QPointF(0, 0));
    EXPECT_EQ(ScreenCoordinates::toKit(QPointF(1100, 700)), QPointF(100, 100));
    EXPECT_EQ(ScreenCoordinates::toKit(QPointF(0, 1200)), QPointF(-1000, -400))
        << "the other one's lower left";
    EXPECT_EQ(ScreenCoordinates::toQt({-1000, -400, 1000, 1200}), QRect(0, 0, 1000, 1200));
}

TEST(Screens, LetAWindowBeDraggedFromOneToTheOtherWithinTheHeightOfTheMainOne)
{
    ZDRBezelWindow window;
    window.setFrame({100, 300, 200, 100}, false);
    window.setContentView(nullptr);
    window.show();
    EXPECT_EQ(window.geometry(), QRect(1100, 400, 200, 100));
    const auto send = [&window](QEvent::Type type, const QPointF &global) {
        QMouseEvent event(type, global - window.pos(), global,
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(window.contentView(), &event);
    };
    send(QEvent::MouseButtonPress, {1150, 450});
    send(QEvent::MouseMove, {350, 750});
    EXPECT_EQ(window.geometry(), QRect(300, 700, 200, 100)) << "on the other screen";
    EXPECT_EQ(window.frame(), QRectF(-700, 0, 200, 100));
    send(QEvent::MouseMove, {350, 60});
    EXPECT_EQ(window.geometry().y(), 222) << "22 below the upper edge of the main screen, there too";
}

TEST(Screens, ShowAlertsOnTheOneWhereThePointerIs)
{
    AlertWindowPresenter presenter;
    presenter.setEvents({});
    const auto alert = std::make_shared<NSUserNotification>();
    alert->setTitle("Backup");
    for (const QScreen *const screen : QGuiApplication::screens()) {
        QCursor::setPos(screen->geometry().center());
        presenter.show(alert);
        const QRect place = presenter.window(alert)->geometry();
        EXPECT_EQ(place.topRight(), screen->availableGeometry().topRight() + QPoint(-16, 16))
            << screen->name().toStdString();
        presenter.close(alert);
    }
}
