// SPDX-License-Identifier: MIT
#include "DrawingGroup.h"

#include "DozelyKit/interface/drawing/BezierPathExtensions.h"
#include "DozelyKit/interface/drawing/NSBezierPath.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"
#include "DozelyKit/interface/drawing/RectangleExtensions.h"

#include <QBoxLayout>
#include <QPainter>

#include <cmath>

namespace
{
using namespace zandorSoftwaresExtensions;

/// Stripes of the two colours: what a caller's own evaluate function may do.
void stripes(void *info, const double *input, double *output)
{
    const auto *const block = static_cast<const float *>(info);
    const double share = std::fmod(*input * 5, 1) < 0.5 ? 0 : 1;
    for (int component = 0; component < 4; ++component)
        output[component] = block[component] + block[component + 8] * share;
}

class Canvas : public QWidget
{
public:
    Canvas() { setMinimumSize(250, 150); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const NSGraphicsContext context(&painter, height());
        const QColor start = palette().color(QPalette::Highlight);
        const QColor end = palette().color(QPalette::Base);
        const double cell = width() / 4.0;
        const double size = std::min(cell, height() / 2.0) - 12;
        int column = 0;
        for (const quint32 corners : {0x1111U, 0x0100U, 0x1000U, 0x0011U}) {
            const QRectF upper(column * cell + 6, height() / 2.0 + 6, size, size);
            const QRectF lower(column * cell + 6, 6, size, size);
            linearGradientFillWithStartColor(roundRectInRect(upper, 14, corners), start, end);
            if (column % 2 == 0)
                bilinearGradientFillWithStartColor(roundRectInRect(lower, 14, corners), start, end);
            else
                customVerticalFillWithCallbacks(roundRectInRect(lower, 14, corners), {0, stripes, nullptr},
                                                start, end);
            NSBezierPath::strokeLineFromPointToPoint(bottomLeftOfRect(upper), topRightOfRect(upper),
                                                     palette().color(QPalette::WindowText));
            for (const auto pointOf :
                 {topLeftOfRect, topCenterOfRect, topRightOfRect, leftCenterOfRect, centerOfRect,
                  rightCenterOfRect, bottomLeftOfRect, bottomCenterOfRect, bottomRightOfRect})
                painter.fillRect(QRectF(pointOf(upper) - QPointF(2, 2), QSizeF(4, 4)), Qt::red);
            ++column;
        }
    }
};
} // namespace

DrawingGroup::DrawingGroup(QWidget *parent) : QGroupBox("Paths and fills", parent)
{
    auto *const column = new QVBoxLayout(this);
    column->addWidget(new Canvas);
}
