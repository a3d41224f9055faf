// SPDX-License-Identifier: MIT
//
// What an alert says, and that it can be read.
#include "AlertFixture.h"

#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "hosts/agent/AlertGround.h"
#include "support/Look.h"

#include <QAccessible>
#include <QApplication>
#include <QWindow>

using namespace std::chrono_literals;

namespace
{
class AlertTextTest : public AlertFixture
{
protected:
    ~AlertTextTest() override { QApplication::setFont(font); }
    /// Everything that can be seen is in the window, as large as it needs to be, and apart from all else.
    static void expectThatAllFits(const AlertWindow &window)
    {
        QList<QRect> places;
        for (auto *const shown : window.contentView()->findChildren<QWidget *>()) {
            auto *const label = qobject_cast<QLabel *>(shown);
            auto *const pressed = qobject_cast<ZDRButton *>(shown);
            if (!shown->isVisible() || !(label || pressed))
                continue;
            const QRect place(shown->mapTo(&window, QPoint()), shown->size());
            const std::string text = (label ? label->text() : pressed->text()).left(40).toStdString();
            EXPECT_TRUE(window.rect().contains(place)) << text;
            if (label) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width())) << text;
            } else {
                EXPECT_GE(pressed->width(), pressed->fontMetrics().horizontalAdvance(pressed->text()))
                    << text;
            }
            for (const QRect &other : places)
                EXPECT_FALSE(other.intersects(place)) << text;
            places += place;
        }
        EXPECT_EQ(window.size(), window.wantedSize());
        EXPECT_GE(places.size(), 5);
    }
    static void setFontMeanwhile(const QFont &font)
    {
        QApplication::setFont(font);
        QCoreApplication::processEvents();
        QCoreApplication::processEvents(); // what the first pass left to do
    }
    static QColor colorAt(AlertWindow &window, const QPoint &point, const QColor &behind)
    {
        return Look{1, false, false}.pictureOf(window, behind, QWidget::DrawChildren).pixelColor(point);
    }

    const QFont font = QApplication::font();
};
} // namespace

TEST_F(AlertTextTest, SaysHowMuchTimeIsLeftAndGoesOnSayingIt)
{
    const auto shown = alert("Backup", 4min);
    show(shown);
    EXPECT_TRUE(textsOf(window(shown)).contains("in 4 minutes"));
    clock->advance(1min);
    EXPECT_TRUE(textsOf(window(shown)).contains("in 3 minutes"));
    clock->advance(2min + 39s + 800ms);
    EXPECT_TRUE(textsOf(window(shown)).contains("in 20 seconds"));
    clock->jumpTo(clock->currentDate().addSecs(-600));
    EXPECT_TRUE(textsOf(window(shown)).contains("in 11 minutes")) << "the clock was set";
}

TEST_F(AlertTextTest, NamesTheScheduleWhereThatIsNotTheTitle)
{
    details = {"Evening backup", "The action runs unless you cancel it."};
    const auto shown = alert("Command");
    show(shown);
    EXPECT_EQ(textsOf(window(shown)),
              (QStringList{"Command", "Evening backup", "Will run on 14 Mar 2026, 19:30.", "in 1 minute",
                           "The action runs unless you cancel it."}));
    details = {"Command", {}};
    presenter->show(shown);
    EXPECT_EQ(textsOf(window(shown)),
              (QStringList{"Command", "Will run on 14 Mar 2026, 19:30.", "in 1 minute"}));
}

TEST_F(AlertTextTest, WakesTheProcessAtMostTenTimesASecondAndNotAtAllWhileItIsHidden)
{
    const auto shown = alert("Backup", 20s);
    show(shown);
    wait();
    auto *const pie = window(shown).findChild<ZDRProgressIndicator *>();
    float former = pie->floatValue();
    int steps = 0;
    for (int pass = 0; pass < 5000; ++pass) {
        clock->advance(1ms);
        steps += pie->floatValue() != former ? 1 : 0;
        former = pie->floatValue();
        ASSERT_LE(clock->pendingDelays().size(), 1);
    }
    EXPECT_LE(steps, 50);
    EXPECT_GE(steps, 20);
    window(shown).hide();
    QCoreApplication::processEvents();
    clock->advance(1s);
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
    window(shown).show();
    QCoreApplication::processEvents();
    EXPECT_EQ(clock->pendingDelays().size(), 1);
    EXPECT_TRUE(textsOf(window(shown)).contains("in 14 seconds"));
}

TEST_F(AlertTextTest, AWindowThatHasGoneWakesNobody)
{
    const auto shown = alert("Backup", 20s);
    show(shown);
    presenter->close(shown);
    clock->advance(1s);
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
}

TEST_F(AlertTextTest, WrapsLongTitlesAlsoWhereAWordIsLongerThanALine)
{
    for (const QString &title : {QString("A backup of everything that there is on this machine, and more"),
                                 QString(120, 'W'), QString("ナ").repeated(90)}) {
        const auto shown = alert(title);
        details = {QString(90, 'M'), {}};
        show(shown);
        EXPECT_EQ(window(shown).width(), 340) << "texts do not widen it";
        EXPECT_GT(window(shown).findChild<QLabel *>()->height(),
                  2 * window(shown).fontMetrics().height() - 4);
        expectThatAllFits(window(shown));
        presenter->close(shown);
    }
}

TEST_F(AlertTextTest, LongButtonsWidenIt)
{
    const auto shown = alert("Backup");
    shown->setActionButtonTitle("Do not make any backup tonight");
    show(shown);
    EXPECT_GT(window(shown).width(), 340);
    expectThatAllFits(window(shown));
    shown->setActionButtonTitle(QString(5000, 'x'));
    presenter->show(shown);
    EXPECT_LT(window(shown).width(), 900);
}

TEST_F(AlertTextTest, FitsInALargeFontWithTextsHalfAsLongAgain)
{
    QFont large = font;
    large.setPointSize(16);
    QApplication::setFont(large);
    details = {"Abendliche Sicherung aller Verzeichnisse",
               "Der Computer wird ausgeschaltet, wenn Sie nicht rechtzeitig abbrechen, ohne Rückfrage."};
    const auto shown = alert("Ausschalten und dann sehr lange ruhen");
    shown->setInformativeText("Wird am 14. März 2026 um 19:30 Uhr mitteleuropäischer Zeit ausgeführt.");
    shown->setActionButtonTitle("Jetzt abbrechen");
    show(shown);
    expectThatAllFits(window(shown));
    setFontMeanwhile(font);
    expectThatAllFits(window(shown)); // as the desktop's font changes
    large.setPointSize(20);
    setFontMeanwhile(large);
    expectThatAllFits(window(shown));
}

TEST_F(AlertTextTest, RunsFromRightToLeftThroughout)
{
    details = {"Backup", "سيُنفَّذ الإجراء ما لم تُلغِه."};
    const auto shown = alert("أمر");
    shown->setInformativeText("سيُنفَّذ في 14 مارس 2026، 7:30 م.");
    show(shown);
    const AlertWindow &seen = window(shown);
    const auto place = [&seen](const QWidget *widget) {
        return QRect(widget->mapTo(&seen, QPoint()), widget->size());
    };
    EXPECT_LT(place(button(seen, "Cancel")).right(), place(button(seen, "Later")).x());
    EXPECT_LT(place(button(seen, "Later")).right(), place(button(seen, "Hide")).x());
    for (auto *const label : seen.findChildren<QLabel *>()) {
        EXPECT_EQ(label->layoutDirection(), Qt::RightToLeft);
        if (!label->isVisible())
            continue;
        EXPECT_LT(place(label).right(), place(seen.findChild<ZDRProgressIndicator *>()).x());
        // The ink begins at the right, also that of Latin text.
        QImage ink(label->size(), QImage::Format_ARGB32_Premultiplied);
        ink.fill(Qt::transparent);
        label->render(&ink, {}, {}, {});
        const auto inked = [&ink](int from, int to) {
            for (int x = from; x < to; ++x) {
                for (int y = 0; y < ink.height(); ++y) {
                    if (qAlpha(ink.pixel(x, y)) > 100)
                        return true;
                }
            }
            return false;
        };
        EXPECT_TRUE(inked(ink.width() - 12, ink.width())) << label->text().toStdString();
    }
}

TEST_F(AlertTextTest, StandsOnAGroundThatLetsNothingThrough)
{
    const auto shown = alert("Backup");
    show(shown);
    const QPoint free(170, 6);
    const QColor onWhite = colorAt(window(shown), free, Qt::white);
    EXPECT_EQ(onWhite, colorAt(window(shown), free, Qt::black));
    EXPECT_EQ(onWhite, AlertGround::seenColor(false));
    EXPECT_LT(onWhite.lightness(), 60);
    EXPECT_EQ(colorAt(window(shown), {0, 0}, Qt::white), QColor(Qt::white)) << "the corners are round";
}

TEST_F(AlertTextTest, IsBlackAndWhiteWhereThePersonWantsMuchContrast)
{
    const auto shown = alert("Backup");
    show(shown);
    QPalette contrast(Qt::white, Qt::black);
    contrast.setColor(QPalette::Window, Qt::black);
    contrast.setColor(QPalette::WindowText, Qt::white);
    window(shown).setPalette(contrast);
    QCoreApplication::processEvents();
    EXPECT_EQ(colorAt(window(shown), {170, 6}, Qt::red), QColor(Qt::black));
    EXPECT_EQ(colorAt(window(shown), {170, 0}, Qt::red), QColor(Qt::white)) << "the edge";
    EXPECT_EQ(window(shown).findChild<QLabel *>()->palette().color(QPalette::WindowText), QColor(Qt::white));
    for (const Look &look : {Look{1, false, false}, Look{1, true, false}})
        EXPECT_FALSE(AlertGround::isHighContrast(look.palette()));
}

TEST_F(AlertTextTest, IsAnAlertToScreenReadersWithAllThatItSays)
{
    details = {"Evening backup", "The action runs unless you cancel it."};
    const auto shown = alert("Command");
    show(shown);
    QAccessibleInterface *const heard = QAccessible::queryAccessibleInterface(&window(shown));
    EXPECT_EQ(heard->role(), QAccessible::AlertMessage);
    EXPECT_EQ(heard->text(QAccessible::Name), "Command");
    EXPECT_EQ(heard->text(QAccessible::Description),
              "Evening backup\nWill run on 14 Mar 2026, 19:30.\nin 1 minute\nThe action runs unless you "
              "cancel it.");
}
