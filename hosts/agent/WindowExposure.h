// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// Tells whether a window can be seen, as far as the window system says: not before it has brought it to the
/// screen, nor while it is minimised. THREADING: the main thread.
class WindowExposure : public QObject
{
    Q_OBJECT
public:
    explicit WindowExposure(QWidget &window);

    bool isExposed() const { return m_isExposed; }

Q_SIGNALS:
    void changed(bool isExposed);

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void look();

    QWidget &m_window;
    bool m_isExposed = false;
};
