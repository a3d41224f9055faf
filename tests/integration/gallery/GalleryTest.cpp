// SPDX-License-Identifier: MIT
// The window with every piece, without a display.
#include "GalleryWindow.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/interface/controls/ZDRButton.h"
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "support/FakeClock.h"
#include "support/InterfaceEnvironment.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLayout>
#include <QListView>
#include <QStyle>
#include <QTest>

#include <gmock/gmock.h>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
class Gallery : public testing::Test
{
protected:
    /// The window's widgets that Tab should reach: those that take the keys and can be used.
    static QSet<QWidget *> reachable(const QWidget &window)
    {
        QSet<QWidget *> widgets;
        for (auto *const widget : window.findChildren<QWidget *>()) {
            if ((widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy() && widget->isVisible() &&
                widget->isEnabled())
                widgets += widget;
        }
        return widgets;
    }
    ZDRButton *button(const GalleryWindow &window, const QString &title)
    {
        for (auto *const each : window.findChildren<ZDRButton *>()) {
            if (each->text() == title)
                return each;
        }
        return nullptr;
    }
};

/// How often a widget is asked to paint itself.
class PaintRequests : public QObject
{
public:
    explicit PaintRequests(QWidget &widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++count;
        return false;
    }
    int count = 0;
};
} // namespace

TEST_F(Gallery, HasTheColoursOfTheDesktopUnlessAskedOtherwise)
{
    for (const QPalette &desktop :
         {InterfaceEnvironment::darkPalette(), InterfaceEnvironment::lightPalette()}) {
        QApplication::setPalette(desktop);
        const GalleryWindow window{{}};
        EXPECT_EQ(window.palette().color(QPalette::Window), desktop.color(QPalette::Window));
        EXPECT_EQ(window.findChild<QListView *>()->palette().color(QPalette::Base),
                  desktop.color(QPalette::Base));
    }
}

TEST_F(Gallery, ShowsOtherColoursWhenAskedAndThoseOfTheDesktopAgain)
{
    const QString style = QApplication::style()->name();
    GalleryWindow window{{}};
    auto *const looks = window.findChild<QComboBox *>();
    ASSERT_TRUE(looks);
    QSet<QRgb> grounds;
    for (int look = 1; look < looks->count(); ++look) {
        looks->setCurrentIndex(look);
        grounds += QGuiApplication::palette().color(QPalette::Window).rgb();
    }
    EXPECT_EQ(grounds.size(), 3);
    looks->setCurrentIndex(0);
    EXPECT_EQ(QApplication::style()->name(), style);
    EXPECT_FALSE(QApplication::testAttribute(Qt::AA_SetPalette)) << "none of its own";
}

TEST_F(Gallery, TabReachesEverythingAndComesRound)
{
    GalleryWindow window{COMMAND_BUNDLE};
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        QSet<QWidget *> left = reachable(window);
        EXPECT_GT(left.size(), 15);
        for (qsizetype presses = 2 * left.size(); presses > 0; --presses) {
            QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &window, key);
            left.remove(QApplication::focusWidget());
        }
        for (const QWidget *const missed : left)
            ADD_FAILURE() << missed->metaObject()->className() << ' ' << qPrintable(missed->objectName());
    }
}

TEST_F(Gallery, EverythingThatTakesTheKeysHasANameForAScreenReader)
{
    GalleryWindow window{COMMAND_BUNDLE};
    window.show();
    for (QWidget *const widget : reachable(window)) {
        const QAccessibleInterface *const seen = QAccessible::queryAccessibleInterface(widget);
        ASSERT_TRUE(seen);
        EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << ' ' << qPrintable(widget->objectName());
    }
}

TEST_F(Gallery, CountsDownInAtMostTwoStepsASecond)
{
    const auto clock = std::make_shared<FakeClock>();
    Port<Clock>::current() = clock;
    GalleryWindow window{{}};
    window.show();
    auto *const pie = window.findChild<ZDRProgressIndicator *>();
    ASSERT_TRUE(pie);
    QCoreApplication::processEvents();
    PaintRequests paints(*pie);
    button(window, "Count down")->click();
    const float before = pie->floatValue();
    for (int passed = 0; passed < 2000; passed += 10) {
        clock->advance(10ms);
        QCoreApplication::processEvents();
    }
    EXPECT_NEAR(pie->floatValue(), before - 2, 0.01) << "a point a second";
    EXPECT_GE(paints.count, 2);
    EXPECT_LE(paints.count, 4) << "each costs the process several wake-ups beside its own";
}

TEST_F(Gallery, NothingLiesOnAnotherThingWithALargeFont)
{
    QFont font = QApplication::font();
    font.setPixelSize(22);
    QApplication::setFont(font);
    GalleryWindow window{COMMAND_BUNDLE};
    window.show();
    QCoreApplication::processEvents();
    for (auto *const layout : window.findChildren<QLayout *>()) {
        if (layout->parentWidget() == nullptr || layout->parentWidget()->layout() != layout)
            continue;
        QList<QWidget *> laidOut;
        for (auto *const widget :
             layout->parentWidget()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (widget->isVisible() && !widget->isWindow())
                laidOut += widget;
        }
        for (qsizetype first = 0; first < laidOut.size(); ++first) {
            for (qsizetype second = first + 1; second < laidOut.size(); ++second) {
                EXPECT_FALSE(laidOut[first]->geometry().intersects(laidOut[second]->geometry()))
                    << laidOut[first]->metaObject()->className() << ' '
                    << qPrintable(laidOut[first]->objectName()) << " and "
                    << laidOut[second]->metaObject()->className() << ' '
                    << qPrintable(laidOut[second]->objectName());
            }
        }
    }
}
