// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertGround.h"

#include "DozelyKit/interface/windows/ZDRBezelView.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int layer = 110; // grey; a third of it is left below the bezel
constexpr double throughBezel = 0.3;
constexpr double highContrast = 19; // of 21, that of black on white

/// Relative luminance, as the guidelines for contrast define it.
double luminance(const QColor &color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}
} // namespace

bool AlertGround::isHighContrast(const QPalette &palette)
{
    const double text = luminance(palette.color(QPalette::Active, QPalette::WindowText));
    const double ground = luminance(palette.color(QPalette::Active, QPalette::Window));
    return (std::max(text, ground) + 0.05) / (std::min(text, ground) + 0.05) >= highContrast;
}

void AlertGround::paint(QPainter &painter, const QRect &bounds, bool isHighContrast)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isHighContrast ? QColor(Qt::black) : QColor(layer, layer, layer));
    painter.drawRoundedRect(bounds, double{ZDRBezelView::cornerRadius}, double{ZDRBezelView::cornerRadius});
}

QColor AlertGround::seenColor(bool isHighContrast)
{
    const int seen = isHighContrast ? 0 : qRound(layer * throughBezel);
    return {seen, seen, seen};
}

QColor AlertGround::textColor(bool isHighContrast)
{
    return isHighContrast ? QColor(Qt::white) : QColor::fromRgbF(1, 1, 1, 0.9F);
}

void AlertPanel::paintEvent(QPaintEvent *)
{
    const bool isStrong = AlertGround::isHighContrast(palette());
    const double width = isStrong ? 2 : 1;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(isStrong ? QColor(Qt::white) : QColor(255, 255, 255, 70), width));
    const double radius = ZDRBezelView::cornerRadius - width / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2), radius,
                            radius);
}
