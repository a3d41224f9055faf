// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/BezierPathExtensions.h"

#include "DozelyKit/interface/drawing/Geometry_p.h"
#include "DozelyKit/interface/drawing/NSBezierPath.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

using namespace dozely;

namespace
{
constexpr quint32 originCorner = 0x100;
constexpr quint32 otherCorners = 0x1000;
constexpr int components = 4;
/// Bounds what a path far larger than any screen costs.
constexpr int mostRows = 32768;

using ShadingBlock = std::array<float, 3 * components>;

ShadingBlock shadingBlock(const QColor &first, const QColor &second)
{
    ShadingBlock block{}; // a colour that is none stays transparent black
    if (first.isValid())
        first.toRgb().getRgbF(&block[0], &block[1], &block[2], &block[3]);
    if (second.isValid())
        second.toRgb().getRgbF(&block[4], &block[5], &block[6], &block[7]);
    for (size_t i = 0; i < components; ++i)
        block[2 * components + i] = block[components + i] - block[i];
    return block;
}

/// One premultiplied pixel; what is no number counts as 0.
QRgb pixel(const std::array<double, components> &output)
{
    std::array<int, components> channels{};
    for (size_t i = 0; i < components; ++i)
        channels[i] = output[i] > 0 ? static_cast<int>(std::lround(std::min(output[i], 1.0) * 255)) : 0;
    return qPremultiply(qRgba(channels[0], channels[1], channels[2], channels[3]));
}

/// A strip of one column: the colour of each row, `t` telling the height of a row's middle in the path's
/// bounds.
template<class HeightOfRow>
QImage strip(int rows, CGFunctionEvaluateCallback evaluate, ShadingBlock &block, HeightOfRow t)
{
    QImage image(1, rows, QImage::Format_ARGB32_Premultiplied);
    for (int row = 0; row < rows; ++row) {
        const double input = std::clamp(t(row), 0.0, 1.0);
        std::array<double, components> output{};
        evaluate(block.data(), &input, output.data());
        *reinterpret_cast<QRgb *>(image.scanLine(row)) = pixel(output);
    }
    return image;
}

/// A brush with one colour for each row of device pixels across the bounds.
QBrush brushByDeviceRows(const QTransform &toDevice, const QRectF &bounds,
                         CGFunctionEvaluateCallback evaluate, ShadingBlock &block)
{
    const QRectF device = toDevice.mapRect(bounds);
    const double first = std::floor(device.y());
    const int rows = static_cast<int>(std::ceil(device.y() + device.height()) - first);
    const QTransform fromDevice = toDevice.inverted();
    QBrush brush(strip(rows, evaluate, block, [&](int row) {
        return (fromDevice.map(QPointF(0, first + row + 0.5)).y() - bounds.y()) / bounds.height();
    }));
    brush.setTransform(QTransform::fromTranslate(0, first) * fromDevice);
    return brush;
}

/// For a painter that is turned or sheared: as many rows as the bounds are high in device pixels. A row more
/// at either end keeps the ends from running into each other, since a brush repeats.
QBrush brushAlongHeight(const QTransform &toDevice, const QRectF &bounds, CGFunctionEvaluateCallback evaluate,
                        ShadingBlock &block)
{
    const QLineF axis =
        toDevice.map(QLineF(bounds.x(), bounds.y(), bounds.x(), bounds.y() + bounds.height()));
    const int rows = static_cast<int>(std::clamp(std::ceil(axis.length()), 1.0, double{mostRows}));
    QBrush brush(strip(rows + 2, evaluate, block, [rows](int row) { return (row - 0.5) / rows; }));
    const double height = bounds.height() / rows;
    brush.setTransform(QTransform(1, 0, 0, height, 0, bounds.y() - height));
    return brush;
}
} // namespace

QPainterPath zandorSoftwaresExtensions::roundRectInRect(const QRectF &rect, float radius, quint32 corners)
{
    const double r = radius;
    const QRectF inner = Geometry::inset(rect, r);
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    const auto lineBy = [&path](double x, double y) { path.lineTo(path.currentPosition() + QPointF(x, y)); };
    if (corners & originCorner) {
        path.moveTo(rect.x(), rect.y() + r);
        NSBezierPath::appendArc(path, {inner.x(), inner.y()}, r, 180, 270);
    } else {
        path.moveTo(rect.x(), rect.y());
    }
    if (corners & otherCorners) {
        lineBy(inner.width(), 0);
        NSBezierPath::appendArc(path, {inner.x() + inner.width(), inner.y()}, r, 270, 360);
        lineBy(0, inner.height());
        NSBezierPath::appendArc(path, {inner.x() + inner.width(), inner.y() + inner.height()}, r, 0, 90);
        lineBy(-inner.width(), 0);
        NSBezierPath::appendArc(path, {inner.x(), inner.y() + inner.height()}, r, 90, 180);
    } else {
        path.lineTo(rect.x() + rect.width(), rect.y());
        path.lineTo(rect.x() + rect.width(), rect.y() + rect.height());
        path.lineTo(rect.x(), rect.y() + rect.height());
    }
    path.closeSubpath();
    return path;
}

void zandorSoftwaresExtensions::linearGradientFillWithStartColor(const QPainterPath &path,
                                                                 const QColor &startColor,
                                                                 const QColor &endColor)
{
    customVerticalFillWithCallbacks(path, {0, linearShadedColor, nullptr}, startColor, endColor);
}

void zandorSoftwaresExtensions::bilinearGradientFillWithStartColor(const QPainterPath &path,
                                                                   const QColor &startColor,
                                                                   const QColor &endColor)
{
    customVerticalFillWithCallbacks(path, {0, bilinearShadedColor, nullptr}, startColor, endColor);
}

void zandorSoftwaresExtensions::customVerticalFillWithCallbacks(const QPainterPath &path,
                                                                CGFunctionCallbacks callbacks,
                                                                const QColor &firstColor,
                                                                const QColor &secondColor)
{
    const NSGraphicsContext *context = NSGraphicsContext::currentContext();
    if (!context || !callbacks.evaluate)
        return;
    ShadingBlock block = shadingBlock(firstColor, secondColor);
    QPainter *painter = context->graphicsPort();
    const QTransform toDevice = painter->deviceTransform();
    const QRectF bounds = path.boundingRect();
    if (bounds.width() > 0 && bounds.height() > 0 && toDevice.isInvertible()) {
        const bool upright = toDevice.type() <= QTransform::TxScale;
        const bool fits = toDevice.mapRect(bounds).height() < mostRows;
        const QBrush brush = upright && fits ? brushByDeviceRows(toDevice, bounds, callbacks.evaluate, block)
                                             : brushAlongHeight(toDevice, bounds, callbacks.evaluate, block);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->fillPath(path, brush);
        painter->restore();
    }
    if (callbacks.releaseInfo)
        callbacks.releaseInfo(block.data());
}
