// SPDX-License-Identifier: MIT
#include "AlertFixture.h"

#include "support/Look.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QWindow>

using namespace std::chrono_literals;

namespace
{
class AlertInputTest : public AlertFixture
{
protected:
    AlertInputTest() { show(shown); }

    void activate()
    {
        window(shown).activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window(shown)));
    }
    /// As the window system sends it.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window(shown).windowHandle(), key, modifiers);
        QCoreApplication::processEvents();
    }
    void click(const QString &text)
    {
        const auto *const pressed = button(window(shown), text);
        const QPoint place = pressed->mapTo(&window(shown), pressed->rect().center());
        QTest::mouseClick(window(shown).windowHandle(), Qt::LeftButton, {}, place);
        QCoreApplication::processEvents();
    }
    static int pixelsThatDiffer(const QImage &one, const QImage &other)
    {
        int count = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x)
                count += qAbs(qBlue(one.pixel(x, y)) - qBlue(other.pixel(x, y))) > 60 ? 1 : 0;
        }
        return count;
    }

    const Alert shown = alert("Backup");
};
} // namespace

TEST_F(AlertInputTest, TakesNoClickUntilItHasBeenSeenForHalfASecond)
{
    for (const QString button : {"Cancel", "Later", "Hide"})
        click(button);
    clock->advance(InputGate::pause - 1ms);
    for (const QString button : {"Cancel", "Later", "Hide"})
        click(button);
    EXPECT_EQ(told, QStringList("shown Backup"));
    EXPECT_FALSE(QApplication::activePopupWidget());
    clock->advance(1ms);
    click("Cancel");
    EXPECT_EQ(told, (QStringList{"shown Backup", "activated Backup"}));
}

TEST_F(AlertInputTest, TakesNoKeyUntilItHasBeenSeenForHalfASecond)
{
    activate();
    button(window(shown), "Cancel")->setText("&Cancel");
    clock->advance(InputGate::pause - 1ms);
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
        press(key);
    press(Qt::Key_C, Qt::AltModifier);
    press(Qt::Key_L, Qt::AltModifier);
    EXPECT_EQ(told, QStringList("shown Backup"));
    EXPECT_FALSE(QApplication::activePopupWidget());
}

TEST_F(AlertInputTest, APressThatBeganTooEarlyCountsNotWhenItEnds)
{
    const auto *const cancel = button(window(shown), "Cancel");
    const QPoint place = cancel->mapTo(&window(shown), cancel->rect().center());
    QTest::mousePress(window(shown).windowHandle(), Qt::LeftButton, {}, place);
    wait();
    QTest::mouseRelease(window(shown).windowHandle(), Qt::LeftButton, {}, place);
    QCoreApplication::processEvents();
    EXPECT_EQ(told, QStringList("shown Backup"));
}

TEST_F(AlertInputTest, WaitsLongerWhereItWasNotYetToBeSeen)
{
    const auto late = alert("Late");
    presenter->show(late);
    // The window system does not show it yet: minimised, or behind a lock.
    window(late).hide();
    QCoreApplication::processEvents();
    clock->advance(10s);
    EXPECT_FALSE(button(window(late), "Cancel")->isEnabled());
    window(late).show();
    QCoreApplication::processEvents();
    clock->advance(ZDRWindow::fadeTime + InputGate::pause - 1ms);
    EXPECT_FALSE(button(window(late), "Cancel")->isEnabled());
    clock->advance(1ms);
    EXPECT_TRUE(button(window(late), "Cancel")->isEnabled());
}

TEST_F(AlertInputTest, HideAndEscapePutItAwayWithoutCancelling)
{
    wait();
    click("Hide");
    EXPECT_EQ(told, (QStringList{"shown Backup", "closed Backup"}));
    EXPECT_EQ(presenter->window(shown), nullptr);
    clock->advance(1s);
    show(shown);
    wait();
    activate();
    press(Qt::Key_Escape);
    EXPECT_EQ(told.mid(2), (QStringList{"shown Backup", "closed Backup"}));
    clock->advance(1s);
}

TEST_F(AlertInputTest, HideIsSmall)
{
    const auto *const hide = button(window(shown), "Hide");
    const auto *const cancel = button(window(shown), "Cancel");
    EXPECT_LT(hide->height(), cancel->height());
    EXPECT_LT(hide->geometry().right(), button(window(shown), "Later")->x()) << "away from the others";
}

TEST_F(AlertInputTest, ReturnAndEnterPressCancel)
{
    wait();
    activate();
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        press(key);
        EXPECT_EQ(told.last(), "activated Backup");
        clock->advance(1s);
        show(shown);
        wait();
        activate();
    }
}

TEST_F(AlertInputTest, ReturnPressesTheButtonThatHasTheFocus)
{
    wait();
    activate();
    press(Qt::Key_Tab);
    ASSERT_TRUE(button(window(shown), "Hide")->hasFocus());
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    ASSERT_TRUE(QApplication::activePopupWidget()) << "the menu of Later";
    press(Qt::Key_Escape);
    press(Qt::Key_Backtab);
    press(Qt::Key_Return);
    EXPECT_EQ(told.last(), "closed Backup") << "Hide";
}

TEST_F(AlertInputTest, CancelHasARingWheneverItHasTheFocus)
{
    wait();
    activate();
    auto *const cancel = button(window(shown), "Cancel");
    ASSERT_TRUE(cancel->hasFocus()) << "to begin with";
    const auto picture = [cancel] {
        return Look{1, false, false}.pictureOf(*cancel, QColor(33, 33, 33), QWidget::DrawChildren);
    };
    const QImage focused = picture();
    window(shown).setFocus();
    ASSERT_FALSE(cancel->hasFocus());
    const QImage bare = picture();
    EXPECT_GT(pixelsThatDiffer(focused, bare), cancel->width()) << "all around";
    cancel->setFocus(Qt::MouseFocusReason);
    window(shown).setAttribute(Qt::WA_KeyboardFocusChange, false); // as after a click
    EXPECT_GT(pixelsThatDiffer(picture(), bare), cancel->width());
}
