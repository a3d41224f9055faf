// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/drawing/NSGraphicsContext.h"

#include <QImage>
#include <QPainter>

/// Draws into memory: `width` x `height` points, `ratio` pixels a point, on `ground`.
class Canvas
{
public:
    Canvas(int width, int height, double ratio = 1, const QColor &ground = Qt::transparent)
        : m_height(height),
          m_image(QSizeF(width * ratio, height * ratio).toSize(), QImage::Format_ARGB32_Premultiplied)
    {
        m_image.setDevicePixelRatio(ratio);
        m_image.fill(ground);
    }

    /// Runs `draw` with a current context whose y points down.
    template<class Draw>
    const QImage &flipped(Draw draw)
    {
        QPainter painter(&m_image);
        const NSGraphicsContext context(&painter);
        draw();
        return m_image;
    }

    /// Runs `draw` with a current context whose y points up.
    template<class Draw>
    const QImage &unflipped(Draw draw)
    {
        QPainter painter(&m_image);
        const NSGraphicsContext context(&painter, m_height);
        draw();
        return m_image;
    }

    const QImage &image() const { return m_image; }

private:
    double m_height;
    QImage m_image;
};

/// The smallest rectangle of pixels that holds everything unlike `ground`, from the column `left` on.
inline QRect inkOf(const QImage &image, const QColor &ground, int left = 0)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = left; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != ground)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

inline QRect inkOf(const QImage &image)
{
    return inkOf(image, QColor(0, 0, 0, 0));
}
