// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"
#include "DozelyKit/interface/drawing/NSFont.h"
#include "support/Canvas.h"
#include "support/InterfaceEnvironment.h"

#include <QFontMetricsF>
#include <QWidget>

#include <gtest/gtest.h>

namespace
{
const QColor paper = Qt::white;

QVariantMap entry(const QString &name, const QString &time, const QString &action)
{
    return {{"Name", name}, {"Time", time}, {"Action", action}, {"Startup", 0}, {"Wake Up", 0}};
}

QImage drawn(WDConfiguratorCell &cell, const QRectF &frame, QWidget *view = nullptr, double ratio = 1)
{
    return Canvas(200, 60, ratio, paper).flipped([&] { cell.drawInteriorWithFrameInView(frame, view); });
}

/// Where the ink is right of the dot of a frame that begins at x = 10 at most.
QRect textInk(const QImage &image, double ratio = 1)
{
    return inkOf(image, paper, qRound(30 * ratio));
}

/// The place of the dot, 16 points wide and high, for a frame at that corner.
QImage dotOf(const QImage &image, int x, int y, int ratio = 1)
{
    return image.copy((x + 3) * ratio, (y + 22 - 16) * ratio, 16 * ratio, 16 * ratio);
}

/// A resource of that name on paper.
QImage resource(const QString &name)
{
    QImage image(":/DozelyKit/" + name);
    image.setDevicePixelRatio(1); // pixel by pixel
    QImage ground(image.size(), QImage::Format_ARGB32_Premultiplied);
    ground.fill(paper);
    QPainter(&ground).drawImage(0, 0, image);
    return ground;
}

double widthOf(const QString &text)
{
    return QFontMetricsF(NSFont::userFontOfSize(NSFont::smallSystemFontSize())).horizontalAdvance(text);
}

struct DotCase {
    QVariant startup, wakeUp;
    const char *image;
};

void PrintTo(const DotCase &dot, std::ostream *out)
{
    *out << qPrintable(dot.startup.toString()) << '-' << qPrintable(dot.wakeUp.toString()) << '-'
         << dot.image;
}

class Dot : public testing::TestWithParam<DotCase>
{
};

TEST_P(Dot, IsChosenByTheTwoFlagsAndStandsOnItsPlaceAtItsNaturalSize)
{
    WDConfiguratorCell cell;
    QVariantMap value = entry("", "", "");
    value["Startup"] = GetParam().startup;
    value["Wake Up"] = GetParam().wakeUp;
    cell.setObjectValue(value);
    const QImage image = drawn(cell, QRectF(10, 7, 100, 28));
    const QImage expected = resource(GetParam().image);
    EXPECT_EQ(dotOf(image, 10, 7).convertToFormat(expected.format()), expected);
    EXPECT_TRUE(QRect(13, 13, 16, 16).contains(inkOf(image, paper)));
}

INSTANTIATE_TEST_SUITE_P(Flags, Dot,
                         testing::Values(DotCase{0, 0, "NoneDot.png"}, DotCase{1, 0, "StartupDot.png"},
                                         DotCase{0, 1, "WakeUpDot.png"}, DotCase{1, 1, "MixedDot.png"},
                                         DotCase{2, 0, "NoneDot.png"}, DotCase{2, 1, "WakeUpDot.png"},
                                         DotCase{1, -1, "StartupDot.png"}, DotCase{"1", "1", "MixedDot.png"},
                                         DotCase{"1x", "0", "StartupDot.png"},
                                         DotCase{true, false, "StartupDot.png"},
                                         DotCase{1.9, 0.9, "StartupDot.png"},
                                         DotCase{1, QVariant(), "StartupDot.png"},
                                         DotCase{(1LL << 32) + 1, (1LL << 32) + 1, "NoneDot.png"},
                                         DotCase{QVariant(), QVariant(), "NoneDot.png"}));

TEST(WDConfiguratorCell, IsNeitherStartedUpNorWokenAtFirst)
{
    const WDConfiguratorCell cell;
    EXPECT_FALSE(cell.startup());
    EXPECT_FALSE(cell.wakeup());
    EXPECT_TRUE(cell.name().isNull());
    EXPECT_FALSE(cell.objectValue().isValid());
}

TEST(WDConfiguratorCell, TakesOverTheFieldsOfAnEntryAndIgnoresOtherKeys)
{
    WDConfiguratorCell cell;
    const QVariantMap value{
        {"Name", "Lights"}, {"Time", "09:15"}, {"Action", "Run"}, {"Startup", 1}, {"Colour", "red"}};
    cell.setObjectValue(value);
    EXPECT_EQ(cell.name(), "Lights");
    EXPECT_EQ(cell.time(), "09:15");
    EXPECT_EQ(cell.action(), "Run");
    EXPECT_TRUE(cell.startup());
    EXPECT_FALSE(cell.wakeup()); // the key is missing
    EXPECT_EQ(cell.objectValue().toMap(), value);
}

TEST(WDConfiguratorCell, AnAbsentKeyClearsItsField)
{
    WDConfiguratorCell cell;
    cell.setObjectValue(
        QVariantMap{{"Name", "A"}, {"Time", "B"}, {"Action", "C"}, {"Startup", 1}, {"Wake Up", 1}});
    cell.setObjectValue(QVariantMap());
    EXPECT_TRUE(cell.name().isNull());
    EXPECT_TRUE(cell.time().isNull());
    EXPECT_TRUE(cell.action().isNull());
    EXPECT_FALSE(cell.startup());
    EXPECT_FALSE(cell.wakeup());
}

TEST(WDConfiguratorCell, AnyOtherValueKeepsTheFieldsAndIsStillDrawnWithThem)
{
    WDConfiguratorCell cell;
    cell.setObjectValue(entry("Lights", "09:15", "Run"));
    const QImage before = drawn(cell, QRectF(0, 0, 180, 28));
    cell.setObjectValue("some text");
    EXPECT_EQ(cell.objectValue(), QVariant("some text"));
    EXPECT_EQ(cell.name(), "Lights");
    EXPECT_EQ(drawn(cell, QRectF(0, 0, 180, 28)), before);
}

TEST(WDConfiguratorCell, WithoutAnObjectValueNothingIsDrawn)
{
    WDConfiguratorCell cell;
    EXPECT_TRUE(inkOf(drawn(cell, QRectF(0, 0, 180, 28)), paper).isNull());
    cell.setObjectValue(entry("Lights", "09:15", "Run"));
    cell.setObjectValue(QVariant());
    EXPECT_EQ(cell.name(), "Lights");
    EXPECT_TRUE(inkOf(drawn(cell, QRectF(0, 0, 180, 28)), paper).isNull());
}

TEST(WDConfiguratorCell, WithoutAContextNothingIsDrawn)
{
    WDConfiguratorCell cell;
    cell.setObjectValue(entry("Lights", "09:15", "Run"));
    QImage image(200, 60, QImage::Format_ARGB32_Premultiplied);
    image.fill(paper);
    QPainter painter(&image);
    cell.drawInteriorWithFrameInView(QRectF(0, 0, 180, 28), nullptr);
    cell.drawWithFrameInView(QRectF(0, 0, 180, 28), nullptr);
    painter.end();
    EXPECT_TRUE(inkOf(image, paper).isNull());
}

/// The very picture that a plain painter makes of the three texts at the specified corners.
TEST(WDConfiguratorCell, DrawsTheTextsAtTheirPlaces)
{
    for (const double ratio : {1.0, 2.0}) {
        WDConfiguratorCell cell;
        cell.setObjectValue(entry("Night light", "09:15", "Run a tool"));
        const QRectF frame(10, 7, 180, 28);
        const QImage actual = drawn(cell, frame, nullptr, ratio);

        Canvas canvas(200, 60, ratio, paper);
        const QImage &expected = canvas.flipped([&] {
            QPainter *painter = NSGraphicsContext::currentContext()->graphicsPort();
            const QFont font = NSFont::userFontOfSize(11);
            const double ascent = QFontMetricsF(font).ascent();
            painter->setFont(font);
            painter->setPen(InterfaceEnvironment::lightPalette().color(QPalette::Text));
            painter->drawText(QPointF(10 + 25, 7 + ascent), "Night light");
            painter->drawText(QPointF(10 + (180 - 5) - widthOf("09:15"), 7 + ascent), "09:15");
            const double middle = 10 + ((180 - 5) - 25 - 5) * 0.5 + 30;
            painter->drawText(QPointF(middle - widthOf("Run a tool") * 0.5, 7 + 14 + ascent), "Run a tool");
        });
        const int left = qRound(30 * ratio); // right of the dot
        EXPECT_EQ(actual.copy(left, 0, actual.width(), actual.height()),
                  expected.copy(left, 0, actual.width(), actual.height()))
            << ratio;
    }
}

TEST(WDConfiguratorCell, AFrameOfAHundredPointsHasTheActionInTheMiddleAndTheTimeAtTheRight)
{
    WDConfiguratorCell cell;
    cell.setObjectValue(entry("", "H", ""));
    const QRect time = textInk(drawn(cell, QRectF(10, 7, 100, 28)));
    EXPECT_NEAR(time.right() + 1, 10 + 95, 1.5); // the letter's own bearing
    EXPECT_NEAR(time.top(), 7 + 2, 1);

    cell.setObjectValue(entry("", "", "HHH"));
    const QRectF action = textInk(drawn(cell, QRectF(10, 7, 100, 28), nullptr, 3), 3);
    EXPECT_NEAR(action.center().x() / 3, 10 + 62.5, 0.5);
    EXPECT_NEAR(action.top() / 3, 7 + 14 + 2.5, 1);
}

TEST(WDConfiguratorCell, TheFramesHeightIsNotLookedAt)
{
    WDConfiguratorCell cell;
    cell.setObjectValue(entry("Lights", "09:15", "Run"));
    EXPECT_EQ(drawn(cell, QRectF(0, 0, 180, 28)), drawn(cell, QRectF(0, 0, 180, 1)));
}

TEST(WDConfiguratorCell, LongTextsRunOnOverEachOtherAndBeyondTheFrame)
{
    WDConfiguratorCell cell;
    const QString name("A name that is much too long");
    cell.setObjectValue(entry(name, "09:15", ""));
    const QRect ink = textInk(drawn(cell, QRectF(0, 0, 80, 28)));
    EXPECT_NEAR(ink.right(), 25 + widthOf(name), 3);

    cell.setObjectValue(entry("", "", "An action that is long"));
    const QRectF action = textInk(drawn(cell, QRectF(60, 0, 80, 28)));
    EXPECT_LT(action.left(), 60 + 30);
    EXPECT_GT(action.right(), 60 + 75);

    cell.setObjectValue(entry(name, "09:15", ""));
    const QImage both = drawn(cell, QRectF(0, 0, 100, 28));
    cell.setObjectValue(entry(name, "", ""));
    EXPECT_NE(drawn(cell, QRectF(0, 0, 100, 28)), both); // the time is drawn as well, over the name
}

/// The darkest colour of a picture on white, the lightest on black.
QColor strongest(const QImage &image, const QColor &ground)
{
    QColor found = ground;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 30; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (std::abs(colour.lightness() - ground.lightness()) >
                std::abs(found.lightness() - ground.lightness()))
                found = colour;
        }
    }
    return found;
}

TEST(WDConfiguratorCell, TextsHaveThePalettesTextColourAndItsGreyWhenDisabled)
{
    for (const QPalette &palette :
         {InterfaceEnvironment::lightPalette(), InterfaceEnvironment::darkPalette()}) {
        QWidget view;
        view.setPalette(palette);
        const QColor ground = palette.color(QPalette::Base);
        for (const bool enabled : {true, false}) {
            WDConfiguratorCell cell;
            for (const auto &value : {entry("████", "", ""), entry("", "████", ""), entry("", "", "████")}) {
                cell.setObjectValue(value);
                cell.setEnabled(enabled);
                const QImage image = Canvas(200, 60, 1, ground).flipped([&] {
                    cell.drawInteriorWithFrameInView(QRectF(0, 0, 200, 28), &view);
                });
                const QColor expected =
                    palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Text);
                EXPECT_EQ(strongest(image, ground).name(), expected.name()) << enabled;
            }
        }
    }
}

TEST(WDConfiguratorCell, SelectionDoesNotChangeTheColour)
{
    WDConfiguratorCell cell;
    cell.setObjectValue(entry("Lights", "09:15", "Run"));
    const QImage before = drawn(cell, QRectF(0, 0, 180, 28));
    cell.setHighlighted(true);
    EXPECT_EQ(drawn(cell, QRectF(0, 0, 180, 28)), before);
}

/// A class that lies in this program, which is no bundle: there are no images for it.
class CellOfAnotherBundle : public WDConfiguratorCell
{
    Q_OBJECT
};

TEST(WDConfiguratorCell, WithoutItsImageTheTextsAreDrawnAsUsual)
{
    CellOfAnotherBundle other;
    WDConfiguratorCell own;
    for (WDConfiguratorCell *cell : {static_cast<WDConfiguratorCell *>(&other), &own})
        cell->setObjectValue(entry("Lights", "09:15", "Run"));
    const QImage without = drawn(other, QRectF(0, 0, 180, 28));
    const QImage with = drawn(own, QRectF(0, 0, 180, 28));
    EXPECT_TRUE(inkOf(dotOf(without, 0, 0), paper).isNull());
    EXPECT_FALSE(inkOf(dotOf(with, 0, 0), paper).isNull());
    EXPECT_EQ(without.copy(24, 0, 176, 60), with.copy(24, 0, 176, 60));
}

TEST(WDConfiguratorCell, ACopyHasTheSameFieldsAndGoesItsOwnWay)
{
    WDConfiguratorCell cell;
    cell.setObjectValue(
        QVariantMap{{"Name", "A"}, {"Time", "B"}, {"Action", "C"}, {"Startup", 1}, {"Wake Up", 1}});
    cell.setEnabled(false);
    const auto copy = std::dynamic_pointer_cast<WDConfiguratorCell>(cell.copy());
    ASSERT_TRUE(copy);
    cell.setObjectValue(QVariantMap());
    EXPECT_EQ(copy->name() + copy->time() + copy->action(), "ABC");
    EXPECT_TRUE(copy->startup());
    EXPECT_TRUE(copy->wakeup());
    EXPECT_FALSE(copy->isEnabled());
    EXPECT_EQ(copy->objectValue().toMap().value("Name"), "A");
}

TEST(WDConfiguratorCell, DotsAreCrispAtEveryScale)
{
    for (const char *name : {"NoneDot", "StartupDot", "WakeUpDot", "MixedDot"}) {
        for (const int ratio : {1, 2, 3}) {
            WDConfiguratorCell cell;
            const bool startup = QByteArray(name).startsWith('S') || QByteArray(name).startsWith('M');
            const bool wakeUp = QByteArray(name).startsWith('W') || QByteArray(name).startsWith('M');
            QVariantMap value = entry("", "", "");
            value["Startup"] = int(startup);
            value["Wake Up"] = int(wakeUp);
            cell.setObjectValue(value);
            const QString suffix = ratio == 1 ? QString() : QString("@%1x").arg(ratio);
            const QImage expected = resource(name + suffix + ".png");
            ASSERT_EQ(expected.width(), 16 * ratio);
            QImage dot = dotOf(drawn(cell, QRectF(0, 0, 100, 28), nullptr, ratio), 0, 0, ratio);
            dot.setDevicePixelRatio(1);
            EXPECT_EQ(dot.convertToFormat(expected.format()), expected) << name << ' ' << ratio;
        }
    }
}
} // namespace

#include "WDConfiguratorCellTest.moc"

TEST(WDConfiguratorCell, ItsLinesMoveApartWithALargerFont)
{
    const QFont usual = QGuiApplication::font();
    QFont large = usual;
    large.setPixelSize(26);
    QGuiApplication::setFont(large);
    WDConfiguratorCell cell;
    cell.setObjectValue(entry("Ågjpq", "", ""));
    const QRect name = textInk(drawn(cell, QRectF(10, 2, 120, 56)));
    cell.setObjectValue(entry("", "", "Ågjpq"));
    const QImage second = drawn(cell, QRectF(10, 2, 120, 56));
    EXPECT_EQ(textInk(second).top() - name.top(), 28);
    EXPECT_LT(name.bottom(), textInk(second).top()) << "neither line is on the other";
    EXPECT_NEAR(inkOf(second.copy(0, 0, 30, second.height()), paper).center().y(), 2 + 28, 1)
        << "between them";
    QGuiApplication::setFont(usual);
}
