// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/controls/ZDRButton.h"

#include "support/PaintCounter.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace
{
const QColor titleColor = QColor::fromRgbF(1, 1, 1, 0.9F);
const QColor blackAtSixTenths = QColor::fromRgbF(0, 0, 0, 0.6F);
const QColor blackAtFourTenths = QColor::fromRgbF(0, 0, 0, 0.4F);
const QColor blackWhole = QColor::fromRgbF(0, 0, 0, 1);
const QColor whiteHalf = QColor::fromRgbF(1, 1, 1, 0.5F);

class ZDRButtonTest : public testing::Test
{
protected:
    ZDRButtonTest()
    {
        button.resize(120, 30);
        button.awakeFromNib();
        QCoreApplication::processEvents();
    }
    QColor background() const { return button.layer().backgroundColor; }
    QColor border() const { return button.layer().borderColor; }
    QColor title() const { return button.titleAttributes().foreground().color(); }
    void enter()
    {
        QEnterEvent event(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QCoreApplication::sendEvent(&button, &event);
    }
    void leave()
    {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(&button, &event);
    }

    QWidget window;
    ZDRButton button{"Cancel", &window};
};
} // namespace

TEST_F(ZDRButtonTest, HasALayerRoundAsHalfItsHeightOnceItIsAwake)
{
    EXPECT_TRUE(button.wantsLayer());
    EXPECT_TRUE(button.layer().masksToBounds);
    EXPECT_EQ(button.layer().cornerRadius, 15);
    EXPECT_EQ(button.layer().borderWidth, 0.75);
}

TEST_F(ZDRButtonTest, IsAnOrdinaryButtonBeforeItIsAwake)
{
    const ZDRButton sleeping("Cancel");
    EXPECT_FALSE(sleeping.wantsLayer());
    EXPECT_FALSE(sleeping.layer().backgroundColor.isValid());
    EXPECT_FALSE(sleeping.titleAttributes().hasProperty(QTextFormat::ForegroundBrush));
}

TEST_F(ZDRButtonTest, TakesTheNormalLookFromTheEventLoopNotAtOnce)
{
    ZDRButton other("Other");
    other.awakeFromNib();
    EXPECT_FALSE(other.layer().backgroundColor.isValid());
    QCoreApplication::processEvents();
    EXPECT_EQ(other.layer().backgroundColor, blackAtFourTenths);
}

TEST_F(ZDRButtonTest, IsBlackAtFourTenthsWithWhiteBorderAtRest)
{
    EXPECT_EQ(background(), blackAtFourTenths);
    EXPECT_EQ(border(), QColor(Qt::white));
    EXPECT_EQ(title(), titleColor);
}

TEST_F(ZDRButtonTest, IsBlackAtSixTenthsAtRestWhenReturnPressesIt)
{
    button.setKeyEquivalent("\r");
    button.setButtonState(ZDRButton::Normal);
    EXPECT_TRUE(button.isMainButton());
    EXPECT_EQ(background(), blackAtSixTenths);
    EXPECT_EQ(border(), QColor(Qt::white));
}

TEST_F(ZDRButtonTest, IsNoMainButtonWithAnyOtherKeyEquivalent)
{
    for (const QString &keys : {QString("\r\n"), QString("\n"), QString(), QString("r"), QString("\r\r")}) {
        button.setKeyEquivalent(keys);
        button.setButtonState(ZDRButton::Normal);
        EXPECT_FALSE(button.isMainButton()) << keys.size();
        EXPECT_EQ(background(), blackAtFourTenths) << keys.size();
    }
}

TEST_F(ZDRButtonTest, IsWhiteWithBlackBorderWhileThePointerIsInside)
{
    enter();
    EXPECT_EQ(background(), whiteHalf);
    EXPECT_EQ(border(), QColor(Qt::black));
    EXPECT_EQ(title(), titleColor);
    leave();
    EXPECT_EQ(background(), blackAtFourTenths);
    EXPECT_EQ(border(), QColor(Qt::white));
}

TEST_F(ZDRButtonTest, IsBlackWithoutBorderWhileItIsPressed)
{
    QSignalSpy clicks(&button, &QAbstractButton::clicked);
    enter();
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_EQ(background(), blackWhole);
    EXPECT_EQ(border().alpha(), 0);
    EXPECT_EQ(title(), titleColor);
    EXPECT_TRUE(clicks.isEmpty());
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_EQ(background(), blackAtFourTenths) << "also with the pointer still inside";
    EXPECT_EQ(clicks.size(), 1);
}

TEST_F(ZDRButtonTest, StaysPressedUntilThePointerLeavesOrTheButtonIsReleased)
{
    QTest::mousePress(&button, Qt::LeftButton);
    QTest::mouseMove(&button, {10, 10});
    EXPECT_EQ(background(), blackWhole);
    leave();
    EXPECT_EQ(background(), blackAtFourTenths);
    QTest::mouseRelease(&button, Qt::LeftButton, {}, {-20, -20});
}

TEST_F(ZDRButtonTest, ShowsItsStateBeforeItsActionRuns)
{
    QColor duringPress;
    QColor duringClick;
    QObject::connect(&button, &QAbstractButton::pressed, [&] { duringPress = background(); });
    QObject::connect(&button, &QAbstractButton::clicked, [&] { duringClick = background(); });
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(duringPress, blackWhole);
    EXPECT_EQ(duringClick, blackAtFourTenths);
}

TEST_F(ZDRButtonTest, CaresForTheLeftMouseButtonAlone)
{
    QTest::mousePress(&button, Qt::RightButton);
    EXPECT_EQ(background(), blackAtFourTenths);
    QTest::mouseRelease(&button, Qt::RightButton);
}

TEST_F(ZDRButtonTest, IsNotLitByThePointerWhileItIsDisabled)
{
    button.setEnabled(false);
    enter();
    EXPECT_EQ(background(), blackAtFourTenths);
    EXPECT_EQ(border(), QColor(Qt::white));
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_EQ(background(), blackAtFourTenths);
    QTest::mouseRelease(&button, Qt::LeftButton);
    leave();
    button.setEnabled(true);
    EXPECT_EQ(background(), blackAtFourTenths);
}

TEST_F(ZDRButtonTest, GoesOutWhenItIsDisabledBelowThePointerAndIsLitWhenItCanBeUsedAgain)
{
    button.setAttribute(Qt::WA_UnderMouse);
    enter();
    button.setEnabled(false);
    EXPECT_EQ(background(), blackAtFourTenths);
    button.setEnabled(true);
    EXPECT_EQ(background(), whiteHalf);
    button.setAttribute(Qt::WA_UnderMouse, false);
}

TEST_F(ZDRButtonTest, LooksPressedWhileSpaceHoldsIt)
{
    QColor duringClick;
    QObject::connect(&button, &QAbstractButton::clicked, [&] { duringClick = background(); });
    QTest::keyPress(&button, Qt::Key_Space);
    EXPECT_EQ(background(), blackWhole);
    EXPECT_EQ(border().alpha(), 0);
    QTest::keyRelease(&button, Qt::Key_Space);
    EXPECT_EQ(duringClick, blackAtFourTenths);
    EXPECT_EQ(background(), blackAtFourTenths);
    button.setEnabled(false);
    QTest::keyPress(&button, Qt::Key_Space);
    EXPECT_EQ(background(), blackAtFourTenths);
}

TEST_F(ZDRButtonTest, IsAsBeforeWhenItLosesTheFocusWhileSpaceHoldsIt)
{
    QTest::keyPress(&button, Qt::Key_Space);
    QFocusEvent gone(QEvent::FocusOut);
    QCoreApplication::sendEvent(&button, &gone);
    EXPECT_FALSE(button.isDown());
    EXPECT_EQ(background(), blackAtFourTenths);
}

TEST_F(ZDRButtonTest, LooksPressedForAMomentWhenItsKeyEquivalentPressesIt)
{
    QColor duringPress;
    QObject::connect(&button, &QAbstractButton::pressed, [&] { duringPress = background(); });
    QSignalSpy clicks(&button, &QAbstractButton::clicked);
    button.animateClick(); // as the key does
    EXPECT_EQ(duringPress, blackWhole);
    EXPECT_TRUE(QTest::qWaitFor([&clicks] { return clicks.size() == 1; }));
    EXPECT_EQ(background(), blackAtFourTenths);
}

TEST_F(ZDRButtonTest, LosesItsBackgroundInAStateThatIsNone)
{
    for (const quint64 state : {quint64(3), quint64(17), ~quint64(0)}) {
        button.setButtonState(ZDRButton::Pressed);
        button.setButtonState(state);
        EXPECT_FALSE(background().isValid());
        EXPECT_EQ(border(), QColor(Qt::white));
        EXPECT_EQ(title(), titleColor);
    }
}

TEST_F(ZDRButtonTest, ChangesNothingOfTheTitleButItsColour)
{
    QTextCharFormat attributes;
    attributes.setFontItalic(true);
    attributes.setFontUnderline(true);
    button.setTitleAttributes(attributes);
    button.setTextColor(Qt::red);
    EXPECT_TRUE(button.titleAttributes().fontItalic());
    EXPECT_TRUE(button.titleAttributes().fontUnderline());
    EXPECT_EQ(title(), QColor(Qt::red));
    EXPECT_EQ(button.text(), "Cancel");
}

TEST_F(ZDRButtonTest, WantsTwentyPointsMoreWidthThanAnOrdinaryButton)
{
    const QPushButton ordinary("Cancel");
    EXPECT_EQ(button.intrinsicContentSize(), ordinary.sizeHint() + QSize(20, 0));
    EXPECT_EQ(button.sizeHint(), button.intrinsicContentSize());
}

TEST_F(ZDRButtonTest, WantsTheSizeThatItsTitleNeedsInTheTitlesFont)
{
    ZDRButton titled("A title that is wider than the narrowest button");
    QPushButton ordinary(titled.text());
    QFont large = ordinary.font();
    large.setPixelSize(40);
    ordinary.setFont(large);
    const QSize before = titled.sizeHint();
    QTextCharFormat attributes;
    attributes.setFont(large);
    titled.setTitleAttributes(attributes);
    EXPECT_EQ(titled.intrinsicContentSize(), ordinary.sizeHint() + QSize(20, 0));
    EXPECT_EQ(titled.sizeHint(), titled.intrinsicContentSize());
    titled.setTitleAttributes({});
    EXPECT_EQ(titled.sizeHint(), before);
}

TEST_F(ZDRButtonTest, IsLaidOutAnewWhenItsTitleGetsAnotherFontButNotForItsColour)
{
    class Panel : public QWidget
    {
    public:
        int layoutRequests = 0;
        bool event(QEvent *event) override
        {
            layoutRequests += event->type() == QEvent::LayoutRequest ? 1 : 0;
            return QWidget::event(event);
        }
    };
    Panel panel;
    auto *const row = new QHBoxLayout(&panel);
    auto *const inside = new ZDRButton("Cancel");
    row->addWidget(inside);
    row->addStretch();
    panel.resize(800, 200);
    panel.show();
    QCoreApplication::sendPostedEvents(&panel, QEvent::LayoutRequest);
    panel.layoutRequests = 0;
    inside->setTextColor(Qt::red);
    QCoreApplication::sendPostedEvents(&panel, QEvent::LayoutRequest);
    EXPECT_EQ(panel.layoutRequests, 0);
    QTextCharFormat attributes;
    QFont large = inside->font();
    large.setPixelSize(60);
    attributes.setFont(large);
    inside->setTitleAttributes(attributes);
    QCoreApplication::sendPostedEvents(&panel, QEvent::LayoutRequest);
    EXPECT_EQ(panel.layoutRequests, 1);
    EXPECT_EQ(inside->width(), inside->sizeHint().width());
}

TEST_F(ZDRButtonTest, PaintsItselfAnewWhenItsStateChanges)
{
    window.resize(300, 100);
    window.show();
    PaintCounter paints(button);
    ASSERT_TRUE(paints.isShown());
    for (const quint64 state : {ZDRButton::Hovered, ZDRButton::Pressed, ZDRButton::Normal}) {
        button.setButtonState(state);
        EXPECT_TRUE(paints.settle());
        EXPECT_EQ(paints.takeCount(), 1) << state;
    }
}

TEST_F(ZDRButtonTest, IsPressedByItsKeyEquivalentFromElsewhereInItsWindow)
{
    QWidget elsewhere(&window);
    elsewhere.setFocusPolicy(Qt::StrongFocus);
    window.show();
    window.activateWindow();
    elsewhere.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QSignalSpy clicks(&button, &QAbstractButton::clicked);
    button.setKeyEquivalent("\r");
    button.setText("Another title"); // which does not take the key away
    QTest::keyClick(&elsewhere, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&clicks] { return clicks.size() == 1; }));
    button.setKeyEquivalent("\x1b");
    QTest::keyClick(&elsewhere, Qt::Key_Return);
    QTest::keyClick(&elsewhere, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&clicks] { return clicks.size() == 2; }));
    EXPECT_EQ(clicks.size(), 2);
}

TEST_F(ZDRButtonTest, IsPressedBySpaceWhileItHasTheFocus)
{
    QSignalSpy clicks(&button, &QAbstractButton::clicked);
    EXPECT_TRUE(button.focusPolicy() & Qt::TabFocus);
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(clicks.size(), 1);
}

TEST_F(ZDRButtonTest, IsAPushButtonWithItsTitleAsNameForAScreenReader)
{
    const auto *const seen = QAccessible::queryAccessibleInterface(&button);
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->role(), QAccessible::PushButton);
    EXPECT_EQ(seen->text(QAccessible::Name), "Cancel");
    button.setAccessibleName("Cancel the action");
    EXPECT_EQ(seen->text(QAccessible::Name), "Cancel the action");
}

TEST_F(ZDRButtonTest, TakesTheDefaultButtonOfAnInterfaceFileForTheMainOne)
{
    ZDRButton other("Other", &window);
    other.setDefault(true);
    other.awakeFromNib();
    EXPECT_TRUE(other.isMainButton());
    ZDRButton escaping("Escaping", &window);
    escaping.setDefault(true);
    escaping.setKeyEquivalent("\x1b");
    escaping.awakeFromNib();
    EXPECT_FALSE(escaping.isMainButton());
}

TEST_F(ZDRButtonTest, PaintsItsLayerWithinItsRoundBounds)
{
    QImage image(button.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    button.setText({});
    button.render(&image, {}, {}, {});
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::white)) << "the corner is cut off";
    EXPECT_EQ(image.pixelColor(119, 29), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(60, 15), QColor(153, 153, 153)) << "black at 0.4 over white";
    button.setButtonState(ZDRButton::Pressed);
    image.fill(Qt::white);
    button.render(&image, {}, {}, {});
    EXPECT_EQ(image.pixelColor(60, 15), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(60, 0), QColor(Qt::black)) << "without border";
}

TEST_F(ZDRButtonTest, HasACrispBorderOfWholePixelsAtEveryScale)
{
    button.setText({});
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        window.resize(200, 60);
        button.move(7, 9); // on no whole pixel at the scales between
        QImage image((QSizeF(window.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::green);
        window.render(&image, {}, {}, QWidget::DrawChildren);
        const QColor inside = image.pixelColor((QPointF(67, 24) * ratio).toPoint());
        EXPECT_EQ(inside, QColor(0, 153, 0)) << ratio;
        const int column = qRound(67 * ratio);
        int row = 0;
        while (image.pixelColor(column, row) == QColor(Qt::green))
            ++row;
        EXPECT_NEAR(row, 9 * ratio, 0.5) << ratio;
        for (int line = std::max(1, qRound(0.75 * ratio)); line > 0; --line)
            EXPECT_EQ(image.pixelColor(column, row++), QColor(Qt::white)) << ratio;
        while (image.pixelColor(column, row) == inside)
            ++row;
        EXPECT_EQ(image.pixelColor(column, row), QColor(Qt::white)) << ratio;
        const int middle = qRound(24 * ratio);
        int left = 0;
        while (image.pixelColor(left, middle) == QColor(Qt::green))
            ++left;
        EXPECT_NEAR(left, 7 * ratio, 0.5) << ratio;
        EXPECT_GT(image.pixelColor(left, middle).red(), 240) << ratio << ", where the curve touches the edge";
    }
}

TEST_F(ZDRButtonTest, IsDrawnInTheFontOfItsTitle)
{
    const QImage plain = button.grab().toImage();
    QTextCharFormat attributes = button.titleAttributes();
    attributes.setFontItalic(true);
    button.setTitleAttributes(attributes);
    EXPECT_NE(button.grab().toImage(), plain);
    attributes.setFontItalic(false);
    button.setTitleAttributes(attributes);
    EXPECT_EQ(button.grab().toImage(), plain);
}
