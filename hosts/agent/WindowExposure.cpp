// SPDX-License-Identifier: MIT
#include "hosts/agent/WindowExposure.h"

#include <QEvent>
#include <QWindow>

WindowExposure::WindowExposure(QWidget &window) : QObject(&window), m_window(window)
{
    window.installEventFilter(this);
}

bool WindowExposure::eventFilter(QObject *receiver, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
        if (receiver == &m_window && m_window.windowHandle())
            m_window.windowHandle()->installEventFilter(this); // once, however often
        look();
        break;
    case QEvent::Hide:
    case QEvent::Expose:
        look();
        break;
    default:
        break;
    }
    return false;
}

void WindowExposure::look()
{
    const QWindow *const handle = m_window.windowHandle();
    const bool isExposed = m_window.isVisible() && handle && handle->isExposed();
    if (isExposed == m_isExposed)
        return;
    m_isExposed = isExposed;
    Q_EMIT changed(isExposed);
}
