// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertButton.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace
{
constexpr double ringWidth = 2;
constexpr int smallMargin = 9;
constexpr int leastLightness = 190; // to be seen on the dark button

/// The colour by which the desktop marks things, light enough.
QColor ringColor(const QPalette &palette)
{
    const QColor color = palette.color(QPalette::Active, QPalette::Highlight);
    return QColor::fromHsl(std::max(color.hslHue(), 0), color.hslSaturation(),
                           std::max(color.lightness(), leastLightness));
}
} // namespace

void AlertButton::fitToTitle()
{
    ensurePolished();
    const QSize title = fontMetrics().size(Qt::TextShowMnemonic, text());
    setFixedSize(m_isSmall ? title + QSize(2 * smallMargin, smallMargin) : sizeHint());
    awakeFromNib(); // it has its size now
    m_isFitted = true;
}

void AlertButton::changeEvent(QEvent *event)
{
    ZDRButton::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_isFitted)
        fitToTitle();
}

void AlertButton::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat())
        click();
    else
        ZDRButton::keyPressEvent(event);
}

void AlertButton::paintEvent(QPaintEvent *event)
{
    ZDRButton::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ringColor(palette()), ringWidth));
    const QRectF ring = QRectF(rect()).adjusted(ringWidth / 2, ringWidth / 2, -ringWidth / 2, -ringWidth / 2);
    painter.drawRoundedRect(ring, ring.height() / 2, ring.height() / 2);
}
