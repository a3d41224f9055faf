// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"

#include <QImage>
#include <QPainter>

namespace
{
NSGraphicsContext *innermost = nullptr;
} // namespace

NSGraphicsContext::NSGraphicsContext(QPainter *painter)
    : m_painter(painter), m_outer(innermost), m_flipped(true)
{
    innermost = this;
    m_painter->save();
}

NSGraphicsContext::NSGraphicsContext(QPainter *painter, double height)
    : m_painter(painter), m_outer(innermost), m_flipped(false)
{
    innermost = this;
    m_painter->save();
    m_painter->translate(0, height);
    m_painter->scale(1, -1);
}

NSGraphicsContext::~NSGraphicsContext()
{
    m_painter->restore();
    innermost = m_outer;
}

NSGraphicsContext *NSGraphicsContext::currentContext()
{
    return innermost;
}

QPainter *NSGraphicsContext::graphicsPort() const
{
    return m_painter;
}

bool NSGraphicsContext::isFlipped() const
{
    return m_flipped;
}

double NSGraphicsContext::devicePixelRatio() const
{
    return m_painter->device()->devicePixelRatioF();
}

void NSGraphicsContext::compositeToPoint(const QImage &image, const QPointF &point) const
{
    if (image.isNull())
        return;
    const double height = image.deviceIndependentSize().height();
    m_painter->save();
    m_painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    m_painter->setOpacity(1.0);
    m_painter->setRenderHint(QPainter::SmoothPixmapTransform);
    m_painter->translate(point);
    if (!m_flipped)
        m_painter->scale(1, -1);
    m_painter->drawImage(QPointF(0, -height), image);
    m_painter->restore();
}
