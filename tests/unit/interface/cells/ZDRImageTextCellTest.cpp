// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/ZDRImageTextCell.h"
#include "support/Canvas.h"

#include <QLineEdit>
#include <QWidget>

#include <gtest/gtest.h>

namespace
{
QImage block(int width, int height, const QColor &colour = Qt::red)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return image;
}

QRect inkFlipped(ZDRImageTextCell &cell, const QRectF &frame)
{
    return inkOf(Canvas(100, 80).flipped([&] { cell.drawWithFrameInView(frame, nullptr); }));
}

TEST(ZDRImageTextCell, HasNoImageAtFirst)
{
    const ZDRImageTextCell cell;
    EXPECT_TRUE(cell.image().isNull());
    EXPECT_EQ(cell.imageFrameForCellFrame(QRectF(10, 20, 100, 20)), QRectF());
}

TEST(ZDRImageTextCell, ItsImageFrameIsCentredAndRoundedUp)
{
    ZDRImageTextCell cell;
    cell.setImage(block(10, 16));
    EXPECT_EQ(cell.imageFrameForCellFrame(QRectF(10, 20, 100, 20)), QRectF(13, 22, 10, 16));
    EXPECT_EQ(cell.imageFrameForCellFrame(QRectF(10, 20, 100, 21)), QRectF(13, 23, 10, 16)); // 2.5 becomes 3
    EXPECT_EQ(cell.imageFrameForCellFrame(QRectF(10, 20, 100, 11)),
              QRectF(13, 18, 10, 16)); // -2.5 becomes -2
}

TEST(ZDRImageTextCell, ASixteenHighImageInATwentyHighFlippedFrameEndsAtEighteen)
{
    ZDRImageTextCell cell;
    cell.setImage(block(10, 16));
    EXPECT_EQ(inkFlipped(cell, QRectF(5, 30, 60, 20)), QRect(8, 30 + 2, 10, 16)); // its lower edge at 30 + 18
}

TEST(ZDRImageTextCell, OddHeightsRoundUpInEitherDirection)
{
    ZDRImageTextCell cell;
    cell.setImage(block(10, 16));
    EXPECT_EQ(inkFlipped(cell, QRectF(5, 30, 60, 21)), QRect(8, 30 + 3, 10, 16)); // ceil(18.5) = 19
    const QRect up =
        inkOf(Canvas(100, 80).unflipped([&] { cell.drawWithFrameInView(QRectF(5, 30, 60, 21), nullptr); }));
    EXPECT_EQ(up, QRect(8, 80 - (30 + 3) - 16, 10, 16)); // ceil(2.5) = 3 from the frame's lower edge
}

TEST(ZDRImageTextCell, FromRightToLeftTheImageIsToTheRightOfItsText)
{
    QWidget view;
    view.setLayoutDirection(Qt::RightToLeft);
    ZDRImageTextCell cell;
    cell.setImage(block(10, 16));
    cell.setDrawsBackground(true);
    cell.setBackgroundColor(Qt::white);
    const auto drawn = [&](const QRectF &frame) {
        return Canvas(100, 80, 1, Qt::white).flipped([&] { cell.drawWithFrameInView(frame, &view); });
    };
    EXPECT_EQ(inkOf(drawn({5, 30, 60, 20}), Qt::white), QRect(5 + 60 - 3 - 10, 32, 10, 16));
    cell.setObjectValue("x");
    cell.setImage(block(10, 16, Qt::white)); // so that the text is seen alone
    const QRect text = inkOf(drawn({5, 30, 60, 20}), Qt::white);
    EXPECT_GT(text.left(), 5 + 60 - 13 - 20);
    EXPECT_LE(text.right(), 5 + 60 - 13);
}

TEST(ZDRImageTextCell, TheImagesSizeInPointsCounts)
{
    ZDRImageTextCell cell;
    QImage image = block(20, 32);
    image.setDevicePixelRatio(2);
    cell.setImage(image);
    EXPECT_EQ(cell.imageFrameForCellFrame(QRectF(10, 20, 100, 20)), QRectF(13, 22, 10, 16));
    EXPECT_EQ(inkFlipped(cell, QRectF(5, 30, 60, 20)), QRect(8, 32, 10, 16));
}

TEST(ZDRImageTextCell, TheTextBeginsBehindTheImageAndWithoutOneAtTheEdge)
{
    ZDRImageTextCell cell;
    cell.setObjectValue("████");
    const QRectF frame(0, 0, 80, 20);
    const QRect bare = inkFlipped(cell, frame);
    NSTextFieldCell base;
    base.setObjectValue("████");
    EXPECT_EQ(bare, inkOf(Canvas(100, 80).flipped([&] { base.drawWithFrameInView(frame, nullptr); })));

    QImage empty(10, 16, QImage::Format_ARGB32_Premultiplied);
    empty.fill(Qt::transparent);
    cell.setImage(empty);
    EXPECT_EQ(inkFlipped(cell, frame), bare.translated(13, 0));
}

TEST(ZDRImageTextCell, TheImagesColumnGetsTheBackgroundOnlyWhenTheCellDrawsOne)
{
    ZDRImageTextCell cell;
    QImage empty(10, 16, QImage::Format_ARGB32_Premultiplied);
    empty.fill(Qt::transparent);
    cell.setImage(empty);
    cell.setBackgroundColor(Qt::yellow);
    EXPECT_TRUE(inkFlipped(cell, QRectF(5, 30, 60, 20)).isNull());
    cell.setDrawsBackground(true);
    EXPECT_EQ(inkFlipped(cell, QRectF(5, 30, 60, 20)), QRect(5, 30, 60, 20)); // column and rest
}

TEST(ZDRImageTextCell, IsWiderThanATextByImageAndGap)
{
    ZDRImageTextCell cell;
    NSTextFieldCell base;
    cell.setObjectValue("text");
    base.setObjectValue("text");
    EXPECT_EQ(cell.cellSize(), base.cellSize() + QSizeF(3, 0));
    cell.setImage(block(10, 40));
    EXPECT_EQ(cell.cellSize(), base.cellSize() + QSizeF(13, 0)); // no higher
    QImage fine = block(20, 32);
    fine.setDevicePixelRatio(2);
    cell.setImage(fine);
    EXPECT_EQ(cell.cellSize(), base.cellSize() + QSizeF(13, 0)) << "in points, not in pixels";
}

TEST(ZDRImageTextCell, EditingAndSelectingBeginBehindTheImageColumnWhichIsNeverLessThanTheGap)
{
    ZDRImageTextCell cell;
    cell.setObjectValue("some text");
    QWidget view;
    QLineEdit editor;
    const QRectF frame(10, 20, 100, 15);
    cell.editWithFrameInView(frame, &view, &editor, nullptr, nullptr);
    EXPECT_EQ(editor.geometry(), QRect(13, 20, 97, 15));
    cell.setImage(block(10, 16));
    cell.selectWithFrameInView(frame, &view, &editor, nullptr, 5, 4);
    EXPECT_EQ(editor.geometry(), QRect(23, 20, 87, 15));
    EXPECT_EQ(editor.selectedText(), "text");
    EXPECT_EQ(cell.editingFrameForCellFrame(QRectF(0, 0, 8, 15)), QRectF(8, 0, 0, 15)); // the image is wider
    QImage fine = block(20, 32);
    fine.setDevicePixelRatio(2);
    cell.setImage(fine);
    EXPECT_EQ(cell.editingFrameForCellFrame(frame), QRectF(23, 20, 87, 15)) << "in points, not in pixels";
    editor.setParent(nullptr);
}

TEST(ZDRImageTextCell, ACopySharesTheImage)
{
    ZDRImageTextCell cell;
    cell.setImage(block(10, 16));
    cell.setObjectValue("text");
    const auto copy = std::dynamic_pointer_cast<ZDRImageTextCell>(cell.copy());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->image().cacheKey(), cell.image().cacheKey());
    EXPECT_EQ(copy->image().constBits(), cell.image().constBits());
    EXPECT_EQ(copy->stringValue(), "text");
    cell.setImage({});
    EXPECT_FALSE(copy->image().isNull());
}

TEST(ZDRImageTextCell, WithoutAContextNothingIsDrawn)
{
    ZDRImageTextCell cell;
    cell.setImage(block(10, 16));
    cell.setDrawsBackground(true);
    cell.drawWithFrameInView(QRectF(0, 0, 50, 20), nullptr);
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}
} // namespace
