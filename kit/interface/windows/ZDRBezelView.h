// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QList>
#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QWidget>

/// A translucent black panel with round corners, by which the user moves its window or, from the ten points
/// at the lower-right corner, resizes it. Clicks on widgets that lie on it are theirs.
///
/// The window's upper edge stays 22 points below that of the main screen; the other edges may leave the
/// screen. Where a program cannot place its windows (Wayland) the drag is handed to the compositor. Without a
/// compositor on X11 the panel is opaque.
///
/// THREADING: the main thread.
class DOZELYINTERFACE_EXPORT ZDRBezelView : public QWidget
{
    Q_OBJECT
public:
    /// The radius of the corners.
    static constexpr float cornerRadius = 10;

    explicit ZDRBezelView(QWidget *parent = nullptr);

    /// True: a click on a window that is not the active one acts at once.
    bool acceptsFirstMouse() const { return true; }

    /// 1 when the latest press began to resize, 2 when it began to move; 0 before any.
    qint32 dragType() const { return m_dragType; }

    /// Lays a view on it, above what is there and as large as it is; one that lies there already comes to the
    /// top. The view goes on filling it until it is given another place. The panel takes the view over.
    void fill(QWidget *view);

    /// Draws the panel into the current NSGraphicsContext.
    void drawRect(const QRectF &dirtyRect);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// A view and the place that it was given.
    struct Filling {
        QPointer<QWidget> view;
        QRect place;
    };

    QList<Filling> m_filling;
    QPointF m_mouseLoc;   // on the screen, at the press
    QRectF m_windowFrame; // at the press
    qint32 m_dragType = 0;
};
