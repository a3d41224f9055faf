// SPDX-License-Identifier: MIT
#include "hosts/application/window/Card.h"

#include <QPainter>

namespace
{
constexpr double radius = 8;
constexpr int inside = 16; // between the edge and the content, in points

QColor mixed(const QColor &one, const QColor &other, double part)
{
    return QColor::fromRgbF(float(one.redF() * (1 - part) + other.redF() * part),
                            float(one.greenF() * (1 - part) + other.greenF() * part),
                            float(one.blueF() * (1 - part) + other.blueF() * part));
}
} // namespace

Card::Card(const QString &title, QWidget *parent) : QWidget(parent)
{
    setAccessibleName(title);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    auto *const heading = new QLabel(title);
    QFont font = heading->font();
    font.setWeight(QFont::DemiBold);
    heading->setFont(font);
    heading->setContentsMargins(4, 0, 4, 0);
    layout->addWidget(heading);
    auto *const panel = new Panel;
    m_content = new QVBoxLayout(panel);
    m_content->setContentsMargins(inside, inside, inside, inside);
    m_content->setSpacing(12);
    layout->addWidget(panel);
}

void Panel::setTint(const QColor &colour)
{
    m_tint = colour;
    update();
}

void Panel::paintEvent(QPaintEvent *)
{
    const QColor window = palette().color(QPalette::Window);
    const QColor base = palette().color(QPalette::Base);
    const bool isDark = window.lightnessF() < 0.5F;
    // Panels are lighter than what they lie on, in light and in dark.
    QColor fill = isDark ? mixed(window, Qt::white, 0.055) : mixed(base, window, 0.15);
    QColor edge = mixed(window, palette().color(QPalette::WindowText), isDark ? 0.16 : 0.13);
    if (m_tint.isValid()) {
        fill = mixed(window, m_tint, 0.16);
        edge = mixed(window, m_tint, 0.5);
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(QPen(edge, 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}
