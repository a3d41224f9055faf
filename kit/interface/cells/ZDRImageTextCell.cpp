// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/ZDRImageTextCell.h"

#include "DozelyKit/interface/drawing/Geometry_p.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"
#include "DozelyKit/interface/views/ViewPalette_p.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace dozely;

namespace
{
constexpr double gap = 3;

/// Whether images are to the right of texts.
bool isMirrored(const QWidget *view)
{
    return ViewPalette::layoutDirection(view) == Qt::RightToLeft;
}

/// The column of that width where reading begins in the view, and the rest.
std::pair<QRectF, QRectF> divided(const QRectF &frame, double width, const QWidget *view)
{
    auto [column, rest] = Geometry::dividedAtMinX(frame, width);
    if (isMirrored(view)) {
        column.moveLeft(frame.x() + rest.width());
        rest.moveLeft(frame.x());
    }
    return {column, rest};
}
} // namespace

ZDRImageTextCell::ZDRImageTextCell() = default;

ZDRImageTextCell::~ZDRImageTextCell() = default;

std::shared_ptr<NSTextFieldCell> ZDRImageTextCell::copy() const
{
    auto cell = std::make_shared<ZDRImageTextCell>();
    copyStateTo(*cell);
    cell->m_image = m_image;
    return cell;
}

void ZDRImageTextCell::setImage(const QImage &image)
{
    m_image = image;
}

QImage ZDRImageTextCell::image() const
{
    return m_image;
}

QRectF ZDRImageTextCell::imageFrameForCellFrame(const QRectF &frame) const
{
    if (m_image.isNull())
        return {};
    const QSizeF size = m_image.deviceIndependentSize();
    return {QPointF(frame.x() + gap, frame.y() + std::ceil((frame.height() - size.height()) * 0.5)), size};
}

QRectF ZDRImageTextCell::editingFrameForCellFrame(const QRectF &frame, const QWidget *view) const
{
    return divided(frame, m_image.deviceIndependentSize().width() + gap, view).second;
}

QSizeF ZDRImageTextCell::cellSize() const
{
    const QSizeF size = NSTextFieldCell::cellSize();
    return {size.width() + m_image.deviceIndependentSize().width() + gap, size.height()};
}

double ZDRImageTextCell::rowHeight() const
{
    return std::max(NSTextFieldCell::rowHeight(), m_image.deviceIndependentSize().height());
}

void ZDRImageTextCell::drawWithFrameInView(const QRectF &frame, QWidget *view)
{
    const NSGraphicsContext *context = NSGraphicsContext::currentContext();
    if (!context)
        return;
    if (m_image.isNull()) { // then the text begins at the frame's edge, other than in editing
        NSTextFieldCell::drawWithFrameInView(frame, view);
        return;
    }
    const QSizeF size = m_image.deviceIndependentSize();
    const auto [column, rest] = divided(frame, size.width() + gap, view);
    if (drawsBackground())
        context->graphicsPort()->fillRect(column, backgroundColorInView(view));
    const double height = context->isFlipped() ? size.height() : -size.height();
    const double left = isMirrored(view) ? column.right() - gap - size.width() : column.x() + gap;
    context->compositeToPoint(m_image, {left, column.y() + std::ceil((height + frame.height()) * 0.5)});
    NSTextFieldCell::drawWithFrameInView(rest, view);
}

void ZDRImageTextCell::editWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor,
                                           QObject *delegate, QEvent *event)
{
    NSTextFieldCell::editWithFrameInView(editingFrameForCellFrame(frame, view), view, editor, delegate,
                                         event);
}

void ZDRImageTextCell::selectWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor,
                                             QObject *delegate, int start, int length)
{
    NSTextFieldCell::selectWithFrameInView(editingFrameForCellFrame(frame, view), view, editor, delegate,
                                           start, length);
}
