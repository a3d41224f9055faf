// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/interface/drawing/NSBezierPath.h"
#include "support/Canvas.h"
#include "support/FakeClock.h"
#include "support/PaintCounter.h"

#include <QAccessible>
#include <QPaintEngine>

#include <gmock/gmock.h>

using namespace dozely;

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace
{
class ZDRProgressIndicatorTest : public testing::Test
{
protected:
    ZDRProgressIndicatorTest() { Port<Clock>::current() = clock; }

    /// The pie of a value of 1 at most, 200 x 200 points on black.
    QImage pie(float value)
    {
        indicator.setMaxValue(1);
        indicator.setFloatValue(value);
        return Canvas(200, 200, 1, Qt::black).unflipped([this] { indicator.drawRect({0, 0, 200, 200}); });
    }

    std::shared_ptr<FakeClock> clock = std::make_shared<FakeClock>();
    ZDRProgressIndicator indicator;
};

/// A paint device that only writes down which lines are drawn, in the coordinates that the painter was given.
class LineRecorder : public QPaintDevice
{
public:
    QList<QLineF> lines() const { return m_engine.lines; }
    QPaintEngine *paintEngine() const override { return &m_engine; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 1 << 26;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return 96;
        }
    }

private:
    class Engine : public QPaintEngine
    {
    public:
        Engine() : QPaintEngine(AllFeatures) {}
        bool begin(QPaintDevice *) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState &) override {}
        void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
        void drawPath(const QPainterPath &) override {}
        void drawLines(const QLineF *drawn, int count) override
        {
            lines += QList<QLineF>(drawn, drawn + count);
        }
        Type type() const override { return User; }
        QList<QLineF> lines;
    };

    mutable Engine m_engine;
};

// Over black: the sector, the rest, and the hand over either. Pictures count rows from the top.
const QColor white(204, 204, 204);
const QColor grey(102, 102, 102);

/// Whether the hand, a point wide between two pixels, passes through the point of the picture.
bool isHand(const QImage &image, const QPoint &point)
{
    const auto darkest = [&image](const QList<QPoint> &points) {
        int red = 255;
        for (const QPoint &each : points)
            red = std::min(red, image.pixelColor(each).red());
        return red;
    };
    const QPoint aside(5, 5);
    return darkest({point, point - QPoint(1, 0), point - QPoint(0, 1)}) + 20 <
           darkest({point + aside, point - aside});
}
} // namespace

TEST_F(ZDRProgressIndicatorTest, BeginsHiddenAtMinusOneWithStepsOfOneASecond)
{
    EXPECT_EQ(indicator.maxValue(), -1);
    EXPECT_EQ(indicator.floatValue(), -1);
    EXPECT_EQ(indicator.intervalValue(), 1);
    EXPECT_EQ(indicator.animationDelay(), 1s);
    EXPECT_FALSE(indicator.isAnimating());
    EXPECT_EQ(ZDRProgressIndicator::initWithFrame({3, 4, 50, 60})->geometry(), QRect(3, 4, 50, 60));
}

TEST_F(ZDRProgressIndicatorTest, DrawsNothingWhileItsGreatestValueIsNotPositive)
{
    for (const float most : {-1.0F, 0.0F, -0.001F}) {
        indicator.setMaxValue(most);
        indicator.setFloatValue(0.5F);
        const QImage image = Canvas(50, 50).unflipped([this] { indicator.drawRect({0, 0, 50, 50}); });
        EXPECT_TRUE(inkOf(image).isEmpty()) << most;
    }
}

TEST_F(ZDRProgressIndicatorTest, DrawsNothingWithoutAContext)
{
    NSBezierPath::setDefaultLineCapStyle(NSBezierPath::ButtLineCapStyle);
    indicator.setMaxValue(1);
    indicator.drawRect({0, 0, 50, 50});
    EXPECT_EQ(NSBezierPath::defaultLineCapStyle(), NSBezierPath::ButtLineCapStyle);
}

TEST_F(ZDRProgressIndicatorTest, IsAGreyDiscWithTheHandStraightUpAtZero)
{
    const QImage image = pie(0);
    for (const QPoint &point : {QPoint(40, 100), QPoint(160, 100), QPoint(100, 160), QPoint(60, 60)})
        EXPECT_EQ(image.pixelColor(point), grey) << point.x() << ' ' << point.y();
    EXPECT_TRUE(isHand(image, {100, 50}));
    EXPECT_FALSE(isHand(image, {100, 150})) << "not downwards";
}

TEST_F(ZDRProgressIndicatorTest, FillsAQuarterFromTwelveToNineOClock)
{
    const QImage image = pie(0.25F);
    EXPECT_EQ(image.pixelColor(60, 60), white);
    EXPECT_EQ(image.pixelColor(60, 140), grey);
    EXPECT_EQ(image.pixelColor(140, 60), grey);
    EXPECT_EQ(image.pixelColor(140, 140), grey);
    EXPECT_TRUE(isHand(image, {50, 100})) << "the hand points left";
}

TEST_F(ZDRProgressIndicatorTest, GrowsCounterClockwiseThroughTheOtherQuarters)
{
    const QImage half = pie(0.5F);
    EXPECT_EQ(half.pixelColor(60, 60), white);
    EXPECT_EQ(half.pixelColor(60, 140), white);
    EXPECT_EQ(half.pixelColor(140, 140), grey);
    EXPECT_TRUE(isHand(half, {100, 150})) << "downwards";
    const QImage more = pie(0.75F);
    EXPECT_EQ(more.pixelColor(140, 140), white);
    EXPECT_EQ(more.pixelColor(140, 60), grey);
}

TEST_F(ZDRProgressIndicatorTest, IsAWhiteDiscWhenTheValueIsTheGreatest)
{
    const QImage image = pie(1);
    for (const QPoint &point : {QPoint(60, 60), QPoint(60, 140), QPoint(140, 140), QPoint(140, 60)})
        EXPECT_EQ(image.pixelColor(point), white) << point.x() << ' ' << point.y();
    EXPECT_TRUE(isHand(image, {100, 50}));
}

TEST_F(ZDRProgressIndicatorTest, DrawsAValueBelowZeroWithoutHoldingItToTheScale)
{
    const QImage image = pie(-0.25F); // the hand at 0 degrees: three o'clock
    EXPECT_EQ(image.pixelColor(140, 60), grey);
    EXPECT_EQ(image.pixelColor(60, 60), white);
    EXPECT_EQ(image.pixelColor(140, 140), white);
    EXPECT_TRUE(isHand(image, {150, 100}));
}

TEST_F(ZDRProgressIndicatorTest, TakesItsGeometryFromTheRectangleThatItIsAskedToDraw)
{
    indicator.resize(10, 10);
    indicator.setMaxValue(1);
    indicator.setFloatValue(0);
    const QImage image = Canvas(200, 100).unflipped([this] { indicator.drawRect({100, 20, 80, 40}); });
    const QRect disc(120, 40, 40, 40); // as high as the smaller side, in the middle; rows from the top
    EXPECT_TRUE(disc.adjusted(-1, -1, 1, 1).contains(inkOf(image))) << "nothing outside";
    EXPECT_TRUE(inkOf(image).adjusted(-1, -1, 1, 1).contains(disc));
}

TEST_F(ZDRProgressIndicatorTest, PutsTheEndOfItsHandWhereSinglePrecisionAndItsOwnDegreesSay)
{
    // So large that all of it can be seen: a radian has 57.296 degrees, half of the side is taken in single
    // precision, and so are the end's coordinates.
    const auto handOf = [this](float value) {
        LineRecorder device;
        QPainter painter(&device);
        const NSGraphicsContext context(&painter); // whose points are the device's
        indicator.setMaxValue(1);
        indicator.setFloatValue(value);
        indicator.drawRect({0, 0, 40000003, 50000000});
        return device.lines();
    };
    const auto quarter = handOf(0.25F);
    ASSERT_EQ(quarter.size(), 1);
    EXPECT_EQ(quarter[0].p1(), QPointF(20000001.5, 25000000));
    EXPECT_EQ(quarter[0].p2(), QPointF(-0.49853843450546265, 25000242));
    const auto most = handOf(0.875F);
    ASSERT_EQ(most.size(), 1);
    EXPECT_EQ(most[0].p2(), QPointF(34142524, 39141752));
}

TEST_F(ZDRProgressIndicatorTest, LeavesRoundCapsAndWidthOneBehindAsTheDefaultsOfThePathClass)
{
    NSBezierPath::setDefaultLineCapStyle(NSBezierPath::SquareLineCapStyle);
    NSBezierPath::setDefaultLineWidth(7);
    pie(0.5F);
    EXPECT_EQ(NSBezierPath::defaultLineCapStyle(), NSBezierPath::RoundLineCapStyle);
    EXPECT_EQ(NSBezierPath::defaultLineWidth(), 1.0);
}

TEST_F(ZDRProgressIndicatorTest, CountsDownOnceADelayUntilItReachesZero)
{
    indicator.setMaxValue(3);
    indicator.setFloatValue(3);
    indicator.startAnimation();
    EXPECT_EQ(indicator.floatValue(), 3);
    QList<float> values;
    for (int second = 0; second < 5; ++second) {
        clock->advance(1s);
        values += indicator.floatValue();
    }
    EXPECT_THAT(values, ElementsAre(2, 1, 0, 0, 0));
    EXPECT_FALSE(indicator.isAnimating());
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
}

TEST_F(ZDRProgressIndicatorTest, IsPaintedAnewAtEachStepOfItsCountdown)
{
    QWidget window;
    indicator.setParent(&window);
    window.resize(300, 100);
    indicator.setMaxValue(3);
    indicator.setFloatValue(3);
    window.show();
    PaintCounter paints(indicator);
    ASSERT_TRUE(paints.isShown());
    indicator.startAnimation();
    QList<float> painted;
    for (int second = 0; second < 5; ++second) {
        clock->advance(1s);
        EXPECT_TRUE(paints.settle());
        for (int paint = paints.takeCount(); paint > 0; --paint)
            painted += indicator.floatValue();
    }
    EXPECT_THAT(painted, ElementsAre(2, 1, 0)) << "and no more after the last step";
    indicator.setParent(nullptr);
}

TEST_F(ZDRProgressIndicatorTest, IsNotPaintedAnewForTheSettingsOfItsCountdown)
{
    QWidget window;
    indicator.setParent(&window);
    window.resize(300, 100);
    window.show();
    PaintCounter paints(indicator);
    ASSERT_TRUE(paints.isShown());
    indicator.setMaxValue(10);
    indicator.setIntervalValue(2);
    indicator.setAnimationDelay(250ms);
    ASSERT_TRUE(paints.settle());
    EXPECT_EQ(paints.count(), 0);
    indicator.setFloatValue(5);
    ASSERT_TRUE(paints.settle());
    EXPECT_EQ(paints.count(), 1) << "by the value alone";
    indicator.setParent(nullptr);
}

TEST_F(ZDRProgressIndicatorTest, MayEndBelowZero)
{
    indicator.setFloatValue(0.5F);
    indicator.startAnimation();
    clock->advance(5s);
    EXPECT_EQ(indicator.floatValue(), -0.5F);
    EXPECT_FALSE(indicator.isAnimating());
}

TEST_F(ZDRProgressIndicatorTest, BeginsItsDelayAnewWhenItIsStartedAgain)
{
    indicator.setFloatValue(3);
    indicator.startAnimation();
    clock->advance(900ms);
    indicator.startAnimation();
    clock->advance(900ms);
    EXPECT_EQ(indicator.floatValue(), 3) << "the first timer is gone";
    clock->advance(100ms);
    EXPECT_EQ(indicator.floatValue(), 2);
}

TEST_F(ZDRProgressIndicatorTest, GoesOnForEverWithAnIntervalThatTakesNothingOff)
{
    indicator.setIntervalValue(0);
    indicator.setFloatValue(1);
    indicator.startAnimation();
    clock->advance(100s);
    EXPECT_EQ(indicator.floatValue(), 1);
    EXPECT_TRUE(indicator.isAnimating());
}

TEST_F(ZDRProgressIndicatorTest, TakesDelayAndIntervalAsTheyAreAtEachStep)
{
    indicator.setFloatValue(10);
    indicator.setAnimationDelay(250ms);
    indicator.setIntervalValue(2.5F);
    indicator.startAnimation();
    clock->advance(250ms);
    EXPECT_EQ(indicator.floatValue(), 7.5F);
    indicator.setIntervalValue(0.5F);
    clock->advance(250ms);
    EXPECT_EQ(indicator.floatValue(), 7);
}

TEST_F(ZDRProgressIndicatorTest, StopsItsCountdownWhenItIsDestroyed)
{
    {
        ZDRProgressIndicator shortLived;
        shortLived.setFloatValue(3);
        shortLived.startAnimation();
    }
    clock->advance(2s); // would touch what is gone
    EXPECT_TRUE(clock->pendingDelays().isEmpty());
}

TEST_F(ZDRProgressIndicatorTest, IsAProgressBarWithNameAndValueForAScreenReader)
{
    indicator.setMaxValue(20);
    indicator.setFloatValue(5);
    QAccessibleInterface *const seen = QAccessible::queryAccessibleInterface(&indicator);
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->role(), QAccessible::ProgressBar);
    EXPECT_EQ(seen->text(QAccessible::Name), "Time left");
    EXPECT_EQ(seen->text(QAccessible::Value), "25%");
    ASSERT_TRUE(seen->valueInterface());
    EXPECT_EQ(seen->valueInterface()->currentValue(), 5.0);
    EXPECT_EQ(seen->valueInterface()->minimumValue(), 0.0);
    EXPECT_EQ(seen->valueInterface()->maximumValue(), 20.0);
    seen->valueInterface()->setCurrentValue(17.0);
    EXPECT_EQ(indicator.floatValue(), 5) << "it is not to be set by a reader";
    EXPECT_TRUE(seen->state().readOnly);
    indicator.setAccessibleName("Until the backup");
    EXPECT_EQ(seen->text(QAccessible::Name), "Until the backup");
    indicator.setFloatValue(-0.5F);
    EXPECT_EQ(seen->valueInterface()->currentValue(), 0.0) << "held to the scale";
    EXPECT_EQ(seen->text(QAccessible::Value), "0%");
    indicator.setMaxValue(-1);
    EXPECT_TRUE(seen->state().invisible) << "nothing is drawn";
    EXPECT_EQ(seen->valueInterface()->maximumValue(), 0.0);
}
