// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/ZDRWindow.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/interface/views/TimedAnimation_p.h"
#include "DozelyKit/interface/windows/ScreenCoordinates_p.h"
#include "support/FakeClock.h"
#include "support/PaintCounter.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QVBoxLayout>

#include <gmock/gmock.h>

#include <set>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
class ZDRWindowTest : public testing::Test
{
protected:
    ZDRWindowTest() { Port<Clock>::current() = clock; }

    /// Lets the time pass in steps of a millisecond; the values that `value` had on the way.
    template<class Value>
    auto valuesDuring(std::chrono::milliseconds time, Value value)
    {
        QList<decltype(value())> values{value()};
        for (auto passed = 0ms; passed < time; passed += 1ms) {
            clock->advance(1ms);
            if (values.last() != value())
                values += value();
        }
        return values;
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
};

/// Tells who asked for it to be closed.
class ClosingWindow : public ZDRWindow
{
public:
    using ZDRWindow::ZDRWindow;
    void closeAfterFading(QObject *sender) override
    {
        ++closings;
        lastSender = sender;
        ZDRWindow::closeAfterFading(sender);
    }
    int closings = 0;
    QObject *lastSender = nullptr;
};
} // namespace

TEST_F(ZDRWindowTest, IsBorderlessAndTransparentWhateverStyleItIsMadeWith)
{
    constexpr quint64 titledClosableResizable = 1 | 2 | 8;
    const auto window = ZDRWindow::initWithContentRect({30, 40, 200, 100}, titledClosableResizable, 2, true);
    EXPECT_EQ(window->styleMask(), 0U);
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(window->testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(window->backgroundColor().alpha(), 0);
    EXPECT_FALSE(window->isOpaque());
    EXPECT_EQ(window->level(), 3);
    EXPECT_TRUE(window->joinsAllDesktops());
    EXPECT_EQ(window->frame(), QRectF(30, 40, 200, 100));
    EXPECT_TRUE(window->isWindow());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ZDRWindowTest, KeepsTheDefaultsOfShadowAndDeactivationWhenMadeInCode)
{
    ZDRWindow window;
    EXPECT_TRUE(window.hasShadow());
    EXPECT_FALSE(window.hidesOnDeactivate());
    window.setHidesOnDeactivate(true);
    window.awakeFromNib();
    EXPECT_FALSE(window.hasShadow());
    EXPECT_FALSE(window.hidesOnDeactivate());
}

TEST_F(ZDRWindowTest, FadesInFromNothingInAFifthOfASecond)
{
    ZDRWindow window;
    const auto alphas = valuesDuring(0ms, [&window] { return window.alphaValue(); });
    EXPECT_EQ(alphas, QList<double>{1.0});
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.alphaValue(), 0);
    const auto fading = valuesDuring(199ms, [&window] { return window.alphaValue(); });
    EXPECT_GE(fading.size(), 20);
    EXPECT_TRUE(std::ranges::is_sorted(fading));
    EXPECT_LT(fading.last(), 1);
    clock->advance(1ms);
    EXPECT_EQ(window.alphaValue(), 1);
    clock->advance(1s);
    EXPECT_EQ(window.alphaValue(), 1);
    EXPECT_TRUE(clock->pendingDelays().isEmpty()) << "nothing goes on";
}

TEST_F(ZDRWindowTest, FadesEvenly)
{
    ZDRWindow window;
    window.makeKeyAndOrderFront();
    clock->advance(104ms); // thirteen steps
    EXPECT_DOUBLE_EQ(window.alphaValue(), 0.52);
}

TEST_F(ZDRWindowTest, FadesOutBeforeItCloses)
{
    ClosingWindow window;
    QObject sender;
    window.makeKeyAndOrderFront();
    clock->advance(300ms);
    window.performClose(&sender);
    EXPECT_EQ(window.alphaValue(), 1);
    clock->advance(199ms);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.closings, 0);
    clock->advance(1ms);
    EXPECT_EQ(window.alphaValue(), 0);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.closings, 1);
    EXPECT_EQ(window.lastSender, &sender);
}

TEST_F(ZDRWindowTest, FadesInFromNothingEachTimeItIsShown)
{
    ZDRWindow window;
    window.makeKeyAndOrderFront();
    clock->advance(1s);
    window.makeKeyAndOrderFront();
    EXPECT_EQ(window.alphaValue(), 0) << "also while it shows";
    clock->advance(1s);
    window.performClose();
    clock->advance(1s);
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.alphaValue(), 0);
    clock->advance(200ms);
    EXPECT_EQ(window.alphaValue(), 1);
}

TEST_F(ZDRWindowTest, StaysOpenWhenItIsShownWhileItFadesOut)
{
    ClosingWindow window;
    window.makeKeyAndOrderFront();
    clock->advance(1s);
    window.performClose();
    clock->advance(100ms);
    window.makeKeyAndOrderFront();
    clock->advance(1s);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.alphaValue(), 1);
    EXPECT_EQ(window.closings, 0);
}

TEST_F(ZDRWindowTest, FadesOutFromWhereFadingInHadCome)
{
    ZDRWindow window;
    window.makeKeyAndOrderFront();
    clock->advance(104ms);
    window.performClose();
    const auto fading = valuesDuring(200ms, [&window] { return window.alphaValue(); });
    EXPECT_DOUBLE_EQ(fading.first(), 0.52);
    EXPECT_EQ(fading.last(), 0);
    EXPECT_TRUE(std::ranges::is_sorted(fading, std::greater()));
}

TEST_F(ZDRWindowTest, ClosesOnceWhenItIsAskedTwice)
{
    ClosingWindow window;
    window.makeKeyAndOrderFront();
    clock->advance(1s);
    window.performClose();
    clock->advance(100ms);
    window.performClose();
    clock->advance(1s);
    EXPECT_EQ(window.closings, 1);
}

TEST_F(ZDRWindowTest, LivesUntilItHasFadedWhenEverybodyElseHasLetItGo)
{
    auto window = std::make_shared<ClosingWindow>();
    const QPointer<ClosingWindow> watched = window.get();
    window->makeKeyAndOrderFront();
    clock->advance(1s);
    window->performClose();
    window.reset();
    clock->advance(199ms);
    ASSERT_TRUE(watched);
    EXPECT_EQ(watched->closings, 0);
    clock->advance(1ms);
    EXPECT_FALSE(watched) << "now nobody holds it";
}

TEST_F(ZDRWindowTest, MayBeDestroyedWhileItFades)
{
    {
        ZDRWindow window;
        window.makeKeyAndOrderFront();
        window.setFrame({0, 0, 400, 400}, false, true);
    }
    clock->advance(1s);
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
}

TEST_F(ZDRWindowTest, ForgetsASenderThatIsGoneWhenItCloses)
{
    ClosingWindow window;
    window.makeKeyAndOrderFront();
    clock->advance(1s);
    {
        QObject sender;
        window.performClose(&sender);
    }
    clock->advance(1s);
    EXPECT_EQ(window.closings, 1);
    EXPECT_EQ(window.lastSender, nullptr);
}

TEST_F(ZDRWindowTest, TakesHalfOfThePlatformsTimeToResize)
{
    ZDRWindow window;
    window.setFrame({100, 100, 200, 100}, false);
    EXPECT_DOUBLE_EQ(window.animationResizeTime({100, 100, 350, 100}).count(), 0.1);
    EXPECT_DOUBLE_EQ(window.animationResizeTime({100, 100, 200, 400}).count(), 0.2);
    EXPECT_EQ(window.animationResizeTime({100, 100, 200, 100}).count(), 0);
}

TEST_F(ZDRWindowTest, ResizesAboutItsCentreWithAnAnimation)
{
    ZDRWindow window;
    window.setFrame({300, 200, 200, 100}, false);
    window.resizeToUsingStyle({300, 150}, ZDRWindow::AboutCenter);
    EXPECT_EQ(window.frame(), QRectF(300, 200, 200, 100)) << "it has just begun";
    const auto widths = valuesDuring(67ms, [&window] { return window.frame().width(); }); // 0.1 s * 100 / 150
    EXPECT_GE(widths.size(), 8);
    EXPECT_TRUE(std::ranges::is_sorted(widths));
    EXPECT_EQ(window.frame(), QRectF(250, 175, 300, 150));
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
}

TEST_F(ZDRWindowTest, ResizesAboutTheOtherFixedPoints)
{
    ZDRWindow window;
    window.setFrame({300, 200, 200, 100}, false);
    window.resizeToUsingStyle({300, 150}, ZDRWindow::AboutTopRight);
    clock->advance(1s);
    EXPECT_EQ(window.frame(), QRectF(200, 150, 300, 150));
    window.setFrame({300, 200, 200, 100}, false);
    window.resizeToUsingStyle({300, 150}, ZDRWindow::AboutBottomLeft);
    clock->advance(1s);
    EXPECT_EQ(window.frame(), QRectF(300, 200, 300, 150));
    window.resizeToUsingStyle({10, 10}, 3);
    clock->advance(1s);
    EXPECT_EQ(window.frame(), QRectF(300, 200, 300, 150));
}

TEST_F(ZDRWindowTest, DropsAnAnimationOfTheFrameForANewFrame)
{
    ZDRWindow window;
    window.setFrame({0, 0, 100, 100}, false);
    window.setFrame({0, 0, 400, 400}, false, true);
    clock->advance(50ms);
    window.setFrame({10, 20, 30, 40}, true);
    clock->advance(1s);
    EXPECT_EQ(window.frame(), QRectF(10, 20, 30, 40));
    window.setFrame({10, 20, 50, 60}, true, false);
    EXPECT_EQ(window.frame(), QRectF(10, 20, 50, 60)) << "without animation at once";
}

TEST_F(ZDRWindowTest, IsFilledByItsContentViewAndLetsAFormerOneGo)
{
    ZDRWindow window;
    window.setFrame({0, 0, 200, 100}, false);
    window.show();
    QPointer<QWidget> first = new QWidget;
    auto *const second = new QWidget;
    window.setContentView(first);
    EXPECT_EQ(window.contentView(), first);
    EXPECT_EQ(first->geometry(), QRect(0, 0, 200, 100));
    EXPECT_TRUE(first->isVisible());
    window.setContentView(second);
    ASSERT_TRUE(first) << "the caller's again";
    EXPECT_EQ(first->parent(), nullptr);
    EXPECT_FALSE(first->isVisible());
    delete first;
    window.setFrame({0, 0, 250, 120}, false);
    EXPECT_EQ(second->geometry(), QRect(0, 0, 250, 120));
    window.setContentView(nullptr);
    EXPECT_EQ(window.contentView(), nullptr);
    delete second;
}

TEST_F(ZDRWindowTest, TakesTheViewThatAnInterfaceFilePutIntoIt)
{
    ZDRWindow window;
    auto *const inside = new QWidget(&window);
    window.awakeFromNib();
    EXPECT_EQ(window.contentView(), inside);
    ZDRWindow laidOut;
    auto *const layout = new QVBoxLayout(&laidOut);
    layout->addWidget(new QWidget);
    laidOut.awakeFromNib();
    EXPECT_EQ(laidOut.contentView(), nullptr) << "its layout places what is in it";
}

TEST_F(ZDRWindowTest, FloatsOnlyAboveTheNormalLevel)
{
    ZDRWindow window;
    window.setLevel(ZDRWindow::normalLevel);
    EXPECT_FALSE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::FramelessWindowHint));
    window.setLevel(5);
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(window.level(), 5);
}

TEST_F(ZDRWindowTest, IsAwayWhileItsApplicationIsNotTheActiveOneIfItIsToHide)
{
    ZDRWindow staying;
    ZDRWindow hiding;
    hiding.setHidesOnDeactivate(true);
    staying.show();
    hiding.show();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_TRUE(staying.isVisible());
    EXPECT_FALSE(hiding.isVisible());
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_TRUE(hiding.isVisible());
    hiding.hide();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_FALSE(hiding.isVisible()) << "somebody else hid it";
}

TEST_F(ZDRWindowTest, DoesNotComeBackWhenItWasClosedOrHiddenWhileItsApplicationWasNotTheActiveOne)
{
    ZDRWindow closed;
    ZDRWindow faded;
    ZDRWindow hidden;
    const QList<ZDRWindow *> windows{&closed, &faded, &hidden};
    for (auto *const window : windows) {
        window->setHidesOnDeactivate(true);
        window->show();
    }
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    closed.close();
    faded.performClose();
    clock->advance(1s);
    hidden.hide();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_FALSE(closed.isVisible());
    EXPECT_FALSE(faded.isVisible());
    EXPECT_FALSE(hidden.isVisible());
}

TEST_F(ZDRWindowTest, ComesBackOnceWhenItWasOnlyAwayWithItsApplication)
{
    ZDRWindow window;
    window.setHidesOnDeactivate(true);
    window.show();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationHidden); // once more inactive
    window.setLevel(ZDRWindow::normalLevel);
    EXPECT_FALSE(window.isVisible());
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_TRUE(window.isVisible()) << "another level is not another wish";
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(window.isVisible());
    window.setHidesOnDeactivate(false);
    window.hide();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(ZDRWindowTest, StaysReadyToComeBackWhenItRefusesToBeClosed)
{
    class Staying : public ZDRWindow
    {
        void closeEvent(QCloseEvent *event) override { event->ignore(); }
    };
    Staying window;
    window.setHidesOnDeactivate(true);
    window.show();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    window.close();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ZDRWindowTest, PaintsANewFrameAtOnceWhenItIsToDisplay)
{
    ZDRWindow window;
    window.setFrame({0, 0, 100, 100}, false);
    window.show();
    PaintCounter paints(window);
    ASSERT_TRUE(paints.isShown());
    window.setFrame({0, 0, 100, 100}, true); // nothing but displaying is to be done
    EXPECT_EQ(paints.count(), 1);
    window.setFrame({0, 0, 100, 100}, true, false);
    EXPECT_EQ(paints.count(), 2);
    window.setFrame({0, 0, 100, 100}, false);
    EXPECT_EQ(paints.count(), 2);
    window.setFrame({0, 0, 100, 100}, true, true); // which takes no time
    EXPECT_EQ(paints.count(), 3);
    window.setFrame({0, 0, 100, 100}, false, true);
    EXPECT_EQ(paints.count(), 3);
}

TEST(ScreenCoordinates, CountFromTheLowerLeftCornerOfTheMainScreenUpwards)
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const double lower = screen.y() + screen.height();
    EXPECT_EQ(ScreenCoordinates::mainScreenFrame(), QRectF(0, 0, screen.width(), screen.height()));
    EXPECT_EQ(ScreenCoordinates::toKit(QPointF(screen.x(), lower)), QPointF(0, 0));
    EXPECT_EQ(ScreenCoordinates::toKit(QPointF(screen.x() + 10, lower - 30)), QPointF(10, 30));
    EXPECT_EQ(ScreenCoordinates::toKit(QRectF(screen.x(), screen.y(), 50, 40)),
              QRectF(0, screen.height() - 40, 50, 40));
    EXPECT_EQ(ScreenCoordinates::toQt({0, 0, 50, 40}), QRectF(screen.x(), lower - 40, 50, 40).toRect());
}

TEST(ScreenCoordinates, RoundEdgesSoThatWindowsThatTouchGoOnTouching)
{
    const QRect lower = ScreenCoordinates::toQt({10.4, 20.3, 30.4, 40.4});
    const QRect upper = ScreenCoordinates::toQt({10.4, 60.7, 30.4, 40.4});
    EXPECT_EQ(upper.y() + upper.height(), lower.y());
    EXPECT_EQ(lower.width(), 31) << "from 10 to 41";
}

TEST(TimedAnimation, StepsFromZeroAndCompletesOnce)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    TimedAnimation animation;
    QList<double> steps;
    int completions = 0;
    animation.start(
        20ms, [&](double progress) { steps += progress; }, [&] { ++completions; });
    EXPECT_EQ(steps, QList<double>{0});
    EXPECT_TRUE(animation.isRunning());
    clock->advance(1s);
    EXPECT_EQ(steps, (QList<double>{0, 0.4, 0.8}));
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(animation.isRunning());
}

TEST(TimedAnimation, IsCompleteAtOnceWithoutDuration)
{
    TimedAnimation animation;
    int completions = 0;
    animation.start(
        0ms, [](double) { ADD_FAILURE(); }, [&] { ++completions; });
    EXPECT_EQ(completions, 1);
}

TEST(TimedAnimation, MayBeStartedAnewFromItsOwnStepAndCompletion)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    TimedAnimation animation;
    QStringList told;
    animation.start(
        100ms,
        [&](double progress) {
            if (progress > 0.5)
                animation.start(
                    10ms, [&](double) { told += "second step"; }, [&] { told += "second"; });
        },
        [&] { told += "first"; });
    clock->advance(1s);
    EXPECT_EQ(told, (QStringList{"second step", "second step", "second"}));
}
