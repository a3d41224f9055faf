// SPDX-License-Identifier: MIT
#include "hosts/application/actions/ActionTile.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

namespace
{
/// Painted at the size that is asked for, so sharp at every scale.
class TileEngine : public QIconEngine
{
public:
    TileEngine(QString letter, QColor colour) : m_letter(std::move(letter)), m_colour(std::move(colour)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const QRectF square = QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setOpacity(mode == QIcon::Disabled ? 0.4 : 1);
        painter->setPen(Qt::NoPen);
        QLinearGradient fill(square.topLeft(), square.bottomLeft());
        fill.setColorAt(0, m_colour.lighter(112));
        fill.setColorAt(1, m_colour);
        painter->setBrush(fill);
        const double radius = square.height() * 0.24;
        painter->drawRoundedRect(square, radius, radius);
        QFont font = painter->font();
        font.setPixelSize(qMax(6, qRound(square.height() * 0.58)));
        font.setWeight(QFont::DemiBold);
        painter->setFont(font);
        painter->setPen(Qt::white);
        painter->drawText(square, Qt::AlignCenter, m_letter);
        painter->restore();
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return image;
    }
    QIconEngine *clone() const override { return new TileEngine(*this); }

private:
    const QString m_letter;
    const QColor m_colour;
};
} // namespace

QIcon ActionTile::icon(const QString &name, const QString &seed)
{
    quint32 sum = 0;
    for (const QChar character : seed)
        sum = sum * 31 + character.unicode();
    const int hue = static_cast<int>(sum % 12) * 30;
    return QIcon(new TileEngine(name.left(1).toUpper(), QColor::fromHsl(hue, 120, 118)));
}
