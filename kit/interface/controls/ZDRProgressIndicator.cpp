// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/interface/controls/IndicatorAccessible_p.h"
#include "DozelyKit/interface/drawing/NSBezierPath.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"
#include "DozelyKit/interface/drawing/RectangleExtensions.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace dozely;

using std::chrono::milliseconds;

namespace
{
constexpr float twelveOClock = 90;
constexpr double degreesARadian = 57.296; // not quite 180 / pi

/// Half of the smaller side, in single precision.
float radiusIn(const QRectF &rect)
{
    auto smaller = static_cast<float>(rect.width());
    if (smaller > rect.height())
        smaller = static_cast<float>(rect.height());
    return smaller * 0.5F;
}

QPainterPath sector(const QPointF &center, double radius, double from, double to, bool clockwise)
{
    QPainterPath path(center);
    NSBezierPath::appendArc(path, center, radius, from, to, clockwise);
    path.closeSubpath();
    return path;
}
} // namespace

ZDRProgressIndicator::ZDRProgressIndicator(QWidget *parent) : QWidget(parent)
{
    IndicatorAccessible::install();
}

std::unique_ptr<ZDRProgressIndicator> ZDRProgressIndicator::initWithFrame(const QRectF &frame)
{
    auto indicator = std::make_unique<ZDRProgressIndicator>();
    indicator->setGeometry(frame.toRect());
    return indicator;
}

ZDRProgressIndicator::~ZDRProgressIndicator() = default;

float ZDRProgressIndicator::maxValue() const
{
    return m_maxValue;
}

void ZDRProgressIndicator::setMaxValue(float value)
{
    m_maxValue = value;
}

float ZDRProgressIndicator::intervalValue() const
{
    return m_intervalValue;
}

void ZDRProgressIndicator::setIntervalValue(float value)
{
    m_intervalValue = value;
}

std::chrono::duration<double> ZDRProgressIndicator::animationDelay() const
{
    return m_animationDelay;
}

void ZDRProgressIndicator::setAnimationDelay(std::chrono::duration<double> delay)
{
    m_animationDelay = delay;
}

float ZDRProgressIndicator::floatValue() const
{
    return m_value;
}

void ZDRProgressIndicator::setFloatValue(float value)
{
    const int before = percentage();
    m_value = value;
    update();
    if (percentage() != before && QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, m_value);
        QAccessible::updateAccessibility(&event);
    }
}

int ZDRProgressIndicator::percentage() const
{
    return m_maxValue > 0 ? static_cast<int>(std::clamp(m_value / m_maxValue, 0.0F, 1.0F) * 100) : 0;
}

void ZDRProgressIndicator::startAnimation()
{
    m_timerToRefresh.reset();
    waitForStep();
}

void ZDRProgressIndicator::waitForStep()
{
    m_timerToRefresh = std::make_unique<QObject>();
    Port<Clock>::current()->callAfter(std::chrono::round<milliseconds>(m_animationDelay),
                                      m_timerToRefresh.get(), [this] { animate(); });
}

void ZDRProgressIndicator::animate()
{
    setFloatValue(floatValue() - m_intervalValue);
    m_timerToRefresh.reset();
    if (floatValue() > 0)
        waitForStep();
}

bool ZDRProgressIndicator::isAnimating() const
{
    return m_timerToRefresh != nullptr;
}

QSize ZDRProgressIndicator::sizeHint() const
{
    return {32, 32};
}

void ZDRProgressIndicator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const NSGraphicsContext context(&painter, height());
    drawRect(QRectF(rect()));
}

void ZDRProgressIndicator::drawRect(const QRectF &rect)
{
    const auto *const context = NSGraphicsContext::currentContext();
    if (m_maxValue <= 0 || !context)
        return;
    QPainter *const painter = context->graphicsPort();
    painter->setRenderHint(QPainter::Antialiasing);
    const double radius = radiusIn(rect);
    const QPointF center = centerOfRect(rect);
    const float angle = m_value / m_maxValue * 360 + twelveOClock;
    const bool isEmpty = angle == twelveOClock;

    if (!isEmpty) {
        painter->fillPath(sector(center, radius, twelveOClock, angle, false),
                          QColor::fromRgbF(1, 1, 1, 0.8F));
    }
    const QPainterPath rest = isEmpty ? sector(center, radius, twelveOClock, twelveOClock + 360, false)
                                      : sector(center, radius, twelveOClock, angle, true);
    painter->fillPath(rest, QColor::fromRgbF(0.5F, 0.5F, 0.5F, 0.8F));

    const double radians = static_cast<double>(angle) / degreesARadian;
    const QPointF end(static_cast<float>(std::cos(radians) * radius + center.x()),
                      static_cast<float>(std::sin(radians) * radius + center.y()));
    NSBezierPath::setDefaultLineCapStyle(NSBezierPath::RoundLineCapStyle);
    NSBezierPath::setDefaultLineWidth(1.0);
    NSBezierPath::strokeLineFromPointToPoint(center, end, QColor::fromRgbF(0.1F, 0.1F, 0.1F, 0.9F));
}
