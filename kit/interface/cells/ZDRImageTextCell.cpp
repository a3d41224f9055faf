// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/ZDRImageTextCell.h"

#include "DozelyKit/interface/drawing/Geometry_p.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"

#include <QPainter>

#include <cmath>

using namespace dozely;

namespace
{
constexpr double gap = 3;
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

QRectF ZDRImageTextCell::editingFrameForCellFrame(const QRectF &frame) const
{
    return Geometry::dividedAtMinX(frame, m_image.deviceIndependentSize().width() + gap).second;
}

QSizeF ZDRImageTextCell::cellSize() const
{
    const QSizeF size = NSTextFieldCell::cellSize();
    return {size.width() + m_image.deviceIndependentSize().width() + gap, size.height()};
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
    const auto [column, rest] = Geometry::dividedAtMinX(frame, size.width() + gap);
    if (drawsBackground())
        context->graphicsPort()->fillRect(column, backgroundColorInView(view));
    const double height = context->isFlipped() ? size.height() : -size.height();
    context->compositeToPoint(m_image,
                              {column.x() + gap, column.y() + std::ceil((height + frame.height()) * 0.5)});
    NSTextFieldCell::drawWithFrameInView(rest, view);
}

void ZDRImageTextCell::editWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor,
                                           QObject *delegate, QEvent *event)
{
    NSTextFieldCell::editWithFrameInView(editingFrameForCellFrame(frame), view, editor, delegate, event);
}

void ZDRImageTextCell::selectWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor,
                                             QObject *delegate, int start, int length)
{
    NSTextFieldCell::selectWithFrameInView(editingFrameForCellFrame(frame), view, editor, delegate, start,
                                           length);
}
