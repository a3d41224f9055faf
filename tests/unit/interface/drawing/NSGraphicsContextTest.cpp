// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/LaidOutText_p.h"
#include "DozelyKit/interface/drawing/NSFont.h"
#include "support/Canvas.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
QImage halves(int side, double ratio = 1)
{
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    for (int y = side / 2; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            image.setPixelColor(x, y, Qt::blue);
    }
    image.setDevicePixelRatio(ratio);
    return image;
}

TEST(NSGraphicsContext, IsCurrentForItsLifeAndTheOuterOneAfterwards)
{
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    {
        const NSGraphicsContext outer(&painter);
        EXPECT_EQ(NSGraphicsContext::currentContext(), &outer);
        EXPECT_TRUE(outer.isFlipped());
        {
            const NSGraphicsContext inner(&painter, 10);
            EXPECT_EQ(NSGraphicsContext::currentContext(), &inner);
            EXPECT_FALSE(inner.isFlipped());
            EXPECT_EQ(painter.deviceTransform().map(QPointF(3, 1)), QPointF(3, 9));
        }
        EXPECT_EQ(NSGraphicsContext::currentContext(), &outer);
        EXPECT_EQ(painter.deviceTransform().map(QPointF(3, 1)), QPointF(3, 1));
    }
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST(NSGraphicsContext, AnImageStandsUprightOnItsLowerLeftCornerInEitherDirection)
{
    Canvas down(40, 40);
    down.flipped([] { NSGraphicsContext::currentContext()->compositeToPoint(halves(10), {5, 30}); });
    EXPECT_EQ(inkOf(down.image()), QRect(5, 20, 10, 10));
    EXPECT_EQ(down.image().pixelColor(6, 21), QColor(Qt::red));
    EXPECT_EQ(down.image().pixelColor(6, 29), QColor(Qt::blue));

    Canvas up(40, 40);
    up.unflipped([] { NSGraphicsContext::currentContext()->compositeToPoint(halves(10), {5, 30}); });
    EXPECT_EQ(inkOf(up.image()), QRect(5, 0, 10, 10)); // 30 to 40 from the bottom
    EXPECT_EQ(up.image().pixelColor(6, 1), QColor(Qt::red));
    EXPECT_EQ(up.image().pixelColor(6, 9), QColor(Qt::blue));
}

TEST(NSGraphicsContext, AnImageOfTwoPixelsAPointHasHalfItsSize)
{
    Canvas canvas(40, 40, 2);
    canvas.flipped([] { NSGraphicsContext::currentContext()->compositeToPoint(halves(20, 2), {5, 30}); });
    EXPECT_EQ(inkOf(canvas.image()), QRect(10, 40, 20, 20));       // in pixels
    EXPECT_EQ(canvas.image().pixelColor(12, 49), QColor(Qt::red)); // crisp: no mixed row
    EXPECT_EQ(canvas.image().pixelColor(12, 50), QColor(Qt::blue));
}

TEST(NSGraphicsContext, TextStandsUprightInEitherDirection)
{
    const LaidOutText text("L", NSFont::userFontOfSize(30));
    Canvas down(60, 60);
    down.flipped([&] { text.drawAtPoint(*NSGraphicsContext::currentContext(), {10, 10}, Qt::black); });
    Canvas up(60, 60);
    up.unflipped([&] {
        text.drawAtPoint(*NSGraphicsContext::currentContext(), {10, 60 - 10 - text.size().height()},
                         Qt::black);
    });
    const QRect ink = inkOf(down.image());
    EXPECT_EQ(inkOf(up.image()), ink);
    EXPECT_GT(qAlpha(down.image().pixel(ink.right() - 2, ink.bottom() - 1)), 128); // the foot of the letter
    EXPECT_GT(qAlpha(up.image().pixel(ink.right() - 2, ink.bottom() - 1)), 128);
}

TEST(LaidOutText, MeasuresTheWidestLineAndAllLines)
{
    const QFont font = NSFont::userFontOfSize(NSFont::smallSystemFontSize());
    const QSizeF one = LaidOutText("wide line", font).size();
    const QSizeF two = LaidOutText("wide line\nx", font).size();
    EXPECT_EQ(two.width(), one.width());
    EXPECT_EQ(two.height(), 2 * one.height());
    EXPECT_EQ(LaidOutText("", font).size().width(), 0);
    const QString longText = QString("many words ").repeated(200);
    EXPECT_EQ(LaidOutText(longText, font).size().height(), one.height()); // never broken
}

TEST(NSFont, TheSmallSystemFontHasElevenPixels)
{
    EXPECT_EQ(NSFont::smallSystemFontSize(), 11);
    EXPECT_EQ(NSFont::userFontOfSize(NSFont::smallSystemFontSize()).pixelSize(), 11);
    EXPECT_EQ(QFontInfo(NSFont::userFontOfSize(11)).family(), "DejaVu Sans");
}

TEST(NSFont, FollowsAnApplicationFontThatIsLargerThanUsualInProportion)
{
    const QFont usual = QGuiApplication::font();
    QFont font = usual;
    for (const auto &[application, small] : {std::pair(9, 11.0), {13, 11.0}, {26, 22.0}, {39, 33.0}}) {
        font.setPixelSize(application);
        QGuiApplication::setFont(font);
        EXPECT_DOUBLE_EQ(NSFont::smallSystemFontSize(), small) << application;
    }
    font.setPointSize(24); // 32 pixels at 96 a inch
    QGuiApplication::setFont(font);
    EXPECT_DOUBLE_EQ(NSFont::smallSystemFontSize(), 11 * 32 / 13.0);
    QGuiApplication::setFont(usual);
}
} // namespace
