// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/LaidOutText_p.h"

#include "DozelyKit/interface/drawing/NSGraphicsContext.h"

#include <QPainter>

#include <algorithm>

namespace dozely
{

LaidOutText::LaidOutText(const QString &text, const QFont &font)
    : m_layout(QString(text).replace('\n', QChar::LineSeparator), font)
{
    m_layout.setCacheEnabled(true);
    double width = 0;
    double height = 0;
    m_layout.beginLayout();
    for (QTextLine line = m_layout.createLine(); line.isValid(); line = m_layout.createLine()) {
        line.setNumColumns(static_cast<int>(text.size())); // no width to break at
        line.setPosition({0, height});
        width = std::max(width, line.horizontalAdvance());
        height += line.height();
    }
    m_layout.endLayout();
    m_size = {width, height};
}

QSizeF LaidOutText::size() const
{
    return m_size;
}

void LaidOutText::drawAtPoint(const NSGraphicsContext &context, const QPointF &point,
                              const QColor &colour) const
{
    QPainter *painter = context.graphicsPort();
    painter->setPen(colour);
    if (context.isFlipped()) {
        m_layout.draw(painter, point);
        return;
    }
    painter->save();
    painter->translate(point);
    painter->scale(1, -1);
    m_layout.draw(painter, {0, -m_size.height()});
    painter->restore();
}

} // namespace dozely
