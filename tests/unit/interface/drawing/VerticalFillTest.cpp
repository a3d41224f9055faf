// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/BezierPathExtensions.h"
#include "support/Canvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace zandorSoftwaresExtensions;

namespace
{
QPainterPath box(double x, double y, double width, double height)
{
    QPainterPath path;
    path.addRect(x, y, width, height);
    return path;
}

void expectColour(const QImage &image, int x, int y, const QColor &expected, int tolerance = 1)
{
    const QColor actual = image.pixelColor(x, y);
    EXPECT_NEAR(actual.red(), expected.red(), tolerance) << x << ' ' << y;
    EXPECT_NEAR(actual.green(), expected.green(), tolerance) << x << ' ' << y;
    EXPECT_NEAR(actual.blue(), expected.blue(), tolerance) << x << ' ' << y;
    EXPECT_NEAR(actual.alpha(), expected.alpha(), tolerance) << x << ' ' << y;
}

int calls = 0;
void *released = nullptr;
std::array<float, 12> seen{};
double smallest = 0, largest = 0;

/// One row white, one row black: at device resolution nothing else can come out.
void stripes(void *info, const double *input, double *output)
{
    const auto *block = static_cast<const float *>(info);
    std::copy(block, block + 12, seen.begin());
    smallest = calls == 0 ? *input : std::min(smallest, *input);
    largest = calls == 0 ? *input : std::max(largest, *input);
    const double value = calls++ % 2 == 0 ? 0.0 : 1.0;
    output[0] = output[1] = output[2] = value;
    output[3] = 1;
}

class VerticalFill : public testing::Test
{
protected:
    void SetUp() override
    {
        calls = 0;
        released = nullptr;
    }
};

TEST_F(VerticalFill, LinearRunsFromTheBottomOfTheBoundsToTheirTop)
{
    Canvas canvas(10, 100);
    const QImage &image =
        canvas.unflipped([] { linearGradientFillWithStartColor(box(0, 0, 10, 100), Qt::black, Qt::white); });
    for (const int row : {0, 25, 50, 99}) { // row 0 is the uppermost: t of its middle is 0.995
        const int grey = qRound(255 * (99.5 - row) / 100);
        expectColour(image, 5, row, QColor(grey, grey, grey));
    }
    EXPECT_EQ(image.pixel(0, 30), image.pixel(9, 30));
}

TEST_F(VerticalFill, InAFlippedContextBottomAndTopTradePlacesOnScreen)
{
    Canvas canvas(10, 100);
    const QImage &image =
        canvas.flipped([] { linearGradientFillWithStartColor(box(0, 0, 10, 100), Qt::black, Qt::white); });
    expectColour(image, 5, 0, QColor(1, 1, 1));
    expectColour(image, 5, 99, QColor(254, 254, 254));
}

TEST_F(VerticalFill, LinearInterpolatesTheAlphaToo)
{
    Canvas canvas(10, 100);
    const QImage &image = canvas.unflipped([] {
        linearGradientFillWithStartColor(box(0, 0, 10, 100), QColor(255, 0, 0, 0), QColor(255, 0, 0, 200));
    });
    EXPECT_NEAR(qAlpha(image.pixel(5, 0)), 199, 1);
    EXPECT_NEAR(qAlpha(image.pixel(5, 50)), 99, 1);
    EXPECT_NEAR(qAlpha(image.pixel(5, 99)), 1, 1);
}

TEST_F(VerticalFill, BilinearHasTheEndColourOnTheMiddleLineAndTheStartColourAtBothEdges)
{
    Canvas canvas(10, 101);
    const QImage &image =
        canvas.unflipped([] { bilinearGradientFillWithStartColor(box(0, 0, 10, 101), Qt::red, Qt::blue); });
    EXPECT_EQ(image.pixelColor(5, 50),
              QColor(Qt::blue)); // the middle of this row is the middle of the bounds
    expectColour(image, 5, 0, QColor(Qt::red), 3);
    expectColour(image, 5, 100, QColor(Qt::red), 3);
    for (int row = 0; row < 50; ++row)
        EXPECT_EQ(image.pixel(5, row), image.pixel(5, 100 - row)) << row;

    Canvas even(10, 100);
    const QImage &hundred =
        even.unflipped([] { bilinearGradientFillWithStartColor(box(0, 0, 10, 100), Qt::red, Qt::blue); });
    expectColour(hundred, 5, 49, QColor(Qt::blue), 3);
    expectColour(hundred, 5, 50, QColor(Qt::blue), 3);
}

TEST_F(VerticalFill, IsLimitedToThePathAndMeasuredByItsBounds)
{
    Canvas canvas(60, 60);
    const QImage &image = canvas.unflipped([] {
        QPainterPath circle;
        circle.addEllipse(QPointF(30, 30), 20, 20);
        linearGradientFillWithStartColor(circle, Qt::black, Qt::white);
    });
    EXPECT_EQ(inkOf(image), QRect(10, 10, 40, 40));
    EXPECT_EQ(qAlpha(image.pixel(11, 11)), 0); // outside of the circle, inside of its bounds
    expectColour(image, 30, 11, QColor(245, 245, 245));
    expectColour(image, 30, 48, QColor(10, 10, 10));
}

TEST_F(VerticalFill, LeavesThePaintersStateAsItWas)
{
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setBrush(Qt::green);
    painter.setClipRect(0, 0, 5, 5);
    const QTransform before = painter.worldTransform();
    {
        const NSGraphicsContext context(&painter);
        linearGradientFillWithStartColor(box(0, 0, 20, 20), Qt::black, Qt::white);
        EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
    }
    EXPECT_EQ(painter.brush().color(), QColor(Qt::green));
    EXPECT_EQ(painter.clipBoundingRect(), QRectF(0, 0, 5, 5));
    EXPECT_EQ(painter.worldTransform(), before);
}

TEST_F(VerticalFill, AColourThatIsNoneCountsAsTransparentBlack)
{
    Canvas canvas(10, 100);
    const QImage &image =
        canvas.unflipped([] { linearGradientFillWithStartColor(box(0, 0, 10, 100), QColor(), Qt::white); });
    const QColor middle = image.pixelColor(5, 49);
    EXPECT_NEAR(middle.alpha(), 128, 2);
    EXPECT_NEAR(middle.red(), 128, 3); // half way from black, not white at half alpha
}

TEST_F(VerticalFill, ColoursOfOtherSpacesAreConverted)
{
    Canvas canvas(10, 10);
    const QColor cmyk = QColor::fromCmyk(0, 255, 255, 0);
    const QImage &image =
        canvas.unflipped([&] { linearGradientFillWithStartColor(box(0, 0, 10, 10), cmyk, cmyk); });
    expectColour(image, 5, 5, Qt::red);
}

class CustomFill : public VerticalFill, public testing::WithParamInterface<double>
{
};

TEST_P(CustomFill, CallsTheEvaluateFunctionOnceForEachRowOfDevicePixels)
{
    const double ratio = GetParam();
    const int rows = qRound(40 * ratio);
    Canvas canvas(10, 40, ratio);
    const QImage &image = canvas.flipped([] {
        customVerticalFillWithCallbacks(box(0, 0, 10, 40), {0, stripes, nullptr}, Qt::red, Qt::blue);
    });
    EXPECT_EQ(calls, rows);
    for (int row = 0; row < rows; ++row)
        EXPECT_EQ(image.pixelColor(3, row), row % 2 == 0 ? QColor(Qt::black) : QColor(Qt::white)) << row;
    EXPECT_NEAR(smallest, 0.5 / rows, 1e-9); // the middle of the first row
    EXPECT_NEAR(largest, 1 - 0.5 / rows, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Ratios, CustomFill, testing::Values(1.0, 1.5, 2.0, 3.0));

TEST_F(VerticalFill, ACallersFunctionSeesTheShadingBlock)
{
    Canvas canvas(4, 4);
    canvas.flipped([] {
        customVerticalFillWithCallbacks(box(0, 0, 4, 4), {0, stripes, nullptr}, QColor(255, 0, 0, 255),
                                        QColor(0, 51, 255, 0));
    });
    const std::array<float, 12> expected{1, 0, 0, 1, 0, 0.2F, 1, 0, -1, 0.2F, 1, -1};
    for (size_t i = 0; i < 12; ++i)
        EXPECT_NEAR(seen[i], expected[i], 1e-4) << i;
    for (size_t i = 0; i < 4; ++i)
        EXPECT_EQ(seen[8 + i], seen[4 + i] - seen[i]);
}

TEST_F(VerticalFill, TheReleaseFunctionGetsTheBlockAfterDrawing)
{
    Canvas canvas(4, 4);
    canvas.flipped([] {
        const auto release = [](void *info) {
            released = info;
            EXPECT_EQ(calls, 4);
        };
        customVerticalFillWithCallbacks(box(0, 0, 4, 4), {0, stripes, release}, Qt::red, Qt::blue);
    });
    EXPECT_NE(released, nullptr);
}

TEST_F(VerticalFill, OutputsAreLimitedAndWhatIsNoNumberIsNothing)
{
    Canvas canvas(4, 4);
    const auto wild = [](void *, const double *, double *output) {
        output[0] = 7;
        output[1] = -3;
        output[2] = std::numeric_limits<double>::quiet_NaN();
        output[3] = 1;
    };
    const QImage &image = canvas.flipped([&] {
        customVerticalFillWithCallbacks(box(0, 0, 4, 4), {0, wild, nullptr}, Qt::red, Qt::blue);
    });
    EXPECT_EQ(image.pixelColor(1, 1), QColor(255, 0, 0));
}

TEST_F(VerticalFill, AFractionalPlaceKeepsRowsWhole)
{
    Canvas canvas(10, 40);
    const QImage &image = canvas.flipped([] {
        customVerticalFillWithCallbacks(box(0, 10.25, 10, 20.5), {0, stripes, nullptr}, Qt::red, Qt::blue);
    });
    EXPECT_EQ(calls, 21); // rows 10 to 30, the first and the last one covered in part
    for (int row = 11; row < 30; ++row)
        EXPECT_EQ(image.pixelColor(3, row), row % 2 == 0 ? QColor(Qt::black) : QColor(Qt::white)) << row;
    EXPECT_NEAR(qAlpha(image.pixel(3, 10)), 191, 2);
    EXPECT_NEAR(qAlpha(image.pixel(3, 30)), 191, 2);
    EXPECT_GE(smallest, 0);
    EXPECT_LE(largest, 1);
}

TEST_F(VerticalFill, ATurnedPainterTurnsTheFill)
{
    QImage image(60, 60, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(60, 0);
    painter.rotate(90); // the path's bottom is now at the right
    {
        const NSGraphicsContext context(&painter);
        linearGradientFillWithStartColor(box(10, 10, 40, 40), Qt::black, Qt::white);
    }
    painter.end();
    expectColour(image, 49, 30, QColor(3, 3, 3), 4);
    expectColour(image, 30, 30, QColor(124, 124, 124), 6);
    expectColour(image, 10, 30, QColor(252, 252, 252), 4);
    EXPECT_EQ(image.pixel(30, 15), image.pixel(30, 45));
}

TEST_F(VerticalFill, APathOfAbsurdHeightIsFilledAllTheSame)
{
    Canvas canvas(10, 10);
    const QImage &image =
        canvas.flipped([] { linearGradientFillWithStartColor(box(0, -1e7, 10, 2e7), Qt::black, Qt::white); });
    expectColour(image, 5, 5, QColor(128, 128, 128), 2);
}

TEST_F(VerticalFill, APathWithEmptyBoundsDrawsNothing)
{
    Canvas canvas(10, 10);
    canvas.flipped([] {
        linearGradientFillWithStartColor(QPainterPath(), Qt::black, Qt::white);
        linearGradientFillWithStartColor(box(2, 5, 6, 0), Qt::black, Qt::white);
        linearGradientFillWithStartColor(box(5, 2, 0, 6), Qt::black, Qt::white);
    });
    EXPECT_TRUE(inkOf(canvas.image()).isNull());
}

TEST_F(VerticalFill, WithoutAContextNothingIsDrawnAndNothingIsAsked)
{
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    customVerticalFillWithCallbacks(box(0, 0, 10, 10), {0, stripes, nullptr}, Qt::red, Qt::blue);
    linearGradientFillWithStartColor(box(0, 0, 10, 10), Qt::red, Qt::blue);
    bilinearGradientFillWithStartColor(box(0, 0, 10, 10), Qt::red, Qt::blue);
    painter.end();
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(inkOf(image).isNull());
}

TEST_F(VerticalFill, WithoutAnEvaluateFunctionNothingIsDrawn)
{
    Canvas canvas(10, 10);
    canvas.flipped([] { customVerticalFillWithCallbacks(box(0, 0, 10, 10), {}, Qt::red, Qt::blue); });
    EXPECT_TRUE(inkOf(canvas.image()).isNull());
}
} // namespace
