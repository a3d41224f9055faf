// SPDX-License-Identifier: MIT
#pragma once

#include "support/WaitUntil.h"

#include <QEvent>
#include <QWidget>

#include <utility>

/// Counts how often a shown widget is painted from now on: what is counted without settling was painted at
/// once, what was only asked for comes from the event loop.
class PaintCounter : public QObject
{
public:
    /// Waits until the widget has been painted for the first time.
    explicit PaintCounter(QWidget &watched) : m_watched(watched), m_beside(watched.window())
    {
        m_watched.installEventFilter(this);
        m_beside.installEventFilter(this);
        m_beside.setGeometry(watched.window()->width() - 1, watched.window()->height() - 1, 1, 1);
        m_beside.show();
        m_watched.update();
        m_isShown = waitUntil([this] { return m_count > 0 && m_besideCount > 0; });
        m_count = 0;
    }

    /// False when the widget was never painted.
    bool isShown() const { return m_isShown; }

    /// Lets the window paint all that it was asked to, which it does at once for all its widgets. For a
    /// widget that leaves the lower right corner of its window free.
    bool settle()
    {
        m_besideCount = 0;
        m_beside.update();
        return waitUntil([this] { return m_besideCount > 0; });
    }

    int count() const { return m_count; }

    /// The count, which begins anew.
    int takeCount() { return std::exchange(m_count, 0); }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++(object == &m_watched ? m_count : m_besideCount);
        return false;
    }

private:
    QWidget &m_watched;
    QWidget m_beside; // in the same window
    int m_count = 0;
    int m_besideCount = 0;
    bool m_isShown = false;
};
