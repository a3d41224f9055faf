// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QPointF>
#include <QRectF>

class QImage;
class QPainter;

/// Where drawing goes: a painter and the direction in which its y axis points. Current from construction to
/// destruction, one within the other; while there is none, the kit's drawing operations draw nothing.
///
///     void View::paintEvent(QPaintEvent *)
///     {
///         QPainter painter(this);
///         NSGraphicsContext context(&painter, height()); // y points up from the lower edge
///         ...
///     }
///
/// THREADING: the main thread. OWNERSHIP: the painter stays the caller's and must outlive the context.
class DOZELYINTERFACE_EXPORT NSGraphicsContext
{
public:
    /// A flipped context: y points down, as in Qt. Item views draw so.
    explicit NSGraphicsContext(QPainter *painter);

    /// An unflipped context: y points up and is 0 at `height` of the painter's coordinates. The painter is
    /// turned over for the life of the object.
    NSGraphicsContext(QPainter *painter, double height);

    ~NSGraphicsContext();
    NSGraphicsContext(const NSGraphicsContext &) = delete;
    NSGraphicsContext &operator=(const NSGraphicsContext &) = delete;

    /// The innermost living context; null when there is none.
    static NSGraphicsContext *currentContext();

    /// The painter, in this context's coordinates. Never null.
    QPainter *graphicsPort() const;

    /// Whether y points down.
    bool isFlipped() const;

    /// Device pixels a point, of the device that is drawn on.
    double devicePixelRatio() const;

    /// Draws the image upright over what is there, at its natural size in points, its lower-left corner at
    /// `point`.
    void compositeToPoint(const QImage &image, const QPointF &point) const;

private:
    QPainter *m_painter;
    NSGraphicsContext *m_outer;
    bool m_flipped;
};
