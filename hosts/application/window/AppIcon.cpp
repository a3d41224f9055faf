// SPDX-License-Identifier: MIT
#include "hosts/application/window/AppIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace
{
constexpr double side = 128; // of the square in which the numbers below count, as in the icon's file

void paint(QPainter &painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 8, 0, 120);
    sky.setColorAt(0, QColor("#3b3f8f"));
    sky.setColorAt(1, QColor("#7a5cb8"));
    painter.setPen(Qt::NoPen);
    painter.setBrush(sky);
    painter.drawRoundedRect(QRectF(8, 8, 112, 112), 28, 28);

    QPainterPath moon;
    moon.addEllipse(QPointF(64, 64), 38, 38);
    QPainterPath shadow;
    shadow.addEllipse(QPointF(80, 52), 33, 33);
    painter.setBrush(QColor("#ffe9a8"));
    painter.drawPath(moon.subtracted(shadow));

    painter.setPen(QPen(Qt::white, 6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(80, 52), QPointF(80, 32));
    painter.drawLine(QPointF(80, 52), QPointF(94, 60));
}
} // namespace

QIcon AppIcon::icon()
{
    return QIcon::fromTheme("com.dozely.Dozely", painted());
}

QIcon AppIcon::painted()
{
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap image(size, size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.scale(size / side, size / side);
        paint(painter);
        painter.end();
        icon.addPixmap(image);
    }
    return icon;
}
