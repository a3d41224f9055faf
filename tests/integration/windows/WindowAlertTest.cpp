// SPDX-License-Identifier: MIT
#include "DesktopSession.h"

#include "DozelyKit/interface/controls/ZDRButton.h"
#include "hosts/agent/AlertWindowPresenter.h"
#include "hosts/agent/LaterButton.h"

#include <QApplication>
#include <QDateTime>
#include <QMenu>
#include <QWindow>

namespace
{
class WindowAlert : public DesktopSession
{
protected:
    WindowAlert()
    {
        showBackdrop();
        presenter.setEvents({.activated = [this](const auto &) { ++activations; },
                             .closed = [this](const auto &) { ++closings; }});
        alert->setTitle("Backup");
        alert->setInformativeText("Will run soon.");
        alert->setActionButtonTitle("Cancel");
        alert->setUserInfo({{"Schedule Date", QDateTime::currentDateTimeUtc().addSecs(60)}});
        presenter.setLater({[](const auto &) { return true; },
                            [this](const auto &, Postponement choice) {
                                chosen += choice;
                                return true;
                            }});
        presenter.show(alert);
        EXPECT_TRUE(waitUntil([this] { return window().findChild<ZDRButton *>()->isEnabled(); }))
            << "half a second after it is seen";
        place = window().pos() + QPoint(250, 8);
        EXPECT_TRUE(waitUntil([this] { return colorAt(place).lightness() < 80; }));
    }
    AlertWindow &window() { return *presenter.window(alert); }

    std::shared_ptr<NSUserNotification> alert = std::make_shared<NSUserNotification>();
    QList<Postponement> chosen;
    QPoint place; // on the bezel, right of the title
    int activations = 0;
    int closings = 0;
    AlertWindowPresenter presenter; // the last: its windows tell those above
};
} // namespace

TEST_F(WindowAlert, LeavesTheKeysWhereTheyAre)
{
    EXPECT_EQ(activeWindow(), backdrop.winId());
    EXPECT_TRUE(backdrop.isActiveWindow());
}

TEST_F(WindowAlert, IsCancelledByThePointer)
{
    const auto *const button = window().findChild<ZDRButton *>();
    movePointerTo(button->mapToGlobal(button->rect().center()));
    EXPECT_TRUE(waitUntil([button] { return button->layer().borderColor == QColor(Qt::black); }))
        << "hovered";
    xdotool({"click", "1"});
    EXPECT_TRUE(waitUntil([this] { return activations == 1; }));
    EXPECT_EQ(presenter.window(alert), nullptr);
    EXPECT_TRUE(waitUntil([this] { return colorAt(place) == QColor(Qt::white); })) << "it has faded away";
    EXPECT_EQ(closings, 0);
}

TEST_F(WindowAlert, IsDismissedByTheWindowManagersClose)
{
    window().activateWindow();
    ASSERT_TRUE(becomesActive(window()));
    xdotool({"key", "alt+F4"});
    EXPECT_TRUE(waitUntil([this] { return closings == 1; }));
    EXPECT_EQ(activations, 0);
    EXPECT_TRUE(waitUntil([this] { return colorAt(place) == QColor(Qt::white); }));
}

TEST_F(WindowAlert, IsDismissedByEscapeOnceTheUserWentThere)
{
    window().activateWindow();
    ASSERT_TRUE(becomesActive(window()));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(waitUntil([this] { return closings == 1; }));
    EXPECT_EQ(activations, 0);
    EXPECT_EQ(presenter.window(alert), nullptr);
}

TEST_F(WindowAlert, IsPutOffByThePointerAndTheArrowKeys)
{
    const auto *const button = window().findChild<LaterButton *>();
    movePointerTo(button->mapToGlobal(button->rect().center()));
    xdotool({"click", "1"});
    ASSERT_TRUE(waitUntil([button] { return QApplication::activePopupWidget() == button->menu(); }));
    ASSERT_TRUE(waitUntil([button] { return button->menu()->windowHandle()->isExposed(); }));
    xdotool({"key", "Down", "Down", "Return"});
    ASSERT_TRUE(waitUntil([this] { return chosen.size() == 1; }));
    EXPECT_EQ(chosen.first(), Postponement::Hour);
    EXPECT_TRUE(waitUntil([this] { return presenter.window(alert) == nullptr; }));
    EXPECT_EQ(activations + closings, 0);
}

TEST_F(WindowAlert, KeepsItsPlaceWhenEscapeLeavesTheMenu)
{
    window().activateWindow();
    ASSERT_TRUE(becomesActive(window()));
    const auto *const button = window().findChild<LaterButton *>();
    xdotool({"key", "Tab", "Tab", "space"});
    ASSERT_TRUE(waitUntil([button] { return QApplication::activePopupWidget() == button->menu(); }));
    xdotool({"key", "Escape"});
    ASSERT_TRUE(waitUntil([] { return !QApplication::activePopupWidget(); }));
    EXPECT_TRUE(presenter.window(alert));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(waitUntil([this] { return closings == 1; }));
    EXPECT_TRUE(chosen.isEmpty());
}
