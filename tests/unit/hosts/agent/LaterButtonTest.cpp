// SPDX-License-Identifier: MIT
#include "hosts/agent/LaterButton.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/agent/AlertWindowPresenter.h"
#include "support/BaselinePicture.h"
#include "support/FakeClock.h"
#include "support/Look.h"
#include "support/WaitUntil.h"

#include <QAccessible>
#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QWindow>

#include <gmock/gmock.h>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
/// An alert whose action may be put off, in a window that has the keys. Without the agent's bundle the texts
/// are their keys.
class LaterButtonTest : public testing::Test
{
protected:
    LaterButtonTest()
    {
        Port<Clock>::current() = clock;
        presenter->setEvents({.shown = [](const auto &) {},
                              .activated = [this](const auto &) { told += "activated"; },
                              .closed = [this](const auto &) { told += "closed"; }});
        presenter->setLater({[this](const auto &asked) { return isOffered && asked == alert; },
                             [this](const auto &asked, Postponement choice) {
                                 if (asked == alert)
                                     chosen += choice;
                                 return isTaken;
                             }});
        alert->setTitle("Backup");
        alert->setInformativeText("Will run on 14 Mar 2026, 19:30.");
        alert->setActionButtonTitle("Cancel");
        alert->setUserInfo({{"Schedule Date", clock->currentDate().addSecs(60)}});
    }
    void show()
    {
        presenter->show(alert);
        QCoreApplication::processEvents(); // it is exposed
        clock->advance(1s);
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    AlertWindow &window() const { return *presenter->window(alert); }
    LaterButton &button() const { return *window().findChild<LaterButton *>(); }
    QMenu &menu() const { return *button().menu(); }
    /// As the keyboard sends it: to the window, or whatever has opened on it.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(window().windowHandle(), key, modifiers);
        QCoreApplication::processEvents();
    }
    bool isOpen() const { return QApplication::activePopupWidget() == &menu(); }
    static QString accessibleName(QWidget &widget)
    {
        return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<AlertWindowPresenter> presenter = std::make_shared<AlertWindowPresenter>();
    std::shared_ptr<NSUserNotification> alert = std::make_shared<NSUserNotification>();
    QList<Postponement> chosen;
    QStringList told;
    bool isOffered = true;
    bool isTaken = true;
};
} // namespace

TEST_F(LaterButtonTest, StandsBesideCancelWhereItIsOffered)
{
    show();
    ASSERT_TRUE(button().isVisible());
    auto *const cancel = window().findChild<ZDRButton *>();
    EXPECT_EQ(cancel->text(), "Cancel");
    EXPECT_LT(button().geometry().right(), cancel->x());
    EXPECT_EQ(button().geometry().center().y(), cancel->geometry().center().y());
    EXPECT_TRUE(window().rect().contains(QRect(cancel->mapTo(&window(), QPoint()), cancel->size())));
    EXPECT_EQ(window().width(), 340);
}

TEST_F(LaterButtonTest, IsNotThereWhereItIsNotOffered)
{
    isOffered = false;
    show();
    EXPECT_FALSE(button().isVisible());
    isOffered = true;
    presenter->show(alert);
    EXPECT_TRUE(button().isVisible()) << "shown anew";
}

TEST_F(LaterButtonTest, OffersThreeChoicesByThePointer)
{
    show();
    isTaken = false;
    const QList<QAction *> choices = menu().actions();
    ASSERT_EQ(choices.size(), 3);
    for (QAction *const choice : choices) {
        QTest::mouseClick(&button(), Qt::LeftButton);
        ASSERT_TRUE(isOpen());
        QTest::mouseClick(&menu(), Qt::LeftButton, {}, menu().actionGeometry(choice).center());
        QCoreApplication::processEvents();
        EXPECT_FALSE(isOpen());
    }
    EXPECT_EQ(choices[0]->text(), "In 10 minutes");
    EXPECT_EQ(choices[1]->text(), "In an hour");
    EXPECT_EQ(choices[2]->text(), "Skip today");
    EXPECT_EQ(chosen, (QList{Postponement::TenMinutes, Postponement::Hour, Postponement::SkipToday}));
}

TEST_F(LaterButtonTest, TheWindowGoesOnceTheChoiceWasTaken)
{
    show();
    button().openMenu();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(chosen, QList{Postponement::TenMinutes});
    EXPECT_EQ(presenter->window(alert), nullptr);
    EXPECT_TRUE(told.isEmpty()) << "that is neither a Cancel nor a dismissal";
}

TEST_F(LaterButtonTest, TheWindowStaysWhenTheChoiceWasNotTaken)
{
    isTaken = false;
    show();
    button().openMenu();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(chosen.size(), 1);
    ASSERT_TRUE(presenter->window(alert));
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(button().isEnabled());
}

TEST_F(LaterButtonTest, IsReachedAndOpenedByTheKeyboardAlone)
{
    show();
    EXPECT_TRUE(window().findChild<ZDRButton *>()->hasFocus()) << "Cancel, to begin with";
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    EXPECT_TRUE(button().hasFocus()) << "in the order in which they stand";
    press(Qt::Key_Down);
    ASSERT_TRUE(isOpen());
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(chosen, QList{Postponement::Hour});
}

TEST_F(LaterButtonTest, OpensByItsMnemonicAndItsChoicesHaveSomeToo)
{
    show();
    button().setText("&Later");
    menu().actions()[1]->setText("In an &hour");
    press(Qt::Key_L, Qt::AltModifier);
    ASSERT_TRUE(isOpen());
    press(Qt::Key_H);
    EXPECT_EQ(chosen, QList{Postponement::Hour});
}

TEST_F(LaterButtonTest, OpensBySpaceAndItsLastChoiceIsReachedFromBelow)
{
    show();
    button().setFocus();
    press(Qt::Key_Space);
    ASSERT_TRUE(isOpen());
    press(Qt::Key_Up);
    press(Qt::Key_Return);
    EXPECT_EQ(chosen, QList{Postponement::SkipToday});
}

TEST_F(LaterButtonTest, EscapeClosesTheMenuFirstAndTheWindowThen)
{
    show();
    button().setFocus();
    press(Qt::Key_Down);
    ASSERT_TRUE(isOpen());
    press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(told.isEmpty());
    EXPECT_EQ(button().layer().backgroundColor, QColor::fromRgbF(0, 0, 0, 0.4F)) << "it is let go";
    press(Qt::Key_Escape);
    EXPECT_EQ(told, QStringList("closed"));
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(LaterButtonTest, IsUpAgainOnceItsMenuIsClosed)
{
    show();
    QTest::mousePress(&button(), Qt::LeftButton);
    ASSERT_TRUE(menu().isVisible());
    menu().close();
    EXPECT_FALSE(button().isDown());
}

TEST_F(LaterButtonTest, WithItsWindowTakesNoInputOnceThatIsWithdrawn)
{
    show();
    const QPointer<LaterButton> later = &button();
    const QPointer<AlertWindow> going = &window();
    presenter->close(alert);
    ASSERT_TRUE(later && going) << "it fades";
    EXPECT_FALSE(later->isEnabled());
    for (const auto *const each : going->findChildren<AlertButton *>())
        EXPECT_FALSE(each->isEnabled()) << qPrintable(each->text());
}

TEST_F(LaterButtonTest, FollowsAnotherFontOnceItHasItsSize)
{
    AlertButton fitted("What a button says at most");
    fitted.fitToTitle();
    const QSize size = fitted.size();
    QFont larger = fitted.font();
    larger.setPixelSize(40);
    fitted.setFont(larger);
    EXPECT_GT(fitted.width(), size.width());
    EXPECT_EQ(fitted.minimumSize(), fitted.maximumSize());
    AlertButton free("Cancel");
    free.setFont(larger);
    EXPECT_NE(free.minimumSize(), free.maximumSize()) << "nobody has fitted it yet";
}

TEST_F(LaterButtonTest, TellsScreenReadersWhatItIs)
{
    show();
    button().setText("&Later");
    EXPECT_EQ(accessibleName(button()), "Later");
    QAccessibleInterface *const seen = QAccessible::queryAccessibleInterface(&button());
    EXPECT_EQ(seen->role(), QAccessible::ButtonMenu);
    EXPECT_TRUE(seen->state().hasPopup);
    EXPECT_EQ(accessibleName(menu()), "Later");
    QAccessibleInterface *const choices = QAccessible::queryAccessibleInterface(&menu());
    ASSERT_EQ(choices->childCount(), 3);
    EXPECT_EQ(choices->child(2)->text(QAccessible::Name), "Skip today");
    EXPECT_EQ(choices->child(2)->role(), QAccessible::MenuItem);
}

TEST_F(LaterButtonTest, AWindowThatGoesTakesItsMenuAlong)
{
    show();
    button().openMenu();
    ASSERT_TRUE(isOpen());
    presenter->close(alert);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    clock->advance(1s);
    QCoreApplication::processEvents();
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(LaterButtonTest, AChoiceCountsNoMoreOnceTheAlertHasGone)
{
    show();
    QAction *const choice = menu().actions().first();
    choice->trigger(); // it is on its way
    presenter->close(alert);
    QCoreApplication::processEvents();
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(LaterButtonTest, TheWindowIsAsWideAsLargeTextNeeds)
{
    QFont large = QApplication::font();
    const QFont former = large;
    large.setPixelSize(3 * former.pixelSize());
    QApplication::setFont(large);
    show();
    for (auto *const shown : window().findChildren<ZDRButton *>()) {
        EXPECT_TRUE(window().rect().contains(QRect(shown->mapTo(&window(), QPoint()), shown->size())));
        EXPECT_GE(shown->width(), shown->fontMetrics().horizontalAdvance(shown->text()));
    }
    EXPECT_GT(window().width(), 340);
    EXPECT_EQ(window().size(), window().wantedSize());
    QApplication::setFont(former);
}

TEST_F(LaterButtonTest, ItsMenuRunsFromRightToLeftWithSuchText)
{
    alert->setInformativeText("سيُنفَّذ في 14 مارس 2026، 7:30 م.");
    show();
    auto *const cancel = window().findChild<ZDRButton *>();
    EXPECT_GT(button().x(), cancel->geometry().right());
    EXPECT_EQ(menu().layoutDirection(), Qt::RightToLeft);
}

class LaterPictures : public LaterButtonTest, public testing::WithParamInterface<Look>
{
};

TEST_P(LaterPictures, OfAnAlertThatMayBePutOffLookAsBefore)
{
    if (GetParam().rightToLeft) {
        alert->setTitle("نسخ احتياطي");
        alert->setInformativeText("سيُنفَّذ في 14 مارس 2026، 7:30 م.");
        alert->setActionButtonTitle("إلغاء");
    }
    presenter->show(alert);
    if (GetParam().rightToLeft) {
        button().setText("لاحقًا");
        presenter->show(alert); // with the size that it needs
    }
    QCoreApplication::processEvents();
    clock->advance(19s);
    window().setPalette(GetParam().palette());
    QCoreApplication::processEvents();
    clock->advance(1s);
    const QImage picture =
        GetParam().pictureOf(window(), GetParam().dark ? "#303a50" : "#e8e8e8", QWidget::DrawChildren);
    EXPECT_TRUE(looksLikeBaseline(picture, GetParam().name("alert-window-later")));
}

INSTANTIATE_TEST_SUITE_P(Looks, LaterPictures, Look::all(), Look::ofTest);
INSTANTIATE_TEST_SUITE_P(ScalesBetween, LaterPictures, Look::atScalesBetween(), Look::ofTest);
