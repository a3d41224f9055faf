// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QTextLayout>

class NSGraphicsContext;

namespace dozely
{

/// A text in one font and one colour, shaped once: measured and then drawn. Lines break where the text says
/// so and nowhere else.
class DOZELYINTERFACE_AUTOTEST_EXPORT LaidOutText
{
public:
    LaidOutText(const QString &text, const QFont &font);

    /// In points: the widest line, all lines.
    QSizeF size() const;

    /// Draws it upright at its natural size, unclipped. `point` is its top-left corner in a flipped context
    /// and its lower-left one in an unflipped context.
    void drawAtPoint(const NSGraphicsContext &context, const QPointF &point, const QColor &colour) const;

private:
    QTextLayout m_layout;
    QSizeF m_size;
};

} // namespace dozely
