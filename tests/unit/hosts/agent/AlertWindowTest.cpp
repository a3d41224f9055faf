// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertWindowPresenter.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/interface/controls/ZDRButton.h"
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "DozelyKit/system/alerts/NSUserNotificationCenter.h"
#include "DozelyKit/system/alerts/UserNotificationPresenter.h"
#include "support/AlertDelegates.h"
#include "support/BaselinePicture.h"
#include "support/FakeClock.h"
#include "support/FakeUserNotificationPresenter.h"
#include "support/Look.h"
#include "support/WaitUntil.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QTest>

#include <gmock/gmock.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace
{
class AlertWindowTest : public testing::Test
{
protected:
    AlertWindowTest()
    {
        Port<Clock>::current() = clock;
        presenter->setEvents({
            .shown = [this](const auto &notification) { told += "shown " + notification->title(); },
            .activated = [this](const auto &notification) { told += "activated " + notification->title(); },
            .closed = [this](const auto &notification) { told += "closed " + notification->title(); },
        });
    }
    std::shared_ptr<NSUserNotification> alert(const QString &title, std::chrono::seconds lead = 60s)
    {
        const auto made = std::make_shared<NSUserNotification>();
        made->setTitle(title);
        made->setInformativeText("Will run on 14 Mar 2026, 19:30.");
        made->setActionButtonTitle("Cancel");
        if (lead > 0s)
            made->setUserInfo({{"Schedule Date", clock->currentDate().addSecs(lead.count())}});
        return made;
    }
    /// Shows it, until it takes input.
    void show(const std::shared_ptr<NSUserNotification> &alert)
    {
        presenter->show(alert);
        QCoreApplication::processEvents(); // it is exposed
        clock->advance(700ms);
    }
    AlertWindow &window(const std::shared_ptr<NSUserNotification> &alert)
    {
        return *presenter->window(alert);
    }
    ZDRButton *button(AlertWindow &window) { return window.findChild<ZDRButton *>(); }
    ZDRProgressIndicator *pie(AlertWindow &window) { return window.findChild<ZDRProgressIndicator *>(); }
    static QStringList labels(const AlertWindow &window)
    {
        QStringList texts;
        for (const auto *const label : window.findChildren<QLabel *>()) {
            if (label->isVisible())
                texts += label->text();
        }
        return texts;
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    std::shared_ptr<AlertWindowPresenter> presenter = std::make_shared<AlertWindowPresenter>();
    QStringList told;
};
} // namespace

TEST_F(AlertWindowTest, ShowsNameMessagePieAndButtonOnABezel)
{
    const auto shown = alert("Backup");
    presenter->show(shown);
    EXPECT_EQ(told, QStringList("shown Backup"));
    AlertWindow &seen = window(shown);
    EXPECT_TRUE(seen.isVisible());
    EXPECT_TRUE(qobject_cast<ZDRBezelView *>(seen.contentView()));
    EXPECT_EQ(labels(seen), (QStringList{"Backup", "Will run on 14 Mar 2026, 19:30.", "in 1 minute"}));
    EXPECT_EQ(button(seen)->text(), "Cancel");
    EXPECT_TRUE(button(seen)->isVisible());
    EXPECT_TRUE(pie(seen)->isVisible());
    EXPECT_EQ(seen.windowTitle(), "Backup");
    EXPECT_EQ(button(seen)->layer().cornerRadius, button(seen)->height() / 2.0);
    EXPECT_EQ(seen.size(), seen.wantedSize());
    for (const auto *const label : seen.findChildren<QLabel *>()) {
        if (label->isVisible()) {
            EXPECT_GE(label->height(), label->heightForWidth(label->width())) << qPrintable(label->text());
        }
    }
}

TEST_F(AlertWindowTest, CountsDownFromTheWholePieToNothingAtTheDate)
{
    const auto shown = alert("Backup", 60s);
    presenter->show(shown);
    QCoreApplication::processEvents();
    ZDRProgressIndicator *const seen = pie(window(shown));
    EXPECT_FLOAT_EQ(seen->maxValue(), 60);
    EXPECT_FLOAT_EQ(seen->floatValue(), 60);
    clock->advance(15s);
    EXPECT_NEAR(seen->floatValue(), 45, 0.3);
    clock->advance(30s);
    EXPECT_NEAR(seen->floatValue(), 15, 0.3);
    clock->advance(15s);
    EXPECT_EQ(seen->floatValue(), 0);
    clock->advance(60s);
    EXPECT_NEAR(seen->floatValue(), 0, 0.3);
}

TEST_F(AlertWindowTest, FollowsAClockThatIsSet)
{
    const auto shown = alert("Backup", 60s);
    presenter->show(shown);
    QCoreApplication::processEvents();
    ZDRProgressIndicator *const seen = pie(window(shown));
    clock->jumpTo(clock->currentDate().addSecs(20));
    EXPECT_NEAR(seen->floatValue(), 40, 0.3);
    clock->advance(10s);
    EXPECT_NEAR(seen->floatValue(), 30, 0.5);
    clock->jumpTo(clock->currentDate().addSecs(500));
    EXPECT_EQ(seen->floatValue(), 0);
}

TEST_F(AlertWindowTest, WakesTheProcessRarelyWhileItCountsHours)
{
    const auto shown = alert("Backup", 6h);
    show(shown);
    ASSERT_EQ(clock->pendingDelays().size(), 1);
    EXPECT_EQ(clock->pendingDelays().first(), 60s);
}

TEST_F(AlertWindowTest, HasNoPieWithoutADateAndNoButtonWithoutATitle)
{
    const auto shown = alert("Note", 0s);
    shown->setActionButtonTitle({});
    presenter->show(shown);
    EXPECT_FALSE(pie(window(shown))->isVisible());
    EXPECT_FALSE(button(window(shown))->isVisible());
    EXPECT_TRUE(window(shown).isVisible());
}

TEST_F(AlertWindowTest, TellsThatItsButtonWasPressedAndFadesAway)
{
    const auto shown = alert("Backup");
    show(shown);
    const QPointer<AlertWindow> seen = &window(shown);
    QTest::mouseClick(button(*seen), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(told, (QStringList{"shown Backup", "activated Backup"}));
    EXPECT_EQ(presenter->window(shown), nullptr);
    ASSERT_TRUE(seen) << "it fades";
    QTest::mouseClick(button(*seen), Qt::LeftButton);
    clock->advance(199ms);
    EXPECT_TRUE(seen && seen->isVisible());
    clock->advance(1ms);
    EXPECT_FALSE(seen);
    QCoreApplication::processEvents();
    EXPECT_EQ(told.size(), 2) << "pressed once";
}

TEST_F(AlertWindowTest, GoesWhenItIsClosedAndTellsNobody)
{
    const auto shown = alert("Backup");
    show(shown);
    const QPointer<AlertWindow> seen = &window(shown);
    presenter->close(shown);
    clock->advance(1s);
    QCoreApplication::processEvents();
    EXPECT_FALSE(seen);
    EXPECT_EQ(told, QStringList("shown Backup"));
    presenter->close(shown); // harmless
    presenter->close(alert("Never shown"));
}

TEST_F(AlertWindowTest, TellsThatTheUserTookTheWindowAway)
{
    const auto shown = alert("Backup");
    show(shown);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window(shown))); // the user went there
    QTest::keyClick(&window(shown), Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([this] { return told.size() == 2; }));
    EXPECT_EQ(told, (QStringList{"shown Backup", "closed Backup"}));
    EXPECT_EQ(presenter->window(shown), nullptr);
}

TEST_F(AlertWindowTest, ShowsAnAlertAnewInTheSameWindow)
{
    const auto shown = alert("Backup");
    presenter->show(shown);
    QCoreApplication::processEvents();
    clock->advance(10s);
    const auto *const seen = &window(shown);
    shown->setInformativeText("Will run later.");
    presenter->show(shown);
    EXPECT_EQ(&window(shown), seen);
    EXPECT_EQ(labels(*seen)[1], "Will run later.");
    EXPECT_NEAR(pie(window(shown))->floatValue(), 50, 0.3) << "the countdown goes on";
    EXPECT_EQ(told.size(), 2);
}

TEST_F(AlertWindowTest, PlacesSeveralAlertsOneBelowTheOther)
{
    const auto first = alert("First");
    const auto second = alert("Second");
    presenter->show(first);
    presenter->show(second);
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(window(first).geometry().topRight(), area.topRight() + QPoint(-16, 16));
    EXPECT_EQ(window(second).x(), window(first).x());
    EXPECT_GT(window(second).y(), window(first).geometry().bottom());
    EXPECT_TRUE(area.contains(window(second).geometry()));
}

TEST_F(AlertWindowTest, FollowsWhenTheScreenThatItStoodOnIsTakenAway)
{
    const auto shown = alert("Backup");
    presenter->show(shown);
    const QRect place = window(shown).geometry();
    QScreen *const screen = QGuiApplication::primaryScreen();
    window(shown).move(100, 50);
    Q_EMIT screen->availableGeometryChanged(screen->availableGeometry());
    EXPECT_EQ(window(shown).pos(), QPoint(100, 50)) << "where it can be seen it stays";
    window(shown).move(-5000, 50);
    Q_EMIT screen->availableGeometryChanged(screen->availableGeometry());
    EXPECT_EQ(window(shown).geometry(), place);
}

TEST_F(AlertWindowTest, ShowsForeignTextAsItIsAndNotWithoutEnd)
{
    const auto shown = alert("<b>Backup</b> & more");
    shown->setInformativeText(QString(100000, 'x') + "\n\n");
    presenter->show(shown);
    EXPECT_EQ(labels(window(shown))[0], "<b>Backup</b> & more");
    EXPECT_EQ(window(shown).findChildren<QLabel *>()[0]->textFormat(), Qt::PlainText);
    EXPECT_LT(labels(window(shown))[1].size(), 500);
    EXPECT_LT(window(shown).height(), 700);
}

TEST_F(AlertWindowTest, RunsFromRightToLeftWithSuchText)
{
    const auto shown = alert("أمر");
    shown->setInformativeText("سيُنفَّذ في 14 مارس 2026، 7:30 م.");
    presenter->show(shown);
    EXPECT_EQ(window(shown).layoutDirection(), Qt::RightToLeft);
    EXPECT_GT(pie(window(shown))->x(), button(window(shown))->geometry().right());
}

TEST_F(AlertWindowTest, LeavesNothingBehindWhenThePresenterGoesWhileWindowsFade)
{
    const auto fading = alert("Fading");
    const auto shown = alert("Shown");
    presenter->show(fading);
    presenter->show(shown);
    const QList<QPointer<AlertWindow>> windows{&window(fading), &window(shown)};
    presenter->close(fading);
    presenter.reset();
    for (const auto &seen : windows)
        EXPECT_FALSE(seen);
    clock->advance(1s);
}

TEST_F(AlertWindowTest, IsClosedWithTheDesktopsNotificationByEitherOnesButton)
{
    const auto desktop = std::make_shared<FakeUserNotificationPresenter>();
    Port<UserNotificationPresenter>::current() = desktop;
    alertWindow() = presenter;
    auto &center = NSUserNotificationCenter::defaultUserNotificationCenter();
    FullDelegate delegate;
    center.setDelegate(&delegate);

    const auto first = alert("First");
    center.deliverNotification(first);
    EXPECT_EQ(desktop->shown, QList{first}) << "both show it";
    ASSERT_TRUE(presenter->window(first));
    show(first);
    QTest::mouseClick(button(window(first)), Qt::LeftButton);
    ASSERT_TRUE(waitUntil([&delegate] { return delegate.activated.size() == 1; }));
    EXPECT_TRUE(desktop->closed.contains(first)) << "the window's button closes the notification";
    EXPECT_EQ(presenter->window(first), nullptr);
    EXPECT_EQ(delegate.activated, QStringList("First"));

    const auto second = alert("Second");
    center.deliverNotification(second);
    ASSERT_TRUE(presenter->window(second));
    desktop->events.activated(second);
    ASSERT_TRUE(waitUntil([&delegate] { return delegate.activated.size() == 2; }));
    EXPECT_EQ(presenter->window(second), nullptr) << "the notification's button closes the window";
    EXPECT_EQ(delegate.activated, (QStringList{"First", "Second"}));

    const auto third = alert("Third");
    center.deliverNotification(third);
    center.removeDeliveredNotification(third);
    EXPECT_EQ(presenter->window(third), nullptr) << "withdrawn";
    alertWindow().reset();
}

class AlertPictures : public AlertWindowTest, public testing::WithParamInterface<Look>
{
};

TEST_P(AlertPictures, OfAnAlertLookAsBefore)
{
    const auto shown = alert(GetParam().rightToLeft ? "نسخ احتياطي" : "Backup", 60s);
    if (GetParam().rightToLeft) {
        shown->setInformativeText("سيُنفَّذ في 14 مارس 2026، 7:30 م.");
        shown->setActionButtonTitle("إلغاء");
    }
    show(shown);
    clock->advance(19300ms);
    AlertWindow &seen = window(shown);
    seen.setPalette(GetParam().palette());
    QCoreApplication::processEvents();
    const QImage picture =
        GetParam().pictureOf(seen, GetParam().dark ? "#303a50" : "#e8e8e8", QWidget::DrawChildren);
    EXPECT_TRUE(looksLikeBaseline(picture, GetParam().name("alert-window")));
}

INSTANTIATE_TEST_SUITE_P(Looks, AlertPictures, Look::all(), Look::ofTest);
INSTANTIATE_TEST_SUITE_P(ScalesBetween, AlertPictures, Look::atScalesBetween(), Look::ofTest);
