// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/NSTextFieldCell.h"
#include "DozelyKit/interface/drawing/NSFont.h"
#include "support/Canvas.h"
#include "support/InterfaceEnvironment.h"

#include <QLineEdit>
#include <QWidget>

#include <gtest/gtest.h>

namespace
{
TEST(NSTextFieldCell, KeepsAnyObjectValueAndTellsItAsText)
{
    NSTextFieldCell cell;
    EXPECT_FALSE(cell.objectValue().isValid());
    EXPECT_EQ(cell.stringValue(), "");
    cell.setObjectValue("some text");
    EXPECT_EQ(cell.stringValue(), "some text");
    cell.setObjectValue(12);
    EXPECT_EQ(cell.objectValue(), QVariant(12));
    EXPECT_EQ(cell.stringValue(), "12");
    cell.setObjectValue(QVariantMap{{"a", 1}});
    EXPECT_EQ(cell.stringValue(), "");
    cell.setObjectValue({});
    EXPECT_FALSE(cell.objectValue().isValid());
}

TEST(NSTextFieldCell, IsEnabledPlainAndInTheSmallSystemFontAtFirst)
{
    const NSTextFieldCell cell;
    EXPECT_TRUE(cell.isEnabled());
    EXPECT_FALSE(cell.isHighlighted());
    EXPECT_FALSE(cell.drawsBackground());
    EXPECT_EQ(cell.font(), NSFont::userFontOfSize(11));
    EXPECT_EQ(cell.textColor(), InterfaceEnvironment::lightPalette().color(QPalette::Text));
}

TEST(NSTextFieldCell, ItsSizeFitsTheText)
{
    NSTextFieldCell cell;
    const QSizeF empty = cell.cellSize();
    EXPECT_GT(empty.height(), 11);
    cell.setObjectValue("some text");
    EXPECT_GT(cell.cellSize().width(), empty.width() + 30);
    EXPECT_EQ(cell.cellSize().height(), empty.height());

    // Nothing is cut off in a frame of that size; one that is narrower gets an ellipsis and stays within.
    const auto drawnIn = [&](double width) {
        return Canvas(200, 20).flipped([&] {
            cell.drawInteriorWithFrameInView(QRectF({0, 0}, QSizeF(width, cell.cellSize().height())),
                                             nullptr);
        });
    };
    const double width = std::ceil(cell.cellSize().width());
    EXPECT_EQ(drawnIn(width), drawnIn(150));
    EXPECT_NE(drawnIn(width - 10), drawnIn(150));
    EXPECT_LT(inkOf(drawnIn(40)).right(), 40);
}

TEST(NSTextFieldCell, DrawsTheTextInTheMiddleOfTheHeightInEitherDirection)
{
    NSTextFieldCell cell;
    cell.setFont(NSFont::userFontOfSize(20));
    cell.setObjectValue("x");
    const QRectF frame(10, 10, 100, 40);
    const QRect down =
        inkOf(Canvas(120, 80).flipped([&] { cell.drawInteriorWithFrameInView(frame, nullptr); }));
    const QRect up =
        inkOf(Canvas(120, 80).unflipped([&] { cell.drawInteriorWithFrameInView(frame, nullptr); }));
    EXPECT_EQ(up.translated(0, -20), down); // the frame lies 20 points lower there
    EXPECT_NEAR(down.left(), 12, 2);
}

TEST(NSTextFieldCell, TheTextBeginsWhereTheViewsLanguageBegins)
{
    NSTextFieldCell cell;
    cell.setObjectValue("x");
    QWidget view;
    view.setLayoutDirection(Qt::RightToLeft);
    const QRect ink = inkOf(
        Canvas(120, 20).flipped([&] { cell.drawInteriorWithFrameInView(QRectF(0, 0, 120, 20), &view); }));
    EXPECT_GT(ink.left(), 105);
    EXPECT_LT(ink.right(), 119);
}

TEST(NSTextFieldCell, LineEndsAreBlanks)
{
    NSTextFieldCell cell;
    cell.setObjectValue("a\nb");
    const QImage two =
        Canvas(60, 20).flipped([&] { cell.drawInteriorWithFrameInView(QRectF(0, 0, 60, 20), nullptr); });
    cell.setObjectValue("a b");
    EXPECT_EQ(
        Canvas(60, 20).flipped([&] { cell.drawInteriorWithFrameInView(QRectF(0, 0, 60, 20), nullptr); }),
        two);
}

QColor darkest(const QImage &image)
{
    QColor found = Qt::white;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).lightness() < found.lightness())
                found = image.pixelColor(x, y);
        }
    }
    return found;
}

TEST(NSTextFieldCell, ColoursAreThoseOfTheViewsPaletteUnlessSet)
{
    NSTextFieldCell cell;
    cell.setObjectValue("████");
    QWidget view;
    QPalette palette = InterfaceEnvironment::lightPalette();
    palette.setColor(QPalette::Text, "#204060");
    palette.setColor(QPalette::Disabled, QPalette::Text, "#406080");
    palette.setColor(QPalette::HighlightedText, "#600000");
    view.setPalette(palette);
    const auto colour = [&] {
        return darkest(Canvas(60, 20, 1, Qt::white).flipped([&] {
                   cell.drawInteriorWithFrameInView(QRectF(0, 0, 60, 20), &view);
               }))
            .name();
    };
    EXPECT_EQ(colour(), "#204060");
    cell.setHighlighted(true);
    EXPECT_EQ(colour(), "#600000");
    cell.setEnabled(false);
    EXPECT_EQ(colour(), "#406080");
    cell.setEnabled(true);
    cell.setHighlighted(false);
    cell.setTextColor("#008000");
    EXPECT_EQ(colour(), "#008000");
}

TEST(NSTextFieldCell, FillsItsFrameOnlyWhenItDrawsItsBackground)
{
    NSTextFieldCell cell;
    cell.setBackgroundColor(Qt::yellow);
    const auto ink = [&] {
        return inkOf(
            Canvas(40, 40).flipped([&] { cell.drawWithFrameInView(QRectF(5, 6, 20, 10), nullptr); }));
    };
    EXPECT_TRUE(ink().isNull());
    cell.setDrawsBackground(true);
    EXPECT_EQ(ink(), QRect(5, 6, 20, 10)); // also without a value
    EXPECT_EQ(cell.backgroundColor(), QColor(Qt::yellow));
}

TEST(NSTextFieldCell, WithoutAContextOrAValueNothingIsDrawn)
{
    NSTextFieldCell cell;
    EXPECT_TRUE(inkOf(Canvas(40, 40).flipped([&] {
                    cell.drawWithFrameInView(QRectF(0, 0, 40, 40), nullptr);
                })).isNull());
    cell.setObjectValue("text");
    cell.setDrawsBackground(true);
    cell.drawWithFrameInView(QRectF(0, 0, 40, 40), nullptr); // must not reach for a painter
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

class FilterThatCounts : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *) override
    {
        ++events;
        return false;
    }
    int events = 0;
};

TEST(NSTextFieldCell, EditingPutsTheEditorIntoTheFrameWithTheText)
{
    NSTextFieldCell cell;
    cell.setObjectValue("some text");
    QWidget view;
    FilterThatCounts filter;
    QLineEdit editor;
    cell.editWithFrameInView(QRectF(10, 20, 100, 15), &view, &editor, &filter, nullptr);
    EXPECT_EQ(editor.parentWidget(), &view);
    EXPECT_EQ(editor.geometry(), QRect(10, 20, 100, 15));
    EXPECT_EQ(editor.text(), "some text");
    EXPECT_EQ(editor.selectedText(), "");
    EXPECT_EQ(editor.font().pixelSize(), 11);
    EXPECT_FALSE(editor.isHidden());
    EXPECT_GT(filter.events, 0);
    editor.setParent(nullptr);
}

TEST(NSTextFieldCell, SelectingSelectsAPartOfTheText)
{
    NSTextFieldCell cell;
    cell.setObjectValue("some text");
    QWidget view;
    QLineEdit editor;
    cell.selectWithFrameInView(QRectF(10, 20, 100, 15), &view, &editor, nullptr, 5, 3);
    EXPECT_EQ(editor.selectedText(), "tex");
    editor.setParent(nullptr);
}

TEST(NSTextFieldCell, ACopyHasTheSameStateAndGoesItsOwnWay)
{
    NSTextFieldCell cell;
    cell.setObjectValue("text");
    cell.setEnabled(false);
    cell.setHighlighted(true);
    cell.setDrawsBackground(true);
    cell.setBackgroundColor(Qt::yellow);
    cell.setTextColor(Qt::blue);
    cell.setFont(NSFont::userFontOfSize(30));
    const auto copy = cell.copy();
    cell.setObjectValue("other");
    EXPECT_EQ(copy->objectValue(), QVariant("text"));
    EXPECT_FALSE(copy->isEnabled());
    EXPECT_TRUE(copy->isHighlighted());
    EXPECT_TRUE(copy->drawsBackground());
    EXPECT_EQ(copy->backgroundColor(), QColor(Qt::yellow));
    EXPECT_EQ(copy->textColor(), QColor(Qt::blue));
    EXPECT_EQ(copy->font().pixelSize(), 30);
}

TEST(NSTextFieldCell, FollowsTheApplicationsFontWhenThatBecomesLarger)
{
    const QFont usual = QGuiApplication::font();
    NSTextFieldCell cell;
    cell.setObjectValue("text");
    const double height = cell.cellSize().height();
    QFont large = usual;
    large.setPixelSize(26);
    QGuiApplication::setFont(large);
    EXPECT_EQ(cell.font().pixelSize(), 22);
    EXPECT_GT(cell.cellSize().height(), 1.8 * height);
    cell.setFont(usual);
    EXPECT_EQ(cell.font(), usual) << "one that was set stays";
    QGuiApplication::setFont(usual);
}
} // namespace
