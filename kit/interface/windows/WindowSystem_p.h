// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

class QWindow;

namespace dozely
{

/// What the toolkit asks of the window system beyond Qt: X11 where Qt runs on it; on others what Qt itself
/// can do.
///
/// THREADING: the main thread, with a QGuiApplication.
namespace WindowSystem
{
/// Whether translucent windows are blended with what is behind them. On X11 that takes a compositor, which
/// comes and goes at run time.
DOZELYINTERFACE_AUTOTEST_EXPORT bool blendsWindows();

/// Whether a window as a whole can be made translucent. Without a compositor on X11 that is accepted, but
/// not seen.
DOZELYINTERFACE_AUTOTEST_EXPORT bool hasWindowOpacity();

/// Sends to the window system what has been said to it and waits to be sent. Event loops do that when they
/// have something to do, not when they wait.
void flush();

/// Whether a program may put its windows where it wants. On Wayland it may not: the compositor moves and
/// resizes them, see moveByCompositor.
DOZELYINTERFACE_AUTOTEST_EXPORT bool placesWindows();

/// Hands the drag that has just begun to the compositor; false when that does not take it.
bool moveByCompositor(QWindow *window);
bool resizeByCompositor(QWindow *window);

/// Whether a window appears on all virtual desktops. Must be said before each showing: window managers forget
/// it with the window. Nothing happens where Qt does not run on X11.
void setJoinsAllDesktops(QWindow *window, bool joins);

/// Whether a compositor should draw a shadow around the window.
void setHasShadow(QWindow *window, bool hasShadow);
} // namespace WindowSystem

} // namespace dozely
