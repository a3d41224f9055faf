// SPDX-License-Identifier: MIT
#pragma once

#include "Xdotool.h"

#include "support/WaitUntil.h"

#include <QColor>
#include <QProcess>
#include <QWidget>

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <optional>

/// What can be done and seen on the display of this process, which has a window manager: a backdrop, and a
/// compositor for those who want one. Both end with the object.
class DesktopSession : public testing::Test
{
public:
    ~DesktopSession() override;

protected:
    DesktopSession() = default;

    /// Waits until it draws. Over a backdrop.
    void startCompositor();

    /// What the screen shows at a point, in Qt's coordinates.
    static QColor colorAt(const QPoint &point);

    /// The pointer goes to a point in Qt's coordinates.
    static void movePointerTo(const QPoint &point);

    /// The window manager's notion of the window that gets the keys.
    static quint32 activeWindow();

    /// A 32-bit value of a property of a window; absent when it has none.
    static std::optional<quint32> cardinal(quint32 window, const QByteArray &property);

    /// The list "_NET_WM_STATE" of a window, which tells a window manager what it is.
    static bool hasState(quint32 window, const QByteArray &state);
    static void setState(quint32 window, const QByteArray &state);

    /// Shows an active window that takes nearly the whole screen and is white all over, and waits until it is
    /// there.
    void showBackdrop();

    /// Waits until the widget's window is the active one.
    static bool becomesActive(const QWidget &widget,
                              std::chrono::milliseconds limit = std::chrono::seconds(20));

    QWidget backdrop;

private:
    std::unique_ptr<QProcess> m_compositor;
};
