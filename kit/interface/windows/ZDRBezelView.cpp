// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/ZDRBezelView.h"

#include "DozelyKit/interface/drawing/BezierPathExtensions.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"
#include "DozelyKit/interface/windows/BezelDrag_p.h"
#include "DozelyKit/interface/windows/ScreenCoordinates_p.h"
#include "DozelyKit/interface/windows/WindowSystem_p.h"
#include "DozelyKit/interface/windows/ZDRWindow.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

using namespace dozely;

namespace
{
/// The window that the view lies in; null when it lies in none.
QWidget *windowOf(const QWidget *view)
{
    return view->isWindow() ? nullptr : view->window();
}

/// Windows with a bezel have no border: frame and content are the same.
void setFrame(QWidget *window, const QRectF &frame)
{
    if (auto *const own = qobject_cast<ZDRWindow *>(window)) {
        own->setFrame(frame, true);
        return;
    }
    window->setGeometry(ScreenCoordinates::toQt(frame));
    window->repaint();
}

/// What Qt rounded to a whole number, halves away from zero, with the fraction that is known of it.
double unrounded(double rounded, double fraction)
{
    const bool wasRoundedDown = fraction < 0.5 || (fraction == 0.5 && rounded < 0);
    return wasRoundedDown ? rounded + fraction : rounded + fraction - 1;
}

/// The pointer on the screen. Qt rounds that to whole points on the event's way to a widget, which on a
/// screen with other than one pixel a point is not where the pointer is; the place in the window keeps its
/// fraction.
QPointF pointerOf(const QMouseEvent *event)
{
    const QPointF global = event->globalPosition();
    const QPointF inWindow = event->scenePosition();
    if (global != global.toPoint())
        return ScreenCoordinates::toKit(global);
    // A rest from below, on the negative side too, where the pointer is to the left of the window or above
    // it.
    return ScreenCoordinates::toKit(QPointF(unrounded(global.x(), inWindow.x() - std::floor(inWindow.x())),
                                            unrounded(global.y(), inWindow.y() - std::floor(inWindow.y()))));
}
} // namespace

ZDRBezelView::ZDRBezelView(QWidget *parent) : QWidget(parent) {}

void ZDRBezelView::drawRect(const QRectF &)
{
    const auto *const context = NSGraphicsContext::currentContext();
    if (!context)
        return;
    const QPainterPath panel =
        zandorSoftwaresExtensions::roundRectInRect(QRectF(rect()), cornerRadius, 0x1111);
    context->graphicsPort()->setRenderHint(QPainter::Antialiasing);
    context->graphicsPort()->fillPath(panel, QColor::fromRgbF(0, 0, 0, 0.7F));
}

void ZDRBezelView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const NSGraphicsContext context(&painter, height());
    drawRect(QRectF(rect()));
}

void ZDRBezelView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    QWidget *const window = windowOf(this);
    m_windowFrame = window ? ScreenCoordinates::toKit(QRectF(window->geometry())) : QRectF();
    m_mouseLoc = pointerOf(event);
    m_dragType = BezelDrag::typeOfPress(m_windowFrame, m_mouseLoc);
    repaint();
    if (!window || WindowSystem::placesWindows())
        return;
    if (m_dragType == BezelDrag::Resize)
        WindowSystem::resizeByCompositor(window->windowHandle());
    else
        WindowSystem::moveByCompositor(window->windowHandle());
}

void ZDRBezelView::mouseMoveEvent(QMouseEvent *event)
{
    QWidget *const window = windowOf(this);
    if (!window || !event->buttons().testFlag(Qt::LeftButton) || m_dragType == BezelDrag::None ||
        !WindowSystem::placesWindows())
        return;
    setFrame(window,
             BezelDrag::frameDuringDrag(static_cast<BezelDrag::Type>(m_dragType), m_windowFrame, m_mouseLoc,
                                        pointerOf(event), ScreenCoordinates::mainScreenFrame().height()));
}

void ZDRBezelView::mouseReleaseEvent(QMouseEvent *)
{
    repaint();
}

void ZDRBezelView::fill(QWidget *view)
{
    m_filling.removeIf([view](const Filling &filling) { return filling.view == view; });
    view->setParent(this);
    view->setGeometry(rect());
    view->show();
    view->raise(); // one that lies here already stays below others otherwise
    m_filling += {view, rect()};
}

void ZDRBezelView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_filling.removeIf([this](const Filling &filling) {
        return !filling.view || filling.view->parent() != this || filling.view->geometry() != filling.place;
    });
    for (Filling &filling : m_filling) {
        filling.place = rect();
        filling.view->setGeometry(rect());
    }
}
